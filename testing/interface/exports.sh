#!/usr/bin/env bash
# Fails for a class or namespace of which a shared library exports members though exports.txt, which is sorted, does not
# list it: exports.sh LIBRARY. Arguments of templates are left out. An entry more is one more thing that applications use.
set -euo pipefail

scopes() {
    nm --dynamic --defined-only --demangle "$1" |
        sed -E -e 's/^[0-9a-f]+ [A-Za-z] //' \
            -e 's/^(typeinfo|typeinfo name|vtable|VTT|guard variable|non-virtual thunk) (for|to) //' \
            -e 's/::operator .*/::operator/' -e ':inner' -e 's/<[^<>]*>//; t inner' \
            -e 's/\(.*//' -e 's/^.* ([^ ]+)$/\1/' -e 's/::[^:]*$//' |
        LC_ALL=C sort -u
}

unexpected=$(LC_ALL=C comm -13 "$(dirname "$0")/exports.txt" <(scopes "$1"))
if [ -n "$unexpected" ]; then
    echo "exported, but not listed: $unexpected"
    exit 1
fi
