"""A browser without a window."""

import base64
import shutil

from selenium import webdriver
from selenium.webdriver.chrome.options import Options
from selenium.webdriver.chrome.service import Service

ARGUMENTS = ["--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage",
             "--hide-scrollbars", "--force-color-profile=srgb"]


class Browser:
    """Use as `with Browser() as browser`."""

    def __enter__(self):
        options = Options()
        for argument in ARGUMENTS:
            options.add_argument(argument)
        options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
        self.driver = webdriver.Chrome(service=Service(shutil.which("chromedriver")),
                                       options=options)
        return self

    def __exit__(self, *_):
        self.driver.quit()

    def command(self, name, **parameters):
        """A command of the browser's own protocol."""
        return self.driver.execute_cdp_cmd(name, parameters)

    def open(self, path):
        """Opens a file and returns the messages on its console."""
        self.driver.get(f"file://{path}")
        return [entry["message"] for entry in self.driver.get_log("browser")]

    def run(self, script, *arguments):
        """The value that a script returns, as the body of a function."""
        return self.driver.execute_script(script, *arguments)

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
