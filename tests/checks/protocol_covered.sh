#!/bin/bash
# Every title that the program answers to is walked by a recorded session and told in docs/protocol.md. Argument: the
# source folder.
cd "$1" || exit 2
titles=$(sed -nE 's/^ *\{"([^"]+)", [a-zA-Z]+Command\},$/\1/p' src/remote/RemoteCommands.cpp)
[ "$(wc -l <<<"$titles")" -gt 20 ] || { echo "the table of titles is not found"; exit 2; }
wrong=0
for title in $titles; do
    for place in tests/e2e/protocol docs/protocol.md; do
        grep -qrE "\\\\?\"Title\\\\?\": ?\\\\?\"$title\\\\?\"" $place || { echo "$title is missing in $place"; wrong=1; }
    done
done
exit $wrong
