#!/usr/bin/python3
"""The control in a real browser: Chromium, started once for all cases.

Arguments: the test server, zelweb, the folder of the recordings.
"""
import contextlib
import os
import shutil
import sqlite3
import subprocess
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True

try:
    import chromium
    from selenium.common.exceptions import TimeoutException, WebDriverException
    from selenium.webdriver.common.action_chains import ActionChains
    from selenium.webdriver.common.by import By
    from selenium.webdriver.common.keys import Keys
    from selenium.webdriver.support.ui import Select, WebDriverWait
except ImportError:
    print("python3-selenium is not installed: no tests in a browser")
    sys.exit(77)

SERVER, ZELWEB, RECORDINGS = sys.argv[1:4]
if not chromium.is_installed():
    print("chromium and chromium-driver are not installed: no tests in a browser")
    sys.exit(77)


class Case(unittest.TestCase):
    browser = None

    def start(self, *command):
        """Starts a server; the process and the address that it prints."""
        process = subprocess.Popen(command, stdout=subprocess.PIPE, text=True)
        self.addCleanup(process.wait, 30)
        self.addCleanup(process.terminate)
        self.addCleanup(process.stdout.close)
        return process, process.stdout.readline().strip()

    def serve(self, *command, name="DEMO (3)"):
        process, address = self.start(*command)
        # A page that is left open would complain that its server is gone, in the middle of the next test.
        self.addCleanup(self.browser.get, "about:blank")
        self.browser.get_log("browser")
        self.open(address, name)
        return process, address

    def open(self, address, name="DEMO (3)"):
        self.browser.get(address)
        self.await_value("the overview", lambda: self.text("#General\\.Name\\.Val") == name)

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

    def theme(self, name):
        Select(self.browser.find_element(By.ID, "theme")).select_by_value(name)

    def title(self):
        return self.text("#txtFormTitle")

    def reach_sockets(self):
        """Loads the shell again, with its present socket as the variable `last`."""
        source = "globalThis.WebSocket = new Proxy(WebSocket, {construct: (o, a) => (globalThis.last = new o(...a))})"
        script = self.browser.execute_cdp_cmd("Page.addScriptToEvaluateOnNewDocument", {"source": source})
        self.addCleanup(self.browser.execute_cdp_cmd, "Page.removeScriptToEvaluateOnNewDocument", script)
        self.browser.refresh()
        self.await_shown("Instance Overview")

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

    def refresh(self):
        """By the keyboard; the page is filled again in place."""
        window = "const o = document.querySelector('#frames iframe.front').contentWindow;"
        self.script(window + "o.refreshed = false; o.document.addEventListener('zelrefreshed', () => (o.refreshed = true))")
        self.press(Keys.F5)
        self.await_value("the refreshed page", lambda: self.script(window + "return o.refreshed"))

    def no_box(self):
        self.await_value("no box", lambda: not self.browser.find_elements(By.CSS_SELECTOR, "dialog"))

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
        before = self.script("return history.length")
        for again in range(2):  # the second time the document is known beforehand
            for name, title in pages.items():
                with self.subTest(page=name, again=again):
                    self.show(name, title)
                    self.expect_live_equals_replica()
                    # Only a list's columns may need more than the window.
                    self.assertTrue(self.script("const o = document.querySelector('#frames iframe.front').contentWindow;"
                                                "return o.document.documentElement.scrollWidth <= o.innerWidth"))
                    if again:
                        self.script("dispatchEvent(new Event('online'))")  # another socket
                        self.refresh()
                        self.expect_live_equals_replica()
                        self.theme("dark" if self.script("return document.getElementById('theme').value") != "dark" else "")
                        self.expect_live_equals_replica()
        self.assertEqual(self.script("return history.length"), before)  # Back leaves the program
        self.show("History", "Backup History")
        self.await_value("commands", lambda: self.browser.find_element(By.ID, "commands").text == "Read More\nRead All")
        self.expect_no_errors()

    def test_clicks_keys_theme_and_a_reload(self):
        self.show("Parameters", "Parameters")
        self.click("PARAMCACHE_SIZE")
        self.await_shown("Parameter")
        self.script("document.querySelector('#frames iframe.front').contentWindow.onkeydown = (o) => (globalThis.taken = o.defaultPrevented)")
        for key, taken in ((Keys.F7, False), (Keys.F8, True)):  # the test server's pages want one of them
            self.press(key)
            self.await_value(key, lambda: self.script("return globalThis.taken") is taken)
        self.press(Keys.ESCAPE)
        self.await_shown("Instance Overview")
        self.show("Parameters", "Parameters")
        self.assertTrue(self.script("return document.activeElement.matches('iframe.front')"))  # no longer the list of pages
        self.click("tbsTab1Parameters")
        tab = "document.querySelector('#frames iframe.front').contentDocument.getElementById('tbsTab1Parameters')"
        self.await_value("the tab", lambda: self.script(f"return {tab}.ariaSelected") == "true")
        self.browser.refresh()
        self.await_value("the tab again", lambda: self.script(f"return {tab}.ariaSelected") == "true")
        self.await_shown("Parameters")
        self.script("document.getElementById('every').focus()")
        self.press(Keys.ESCAPE)
        self.await_shown("Instance Overview")
        self.show("InfoCaches", "Caches")
        self.theme("dark")
        dark = "return document.querySelector('#frames iframe.front').contentDocument.documentElement.dataset.theme"
        self.await_value("the dark theme", lambda: self.script(dark) == "dark")
        self.press(Keys.F5)
        self.expect_live_equals_replica()
        self.browser.refresh()
        self.await_shown("Caches")
        self.await_value("the title", lambda: self.browser.title == "DEMO - Caches")
        self.assertRegex(self.browser.find_element(By.ID, "read").text, r"^Read \d+:\d\d:\d\d [AP]M$")
        self.assertEqual(self.script(dark), "dark")
        self.expect_live_equals_replica()
        self.theme("")
        self.expect_no_errors()

    def test_a_lost_socket_loses_nothing(self):
        self.reach_sockets()
        self.script("last.close()")
        self.press_button("#pages [data-name=Sessions]")
        self.await_shown("Sessions")
        self.await_value("no line", lambda: self.script("return document.getElementById('line').hidden"))
        self.expect_live_equals_replica()
        self.show("SysDD", "System Tables")
        self.script("globalThis.before = last; dispatchEvent(new Event('online'))")
        self.refresh()
        self.assertTrue(self.script("return last !== before"))
        self.expect_live_equals_replica()

    def test_a_tab_that_was_copied_has_its_own_session(self):
        self.show("Sessions", "Sessions")
        first = self.browser.current_window_handle
        self.script("open(location.href)")
        self.browser.switch_to.window([o for o in self.browser.window_handles if o != first][0])
        self.await_shown("Instance Overview")
        self.browser.close()
        self.browser.switch_to.window(first)
        self.assertEqual(self.title(), "Sessions")
        self.show("InfoCaches", "Caches")

    def test_a_reload_finds_filter_order_and_place(self):
        self.show("SysDD", "System Tables")
        self.await_value("the list", lambda: self.text(".zelListFilter") is not None)  # made when all is loaded
        front = "const w = document.querySelector('#frames iframe.front').contentWindow, d = w.document; "
        self.script(front + "const o = d.querySelector('.zelListFilter'); o.value = 'e';"
                    "o.dispatchEvent(new Event('input')); const h = d.querySelectorAll('th')[1].querySelector('button');"
                    "h.click(); h.click()")
        self.await_value("the order", lambda: self.script(front + "return d.querySelector('.zelListBar[aria-busy]') === null"))
        self.script(front + "w.scrollTo(0, 150)")
        state = (front + "return [d.querySelector('.zelListFilter').value, d.querySelectorAll('th')[1].ariaSort,"
                 " d.querySelectorAll('td a')[0].textContent, w.scrollY > 100]")
        self.await_value("the list", lambda: self.script(state)[1::2] == ["descending", True])
        before = self.script(state)
        self.browser.refresh()
        self.await_shown("System Tables")
        self.await_value(f"{before}", lambda: self.script(state) == before)

    def test_lists_are_saved_and_copied(self):
        folder = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, folder)
        self.browser.execute_cdp_cmd("Browser.setDownloadBehavior", {"behavior": "allow", "downloadPath": folder})
        self.show("Sessions", "Sessions")
        saved = os.path.join(folder, "Sessions.csv")
        self.choose_export("CSV")
        self.await_value("the file", lambda: os.path.exists(saved))
        with open(saved, encoding="utf-8", newline="") as file:
            self.assertEqual(file.read().split("\r\n")[:2],
                             ["Session,Process,Program,User,Since,Lock", "T17,4017,orders,USER,2026-03-02 06:20:11,"])
        self.script("globalThis.copied = ''; document.querySelector('#frames iframe.front').contentDocument"
                    ".addEventListener('copy', (o) => { const p = o.clipboardData.setData.bind(o.clipboardData);"
                    " o.clipboardData.setData = (t, s) => { copied = s; p(t, s); }; }, true)")
        self.choose_export("Copy")
        self.await_value("the copy", lambda: "T17\t4017" in self.script("return copied"))
        self.expect_no_errors()

    def choose_export(self, item):
        self.browser.switch_to.frame(self.browser.find_element(By.CSS_SELECTOR, "#frames iframe.front"))
        try:
            self.press_button(".zelExport")
            self.await_value(item, lambda: self.browser.find_element(
                By.XPATH, f"//*[@role='menuitem'][starts-with(., '{item}')]").click() is None)
        finally:
            self.browser.switch_to.default_content()

    def values(self):
        return self.script("return [...document.querySelectorAll('dialog:last-of-type .field')]"
                           ".map((o) => o.type === 'checkbox' ? o.checked : o.value)")

    def test_dialogs_take_what_they_ask_for(self):
        self.show("DBAnalyzer", "Database Analyzer")
        self.press_button("#commands button:nth-of-type(2)")  # stop it
        self.await_value("stopped", lambda: self.browser.find_elements(
            By.CSS_SELECTOR, "#commands button:nth-of-type(1):not([aria-disabled])"))
        self.press_button("#commands button:nth-of-type(1)")
        box = self.await_box("Start Options")
        self.press("my.cfg")  # the first field has the keyboard
        ActionChains(self.browser).key_down(Keys.ALT).send_keys("n").key_up(Keys.ALT).perform()
        self.press("1x2", Keys.BACKSPACE, "3")  # digits only
        ActionChains(self.browser).key_down(Keys.ALT).send_keys("i").key_up(Keys.ALT).perform()
        self.press("99999999999")
        ActionChains(self.browser).key_down(Keys.ALT).send_keys("d").key_up(Keys.ALT).perform()
        expected = ["my.cfg", "13", "99999999999", True, False]
        self.assertEqual(self.values(), expected)
        self.press(Keys.ENTER)
        self.await_box("too large")
        self.browser.refresh()  # boxes are open questions: they come back
        self.await_box("too large")
        box = self.browser.find_element(By.CSS_SELECTOR, "dialog[open]")
        self.press(Keys.ESCAPE)  # the complaint, not the dialog
        self.await_box("Start Options")
        self.assertEqual(box.get_attribute("open"), "true")
        self.assertEqual(self.values(), expected)
        self.press(Keys.ESCAPE)
        self.no_box()
        self.expect_live_equals_replica()

    def test_dates_and_times_are_fields_of_their_own(self):
        self.press_button("#commands button:nth-of-type(2)")
        self.await_box("DEMO")
        self.press_button("dialog[open] .buttons button")
        self.await_value("Admin", lambda: self.text("#txtState") == "Admin")
        ActionChains(self.browser).key_down(Keys.ALT).send_keys("u").key_up(Keys.ALT).perform()
        box = self.await_box("Restart Until")
        day, time = box.find_elements(By.CSS_SELECTOR, ".field")
        self.assertEqual([day.get_attribute("type"), time.get_attribute("type")], ["date", "time"])
        self.script("arguments[0].value = '2026-02-28'; arguments[1].value = ''", day, time)  # an empty one stays as it was
        self.press_button("dialog[open] .buttons button")
        self.await_box("until 02/28/2026")
        self.press(Keys.ESCAPE)
        self.no_box()
        self.assertEqual(self.text("#txtState"), "Admin")


