#!/usr/bin/env python3
"""Prints a workbook as openpyxl reads it: sheets, columns, cells with their formats, protection.

Usage: read_workbook.py FILE
"""
import sys

import openpyxl


def quoted(value):
    return ascii(value)


def place_of(source):
    reference = source and (getattr(source, "strRef", None) or getattr(source, "numRef", None))
    return quoted(reference.f) if reference else "none"


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
        for chart in sheet._charts:
            print("chart", type(chart).__name__, getattr(chart, "grouping", ""),
                  "at", chart.anchor._from.col + 1, chart.anchor._from.row + 1)
            for axis in (chart.x_axis, chart.y_axis) if hasattr(chart, "x_axis") else ():
                print("axis", type(axis).__name__, axis.scaling.orientation,
                      axis.numFmt.formatCode if axis.numFmt else "")
            for series in chart.series:
                print("series", place_of(series.tx), place_of(series.cat), place_of(series.val))
        lock = sheet.protection
        if lock.sheet:
            print("protected", lock.password,
                  *(f"{name}={bool(getattr(lock, name))}" for name in (
                      "objects", "scenarios", "formatCells", "formatColumns", "formatRows",
                      "insertColumns", "insertRows", "insertHyperlinks", "deleteColumns",
                      "deleteRows", "sort", "autoFilter", "pivotTables")))


main(sys.argv[1])
