#!/usr/bin/env bash
# Runs one load of a large JSON document side by side with the same job in jq and node, and with
# RapidJSON's parser alone. See README.md for what the figures mean.
#
# usage: bench/compare_json.sh
#   RUNS=5           how often each is run; they take turns
#   BYTES=100000000  size of the document
#   BUILD=build/bench
# shellcheck disable=SC2016,SC2154  # awk reads the $ of the expressions; measure.sh says the rest
set -euo pipefail
cd "$(dirname "$0")/.."
# shellcheck source=bench/measure.sh
. bench/measure.sh

BYTES=${BYTES:-100000000}
need jq jq
need node nodejs
needPrograms
document=$data/items-$BYTES.json

commandFor() {  # DOCUMENT
    echo "MODE |JSON| FILENAME |$1| XPATH |items| NUM_ROWS |0| TABLE |T| TGT_MODE 1 "
}
if [[ ! -e $document ]]; then
    "$programs/make_items" "$BYTES" >"$document.new"
    mv "$document.new" "$document"
fi

script=$data/script-$BYTES.txt
writeAndCompare() {  # DOCUMENT
    "$programs/run_command" "$(commandFor "$1")" >"$script"
    node bench/script.mjs "$1" | cmp - "$script"
    jq -j -f bench/script.jq "$1" | cmp - "$script"
    echo "$1: all three write the same script, $(stat -c %s "$script") bytes"
}
writeAndCompare bench/edge_cases.json
writeAndCompare "$document"

for ((run = 1; run <= RUNS; ++run)); do
    measure intake "$programs/run_command" --stats "$(commandFor "$document")"
    measure rapidjson "$programs/rapidjson_parse" "$document"
    measure store "$programs/store" "$script"
    measure node node bench/script.mjs "$document"
    measure jq_parse jq '.items | length' "$document"
    measure jq jq -j -f bench/script.jq "$document"
done

wholeProcessHead
wholeProcess intake "Intake, file to script"
wholeProcess node "node"
wholeProcess jq "jq"
wholeProcess jq_parse "jq, parsing only"
wholeProcess store "store, script to fields"

insideProcessHead
insideProcess intake "Intake, file to script"
insideProcess rapidjson "RapidJSON, parsing only"
insideProcess store "store, script to fields"
echo "$(range intake.log '$4') $(range rapidjson.log '$4')" |
    awk '{printf "\nIntake / RapidJSON, processor time: %.2f\n", $1 / $3}'
