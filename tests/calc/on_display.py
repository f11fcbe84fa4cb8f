"""Runs a script on an X display of its own, with a window manager: on_display.py SCRIPT [ARGUMENT...]"""

import os
import subprocess
import sys


def main():
    read, write = os.pipe()
    server = subprocess.Popen(["Xvfb", "-displayfd", str(write), "-screen", "0", "1280x1024x24",
                               "-nolisten", "tcp"], pass_fds=[write], stderr=subprocess.DEVNULL)
    os.close(write)
    manager = None
    try:
        display = os.read(read, 16).decode().strip()
        environment = dict(os.environ, DISPLAY=":" + display, NO_AT_BRIDGE="1")
        manager = subprocess.Popen(["openbox"], env=environment, stderr=subprocess.DEVNULL)
        return subprocess.run([sys.executable, *sys.argv[1:]], env=environment, check=False).returncode
    finally:
        for process in (manager, server):
            if process:
                process.terminate()
                process.wait()


sys.exit(main())
