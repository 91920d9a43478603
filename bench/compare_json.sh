#!/usr/bin/env bash
# Runs one load of a large JSON document side by side with the same job in jq and node, and with
# RapidJSON's parser alone. See README.md for what the figures mean.
#
# usage: bench/compare_json.sh
#   RUNS=5           how often each is run; they take turns
#   BYTES=100000000  size of the document
#   BUILD=build/bench
# shellcheck disable=SC2016  # awk reads the $ of the expressions
set -euo pipefail
export LC_ALL=C
cd "$(dirname "$0")/.."

RUNS=${RUNS:-5}
BYTES=${BYTES:-100000000}
BUILD=${BUILD:-build/bench}
programs=$BUILD/bench
data=$BUILD/data
items=$data/items-$BYTES.json

need() {  # PROGRAM PACKAGE
    command -v "$1" >/dev/null && return
    echo "compare_json.sh: $1 is missing; it is in the Debian package \"$2\"" >&2
    exit 1
}
need jq jq
need node nodejs
need /usr/bin/time time
if [[ ! -x $programs/run_command ]]; then
    echo "compare_json.sh: first: cmake --preset bench && ninja -C build/bench" >&2
    exit 1
fi

commandFor() {  # DOCUMENT
    echo "MODE |JSON| FILENAME |$1| XPATH |items| NUM_ROWS |0| TABLE |T| TGT_MODE 1 "
}
intake=("$programs/run_command" --stats "$(commandFor "$items")")
node=(node bench/script.mjs "$items")
jq=(jq -j -f bench/script.jq "$items")
jq_parse=(jq '.items | length' "$items")

mkdir -p "$data"
if [[ ! -e $items ]]; then
    "$programs/make_items" "$BYTES" >"$items.new"
    mv "$items.new" "$items"
fi

script=$data/script-$BYTES.txt
writeAndCompare() {  # DOCUMENT
    "$programs/run_command" "$(commandFor "$1")" >"$script"
    node bench/script.mjs "$1" | cmp - "$script"
    jq -j -f bench/script.jq "$1" | cmp - "$script"
    echo "$1: all three write the same script, $(stat -c %s "$script") bytes"
}
writeAndCompare bench/edge_cases.json
writeAndCompare "$items"

results=$(mktemp -d)
trap 'rm -r "$results"' EXIT

# The whole process: seconds, processor seconds (user, system) and KiB in NAME.time; what it says
# itself in NAME.log.
measure() {  # NAME COMMAND...
    local name=$1
    shift
    /usr/bin/time -a -o "$results/$name.time" -f '%e %U %S %M' "$@" >/dev/null 2>>"$results/$name.log"
}
for ((run = 1; run <= RUNS; ++run)); do
    measure intake "${intake[@]}"
    measure rapidjson "$programs/rapidjson_parse" "$items"
    measure store "$programs/store" "$script"
    measure node "${node[@]}"
    measure jq_parse "${jq_parse[@]}"
    measure jq "${jq[@]}"
done

# The minimum and the median of what an awk expression makes of each line.
range() {  # FILE EXPRESSION
    awk "{print $2}" "$results/$1" | sort -n |
        awk '{value[NR] = $1} END {print value[1], value[int((NR + 1) / 2)]}'
}

wholeProcess() {  # NAME LABEL
    local least median cpu kibibytes ours
    read -r least median < <(range "$1.time" '$1')
    read -r cpu _ < <(range "$1.time" '$2 + $3')
    read -r _ kibibytes < <(range "$1.time" '$4')
    read -r ours _ < <(range intake.time '$2 + $3')
    awk -v label="$2" -v least="$least" -v median="$median" -v cpu="$cpu" -v ours="$ours" \
        -v peak="$((kibibytes * 1024))" -v bytes="$(stat -c %s "$items")" 'BEGIN {
            printf "%-26s %8.2f %8.2f %8.2f %8.1f %8.0f %8.1f\n",
                label, least, median, cpu, cpu / ours, peak / 1e6, peak / bytes }'
}

insideProcess() {  # NAME LABEL
    local least median cpu
    read -r least median < <(range "$1.log" '$2')
    read -r cpu _ < <(range "$1.log" '$4')
    printf '%-26s %8.3f %8.3f %8.3f\n' "$2" "$least" "$median" "$cpu"
}

printf '\n%-26s %8s %8s %8s %8s %8s %8s\n' "whole process, $RUNS runs" \
    min/s median/s cpu/s "x Intake" peak/MB "x file"
wholeProcess intake "Intake, file to script"
wholeProcess node "node"
wholeProcess jq "jq"
wholeProcess jq_parse "jq, parsing only"
wholeProcess store "store, script to fields"

printf '\n%-26s %8s %8s %8s\n' "inside the process" min/s median/s cpu/s
insideProcess intake "Intake, file to script"
insideProcess rapidjson "RapidJSON, parsing only"
insideProcess store "store, script to fields"
echo "$(range intake.log '$4') $(range rapidjson.log '$4')" |
    awk '{printf "\nIntake / RapidJSON, processor time: %.2f\n", $1 / $3}'
