"""Measures a send's walk over 100,000 rows with three placeholders against a bare loop over the same cells, all
in the application's process (build the target quorvel_calc_bench before):
QUORVEL_CALC_SCRIPT=speed.py scripts/calc_test.sh"""

import os
import zipfile

import uno
from com.sun.star.beans import NamedValue

from office import FILES, Office

COMPONENT = b"""<component loader="com.sun.star.loader.SharedLibrary" environment="gcc3" uri="quorvel_bench.uno.so">
<implementation name="quorvel.calc.WalkBench" constructor="QuorvelWalkBench">
<service name="quorvel.calc.WalkBench"/></implementation></component></components>"""
ROWS = 100000


def package():
    """The extension with the measurement added to it."""
    path = os.path.join(os.environ["HOME"], "bench.oxt")
    with zipfile.ZipFile(os.path.join(FILES, "quorvel.oxt")) as oxt, zipfile.ZipFile(path, "w") as copy:
        for name in oxt.namelist():
            content = oxt.read(name)
            if name == "quorvel.components":
                content = content.replace(b"</components>", COMPONENT)
            copy.writestr(name, content)
        copy.write(os.path.join(FILES, "quorvel_bench.uno.so"), "quorvel_bench.uno.so")
    return path


def main():
    office = Office()
    try:
        print(office.unopkg("add", "-f", "-s", package()))
        office.start()
        document = office.open("private:factory/scalc")
        sheet = document.Sheets.getByIndex(0)
        sheet.getCellRangeByPosition(0, 0, 3, ROWS - 1).setDataArray(tuple(
            (f"Customer {i}", 9e9 + i, i / 4, f"Street {i % 977}") for i in range(ROWS)))
        frame = document.getCurrentController().getFrame()
        bench = office.service("quorvel.calc.WalkBench")
        bare, read, walk = bench.execute((NamedValue("Frame", frame),))
        print(f"bare loop {bare:.0f} ms, reading {read:.0f} ms, walk {walk:.0f} ms, ratio {walk / bare:.2f}")
        office.stop()
    finally:
        if os.path.exists(office.log):
            print(open(office.log, encoding="utf-8").read())
        office.kill()


main()