class LongListTest(Case):
    def test_all_rows_are_what_the_program_made(self):
        folder = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, folder)
        with contextlib.closing(sqlite3.connect(f"{folder}/many.db")) as database:
            database.executescript("BEGIN;" + "".join(f"CREATE TABLE T{i} (A);" for i in range(1500)) + "COMMIT")
        self.serve(SERVER, f"sqlite:{folder}/many.db", name="many.db")
        self.reach_sockets()
        self.show("SysInfos", "System Information")
        self.click("ITEM4")
        self.await_shown("System Information - TABLES")
        self.click("btnReadAll")
        self.script("last.close()")
        self.await_value("all rows", lambda: self.text(".zelFormFooter").startswith("Rows: 150"))
        self.expect_live_equals_replica()
        self.theme("dark")
        self.browser.refresh()
        self.await_shown("System Information - TABLES")
        self.expect_live_equals_replica()
        self.theme("")
        self.expect_no_errors()


class AbsenceTest(Case):
    def test_the_session_after_one_that_ended_shows_the_same_page(self):
        self.serve(SERVER, f"recorded:{RECORDINGS}/demo.json", "1")
        self.reach_sockets()
        self.show("Parameters", "Parameters")
        self.script("globalThis.old = true; last.close()")
        self.await_value("another load", lambda: not self.script("return globalThis.old"))
        self.await_shown("Parameters")
        self.expect_live_equals_replica()


