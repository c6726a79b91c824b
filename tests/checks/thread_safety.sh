#!/bin/bash
# Clang's lock analysis over every source of src/. Usage: thread_safety.sh SOURCE_FOLDER BUILD_FOLDER
# Macros and include folders are those of the build's compile_commands.json; the build must be done, since headers
# are made in it. A tree that has passed is not analysed again until a source, a flag or the compiler changes.
source=${1:?source folder} build=${2:?build folder}
command -v clang++ >/dev/null || { echo "clang++ is missing: the set-up of ./test installs it"; exit 1; }

commands() {
    awk -v file="\"$source/src/" '
        /"command":/ {
            flags = ""
            gsub(/\\"/, "\"")
            while (match($0, / -(D|I|isystem |std=)[^ ]+/)) {
                flags = flags substr($0, RSTART, RLENGTH)
                $0 = substr($0, RSTART + RLENGTH)
            }
        }
        /"file":/ && index($0, file) { print flags, $2 }' "$build/compile_commands.json"
}
[ -n "$(commands)" ] || { echo "no sources of $source/src in $build/compile_commands.json"; exit 1; }
passed=$build/thread_safety.passed
tree=$(cd "$source" && { find src include tests/checks -type f -print0 | sort -z | xargs -0 sha256sum
    clang++ --version; commands; } | sha256sum)
[ "$tree" = "$(cat "$passed" 2>/dev/null)" ] && { echo "unchanged since it passed"; exit 0; }
commands | tr '\n' '\0' | xargs -0 -P2 -I{} sh -c \
    "clang++ -fsyntax-only -fPIC -Wno-everything -Wthread-safety -Werror=thread-safety {}" || exit 1
echo "$tree" > "$passed"
