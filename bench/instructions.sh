#!/usr/bin/env bash
# What a drag costs in instructions with 10,000 settled strokes on the canvas, as a ratio to one on an
# empty canvas. Needs valgrind.
#
# usage: bench/instructions.sh BUILD_FOLDER
set -euo pipefail

if (($# != 1)); then
    echo "usage: bench/instructions.sh BUILD_FOLDER" >&2
    exit 2
fi
program=$1/bench/drag_count
few=100
many=400

# counted SETTLED DRAGS: the instructions of a whole run.
counted() {
    valgrind --tool=callgrind --callgrind-out-file=/dev/null "$program" "$1" "$2" 2>&1 |
        awk '/ Collected : / { print $4; found = 1 } END { exit !found }'
}

# of_a_drag SETTLED: what all but the drags costs is in both runs.
of_a_drag() {
    local low high
    low=$(counted "$1" "$few")
    high=$(counted "$1" "$many")
    echo $(((high - low) / (many - few)))
}

empty=$(of_a_drag 0)
full=$(of_a_drag 10000)
awk -v full="$full" -v empty="$empty" 'BEGIN {
    printf "instructions of a drag: %d with 10000 strokes, %d with none, ratio %.4f\n", full, empty, full / empty
}'
