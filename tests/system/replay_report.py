"""The report of a replay, as a browser shows it and a reader uses it."""

import json
import re
import shutil
import struct
import subprocess
import tempfile
import unittest
from pathlib import Path

from replaying import Replay, WINDOW
from vantlesystem import LIMIT

SCRIPT = f"""\
mouseClick("{WINDOW} Button#countButton:visible", 20, 10, Qt.LeftButton);
mouseClick("{WINDOW} Button#countButton:visible", 20, 10, Qt.LeftButton);
test.compare(findObject("{WINDOW} Label#status").count, 3, "three clicks");
test.log("between <two> failures");
test.verify(findObject("{WINDOW}").visible, "visible");
mouseClick("{WINDOW} Button#nowhere", 1, 1, Qt.LeftButton);
"""

# What a reader does, as script: gives what is to be seen afterwards.
PROBE = """
<script>//<![CDATA[
window.addEventListener("load", () => {
    const press = key => (document.activeElement || document.body).dispatchEvent(
        new KeyboardEvent("keydown", { key, bubbles: true, cancelable: true }));
    const seen = () => [...document.querySelectorAll(".step")].filter(step => step.offsetParent !== null).map(step => step.id);
    const focused = () => { const step = document.activeElement.closest(".step"); return step && step.id; };
    const open = () => [...document.querySelectorAll(".step")].filter(step => step.firstElementChild.open).map(step => step.id);
    const result = {};
    setTimeout(() => {
        result.open = open();
        result.width = [document.documentElement.scrollWidth, window.innerWidth];
        result.paper = getComputedStyle(document.body).backgroundColor;
        result.ink = getComputedStyle(document.body).color;
        const image = document.querySelector("#s1-3 img");
        result.picture = [image.complete, image.naturalWidth > 0];
        result.untouched = document.querySelector("#s1-1 img").getAttribute("src");
        result.seen = seen();
        press("n"); result.firstFailure = focused();
        press("n"); result.secondFailure = focused();
        press("p"); result.back = focused();
        press("j"); result.next = focused();
        press("f"); result.failures = seen();
        press("f"); result.again = seen();
        press("/"); result.search = document.activeElement.id;
        const search = document.getElementById("search");
        search.value = "between <two>"; search.dispatchEvent(new Event("input"));
        result.found = seen();
        search.value = "no such thing"; search.dispatchEvent(new Event("input"));
        result.nothing = !document.getElementById("nothing").hidden;
        press("Escape"); result.cleared = seen();
        document.getElementById("open-all").click(); result.allOpen = open();
        setTimeout(() => {
            result.loaded = document.querySelector("#s1-1 img").naturalWidth > 0;
            const frame = document.querySelector("#s1-1 .frame").getBoundingClientRect();
            const point = document.querySelector("#s1-1 .point").getBoundingClientRect();
            result.point = [(point.x + point.width / 2 - frame.x) / frame.width, (point.y + point.height / 2 - frame.y) / frame.height];
            document.querySelector("#s1-1 .picture").click();
            result.viewer = document.getElementById("viewer").open;
            document.querySelector("#viewer button").click();
            result.viewerClosed = !document.getElementById("viewer").open;
            document.title = "RESULT " + JSON.stringify(result);
        }, 300);
    }, 300);
});
//]]></script>
"""


TWO_WINDOWS = """\
import QtQuick
import QtQuick.Controls

Window {
    id: first
    visible: true
    width: 200; height: 100
    Button { id: here; x: 10; y: 10; width: 100; height: 30 }
    Window {
        id: second
        visible: true
        width: 120; height: 80
        Button { id: there; x: 10; y: 40; width: 60; height: 30 }
    }
}
"""


