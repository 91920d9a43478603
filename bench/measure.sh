# shellcheck shell=bash disable=SC2016,SC2154  # awk reads the $ of expressions; `document` is the caller's
# What the comparisons share: how programs are run, measured and shown. To be sourced in the
# repository's folder; the caller says `RUNS`, `BUILD` and, for the tables, `document`.

set -euo pipefail
export LC_ALL=C
RUNS=${RUNS:-5}
BUILD=${BUILD:-build/bench}
programs=$BUILD/bench
data=$BUILD/data
results=$(mktemp -d)
trap 'rm -r "$results"' EXIT

need() {  # PROGRAM PACKAGE
    command -v "$1" >/dev/null && return
    echo "$0: $1 is missing; it is in the Debian package \"$2\"" >&2
    exit 1
}

needPrograms() {
    need /usr/bin/time time
    if [[ ! -x $programs/run_command ]]; then
        echo "$0: first: cmake --preset bench && ninja -C build/bench" >&2
        exit 1
    fi
    mkdir -p "$data"
}

# The whole process: seconds, processor seconds (user, system) and KiB in NAME.time; what it says
# itself in NAME.log.
measure() {  # NAME COMMAND...
    local name=$1
    shift
    /usr/bin/time -a -o "$results/$name.time" -f '%e %U %S %M' "$@" >/dev/null 2>>"$results/$name.log"
}

# The minimum and the median of what an awk expression makes of each line.
range() {  # FILE EXPRESSION
    awk "{print $2}" "$results/$1" | sort -n |
        awk '{value[NR] = $1} END {print value[1], value[int((NR + 1) / 2)]}'
}

wholeProcessHead() {
    printf '\n%-28s %8s %8s %8s %8s %8s %8s\n' "whole process, $RUNS runs" \
        min/s median/s cpu/s "x Intake" peak/MB "x file"
}

wholeProcess() {  # NAME LABEL, beside the runs named "intake" or the third argument
    local least median cpu kibibytes ours
    read -r least median < <(range "$1.time" '$1')
    read -r cpu _ < <(range "$1.time" '$2 + $3')
    read -r _ kibibytes < <(range "$1.time" '$4')
    read -r ours _ < <(range "${3:-intake}.time" '$2 + $3')
    awk -v label="$2" -v least="$least" -v median="$median" -v cpu="$cpu" -v ours="$ours" \
        -v peak="$((kibibytes * 1024))" -v bytes="$(stat -c %s "$document")" 'BEGIN {
            printf "%-28s %8.2f %8.2f %8.2f %8.1f %8.0f %8.1f\n",
                label, least, median, cpu, cpu / ours, peak / 1e6, peak / bytes }'
}

insideProcessHead() {
    printf '\n%-28s %8s %8s %8s\n' "inside the process" min/s median/s cpu/s
}

insideProcess() {  # NAME LABEL
    local least median cpu
    read -r least median < <(range "$1.log" '$2')
    read -r cpu _ < <(range "$1.log" '$4')
    printf '%-28s %8.3f %8.3f %8.3f\n' "$2" "$least" "$median" "$cpu"
}

# Processor time of two that take turns, run by run, of which the median; the machine's own speed changes
# from minute to minute, and so does away with itself.
ratioOfTurns() {  # LABEL NAME NAME
    paste "$results/$2.time" "$results/$3.time" | awk '{print ($2 + $3) / ($6 + $7)}' | sort -n |
        awk -v label="$1" '{ratio[NR] = $1} END {
            printf "%s, processor time, median of %d turns: %.2f\n", label, NR, ratio[int((NR + 1) / 2)] }'
}
