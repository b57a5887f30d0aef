#!/usr/bin/python3
"""Measures the control in Chromium, side by side with what the browser does by itself.

Times are compared by the best of the runs, because server, browser and page share the
processors with whatever else runs; the medians stand beside them.
"""
import argparse
import asyncio
import itertools
import json
import os
import socket
import statistics
import subprocess
import sys
import threading
import time

sys.dont_write_bytecode = True
sys.path.append(os.path.join(os.path.dirname(os.path.abspath(__file__)), "../tests/web/browser"))
try:
    import chromium
    from selenium.webdriver.common.by import By
    from selenium.webdriver.support.ui import WebDriverWait
except ImportError:
    sys.exit("python3-selenium is not installed")

RUNS = 21
ROWS = 10000
SESSIONS = 50

FRONT = "document.querySelector('#frames iframe.front')"

# Of every document in the window: what its sockets send, for played sessions, and when
# the page in front is filled and painted.
WATCH = """
globalThis.sent = [];
const Send = WebSocket.prototype.send;
WebSocket.prototype.send = function (text) { sent.push(text); Send.call(this, text); };
globalThis.whenFilled = (title) => new Promise((resolve) => {
  const look = () => {
    const page = document.querySelector('#frames iframe.front')?.contentDocument;
    const filled = page?.querySelector('#txtFormTitle')?.textContent === title && page.querySelector('#divFrmCnt')?.style.display === '';
    if (!filled) return requestAnimationFrame(look);
    requestAnimationFrame(() => setTimeout(() => resolve(performance.now())));
  };
  look();
});
if (window === top) globalThis.first = whenFilled('Instance Overview');
"""

# A bare load of a page file in a frame of its own, as large as the others. Its agent
# finds no place in the shell and ends at once.
BARE = """
const [url, done] = arguments;
const frames = document.getElementById('frames');
const frame = globalThis.bare ??= frames.appendChild(document.createElement('iframe'));
frame.style.visibility = 'visible';
frame.style.zIndex = 1;
const start = performance.now();
frame.onload = () => {
  const loaded = performance.now() - start;
  requestAnimationFrame(() => setTimeout(() => {
    const painted = performance.now() - start;
    frame.style.visibility = 'hidden';
    done([loaded, painted]);
  }));
};
frame.contentWindow.location.replace(url);
"""

# Sessions without pages: they answer what a shell answers, with the snapshots that the
# real one has sent.
PLAY = """
const [count, every, done] = arguments;
const snapshot = sent.find((text) => text.startsWith('["agent",0]\\n["load",1,'));
let filled = 0;
globalThis.played = Array.from({ length: count }, (_, i) => {
  const socket = new WebSocket(`ws://${location.host}/socket`);
  let got = 0;
  socket.onopen = () => socket.send(JSON.stringify(['hello', 0, '', `played${i}`, 0, 0, 0, '']));
  socket.onmessage = ({ data }) => {
    const [kind, ...items] = JSON.parse(data.split('\\n', 1)[0]);
    if (kind === 'welcome' || kind === 'got') return;
    if (++got % 32 === 0) socket.send(JSON.stringify(['got', got]));
    if (kind === 'go') {
      const [frame, number] = items;
      socket.send(`["agent",${frame}]\\n["begin",${number}]`);
      socket.send(snapshot.replace('["load",1,', `["load",${number},`));
    } else if (kind === 'batch') {
      socket.send(JSON.stringify(['ack', ...items.slice(0, 3), '']));
    } else if (kind === 'reset' || kind === 'refresh') {
      socket.send(`["agent",${items[0]}]\\n["begin",${items[2]}]`);
    } else if (kind === 'page') {
      socket.pages = (socket.pages ?? 0) + 1;
      if (socket.pages === 1 && ++filled === count) done(count);
    }
  };
  if (every > 0) setTimeout(() => setInterval(() => socket.send('["refresh",0]'), every), every * i / count);
  return socket;
});
"""


class Server:
    """A program that prints the address that it serves at."""

    def __init__(self, *command):
        self.process = subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        self.address = self.process.stdout.readline().strip()
        self.port = int(self.address.split(":")[2].split("/")[0])

    def ask(self, line):
        self.process.stdin.write(line + "\n")
        self.process.stdin.flush()
        return json.loads(self.process.stdout.readline())

    def megabytes(self):
        with open(f"/proc/{self.process.pid}/smaps_rollup", encoding="ascii") as file:
            return next(int(line.split()[1]) for line in file if line.startswith("Pss:")) / 1024

    def seconds(self):
        """Of processors, since its start."""
        with open(f"/proc/{self.process.pid}/stat", encoding="ascii") as file:
            fields = file.read().rsplit(")", 1)[1].split()
        return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")

    def close(self):
        self.process.stdin.close()
        self.process.terminate()
        self.process.wait(30)


