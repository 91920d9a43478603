#!/usr/bin/env python3
"""Loads the same sources by two builds of the workbench and compares what they execute, byte by byte.

    tests/compare_builds.py LINUX_WORKBENCH -- WINDOWS_WORKBENCH...

The second command may have several words, for example scripts/wine and the program. The sources are
the samples, from files and over HTTP, and the golden requests of the JSON reader.
"""

import base64
import http.server
import json
import pathlib
import re
import subprocess
import sys
import tempfile
import threading

ROOT = pathlib.Path(__file__).resolve().parent.parent
SAMPLES = ROOT / "samples"
GOLDEN = ROOT / "tests/readers/json/golden"
PASSWORD = "Basic " + base64.b64encode(b"designer:secret").decode()

# The parameter that is written as each key of a command text.
PARAMETERS = {"MODE": "queryMode", "FILENAME": "filename", "XPATH": "xpath", "KEY": "key",
              "TABLE": "table", "FROM_ROW": "fromRow", "NUM_ROWS": "numRows", "TGT_MODE": "mode",
              "VARSPREFIX": "varsPrefix", "FIELDS_DELIMITER": "delimiter",
              "ROWS_DELIMITER": "rowsDelimiter"}


class Server(http.server.BaseHTTPRequestHandler):
    """The samples; below /private/ with a password, below /moved/ after a redirect, and at /echo
    what was asked for."""

    protocol_version = "HTTP/1.1"

    def do_GET(self):
        path = self.path.partition("?")[0]
        if path.startswith("/private/") and self.headers["Authorization"] != PASSWORD:
            return self.answer(401, b"{}", {"WWW-Authenticate": 'Basic realm="samples"'})
        if path.startswith("/moved/"):
            return self.answer(302, b"", {"Location": path.removeprefix("/moved")})
        if path == "/echo":
            return self.answer(200, self.request_as_json())
        file = SAMPLES / pathlib.PurePath(path).name
        if file.is_file():
            return self.answer(200, file.read_bytes())
        return self.answer(404, b'{"a": "not found"}')

    def answer(self, status, body, headers={}):
        self.send_response(status)
        for name, value in headers.items():
            self.send_header(name, value)
        self.send_header("Content-Length", str(len(body)))
        self.end_headers()
        self.wfile.write(body)

    def request_as_json(self):
        seen = {name: self.headers[name] for name in ("Host", "User-Agent", "X-Show", "Accept")}
        return json.dumps({"line": self.requestline, **seen}).encode()

    def log_message(self, *arguments):
        pass


def start_server():
    server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Server)
    threading.Thread(target=server.serve_forever, daemon=True).start()
    return f"http://127.0.0.1:{server.server_address[1]}"


def sample_cases(server):
    """Every JSON and XML instance of the samples, with its settings."""
    for scene in sorted(SAMPLES.glob("*.scene.json")):
        for instance in json.loads(scene.read_text())["instances"]:
            if instance["parameters"]["queryMode"] not in ("JSON", "XML"):
                continue
            name = scene.name.removesuffix(".scene.json") + "." + instance["name"]
            # A slow machine would load again while it waits for the answer.
            stored = ["--scene", str(scene), "--instance", instance["name"], *settings(autoLoad=0)]
            file = pathlib.PurePath(instance["parameters"]["filename"]).name
            yield name + ", file", stored + settings(filename=f"samples/{file}")
            for folder in ("", "/moved", "/private"):
                yield (f"{name}, {folder or '/'}",
                       stored + settings(filename=f"{server}{folder}/{file}", useAuth=1,
                                         userName="designer", password="secret"))


def golden_cases():
    """Every request of the JSON reader that has a golden script."""
    for request in sorted(GOLDEN.glob("*.request")):
        pairs = re.findall(r"^(\w+) +(?:\|(.*)\||(.*))$", request.read_text(), re.MULTILINE)
        values = {PARAMETERS[key]: framed or plain for key, framed, plain in pairs}
        values["filename"] = str(GOLDEN.relative_to(ROOT) / values["filename"])
        yield request.stem, settings(**values)


def other_cases(server):
    json_source = {"queryMode": "JSON", "xpath": "/", "mode": 2, "table": "T"}
    yield "request headers", settings(**json_source, filename=f"{server}/echo?a=1&b=2",
                                      useCustomHeaders=1, customHeaders="X-Show: 1")
    yield "wrong password", settings(**json_source, filename=f"{server}/private/x", useAuth=1,
                                     userName="designer", password="wrong")
    yield "missing resource", settings(**json_source, filename=f"{server}/none")
    yield "missing file", settings(**json_source, filename="samples/none.json")
    yield "port that is no number", settings(**json_source, filename="http://127.0.0.1:x/")
    yield "nobody listens", settings(**json_source, filename="http://127.0.0.1:1/")


def settings(**values):
    return [word for name, value in values.items() for word in ("--set", f"{name}={value}")]


def load(workbench, arguments):
    """The script that was executed, what was printed, and the exit status."""
    # Not pipes: the processes that Wine starts for itself would keep them open.
    with tempfile.TemporaryFile() as out, tempfile.TemporaryFile() as err:
        status = subprocess.run([*workbench, "load", *arguments, "--out", "script"], cwd=ROOT,
                                stdin=subprocess.DEVNULL, stdout=out, stderr=err, check=False,
                                timeout=120).returncode
        out.seek(0)
        err.seek(0)
        return {"script": out.read(), "messages": messages(err.read()), "status": status}


def messages(text):
    """What was printed but for what is meant for a debugger, which on Linux is printed too."""
    lines = text.replace(b"\r\n", b"\n").splitlines()
    return [slashed(line) for line in lines if not line.startswith(b"ERROR: RDR_")]


def slashed(line):
    """The line with paths below ROOT as Linux writes them; Wine's drive Z: is its root folder."""
    root = re.escape(bytes(ROOT)).replace(b"/", rb"[/\\]")
    return re.sub(rb"(?:Z:)?" + root + rb"\S*",
                  lambda path: path[0].removeprefix(b"Z:").replace(b"\\", b"/"), line)


def main():
    split = sys.argv.index("--")
    linux, windows = sys.argv[1:split], sys.argv[split + 1:]
    server = start_server()
    cases = [*sample_cases(server), *golden_cases(), *other_cases(server)]
    different = 0
    for name, arguments in cases:
        one, other = load(linux, arguments), load(windows, arguments)
        for part in one:
            if one[part] != other[part]:
                different += 1
                print(f"{name}: {part}\n  {one[part]}\n  {other[part]}")
    print(f"{len(cases)} loads compared, {different} differences")
    return 1 if different else 0


if __name__ == "__main__":
    sys.exit(main())
