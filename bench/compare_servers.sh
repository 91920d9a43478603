#!/usr/bin/env bash
# Runs one load of a large table of PostgreSQL and of MariaDB side by side with a bare fetch through the same driver, and with the
# servers' own clients. See README.md for what the figures mean.
#
# usage: bench/compare_servers.sh
#   RUNS=5         how often each is run; they take turns
#   ROWS=1000000   records of twenty fields
#   BUILD=build/bench
# shellcheck disable=SC2154  # measure.sh says what `programs`, `results` and `data` are
set -euo pipefail
cd "$(dirname "$0")/.."
# shellcheck source=bench/measure.sh
. bench/measure.sh

ROWS=${ROWS:-1000000}
postgres_programs=/usr/lib/postgresql/15/bin
postgres_port=${POSTGRES_PORT:-25433}
mariadb_port=${MARIADB_PORT:-23307}
query='SELECT * FROM items ORDER BY id'
export PGPASSWORD=s3cret

need setpriv util-linux
need "$postgres_programs/initdb" postgresql
need psql postgresql-client
need mariadbd mariadb-server
need mariadb mariadb-client
needPrograms

# These servers refuse to be run by root.
asUser() {  # USER COMMAND...
    local user=$1
    shift
    if [[ $(id -u) = 0 ]]; then
        setpriv --reuid "$user" --regid "$user" --init-groups --pdeathsig QUIT -- "$@"
    else
        "$@"
    fi
}

servers=$(mktemp -d)
chmod 755 "$servers"
pids=()
stop() {
    for pid in "${pids[@]}"; do kill "$pid" 2>/dev/null || true; done
    wait
    rm -rf "$servers" "$results"
}
trap stop EXIT

folderOf() {  # USER
    mkdir "$servers/$1"
    [[ $(id -u) != 0 ]] || chown "$1" "$servers/$1"
}

postgres() {  # the client, as it is measured
    psql --no-psqlrc --quiet --host 127.0.0.1 --port "$postgres_port" --username designer postgres "$@"
}

mysql() {
    mariadb --no-defaults --default-character-set=utf8mb4 --host=127.0.0.1 --port="$mariadb_port" \
        --user=designer --password=s3cret league "$@"
}

waitFor() {  # COMMAND...
    for ((try = 0; try < 300; ++try)); do
        "$@" >/dev/null 2>&1 && return
        sleep 0.2
    done
    echo "$0: the server does not start; see $servers" >&2
    exit 1
}

startPostgres() {
    folderOf postgres
    echo s3cret >"$servers/password"
    asUser postgres "$postgres_programs/initdb" --pgdata "$servers/postgres/data" --username designer \
        --pwfile "$servers/password" --auth scram-sha-256 --encoding UTF8 --locale C.UTF-8 --no-sync >/dev/null
    asUser postgres "$postgres_programs/postgres" -D "$servers/postgres/data" -p "$postgres_port" \
        -c listen_addresses=127.0.0.1 -c unix_socket_directories= -c fsync=off >"$servers/postgres.log" 2>&1 &
    pids+=($!)
    waitFor postgres -c 'SELECT 1'
}

startMariaDb() {
    folderOf mysql
    asUser mysql mariadb-install-db --no-defaults --datadir="$servers/mysql/data" \
        --tmpdir="$servers/mysql" --skip-test-db --auth-root-authentication-method=normal >/dev/null
    printf '%s\n' "CREATE DATABASE league CHARACTER SET utf8mb4;" \
        "CREATE USER designer IDENTIFIED BY 's3cret';" "GRANT ALL ON league.* TO designer;" >"$servers/statements"
    asUser mysql mariadbd --no-defaults --datadir="$servers/mysql/data" --tmpdir="$servers/mysql" \
        --port="$mariadb_port" --socket="$servers/mysql/socket" --bind-address=127.0.0.1 \
        --pid-file="$servers/mysql/process" --init-file="$servers/statements" \
        --innodb-flush-log-at-trx-commit=0 >"$servers/mysql.log" 2>&1 &
    pids+=($!)
    waitFor mysql -e 'SELECT 1'
}

