#!/usr/bin/env python3
"""Writes a document of rows, in one of three shapes, for compare_xml_shapes.sh.

usage: make_xml.py attributes|texts|nested MEGABYTES FILE
"""

import sys

WORDS = "heat lane start wind record split relay final judge entry".split()


def with_attributes(row):
    """Eight short attributes."""
    return (
        f'<row id="{row}" lane="{row % 8}" score="{row % 900}.{row % 10}" time="00:0{row % 10}:31" '
        f'status="running" team="Nordland" bib="{row % 100}" heat="{row % 5}"/>\n'
    )


def with_texts(row):
    """Two long texts, one with a reference."""
    words = " ".join(WORDS[(row + i * i) % len(WORDS)] for i in range(60))
    return f"<row>\n  <title>Report &amp; result {row}</title>\n  <body>{words}\n{words}</body>\n</row>\n"


def nested(row):
    """Ten elements, one inside the other."""
    begins = "".join(f"<lv{i}>" for i in range(10))
    ends = "".join(f"</lv{i}>" for i in reversed(range(10)))
    return f"<row>{begins}value {row % 1000}{ends}</row>\n"


SHAPES = {"attributes": with_attributes, "texts": with_texts, "nested": nested}


def main():
    make, size, path = SHAPES[sys.argv[1]], int(sys.argv[2]) * 1_000_000, sys.argv[3]
    with open(path, "w", encoding="utf-8") as file:
        written = file.write('<?xml version="1.0" encoding="UTF-8"?>\n<data>\n')
        row = 0
        while written < size:
            written += file.write(make(row))
            row += 1
        file.write("</data>\n")


main()
