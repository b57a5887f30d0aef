"""A headless Chromium of Debian, for the tests and the benchmarks."""
import os

from selenium import webdriver
from selenium.webdriver.chrome.service import Service

CHROMIUM, DRIVER = "/usr/bin/chromium", "/usr/bin/chromedriver"


def is_installed():
    return os.path.exists(CHROMIUM) and os.path.exists(DRIVER)


def open_browser():
    options = webdriver.ChromeOptions()
    for argument in ("--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage",
                     "--window-size=1280,900", "--lang=en-US"):
        options.add_argument(argument)
    options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
    return webdriver.Chrome(service=Service(DRIVER), options=options)
