#!/usr/bin/env bash
# Installs the Debian packages that are missing, then configures and builds. Sourced by run and test.
# Usage: . scripts/setup.sh; setup_packages; build_preset release

packages=(
  g++ cmake ninja-build ccache clang clang-format
  qtbase5-dev qttools5-dev qttools5-dev-tools libqt5svg5-dev libqt5sql5-sqlite
  zlib1g-dev libssl-dev libassimp-dev libbenchmark-dev libcurl4-openssl-dev libgooglepinyin0-dev
  fonts-noto-core fonts-noto-cjk perl openssl ca-certificates python3-aiosmtpd faketime
)

setup_packages() {
  local missing=()
  for package in "${packages[@]}"; do
    dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null | grep -qx installed || missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  echo "Installing Debian packages: ${missing[*]}"
  local sudo=""
  [ "$(id -u)" -eq 0 ] || sudo=sudo
  $sudo apt-get update -qq || return 1
  if ! DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}" >/tmp/pelora-apt.$$ 2>&1; then
    tail -n 20 /tmp/pelora-apt.$$
    echo "The packages could not be installed; see above." >&2
    return 1
  fi
  rm -f /tmp/pelora-apt.$$
}

# build_preset PRESET FOLDER [cmake options]: configures when needed and builds, quietly when all is up to date.
build_preset() {
  local preset=$1 folder=$2
  shift 2
  [ -f "$folder/build.ninja" ] && [ -z "$*" ] || cmake --preset "$preset" "$@" >"/tmp/pelora-cmake.$$" 2>&1 || {
    tail -n 30 "/tmp/pelora-cmake.$$"
    return 1
  }
  rm -f "/tmp/pelora-cmake.$$"
  echo "Building ($preset) ..."
  ninja -C "$folder" >"$folder/build.log" 2>&1 || {
    grep -A 20 -E 'FAILED|error' "$folder/build.log" | head -n 60
    return 1
  }
}
