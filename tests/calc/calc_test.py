"""The extension in the real application, from installation to removal. The tests build on each other in the
order in which they stand: a user logs in once."""

import glob
import os
import subprocess
import sys
import unittest

from office import FILES, LIMIT, Control, Office, click_in_window, limited, uno, wait, xdotool
from sandbox import Sandbox

ACCOUNT = {"CRN": "1001", "User name": "demo", "Password": "demo"}
MESSAGE = "Dear #A#, your bill of #C# is due on #D#."
SEND, MENU = "vnd.quorvel:toolbar/SendSMS", "vnd.quorvel:menu/"
CANCEL = (0.5, 0.8)  # where the progress window has its button
TOOLBAR = "private:resource/toolbar/custom_quorvel_SMS"
MENU_BAR = "private:resource/menubar/menubar"


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


def choose(dialog, name, item):
    """An item of a drop-down list, by the keyboard."""
    box = dialog.find("list", name)
    box.click()
    xdotool("key", "Escape")
    xdotool("type", item)
    wait(f"{item} in {name}", lambda: item in chosen(box))


def chosen(box):
    return [box.context.getAccessibleChild(0).getAccessibleContext().getText()]


def type_message(form, text):
    boxes = [c for c in form.contexts() if c.getAccessibleRole() == uno.getConstantByName(
        "com.sun.star.accessibility.AccessibleRole.SCROLL_PANE")]
    box = Control(next(c for c in boxes if c.getAccessibleName() == "Message"))
    box.click()
    xdotool("key", "ctrl+a")
    # A character that no key has takes a key over, which the application has to learn of.
    xdotool("type", "--delay", "1" if text.isascii() else "80", text)


def send_form(document, column="B", message=MESSAGE, preview=False):
    office.run(document, SEND)
    form = office.dialog("Send SMS")
    choose(form, "Mobile numbers in column", column)
    type_message(form, message)
    form.find("check", "Show a preview before sending").tick(preview)
    return form


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


def fill_whole_sheet(document):
    sheet = document.Sheets.getByIndex(0)
    sheet.getCellByPosition(0, 0).setString("Name 1")
    sheet.getCellByPosition(1, 0).setValue(9e9)
    sheet.getCellRangeByName("A1:B1048576").fillAuto(uno.Enum("com.sun.star.sheet.FillDirection", "TO_BOTTOM"), 1)


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
            close_document(document)

    def test_03_says_that_there_is_no_workbook_outside_a_spreadsheet(self):
        window = office.desktop.findFrame("_blank", 0)
        window.getContainerWindow().setVisible(True)
        office.run_in(window, SEND)
        office.alert(" S M S ", "Work book does not exit. Please check")
        limited(window.close, True)

    def test_04_keeps_the_proxy_that_the_user_names(self):
        document = office.open("customers.ods")
        office.run(document, "vnd.quorvel:toolbar/ProxySettings")
        form = office.dialog("SMS - Proxy Settings")
        choose(form, "Connection type", "Use proxy list")
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
        wait("the focus", lambda: form.find("text", "CRN").has(11))
        for field in ("1001", "demo", "wrong"):
            xdotool("type", field)
            xdotool("key", "Tab")
        xdotool("key", "Return")  # on the button that Tab has reached
        office.alert("S M S", "Invalid Password")
        xdotool("type", "demo")  # over the whole wrong one, which is selected
        xdotool("key", "Return")
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
        exported = os.path.join(os.environ["HOME"], "export.csv")
        from com.sun.star.beans import PropertyValue
        document.storeToURL("file://" + exported,
                            (PropertyValue(Name="FilterName", Value="Text - txt - csv (StarCalc)"),
                             PropertyValue(Name="FilterOptions", Value="44,34,76,1")))
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

    def test_08_stops_a_long_send_when_it_is_cancelled(self):
        document = office.open("private:factory/scalc")
        fill_whole_sheet(document)
        form = send_form(document)
        form.press("Send SMS")
        click_in_window("SMS", *CANCEL)
        wait("the form alone", lambda: [d.title for d in office.dialogs()] == ["Send SMS"], 40)
        self.assertFalse(sandbox.send_bodies(), "something was sent")
        with self.assertRaises(uno.getClass("com.sun.star.util.CloseVetoException")):
            document.close(False)  # nobody pulls the sheet away from under an open form
        close(form)
        close_document(document)

    def test_09_sends_unicode(self):
        document = office.open("customers.ods")
        form = send_form(document, message="Γειά #A#")
        form.press("Send SMS")
        office.alert("S M S Application", "6 SMS Messages Sent")
        close(form)
        self.assertEqual(sandbox.texts()["9876543211"], "Γειά Björn Holm")
        close_document(document)

    def test_10_sends_to_the_rows_that_a_filter_leaves_by_value_not_by_text(self):
        document = office.open("customers.ods")
        form = send_form(document)
        form.press("Filter")
        form.press("Set filter...")
        box = office.dialog("SMS")
        box.all("text")[0].type("#D#>##12/06/2026## and #C#<1000")
        box.press("OK")
        box.wait_closed()
        form.press("Send SMS")
        question = office.dialog(" S M S ")
        self.assertTrue(any("2 records has been filtered" in text for text in question.texts()))
        question.press("OK")
        office.alert(" S M S ", "1 SMS Messages Sent")
        self.assertEqual(sorted(sandbox.texts()), ["9876543216"])  # one of the two has no number
        close(form)
        close_document(document)

    def test_11_writes_a_report_into_a_new_sheet_or_says_why_not(self):
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

        document = office.open("customers.ods")
        document.protect("")
        form = report_form(document, "Reports")
        form.press("Get")
        office.alert("Error", "cannot be added")
        close_reports()
        self.assertEqual(document.Sheets.Count, 1)
        close_document(document)

    def test_12_tells_of_a_gateway_that_cannot_be_reached(self):
        document = office.open("customers.ods")
        sandbox.fail("send=refuse")
        send(document, "Request/Response Failure!!!")
        close_document(document)

    def test_13_logs_out_and_ends_cleanly(self):
        document = office.open("customers.ods")
        office.run(document, MENU + "Logout")
        office.alert("S M S", "Logged out successfully")
        wait("the end of the command", lambda: office.enabled(document, MENU + "Login"))
        self.assertFalse(office.enabled(document, MENU + "Logout"))
        self.assertEqual(office.stop(), 0)
        left = subprocess.run(["pgrep", "-u", str(os.getuid()), "soffice"], capture_output=True, text=True,
                              check=False)
        self.assertEqual(left.stdout, "")

    def test_14_leaves_nothing_for_the_next_start(self):
        self.assertEqual(traces(), [])
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

    def test_15_has_logged_no_secret_and_no_failure(self):
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


def traces():
    """Files of the user's profile, but for the extension's own, that speak of the add-in."""
    found = []
    for path in glob.glob(os.path.join(office.profile, "user", "**"), recursive=True):
        if os.path.isfile(path) and "uno_packages" not in path and "extensions" not in path:
            with open(path, "rb") as file:
                if b"custom_quorvel" in file.read():
                    found.append(path)
    return found


if __name__ == "__main__":
    unittest.main(argv=sys.argv, failfast=True, verbosity=2)
