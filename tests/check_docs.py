#!/usr/bin/env python3
"""Runs what the pages show and compares it, byte by byte, with what really comes.

    tests/check_docs.py [PAGE...]

Every block of a page has to say what it is. For most of them that is plain to see:

    ```sh      commands; the block without a tag right behind it is all that they print
    ```text    an illustration

For the rest a comment, which readers do not see, stands right before the block, or before `code` in
a line. SETTINGS are NAME=VALUE as for the workbench's --set.

    <!-- file NAME -->         the block becomes this file
    <!-- always SETTINGS -->   holds for all loads behind it, instead of the "always" before
    <!-- load SETTINGS -->     this load gives this script (which is one line, however it is broken)
    <!-- fails SETTINGS -->    this load fails, and this is a part of the error text
    <!-- rows SETTINGS -->     one load for each row of a table; $1 is the code (else the text) in its
                               first cell, and the last cell is the script, or begins with "nothing"
    <!-- exits STATUS -->      the commands of the block end with this status, instead of 0
    <!-- not run: REASON -->   nothing is done, and the reason is printed

"content" is the text of the file that is loaded, and "gives" the script where it is more than what is
shown ($0); "query=@NAME" is the text of a file. "..." and "…" stand for whatever is left out; ␍ and ␊
are line ends. Tables are as wide as a terminal of 80 columns.

What is set has to be said on the page: what a load sets, since the last heading; what "always" sets,
anywhere. How an error is provoked need not be said.

All of it runs in a temporary folder that looks like the repository's, and which is /tmp as well.
http://feed.example is a web server of that folder. It also has /broken, which fails, /members, which asks
for a login, and /expired, which leads to a page to sign in.
"""

import collections
import functools
import http.server
import os
import pathlib
import re
import shlex
import subprocess
import sys
import tempfile
import threading

ROOT = pathlib.Path(__file__).resolve().parent.parent
PAGES = ["README.md", "CONTRIBUTING.md", "bench/README.md",
         *sorted(f"docs/{page.name}" for page in ROOT.glob("docs/*.md"))]
PROGRAMS = "build/run/workbench"

BLOCK = r"^(?P<indent> *)```(?P<tag>\w*)\n(?P<body>.*?)^ *```$"
COMMENT = r"<!-- (?P<word>file|always|load|fails|rows|exits|not run):?\s+(?P<rest>.*?)\s*-->"
NEXT_THING = re.compile(f"{COMMENT}|{BLOCK}", re.M | re.S)
NEXT_BLOCK = re.compile(rf"\s*?{BLOCK}", re.M | re.S)
NEXT_CODE = re.compile(r"\s*(?P<ticks>`+)(?P<body>[^`]+)(?P=ticks)(?!`)")
NEXT_TABLE = re.compile(r"\s*?^(?P<body>(?:\|.*\n)+)", re.M)


FEED = "http://feed.example"


class Feed(http.server.SimpleHTTPRequestHandler):
    """The files of the sandbox, and what servers answer that have nothing to give."""

    def do_GET(self):
        answers = {"/broken": (500, "Internal error"), "/members": (401, "Not for you"),
                   "/expired": (302, "Moved"), "/login": (200, "Sign in")}
        first = "/" + self.path.split("/")[1]
        if first not in answers:
            super().do_GET()
            return
        status, title = answers[first]
        page = f"<html><title>{title}</title><p>{title}</html>".encode()
        self.send_response(status)
        self.send_header("Content-Type", "text/html")
        self.send_header("Content-Length", str(len(page)))
        self.send_header("Location", "/login")
        self.send_header("WWW-Authenticate", 'Basic realm="feed"')
        self.end_headers()
        self.wfile.write(page)

    def log_message(self, *arguments):
        pass