class HelpTest(Case):
    def test_a_finding_is_explained(self):
        self.serve(SERVER, f"recorded:{RECORDINGS}/full-data.json", name="FULLDATA")
        topic = ("const o = document.querySelector('#message iframe')?.contentDocument.querySelector('iframe');"
                 "return o?.contentDocument?.querySelector('h1')?.textContent")
        self.click("HELPFINDING0")
        self.await_value("the topic", lambda: self.script(topic) == "The data area fills up")
        self.browser.refresh()
        self.await_value("the topic again", lambda: self.script(topic) == "The data area fills up")
        self.press(Keys.ESCAPE)
        self.await_value("no window", lambda: not self.browser.find_elements(By.ID, "message"))
        self.click("HELPFINDING0")
        self.await_value("a window", lambda: self.browser.find_elements(By.ID, "message"))
        self.press(Keys.ESCAPE)  # before there is a topic
        self.await_value("no window", lambda: not self.browser.find_elements(By.ID, "message"))
        self.expect_live_equals_replica()
        self.expect_no_errors()


class ZelwebTest(Case):
    def test_changes_are_refused_with_the_reason(self):
        self.serve(ZELWEB, f"recorded:{RECORDINGS}/demo.json")
        self.await_value("disabled items", lambda: len(self.browser.find_elements(
            By.CSS_SELECTOR, "#commands button[aria-disabled][title*='--allow-commands']")) == 4)
        self.press_button("#commands button:nth-of-type(2)")
        self.await_box("--allow-commands")
        self.press(Keys.ESCAPE)
        self.no_box()
        self.assertEqual(self.text("#txtState"), "Online")

    def test_instances_with_lights_and_one_that_comes_later(self):
        folder = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, folder)
        later = f"{folder}/later.db"
        process, address = self.start(ZELWEB, f"recorded:{RECORDINGS}/demo.json", f"sqlite:{later}")
        self.addCleanup(self.browser.get, "about:blank")
        self.browser.get(address)
        lights = ("return [...document.querySelectorAll('.instances a')].map((o) =>"
                  " [o.querySelector('.light').dataset.level, o.querySelector('.name').textContent, o.ariaCurrent])")
        self.await_value("lights", lambda: self.script(lights) == [["CRITICAL", "DEMO", None], ["UNKNOWN", "later.db", None]])
        self.press_button("li:nth-child(2) a")
        failure = "return document.getElementById('failure').innerText"
        self.await_value("the reason", lambda: "no such file" in self.script(failure))
        self.await_value("lights", lambda: self.script(lights) == [["CRITICAL", "DEMO", None], ["UNKNOWN", "later.db", "page"]])
        self.browser.refresh()
        self.await_value("the reason again", lambda: "no such file" in self.script(failure))
        self.press(Keys.F5)
        self.await_value("another attempt", lambda: "last tried" in self.script(failure))
        Select(self.browser.find_element(By.ID, "every")).select_by_value("2")
        with contextlib.closing(sqlite3.connect(later)) as database:
            database.execute("CREATE TABLE CITY (NAME TEXT)")
        self.await_shown("Instance Overview")  # by itself
        Select(self.browser.find_element(By.ID, "every")).select_by_value("0")
        self.assertTrue(self.script("return document.getElementById('failure').hidden"))
        self.expect_no_errors()

    def test_signing_out_ends_everything(self):
        _, address = self.serve(ZELWEB, f"recorded:{RECORDINGS}/demo.json")
        self.press_button("#commands button:nth-of-type(2)")
        self.await_box("--allow-commands")
        self.script("fetch('/logout', {method: 'POST'})")  # as another tab would
        self.await_value("the reason", lambda: "Signed out" in self.browser.find_element(By.ID, "line").text)
        self.no_box()
        self.press(Keys.F5)
        self.await_value("the door", lambda: self.browser.title == "Please sign in")
        self.open(address)
        self.press_button(".options form button")
        self.await_value("the end", lambda: self.browser.title == "Signed out")
        self.browser.get(self.browser.current_url.replace("logout", ""))
        self.assertEqual(self.browser.title, "Please sign in")

    def test_a_box_does_not_hold_up_the_end(self):
        process, _ = self.serve(ZELWEB, f"recorded:{RECORDINGS}/demo.json", "--allow-commands")
        self.press_button("#commands button:nth-of-type(2)")
        self.await_box("DEMO")
        process.terminate()
        self.assertEqual(process.wait(30), 0)
        self.await_value("the line", lambda: "connection" in self.script("return document.getElementById('line').textContent"))

    def test_a_server_that_was_started_again_is_found(self):
        folder = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, folder)
        files = ["--token-file", f"{folder}/token", "--metrics-token-file", f"{folder}/metrics", "--allow-commands"]
        process, address = self.serve(ZELWEB, f"recorded:{RECORDINGS}/demo.json", *files)
        self.show("Sessions", "Sessions")
        self.show("Main", "Instance Overview")
        self.press_button("#commands button:nth-of-type(2)")
        self.await_box("DEMO")
        self.script("globalThis.old = true")
        process.kill()
        process.wait(30)
        self.await_value("the line", lambda: not self.script("return document.getElementById('line').hidden"))
        again = [ZELWEB, f"recorded:{RECORDINGS}/demo.json", "--listen", "127.0.0.1:" + address.split(":")[2].split("/")[0]]
        process, same = self.start(*again, *files)
        self.assertEqual(same, address)
        self.await_value("another load", lambda: not self.script("return globalThis.old"))
        self.await_shown("Instance Overview")  # with fresh figures
        self.await_value("no line", lambda: self.script("return document.getElementById('line').hidden"))
        self.no_box()
        # With another token, nobody is inside any more.
        process.terminate()
        process.wait(30)
        self.start(*again)
        self.await_value("the sign", lambda: "signed out" in self.script("return document.getElementById('line').textContent"))


def run():
    os.environ.setdefault("TMPDIR", "/tmp")
    Case.browser = chromium.open_browser()
    try:
        result = unittest.main(module="__main__", argv=sys.argv[:1] + sys.argv[4:], exit=False, verbosity=2).result
    finally:
        Case.browser.quit()
    return 0 if result.wasSuccessful() else 1


if __name__ == "__main__":
    sys.exit(run())
