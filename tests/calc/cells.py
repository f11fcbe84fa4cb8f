"""Sheets to send from: cells of every kind, and what the add-in has to make of them."""

import os

import uno
from com.sun.star.beans import PropertyValue
from com.sun.star.lang import Locale
from com.sun.star.util import Date

# What a cell holds, its format, what it shows, and its value as text by the rules of the add-in, not of Calc.
CELLS = (("1234.5", "#,##0.00", "1,234.50", "1234.5"),
         ("1E15", None, "1000000000000000", "1E+15"),
         ("=1/30", None, "0.0333333333333333", "3.33333333333333E-02"),
         ("1250.5", '[$$-409]#,##0.00', "$1,250.50", "1250.5"),
         ("0.5", "0%", "50%", "0.5"),
         ("1", "BOOLEAN", "TRUE", "True"),
         ("=TRUE()", None, "TRUE", "True"),
         ("=DATE(2026;12;5)", "MM/DD/YYYY", "12/05/2026", "12/5/2026"),
         ("=DATE(2026;12;6)", None, "12/06/26", "12/6/2026"),
         ('="x"&"y"', None, "xy", "xy"),
         ("'007", None, "007", "007"),
         ("", None, "", ""))
# The same for mobile numbers, with what is sent.
NUMBERS = (("9000000001", None, "9000000001"), ("9000000002", "0.00E+00", "9000000002"),
           ("'0900000003", None, "0900000003"), ("=9E9+4", None, "9000000004"),
           ('="900000"&"0005"', None, "9000000005"), ("9000000006", '[$$-409]#,##0.00', "9000000006"),
           *((str(n), "#,##0", str(n)) for n in range(9000000007, 9000000013)))
FORMATS = (None, "#,##0.00", "0%", "MM/DD/YYYY", "BOOLEAN", "0.00E+00", "[$$-409]#,##0.00", "# ?/?", "[HH]:MM")


def put(document, cell, content, code):
    if content.startswith("'"):
        cell.setString(content[1:])
    else:
        cell.setFormula(content)
    if code is None:
        return
    english = Locale("en", "US", "")
    key = document.NumberFormats.queryKey(code, english, False)
    cell.NumberFormat = key if key >= 0 else document.NumberFormats.addNew(code, english)


def every_kind(document):
    """Fills the first sheet with NUMBERS in column B, CELLS in column C and an error in D1, counting days from
    1904."""
    document.NullDate = Date(1, 1, 1904)
    sheet = document.Sheets.getByIndex(0)
    for row, (number, cell) in enumerate(zip(NUMBERS, CELLS)):
        put(document, sheet.getCellByPosition(1, row), *number[:2])
        put(document, sheet.getCellByPosition(2, row), *cell[:2])
    put(document, sheet.getCellByPosition(3, 0), "=1/0", None)


def columns_of_one_format(document, rows):
    """Fills the columns from C on with numbers, each column of one of FORMATS; answers what the cells of each
    row show, by the number in column B."""
    sheet = document.Sheets.getByIndex(0)
    for row in range(rows):
        sheet.getCellByPosition(1, row).setValue(9e9 + row)
        for column, code in enumerate(FORMATS, 2):
            put(document, sheet.getCellByPosition(column, row), str((-1) ** row * row ** 3 / 8), code)
    sheet.getCellByPosition(2, rows - 10).setFormula("=2/3")
    sheet.getCellByPosition(3, rows - 10).setString("none")
    return {str(9000000000 + row): [sheet.getCellByPosition(column, row).String
                                    for column in range(2, 2 + len(FORMATS))] for row in range(rows)}


def fill_whole_sheet(document):
    sheet = document.Sheets.getByIndex(0)
    sheet.getCellByPosition(0, 0).setString("Name 1")
    sheet.getCellByPosition(1, 0).setValue(9e9)
    sheet.getCellRangeByName("A1:B1048576").fillAuto(uno.Enum("com.sun.star.sheet.FillDirection", "TO_BOTTOM"), 1)


def save(document, name, kind, options=""):
    path = os.path.join(os.environ["HOME"], name)
    document.storeToURL("file://" + path, (PropertyValue(Name="FilterName", Value=kind),
                                           PropertyValue(Name="FilterOptions", Value=options)))
    return path
