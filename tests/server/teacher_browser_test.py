#!/usr/bin/python3
"""The teacher's side in a real browser: headless Chromium, driven by Selenium,
against the class server binary on 127.0.0.1 over TLS with a test CA. A
teacher signs up, creates a class, posts a task with a circuit, switches
"ac_komp" off and writes a message; a student's copy (plain HTTPS here) asks
a question on the task; the teacher's page lists it, and the class statistics
weakest first. The program's own check-in and hand-in are class_walk's.

Usage: teacher_browser_test.py path/to/ostrovalden-server
"""
import json
import os
import re
import shutil
import ssl
import subprocess
import sys
import tempfile
import urllib.request

from selenium import webdriver
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.by import By
from selenium.common.exceptions import WebDriverException
from selenium.webdriver.support.ui import WebDriverWait

CIRCUIT = ('{"mode":"dc","src":{"U":"12"},"root":{"k":"S","ch":[{"k":"R","v":"100"},'
           '{"k":"P","ch":[{"k":"R","v":"220"},{"k":"R","v":"330"}]}]}}')


def run(cmd, cwd):
    subprocess.run(cmd, cwd=cwd, shell=True, check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)


def make_certs(d):
    ec = "-newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes"
    run(f"openssl req -x509 {ec} -keyout ca-key.pem -out ca.pem -days 2 -subj '/CN=Ostrovalden test CA'", d)
    run(f"openssl req {ec} -keyout key.pem -out cert.csr -subj '/CN=localhost'", d)
    with open(os.path.join(d, "cert.ext"), "w") as f:
        f.write("subjectAltName=DNS:localhost,IP:127.0.0.1\nbasicConstraints=CA:FALSE\n")
    run("openssl x509 -req -in cert.csr -CA ca.pem -CAkey ca-key.pem -CAcreateserial -out cert.pem -days 2 "
        "-extfile cert.ext", d)


def student_post(base, ca, path, body):
    """The program's side, as one request it sends; the answer's JSON."""
    req = urllib.request.Request(base + "/api" + path, data=json.dumps(body).encode(),
                                 headers={"Content-Type": "application/json", "User-Agent": "Ostrovalden/1.0"})
    with urllib.request.urlopen(req, context=ssl.create_default_context(cafile=ca), timeout=10) as r:
        return json.loads(r.read())


def follow(driver, element):
    """Clicks what leaves the page and waits for the next page to replace it;
    otherwise, on a busy machine, the checks after it can read the page being
    left."""
    old = driver.find_element(By.TAG_NAME, "html")
    element.click()

    def left(_):
        try:
            old.is_enabled()
            return False
        except WebDriverException:
            # Stale, or Chromium's "does not belong to the document" while the
            # next page comes in: either way the old page is gone.
            return True

    WebDriverWait(driver, 30).until(left)
    WebDriverWait(driver, 30).until(lambda d: d.execute_script("return document.readyState") == "complete")


checks = {"passed": 0, "failed": 0}


def check(ok, what):
    checks["passed" if ok else "failed"] += 1
    print(("ok    " if ok else "FAIL  ") + what, flush=True)


def start_server(server_bin, tmp):
    """Certificates, then the server on a free port: the process and its base address."""
    make_certs(tmp)
    server = subprocess.Popen([server_bin, "--cert", "cert.pem", "--key", "key.pem", "--db", "k.db",
                               "--host", "127.0.0.1", "--port", "0"], cwd=tmp, stdout=subprocess.PIPE, text=True)
    return server, "https://127.0.0.1:" + re.search(r":(\d+)/", server.stdout.readline()).group(1)


def browser(tmp):
    opts = webdriver.ChromeOptions()
    opts.binary_location = "/usr/bin/chromium"
    for flag in ["--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
                 "--disable-background-networking", "--disable-component-update", "--disable-sync",
                 "--disable-dev-shm-usage", f"--user-data-dir={tmp}/profile", "--window-size=1100,900", "--lang=da"]:
        opts.add_argument(flag)
    # The test CA lives only in this run; Chromium takes the server's
    # certificate, the student's side verifies it properly.
    opts.accept_insecure_certs = True
    driver = webdriver.Chrome(service=Service("/usr/bin/chromedriver"), options=opts)
    driver.implicitly_wait(5)
    return driver


def screenshots(driver, shots):
    def shot(name):
        if shots:
            os.makedirs(shots, exist_ok=True)
            driver.save_screenshot(os.path.join(shots, name + ".png"))
    return shot


