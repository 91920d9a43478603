#!/usr/bin/env bash
# Runs one load of a large worksheet side by side with the programs that turn worksheets into text, and
# with unpacking and scanning the same file alone. See README.md for what the figures mean.
#
# usage: bench/compare_workbook.sh
#   RUNS=3        how often each is run; they take turns
#   ROWS=200000   of ten columns
#   BUILD=build/bench
# shellcheck disable=SC2154  # measure.sh says the rest
set -euo pipefail
cd "$(dirname "$0")/.."
RUNS=${RUNS:-3}
# shellcheck source=bench/measure.sh
. bench/measure.sh

ROWS=${ROWS:-200000}
document=$data/results-$ROWS.xlsx
need xlsx2csv xlsx2csv
need ssconvert gnumeric
need soffice libreoffice-calc
for module in xlsxwriter openpyxl; do
    /usr/bin/python3 -c "import $module" || need "python3: $module" "python3-$module"
done
needPrograms
if [[ ! -e $document ]]; then
    /usr/bin/python3 bench/make_workbook.py "$document.new" "$ROWS"
    mv "$document.new" "$document"
fi

command="MODE |SQL| CONNSTR |Provider=Microsoft.ACE.OLEDB.12.0;Data Source=$document;Extended \
Properties=\"Excel 12.0 Xml;HDR=YES\";| QUERY |SELECT * FROM [Results\$];| NUM_ROWS |0| TABLE |T| \
TGT_MODE 1 "
read_openpyxl='
import sys, openpyxl
for row in openpyxl.load_workbook(sys.argv[1], read_only=True, data_only=True)["Results"].rows:
    print("\t".join("" if cell.value is None else str(cell.value) for cell in row))'

for ((run = 1; run <= RUNS; ++run)); do
    measure intake "$programs/run_command" "$command"
    measure xlsx2csv xlsx2csv "$document"
    measure openpyxl /usr/bin/python3 -c "$read_openpyxl" "$document"
    measure ssconvert ssconvert --export-type=Gnumeric_stf:stf_csv "$document" "$results/gnumeric.csv"
    measure libreoffice soffice "-env:UserInstallation=file://$results/profile" --headless \
        --convert-to csv --outdir "$results" "$document"
done

wholeProcessHead
wholeProcess intake "Intake, file to script"
wholeProcess ssconvert "ssconvert, file to CSV"
wholeProcess xlsx2csv "xlsx2csv, file to CSV"
wholeProcess openpyxl "openpyxl, read only, to TSV"
wholeProcess libreoffice "LibreOffice, headless, to CSV"
echo
"$programs/workbook_job" "$document" Results "$RUNS"
