#!/usr/bin/env python3
"""Writes the workbook of the sample scene fixture-list: samples/make_fixture_list.py

Needs the Debian package python3-xlsxwriter. The workbook is checked in; nobody needs this to use it.
"""
import datetime
import os

import xlsxwriter

FIXTURES = [
    ("m281", "Holm", "Eskby", datetime.datetime(2027, 3, 6, 15, 0), True, 2.1),
    ("m282", "Quayside", "Norvik", datetime.datetime(2027, 3, 6, 17, 30), False, 1.65),
    ("m283", "Ålund", "Tidewater", datetime.datetime(2027, 3, 7, 14, 0), True, 3.4),
    ("m284", "Greywharf", "Holm", datetime.datetime(2027, 3, 13, 15, 0), False, 2.85),
    ("m285", "Eskby", "Quayside", None, True, None),
]
TEAMS = [("Holm", "HOL"), ("Eskby", "ESK"), ("Quayside", "QUA"), ("Norvik", "NOR"),
         ("Ålund", "ALU"), ("Tidewater", "TID"), ("Greywharf", "GRE")]


def main():
    os.chdir(os.path.dirname(os.path.abspath(__file__)))
    book = xlsxwriter.Workbook("fixture-list.xlsx")
    book.set_properties({"created": datetime.datetime(2027, 1, 1)})
    date = book.add_format({"num_format": "ddd d mmm yyyy hh:mm"})
    odds = book.add_format({"num_format": "0.00"})
    sheet = book.add_worksheet("Round 28")
    sheet.set_column(3, 3, 22)
    sheet.write_row(0, 0, ["Match", "Home", "Away", "Kick-off", "Televised", "Home odds"])
    for row, (match, home, away, kickoff, televised, price) in enumerate(FIXTURES, start=1):
        sheet.write_row(row, 0, [match, home, away])
        if kickoff is not None:
            sheet.write_datetime(row, 3, kickoff, date)
        sheet.write_boolean(row, 4, televised)
        if price is not None:
            sheet.write_number(row, 5, price, odds)
    teams = book.add_worksheet("Teams")
    teams.write_row(0, 0, ["Team", "Code"])
    for row, team in enumerate(TEAMS, start=1):
        teams.write_row(row, 0, team)
    book.define_name("Codes", f"=Teams!$A$1:$B${len(TEAMS) + 1}")
    book.close()


main()
