#!/usr/bin/python3
"""The class walk end to end: the class server binary on 127.0.0.1 over TLS
with a test CA; the teacher in headless Chromium signs up, creates a class,
posts a task with a circuit, switches "ac_komp" off and writes a message;
the program (class_walk, the real window and job) checks in, shows the
notices, locks "komp", opens the task's circuit and hands in; the teacher's
page lists the answer.

Usage: class_walk_test.py SERVER_BINARY CLASS_WALK_BINARY [screenshot-dir]
"""
import os
import re
import shutil
import subprocess
import sys
import tempfile

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "../../../server"))
from teacher_browser_test import CIRCUIT, check, checks, follow, make_certs  # noqa: E402

from selenium import webdriver  # noqa: E402
from selenium.webdriver.chrome.service import Service  # noqa: E402
from selenium.webdriver.common.by import By  # noqa: E402


def browser(tmp):
    opts = webdriver.ChromeOptions()
    opts.binary_location = "/usr/bin/chromium"
    for flag in ["--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
                 "--disable-background-networking", "--disable-component-update", "--disable-sync",
                 "--disable-dev-shm-usage", f"--user-data-dir={tmp}/profile", "--window-size=1100,900", "--lang=da"]:
        opts.add_argument(flag)
    # Chromium takes the test CA's certificate as it is; the program's side verifies it properly.
    opts.accept_insecure_certs = True
    driver = webdriver.Chrome(service=Service("/usr/bin/chromedriver"), options=opts)
    driver.implicitly_wait(5)
    return driver


def main():
    server_bin = os.path.abspath(sys.argv[1])
    walk_bin = os.path.abspath(sys.argv[2])
    shots = sys.argv[3] if len(sys.argv) > 3 else ""
    tmp = tempfile.mkdtemp(prefix="ostro_walk_")
    server = None
    driver = None
    try:
        make_certs(tmp)
        server = subprocess.Popen([server_bin, "--cert", "cert.pem", "--key", "key.pem", "--db", "k.db",
                                   "--host", "127.0.0.1", "--port", "0"], cwd=tmp, stdout=subprocess.PIPE, text=True)
        port = re.search(r":(\d+)/", server.stdout.readline()).group(1)
        base = f"https://127.0.0.1:{port}"
        driver = browser(tmp)

        def field(name):
            return driver.find_element(By.NAME, name)

        def shot(name):
            if shots:
                os.makedirs(shots, exist_ok=True)
                driver.save_screenshot(os.path.join(shots, name + ".png"))

        # The teacher: account, class, task with a circuit, compensation off, a message.
        driver.get(base + "/opret")
        field("name").send_keys("Karen Lærer")
        field("email").send_keys("karen@skole.dk")
        field("password").send_keys("hemmelig-kode-1")
        field("password2").send_keys("hemmelig-kode-1")
        follow(driver, driver.find_element(By.CSS_SELECTOR, "button.primary"))
        field("name").send_keys("1. hovedforløb B")
        follow(driver, driver.find_element(By.CSS_SELECTOR, "button.primary"))
        code = driver.find_element(By.ID, "code").text
        check(len(code.replace("-", "")) == 8, f"the class has a code ({code})")
        class_url = driver.current_url

        driver.find_element(By.CSS_SELECTOR, "#opgaver summary").click()
        field("title").send_keys("Blandet forbindelse")
        field("text").send_keys("Find strømmen i R1.\nVis dine mellemregninger.")
        field("circuit").send_keys(CIRCUIT)
        follow(driver, driver.find_element(By.CSS_SELECTOR, "#opgaver button.primary"))
        box = driver.find_element(By.CSS_SELECTOR, "input[name=off][value=ac_komp]")
        driver.execute_script("arguments[0].scrollIntoView()", box)
        box.click()
        follow(driver, driver.find_element(By.CSS_SELECTOR, "#profil button.primary"))
        field("message").send_keys("Husk lommeregneren til prøven på fredag.")
        follow(driver, driver.find_element(By.CSS_SELECTOR, "#besked button.primary"))
        check("Blandet forbindelse" in driver.page_source, "the teacher's task is posted")

        # The student's program, as the teacher handed out the code (with its dash).
        env = dict(os.environ, OSTROVALDEN_SERVICE_URL=base + "/api",
                   OSTROVALDEN_CA_FILE=os.path.join(tmp, "ca.pem"), OSTROVALDEN_WALK_CODE=code,
                   QT_QPA_PLATFORM=os.environ.get("QT_QPA_PLATFORM", "offscreen"))
        walk = subprocess.run([walk_bin], env=env, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                              timeout=120)
        ran = walk.returncode == 0 and "[  PASSED  ] 1 test" in walk.stdout
        if not ran:
            print(walk.stdout)
        check(ran, "the program checks in, shows the notices, locks komp, opens the circuit and hands in")

        # The teacher reads the hand-in.
        driver.get(class_url)
        follow(driver, driver.find_element(By.LINK_TEXT, "Blandet forbindelse"))
        rows = driver.find_elements(By.CSS_SELECTOR, "table.answers tbody tr")
        texts = [r.text for r in rows]
        check(any("Ida <b>Elev</b>" in t and "0,048 A" in t for t in texts),
              f"the teacher's page lists the answer, the name as typed ({texts})")
        shot("walk-answers")
    finally:
        if driver:
            driver.quit()
        if server:
            server.terminate()
            server.wait(timeout=10)
        shutil.rmtree(tmp, ignore_errors=True)
    print(f"{checks['passed']} passed, {checks['failed']} failed")
    return 1 if checks["failed"] else 0


if __name__ == "__main__":
    sys.exit(main())
