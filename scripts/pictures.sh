#!/usr/bin/env bash
# Makes the pictures of the algorithm pages anew: pictures.sh FOLDER_OF_IMAGES [CLASS ...]
# The commands of a page are run as they stand there, up to the first with its class, whose input and output make the
# picture, side by side; or all of them where one writes the picture itself. PICTURES is the folder that takes the
# pictures, that of the pages unless it is set.
set -euo pipefail
images=$(cd "$1" && pwd)
shift
cd "$(dirname "$0")/.."
root=$PWD
pages=$root/docs/algorithms
pictures=$(cd "${PICTURES:-$pages}" && pwd)
PATH=$root/build/release/apps/moxel:$root/build/release/apps/demo:$PATH

if [ $# -eq 0 ]; then
    mapfile -t classes < <(basename -s .md "$pages"/*.md)
    set -- "${classes[@]}"
fi
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
ln -s "$images"/* "$pages"/*.csv "$work"
cd "$work"

# Those that go on after a backslash are one.
commandsOf() {
    sed -e ':joined' -e '/\\$/ { N; s/\\\n *//; b joined' -e '}' "$1" | grep -E "^(moxel|for [a-z]+ in )"
}

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
    mapfile -t commands < <(commandsOf "$pages/$class.md")
    for command in "${commands[@]}"; do
        eval "$command"
        if [[ $command == "moxel run $class "* && "${commands[*]}" != *" $class.png"* ]]; then
            eval "words=($command)"
            moxel_picture "$(valueOf input "${words[@]}")" "$(valueOf output "${words[@]}")" "$class.png"
            break
        fi
    done
    mv "$class.png" "$pictures"
done
