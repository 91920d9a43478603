#!/usr/bin/env python3
"""Writes the workbook of compare_workbook.sh: make_workbook.py FILE [ROWS]

Ten columns: two of shared texts, one of which repeats, whole and broken numbers, booleans, dates,
and blanks in between. The same on every machine.
"""
import datetime
import random
import sys

import xlsxwriter

TOWNS = [f"Town {number} – Ørsted" for number in range(500)]
HEADER = ["Id", "Name", "Town", "Points", "Price", "Ratio", "Active", "Date", "Note", "Total"]


def rows(count):
    draw = random.Random(1)
    start = datetime.date(2020, 1, 1)
    for number in range(count):
        yield [
            number + 1,
            f"Competitor {draw.randrange(10**6):06} & Sons",
            draw.choice(TOWNS),
            draw.randrange(1000),
            round(draw.random() * 1000, 2),
            draw.random(),
            draw.random() < 0.5,
            start + datetime.timedelta(days=draw.randrange(3000)),
            None if draw.random() < 0.7 else f"note {draw.randrange(100)}",
            None if draw.random() < 0.3 else draw.randrange(10**6) / 8,
        ]


def main():
    path = sys.argv[1]
    count = int(sys.argv[2]) if len(sys.argv) > 2 else 200_000
    book = xlsxwriter.Workbook(path, {"constant_memory": False})
    date = book.add_format({"num_format": "yyyy-mm-dd"})
    sheet = book.add_worksheet("Results")
    sheet.write_row(0, 0, HEADER)
    for at, values in enumerate(rows(count), start=1):
        for column, value in enumerate(values):
            if value is None:
                continue
            if isinstance(value, datetime.date):
                sheet.write_datetime(at, column, value, date)
            elif isinstance(value, bool):
                sheet.write_boolean(at, column, value)
            elif isinstance(value, str):
                sheet.write_string(at, column, value)
            else:
                sheet.write_number(at, column, value)
    book.close()


main()
