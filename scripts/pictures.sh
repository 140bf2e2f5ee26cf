#!/usr/bin/env bash
# Makes the pictures of the algorithm pages anew: pictures.sh FOLDER_OF_IMAGES [CLASS ...]
# The first moxel command of a page with its class is run as it stands there, after the ones before it; the picture is its
# input beside its output.
set -euo pipefail
images=$(cd "$1" && pwd)
shift
cd "$(dirname "$0")/.."
root=$PWD
programs=$root/build/release/apps
pages=$root/docs/algorithms

if [ $# -eq 0 ]; then
    mapfile -t classes < <(basename -s .md "$pages"/*.md)
    set -- "${classes[@]}"
fi
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
ln -s "$images"/* "$work"
cd "$work"

valueOf() {
    local name=$1 word
    shift
    for word in "$@"; do
        if [[ $word == "$name="* ]]; then
            echo "${word#*=}"
            return # an option may name the property again
        fi
    done
}

for class in "$@"; do
    command=()
    while read -r line && [ "${command[2]:-}" != "$class" ]; do
        eval "command=($line)"
        "$programs/moxel/${command[0]}" "${command[@]:1}"
    done < <(grep "^moxel run " "$pages/$class.md")
    "$programs/demo/moxel_picture" "$(valueOf input "${command[@]}")" "$(valueOf output "${command[@]}")" \
        "$pages/$class.png"
done
