#!/bin/bash
# Brings the texts of every language up to date with the sources: new ones come in as unfinished, old ones go.
# Chinese is the language of the sources, so its texts are filled in here.
# Usage: update_translations.sh [FOLDER_OF_TRANSLATIONS]     (LUPDATE: another lupdate than the one on the path)
set -eu
top=$(cd "$(dirname "$0")/.." && pwd)
folder=${1:-$top/translations}
"${LUPDATE:-lupdate}" -silent -locations none -no-ui-lines -no-obsolete -source-language zh_CN \
    "$top/src" -ts "$folder"/*.ts
perl -CSD -0777 -i -pe '
    s{<source>([^<]*)</source>\s*\K<translation[^>]*>[^<]*</translation>}{<translation>$1</translation>}g' \
    "$folder/Chinese.ts"
for file in "$folder"/*.ts; do
    echo "$(basename "$file" .ts): $(grep -c '<source>' "$file") texts," \
        "$(grep -c 'type="unfinished"' "$file" || true) to translate"
done
