"""A headless browser, driven over the pipes of its DevTools: commands and answers are JSON texts that end in a zero byte."""

import base64
import json
import os
import shutil
import subprocess
import tempfile

PROGRAMS = ("chromium-headless-shell", "chromium-shell", "chromium")


def find_program():
    """The browser's path; None where none is installed."""
    return next(filter(None, map(shutil.which, PROGRAMS)), None)


class Failed(Exception):
    """The browser did not do what it was told; the text says why."""


class Browser:
    """One window, for as long as the block runs."""

    def __init__(self, program):
        self.folder = tempfile.TemporaryDirectory(prefix="quillbox-browser-")
        commands, self.commands = os.pipe()
        self.answers, answers = os.pipe()
        # The browser reads its commands from descriptor 3 and writes its answers to 4.
        shell = f'exec "$@" 3<&{commands} 4>&{answers}'
        self.process = subprocess.Popen(
            ["bash", "-c", shell, "bash", program, "--headless", "--no-sandbox", "--remote-debugging-pipe", "--hide-scrollbars",
             "--disable-gpu", "--no-proxy-server", f"--user-data-dir={self.folder.name}", "about:blank"],
            pass_fds=(commands, answers), stderr=subprocess.DEVNULL)
        os.close(commands)
        os.close(answers)
        self.received = b""
        self.number = 0
        self.session = None

    def __enter__(self):
        target = self.command("Target.createTarget", url="about:blank")["targetId"]
        self.session = self.command("Target.attachToTarget", targetId=target, flatten=True)["sessionId"]
        self.command("Page.enable")
        return self

    def __exit__(self, *_):
        self.session = None
        try:
            self.command("Browser.close")
            self.process.wait(timeout=30)
        finally:
            self.process.kill()
            self.process.wait()
            os.close(self.commands)
            os.close(self.answers)
            self.folder.cleanup()

    def next_message(self):
        while b"\0" not in self.received:
            data = os.read(self.answers, 1 << 20)
            if not data:
                raise Failed("the browser has ended")
            self.received += data
        message, _, self.received = self.received.partition(b"\0")
        return json.loads(message)

    def command(self, method, **parameters):
        self.number += 1
        message = {"id": self.number, "method": method, "params": parameters}
        if self.session:
            message["sessionId"] = self.session
        os.write(self.commands, json.dumps(message).encode() + b"\0")
        while (answer := self.next_message()).get("id") != self.number:
            pass
        if "error" in answer:
            raise Failed(f"{method}: {answer['error']['message']}")
        return answer["result"]

    def look(self, scheme, width, height=900):
        """From now on as a window of this size (CSS pixels) on a desktop that is "light" or "dark"."""
        self.command("Emulation.setDeviceMetricsOverride", width=width, height=height, deviceScaleFactor=1, mobile=False)
        self.command("Emulation.setEmulatedMedia", features=[{"name": "prefers-color-scheme", "value": scheme}])

    def open(self, address):
        """Returns when the page and its pictures are there."""
        failure = self.command("Page.navigate", url=address).get("errorText")
        if failure:
            raise Failed(f"{address}: {failure}")
        while self.next_message().get("method") != "Page.loadEventFired":
            pass

    def evaluate(self, expression):
        """The value of an expression in the page; a promise is waited for."""
        answer = self.command("Runtime.evaluate", expression=expression, returnByValue=True, awaitPromise=True)
        if "exceptionDetails" in answer:
            raise Failed(f"{expression}: {answer['exceptionDetails']}")
        return answer["result"].get("value")

    def press(self, key):
        code = {"Tab": 9, "Enter": 13}[key]
        text = {"text": "\r"} if key == "Enter" else {}
        for kind in ("keyDown", "keyUp"):
            self.command("Input.dispatchKeyEvent", type=kind, key=key, code=key, windowsVirtualKeyCode=code, **text)

    def screenshot(self):
        """The window as PNG bytes."""
        return base64.b64decode(self.command("Page.captureScreenshot", format="png")["data"])
