#!/usr/bin/env bash
# The game's --help, --version and a wrong option, run as a player would from a terminal with no
# display at all: each must answer without trying to open a window.
#   command_line_test.sh PATH_TO_ZELVAINE EXPECTED_VERSION_LINE
set -uo pipefail
app=$1
expected_version=$2
unset DISPLAY WAYLAND_DISPLAY QT_QPA_PLATFORM
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
failures=0

# run NAME ARGS...: status, standard output and standard error into $scratch/NAME.*
run() {
  local name=$1
  shift
  timeout 20 "$app" "$@" >"$scratch/$name.out" 2>"$scratch/$name.err"
  echo $? >"$scratch/$name.status"
}

expect() {
  if ! eval "$1"; then
    echo "FAILED: $2" >&2
    failures=$((failures + 1))
  fi
}

run version --version
expect '[ "$(cat "$scratch/version.status")" = 0 ]' "--version exits with 0 (got $(cat "$scratch/version.status"); $(head -c 300 "$scratch/version.err"))"
expect '[ "$(cat "$scratch/version.out")" = "$expected_version" ]' "--version prints '$expected_version' (got '$(cat "$scratch/version.out")')"
expect '[ ! -s "$scratch/version.err" ]' "--version writes nothing on standard error"

run help --help
expect '[ "$(cat "$scratch/help.status")" = 0 ]' "--help exits with 0 (got $(cat "$scratch/help.status"))"
expect 'head -n 1 "$scratch/help.out" | grep -q "^Usage: zelvaine .*\[FILE\]"' "--help starts with the usage line"
expect 'grep -q -- "--update-configuration=FILE" "$scratch/help.out"' "--help names --update-configuration=FILE"
expect '[ ! -s "$scratch/help.err" ]' "--help writes nothing on standard error"

# Qt's own options go before ours and must not be taken for mistakes.
run qt_option -platform offscreen --version
expect '[ "$(cat "$scratch/qt_option.out")" = "$expected_version" ]' "-platform offscreen --version prints the version"

run unknown --no-such-option
expect '[ "$(cat "$scratch/unknown.status")" = 2 ]' "an unknown option exits with 2 (got $(cat "$scratch/unknown.status"))"
expect '[ ! -s "$scratch/unknown.out" ]' "an unknown option writes nothing on standard output"
expect 'grep -q -- "--no-such-option" "$scratch/unknown.err"' "an unknown option is named on standard error"

exit $((failures > 0))
