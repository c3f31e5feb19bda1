#!/bin/bash
# What a session keeps across runs: a first tessel process sets a session up on
# a fresh workspace and quits; a second one, with no options but the session's
# name, finds each setting back. What no command shows is read from the store.
# usage: persist_workspace.sh TESSEL FIRMWARE.elf
set -u
tessel=$(realpath "$1")
firmware=$(realpath "$2")
ws=$(mktemp -d)
trap 'rm -rf "$ws"' EXIT
cd "$ws" || exit 1
failed=0

fail() { # what output-file
    echo "FAILED: $1"
    [ -n "${2:-}" ] && cat "$2"
    failed=1
}

run() { # name tessel-arguments...
    local name=$1
    shift
    "$tessel" "$@" >"$name.out" 2>&1
    local rc=$?
    if [ $rc != 0 ] || grep -q "Error" "$name.out"; then fail "$name run (exit $rc)" "$name.out"; fi
}

# A value of the session 'board' as stored: a text is the store's header
# (5 bytes) and its length (1 byte, below 128) before the bytes.
stored_text() { # kind name
    sqlite3 .tessel/workspace.db "SELECT CAST(substr(value, 7) AS TEXT) FROM session_value
        WHERE session = 'board' AND kind = '$1' AND name = '$2'"
}
# Whether a stored list holds the text; `after` is the hex of what must follow it.
stored_list_has() { # table name text [after]
    [ "$(sqlite3 .tessel/workspace.db "SELECT count(*) FROM $1 WHERE name = '$2'
        AND instr(value, CAST('$3' AS BLOB) || x'${4:-}') > 0")" = 1 ]
}

echo "evaluate 0x600D" >connect.qdc
echo "evaluate 0xBEFE" >before.qdc
# The file commands come with another part of the console; without them the
# module and the recent list are not part of this test.
"$tessel" --platform simulator -c "help file_save" >probe.out 2>&1
if grep -q "^file_save" probe.out; then files=1; else files=0; fi
first="" second=""
if [ $files = 1 ]; then
    first="file_load elf $firmware 0 n p; file_save srec saved.srec 0x08000000 0x080000FF"
    second="file_load_all"
else
    echo "SKIPPED: the module and the recent list (no file commands in this tessel)"
fi

run first --session board --platform simulator --reset-after-download yes \
    --batch-at connection connect.qdc --batch-at before-download before.qdc -c "$first"
run second --session board -c "$second"

# The platform and the connection batch: the second run connects and runs it.
grep -q "^Connected" second.out || fail "the platform is not back" second.out
grep -q "^> evaluate 0x600D" second.out || fail "the connection batch file is not back" second.out
# The download timing's batch file: in the list at timing 1 ("1" as a stored text).
stored_list_has session_value CommandFiles before.qdc 08010131 ||
    fail "the before-download batch file is not stored"
[ "$(stored_text property RESET_CPU_AFTER_DOWNLOAD_TAG)" = VARIANT_TRUE_STORE_TAG ] ||
    fail "reset after download is not kept"
if [ $files = 1 ]; then
    # The module downloads again, with the download timing's batch around it.
    grep -q "^> evaluate 0xBEFE" second.out || fail "the module or its download batch is not back" second.out
    stored_list_has session_value Modules "$firmware" || fail "the module is not stored"
    # The second run writes the recent lists it read when it ends.
    stored_list_has global_value 'MRU Program Save\File1' saved.srec ||
        fail "the recent save list lost its entry"
fi
exit $failed
