#!/usr/bin/env bash
# A short tour: a workspace, a session on the simulator with a connection batch
# file, the command line, and the session found again in the next run.
set -euo pipefail
tessel="$(cd "$(dirname "${1:-build/default/bin/tessel}")" && pwd)/$(basename "${1:-build/default/bin/tessel}")"
# The demo firmware is built beside the console, in the build's examples folder.
firmware="$(dirname "$tessel")/../examples/station.elf"
examples="$(cd "$(dirname "$0")" && pwd)"
workspace="$(mktemp -d /tmp/tessel-demo-XXXXXX)"
trap 'rm -rf "$workspace"' EXIT
cd "$workspace"

show() { echo; echo "\$ $*"; "$@" || true; }

show "$tessel" --version
show "$tessel" --list-platforms
show "$tessel" --platform simulator --batch-at connection "$examples/connect.qdc" -c "help"
echo
echo "# The next run finds the platform and the batch file in the workspace's store:"
show "$tessel" -c "disconnect; connect"
echo
echo "# Target memory from the command line (the last line shows a refusal):"
show "$tessel" --batch "$examples/memory.qdc"
echo
echo "# An edit, unit by unit: a value, an empty line to keep one, ^ to go back, . to stop:"
printf 'memory_edit 0x20000000\n11\n\n^\n22\n.\nmemory_display 0x20000000 4\n' | "$tessel" || true
echo
echo "# Firmware: load the weather station's ELF, look at its symbols and its calibration"
echo "# table, save the table as S-records and verify it; after an edit the verify"
echo "# shows the first difference:"
cp "$firmware" station.elf
show "$tessel" --batch "$examples/station.qdc"
