#!/usr/bin/python3
"""The control in a real browser: Chromium, started once for all cases.

Arguments: the test server, zelweb, the folder of the recordings.
"""
import os
import subprocess
import sys
import unittest

try:
    from selenium import webdriver
    from selenium.common.exceptions import TimeoutException, WebDriverException
    from selenium.webdriver.chrome.service import Service
    from selenium.webdriver.common.action_chains import ActionChains
    from selenium.webdriver.common.by import By
    from selenium.webdriver.common.keys import Keys
    from selenium.webdriver.support.ui import Select, WebDriverWait
except ImportError:
    print("python3-selenium is not installed: no tests in a browser")
    sys.exit(77)

SERVER, ZELWEB, RECORDINGS = sys.argv[1:4]
CHROMIUM, DRIVER = "/usr/bin/chromium", "/usr/bin/chromedriver"
if not (os.path.exists(CHROMIUM) and os.path.exists(DRIVER)):
    print("chromium and chromium-driver are not installed: no tests in a browser")
    sys.exit(77)


def open_browser():
    options = webdriver.ChromeOptions()
    for argument in ("--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage",
                     "--window-size=1280,900", "--lang=en-US"):
        options.add_argument(argument)
    options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
    return webdriver.Chrome(service=Service(DRIVER), options=options)


class Case(unittest.TestCase):
    browser = None

    def start(self, *command):
        """Starts a server; the process and the address that it prints."""
        process = subprocess.Popen(command, stdout=subprocess.PIPE, text=True)
        self.addCleanup(process.wait, 30)
        self.addCleanup(process.terminate)
        self.addCleanup(process.stdout.close)
        return process, process.stdout.readline().strip()

    def serve(self, *command):
        process, address = self.start(*command)
        # A page that is left open would complain that its server is gone, in the middle of the next test.
        self.addCleanup(self.browser.get, "about:blank")
        self.browser.get_log("browser")
        self.open(address)
        return process, address

    def open(self, address):
        self.browser.get(address)
        self.await_value("the overview", lambda: self.text("#General\\.Name\\.Val") == "DEMO (3)")

    def await_value(self, what, get):
        """Asks until there is a value. While a page or a box is replaced, asking may fail."""
        return WebDriverWait(self.browser, 60, 0.02, [WebDriverException]).until(lambda _: get(), what)

    def press_button(self, selector):
        self.await_value(selector, lambda: self.browser.find_element(By.CSS_SELECTOR, selector).click() is None)

    def script(self, text, *arguments):
        return self.browser.execute_script(text, *arguments)

    def text(self, selector):
        """Of an element of the page in front."""
        return self.script(
            "return document.querySelector('#frames iframe.front')?.contentDocument?.querySelector(arguments[0])"
            "?.textContent", selector)

    def title(self):
        return self.text("#txtFormTitle")

    def show(self, name, title):
        self.press_button(f"#pages [data-name={name}]")
        self.await_shown(title)

    def await_shown(self, title):
        shown = ("const o = document.querySelector('#frames iframe.front')?.contentDocument;"
                 "return o?.querySelector('#txtFormTitle')?.textContent === arguments[0] &&"
                 " o.querySelector('#divFrmCnt')?.style.display === ''")
        self.await_value(title, lambda: self.script(shown, title))

    def click(self, element):
        """In the page in front."""
        self.browser.switch_to.frame(self.browser.find_element(By.CSS_SELECTOR, "#frames iframe.front"))
        try:
            self.press_button("#" + element)
        finally:
            self.browser.switch_to.default_content()

    def press(self, *keys):
        ActionChains(self.browser).send_keys(*keys).perform()

    def await_box(self, text):
        """The box in front, which holds the text."""
        def front():
            box = self.browser.find_elements(By.CSS_SELECTOR, "dialog[open]")[-1:]
            return box[0] if box and text in box[0].text else None
        return self.await_value(f"a box with {text}", front)

    def expect_live_equals_replica(self):
        """Within the deadline, as what was asked for may still be on its way."""
        ask = "const f = arguments[0]; fetch('/lights').then((o) => o.text()).then(f)"
        found = []

        def equal():
            number, text = self.browser.execute_async_script(ask).split(" ", 1)
            found.append((int(number), text))
            return found[-1][0] > found[0][0] and text == "equal"
        try:
            self.await_value("a comparison", equal)
        except TimeoutException:
            self.fail(f"comparison {found[-1:]}")

    def expect_no_errors(self):
        errors = [o["message"] for o in self.browser.get_log("browser") if "favicon" not in o["message"]]
        self.assertEqual(errors, [])


