#!/usr/bin/env bash
# Reads the screen name from real windows of the AOL client's classes, opened by a program of our
# own, under Wine. Arguments: the repository, a build folder of its own, the folder of utf8proc.h.
# Ends with 77 where a tool is missing. Everything is ended and bounded, whatever happens.
set -euo pipefail
repository=$1 build=$2 utf8proc=$3
compiler=x86_64-w64-mingw32-g++-posix
patience=30

for tool in "$compiler" wine wineserver Xvfb; do
  if ! command -v "$tool" >/dev/null && ! [ -x "/usr/lib/wine/$tool" ]; then
    echo "SKIPPED: $tool is not installed"
    exit 77
  fi
done

mkdir -p "$build"
build=$(realpath "$build")
rm -f "$build"/ready.* "$build"/display
export WINEPREFIX=$build/prefix WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
export XDG_RUNTIME_DIR=$build PATH=$PATH:/usr/lib/wine
xvfb=

# The prefix goes as well: it is large, and one cut short would spoil the next run.
clean_up() {
  timeout 10 wineserver -k 2>/dev/null || true
  rm -rf "$WINEPREFIX"
  if [ -n "$xvfb" ]; then
    kill "$xvfb" 2>/dev/null || true
    wait "$xvfb" 2>/dev/null || true
  fi
}
trap clean_up EXIT

# Waits until the file has come; fails when it does not.
wait_for() {
  local tries=$((patience * 10))
  until [ -s "$1" ] || { [ -e "$1" ] && [ "${2:-}" = empty ]; }; do
    tries=$((tries - 1))
    [ "$tries" -gt 0 ] || { echo "FAILED: $1 did not come"; exit 1; }
    sleep 0.1
  done
}

cp "$utf8proc/utf8proc.h" "$build/utf8proc.h"
flags=(-std=c++20 -O1 -Wall -Wextra -static "-I$repository/src" "-I$build" -DUTF8PROC_STATIC)
"$compiler" "${flags[@]}" -o "$build/aol_windows.exe" "$repository/tests/support/aol_windows.cpp"
"$compiler" "${flags[@]}" -o "$build/aol_read.exe" "$repository/tests/support/aol_read.cpp" \
  "$repository"/src/aol/screen_name.cpp "$repository"/src/platform/window_tree_win32.cpp \
  "$repository"/src/base/text.cpp "$repository"/src/base/encoding.cpp

Xvfb -displayfd 3 -screen 0 640x480x24 -nolisten tcp 3>"$build/display" >/dev/null 2>&1 &
xvfb=$!
wait_for "$build/display"
DISPLAY=:$(tr -d '\n' <"$build/display")
export DISPLAY
timeout "$patience" wine wineboot -i >"$build/wineboot.log" 2>&1 ||
  { echo "FAILED: Wine did not start"; cat "$build/wineboot.log"; exit 1; }

expect() {
  local name
  name=$(timeout "$patience" wine "$build/aol_read.exe" | tr -d '\r')
  if [ "$name" != "$1" ]; then
    echo "FAILED: read $name instead of $1"
    exit 1
  fi
  echo "read $name"
}

expect "[]"
number=0
while IFS='|' read -r caption name; do
  number=$((number + 1))
  wine "$build/aol_windows.exe" "$caption" "$(winepath -w "$build/ready.$number")" \
    </dev/null >"$build/windows.log" 2>&1 &
  wait_for "$build/ready.$number" empty
  expect "$name" </dev/null
  timeout 10 wineserver -k || true
done <<'CASES'
Welcome, John Doe!|[John Doe]
AOL and Dell Welcome, JaneD!|[ JaneD]
CASES
