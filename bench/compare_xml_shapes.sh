#!/usr/bin/env bash
# Runs loads of XML documents of three shapes beside xmllint, xmlstarlet and pugixml: by a plain
# path, which is followed while the document is read, and by the same in brackets, which needs the
# whole document. See README.md for what the figures mean.
#
# usage: bench/compare_xml_shapes.sh
#   RUNS=5           how often each is run; they take turns
#   BUILD=build/bench
#   MEGABYTES=100    of each document
# shellcheck disable=SC2154  # measure.sh says the rest
set -euo pipefail
cd "$(dirname "$0")/.."
# shellcheck source=bench/measure.sh
. bench/measure.sh

need xmlstarlet xmlstarlet
need xmllint libxml2-utils
need python3 python3
needPrograms
megabytes=${MEGABYTES:-100}
shapes=(attributes texts nested)

intake() {  # EXPRESSION DOCUMENT [RUNNER...]
    local command="MODE |XML| FILENAME |$2| XPATH |$1| NUM_ROWS |2147483647| TABLE |T| TGT_MODE 1 "
    "${@:3}" "$programs/run_command" --stats "$command"
}

for shape in "${shapes[@]}"; do
    document=$data/$shape.xml
    if [[ ! -e $document ]]; then
        python3 bench/make_xml.py "$shape" "$megabytes" "$document.new"
        mv "$document.new" "$document"
    fi
    intake /data/row "$document" >"$results/plain" 2>/dev/null
    intake "(/data/row)" "$document" 2>/dev/null | cmp - "$results/plain"
    echo "$shape: both ways write the same script, $(stat -c %s "$results/plain") bytes"
done

for ((run = 1; run <= RUNS; ++run)); do
    for shape in "${shapes[@]}"; do
        document=$data/$shape.xml
        intake /data/row "$document" measure "plain_$shape"
        intake "(/data/row)" "$document" measure "other_$shape"
        measure "pugixml_$shape" "$programs/pugixml_rows" "$document" /data/row
        measure "stream_$shape" xmllint --huge --stream --noout "$document"
        measure "tree_$shape" xmllint --huge --noout "$document"
        measure "starlet_$shape" xmlstarlet sel -T -t -m /data/row -o 'T[' -v 'position() - 1' \
            -o ']={{' -m '*' -v 'name()' -o '="' -v . -o '";' -b -o '};};' "$document"
    done
done

for shape in "${shapes[@]}"; do
    document=$data/$shape.xml
    printf '\n%s' "$shape"
    wholeProcessHead
    wholeProcess "plain_$shape" "Intake, /data/row" "plain_$shape"
    wholeProcess "other_$shape" "Intake, (/data/row)" "plain_$shape"
    wholeProcess "stream_$shape" "xmllint --stream" "plain_$shape"
    wholeProcess "tree_$shape" "xmllint, tree alone" "plain_$shape"
    wholeProcess "pugixml_$shape" "pugixml, tree and path" "plain_$shape"
    wholeProcess "starlet_$shape" "xmlstarlet" "plain_$shape"
done
