"""The extension in the real application, from installation to removal. The tests build on each other in the
order in which they stand: a user logs in once."""

import glob
import os
import string
import subprocess
import sys
import time
import unittest
import urllib.parse

import uno
from com.sun.star.util import URL

from cells import CELLS, FORMATS, NUMBERS, columns_of_one_format, every_kind, fill_whole_sheet, save
from office import FILES, FOCUSED, LIMIT, Office, click_away, limited, wait, windows, xdotool
from sandbox import Sandbox

MESSAGE = "Dear #A#, your bill of #C# is due on #D#."
SEND, MENU = "vnd.quorvel:toolbar/SendSMS", "vnd.quorvel:menu/"
CANCEL = (0.5, 0.8)  # where the progress window has its button
TOOLBAR = "private:resource/toolbar/custom_quorvel_SMS"
MENU_BAR = "private:resource/menubar/menubar"
EVERY_COLUMN = " ".join(f"#{column}#" for column in string.ascii_uppercase)  # keeps a send busy for seconds
HEBREW = "שלום #A#."


def setUpModule():
    global office, sandbox
    sandbox = Sandbox()
    office = Office()


def tearDownModule():
    office.kill()
    sandbox.stop()


def items(settings):
    return [{p.Name: p.Value for p in settings.getByIndex(i)} for i in range(settings.getCount())]


def element(document, url):
    manager = document.getCurrentController().getFrame().LayoutManager
    return manager.getElement(url)


def labels(settings):
    return ["|" if item["Type"] else item["Label"].replace("~", "") for item in items(settings)]


def send_form(document, column="B", message=MESSAGE, preview=False):
    office.run(document, SEND)
    form = office.dialog("Send SMS")
    form.find("list", "Mobile numbers in column").choose(column)
    form.find("lines", "Message").type(message)
    form.find("check", "Show a preview before sending").tick(preview)
    return form


def execute(document, command):
    """A command of the application itself."""
    frame = document.getCurrentController().getFrame()
    limited(office.service("com.sun.star.frame.DispatchHelper").executeDispatch, frame, command, "", 0, ())


def windows_of(document):
    return [frame for frame in office.frames()
            if frame.getController() and frame.getController().getModel() == document]


def undo(frame):
    return frame.queryDispatch(URL(Complete=".uno:Undo", Protocol=".uno:", Path="Undo"), "_self", 0)


def close(form):
    form.press("Close")
    form.wait_closed()


def close_document(document):
    document.setModified(False)
    limited(document.close, True)


def send(document, answer="6 SMS Messages Sent"):
    """A whole send, which ends in that message."""
    form = send_form(document)
    form.press("Send SMS")
    office.alert(" S M S ", answer)
    close(form)


