"""The page for browsers, as a user has it before him: opened from a file."""

import pathlib
import re
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parents[3]
sys.path.insert(0, str(ROOT / "tests/cli/report_browser"))

from selenium.common.exceptions import StaleElementReferenceException  # noqa: E402
from selenium.webdriver.common.action_chains import ActionChains  # noqa: E402
from selenium.webdriver.common.by import By  # noqa: E402
from selenium.webdriver.common.keys import Keys  # noqa: E402
from selenium.webdriver.support.ui import Select  # noqa: E402

from browser import Browser  # noqa: E402

PATIENCE = 30  # seconds
VIEW = "main > section:not([hidden])"
# The elements of a selector that are seen.
SEEN = """[...document.querySelectorAll(arguments[0])].filter(
    e => e.getClientRects().length > 0 && e.checkVisibility({checkOpacity: true, checkVisibilityCSS: true}))"""


class Page:
    """Works the page by what can be seen of it. Use as `with Page(path) as page`."""

    def __init__(self, path):
        self.address = pathlib.Path(path).resolve().as_uri()
        self.browser = Browser()
        self.folder = tempfile.TemporaryDirectory(prefix="kvfound für Chromium ")
        self.downloads = pathlib.Path(self.folder.name)

    def __enter__(self):
        self.browser.__enter__()
        self.driver = self.browser.driver
        self.browser.resize(1280, 800)
        self.browser.command("Browser.setDownloadBehavior", behavior="allow",
                             downloadPath=self.folder.name)
        return self

    def __exit__(self, *ending):
        self.browser.__exit__(*ending)
        self.folder.cleanup()

    def load(self):
        """Opens the page anew."""
        # What was changed before is not to be asked about.
        self.driver.get("about:blank")
        try:
            self.driver.switch_to.alert.accept()
        except Exception:  # noqa: BLE001 - there is none
            pass
        messages = self.browser.open(self.address)
        self.wait(lambda: self.run("return document.body.classList.contains('ready')"))
        for path in self.downloads.iterdir():
            path.unlink()
        return messages

    # --- Looking

    def run(self, script, *arguments):
        return self.browser.run(script, *arguments)

    def run_file(self, name):
        """What the function gives that is all of a script beside this one."""
        text = (pathlib.Path(__file__).parent / name).read_text(encoding="utf-8")
        function = text.rstrip().removesuffix(";")
        return self.browser.run_async(f"""const [done] = arguments;
            Promise.resolve(({function}\n)()).then(done, error => done(String(error)))""")

    def wait(self, condition):
        """Waits for what `condition` gives to be true, and returns it."""
        end = time.monotonic() + PATIENCE
        while True:
            found = condition()
            if found or time.monotonic() > end:
                assert found, "waited in vain"
                return found
            time.sleep(0.02)

    def settle(self):
        """Waits until nothing is being worked on."""
        script = "return document.getElementById('working').hidden"
        self.wait(lambda: self.run(script))
        self.browser.run_async("requestAnimationFrame(() => setTimeout(arguments[0], 20))")

    def find_all(self, selector):
        """What can be seen, looked at in one moment: the page may just be changing."""
        return self.run(f"return {SEEN}", selector)

    def find(self, selector):
        return self.wait(lambda: self.find_all(selector))[0]

    def read(self, selector):
        return self.run("return document.querySelector(arguments[0]).textContent", selector)

    def read_all(self, selector):
        return self.run("return [...document.querySelectorAll(arguments[0])].map(e => e.textContent)",
                        selector)

    def read_shown(self, selector):
        return self.find(selector).text

    def read_notices(self):
        return self.read("#notices")

    def read_rows(self):
        """The numbers and names of the rows that are made."""
        return self.run(f"""return [...document.querySelectorAll("{VIEW} .grid [data-row]")]
            .sort((a, b) => a.dataset.row - b.dataset.row)
            .map(row => [2, 3].map(i => row.children[i - 1].querySelector(".text").textContent))""")

    def read_cell(self, row, key):
        return self.run(f"""return document.querySelector(
            `{VIEW} .grid [data-row="${{arguments[0]}}"] .${{arguments[1]}} .text`).textContent""",
                        row, key)

    def asks(self):
        """Whether it asks before it is left."""
        return self.run("""const event = new Event("beforeunload", {cancelable: true});
            dispatchEvent(event); return event.defaultPrevented""")

    def read_focus(self):
        return self.run("return document.activeElement.id || document.activeElement.textContent")

    def measure_memory(self):
        """The memory of the processes that show pages, in bytes, once what is not needed is gone."""
        for _ in range(3):
            self.browser.command("HeapProfiler.collectGarbage")
            time.sleep(0.3)
        parents = {}
        renderers = []
        for process in pathlib.Path("/proc").iterdir():
            if not process.name.isdigit():
                continue
            try:
                status = (process / "stat").read_text().rsplit(")", 1)[1].split()
                parents[process.name] = status[1]
                if b"--type=renderer" in (process / "cmdline").read_bytes():
                    renderers.append(process)
            except OSError:
                pass  # it has ended
        own = str(self.driver.service.process.pid)

        def is_own(name):
            while name in parents and name != own:
                name = parents[name]
            return name == own
        return sum(int(re.search(r"^Pss:\s+(\d+)", (process / "smaps_rollup").read_text(), re.M)[1])
                   for process in renderers if is_own(process.name)) * 1024

    # --- Working

    def choose(self, *paths):
        """Chooses documents, as the dialog of the browser would."""
        files = self.driver.find_element(By.ID, "files")
        files.send_keys("\n".join(str(path) for path in paths))
        name = pathlib.Path(paths[-1]).name
        self.wait(lambda: name in self.read_all("#documents bdi"))
        self.settle()

    def press(self, *keys):
        self.browser.press(*keys)

    def hold(self, held, key):
        """Presses a key while others are held."""
        chain = ActionChains(self.driver)
        for one in held:
            chain.key_down(one)
        chain.send_keys(key)
        for one in held:
            chain.key_up(one)
        chain.perform()

    def click(self, label, within="body"):
        """Clicks the button or tab whose text starts so."""
        places = f"{within} button, {within} [role=tab]"
        script = f"return {SEEN}.find(e => !e.disabled && e.innerText.trim().startsWith(arguments[1]))"

        def click():
            try:
                button = self.run(script, places, label)
                if button:
                    button.click()
                return button
            except StaleElementReferenceException:
                return None  # the page made it anew
        self.wait(click)
        self.settle()

    def open_tab(self, label):
        self.click(label, f"{VIEW} .tabs")

    def open_dialog(self, label):
        self.click(label, f"{VIEW} .tools")
        return self.find("dialog")

    def tick(self, label, within="dialog"):
        for element in self.find_all(f"{within} label"):
            if element.text.strip().startswith(label):
                element.find_element(By.CSS_SELECTOR, "input").click()
                return self.settle()
        raise AssertionError(f"there is no {label}")

    def select(self, label, text, within="dialog"):
        for element in self.find_all(f"{within} .field"):
            if element.text.strip().startswith(label):
                Select(element.find_element(By.CSS_SELECTOR, "select")).select_by_visible_text(text)
                return self.settle()
        raise AssertionError(f"there is no {label}")

    def fill(self, label, text, within="dialog"):
        for element in self.find_all(f"{within} .field"):
            if element.text.strip().startswith(label):
                field = element.find_element(By.CSS_SELECTOR, "input, textarea")
                field.clear()
                field.send_keys(text)
                return self.settle()
        raise AssertionError(f"there is no {label}")

    def go_to_cell(self, row, key):
        """Makes a cell the active one by keys alone."""
        self.run(f'document.querySelector("{VIEW} .grid").focus()')
        self.hold([Keys.CONTROL], Keys.HOME)
        self.press(*[Keys.ARROW_DOWN] * row)
        keys = self.run(f"""return [...document.querySelectorAll("{VIEW} .heads > *")]
            .map(e => e.className.trim().split(" ").at(-1))""")
        self.press(*[Keys.ARROW_RIGHT] * (keys.index(key) - 1))

    def set_cell(self, row, key, text):
        """Writes a value with the keyboard alone, over the one that is there."""
        self.go_to_cell(row, key)
        self.press(Keys.F2)
        self.hold([Keys.CONTROL], "a")
        self.press(text, Keys.ENTER)
        self.settle()

    def undo(self):
        self.hold([Keys.CONTROL], "z")
        self.settle()

    def redo(self):
        self.hold([Keys.CONTROL], "y")
        self.settle()

    def save(self, form=None, spreadsheet=None):
        """The name and the bytes of what is saved."""
        self.open_dialog("Save")
        if form:
            self.tick(form)
        if spreadsheet:
            self.select("For a spreadsheet", spreadsheet)
        self.find("dialog .primary").click()
        return self.take_download()

    def take_download(self):
        def find():
            paths = [path for path in self.downloads.iterdir() if path.suffix != ".crdownload"]
            return paths[:1]
        path = self.wait(find)[0]
        content = path.read_bytes()
        path.unlink()
        return path.name, content


class Program:
    """The program, which is the measure of what the page writes."""

    def __init__(self, path):
        self.path = str(pathlib.Path(path).resolve())

    def run(self, folder, *arguments):
        done = subprocess.run([self.path, *map(str, arguments)], cwd=folder, capture_output=True,
                              check=False)
        assert done.returncode in (0, 1), done.stderr.decode()
        return done.stdout

    def fail(self, folder, *arguments):
        done = subprocess.run([self.path, *map(str, arguments)], cwd=folder, capture_output=True,
                              check=False)
        assert done.returncode == 2
        return done.stderr.decode()
