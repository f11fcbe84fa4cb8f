"""Writes examples/customers.ods and customers.xlsx from customers.csv into the folder QUORVEL_OUTPUT:
QUORVEL_OUTPUT=FOLDER QUORVEL_CALC_SCRIPT=make_examples.py scripts/calc_test.sh"""

import csv
import datetime
import os

import uno
from com.sun.star.beans import PropertyValue
from com.sun.star.lang import Locale

from office import FILES, Office

FORMATS = {"Amount": "#,##0.00", "Due": "MM/DD/YYYY"}
WIDTHS = {"Name": 3200, "Mobile": 3200, "Amount": 2400, "Due": 2600, "E-mail": 4600}


def content(heading, field):
    """A field as the number that a user's typing would have made of it, otherwise None."""
    if heading == "Due":
        return (datetime.datetime.strptime(field, "%m/%d/%Y") - datetime.datetime(1899, 12, 30)).days
    try:
        return float(field.replace(",", ""))
    except ValueError:
        return None


def fill(document, rows):
    sheet = document.Sheets.getByIndex(0)
    sheet.Name = "Customers"
    english = Locale("en", "US", "")
    for column, heading in enumerate(rows[0]):
        sheet.Columns.getByIndex(column).Width = WIDTHS[heading]
        if heading in FORMATS:
            key = document.NumberFormats.queryKey(FORMATS[heading], english, False)
            if key < 0:
                key = document.NumberFormats.addNew(FORMATS[heading], english)
            sheet.getCellRangeByPosition(column, 1, column, len(rows) - 1).NumberFormat = key
        for row, fields in enumerate(rows):
            cell = sheet.getCellByPosition(column, row)
            number = content(heading, fields[column]) if row else None
            if number is None:
                cell.setString(fields[column])
            else:
                cell.setValue(number)
    sheet.Rows.getByIndex(0).CharWeight = uno.getConstantByName("com.sun.star.awt.FontWeight.BOLD")


def main():
    with open(os.path.join(FILES, "customers.csv"), encoding="utf-8", newline="") as file:
        rows = list(csv.reader(file))
    office = Office()
    try:
        office.start()
        document = office.open("private:factory/scalc")
        fill(document, rows)
        for name, kind in (("customers.ods", "calc8"), ("customers.xlsx", "Calc MS Excel 2007 XML")):
            document.storeToURL("file://" + os.path.join(os.environ["QUORVEL_OUTPUT"], name),
                                (PropertyValue(Name="FilterName", Value=kind),))
        office.stop()
    finally:
        office.kill()


main()
