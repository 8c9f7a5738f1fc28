"""A browser without a window, driven through its WebDriver."""

import base64
import json
import socket
import subprocess
import tempfile
import time
import urllib.error
import urllib.request

WAIT_SECONDS = 60


def find_port():
    with socket.socket() as listener:
        listener.bind(("127.0.0.1", 0))
        return listener.getsockname()[1]


class Browser:
    """Use as `with Browser() as browser`."""

    def __enter__(self):
        self.profile = tempfile.TemporaryDirectory()
        self.base = f"http://127.0.0.1:{(port := find_port())}"
        self.driver = subprocess.Popen(["chromedriver", f"--port={port}", "--log-level=OFF"],
                                       stdout=subprocess.DEVNULL)
        self.wait_for_driver()
        arguments = ["--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage",
                     "--hide-scrollbars", "--force-color-profile=srgb",
                     f"--user-data-dir={self.profile.name}"]
        capabilities = {"goog:chromeOptions": {"args": arguments},
                        "goog:loggingPrefs": {"browser": "ALL"}}
        session = self.call("POST", "/session", {"capabilities": {"alwaysMatch": capabilities}})
        self.base += "/session/" + session["sessionId"]
        return self

    def __exit__(self, *_):
        try:
            self.call("DELETE", "")
        finally:
            self.driver.terminate()
            self.driver.wait()
            self.profile.cleanup()

    def wait_for_driver(self):
        deadline = time.monotonic() + WAIT_SECONDS
        while True:
            try:
                if self.call("GET", "/status")["ready"]:
                    return
            except OSError:
                if time.monotonic() > deadline:
                    raise
            time.sleep(0.05)

    def call(self, method, path, body=None):
        data = None if body is None else json.dumps(body).encode()
        request = urllib.request.Request(self.base + path, data, method=method)
        try:
            with urllib.request.urlopen(request, timeout=WAIT_SECONDS) as reply:
                return json.load(reply)["value"]
        except urllib.error.HTTPError as error:
            raise RuntimeError(error.read().decode()) from error

    def command(self, name, **parameters):
        """A command of the browser's own protocol."""
        return self.call("POST", "/goog/cdp/execute", {"cmd": name, "params": parameters})

    def open(self, path):
        """Opens a file and returns the messages on its console."""
        self.call("POST", "/url", {"url": f"file://{path}"})
        return [entry["message"] for entry in self.call("POST", "/se/log", {"type": "browser"})]

    def run(self, script, *arguments):
        """The value that a script returns, as the body of a function."""
        return self.call("POST", "/execute/sync", {"script": script, "args": arguments})

    def resize(self, width, height=900):
        self.command("Emulation.setDeviceMetricsOverride", width=width, height=height,
                     deviceScaleFactor=1, mobile=False)

    def emulate(self, media="", scheme="light"):
        """`media` is "print" or empty; `scheme` is "light" or "dark"."""
        self.command("Emulation.setEmulatedMedia", media=media,
                     features=[{"name": "prefers-color-scheme", "value": scheme}])

    def shoot(self, path, height=None):
        """Saves a picture of the whole page, or of its upper part."""
        size = self.command("Page.getLayoutMetrics")["cssContentSize"]
        clip = {"x": 0, "y": 0, "width": size["width"], "height": height or size["height"],
                "scale": 1}
        shot = self.command("Page.captureScreenshot", captureBeyondViewport=True, clip=clip)
        save(path, shot["data"])

    def print(self, path):
        """Saves the page as it prints, on the paper that it asks for."""
        save(path, self.command("Page.printToPDF", preferCSSPageSize=True,
                                printBackground=False)["data"])


def save(path, text):
    with open(path, "wb") as file:
        file.write(base64.b64decode(text))
