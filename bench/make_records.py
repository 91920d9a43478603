#!/usr/bin/env python3
"""Writes the same records of six fields as JSON, XML, HTML, a database and a worksheet, for costs.sh.

usage: make_records.py RECORDS FILE.json|FILE.xml|FILE.html|FILE.db|FILE.xlsx
"""

import json
import pathlib
import sqlite3
import sys

NAMES = ("id", "name", "team", "points", "time", "status")


def records(count):
    for n in range(1, count + 1):
        yield (n, f"Åsa Runner {n}", f"Club {n % 40}", n * 37 % 1000 / 4, f"00:{n % 60:02}:31", "running")


def write_json(path, rows):
    path.write_text(json.dumps({"r": [dict(zip(NAMES, row)) for row in rows]}, ensure_ascii=False))


def tagged(row, tags):
    return "".join(f"<{tag}>{value}</{tag}>" for tag, value in zip(tags, row))


def write_xml(path, rows):
    body = "".join(f"<r>{tagged(row, NAMES)}</r>\n" for row in rows)
    path.write_text(f"<d>\n{body}</d>\n")


def write_html(path, rows):
    body = "".join(f"<tr>{tagged(row, ['td'] * len(NAMES))}</tr>\n" for row in rows)
    path.write_text(f'<meta charset="utf-8"><table id="t">\n<tr>{tagged(NAMES, ["th"] * len(NAMES))}</tr>\n{body}</table>\n')


def write_db(path, rows):
    database = sqlite3.connect(path)
    database.execute(f"CREATE TABLE r ({', '.join(NAMES)})")
    database.executemany("INSERT INTO r VALUES (?, ?, ?, ?, ?, ?)", rows)
    database.commit()


def write_xlsx(path, rows):
    import xlsxwriter

    with xlsxwriter.Workbook(path) as workbook:
        sheet = workbook.add_worksheet("r")
        for place, row in enumerate([NAMES, *rows]):
            sheet.write_row(place, 0, row)


def main():
    count, path = int(sys.argv[1]), pathlib.Path(sys.argv[2])
    path.unlink(missing_ok=True)
    globals()["write_" + path.suffix[1:]](path, records(count))


main()
