#!/bin/bash
# Writes docs/screens/<Language>/<page>.png, a picture of every page and message in every language, and
# docs/screens/contact-sheet.png, all of them side by side.
# Usage: make_screens.sh [LANGUAGE...]     (BUILD: the build folder, build)
set -eu
cd "$(dirname "$0")/.."
build=${BUILD:-build}
languages=${*:-Chinese English Turkish French Korean}
export QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8 PELORA_TIME_SCALE=100 DONT_FAKE_MONOTONIC=1
[ -f "$build/build.ninja" ] || cmake --preset release -B "$build"
ninja -C "$build" screenshots contact_sheet pelora_translations
for language in $languages; do
    mkdir -p "docs/screens/$language"
    rm -f "docs/screens/$language"/*.png
    timeout 120 faketime '2026-11-20 14:32:00' "$build/screens/screenshots" "docs/screens/$language" \
        "$build/translations/$language.qm" 2> /dev/null
done
"$build/screens/contact_sheet" docs/screens/contact-sheet.png docs/screens/{Chinese,English,Turkish,French,Korean}
du -sh docs/screens