class Line:
    """A line to a server on which everything takes its time, half of it each way."""

    def __init__(self):
        self.delay = 0
        self.target = 0
        self.loop = asyncio.new_event_loop()
        self.server = self.loop.run_until_complete(asyncio.start_server(self.take, "127.0.0.1", 0))
        self.port = self.server.sockets[0].getsockname()[1]
        threading.Thread(target=self.loop.run_forever, daemon=True).start()

    async def take(self, reader, writer):
        there, back = await asyncio.open_connection("127.0.0.1", self.target)
        await asyncio.gather(self.carry(reader, back), self.carry(there, writer), return_exceptions=True)

    async def carry(self, reader, writer):
        loop = asyncio.get_running_loop()
        sent = asyncio.Queue()

        async def arrive():
            while True:
                due, data = await sent.get()
                await asyncio.sleep(max(0, due - loop.time()))
                if not data:
                    return writer.close()
                writer.write(data)
        arriving = asyncio.create_task(arrive())
        data = b"more"
        while data:
            data = await reader.read(1 << 16)
            sent.put_nowait((loop.time() + self.delay / 2, data))
        await arriving


class Bench:
    def __init__(self, browser, file):
        self.browser = browser
        self.file = file
        self.figures = {}

    def add(self, name, value, meaning):
        self.figures[name] = round(value, 3)
        print(f"{name:<28} {value:>12.2f}  {meaning}", flush=True)

    def compare(self, name, ours, others, meaning):
        self.add(f"{name}_ms", min(ours), f"ms {meaning}, at best")
        self.add(f"{name}_ratio", min(ours) / min(others), "of the best times")
        self.add(f"{name}_median_ratio", statistics.median(ours) / statistics.median(others), "of the medians")

    def script(self, text, *arguments):
        return self.browser.execute_script(text, *arguments)

    def asynchronously(self, text, *arguments):
        return self.browser.execute_async_script(text, *arguments)

    def open(self, address):
        self.browser.get(address)
        wait = WebDriverWait(self.browser, 60, 0.02)
        wait.until(lambda _: self.script("return document.getElementById('frames') !== null"))
        self.asynchronously("const done = arguments[0]; first.then(done)")

    def in_frame(self, text, *arguments):
        self.browser.switch_to.frame(self.browser.find_element(By.CSS_SELECTOR, "#frames iframe.front"))
        try:
            return self.script(text, *arguments)
        finally:
            self.browser.switch_to.default_content()

    def bare(self, url):
        return self.asynchronously(BARE, url)

    def click(self, name, title):
        """Milliseconds from a click in the list of pages until the page is painted."""
        return self.asynchronously(
            "const [name, title, done] = arguments; const start = performance.now();"
            "document.querySelector(`#pages [data-name=${name}]`)?.click();"
            "whenFilled(title).then((end) => done(end - start))", name, title)

    # ---- what is measured ------------------------------------------------------

    def rows(self, server):
        self.open(server.address)
        build = server.ask("script")
        lists, elements, scripts = [], [], []
        for _ in range(RUNS):
            server.ask("empty Rows")
            scripts.append(self.in_frame(
                "globalThis.benchTexts = Array.from({length: arguments[1]}, (_, i) => `value ${100000 + i}`);"
                "return eval(arguments[0])", build, ROWS * 6))
            elements.append(server.ask(f"rows Rows {ROWS}"))
            lists.append(server.ask(f"rows List {ROWS}"))
        self.compare("web_rows_10k", lists, scripts, f"for {ROWS:,} rows of 6 cells until confirmed, to script in the page")
        self.compare("web_elements_10k", elements, scripts, "for the same as plain elements")

    def show(self, server):
        self.open(server.address)
        folder = self.script("return document.querySelector('#frames iframe').src.replace(/[^/]*$/, '')")
        turn = itertools.cycle("ab")
        shows, bares, painted_bares = [], [], []
        pages, page_bares, painted, painted_page_bares = [], [], [], []
        for _ in range(RUNS + 2):
            for page, loaded, ready in (("Main", bares, painted_bares), ("InfoCaches", page_bares, painted_page_bares)):
                took = self.bare(f"{folder}{page}.htm?{next(turn)}")
                loaded.append(took[0])
                ready.append(took[1])
            shows.append(server.ask("show Main"))
            # Another page of the same frame, so that it is loaded.
            server.ask("show InfoActivity")
            pages.append(server.ask("show InfoCaches"))
        # The first ones were not in the browser's cache.
        shows, bares, pages, page_bares = (o[2:] for o in (shows, bares, pages, page_bares))
        self.compare("web_show", shows, bares, "to show Main again, to a bare load of the file")
        self.compare("web_page", pages, page_bares, "to show another page in its frame, to a bare load of the file")

    def painted(self, server):
        self.open(server.address)
        folder = self.script("return document.querySelector('#frames iframe').src.replace(/[^/]*$/, '')")
        turn = itertools.cycle("ab")
        clicks, bares = [], []
        for _ in range(RUNS + 2):
            self.click("InfoActivity", "Activity")
            clicks.append(self.click("InfoCaches", "Caches"))
            bares.append(self.bare(f"{folder}InfoCaches.htm?{next(turn)}")[1])
        self.compare("web_click", clicks[2:], bares[2:], "from a click until the page is painted, to a bare load until painted")

    def sessions(self, server):
        self.open(server.address)
        before = server.megabytes()
        self.asynchronously(PLAY, SESSIONS, 0)
        self.add("web_session_mb", (server.megabytes() - before) / SESSIONS, f"MB of the server a session, of {SESSIONS}")

    def refreshing(self, server):
        self.open(server.address)
        self.asynchronously(PLAY, SESSIONS, 5000)
        pages = "return played.reduce((sum, o) => sum + o.pages, 0)"
        time.sleep(10)
        pages_before, seconds, start = self.script(pages), server.seconds(), time.monotonic()
        time.sleep(20)
        took = time.monotonic() - start
        refreshed = self.script(pages) - pages_before
        if refreshed < SESSIONS * 3:
            raise RuntimeError(f"Only {refreshed} pages were refreshed")
        self.add("web_50_refreshing_cpu", (server.seconds() - seconds) / took,
                 f"of a processor, for {SESSIONS} sessions on SQLite that refresh every 5 s")

    def round_trips(self, line, zelweb, recording):
        with socket.socket() as free:
            free.bind(("127.0.0.1", 0))
            line.target = free.getsockname()[1]
        server = Server(zelweb, recording, "--listen", f"127.0.0.1:{line.target}", "--origin", f"http://127.0.0.1:{line.port}")
        try:
            line.delay = 0
            self.open(server.address)
            address = f"http://127.0.0.1:{line.port}/"
            self.open(address)
            times = {}
            for delay in (0.05, 0.25):
                line.delay = delay
                first, new, later = [], [], []
                for _ in range(7):
                    self.script("sessionStorage.clear()")  # a session of its own
                    self.browser.get(address)
                    first.append(self.asynchronously("const done = arguments[0]; first.then(done)"))
                    new.append(self.click("InfoCaches", "Caches"))
                    self.click("InfoActivity", "Activity")
                    later.append(self.click("InfoCaches", "Caches"))
                times[delay] = [statistics.median(o) for o in (first, new, later)]
            names = (("first", "of the first page, with the shell"), ("new", "of a page that was not shown yet"),
                     ("later", "of one shown before"))
            for (name, what), short, long in zip(names, times[0.05], times[0.25]):
                self.add(f"web_{name}_50ms_ms", short, f"ms {what}, on a line of 50 ms")
                self.add(f"web_{name}_trips", (long - short) / 200, "round trips")
        finally:
            server.close()

    def write(self):
        if self.file is None:
            return
        before = {}
        if os.path.exists(self.file):
            with open(self.file, encoding="utf-8") as file:
                before = json.load(file)
        with open(self.file, "w", encoding="utf-8") as file:
            json.dump(before | self.figures, file, indent=2)
            file.write("\n")


