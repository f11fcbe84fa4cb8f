"""Runs LibreOffice with the extension as a user has it, and operates it as a user does: pointer and keyboard
through X, windows and controls found by their accessible names."""

import os
import shutil
import subprocess
import threading
import time

import uno
import unohelper
from com.sun.star.beans import PropertyValue
from com.sun.star.datatransfer import DataFlavor, XTransferable
from com.sun.star.frame import XStatusListener
from com.sun.star.util import URL

LIMIT = 60  # seconds that anything may take on a machine with much else to do
FILES = os.environ["QUORVEL_TEST_FILES"]


def role(name):
    return uno.getConstantByName("com.sun.star.accessibility.AccessibleRole." + name)


def state(name):
    return uno.getConstantByName("com.sun.star.accessibility.AccessibleStateType." + name)


ROLES = {"button": {role("PUSH_BUTTON")}, "text": {role("TEXT"), role("TEXT_FRAME")},
         "password": {role("PASSWORD_TEXT")}, "list": {role("LIST"), role("COMBO_BOX")},
         "check": {role("CHECK_BOX")}, "radio": {role("RADIO_BUTTON")}, "label": {role("LABEL")},
         "lines": {role("SCROLL_PANE")}}
DIALOG_ROLES = {role("DIALOG"), role("ALERT"), role("OPTION_PANE")}
SHOWING, ENABLED, CHECKED = state("SHOWING"), state("ENABLED"), state("CHECKED")
ACTIVE, FOCUSED = state("ACTIVE"), state("FOCUSED")


def wait(what, probe, limit=LIMIT):
    """The first true value of probe()."""
    end = time.monotonic() + limit
    while True:
        try:
            value = probe()
        except (uno.getClass("com.sun.star.uno.RuntimeException"),
                uno.getClass("com.sun.star.lang.DisposedException")):
            value = None
        if value:
            return value
        if time.monotonic() > end:
            raise AssertionError("waited in vain for " + what)
        time.sleep(0.03)


def insist(what, act, done):
    """act(), and again as long as done() does not follow: on a busy machine a key or a click may get lost."""
    end = time.monotonic() + LIMIT
    while True:
        act()
        try:
            return wait(what, done, LIMIT / 10)
        except AssertionError:
            if time.monotonic() > end:
                raise


def limited(call, *args):
    """call(*args), which must come back in time: the application may be busy with a dialog."""
    result = []
    thread = threading.Thread(target=lambda: result.append(call(*args)), daemon=True)
    thread.start()
    thread.join(LIMIT)
    if thread.is_alive():
        raise AssertionError("the application does not answer")
    return result[0] if result else None


def spoken(caption):
    """A caption without what its accessible name leaves out."""
    return caption.strip("<>. ")


def xdotool(*args):
    subprocess.run(["xdotool", *args], check=True, timeout=LIMIT)


def windows(title):
    """The X windows of that title, the topmost last."""
    return subprocess.run(["xdotool", "search", "--onlyvisible", "--name", f"^{title}$"], timeout=LIMIT,
                          capture_output=True, text=True, check=False).stdout.split()


def click_away(title, across, down):
    """Clicks into the window of that title, at shares of its width and height, until it is gone. For a window
    of an application that is too busy to be asked."""
    def click():
        for window in windows(title)[-1:]:
            shell = subprocess.run(["xdotool", "getwindowgeometry", "--shell", window], timeout=LIMIT,
                                   capture_output=True, text=True, check=False).stdout
            size = dict(line.split("=") for line in shell.splitlines())
            if size:
                subprocess.run(["xdotool", "mousemove", "--window", window, str(int(int(size["WIDTH"]) * across)),
                                str(int(int(size["HEIGHT"]) * down)), "click", "1"], check=False, timeout=LIMIT)
    wait(f"the window {title!r}", lambda: windows(title))
    insist(f"the end of the window {title!r}", click, lambda: not windows(title))


class Copied(unohelper.Base, XTransferable):
    """Text on the clipboard."""

    def __init__(self, text):
        self.text = text

    def getTransferData(self, _):
        return self.text

    def getTransferDataFlavors(self):
        return (DataFlavor("text/plain;charset=utf-16", "Text", uno.getTypeByName("string")),)

    def isDataFlavorSupported(self, flavor):
        return flavor.MimeType.startswith("text/plain")


