#!/usr/bin/env bash
# Runs one load of a large SQLite table through ODBC side by side with sqlite3, isql, SQLite's own
# interface, and a bare ODBC fetch. See README.md for what the figures mean.
#
# usage: bench/compare_sql.sh
#   RUNS=5         how often each is run; they take turns
#   ROWS=1000000   records of six fields
#   BUILD=build/bench
# shellcheck disable=SC2016  # awk reads the $ of the expressions
set -euo pipefail
export LC_ALL=C
cd "$(dirname "$0")/.."

RUNS=${RUNS:-5}
ROWS=${ROWS:-1000000}
BUILD=${BUILD:-build/bench}
programs=$BUILD/bench
data=$BUILD/data
database=$data/rows-$ROWS.db
query='SELECT id, name, price, sold, active, note FROM items'

need() {  # PROGRAM PACKAGE
    command -v "$1" >/dev/null && return
    echo "compare_sql.sh: $1 is missing; it is in the Debian package \"$2\"" >&2
    exit 1
}
need sqlite3 sqlite3
need isql unixodbc
need /usr/bin/time time
if [[ ! -x $programs/odbc_fetch ]]; then
    echo "compare_sql.sh: first: cmake --preset bench && ninja -C build/bench" >&2
    exit 1
fi

mkdir -p "$data"
if [[ ! -e $database ]]; then
    rm -f "$database.new"
    sqlite3 "$database.new" "
        CREATE TABLE items (id INTEGER, name TEXT, price REAL, sold INTEGER, active BOOLEAN,
                            note VARCHAR(40));
        WITH RECURSIVE numbers (n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM numbers LIMIT $ROWS)
        INSERT INTO items
        SELECT n, 'Größe ' || n, n % 1000 * 0.25, n * 7919 % 100003, n % 2,
               CASE WHEN n % 10 = 0 THEN NULL ELSE 'note number ' || n END
        FROM numbers;"
    mv "$database.new" "$database"
fi

connection="Driver=SQLite3;Database=$PWD/$database"
[[ $database == /* ]] && connection="Driver=SQLite3;Database=$database"
command="MODE |SQL| CONNSTR |$connection| QUERY |$query| NUM_ROWS |$ROWS| TABLE |T| TGT_MODE 1 "
script=$data/script-sql.txt

# The same script, by SQLite alone.
cat >"$data/script.sql" <<'SQL'
SELECT printf('T[%d]={{id="%d";name="%s";price="%.6g";sold="%d";active="%d";note="%s";};};',
              id - 1, id, name, price, sold, active, ifnull(note, '')) FROM items;
SQL
writeAndCompare() {
    "$programs/run_command" "$command" >"$script"
    { sqlite3 "$database" <"$data/script.sql" | tr -d '\n'
        printf 'READER_NUM_RECORDS=%d;' "$ROWS"; } | cmp - "$script"
    echo "Intake writes the script that SQLite itself would write, $(stat -c %s "$script") bytes"
}
writeAndCompare

results=$(mktemp -d)
trap 'rm -r "$results"' EXIT

# The whole process: seconds, processor seconds (user, system) and KiB in NAME.time; what it says
# itself in NAME.log.
measure() {  # NAME COMMAND...
    local name=$1
    shift
    /usr/bin/time -a -o "$results/$name.time" -f '%e %U %S %M' "$@" >/dev/null 2>>"$results/$name.log"
}
echo "$query" >"$results/query"
for ((run = 1; run <= RUNS; ++run)); do
    measure intake "$programs/run_command" --stats "$command"
    measure odbc "$programs/odbc_fetch" "$connection" "$query"
    measure api "$programs/sqlite_fetch" "$database" "$query"
    measure sqlite3 sqlite3 -csv "$database" "$query"
    measure isql isql -b -k "$connection" <"$results/query"
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
        -v peak="$((kibibytes * 1024))" 'BEGIN {
            printf "%-30s %8.2f %8.2f %8.2f %8.2f %8.0f\n",
                label, least, median, cpu, ours / cpu, peak / 1e6 }'
}

printf '\n%-30s %8s %8s %8s %8s %8s\n' "whole process, $RUNS runs" \
    min/s median/s cpu/s Intake/x peak/MB
wholeProcess intake "Intake, table to script"
wholeProcess odbc "ODBC, bound columns, no more"
wholeProcess api "SQLite's own interface, no more"
wholeProcess sqlite3 "sqlite3 -csv"
wholeProcess isql "isql -b"
