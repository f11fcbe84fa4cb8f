"""The gateway to test against."""

import json
import os
import re
import signal
import subprocess
import urllib.request

from office import FILES, LIMIT


class Sandbox:
    def __init__(self):
        self.process = subprocess.Popen([os.path.join(FILES, "quorvel-sandbox"), "--port", "0"],
                                        stdout=subprocess.PIPE, text=True)
        self.port = int(re.search(r":(\d+)", self.process.stdout.readline()).group(1))

    def ask(self, path, body=None):
        request = urllib.request.Request(f"http://127.0.0.1:{self.port}{path}", data=body,
                                         method="GET" if body is None else "POST")
        opener = urllib.request.build_opener(urllib.request.ProxyHandler({}))
        with opener.open(request, timeout=LIMIT) as reply:
            return reply.read().decode()

    def received(self):
        return json.loads(self.ask("/_sandbox/messages"))

    def texts(self):
        return {message["number"]: message["text"] for message in self.received()["messages"]}

    def send_bodies(self):
        return [request["body"] for request in self.received()["requests"] if "mobilenumber=" in request["body"]]

    def reset(self):
        self.ask("/_sandbox/reset", b"")

    def fail(self, rules):
        self.ask("/_sandbox/fail", rules.encode())

    def pause(self):
        """Requests arrive, but nobody answers them until resume()."""
        self.process.send_signal(signal.SIGSTOP)

    def has_unread(self):
        with open("/proc/net/tcp", encoding="ascii") as table:
            rows = [line.split() for line in table][1:]
        return any(row[1].endswith(f":{self.port:04X}") and int(row[4].split(":")[1], 16) > 0 for row in rows)

    def resume(self):
        self.process.send_signal(signal.SIGCONT)

    def stop(self):
        self.resume()
        self.process.terminate()
        self.process.wait(LIMIT)
        self.process.stdout.close()
