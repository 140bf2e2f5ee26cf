#!/usr/bin/env bash
# Compares the classes and namespaces whose members a shared library exports with those of exports.txt, without the
# arguments of templates: exports.sh LIBRARY. A line more or less is a change of what applications may use.
set -euo pipefail

scopes() {
    nm --dynamic --defined-only --demangle "$1" |
        sed -E -e 's/^[0-9a-f]+ [A-Za-z] //' \
            -e 's/^(typeinfo|typeinfo name|vtable|VTT|guard variable|non-virtual thunk) (for|to) //' \
            -e 's/::operator .*/::operator/' -e ':inner' -e 's/<[^<>]*>//; t inner' \
            -e 's/\(.*//' -e 's/^.* ([^ ]+)$/\1/' -e 's/::[^:]*$//' |
        LC_ALL=C sort -u
}

diff "$(dirname "$0")/exports.txt" <(scopes "$1")
