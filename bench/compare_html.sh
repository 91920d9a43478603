#!/usr/bin/env bash
# Loads one table out of a large HTML page, found by ID, by CLASS and by text, side by side with the
# same job in Python with lxml and BeautifulSoup, and with parsers alone. See README.md for what the
# figures mean.
#
# usage: bench/compare_html.sh
#   RUNS=5          how often each is run; they take turns
#   BYTES=10000000  size of the page
#   BUILD=build/bench
# shellcheck disable=SC2016,SC2154  # awk reads the $ of the expressions; measure.sh says the rest
set -euo pipefail
cd "$(dirname "$0")/.."
# shellcheck source=bench/measure.sh
. bench/measure.sh

BYTES=${BYTES:-10000000}
/usr/bin/python3 -c 'import bs4, lxml.html' || {
    echo "$0: the Debian packages python3-lxml and python3-bs4 are needed" >&2
    exit 1
}
needPrograms
export PYTHONIOENCODING=utf-8
document=$data/page-$BYTES.html
if [[ ! -e $document ]]; then
    "$programs/make_page" "$BYTES" >"$document.new" 2>"$document.tables"
    mv "$document.new" "$document"
fi
last=$(<"$document.tables")
kinds=(ID CLASS TEXT)
declare -A selectors=([ID]="ID table-$last" [CLASS]="CLASS results-$last" [TEXT]="TEXT Results $last")

intake() {  # KIND [RUNNER...]
    local fields="KEY |Key| NUM_ROWS |0| TABLE |T| TGT_MODE 0 "
    "${@:2}" "$programs/run_command" --stats \
        "MODE |HTML| FILENAME |$document| SHEET |${selectors[$1]}| $fields"
}
python() {  # LIBRARY KIND [RUNNER...]
    "${@:3}" bench/html_table.py "$1" "$document" "${selectors[$2]}"
}

for kind in "${kinds[@]}"; do
    script=$data/script.txt
    intake "$kind" >"$script" 2>/dev/null
    python lxml "$kind" | cmp - "$script"
    python bs4 "$kind" | cmp - "$script"
    echo "${selectors[$kind]}: all three write the same script, $(stat -c %s "$script") bytes"
done

for ((run = 1; run <= RUNS; ++run)); do
    for kind in "${kinds[@]}"; do
        intake "$kind" measure "intake_$kind"
        python lxml "$kind" measure "lxml_$kind"
        python bs4 "$kind" measure "bs4_$kind"
        measure "stages_$kind" "$programs/html_stages" "$document" "${selectors[$kind]}"
    done
    for parser in intake gumbo myhtml; do
        measure "parse_$parser" "$programs/html_parse" "$parser" "$document"
    done
done

wholeProcessHead
for kind in "${kinds[@]}"; do
    wholeProcess "intake_$kind" "Intake, $kind" "intake_$kind"
    wholeProcess "lxml_$kind" "lxml, $kind" "intake_$kind"
    wholeProcess "bs4_$kind" "BeautifulSoup, $kind" "intake_$kind"
done

insideProcessHead
for kind in "${kinds[@]}"; do
    insideProcess "intake_$kind" "Intake, $kind"
done
insideProcess parse_intake "Intake's parser alone"
insideProcess parse_gumbo "Gumbo alone"
insideProcess parse_myhtml "MyHTML alone"

printf '\n%-28s %8s %8s %8s %8s\n' "stages, cpu/ms" decode parse find write
for kind in "${kinds[@]}"; do
    printf '%-28s' "$kind"
    for column in 2 4 6 8; do
        printf ' %8.1f' "$(range "stages_$kind.log" "\$$column * 1000" | cut -d' ' -f1)"
    done
    echo
done

echo
for kind in "${kinds[@]}"; do
    echo "$kind $(range "intake_$kind.log" '$4') $(range parse_intake.log '$4')"
done | awk '{printf "Intake / its parser alone, processor time, %s: %.2f\n", $1, $2 / $4}'
