#!/usr/bin/env bash
# A short tour of the console: the component is loaded by file name, registered,
# a debugger session is made, and then closed in order.
set -euo pipefail
tessel="${1:-build/default/bin/tessel}"

echo "\$ tessel --version"
"$tessel" --version
echo
echo "\$ tessel   (a session, fed from a script)"
printf 'help\nquit\n' | "$tessel"
