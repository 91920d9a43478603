#!/usr/bin/env bash
# Loads a small JSON document from a web server on this machine again and again, as one instance
# does that loads by itself, and prints what a load takes of the processor: of the plugin, and of
# the server.
#
# usage: bench/repeated_loads.sh
#   LOADS=500        how often it is loaded
#   PER_SECOND=50
#   BYTES=4000       size of the document
#   BUILD=build/bench
set -euo pipefail
export LC_ALL=C
cd "$(dirname "$0")/.."

LOADS=${LOADS:-500}
PER_SECOND=${PER_SECOND:-50}
BYTES=${BYTES:-4000}
BUILD=${BUILD:-build/bench}
programs=$BUILD/bench
systemsAuthorities=/etc/ssl/certs/ca-certificates.crt

need() {  # FILE PACKAGE
    [[ -e $1 ]] && return
    echo "repeated_loads.sh: $1 is missing; it is in the Debian package \"$2\"" >&2
    exit 1
}
need /usr/sbin/nginx nginx-light
need /usr/bin/openssl openssl
need "$systemsAuthorities" ca-certificates
if [[ ! -x $programs/load_often ]]; then
    echo "repeated_loads.sh: first: cmake --preset bench && ninja -C build/bench" >&2
    exit 1
fi

server=$(mktemp -d)
nginx=
stop() {
    if [[ -n $nginx ]]; then kill "$nginx"; wait "$nginx" || true; fi
    rm -r "$server"
}
trap stop EXIT

listening() { (: <"/dev/tcp/127.0.0.1/$1") 2>/dev/null; }
freePort() {  # FROM
    local port=$1
    while listening "$port"; do port=$((port + 1)); done
    echo "$port"
}
port=$(freePort $((20000 + RANDOM % 5000)))
securePort=$(freePort $((25000 + RANDOM % 5000)))

openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -days 1 -subj /CN=localhost \
    -addext subjectAltName=IP:127.0.0.1 -keyout "$server/key.pem" -out "$server/one.pem" 2>/dev/null
cat "$server/one.pem" "$systemsAuthorities" >"$server/all.pem"
"$programs/make_items" "$BYTES" >"$server/items.json"

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
    server {
        listen 127.0.0.1:$port;
        listen 127.0.0.1:$securePort ssl;
        ssl_certificate one.pem;
        ssl_certificate_key key.pem;
        root $server;
    }
}
CONFIGURATION
/usr/sbin/nginx -p "$server" -c nginx.conf -e stderr &
nginx=$!
until listening "$port"; do
    kill -0 "$nginx" || exit 1
    sleep 0.1
done

serverNanoseconds() { cut -d ' ' -f 1 "/proc/$nginx/schedstat"; }

row() {  # LABEL URL AUTHORITIES
    local before ours
    before=$(serverNanoseconds)
    ours=$(SSL_CERT_FILE=$3 "$programs/load_often" "$LOADS" "$PER_SECOND" \
        "MODE |JSON| FILENAME |$2| XPATH |items| NUM_ROWS |0| TABLE |T| TGT_MODE 1 " 2>&1 >/dev/null)
    awk -v label="$1" -v ours="$ours" -v theirs="$(($(serverNanoseconds) - before))" \
        -v loads="$LOADS" \
        'BEGIN { printf "%-34s %8.2f %8.2f\n", label, ours, theirs / 1e6 / loads }'
}

printf '%-34s %8s %8s\n' "cpu/ms of a load, $LOADS loads" Intake server
row "HTTP" "http://127.0.0.1:$port/items.json" "$server/one.pem"
row "HTTPS, one authority" "https://127.0.0.1:$securePort/items.json" "$server/one.pem"
row "HTTPS, the system's authorities" "https://127.0.0.1:$securePort/items.json" "$server/all.pem"
