#!/usr/bin/env bash
# Runs loads of a large XML document side by side with the same jobs in xmlstarlet and xsltproc, and
# with libxml2's parse alone. See README.md for what the figures mean.
#
# usage: bench/compare_xml.sh
#   RUNS=5           how often each is run; they take turns
#   BUILD=build/bench
# shellcheck disable=SC2016,SC2154  # awk reads the $ of the expressions; measure.sh says the rest
set -euo pipefail
cd "$(dirname "$0")/.."
# shellcheck source=bench/measure.sh
. bench/measure.sh

need xmlstarlet xmlstarlet
need xsltproc xsltproc
needPrograms
document=$data/rows.xml
if [[ ! -e $document ]]; then
    "$programs/xml_job" "$document.new" /data/row 1 >/dev/null
    mv "$document.new" "$document"
fi

declare -A expressions=([rows]=/data/row [any]=//row)

intake() {  # EXPRESSION DOCUMENT [RUNNER...]
    local command="MODE |XML| FILENAME |$2| XPATH |$1| NUM_ROWS |0| TABLE |T| TGT_MODE 1 "
    "${@:3}" "$programs/run_command" --stats "$command"
}
starlet() {  # EXPRESSION DOCUMENT [RUNNER...]
    "${@:3}" xmlstarlet sel -T -t -m "$1" -o 'T[' -v 'position() - 1' -o ']={{' \
        -m '*' -v 'name()' -o '="' -v . -o '";' -b -o '};};' -b \
        -o 'READER_NUM_RECORDS=' -v "count($1)" -o ';' "$2"
}
transform() {  # EXPRESSION DOCUMENT [RUNNER...]
    sed "s|@XPATH@|$1|" bench/rows.xsl >"$results/rows.xsl"
    "${@:3}" xsltproc "$results/rows.xsl" "$2"
}

compare() {  # EXPRESSION DOCUMENT
    local script=$data/script.txt
    intake "$1" "$2" >"$script" 2>/dev/null
    starlet "$1" "$2" | cmp - "$script"
    transform "$1" "$2" | cmp - "$script"
    echo "$2, $1: all three write the same script, $(stat -c %s "$script") bytes"
}
for expression in "${expressions[@]}"; do
    compare "$expression" bench/edge_cases.xml
    compare "$expression" "$document"
done

for ((run = 1; run <= RUNS; ++run)); do
    for name in "${!expressions[@]}"; do
        intake "${expressions[$name]}" "$document" measure "intake_$name"
        starlet "${expressions[$name]}" "$document" measure "starlet_$name"
        transform "${expressions[$name]}" "$document" measure "xslt_$name"
    done
    measure libxml "$programs/libxml_parse" "$document"
done

wholeProcessHead
for name in rows any; do
    label=${expressions[$name]}
    wholeProcess "intake_$name" "Intake, $label" "intake_$name"
    wholeProcess "xslt_$name" "xsltproc, $label" "intake_$name"
    wholeProcess "starlet_$name" "xmlstarlet, $label" "intake_$name"
done
wholeProcess libxml "libxml2, parse and free" intake_rows

insideProcessHead
insideProcess intake_rows "Intake, /data/row"
insideProcess intake_any "Intake, //row"
insideProcess libxml "libxml2, parse and free"
for name in rows any; do
    echo "${expressions[$name]} $(range "intake_$name.log" '$4') $(range libxml.log '$4')"
done | awk '{printf "Intake / libxml2, processor time, %s: %.2f\n", $1, $2 / $4}'

printf '\nstage by stage, processor time; then both in turn in one process\n'
for name in rows any; do
    echo "${expressions[$name]}"
    "$programs/xml_job" "$document" "${expressions[$name]}" "$RUNS"
done
