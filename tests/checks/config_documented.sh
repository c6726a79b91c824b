#!/bin/sh
# Every key of every delivered document stands in docs/configuration.md, in backquotes. Argument: the source folder.
cd "$1" || exit 2
missing=$(grep -oEh '"[A-Za-z0-9_]+"[[:space:]]*:' config/*.json | tr -d '": \t' | sort -u |
    while read -r key; do
        grep -q "\`$key\`" docs/configuration.md || echo "$key"
    done)
[ -z "$missing" ] && exit 0
echo "not in docs/configuration.md:" $missing
exit 1