class Sandbox:
    """The folder in which everything runs."""

    def __init__(self, folder):
        self.folder = folder
        for entry in ROOT.iterdir():
            os.symlink(entry, f"{folder}/{entry.name}")
        server = http.server.ThreadingHTTPServer(
            ("127.0.0.1", 0), functools.partial(Feed, directory=folder))
        threading.Thread(target=server.serve_forever, daemon=True).start()
        self.web = f"http://127.0.0.1:{server.server_address[1]}"

    def make_file(self, name, text):
        pathlib.Path(self.folder, name.removeprefix("/tmp/")).write_text(text)

    def text_of(self, name):
        return pathlib.Path(self.folder, name).read_text()

    def run(self, words, **streams):
        """Status, standard output and standard error."""
        words = [word.replace("/tmp/", f"{self.folder}/").replace(FEED, self.web)
                 for word in words]
        path = f"{ROOT / PROGRAMS}:{os.environ['PATH']}"
        variables = {**os.environ, "PATH": path, "COLUMNS": "80", "LC_ALL": "C.UTF-8"}
        done = subprocess.run(words, cwd=self.folder, env=variables, timeout=900,
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, **streams)
        texts = [(text or b"").decode().replace(f"{self.folder}/", "/tmp/").replace(self.web, FEED)
                 for text in (done.stdout, done.stderr)]
        return done.returncode, *texts

    def run_commands(self, text):
        clean_up = "trap 'kill $(jobs -p) 2>/dev/null || true' EXIT"
        status, printed, _ = self.run(["bash", "-euo", "pipefail", "-c", f"{clean_up}\n{text}"],
                                      stderr=subprocess.STDOUT)
        return status, printed

    def load(self, settings):
        assignments = [f"--set={name}={value}" for name, value in settings.items()]
        return self.run(["intake-workbench", "load", "--out", "script", *assignments],
                        stderr=subprocess.PIPE)


class Page:
    """One page, gone through from top to bottom."""

    def __init__(self, name, sandbox):
        self.name = name
        self.text = (ROOT / name).read_text()
        self.sandbox = sandbox
        self.always = {}
        self.exits = 0  # how the next commands end
        self.done = collections.Counter()
        self.not_run = []
        self.wrong = []

    def check(self):
        position = 0
        while thing := NEXT_THING.search(self.text, position):
            self.line = self.text.count("\n", 0, thing.start()) + 1
            handler = thing["word"] or thing["tag"] or "output"
            handler = getattr(self, "do_" + handler.replace(" ", "_"), self.do_unknown)
            position = handler(thing) or thing.end()

    def fail(self, message):
        self.wrong.append(f"{self.name}:{self.line}: {message}")

    def what_follows(self, thing, *patterns):
        for pattern in patterns:
            if following := pattern.match(self.text, thing.end()):
                return following
        raise SystemExit(f"{self.name}:{self.line}: what is meant does not follow the comment")

    # Blocks

    def do_sh(self, block):
        expected, self.exits = self.exits, 0
        status, printed = self.sandbox.run_commands(block["body"])
        self.done["commands"] += 1
        output = self.output_of(block)
        if status != expected:
            self.fail(f"ends with status {status}\n{printed}")
        elif output:
            self.compare(output["body"], printed.removesuffix("\n") + "\n")
        return output and output.end()

    def output_of(self, block):
        following = NEXT_BLOCK.match(self.text, block.end())
        return following if following and not following["tag"] else None

    def do_text(self, block):
        pass

    def do_unknown(self, block):
        self.fail("nothing says what this block is")

    # Comments

    def do_exits(self, comment):
        self.exits = int(comment["rest"])

    def do_not_run(self, comment):
        block = self.what_follows(comment, NEXT_BLOCK)
        reason = " ".join(comment["rest"].split())
        self.not_run.append(f"{self.name}:{self.line}: {reason}")
        return (self.output_of(block) or block).end() if block["tag"] == "sh" else block.end()

    def do_file(self, comment):
        block = self.what_follows(comment, NEXT_BLOCK)
        self.sandbox.make_file(comment["rest"], block["body"])
        return block.end()

    def do_always(self, comment):
        self.always = self.settings_of(comment, self.text)

    def do_load(self, comment):
        following = self.what_follows(comment, NEXT_BLOCK, NEXT_CODE)
        settings = self.settings_of(comment, self.said_around(comment))
        shown = settings.pop("gives", "$0").replace("$0", one_line(following["body"]))
        self.compare_script(shown, settings)
        return following.end()

    def do_fails(self, comment):
        following = self.what_follows(comment, NEXT_BLOCK, NEXT_CODE)
        settings = self.settings_of(comment)
        status, _, error = self.load(settings)
        if status != 1 or not pattern_of(following["body"].strip()).search(error):
            self.fail(f"shown:  {following['body'].strip()}\ncame: status {status}, {error}")
        return following.end()

    def do_rows(self, comment):
        table = self.what_follows(comment, NEXT_TABLE)
        settings = self.settings_of(comment, self.said_around(comment) + table["body"])
        first_line = self.line + comment[0].count("\n") + 1
        for index, row in enumerate(table["body"].splitlines()[2:], first_line + 2):
            self.line = index
            self.check_row(settings, cells_of(row))
        return table.end()

    def check_row(self, settings, cells):
        script = "" if cells[-1].startswith("nothing") else first_code(cells[-1])
        if script is None:
            self.not_run.append(f"{self.name}:{self.line}: the result is told in words")
            return
        values = {"0": script, **{str(n): value_of(cell) for n, cell in enumerate(cells, 1)}}
        filled = {name: re.sub(r"\$(\d)", lambda digit: values[digit[1]], value)
                  for name, value in settings.items()}
        self.compare_script(filled.pop("gives", script), filled)

    # Settings

    def settings_of(self, comment, said=None):
        settings = dict(word.split("=", 1) for word in shlex.split(comment["rest"]))
        if said is None:
            return settings
        said = plain(re.sub(r"<!--.*?-->", "", said, flags=re.S))
        for name, value in settings.items():
            given_here = name in ("content", "gives") or "content" in settings or \
                value[:1] in "$@" or value.startswith(FEED)
            if not given_here and plain(value) not in said:
                self.fail(f"{name}={value} is set, but the page does not say so")
        return settings

    def said_around(self, comment):
        """The text since the last heading, and what stands in the line behind the comment."""
        start = self.text.rfind("\n#", 0, comment.start())
        return self.text[start + 1:self.text.find("\n", comment.end())]

    # Loading and comparing

    def load(self, settings):
        self.done["loads"] += 1
        if (content := settings.pop("content", None)) is not None:
            self.sandbox.make_file(settings.setdefault("filename", "content"), line_ends(content))
        settings = {**self.always, **settings}
        if settings.get("query", "").startswith("@"):
            settings["query"] = self.sandbox.text_of(settings["query"][1:]).strip()
        return self.sandbox.load(settings)

    def compare_script(self, shown, settings):
        status, script, error = self.load(settings)
        if status:
            self.fail(f"the load ends with status {status}: {error}")
        else:
            self.compare(shown, script)

    def compare(self, shown, came):
        if not pattern_of(shown).fullmatch(came):
            self.fail(f"differs\nshown: {shown!r:.3000}\ncame:  {came!r:.3000}")


