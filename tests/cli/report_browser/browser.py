"""A browser without a window."""

import base64
import shutil

from selenium import webdriver
from selenium.webdriver.chrome.options import Options
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.remote.remote_connection import RemoteConnection

ARGUMENTS = ["--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage",
             "--hide-scrollbars", "--force-color-profile=srgb"]
PATIENCE = 300  # seconds; thousands of rows take long to print


class Browser:
    """Use as `with Browser() as browser`."""

    def __enter__(self):
        options = Options()
        for argument in ARGUMENTS:
            options.add_argument(argument)
        options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
        RemoteConnection.set_timeout(PATIENCE)
        self.driver = webdriver.Chrome(service=Service(shutil.which("chromedriver")),
                                       options=options)
        self.driver.set_script_timeout(PATIENCE)
        return self

    def __exit__(self, *_):
        self.driver.quit()

    def command(self, name, **parameters):
        """A command of the browser's own protocol."""
        return self.driver.execute_cdp_cmd(name, parameters)

    def open(self, address):
        """Opens a page and returns the messages on its console."""
        self.driver.get(address)
        return [entry["message"] for entry in self.driver.get_log("browser")]

    def run(self, script, *arguments):
        """The value that a script returns, as the body of a function."""
        return self.driver.execute_script(script, *arguments)

    def run_async(self, script, *arguments):
        """The value that a script hands to its last argument."""
        return self.driver.execute_async_script(script, *arguments)

    def press(self, *keys):
        """Types keys into what has the focus."""
        ActionChains(self.driver).send_keys(*keys).perform()

    def resize(self, width, height=900):
        self.command("Emulation.setDeviceMetricsOverride", width=width, height=height,
                     deviceScaleFactor=1, mobile=False)

    def emulate(self, media="", scheme="light"):
        """`media` is "print" or empty; `scheme` is "light" or "dark"."""
        self.command("Emulation.setEmulatedMedia", media=media,
                     features=[{"name": "prefers-color-scheme", "value": scheme}])

    def allow_scripts(self, is_allowed):
        """Those of pages; what the checks run themselves needs them, too."""
        self.command("Emulation.setScriptExecutionDisabled", value=not is_allowed)

    def read_html(self):
        """The page as it stands, also where no scripts run."""
        root = self.command("DOM.getDocument")["root"]["nodeId"]
        return self.command("DOM.getOuterHTML", nodeId=root)["outerHTML"]

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