class PicturesOfTwoWindows(unittest.TestCase):
    def test_pictures_are_of_the_window_of_the_object(self):
        with tempfile.TemporaryDirectory() as directory:
            document = Path(directory) / "two.qml"
            document.write_text(TWO_WINDOWS)
            run = Replay(
                """\
mouseClick("WindowQmlImpl#first Button#here", 50, 15, Qt.LeftButton);
mouseClick("WindowQmlImpl#second Button#there", 30, 20, Qt.LeftButton);
mouseClick("WindowQmlImpl#first Button#here", 50, 15, Qt.LeftButton);
mouseClick("WindowQmlImpl#second Button#nowhere", 1, 1, Qt.LeftButton);
""",
                "--offscreen", "--report", "report.html", "--timeout", "0.5",
                program=("/usr/lib/qt6/bin/qmlscene", document),
            )
            self.addCleanup(run.__exit__)
        self.assertEqual(run.status, 1, run.output)
        points = re.findall(r'class="point" style="left:([\d.]+)%;top:([\d.]+)%"', run.report.read_text())
        there = ("33.33", "75.00")
        here = ("30.00", "25.00")
        self.assertEqual(points, [here, there, here])
        # The last one was looked for in the window that was not the active one.
        picture = (run.path / "junit-pictures" / "script-step4.png").read_bytes()
        self.assertEqual(struct.unpack(">II", picture[16:24]), (120, 80))


class ReplayReport(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.run_ = Replay(SCRIPT, "--offscreen", "--report", "report.html", "--timeout", "0.5")
        cls.addClassCleanup(cls.run_.__exit__)

    def look(self, *options):
        """What the probe has found."""
        page = self.run_.path / "probed.html"
        page.write_text(self.run_.report.read_text().replace("</body>", PROBE + "</body>"))
        browser = shutil.which("chromium")
        self.assertTrue(browser, "chromium is not installed; scripts/setup installs it")
        with tempfile.TemporaryDirectory() as profile:
            run = subprocess.run(
                [browser, "--headless", "--no-sandbox", "--disable-gpu", f"--user-data-dir={profile}",
                 "--virtual-time-budget=5000", *options, "--dump-dom", page.as_uri()],
                capture_output=True, text=True, timeout=LIMIT, check=True,
            )
        title = re.search(r"<title>RESULT (.*?)</title>", run.stdout, re.S)
        self.assertTrue(title, run.stdout[:2000] + run.stderr[-2000:])
        return json.loads(title.group(1).replace("&lt;", "<").replace("&gt;", ">").replace("&amp;", "&"))

    def test_a_reader_with_a_keyboard(self):
        self.assertEqual(self.run_.status, 1, self.run_.output)
        seen = self.look("--window-size=1200,900")
        steps = [f"s1-{number}" for number in range(1, 7)]
        self.assertEqual(seen["open"], ["s1-3", "s1-6"])
        self.assertEqual(seen["picture"], [True, True])
        self.assertIsNone(seen["untouched"], "pictures are decoded only when they are looked at")
        self.assertEqual(seen["seen"], steps)
        self.assertEqual(seen["firstFailure"], "s1-3")
        self.assertEqual(seen["secondFailure"], "s1-6")
        self.assertEqual(seen["back"], "s1-3")
        self.assertEqual(seen["next"], "s1-4")
        self.assertEqual(seen["failures"], ["s1-3", "s1-6"])
        self.assertEqual(seen["again"], steps)
        self.assertEqual(seen["search"], "search")
        self.assertEqual(seen["found"], ["s1-4"])
        self.assertTrue(seen["nothing"])
        self.assertEqual(seen["cleared"], steps)
        self.assertEqual(seen["allOpen"], steps)
        self.assertTrue(seen["loaded"])
        self.assertTrue(seen["viewer"])
        self.assertTrue(seen["viewerClosed"])

    def test_the_ring_stands_where_the_click_went(self):
        x, y = self.look("--window-size=1200,900")["point"]
        # The button stands at (8, 8) of 640×480, and the click went to (20, 10) in it.
        self.assertAlmostEqual(x, 28 / 640, delta=0.01)
        self.assertAlmostEqual(y, 18 / 480, delta=0.01)

    def test_a_phone_shows_it_without_scrolling_sideways(self):
        content, window = self.look("--window-size=500,900")["width"]
        self.assertLessEqual(content, window)

    def test_dark_and_light(self):
        light = self.look("--blink-settings=preferredColorScheme=1")
        dark = self.look("--blink-settings=preferredColorScheme=0")

        def brightness(colour):
            return sum(int(part) for part in re.findall(r"\d+", colour)[:3])

        self.assertGreater(brightness(light["paper"]), brightness(light["ink"]))
        self.assertLess(brightness(dark["paper"]), brightness(dark["ink"]))


if __name__ == "__main__":
    unittest.main()
