#!/bin/bash
# Works a simulated machine with peloractl and writes the terminal session into docs/peloractl.md. Needs port 6666.
# Usage: scripts/record_peloractl.sh [BUILD_FOLDER], a built one; default build
set -eu
cd "$(dirname "$0")/.."
build=${1:-build}
document=$PWD/docs/peloractl.md
folder=$(mktemp -d)
trap 'kill $product $machine 2>/dev/null || true; rm -rf "$folder"' EXIT
cmake --install "$build" --prefix "$folder/printer" >/dev/null
cd "$folder/printer"
export QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8 PELORA_TIME_SCALE=100 PATH=$PWD:$PATH

# The machine's input is no pipe, so that it lives until it is ended here.
./pelora-machine --install "$PWD" </dev/null >../machine.txt &
machine=$!
until grep -q ready ../machine.txt; do kill -0 $machine; done
./pelora >/dev/null 2>&1 &
product=$!
until peloractl --host 127.0.0.1 status >/dev/null 2>&1; do kill -0 $product; done
until peloractl --host 127.0.0.1 materials | grep -q 'in use'; do kill -0 $product; done

mkdir ../desk
cd ../desk
tzlpack "$folder/printer/samples/ring.stl" --out ring.tzl >/dev/null
exec 3>"$document"
cat >&3 <<'HEAD'
# A session with peloractl

Written by `scripts/record_peloractl.sh` from a run against the simulated machine. `peloractl COMMAND --help` tells more
about a command; exit codes are 0 done, 1 the machine said no or it failed, 2 wrong usage, 3 no connection, 4 no answer
in time.

HEAD

# Runs a line as a person types it, and keeps what the terminal showed.
show() {
  printf '    $ %s\n' "$1" >&3
  { eval "$1" 2>&1 && code=0 || code=$?; [ $code = 0 ] || echo "(exit code $code)"; } | sed 's/^\(.\)/    \1/' >&3
  echo >&3
}
tell() { printf '%s\n\n' "$1" >&3; }

tell 'What there is:'
show 'peloractl --help'
tell 'Which machines there are, and how one is:'
show 'peloractl discover'
export PELORA_HOST=127.0.0.1
show 'peloractl status'
show 'peloractl materials'
tell 'A model, and its way to the head of the queue. On a terminal the bar stays on one line:'
show 'peloractl upload ring.tzl | tail -n 2'
cp ring.tzl 'a "second" ring.tzl'
show "peloractl upload 'a \"second\" ring.tzl' | tail -n 1"
show 'peloractl queue list'
show 'peloractl queue top ring.tzl'
show "peloractl queue delete 'a \"second\" ring.tzl' --yes"
show 'peloractl queue list --json'
tell 'Parameters: the difference is shown before anything is written, and a backup takes all of them:'
show 'peloractl backup before'
show 'peloractl params set sys XMoveSpeed=550 --yes'
show 'peloractl params get sys XMoveSpeed'
show 'peloractl restore before --yes'
tell 'The bench:'
show 'peloractl axis'
show 'peloractl temps get | head -n 4'
show 'peloractl can 2 71'
tell 'What goes wrong says what to do:'
show 'peloractl upload missing.tzl'
show 'peloractl queue delete nobody.tzl --yes'
show 'peloractl --host 127.0.0.1 --port 1 status'
show 'peloractl frobnicate'