columns='id INTEGER, big BIGINT, place SMALLINT, sold INTEGER, goals INTEGER, year INTEGER, home INTEGER,
    price DOUBLE PRECISION, mean DOUBLE PRECISION, angle DOUBLE PRECISION, amount DECIMAL(10,2), mass DECIMAL(10,3),
    name VARCHAR(40), team VARCHAR(40), country VARCHAR(8), player TEXT, kit VARCHAR(3), status VARCHAR(10),
    part VARCHAR(10), note VARCHAR(40)'
values="n, n * 7919, n % 1000, n % 99991 * 31, n % 97, 2026 - n % 80, n % 2,
    n % 1000 * 0.25, n / 7e0, n % 360, n % 100000 / 100.0, n % 5000 / 1000.0,
    concat('Größe ', n), concat('team ', n % 64), concat('C', n % 50), concat('player number ', n),
    concat('K', n % 8), 'open', concat('p', n % 12), CASE WHEN n % 10 = 0 THEN NULL ELSE concat('note number ', n) END"

startPostgres
startMariaDb
postgres -c "CREATE TABLE items ($columns)" -c "INSERT INTO items SELECT $values FROM generate_series(1, $ROWS::bigint) AS n" \
    -c "VACUUM ANALYZE items"
mysql -e "CREATE TABLE items ($columns); INSERT INTO items SELECT $values FROM (SELECT seq AS n FROM seq_1_to_$ROWS) AS numbers"

login="Server=127.0.0.1;Uid=designer;Pwd=s3cret"
postgres_connection="Driver={PostgreSQL Unicode};Port=$postgres_port;Database=postgres;$login"
mariadb_connection="Driver={MariaDB Unicode};Port=$mariadb_port;Database=league;$login"
commandFor() {  # CONNECTION
    echo "MODE |SQL| CONNSTR |$1| QUERY |$query| NUM_ROWS |$ROWS| TABLE |T| TGT_MODE 1 "
}

document=$data/script-servers.txt
"$programs/run_command" "$(commandFor "$postgres_connection")" >"$document"
"$programs/run_command" "$(commandFor "$mariadb_connection")" | cmp - "$document"
echo "Intake writes the same script from both servers, $(stat -c %s "$document") bytes"

for ((run = 1; run <= RUNS; ++run)); do
    measure postgres "$programs/run_command" --stats "$(commandFor "$postgres_connection")"
    measure postgres-fetch "$programs/odbc_fetch" "$postgres_connection" "$query"
    measure postgres-cursor "$programs/run_command" --stats "$(commandFor "$postgres_connection;UseDeclareFetch=1;Fetch=1000")"
    measure psql psql --no-psqlrc --csv --host 127.0.0.1 --port "$postgres_port" --username designer postgres -c "$query"
    measure mariadb "$programs/run_command" --stats "$(commandFor "$mariadb_connection")"
    measure mariadb-fetch "$programs/odbc_fetch" "$mariadb_connection" "$query"
    measure mariadb-batch mariadb --no-defaults --batch --host=127.0.0.1 --port="$mariadb_port" \
        --user=designer --password=s3cret league -e "$query"
done

wholeProcessHead
wholeProcess postgres "Intake, PostgreSQL" postgres
wholeProcess postgres-fetch "its driver, bare fetch" postgres
wholeProcess postgres-cursor "Intake, UseDeclareFetch=1" postgres
wholeProcess psql "psql --csv" postgres
wholeProcess mariadb "Intake, MariaDB" mariadb
wholeProcess mariadb-fetch "its driver, bare fetch" mariadb
wholeProcess mariadb-batch "mariadb --batch" mariadb

echo
ratioOfTurns "PostgreSQL, Intake / bare fetch" postgres postgres-fetch
ratioOfTurns "MariaDB, Intake / bare fetch" mariadb mariadb-fetch
