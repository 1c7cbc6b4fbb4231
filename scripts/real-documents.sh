#!/usr/bin/env bash
# Runs the tool over every XML document that some Debian packages ship, and over directories given:
#     real-documents.sh [--every N] NETXML [DIRECTORY...]
# or, for a look, every N-th of them.
# Each document gets the verdict that xmllint gives it (documents that use entities of a DTD are left
# out: netxml reads none), formats to something that is well-formed and formats to itself, and converts
# to GB18030 and to UTF-16 and back to the same tree.
set -euo pipefail
every=1
if [ "${1:-}" = --every ]; then
    every=$2
    shift 2
fi
netxml=$(realpath "$1")
shift
export netxml work
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
files() {
    { dpkg -L shared-mime-info iso-codes unicode-cldr-core
      for directory in "$@"; do find "$directory" -type f; done; } 2>/dev/null |
        grep -E '\.(xml|xsd)$' | sort -u | awk -v every="$every" 'NR % every == 0'
}
# What one document shows: a line that begins with "document", and one for each thing more.
report() { echo "failed $1: $2"; }
examine() {
    local file=$1 own ours=yes theirs=yes encoding
    own=$(mktemp -d -p "$work")
    echo "document $file"
    "$netxml" check -q "$file" 2>"$own/message" || ours=no
    xmllint --noout --nonet --huge "$file" 2>/dev/null || theirs=no
    if [ $ours != $theirs ]; then
        if grep -q '\[26\]' "$own/message"; then echo "entities $file"
        elif grep -q '\[32\]' "$own/message"; then echo "encoding $file"
        else report "$file" "netxml says $ours, xmllint $theirs"; fi
    elif [ $ours = yes ]; then
        "$netxml" tree "$file" >"$own/tree"
        for encoding in GB18030 UTF-16; do
            if "$netxml" convert --to $encoding "$file" -o "$own/there" &&
                "$netxml" convert --to UTF-8 "$own/there" -o "$own/back" &&
                "$netxml" tree "$own/back" | cmp -s - "$own/tree"; then
                echo "converted $file"
            else
                report "$file" "does not come back from $encoding"
            fi
        done
        "$netxml" format --drop-doctype "$file" >"$own/once" || report "$file" "does not format"
        "$netxml" format "$own/once" >"$own/twice" || report "$file" "does not format again"
        cmp -s "$own/once" "$own/twice" || report "$file" "formatting is not stable"
    fi
    rm -rf "$own"
}
export -f examine report
files "$@" | tr '\n' '\0' |
    xargs -0 -r -P"$(nproc)" -n1 bash -c '[ ! -f "$0" ] || examine "$0"' >"$work/seen"
count() { grep -c "^$1 " "$work/seen" || true; }
sed -n 's/^failed /real-documents: /p' "$work/seen"
echo "$(count document) documents: $(count converted) conversions there and back," \
    "$(count entities) left out for entities, $(count encoding) for an unknown encoding," \
    "$(count failed) differences"
[ "$(count document)" -gt 0 ] && [ "$(count failed)" -eq 0 ]
