#!/usr/bin/env bash
# Runs one load of a large worksheet side by side with the programs that turn worksheets into text, and
# with unpacking and scanning the same file alone. See README.md for what the figures mean.
#
# usage: bench/compare_workbook.sh
#   RUNS=3        how often each is run; they take turns
#   ROWS=200000   of ten columns
#   BUILD=build/bench
# shellcheck disable=SC2016  # awk reads the $ of the expressions
set -euo pipefail
export LC_ALL=C
cd "$(dirname "$0")/.."

RUNS=${RUNS:-3}
ROWS=${ROWS:-200000}
BUILD=${BUILD:-build/bench}
programs=$BUILD/bench
data=$BUILD/data
book=$data/results-$ROWS.xlsx

need() {  # PROGRAM PACKAGE
    command -v "$1" >/dev/null && return
    echo "compare_workbook.sh: $1 is missing; it is in the Debian package \"$2\"" >&2
    exit 1
}
need xlsx2csv xlsx2csv
need ssconvert gnumeric
need soffice libreoffice-calc
need /usr/bin/time time
for module in xlsxwriter openpyxl; do
    /usr/bin/python3 -c "import $module" || need "python3: $module" "python3-$module"
done
if [[ ! -x $programs/workbook_job ]]; then
    echo "compare_workbook.sh: first: cmake --preset bench && ninja -C build/bench" >&2
    exit 1
fi

mkdir -p "$data"
if [[ ! -e $book ]]; then
    /usr/bin/python3 bench/make_workbook.py "$book.new" "$ROWS"
    mv "$book.new" "$book"
fi

results=$(mktemp -d)
trap 'rm -r "$results"' EXIT

command="MODE |SQL| CONNSTR |Provider=Microsoft.ACE.OLEDB.12.0;Data Source=$book;Extended \
Properties=\"Excel 12.0 Xml;HDR=YES\";| QUERY |SELECT * FROM [Results\$];| NUM_ROWS |0| TABLE |T| \
TGT_MODE 1 "
read_openpyxl='
import sys, openpyxl
for row in openpyxl.load_workbook(sys.argv[1], read_only=True, data_only=True)["Results"].rows:
    print("\t".join("" if cell.value is None else str(cell.value) for cell in row))'

# Seconds, processor seconds (user, system) and KiB of the whole process in NAME.time.
measure() {  # NAME COMMAND...
    local name=$1
    shift
    /usr/bin/time -a -o "$results/$name.time" -f '%e %U %S %M' "$@" >"$results/$name.out" \
        2>>"$results/$name.log" || { cat "$results/$name.log" >&2; exit 1; }
}
for ((run = 1; run <= RUNS; ++run)); do
    measure intake "$programs/run_command" "$command"
    measure xlsx2csv xlsx2csv "$book"
    measure openpyxl /usr/bin/python3 -c "$read_openpyxl" "$book"
    measure ssconvert ssconvert --export-type=Gnumeric_stf:stf_csv "$book" "$results/gnumeric.csv"
    measure libreoffice soffice "-env:UserInstallation=file://$results/profile" --headless \
        --convert-to csv --outdir "$results" "$book"
done

# The minimum and the median of what an awk expression makes of each line.
range() {  # FILE EXPRESSION
    awk "{print $2}" "$results/$1" | sort -n |
        awk '{value[NR] = $1} END {print value[1], value[int((NR + 1) / 2)]}'
}

row() {  # NAME LABEL
    local least median cpu kibibytes ours
    read -r least median < <(range "$1.time" '$1')
    read -r cpu _ < <(range "$1.time" '$2 + $3')
    read -r _ kibibytes < <(range "$1.time" '$4')
    read -r ours _ < <(range intake.time '$2 + $3')
    awk -v label="$2" -v least="$least" -v median="$median" -v cpu="$cpu" -v ours="$ours" \
        -v peak="$((kibibytes * 1024))" 'BEGIN {
            printf "%-30s %8.2f %8.2f %8.2f %8.1f %8.0f\n",
                label, least, median, cpu, cpu / ours, peak / 1e6 }'
}

printf '%s: %s bytes; the script: %s bytes\n\n' "$book" "$(stat -c %s "$book")" \
    "$(stat -c %s "$results/intake.out")"
printf '%-30s %8s %8s %8s %8s %8s\n' "whole process, $RUNS runs" \
    min/s median/s cpu/s "x Intake" peak/MB
row intake "Intake, file to script"
row ssconvert "ssconvert, file to CSV"
row xlsx2csv "xlsx2csv, file to CSV"
row openpyxl "openpyxl, read only, to TSV"
row libreoffice "LibreOffice, headless, to CSV"
echo
"$programs/workbook_job" "$book" Results "$RUNS"