def pattern_of(shown):
    """What is shown, with anything in place of three dots."""
    return re.compile(".*".join(map(re.escape, re.split(r"\.\.\.|…", shown))), re.S)


def one_line(body):
    """A script that was broken into lines, each with the same indentation."""
    indentation = len(body) - len(body.lstrip(" "))
    return "".join(line[indentation:] for line in body.splitlines())


def plain(text):
    return " ".join(text.replace("\\|", "|").split()).lower()


def cells_of(row):
    return [cell.strip() for cell in re.split(r"(?<!\\)\|", row)[1:-1]]


def first_code(cell):
    """The first code of a cell, or None."""
    code = re.search(r"(`+) ?(.+?) ?\1(?!`)", cell)
    return code and line_ends(code[2].replace("\\|", "|"))


def line_ends(text):
    return text.replace("␍", "\r").replace("␊", "\n")


def value_of(cell):
    return first_code(cell) or ("" if cell == "(empty)" else cell)


def main():
    with tempfile.TemporaryDirectory(prefix="intake-docs.") as folder:
        sandbox = Sandbox(folder)
        pages = [Page(name, sandbox) for name in sys.argv[1:] or PAGES]
        for page in pages:
            page.check()
            print(f"{page.name}: {page.done['commands']} commands, {page.done['loads']} loads",
                  flush=True)
    not_run = [line for page in pages for line in page.not_run]
    wrong = [line for page in pages for line in page.wrong]
    print("", "Not run:", *not_run, "", *wrong, sep="\n")
    print(f"{len(wrong)} differences")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
