"""A headless browser for tests of pages: Debian's chromium, driven over its debugging pipe.

The pipe needs nothing but the standard library: the browser reads commands from descriptor 3 and
writes answers and events to descriptor 4, each a JSON text that ends with NUL.
"""
import base64
import itertools
import json
import os
import pathlib
import select
import shutil
import subprocess
import tempfile
import time

PATIENCE = 120.0  # seconds until a browser that does not answer counts as hanging
SWITCHES = ("--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage",
            "--no-first-run", "--disable-extensions", "--disable-background-networking",
            "--disable-component-update", "--disable-sync", "--hide-scrollbars",
            "--host-resolver-rules=MAP * ~NOTFOUND", "--remote-debugging-pipe", "about:blank")
MODIFIERS = {"alt": 1, "control": 2, "shift": 8}
KEY_CODES = {" ": 32, "PageUp": 33, "PageDown": 34, "Home": 36, "ArrowLeft": 37, "ArrowUp": 38,
             "ArrowRight": 39, "ArrowDown": 40, "Escape": 27, "Enter": 13, "Tab": 9}


class BrowserError(Exception):
    """A command that failed, or a script that threw."""


def find_browser():
    return shutil.which("chromium")


class Browser:
    """One browser with one tab. Events are kept until clear_events()."""

    def __init__(self, width=1100, height=650):
        self.profile = tempfile.mkdtemp(prefix="crv_browser_")
        self.process = self.commands = self.answers = None
        self.numbers = itertools.count(1)
        self.unread = bytearray()
        self.events = []
        self.session = None
        self.start()
        target = self.call("Target.createTarget", url="about:blank")["targetId"]
        attached = self.call("Target.attachToTarget", targetId=target, flatten=True)
        self.session = attached["sessionId"]
        for domain in ("Page", "Runtime", "Log", "Network"):
            self.call(f"{domain}.enable")
        self.resize(width, height)

    def start(self):
        commands, self.commands = os.pipe()
        self.answers, answers = os.pipe()
        # The shell moves the ends of the pipes to the numbers that the browser expects.
        script = f'exec "$0" "$@" 3<&{commands} 4>&{answers}'
        self.process = subprocess.Popen(
            ["sh", "-c", script, find_browser(), f"--user-data-dir={self.profile}", *SWITCHES],
            pass_fds=(commands, answers), stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL, env={**os.environ, "HOME": self.profile})
        os.close(commands)
        os.close(answers)

    def close(self):
        """Ends the browser, by force if it does not answer."""
        try:
            self.session = None
            self.call("Browser.close")
            self.process.wait(timeout=20)
        except (BrowserError, OSError, EOFError, subprocess.TimeoutExpired):
            self.process.kill()
            self.process.wait()
        os.close(self.commands)
        os.close(self.answers)
        shutil.rmtree(self.profile, ignore_errors=True)

    def read_message(self, end):
        while b"\0" not in self.unread:
            left = max(end - time.monotonic(), 0)
            if not select.select([self.answers], [], [], left)[0]:
                raise BrowserError("the browser does not answer")
            data = os.read(self.answers, 1 << 20)
            if not data:
                raise EOFError("the browser has ended")
            self.unread += data
        message, _, rest = bytes(self.unread).partition(b"\0")
        self.unread = bytearray(rest)
        return json.loads(message)

    def call(self, method, **parameters):
        """Runs a command of the debugging protocol and returns its result."""
        number = next(self.numbers)
        message = {"id": number, "method": method, "params": parameters}
        if self.session:
            message["sessionId"] = self.session
        data = json.dumps(message).encode() + b"\0"
        while data:
            data = data[os.write(self.commands, data):]
        end = time.monotonic() + PATIENCE
        while True:
            answer = self.read_message(end)
            if answer.get("id") != number:
                self.events.append(answer)
            elif "error" in answer:
                raise BrowserError(f"{method}: {answer['error']}")
            else:
                return answer["result"]

    def wait_for(self, method):
        """Waits for an event and returns its parameters."""
        end = time.monotonic() + PATIENCE
        while True:
            for event in self.events:
                if event.get("method") == method:
                    return event["params"]
            self.events.append(self.read_message(end))

    def clear_events(self):
        self.events.clear()

    def faults(self):
        """Errors of scripts, messages of the browser, and requests to a network."""
        faults = []
        for event in self.events:
            method, details = event.get("method"), event.get("params", {})
            is_error = method == "Log.entryAdded" and details["entry"]["level"] == "error"
            if is_error or method in ("Runtime.exceptionThrown", "Page.javascriptDialogOpening"):
                faults.append(f"{method}: {json.dumps(details)[:400]}")
            if method == "Runtime.consoleAPICalled" and details["type"] in ("error", "assert"):
                faults.append(f"console: {json.dumps(details['args'])[:400]}")
            if method == "Network.requestWillBeSent":
                url = details["request"]["url"]
                if not url.startswith(("file:", "data:", "blob:", "about:")):
                    faults.append(f"request: {url[:400]}")
        return faults

    # ----- Pages

    def resize(self, width, height, scale=1):
        self.call("Emulation.setDeviceMetricsOverride", width=width, height=height,
                  deviceScaleFactor=scale, mobile=False)

    def open(self, path):
        """Opens a file and waits until it is loaded and drawn."""
        self.clear_events()
        self.call("Page.navigate", url=pathlib.Path(path).resolve().as_uri())
        self.wait_for("Page.loadEventFired")
        self.draw_frame()

    def evaluate(self, expression):
        """The value of a JavaScript expression; a promise is awaited."""
        answer = self.call("Runtime.evaluate", expression=expression, returnByValue=True,
                           awaitPromise=True)
        if "exceptionDetails" in answer:
            raise BrowserError(json.dumps(answer["exceptionDetails"])[:1000])
        return answer["result"].get("value")

    def draw_frame(self):
        """Waits until what was requested for the next frame is drawn."""
        self.evaluate("new Promise(done => requestAnimationFrame(() => "
                      "requestAnimationFrame(() => done(0))))")

    def set_dark(self, dark):
        value = "dark" if dark else "light"
        self.call("Emulation.setEmulatedMedia",
                  features=[{"name": "prefers-color-scheme", "value": value}])
        self.draw_frame()

    def screenshot(self):
        """The page as a PNG file."""
        return base64.b64decode(self.call("Page.captureScreenshot", format="png")["data"])

    def pdf(self):
        """The printed page as a PDF file."""
        return base64.b64decode(self.call("Page.printToPDF", printBackground=False,
                                          preferCSSPageSize=True)["data"])

    def download_to(self, directory):
        """Has downloads written to a directory without a question."""
        session, self.session = self.session, None
        self.call("Browser.setDownloadBehavior", behavior="allow", downloadPath=str(directory),
                  eventsEnabled=True)
        self.session = session

    # ----- Input

    def mouse(self, kind, x, y, **more):
        self.call("Input.dispatchMouseEvent", type=kind, x=x, y=y, **more)

    def move_to(self, x, y):
        self.mouse("mouseMoved", x, y)
        self.draw_frame()

    def drag(self, begin, end, modifier=None):
        held = {"modifiers": MODIFIERS.get(modifier, 0)}
        (x0, y0), (x1, y1) = begin, end
        self.mouse("mouseMoved", x0, y0, **held)
        self.mouse("mousePressed", x0, y0, button="left", buttons=1, clickCount=1, **held)
        for step in range(1, 6):
            self.mouse("mouseMoved", x0 + (x1 - x0) * step / 5, y0 + (y1 - y0) * step / 5,
                       button="left", buttons=1, **held)
        self.mouse("mouseReleased", x1, y1, button="left", clickCount=1, **held)
        self.draw_frame()

    def click(self, x, y, count=1):
        for number in range(1, count + 1):
            self.mouse("mousePressed", x, y, button="left", buttons=1, clickCount=number)
            self.mouse("mouseReleased", x, y, button="left", clickCount=number)
        self.draw_frame()

    def wheel(self, x, y, delta):
        self.mouse("mouseWheel", x, y, deltaX=0, deltaY=delta)
        self.draw_frame()

    def touch(self, kind, *points):
        self.call("Input.dispatchTouchEvent", type=kind,
                  touchPoints=[{"x": x, "y": y, "id": k} for k, (x, y) in enumerate(points)])

    def key(self, key, modifier=None):
        code = KEY_CODES.get(key, ord(key.upper()) if len(key) == 1 else 0)
        event = {"key": key, "modifiers": MODIFIERS.get(modifier, 0),
                 "windowsVirtualKeyCode": code}
        text = {"text": key} if len(key) == 1 else {"text": "\r"} if key == "Enter" else {}
        self.call("Input.dispatchKeyEvent", type="keyDown", **event, **text)
        self.call("Input.dispatchKeyEvent", type="keyUp", **event)
        self.draw_frame()