class PagesTest(Case):
    def setUp(self):
        self.serve(SERVER, f"recorded:{RECORDINGS}/demo.json")

    def test_every_page_is_what_the_program_made(self):
        pages = {"DataArea": "Data Area", "LogArea": "Log Area", "Parameters": "Parameters", "InfoCaches": "Caches",
                 "InfoActivity": "Activity", "Sessions": "Sessions", "SysInfos": "System Information",
                 "SysDD": "System Tables", "DBAnalyzer": "Database Analyzer", "History": "Backup History",
                 "Main": "Instance Overview"}
        for again in range(2):  # the second time the document is known beforehand
            for name, title in pages.items():
                with self.subTest(page=name, again=again):
                    self.show(name, title)
                    self.expect_live_equals_replica()
        self.expect_no_errors()

    def test_clicks_keys_theme_and_a_reload(self):
        self.show("Parameters", "Parameters")
        self.click("PARAMCACHE_SIZE")
        self.await_shown("Parameter")
        self.press(Keys.ESCAPE)
        self.await_shown("Instance Overview")
        self.show("InfoCaches", "Caches")
        Select(self.browser.find_element(By.ID, "theme")).select_by_value("dark")
        dark = "return document.querySelector('#frames iframe.front').contentDocument.documentElement.dataset.theme"
        self.await_value("the dark theme", lambda: self.script(dark) == "dark")
        self.press(Keys.F5)
        self.expect_live_equals_replica()
        self.browser.refresh()
        self.await_shown("Caches")
        self.await_value("the title", lambda: self.browser.title == "DEMO - Caches")
        self.assertEqual(self.script(dark), "dark")
        self.expect_live_equals_replica()
        Select(self.browser.find_element(By.ID, "theme")).select_by_value("")
        self.expect_no_errors()

    def test_a_lost_socket_loses_nothing(self):
        # A shell whose socket can be reached.
        self.browser.execute_cdp_cmd("Page.addScriptToEvaluateOnNewDocument", {
            "source": "globalThis.WebSocket = new Proxy(WebSocket, {construct: (o, a) => (globalThis.last = new o(...a))})"})
        self.browser.refresh()
        self.await_shown("Instance Overview")
        self.script("last.close()")
        self.press_button("#pages [data-name=Sessions]")
        self.await_shown("Sessions")
        self.await_value("no line", lambda: self.script("return document.getElementById('line').hidden"))
        self.expect_live_equals_replica()


class ZelwebTest(Case):
    def test_changes_are_refused_at_the_instance(self):
        self.serve(ZELWEB, f"recorded:{RECORDINGS}/demo.json")
        self.press_button("#commands button:nth-of-type(2)")
        self.await_box("DEMO")
        self.press_button("dialog[open] .buttons button")
        self.await_box("--allow-commands")
        self.press(Keys.ESCAPE)
        self.await_value("no box", lambda: not self.browser.find_elements(By.CSS_SELECTOR, "dialog"))
        self.assertEqual(self.text("#txtState"), "Online")

    def test_a_server_that_was_started_again_is_found(self):
        tokens = []
        for name in ("token", "metrics"):
            tokens.append(os.path.join(os.environ["TMPDIR"], f"{name}-{os.getpid()}"))
            self.addCleanup(os.remove, tokens[-1])
        files = ["--token-file", tokens[0], "--metrics-token-file", tokens[1]]
        process, address = self.serve(ZELWEB, f"recorded:{RECORDINGS}/demo.json", *files)
        port = address.split(":")[2].split("/")[0]
        process.terminate()
        self.assertEqual(process.wait(30), 0)
        self.await_value("the line", lambda: not self.script("return document.getElementById('line').hidden"))
        self.assertEqual(self.start(ZELWEB, f"recorded:{RECORDINGS}/demo.json", "--listen", f"127.0.0.1:{port}", *files)[1],
                         address)
        # Its cookies are new ones: the token is needed again.
        self.open(address)


if __name__ == "__main__":
    os.environ.setdefault("TMPDIR", "/tmp")
    Case.browser = open_browser()
    try:
        result = unittest.main(argv=sys.argv[:1] + sys.argv[4:], exit=False, verbosity=2).result
    finally:
        Case.browser.quit()
    sys.exit(0 if result.wasSuccessful() else 1)
