"""Makes a supplier's list as other programs write it: write_list.py FILE.xlsx|FILE.ods ROW..., cells parted by "|", one
that begins with "#" a number. In a file named shared.xlsx the texts stand in a table of their own, in two pieces each."""

import sys
import zipfile
from xml.sax.saxutils import escape

import openpyxl

HEAD = ('<?xml version="1.0" encoding="UTF-8"?><office:document-content '
        'xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0" '
        'xmlns:table="urn:oasis:names:tc:opendocument:xmlns:table:1.0" '
        'xmlns:text="urn:oasis:names:tc:opendocument:xmlns:text:1.0" office:version="1.2">'
        '<office:body><office:spreadsheet><table:table table:name="Cene">')
MANIFEST = ('<?xml version="1.0" encoding="UTF-8"?><manifest:manifest '
            'xmlns:manifest="urn:oasis:names:tc:opendocument:xmlns:manifest:1.0" manifest:version="1.2">'
            '<manifest:file-entry manifest:full-path="/" '
            'manifest:media-type="application/vnd.oasis.opendocument.spreadsheet"/>'
            '<manifest:file-entry manifest:full-path="content.xml" manifest:media-type="text/xml"/></manifest:manifest>')


def cell(text):
    if text.startswith("#"):
        return (f'<table:table-cell office:value-type="float" office:value="{text[1:]}"><text:p>{text[1:]}</text:p>'
                "</table:table-cell>")
    if not text:
        return "<table:table-cell/>"
    return f'<table:table-cell office:value-type="string"><text:p>{escape(text)}</text:p></table:table-cell>'


MAIN = "http://schemas.openxmlformats.org/spreadsheetml/2006/main"
OFFICE = "http://schemas.openxmlformats.org/officeDocument/2006/relationships"
PACKAGE = "http://schemas.openxmlformats.org/package/2006/relationships"


def shared_workbook(place, table):
    texts, lines = [], []
    for number, row in enumerate(table, 1):
        cells = ""
        for column, text in enumerate(row):
            name = f"{chr(65 + column)}{number}"
            if text.startswith("#"):
                cells += f'<c r="{name}"><v>{text[1:]}</v></c>'
            elif text:
                cells += f'<c r="{name}" t="s"><v>{len(texts)}</v></c>'
                texts.append(f"<si><r><t>{escape(text[:2])}</t></r><r><rPr><b/></rPr><t>{escape(text[2:])}</t></r></si>")
        lines.append(f'<row r="{number}">{cells}</row>' if cells else "")
    with zipfile.ZipFile(place, "w", zipfile.ZIP_DEFLATED) as archive:
        archive.writestr("xl/workbook.xml", f'<workbook xmlns="{MAIN}" xmlns:r="{OFFICE}"><sheets>'
                         '<sheet name="Cene" sheetId="1" r:id="rId7"/></sheets></workbook>')
        archive.writestr("xl/_rels/workbook.xml.rels", f'<Relationships xmlns="{PACKAGE}"><Relationship Id="rId7" '
                         f'Type="{OFFICE}/worksheet" Target="worksheets/sheet1.xml"/></Relationships>')
        archive.writestr("xl/worksheets/sheet1.xml",
                         f'<worksheet xmlns="{MAIN}"><sheetData>{"".join(lines)}</sheetData></worksheet>')
        archive.writestr("xl/sharedStrings.xml", f'<sst xmlns="{MAIN}">{"".join(texts)}</sst>')


path, rows = sys.argv[1], [row.split("|") for row in sys.argv[2:]]
if path.endswith("shared.xlsx"):
    shared_workbook(path, rows)
elif path.endswith(".xlsx"):
    book = openpyxl.Workbook()
    for row in rows:
        book.active.append([float(text[1:]) if text.startswith("#") else text or None for text in row])
    book.save(path)
else:
    with zipfile.ZipFile(path, "w") as book:
        book.writestr("mimetype", "application/vnd.oasis.opendocument.spreadsheet", zipfile.ZIP_STORED)
        body = "".join("<table:table-row>" + "".join(map(cell, row)) + "</table:table-row>" for row in rows)
        book.writestr("content.xml",
                      HEAD + body + "</table:table></office:spreadsheet></office:body></office:document-content>")
        book.writestr("META-INF/manifest.xml", MANIFEST)