class Control:
    def __init__(self, office, context):
        self.office = office
        self.context = context

    @property
    def name(self):
        return self.context.getAccessibleName()

    @property
    def text(self):
        return self.context.getText()

    def has(self, state):
        return self.context.getAccessibleStateSet().contains(state)

    def click(self):
        wait("an enabled " + self.name, lambda: self.has(ENABLED))
        place, size = self.context.getLocationOnScreen(), self.context.getSize()
        marked = {"check", "radio"}.intersection(self.kinds())  # it is clicked on its mark
        across = 8 if marked else size.Width // 2
        xdotool("mousemove", str(place.X + across), str(place.Y + size.Height // 2), "click", "1")

    def focus(self):
        insist("the focus on " + self.name, self.click, lambda: self.has(FOCUSED))

    def type(self, text):
        """Over what is there."""
        def keys():
            self.focus()
            xdotool("key", "ctrl+a")
            if text.isascii():
                xdotool("type", "--delay", "1", text)
            else:  # there is no key for some of it
                self.office.clipboard().setContents(Copied(text), None)
                xdotool("key", "ctrl+v")
        insist("the text in " + self.name, keys, lambda: self.holds(text))

    def holds(self, text):
        if "lines" in self.kinds():  # can be read by copying alone, and only gen bears that from another thread
            if self.office.plugin != "gen":
                return True
            self.office.clipboard().setContents(Copied("nothing"), None)
            xdotool("key", "ctrl+a", "ctrl+c")
            return wait("a copy", lambda: self.office.copied() != "nothing") and self.office.copied() == text
        return self.text == text or "password" in self.kinds() and len(self.text) == len(text)

    def tick(self, wanted):
        if self.has(CHECKED) != wanted:
            insist("a tick at " + self.name, self.click, lambda: self.has(CHECKED) == wanted)

    def choose(self, item):
        """An item of a drop-down list, by the keyboard."""
        box, dropped = [self.context.getAccessibleChild(i).getAccessibleContext() for i in range(2)]

        def open_and_close():
            self.click()
            wait("the list of " + self.name, lambda: dropped.getAccessibleStateSet().contains(SHOWING))
            xdotool("type", item)
            xdotool("key", "Return")
            wait("the end of the list", lambda: not dropped.getAccessibleStateSet().contains(SHOWING))
        insist(f"{item} in {self.name}", open_and_close, lambda: box.getText() == item)

    def items(self):
        items = self.context.getAccessibleChild(1).getAccessibleContext()
        return [items.getAccessibleChild(i).getAccessibleContext().getText()
                for i in range(items.getAccessibleChildCount())]

    def kinds(self):
        return [kind for kind, roles in ROLES.items() if self.context.getAccessibleRole() in roles]


class Dialog:
    def __init__(self, office, window, title):
        self.office = office
        self.window = window
        self.title = title

    def contexts(self):
        todo = [self.window]
        while todo:
            context = todo.pop(0)
            yield context
            try:
                count = min(context.getAccessibleChildCount(), 500)
                todo += [context.getAccessibleChild(i).getAccessibleContext() for i in range(count)]
            except uno.getClass("com.sun.star.lang.IndexOutOfBoundsException"):
                pass

    def all(self, kind):
        return [Control(self.office, c) for c in self.contexts()
                if c.getAccessibleRole() in ROLES[kind] and c.getAccessibleStateSet().contains(SHOWING)]

    def find(self, kind, name):
        return wait(f"{kind} {name!r} in {self.title!r}", lambda: next(
            (c for c in self.all(kind) if spoken(c.name) == spoken(name)), None))

    def press(self, name):
        self.find("button", name).click()

    def texts(self):
        """Everything that is written in it."""
        texts = []
        for context in self.contexts():
            if context.getAccessibleStateSet().contains(SHOWING):
                texts.append(context.getAccessibleName())
                if hasattr(context, "getText"):
                    texts.append(context.getText())
        return texts

    def open(self):
        return any(d.window == self.window for d in self.office.dialogs())

    def wait_closed(self):
        wait(f"the end of {self.title!r}", lambda: not self.open())


class StateListener(unohelper.Base, XStatusListener):
    enabled = False

    def statusChanged(self, event):
        self.enabled = event.IsEnabled

    def disposing(self, source):
        pass


class Office:
    def __init__(self):
        self.profile = os.path.join(os.environ["HOME"], "profile")
        self.log = os.path.join(os.environ["HOME"], "quorvel.log")
        self.plugin = os.environ["QUORVEL_LOOK"]
        self.process = None

    def environment(self):
        return dict(os.environ, SAL_USE_VCLPLUGIN=self.plugin, QUORVEL_LOG=self.log, LC_ALL="C.UTF-8")

    def unopkg(self, *args):
        done = subprocess.run(["unopkg", *args, f"-env:UserInstallation=file://{self.profile}"], timeout=2 * LIMIT,
                              env=self.environment(), capture_output=True, text=True)
        return done.returncode, done.stdout + done.stderr

    def start(self):
        self.pipe = f"quorvel{os.getpid()}_{int(time.monotonic() * 1000)}"
        self.process = subprocess.Popen(
            ["soffice", "--norestore", "--nologo", "--nofirststartwizard", "--nolockcheck",
             f"-env:UserInstallation=file://{self.profile}",
             f"--accept=pipe,name={self.pipe};urp;StarOffice.ComponentContext"], env=self.environment())
        resolver = uno.getComponentContext().ServiceManager.createInstance(
            "com.sun.star.bridge.UnoUrlResolver")
        no_connection = uno.getClass("com.sun.star.connection.NoConnectException")

        def connect():
            try:
                return resolver.resolve(f"uno:pipe,name={self.pipe};urp;StarOffice.ComponentContext")
            except no_connection:
                return None
        self.context = wait("the application", connect, 2 * LIMIT)
        self.desktop = self.service("com.sun.star.frame.Desktop")
        self.toolkit = self.service("com.sun.star.awt.Toolkit")

    def service(self, name):
        return self.context.ServiceManager.createInstanceWithContext(name, self.context)

    def clipboard(self):
        return self.service("com.sun.star.datatransfer.clipboard.SystemClipboard")

    def copied(self):
        """The text on the clipboard."""
        contents = self.clipboard().getContents()
        return next(contents.getTransferData(flavor) for flavor in contents.getTransferDataFlavors()
                    if flavor.MimeType.startswith("text/plain"))

    def stop(self):
        """Ends it; its exit status."""
        for document in self.documents():
            document.setModified(False)
        try:
            limited(self.desktop.terminate)
        except uno.getClass("com.sun.star.lang.DisposedException"):
            pass
        status = self.process.wait(LIMIT)
        self.process = None
        return status

    def kill(self):
        if self.process:
            subprocess.run(["pkill", "-KILL", "-P", str(self.process.pid)], check=False)
            self.process.kill()
            self.process.wait()

    def documents(self):
        components = self.desktop.getComponents().createEnumeration()
        while components.hasMoreElements():
            component = components.nextElement()
            if hasattr(component, "setModified"):
                yield component

    def frames(self):
        frames = self.desktop.getFrames()
        return [frames.getByIndex(i) for i in range(frames.getCount())]

    def open(self, url, **options):
        """Opens a document, with its window in front; a file of the tests by its name."""
        if ":" not in url:
            url = "file://" + os.path.join(FILES, url)
        options["OnMainThread"] = True  # on the bridge's, gtk3 may wait for itself
        properties = tuple(PropertyValue(Name=name, Value=value) for name, value in options.items())
        document = limited(self.desktop.loadComponentFromURL, url, "_blank", 0, properties)
        frame = document.getCurrentController().getFrame()
        frame.getContainerWindow().setPosSize(0, 0, 1280, 1000, 15)
        return document

    def dispatcher(self, frame, command):
        url = URL(Complete=command)
        return wait(command, lambda: frame.queryDispatch(url, "_self", 0)), url

    def run_in(self, frame, command):
        """Gives the command in that window, which comes to the front."""
        frame.getContainerWindow().toFront()
        dispatcher, url = self.dispatcher(frame, command)
        limited(dispatcher.dispatch, url, ())

    def run(self, document, command):
        """Gives the command in the document's window, once the command before it has ended."""
        frame = document.getCurrentController().getFrame()
        wait("the end of the last command", lambda: self.enabled(document, command))
        self.run_in(frame, command)

    def enabled(self, document, command):
        """The state that the command publishes."""
        listener = StateListener()
        dispatcher, url = self.dispatcher(document.getCurrentController().getFrame(), command)
        dispatcher.addStatusListener(listener, url)
        dispatcher.removeStatusListener(listener, url)
        return listener.enabled

    def dialogs(self):
        found = []
        for i in range(self.toolkit.getTopWindowCount()):
            try:
                context = self.toolkit.getTopWindow(i).getAccessibleContext()
                if context.getAccessibleRole() in DIALOG_ROLES and context.getAccessibleStateSet().contains(SHOWING):
                    found.append(Dialog(self, context, context.getAccessibleName()))
            except (AttributeError, uno.getClass("com.sun.star.uno.RuntimeException")):
                continue
        return found

    def dialog(self, title, text=""):
        """The dialog with this in its title and text, once it has the keyboard, and with it its place."""
        def shown():
            return next((d for d in self.dialogs() if d.title == title and text in " ".join(d.texts())), None)
        dialog = wait(f"{text!r} in the dialog {title!r}", shown)
        wait(f"the keyboard in {title!r}", lambda: dialog.window.getAccessibleStateSet().contains(ACTIVE))
        return dialog

    def alert(self, title, text):
        """Answers the message box with this in its text by OK."""
        alert = self.dialog(title, text)
        insist(f"the end of {text!r}", lambda: alert.press("OK") if alert.open() else None, lambda: not alert.open())

    def screenshot(self, name):
        subprocess.run(["import", "-window", "root", name], check=True, timeout=LIMIT)
