#!/bin/bash
# Several tessel processes on one workspace at once, round after round: three
# start together on a workspace with no store yet, then four add a batch file
# each to one session. None may report an error or exit non-zero, and every
# entry added must be there afterwards.
# usage: concurrent_workspace.sh TESSEL [ROUNDS]
set -u
tessel=$(realpath "$1")
rounds=${2:-20}
root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT
failed=0

# Reports a process whose exit status or output shows a problem.
check() { # name status-file output-file
    if [ "$(cat "$2")" != 0 ] || grep -q "Error" "$3"; then
        echo "$1 failed (exit $(cat "$2")):"
        cat "$3"
        failed=1
    fi
}

for round in $(seq 1 "$rounds"); do
    ws=$root/ws$round
    mkdir -p "$ws"
    for p in 1 2 3; do
        (cd "$ws" && "$tessel" -c "help help" >"$ws/open$p" 2>&1; echo $? >"$ws/open$p.rc") &
    done
    wait
    for p in 1 2 3; do check "round $round: opening process $p" "$ws/open$p.rc" "$ws/open$p"; done

    for p in 1 2 3 4; do
        echo "evaluate $p" >"$ws/b$p.qdc"
        (cd "$ws" && "$tessel" --session shared --batch-at connection "b$p.qdc" -c "" >"$ws/add$p" 2>&1
         echo $? >"$ws/add$p.rc") &
    done
    wait
    for p in 1 2 3 4; do check "round $round: adding process $p" "$ws/add$p.rc" "$ws/add$p"; done

    # The connection batches run at the next start: one for each entry kept.
    (cd "$ws" && "$tessel" --session shared --platform simulator -c "" >"$ws/kept" 2>&1; echo $? >"$ws/kept.rc")
    check "round $round: reading back" "$ws/kept.rc" "$ws/kept"
    kept=$(grep -c "^> evaluate" "$ws/kept")
    if [ "$kept" != 4 ]; then
        echo "round $round: $kept of 4 batch file entries kept:"
        cat "$ws/kept"
        failed=1
    fi
done
exit $failed
