#!/usr/bin/python3
"""Looks at the shell and every page in Chromium with axe-core, in both themes, narrow
and wide. Arguments: the file of axe-core, the test server, zelweb, the folder of the
recordings. scripts/accessibility calls it."""
import sys

AXE = sys.argv.pop(1)
sys.dont_write_bytecode = True
import cases  # takes the rest of the arguments

with open(AXE, encoding="utf-8") as file:
    SCRIPT = file.read()

# In the window given, which has the script once.
FIND = """
const [inside, script, done] = arguments;
const w = inside ? document.querySelector('#frames iframe.front').contentWindow : window;
if (!w.axe) w.eval(script);
const still = Promise.allSettled(w.document.getAnimations().map((o) => o.finished));
still.then(() => w.axe.run(w.document, {resultTypes: ['violations'], iframes: false})).then(
  (o) => done(o.violations.flatMap((v) => v.nodes.map((n) => v.id + ': ' + n.html.slice(0, 200) + ' ' + n.failureSummary))), (e) => done([String(e)]))
"""


class AccessibilityTest(cases.Case):
    looks = 0

    def look(self, what, pages=True):
        type(self).looks += 1
        for width in (480, 1280):
            self.browser.execute_cdp_cmd("Emulation.setDeviceMetricsOverride",
                                         {"width": width, "height": 900, "deviceScaleFactor": 1, "mobile": False})
            for theme in ("light", "dark"):
                self.browser.execute_cdp_cmd("Emulation.setEmulatedMedia",
                                             {"features": [{"name": "prefers-color-scheme", "value": theme}]})
                for inside in ((False, True) if pages else (False,)):
                    with self.subTest(what=what, width=width, theme=theme, inside=inside):
                        self.assertEqual(self.browser.execute_async_script(FIND, inside, SCRIPT), [])

    def setUp(self):
        # axe-core is no script of ours: the policy would refuse it.
        self.browser.execute_cdp_cmd("Page.setBypassCSP", {"enabled": True})
        self.addCleanup(self.browser.execute_cdp_cmd, "Emulation.clearDeviceMetricsOverride", {})

    def test_pages(self):
        for recording, name in (("demo", "DEMO (3)"), ("full-data", "FULLDATA")):
            self.serve(cases.SERVER, f"recorded:{cases.RECORDINGS}/{recording}.json", name=name)
            for page in self.script("return [...document.querySelectorAll('#pages button')].map((o) => o.dataset.name)"):
                self.press_button(f"#pages [data-name={page}]")
                self.await_value(page, lambda: self.script(
                    "const o = document.querySelector('#frames iframe.front').contentWindow;"
                    "return o.location.pathname.includes(arguments[0]) &&"
                    " o.document.querySelector('#divFrmCnt').style.display === ''", page))
                self.look(f"{recording} {page}")

    def test_boxes_and_what_is_around(self):
        self.serve(cases.SERVER, f"recorded:{cases.RECORDINGS}/demo.json")
        self.press_button("#commands button:nth-of-type(2)")
        self.await_box("DEMO")
        self.look("a message box", False)
        self.press_button("dialog[open] .buttons button")
        self.await_value("Admin", lambda: self.text("#txtState") == "Admin")
        self.press_button("#commands button:nth-of-type(4)")
        self.await_box("Restart Until")
        self.look("a dialog", False)
        self.press(cases.Keys.ESCAPE)
        self.no_box()
        self.click("HELPFINDING0")
        self.await_value("a topic", lambda: self.script(
            "return document.querySelector('#message iframe').contentDocument.querySelector('iframe').contentDocument.querySelector('h1') !== null"))
        self.look("the message window", False)
        demo = f"recorded:{cases.RECORDINGS}/demo.json"
        process, address = self.start(cases.ZELWEB, demo, f"recorded:{cases.RECORDINGS}/disconnected.json", demo,
                                      "sqlite:/is/not/there.db")
        self.browser.get(address.split("?")[0])
        self.look("the door", False)
        self.browser.get(address)
        lights = cases.By.CSS_SELECTOR, ".instances:has(.same) .light[data-level]"
        self.await_value("lights", lambda: len(self.browser.find_elements(*lights)) == 4)
        self.look("the start page", False)
        self.press_button("li:nth-child(4) a")
        self.await_value("the reason", lambda: "no such file" in self.browser.find_element(cases.By.ID, "failure").text)
        self.look("an instance that cannot be opened", False)
        self.press_button("li:nth-child(1) a")
        self.await_value("lights", lambda: len(self.browser.find_elements(*lights)) == 4)
        self.await_shown("Instance Overview")
        self.look("the list of instances", False)
        process.kill()
        self.await_value("the line", lambda: self.browser.find_element(cases.By.ID, "line").is_displayed())
        self.look("a lost connection", False)
        self.browser.get(self.start(cases.ZELWEB, demo)[1])
        self.await_shown("Instance Overview")
        self.browser.get(self.browser.current_url + "nothing")
        self.look("a page that is not there", False)
        self.assertGreater(self.looks, 3)


if __name__ == "__main__":
    sys.exit(cases.run())