def teacher_sets_up_class(driver, base):
    """Signs up, creates a class, posts a task with a circuit, switches
    compensation off and writes a message; the class code and page."""
    def field(name):
        return driver.find_element(By.NAME, name)

    driver.get(base + "/")
    check(driver.current_url.endswith("/login"), "the site starts at the sign-in")
    follow(driver, driver.find_element(By.LINK_TEXT, "Opret en lærerkonto"))
    field("name").send_keys("Karen Lærer")
    field("email").send_keys("karen@skole.dk")
    field("password").send_keys("hemmelig-kode-1")
    field("password2").send_keys("hemmelig-kode-1")
    follow(driver, driver.find_element(By.CSS_SELECTOR, "button.primary"))
    check(driver.current_url.endswith("/klasser"), "a new teacher lands on her classes")
    field("name").send_keys("1. hovedforløb B")
    follow(driver, driver.find_element(By.CSS_SELECTOR, "button.primary"))
    code = driver.find_element(By.ID, "code").text
    check(len(code.replace("-", "")) == 8, f"the class has a code ({code})")
    class_url = driver.current_url

    driver.find_element(By.CSS_SELECTOR, "#opgaver summary").click()
    field("title").send_keys("Blandet forbindelse")
    field("text").send_keys("Find strømmen i R1.\nVis dine mellemregninger.")
    driver.execute_script("arguments[0].value = '2026-12-04'", field("due"))
    field("circuit").send_keys(CIRCUIT)
    follow(driver, driver.find_element(By.CSS_SELECTOR, "#opgaver button.primary"))
    check("Blandet forbindelse" in driver.find_element(By.CSS_SELECTOR, "ul.tasks").text, "the task is listed")
    check("Jævnstrøm · 3 komponenter" in driver.page_source, "the circuit was read")

    # Switch compensation off; the script moves the profile to "Egen".
    box = driver.find_element(By.CSS_SELECTOR, "input[name=off][value=ac_komp]")
    driver.execute_script("arguments[0].scrollIntoView()", box)
    box.click()
    check(driver.find_element(By.CSS_SELECTOR, "input[name=profile][value=egen]").is_selected(),
          "ticking a topic chooses the own profile")
    follow(driver, driver.find_element(By.CSS_SELECTOR, "#profil button.primary"))
    check(driver.find_element(By.CSS_SELECTOR, "input[name=off][value=ac_komp]").is_selected(),
          "compensation stays off after saving")

    field("message").send_keys("Husk lommeregneren til prøven på fredag.")
    follow(driver, driver.find_element(By.CSS_SELECTOR, "#besked button.primary"))
    return code, class_url


def shut_down(driver, server, tmp):
    if driver:
        driver.quit()
    if server:
        server.terminate()
        server.wait(timeout=10)
    shutil.rmtree(tmp, ignore_errors=True)
    print(f"{checks['passed']} passed, {checks['failed']} failed")
    return 1 if checks["failed"] else 0


def main():
    server_bin = os.path.abspath(sys.argv[1])
    tmp = tempfile.mkdtemp(prefix="ostro_browser_")
    server = driver = None
    try:
        server, base = start_server(server_bin, tmp)
        driver = browser(tmp)
        code, class_url = teacher_sets_up_class(driver, base)
        code = code.replace("-", "")

        ca = os.path.join(tmp, "ca.pem")
        task = student_post(base, ca, "/tasks", {"key": code})["tasks"][0]
        student_post(base, ca, "/tasks/answer", {"key": code, "uid": "b" * 24, "name": "Bo", "id": task["id"],
                                                 "status": "question", "answer": "Skal R2 og R3 regnes parallelt?"})
        student_post(base, ca, "/classstats", {"key": code, "uid": "a" * 24, "version": "1.0.30",
                                               "topics": {"Ohms lov": {"right": 9, "total": 10},
                                                          "Kompensering": {"right": 1, "total": 6}}})

        driver.get(class_url)
        follow(driver, driver.find_element(By.LINK_TEXT, "Blandet forbindelse"))
        rows = driver.find_elements(By.CSS_SELECTOR, "table.answers tbody tr")
        check(any("Spørgsmål" in r.text and "parallelt" in r.text for r in rows), "the question is listed")

        driver.get(class_url + "/statistik")
        first = driver.find_element(By.CSS_SELECTOR, "table.stats tbody tr td").text
        check(first == "Kompensering", "the class statistics start with the weakest topic")

        # On a phone.
        driver.set_window_size(390, 844)
        driver.get(class_url)
        width = driver.execute_script("return document.documentElement.scrollWidth")
        check(width <= 390, f"the class page fits a phone ({width} px)")

        follow(driver, driver.find_element(By.CSS_SELECTOR, "header button.link"))
        driver.get(class_url)
        check(driver.current_url.endswith("/login"), "after signing out the class page asks for a sign-in")
    finally:
        status = shut_down(driver, server, tmp)
    return status


if __name__ == "__main__":
    sys.exit(main())
