#!/bin/bash
# Walks the recorded session against the program and writes what was seen into docs/protocol.md.
# Usage: scripts/record_protocol.sh [BUILD_FOLDER], a built one; default build
set -eu
cd "$(dirname "$0")/.."
build=${1:-build}
cmake --install "$build" --prefix "$build/stage" >/dev/null
QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8 PELORA_TIME_SCALE=100 QTEST_FUNCTION_TIMEOUT=600000 \
    "$build/tests/e2e/test_protocol" --record everyCommand
