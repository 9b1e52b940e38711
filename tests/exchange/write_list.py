"""Makes a supplier's list as other programs write it: write_list.py FILE.xlsx|FILE.ods ROW..., cells parted by "|", one
that begins with "#" a number."""

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


path, rows = sys.argv[1], [row.split("|") for row in sys.argv[2:]]
if path.endswith(".xlsx"):
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
