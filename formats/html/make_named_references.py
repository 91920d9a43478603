#!/usr/bin/env python3
"""Writes named_references.cpp: the named character references of the HTML standard, from the list
that Python's standard library holds."""

import html.entities
import pathlib

LINE = 100


def literal(text):
    return "".join(chr(byte) if 32 <= byte < 127 and byte not in b'"\\?'
                   else f"\\{byte:03o}" for byte in text.encode())


rows = [f'{{"{name}","{literal(text)}"}},' for name, text in sorted(html.entities.html5.items())]
lines = [""]
for row in rows:
    if len(lines[-1]) + len(row) > LINE:
        lines.append("")
    lines[-1] += row
head = """// Made by make_named_references.py.

#include "formats/html/named_references.h"

namespace intake::html {

// clang-format off
const std::array<NamedReference, 2231> NAMED_REFERENCES{{
"""
tail = """
}};
// clang-format on

}  // namespace intake::html
"""
path = pathlib.Path(__file__).with_name("named_references.cpp")
path.write_text(head + "\n".join(lines) + tail)
