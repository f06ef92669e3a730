#!/usr/bin/env python3
"""Prints a workbook as openpyxl reads it: sheets, columns, cells with their formats, protection.

Usage: read_workbook.py FILE
"""
import sys

import openpyxl


def quoted(value):
    return ascii(value)


def main(path):
    book = openpyxl.load_workbook(path)
    for sheet in book.worksheets:
        print("sheet", sheet.title, "rtl", bool(sheet.sheet_view.rightToLeft))
        for name, column in sorted(sheet.column_dimensions.items()):
            print("column", name, round(column.width, 4), "hidden" if column.hidden else "")
        for row in sheet.iter_rows():
            for cell in row:
                if cell.value is None:
                    continue
                font, place = cell.font, cell.alignment
                print(cell.coordinate, cell.data_type, quoted(cell.value), cell.number_format,
                      font.name, font.sz, "bold" if font.b else "regular",
                      place.horizontal or "general", place.vertical or "bottom")
        for merged in sorted(str(area) for area in sheet.merged_cells.ranges):
            print("merged", merged)
        lock = sheet.protection
        if lock.sheet:
            print("protected", lock.password,
                  *(f"{name}={bool(getattr(lock, name))}" for name in (
                      "objects", "scenarios", "formatCells", "formatColumns", "formatRows",
                      "insertColumns", "insertRows", "insertHyperlinks", "deleteColumns",
                      "deleteRows", "sort", "autoFilter", "pivotTables")))


main(sys.argv[1])
