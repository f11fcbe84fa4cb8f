"""Takes the pictures of docs/calc.md into the folder QUORVEL_OUTPUT, which anyone may write to:
QUORVEL_LOOK=gtk3 QUORVEL_OUTPUT=FOLDER QUORVEL_CALC_SCRIPT=pictures.py scripts/calc_test.sh"""

import os
import subprocess
import time

import calc_test
from calc_test import CANCEL, EVERY_COLUMN, MENU, MESSAGE, send_form
from cells import fill_whole_sheet
from office import FILES, LIMIT, Office, click_away, wait, xdotool
from sandbox import Sandbox

OUTPUT = os.environ["QUORVEL_OUTPUT"]
PANELS = {"E-mail": "email", "Filter": "filter", "Settings": "settings", "Scheduler": "scheduler",
          "Templates": "templates", "Account": "account"}


def whole(name):
    time.sleep(0.7)  # until the windows are painted
    subprocess.run(["import", "-window", "root", "-crop", "1280x1000+0+0", "-define", "png:exclude-chunks=date",
                    os.path.join(OUTPUT, f"calc-{name}.png")], check=True, timeout=LIMIT)


def window(name, title, pause=0.7):
    time.sleep(pause)
    ids = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", f"^{title}$"], check=True,
                         capture_output=True, text=True, timeout=LIMIT).stdout.split()
    xdotool("mousemove", "1270", "1000")
    subprocess.run(["import", "-frame", "-window", ids[-1], "-define", "png:exclude-chunks=date",
                    os.path.join(OUTPUT, f"calc-{name}.png")], check=True, timeout=LIMIT)


def main():
    sandbox = Sandbox()
    office = Office()
    calc_test.office, calc_test.sandbox = office, sandbox
    try:
        office.unopkg("add", "-f", "-s", os.path.join(FILES, "quorvel.oxt"))
        office.start()
        document = office.open("customers.ods")
        whole("window")
        office.run(document, MENU + "ProxySettings")
        form = office.dialog("SMS - Proxy Settings")
        form.find("list", "Connection type").choose("Use proxy list")
        form.find("text", "Proxy host").type("127.0.0.1")
        form.find("text", "Port").type(str(sandbox.port))
        window("proxy", form.title)
        form.press("OK")
        form.wait_closed()

        office.run(document, MENU + "Login")
        form = office.dialog("SMS - Login")
        form.find("text", "CRN").type("1001")
        form.find("text", "User name").type("demo")
        form.find("password", "Password").type("demo")
        window("login", form.title)
        form.press("Login")
        alert = office.dialog("S M S")
        window("alert", "S M S")
        alert.press("OK")
        form.wait_closed()

        form = send_form(document, message=MESSAGE, preview=True)
        time.sleep(4)  # templates and sender IDs arrive
        whole("send")
        for button, name in PANELS.items():
            form.press(button)
            window("send-" + name, form.title)
        form.press("Filter")
        form.press("Set filter...")
        box = office.dialog("SMS")
        box.all("text")[0].type("#C#>100")
        window("input", "SMS")
        box.press("Cancel")
        box.wait_closed()
        form.press("Account")
        form.press("Delivery reports...")
        reports = office.dialog("SMS - Delivery Reports")
        reports.find("text", "New sheet name").type("Reports")
        window("reports", reports.title)
        reports.press("Close")
        reports.wait_closed()
        form.press("Send SMS")
        preview = office.dialog("Preview And Send SMS")
        window("preview", preview.title)
        preview.press("Cancel")
        preview.wait_closed()
        form.press("Close")
        form.wait_closed()

        fill_whole_sheet(document)
        form = send_form(document, message=EVERY_COLUMN)
        form.press("Send SMS")
        time.sleep(1)
        window("progress", "SMS", 0.1)
        click_away("SMS", *CANCEL)
        wait("the form alone", lambda: [d.title for d in office.dialogs()] == ["Send SMS"])
        form.press("Close")
        form.wait_closed()
        office.stop()
    finally:
        office.screenshot(os.path.join(OUTPUT, "last.png"))
        office.kill()
        sandbox.stop()


main()
