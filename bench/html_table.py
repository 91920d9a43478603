#!/usr/bin/python3
"""html_table.py lxml|bs4 FILE SELECTOR: writes the table that Intake's selector means, as the script
of a DataTable by the column "Key". What one writes without Intake."""

import re
import sys


def collapsed(text):
    return re.sub("[ \t\n\r\f]+", " ", text).strip(" \t\n\r\f\u00a0")


def by_lxml(path, kind, text):
    import lxml.html

    root = lxml.html.parse(path).getroot()
    if kind == "ID":
        table = root.get_element_by_id(text)
    elif kind == "CLASS":
        table = root.xpath("//*[@class=$text]", text=text)[0].xpath(".//table")[0]
    else:
        element = root.xpath("//*[normalize-space(.)=$text]", text=text)[0]
        table = next(found[0] for found in (each.xpath(".//table")
                                            for each in element.iterancestors()) if found)
    for row in table.iter("tr"):
        yield [collapsed(cell.text_content()) for cell in row if cell.tag in ("td", "th")]


def by_bs4(path, kind, text):
    import bs4

    with open(path, "rb") as page:
        soup = bs4.BeautifulSoup(page, "lxml")
    if kind == "ID":
        table = soup.find(id=text)
    elif kind == "CLASS":
        table = soup.find(class_=text).find("table")
    else:
        element = soup.find(lambda tag: collapsed(tag.get_text()) == text)
        table = next(found for found in (each.find("table") for each in element.parents) if found)
    for row in table.find_all("tr"):
        yield [collapsed(cell.get_text()) for cell in row.find_all(("td", "th"), recursive=False)]


def script(rows):
    names = None
    for row in rows:
        names = names or row
        fields = "".join(f'{name}=""{cell}"";' for name, cell in zip(names, row))
        yield f"T[{row[names.index('Key')]}]={{{{{fields}}};}};"


library, path, selector = sys.argv[1:]
read = {"lxml": by_lxml, "bs4": by_bs4}[library]
sys.stdout.write("".join(script(read(path, *selector.split(" ", 1)))))
