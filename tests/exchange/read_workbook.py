"""Tells what another program finds in a workbook of ours: the sheets, and the cells that a test asks about."""

import sys

import openpyxl
from openpyxl.utils.datetime import to_excel

book = openpyxl.load_workbook(sys.argv[1])
for sheet in book.worksheets:
    print("sheet", sheet.title, "rows", sheet.max_row, "frozen", sheet.freeze_panes, "bold", sheet["A1"].font.bold)


def tell(sheet, place):
    cell = book[sheet][place]
    value = cell.value
    if cell.is_date:
        print(f"{sheet}.{place} datetime {cell.number_format} {int(to_excel(value))}")
        return
    kind = "float" if isinstance(value, (int, float)) and not isinstance(value, bool) else type(value).__name__
    print(f"{sheet}.{place} {kind} {value!r}" if kind == "float" else f"{sheet}.{place} {kind} {value}")


for place in ("B62", "C62", "E62", "L62"):
    tell("Customers", place)
for place in ("H2", "I2"):
    tell("Services", place)
tell("Oprema", "H2")