def open_browser():
    browser = chromium.open_browser()
    browser.set_script_timeout(60)
    browser.execute_cdp_cmd("Page.addScriptToEvaluateOnNewDocument", {"source": WATCH})
    return browser


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("bench_web")
    parser.add_argument("zelweb")
    parser.add_argument("recording", help="the instance to show")
    parser.add_argument("--json", metavar="FILE", help="file to add the figures to")
    parser.add_argument("--only", metavar="GROUP", help="rows, show, painted, sessions, refreshing or round_trips")
    arguments = parser.parse_args()
    bench_web, zelweb, recording, only = arguments.bench_web, arguments.zelweb, arguments.recording, arguments.only
    browser = open_browser()
    bench = Bench(browser, arguments.json)

    def measure(what, *command):
        if only not in (None, what.__name__):
            return
        server = Server(*command)
        try:
            what(server)
        finally:
            browser.get("about:blank")
            server.close()
    try:
        measure(bench.rows, bench_web, recording)
        measure(bench.show, bench_web, recording)
        measure(bench.painted, zelweb, recording)
        measure(bench.sessions, zelweb, recording)
        measure(bench.refreshing, zelweb)
        if only in (None, "round_trips"):
            bench.round_trips(Line(), zelweb, recording)
        bench.write()
    finally:
        browser.quit()


if __name__ == "__main__":
    main()
