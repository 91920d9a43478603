#!/usr/bin/env bash
# Loads one large JSON document from a web server on this machine and from its file, in turns, and
# prints how much longer the way over HTTP takes.
#
# usage: bench/http_vs_file.sh
#   RUNS=5           how often each is run
#   BYTES=100000000  size of the document
#   BUILD=build/bench
set -euo pipefail
export LC_ALL=C
cd "$(dirname "$0")/.."

RUNS=${RUNS:-5}
BYTES=${BYTES:-100000000}
BUILD=${BUILD:-build/bench}
programs=$BUILD/bench
data=$PWD/$BUILD/data
[[ $BUILD == /* ]] && data=$BUILD/data
items=$data/items-$BYTES.json

if [[ ! -x /usr/sbin/nginx ]]; then
    echo "http_vs_file.sh: nginx is missing; it is in the Debian package \"nginx-light\"" >&2
    exit 1
fi
if [[ ! -x $programs/run_command ]]; then
    echo "http_vs_file.sh: first: cmake --preset bench && ninja -C build/bench" >&2
    exit 1
fi

mkdir -p "$data"
if [[ ! -e $items ]]; then
    "$programs/make_items" "$BYTES" >"$items.new"
    mv "$items.new" "$items"
fi

server=$(mktemp -d)
nginx=
stop() {
    if [[ -n $nginx ]]; then kill "$nginx"; wait "$nginx" || true; fi
    rm -r "$server"
}
trap stop EXIT

listening() { (: <"/dev/tcp/127.0.0.1/$port") 2>/dev/null; }
port=$((20000 + RANDOM % 10000))
while listening; do port=$((port + 1)); done
cat >"$server/nginx.conf" <<CONFIGURATION
daemon off;
master_process off;
pid nginx.pid;
error_log stderr;
events {}
http {
    access_log off;
    client_body_temp_path temporary;
    proxy_temp_path temporary;
    fastcgi_temp_path temporary;
    uwsgi_temp_path temporary;
    scgi_temp_path temporary;
    sendfile on;
    server { listen 127.0.0.1:$port; root $data; }
}
CONFIGURATION
/usr/sbin/nginx -p "$server" -c nginx.conf -e stderr &
nginx=$!
until listening; do
    kill -0 "$nginx" || exit 1
    sleep 0.1
done

load() {  # SOURCE; writes the script, prints the statistics
    "$programs/run_command" --stats \
        "MODE |JSON| FILENAME |$1| XPATH |items| NUM_ROWS |0| TABLE |T| TGT_MODE 1 " 2>&1 \
        >"$server/script"
}
seconds() { sed -n 's/^seconds \([0-9.]*\) .*/\1/p'; }

url=http://127.0.0.1:$port/${items##*/}
for ((run = 1; run <= RUNS; ++run)); do
    load "$items" | seconds >>"$server/file.times"
    mv "$server/script" "$server/file.script"
    load "$url" | seconds >>"$server/http.times"
    # The first line is the transport's message.
    tail -n +2 "$server/script" | cmp - "$server/file.script"
done

least() { sort -n "$1" | head -n 1; }
awk -v file="$(least "$server/file.times")" -v http="$(least "$server/http.times")" \
    -v bytes="$BYTES" -v runs="$RUNS" 'BEGIN {
    printf "%d bytes, the best of %d runs\n", bytes, runs
    printf "from the file  %.3f s\n", file
    printf "over HTTP      %.3f s\n", http
    printf "ratio          %.2f (at most 1.30 is wanted)\n", http / file
}'
