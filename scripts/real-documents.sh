#!/usr/bin/env bash
# Runs the tool over every XML document that some Debian packages ship, and over directories given:
#     real-documents.sh NETXML [DIRECTORY...]
# Each document gets the verdict that xmllint gives it (documents that use entities of a DTD are left
# out: netxml reads none), formats to something that is well-formed and formats to itself, and converts
# to GB18030 and to UTF-16 and back to the same tree.
set -euo pipefail
netxml=$(realpath "$1")
shift
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
files() {
    { dpkg -L shared-mime-info iso-codes unicode-cldr-core
      for directory in "$@"; do find "$directory" -type f; done; } 2>/dev/null |
        grep -E '\.(xml|xsd)$' | sort -u
}
documents=0 converted=0 entities=0 encodings=0 failed=0
report() { echo "real-documents: $1: $2"; failed=$((failed + 1)); }
while IFS= read -r file; do
    [ -f "$file" ] || continue
    documents=$((documents + 1))
    if "$netxml" check -q "$file" 2>"$work/message"; then ours=yes; else ours=no; fi
    if xmllint --noout --nonet --huge "$file" 2>/dev/null; then theirs=yes; else theirs=no; fi
    if [ $ours != $theirs ]; then
        if grep -q '\[26\]' "$work/message"; then entities=$((entities + 1))
        elif grep -q '\[32\]' "$work/message"; then encodings=$((encodings + 1))
        else report "$file" "netxml says $ours, xmllint $theirs"; fi
        continue
    fi
    [ $ours = yes ] || continue
    "$netxml" tree "$file" >"$work/tree"
    for encoding in GB18030 UTF-16; do
        if "$netxml" convert --to $encoding "$file" -o "$work/there" &&
            "$netxml" convert --to UTF-8 "$work/there" -o "$work/back" &&
            "$netxml" tree "$work/back" | cmp -s - "$work/tree"; then
            converted=$((converted + 1))
        else
            report "$file" "does not come back from $encoding"
        fi
    done
    "$netxml" format --drop-doctype "$file" >"$work/once" || report "$file" "does not format"
    "$netxml" format "$work/once" >"$work/twice" || report "$file" "does not format again"
    cmp -s "$work/once" "$work/twice" || report "$file" "formatting is not stable"
done < <(files "$@")
echo "$documents documents: $converted conversions there and back, $entities left out for entities," \
    "$encodings for an unknown encoding, $failed differences"
[ $documents -gt 0 ] && [ $failed -eq 0 ]
