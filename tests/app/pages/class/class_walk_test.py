#!/usr/bin/python3
"""The class walk end to end: the class server binary on 127.0.0.1 over TLS
with a test CA; the teacher in headless Chromium signs up, creates a class,
posts a task with a circuit, switches "ac_komp" off and writes a message;
the program (class_walk, the real window and job) checks in, shows the
notices, takes the teacher's locks, reads the task's circuit and hands in;
the teacher's page lists the answer.

Usage: class_walk_test.py SERVER_BINARY CLASS_WALK_BINARY [screenshot-dir]
"""
import os
import subprocess
import sys
import tempfile

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "../../../server"))
from teacher_browser_test import (browser, check, follow, screenshots, shut_down, start_server,  # noqa: E402
                                  teacher_sets_up_class)

from selenium.webdriver.common.by import By  # noqa: E402


def main():
    server_bin = os.path.abspath(sys.argv[1])
    walk_bin = os.path.abspath(sys.argv[2])
    tmp = tempfile.mkdtemp(prefix="ostro_walk_")
    server = driver = None
    try:
        server, base = start_server(server_bin, tmp)
        driver = browser(tmp)
        shot = screenshots(driver, sys.argv[3] if len(sys.argv) > 3 else "")
        code, class_url = teacher_sets_up_class(driver, base)

        # The student's program, as the teacher handed out the code (with its dash).
        env = dict(os.environ, OSTROVALDEN_SERVICE_URL=base + "/api",
                   OSTROVALDEN_CA_FILE=os.path.join(tmp, "ca.pem"), OSTROVALDEN_WALK_CODE=code,
                   QT_QPA_PLATFORM=os.environ.get("QT_QPA_PLATFORM", "offscreen"))
        walk = subprocess.run([walk_bin], env=env, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                              timeout=120)
        ran = walk.returncode == 0 and "[  PASSED  ] 1 test" in walk.stdout
        if not ran:
            print(walk.stdout)
        check(ran, "the program checks in, shows the notices, takes the locks, reads the circuit and hands in")

        # The teacher reads the hand-in.
        driver.get(class_url)
        follow(driver, driver.find_element(By.LINK_TEXT, "Blandet forbindelse"))
        rows = driver.find_elements(By.CSS_SELECTOR, "table.answers tbody tr")
        texts = [r.text for r in rows]
        check(any("Ida <b>Elev</b>" in t and "0,048 A" in t for t in texts),
              f"the teacher's page lists the answer, the name as typed ({texts})")
        shot("walk-answers")
    finally:
        status = shut_down(driver, server, tmp)
    return status


if __name__ == "__main__":
    sys.exit(main())
