#!/bin/bash
# Peak memory of a long batch: N memory_fill lines on the simulator, run
# twice with ten times as many lines; prints both peaks (kB) and fails when the
# longer run needs more than 10% above the shorter.
# usage: batch_memory.sh TESSEL [SHORT]
set -u
tessel=$(realpath "$1")
short=${2:-50000}
long=$((short * 10))
root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT

peak() { # lines
    local batch=$root/fill$1.qdc
    for ((i = 0; i < $1; i++)); do echo "mf 20000000 2000000F $((i % 256))"; done >"$batch"
    (cd "$root" && /usr/bin/time -f "%M" -o "$root/peak" "$tessel" --platform simulator --batch "$batch" >/dev/null 2>&1)
    cat "$root/peak"
}

a=$(peak "$short")
b=$(peak "$long")
echo "peak RSS: $short fills $a kB, $long fills $b kB"
[ $((b * 10)) -le $((a * 11)) ]
