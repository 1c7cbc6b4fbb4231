#!/bin/sh
# Compares what the shared library exports, needs and runs at its start with what it promises.
# usage: check_exports.sh LIBRARY EXPORTS_MAP HEADERS_DIRECTORY READELF LIBICONV(yes|no)
set -eu
library=$1 map=$2 headers=$3 readelf=$4 libiconv=$5
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failed=0
differ() { echo "check_exports: $1"; failed=1; }

sed -n 's/^    \([A-Za-z0-9_]*\);$/\1/p' "$map" | sort >"$work/map"
"$readelf" --dyn-syms -W "$library" |
    awk '$5 == "GLOBAL" && $7 != "UND" && $7 != "ABS" { sub(/@.*/, "", $8); print $8 }' | sort >"$work/exported"
diff "$work/map" "$work/exported" >"$work/diff" || { cat "$work/diff"; differ "exports and export list differ"; }

# Every declared function is exported, and nothing else.
cat "$headers"/*.h | tr '\n' ' ' | grep -o 'XML_API [^(;]*(' | grep -oE '(XML|Schema|SCHEMA|SchemaReg|SchemaDereg)_[A-Za-z0-9_]*[(]$' | tr -d '(' |
    sort >"$work/declared"
diff "$work/declared" "$work/exported" >"$work/diff" || { cat "$work/diff"; differ "exports and headers differ"; }

"$readelf" --dyn-syms -W "$library" | grep -E ' (XML|Schema|SCHEMA|SchemaReg|SchemaDereg)_' | grep -v '@@NETXML_1.0' | grep -q . &&
    differ "a function lacks the version node NETXML_1.0"

"$readelf" -d -W "$library" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p' >"$work/needed"
while read -r needed; do
    case $needed in
    libc.so.*|ld-linux*|ld-musl*|libc.musl*) ;;
    libiconv.so.*) [ "$libiconv" = yes ] || differ "needs $needed" ;;
    *) differ "needs $needed" ;;
    esac
done <"$work/needed"

"$readelf" -d -W "$library" | grep -q 'SONAME.*\[libnetxml.so.1\]' || differ "the SONAME is not libnetxml.so.1"

# The compiler's own start file brings one entry, frame_dummy, and on 64-bit Arm the compiler's run time
# may bring one that asks for the processor's atomics; a static constructor would be another.
entries=$("$readelf" -S -W "$library" | sed 's/^ *\[ *[0-9]*\] *//' | awk '$1 == ".init_array" { print $5 }')
pointer=$("$readelf" -h "$library" | awk '/Class:/ { print ($2 == "ELF64") ? 8 : 4 }')
allowed=$pointer
"$readelf" -s -W "$library" | grep -q ' init_have_lse_atomics$' && allowed=$((2 * pointer))
[ "$((0x$entries))" -le "$allowed" ] || differ "there are static constructors (.init_array has 0x$entries bytes)"
"$readelf" -s -W "$library" | grep -q '_GLOBAL__sub_I' && differ "there are static constructors (_GLOBAL__sub_I)"

echo "$(wc -l <"$work/exported") functions exported; needs: $(tr '\n' ' ' <"$work/needed")"
exit $failed
