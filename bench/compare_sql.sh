#!/usr/bin/env bash
# Runs one load of a large SQLite table side by side with sqlite3, and SQLite's own interface. See README.md for what the figures mean.
#
# usage: bench/compare_sql.sh
#   RUNS=5         how often each is run; they take turns
#   ROWS=1000000   records of six fields
#   BUILD=build/bench
# shellcheck disable=SC2016,SC2154  # awk reads the $ of the expressions; measure.sh says the rest
set -euo pipefail
cd "$(dirname "$0")/.."
# shellcheck source=bench/measure.sh
. bench/measure.sh

ROWS=${ROWS:-1000000}
document=$data/rows-$ROWS.db
query='SELECT id, name, price, sold, active, note FROM items'

need sqlite3 sqlite3
needPrograms
if [[ ! -e $document ]]; then
    rm -f "$document.new"
    sqlite3 "$document.new" "
        CREATE TABLE items (id INTEGER, name TEXT, price REAL, sold INTEGER, active BOOLEAN,
                            note VARCHAR(40));
        WITH RECURSIVE numbers (n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM numbers LIMIT $ROWS)
        INSERT INTO items
        SELECT n, 'Größe ' || n, n % 1000 * 0.25, n * 7919 % 100003, n % 2,
               CASE WHEN n % 10 = 0 THEN NULL ELSE 'note number ' || n END
        FROM numbers;"
    mv "$document.new" "$document"
fi

[[ $document == /* ]] || document=$PWD/$document
connection="Provider=SQLite;Data Source=$document"
command="MODE |SQL| CONNSTR |$connection| QUERY |$query| NUM_ROWS |$ROWS| TABLE |T| TGT_MODE 1 "
script=$data/script-sql.txt

# The same script, by SQLite alone.
cat >"$data/script.sql" <<'SQL'
SELECT printf('T[%d]={{id="%d";name="%s";price="%.6g";sold="%d";active="%d";note="%s";};};',
              id - 1, id, name, price, sold, active, ifnull(note, '')) FROM items;
SQL
writeAndCompare() {
    "$programs/run_command" "$command" >"$script"
    { sqlite3 "$document" <"$data/script.sql" | tr -d '\n'
        printf 'READER_NUM_RECORDS=%d;' "$ROWS"; } | cmp - "$script"
    echo "Intake writes the script that SQLite itself would write, $(stat -c %s "$script") bytes"
}
writeAndCompare

for ((run = 1; run <= RUNS; ++run)); do
    measure intake "$programs/run_command" --stats "$command"
    measure api "$programs/sqlite_fetch" "$document" "$query"
    measure sqlite3 sqlite3 -csv "$document" "$query"
done

wholeProcessHead
wholeProcess intake "Intake, table to script"
wholeProcess api "SQLite's own interface, no more"
wholeProcess sqlite3 "sqlite3 -csv"