class CalcTest(unittest.TestCase):
    def tearDown(self):
        if os.environ.get("QUORVEL_OUTPUT") and self._outcome.result.failures + self._outcome.result.errors:
            office.screenshot(os.path.join(os.environ["QUORVEL_OUTPUT"], self.id().split(".")[-1] + ".png"))

    def setUp(self):
        sandbox.reset()
        sandbox.fail("")

    def test_01_installs_and_starts(self):
        status, output = office.unopkg("add", "-f", "-s", os.path.join(FILES, "quorvel.oxt"))
        self.assertEqual(status, 0, output)
        office.start()

    def test_02_shows_its_bars_in_every_spreadsheet_window(self):
        sheets = [office.open("private:factory/scalc"), office.open("customers.ods")]
        for document in sheets:
            wait("the toolbar", lambda d=document: element(d, TOOLBAR))
            self.assertEqual(labels(element(document, TOOLBAR).getSettings(False)),
                             ["Send SMS", "Proxy Settings", "Help"])
            menus = items(element(document, MENU_BAR).getSettings(False))
            self.assertEqual([m["CommandURL"] for m in menus[-2:]], ["vnd.quorvel:menu", ".uno:HelpMenu"])
            self.assertEqual(menus[-2]["Label"], "~SMS")
            self.assertEqual(labels(menus[-2]["ItemDescriptorContainer"]),
                             ["Login", "|", "Send SMS", "Proxy Settings", "|", "Help", "|", "Logout"])
        frame = document.getCurrentController().getFrame()
        execute(document, ".uno:NewWindow")
        second = next(f for f in office.frames() if f != frame and f.getTitle().startswith("customers"))
        wait("the toolbar", lambda: second.LayoutManager.getElement(TOOLBAR))
        document.Sheets.insertNewByName("Empty", 1)
        second.getController().setActiveSheet(document.Sheets.getByName("Empty"))
        for window, columns in ((second, ["A"]), (frame, ["A", "B", "C", "D", "E"])):
            office.run_in(window, SEND)
            form = office.dialog("Send SMS")
            self.assertEqual(form.find("list", "Mobile numbers in column").items(), columns)
            close(form)
        for document in sheets:
            close_document(document)

    def test_03_says_that_there_is_no_workbook_outside_a_spreadsheet(self):
        empty = office.desktop.findFrame("_blank", 0)
        empty.getContainerWindow().setVisible(True)
        chart = office.open("private:factory/schart").getCurrentController().getFrame()
        for window in (empty, chart):
            office.run_in(window, SEND)
            office.alert(" S M S ", "Work book does not exit. Please check")
            limited(window.close, True)

    def test_04_keeps_the_proxy_that_the_user_names(self):
        document = office.open("customers.ods")
        office.run(document, "vnd.quorvel:toolbar/ProxySettings")
        form = office.dialog("SMS - Proxy Settings")
        form.find("list", "Connection type").choose("Use proxy list")
        form.find("text", "Proxy host").type("127.0.0.1")
        form.find("text", "Port").type(str(sandbox.port))
        form.press("OK")
        form.wait_closed()
        settings = os.path.join(os.environ["HOME"], ".config/quorvel/settings.db")
        self.assertEqual(os.stat(settings).st_mode & 0o777, 0o600)
        close_document(document)

    def test_05_logs_in_by_the_keyboard_alone(self):
        document = office.open("customers.ods")
        self.assertTrue(office.enabled(document, MENU + "Login"))
        office.run(document, MENU + "Login")
        form = office.dialog("SMS - Login")
        self.assertFalse(office.enabled(document, MENU + "Login"))  # no command while one runs
        for kind, name, text in (("text", "CRN", "1001"), ("text", "User name", "demo"),
                                 ("password", "Password", "wrong")):
            field = form.find(kind, name)
            wait("the focus on " + name, lambda: field.has(FOCUSED))
            xdotool("type", text)
            wait("the text in " + name, lambda: field.holds(text))
            xdotool("key", "Tab")
        wait("the focus on the button", lambda: form.find("button", "Login").has(FOCUSED))
        xdotool("key", "space")
        office.alert("S M S", "Invalid Password")
        wait("the focus on the password", lambda: field.has(FOCUSED))
        xdotool("type", "demo")  # over the whole wrong one, which is selected
        wait("the password", lambda: field.holds("demo"))
        sandbox.pause()
        xdotool("key", "Return")  # the default button
        wait("the request", sandbox.has_unread)
        xdotool("key", "Escape")  # too late: the answer is awaited
        time.sleep(1)  # the application cannot be asked whether it has seen the key
        self.assertTrue(windows("SMS - Login"))
        sandbox.resume()
        office.alert("S M S", "Logged in successfully")
        form.wait_closed()
        wait("the end of the command", lambda: office.enabled(document, MENU + "Logout"))
        self.assertFalse(office.enabled(document, MENU + "Login"))
        close_document(document)

    def test_06_previews_and_sends_what_each_row_shows(self):
        document = office.open("customers.ods")
        form = send_form(document, preview=True)
        form.press("Send SMS")
        preview = office.dialog("Preview And Send SMS")
        self.assertIn("1/6", preview.texts())
        preview.press("Next SMS >>")
        wait("the second message", lambda: "2/6" in preview.texts())
        self.assertIn("9876543211", preview.texts())
        preview.press("Send SMS")
        office.alert(" S M S ", "6 SMS Messages Sent")
        self.assertEqual(sandbox.texts()["9876543210"],
                         "Dear Asha Rao, your bill of 1,250.00 is due on 12/05/2026.")
        self.assertEqual(sandbox.texts()["9876543212"],
                         "Dear Chen Wei, your bill of 410.00 is due on 12/06/2026.")
        close(form)
        close_document(document)

    def test_07_sends_the_same_bytes_from_both_formats_and_from_the_console(self):
        document = office.open("customers.ods")
        send(document)
        exported = save(document, "export.csv", "Text - txt - csv (StarCalc)", "44,34,76,1")
        close_document(document)
        document = office.open("customers.xlsx")
        send(document)
        close_document(document)
        self.console("proxy", "--type", "named", "--host", "127.0.0.1", "--port", str(sandbox.port))
        self.console("send", exported, "--to", "B", "--message", MESSAGE, "--crn", "1001", "--user", "demo",
                     "--yes")
        bodies = sandbox.send_bodies()
        self.assertEqual(len(bodies), 3)
        self.assertEqual(bodies[1], bodies[0])
        self.assertEqual(bodies[2], bodies[0])

    def console(self, *arguments):
        home = os.path.join(os.environ["HOME"], "console")
        done = subprocess.run([os.path.join(FILES, "quorvel"), *arguments], timeout=LIMIT, text=True,
                              env={"HOME": home, "QUORVEL_PASSWORD": "demo"}, capture_output=True)
        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)

    def test_08_sends_what_cells_of_every_kind_hold_and_show(self):
        document = office.open("private:factory/scalc")
        every_kind(document)
        copy = save(document, "kinds.xlsx", "Calc MS Excel 2007 XML")
        for document in (document, office.open(copy)):
            sandbox.reset()
            form = send_form(document, message="#C#;#D#")
            form.press("E-mail")
            form.find("check", "Send a copy of every message by e-mail").tick(True)
            form.find("text", "Subject").type("Kinds")
            form.find("list", "Address column").choose("C")
            form.press("Send SMS")
            office.alert(" S M S ", "12 SMS Messages Sent")
            texts = {number[2]: cell[2] + ";" for number, cell in zip(NUMBERS, CELLS)}
            self.assertEqual(sandbox.texts(), texts | {"9000000001": "1,234.50;#DIV/0!"})
            emails = urllib.parse.parse_qs(sandbox.send_bodies()[0], encoding="cp1252")["EmailAdresses"][0]
            self.assertEqual(emails.split(","), [cell[3] for cell in CELLS])
            document.Sheets.getByIndex(0).getCellByPosition(1, 2).setFormula("=NA()")
            form.press("Send SMS")
            office.alert("Error", "Type mismatch (row 3)")
            self.assertEqual(len(sandbox.send_bodies()), 1)
            close(form)
            close_document(document)

    def test_09_sends_what_columns_of_one_format_show(self):
        document = office.open("private:factory/scalc")
        shown = columns_of_one_format(document, 40)
        columns = [chr(ord("C") + i) for i in range(len(FORMATS))]
        form = send_form(document, message="|".join(f"#{column}#" for column in columns))
        form.press("Send SMS")
        office.alert(" S M S ", "40 SMS Messages Sent")
        self.assertEqual(sandbox.texts(), {number: "|".join(texts) for number, texts in shown.items()})
        close(form)
        close_document(document)

    def test_10_stops_a_long_send_when_it_is_cancelled(self):
        document = office.open("private:factory/scalc")
        fill_whole_sheet(document)
        execute(document, ".uno:NewWindow")
        frames = wait("the second window", lambda: windows_of(document)[1:] and windows_of(document))
        other = next(f for f in frames if f != document.getCurrentController().getFrame())
        form = send_form(document, message=EVERY_COLUMN)
        form.press("Send SMS")
        office.dialog("SMS")
        # Nobody pulls the sheet away from under a send, or changes it.
        self.assertFalse(office.desktop.terminate())
        for closeable in (document, *frames):
            with self.assertRaises(uno.getClass("com.sun.star.util.CloseVetoException")):
                closeable.close(False)
        for frame in frames:
            self.assertIsNone(undo(frame))
        self.assertFalse(other.getContainerWindow().isEnabled())
        self.assertFalse(office.enabled(document, SEND))
        click_away("SMS", *CANCEL)
        wait("the form alone", lambda: [d.title for d in office.dialogs()] == ["Send SMS"])
        self.assertFalse(sandbox.send_bodies(), "something was sent")
        close(form)
        wait("both windows' end of being locked", lambda: all(map(undo, frames)))
        self.assertTrue(other.getContainerWindow().isEnabled())
        close_document(document)

    def test_11_sends_unicode_from_a_protected_sheet(self):
        document = office.open("customers.ods")
        document.Sheets.getByIndex(0).protect("")
        form = send_form(document, message=HEBREW)
        form.press("Send SMS")
        office.alert("S M S Application", "6 SMS Messages Sent")
        close(form)
        self.assertEqual(sandbox.texts()["9876543211"], HEBREW.replace("#A#", "Björn Holm"))
        close_document(document)

    def test_12_sends_to_the_rows_that_a_filter_leaves_by_value_not_by_text(self):
        document = office.open("customers.ods")
        form = send_form(document)
        for formula, key, filter_shown in (("#C#<1000", "Escape", "No filter is set"),
                                           ("#D#>##12/06/2026## and #C#<1000", "Return", "Filter: #D#>")):
            xdotool("key", "alt+f")
            form.press("Set filter...")
            box = office.dialog("SMS")
            box.all("text")[0].type(formula)
            xdotool("key", key)
            box.wait_closed()
            wait(filter_shown, lambda: any(text.startswith(filter_shown) for text in form.texts()))
        form.press("Send SMS")
        question = office.dialog(" S M S ", "2 records has been filtered")
        question.press("OK")
        office.alert(" S M S ", "1 SMS Messages Sent")
        self.assertEqual(sorted(sandbox.texts()), ["9876543216"])  # one of the two has no number
        form.find("lines", "Message").focus()
        xdotool("key", "Escape")
        form.wait_closed()
        close_document(document)

    def test_13_writes_a_report_into_a_new_sheet_or_says_why_not(self):
        document = office.open("customers.ods")
        send(document)
        form = report_form(document, "Reports")
        form.press("Get")
        wait("the report", lambda: "Reports" in document.Sheets.ElementNames)
        close_reports()
        sheet = document.Sheets.getByName("Reports")
        self.assertEqual(document.CurrentController.ActiveSheet.Name, "Reports")
        self.assertEqual(sheet.getCellByPosition(0, 0).String, "Number")
        self.assertEqual(sheet.getCellByPosition(0, 0).CharWeight, 150)
        numbers = {sheet.getCellByPosition(0, row).String for row in range(1, 7)}
        self.assertIn("9876543210", numbers)
        close_document(document)

        protected = office.open("customers.ods")
        protected.protect("")
        for document in (protected, office.open("customers.xlsx", ReadOnly=True)):
            form = report_form(document, "Reports")
            form.press("Get")
            office.alert("Error", "cannot be added")
            close_reports()
            self.assertEqual(document.Sheets.Count, 1)
            close_document(document)

    def test_14_says_that_a_page_preview_has_no_cells(self):
        document = office.open("customers.ods")
        execute(document, ".uno:PrintPreview")
        wait("the preview", lambda: not hasattr(document.getCurrentController(), "getActiveSheet"))
        office.run(document, SEND)
        office.alert("Error", "Object doesn't support this property or method")
        close(office.dialog("Send SMS"))
        close_document(document)

    def test_15_tells_of_a_gateway_that_cannot_be_reached(self):
        document = office.open("customers.ods")
        sandbox.fail("send=refuse")
        send(document, "Request/Response Failure!!!")
        close_document(document)

    def test_16_logs_out_and_ends_cleanly(self):
        document = office.open("customers.ods")
        office.run(document, MENU + "Logout")
        office.alert("S M S", "Logged out successfully")
        wait("the end of the command", lambda: office.enabled(document, MENU + "Login"))
        self.assertFalse(office.enabled(document, MENU + "Logout"))
        office.run(document, SEND)
        form = office.dialog("Send SMS")
        login = office.dialog("SMS - Login")  # the form's timer asks for it
        login.press("Cancel")
        login.wait_closed()
        close(form)
        self.assertEqual(office.stop(), 0)
        left = subprocess.run(["pgrep", "-u", str(os.getuid()), "soffice"], capture_output=True, text=True,
                              check=False)
        self.assertEqual(left.stdout, "")

    def test_17_leaves_nothing_for_the_next_start(self):
        self.assertEqual(traces("uno_packages", "extensions"), [])
        office.start()
        document = office.open("customers.ods")
        wait("the toolbar", lambda: element(document, TOOLBAR))
        menus = items(element(document, MENU_BAR).getSettings(False))
        self.assertEqual([m.get("Label") for m in menus].count("~SMS"), 1)
        self.assertEqual(office.stop(), 0)
        status, output = office.unopkg("remove", "quorvel.calc")
        self.assertEqual(status, 0, output)
        office.start()
        document = office.open("customers.ods")
        self.assertIsNone(element(document, TOOLBAR))
        self.assertEqual(office.stop(), 0)
        self.assertEqual(traces(), [])

    def test_18_has_logged_no_secret_and_no_failure(self):
        with open(office.log, encoding="utf-8") as file:
            lines = set(file.read().splitlines())
        self.assertEqual(lines, {"host: connected"})


def report_form(document, name):
    office.run(document, SEND)
    form = office.dialog("Send SMS")
    form.press("Account")
    form.press("Delivery reports...")
    reports = office.dialog("SMS - Delivery Reports")
    reports.find("text", "New sheet name").type(name)
    return reports


def close_reports():
    for title in ("SMS - Delivery Reports", "Send SMS"):
        close(office.dialog(title))


def traces(*of_the_extension):
    """Files of the user's profile that speak of the add-in, but for those that an installed extension has."""
    found = []
    for path in glob.glob(os.path.join(office.profile, "**"), recursive=True):
        if os.path.isfile(path) and not any(folder in path for folder in of_the_extension):
            with open(path, "rb") as file:
                if b"quorvel" in (path.encode() + file.read()).lower():
                    found.append(path)
    return found


if __name__ == "__main__":
    unittest.main(argv=sys.argv, failfast=True, verbosity=2)
