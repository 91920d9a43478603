#!/usr/bin/env bash
# What a load costs by kind and number of records: processor time and the most memory of a process that
# loads one source once into a DataArray. See README.md.
#
# usage: bench/costs.sh
#   RUNS=5           how often each is run; the least is shown
#   BUILD=build/bench
# shellcheck disable=SC2154,SC2016  # measure.sh says the rest; awk reads the $ of the expressions
set -euo pipefail
cd "$(dirname "$0")/.."
# shellcheck source=bench/measure.sh
. bench/measure.sh
needPrograms

commandFor() {  # FILE
    local end="NUM_ROWS |0| TABLE |T| TGT_MODE 1 "
    local excel="Provider=Microsoft.ACE.OLEDB.12.0;Extended Properties=\"Excel 12.0 Xml;HDR=YES\";Data Source=$1"
    case $1 in
        *.json) echo "MODE |JSON| FILENAME |$1| XPATH |r| $end" ;;
        *.xml) echo "MODE |XML| FILENAME |$1| XPATH |/d/r| $end" ;;
        *.html) echo "MODE |HTML| FILENAME |$1| SHEET |ID t| $end" ;;
        *.db) echo "MODE |SQL| CONNSTR |Provider=SQLite;Data Source=$1| QUERY |SELECT * FROM r| $end" ;;
        *.xlsx) echo "MODE |SQL| CONNSTR |$excel| QUERY |SELECT * FROM [r\$]| $end" ;;
    esac
}

printf '%-6s %9s %12s %10s %9s\n' kind records source/KB cpu/ms peak/MB
for kind in json xml html db xlsx; do
    for count in 10 1000 10000 100000; do
        source=$PWD/$data/records-$count.$kind
        [[ -e $source ]] || /usr/bin/python3 bench/make_records.py "$count" "$source"
        name=$kind-$count
        for ((run = 1; run <= RUNS; ++run)); do
            "$programs/run_command" --stats "$(commandFor "$source")" 2>>"$results/$name.log" >/dev/null
        done
        read -r cpu _ < <(range "$name.log" '$4 * 1000')
        read -r peak _ < <(range "$name.log" '$6')
        printf '%-6s %9s %12.0f %10.1f %9.0f\n' "$kind" "$count" \
            "$(($(stat -c %s "$source") / 1000))" "$cpu" "$peak"
    done
done
