"""Scripts do to a real program what they say, on a screen and without one."""

import os
import pty
import subprocess
import tempfile
import unittest
from pathlib import Path

from replaying import Replay, WINDOW, WORKBENCH
from vantlesystem import VANTLE

SESSION = f"""\
const status = findObject("{WINDOW} Label#status");
mouseClick("{WINDOW} Button#countButton:visible", 20, 10, Qt.LeftButton);
mouseClick("{WINDOW} Button#countButton:visible", 20, 10, Qt.LeftButton);
waitFor(() => status.count === 2);
test.compare(findObject("{WINDOW} Button#countButton").text, "Count 2");
mouseClick("{WINDOW} TextField#nameField:visible", 60, 10, Qt.LeftButton);
type("{WINDOW} TextField#nameField:visible", "Hello you");
test.compare(findObject("{WINDOW} TextField#nameField").text, "Hello you");
mouseClick("{WINDOW} ListView#list:visible ItemDelegate[objectName=\\"row1\\"]:visible", 50, 10, Qt.LeftButton);
test.compare(status.last, "row1");
"""


class ReplayWorkbench(unittest.TestCase):
    def replay(self, script, *options, **named):
        run = Replay(script, *options, **named)
        self.addCleanup(run.__exit__)
        return run

    def test_session_on_a_screen(self):
        run = self.replay(SESSION)
        self.assertEqual(run.status, 0, run.output)
        self.assertEqual(run.suite().get("failures"), "0")

    def test_session_without_a_screen(self):
        run = self.replay(SESSION, "--offscreen", "--fresh-settings", environment={"DISPLAY": ":4711"})
        self.assertEqual(run.status, 0, run.output)

    def test_properties_and_methods(self):
        run = self.replay(
            f"""\
const field = waitForObject("{WINDOW} TextField#nameField:visible");
field.text = "set";
test.compare(field.text, "set");
test.verify(!field.activeFocus);
field.forceActiveFocus();
waitFor(() => field.activeFocus);
test.compare(findObject("{WINDOW} Rectangle#token").color, "#4477aa");
test.compare(children().map(String), ["{WINDOW}"]);
test.verify(!objectExists("{WINDOW} Button#nowhere"));
let message = "";
try {{ field.txet; }} catch (error) {{ message = error.message; }}
test.verify(message.includes('"txet"'), message);
test.verify(typeof field.selectAll === "function");
"""
        )
        self.assertEqual(run.status, 0, run.output)

    def test_missing_object_is_explained(self):
        run = self.replay(f'\nmouseClick("{WINDOW} Button#countBotton", 1, 1, Qt.LeftButton);\n', "--timeout", "0.5")
        self.assertEqual(run.status, 1, run.output)
        self.assertIn("script.js:2:1\n", run.output)
        self.assertRegex(run.output, r"closest: +" + WINDOW + r" Button#countButton")
        self.assertRegex(run.output, r'id +expected .*countBotton.*, found .*countButton')

    def test_what_covers_an_object_is_named(self):
        run = self.replay(
            f"""\
mouseClick("{WINDOW} Button[text=\\"About…\\"]", 10, 10, Qt.LeftButton);
mouseClick("{WINDOW} Button#countButton", 10, 10, Qt.LeftButton);
""",
            "--timeout",
            "1",
        )
        self.assertEqual(run.status, 1, run.output)
        self.assertIn("script.js:2:1\n", run.output)
        self.assertIn("About", run.output.split("script.js:2:1\n")[1])

    def test_replay_records_the_script_that_it_replays(self):
        run = self.replay(SESSION, "--record", "second.js")
        self.assertEqual(run.status, 0, run.output)
        recorded = [line for line in (run.path / "second.js").read_text().splitlines() if not line.startswith("//")]
        asked = [line for line in SESSION.splitlines() if line.startswith(("mouseClick", "type"))]
        self.assertEqual(recorded, asked)

    def test_picture_is_kept_and_compared(self):
        script = f'test.compareImage("{WINDOW} Rectangle#canvas", "canvas.png");\n'
        run = self.replay(script, "--update-images", "--offscreen")
        self.assertEqual(run.status, 0, run.output)
        moved = f'findObject("{WINDOW} Rectangle#token").x = 100;\n' + script
        kept = (run.path / "canvas.png").read_bytes()
        again = self.replay(f'test.screenshot("{WINDOW} Rectangle#canvas", "now.png");\n', "--offscreen")
        self.assertEqual((again.path / "now.png").read_bytes(), kept)
        other = self.replay(moved, "--offscreen")
        self.assertEqual(other.status, 1, other.output)

    def test_action_that_takes_longer_than_any_wait_is_no_hang(self):
        run = self.replay(
            f'''touchAndDrag("{WINDOW} Rectangle#token", 5, 5, 30, 0, Qt.NoModifier, 13000);\n''',
            "--offscreen", "--timeout", "1",
        )
        self.assertEqual(run.status, 0, run.output)

    def test_members_of_a_font_are_read_and_written(self):
        run = self.replay(
            f"""\
const label = findObject("{WINDOW} Label#status");
const size = label.font.pixelSize;
test.verify(size > 0);
label.font.pixelSize = size + 7;
test.compare(label.font.pixelSize, size + 7);
const button = findObject("{WINDOW} Button#countButton");
button.font = label.font;
test.compare(button.font.pixelSize, size + 7);
test.compare(button.font, label.font);
""",
            "--offscreen",
        )
        self.assertEqual(run.status, 0, run.output)

    def test_program_that_is_closed_by_its_last_statement_is_fine(self):
        run = self.replay(f'findObject("{WINDOW}").close();\nwaitForExit(10000);\n')
        self.assertEqual(run.status, 0, run.output)

    def on_a_terminal(self, environment):
        """What a replay that fails writes to a terminal."""
        ours, theirs = pty.openpty()
        with tempfile.TemporaryDirectory() as directory:
            script = Path(directory) / "script.js"
            script.write_text("snooze(0.4);\ntest.fail('on purpose');\n")
            run = subprocess.Popen(
                [VANTLE, "replay", "--offscreen", script, "--", WORKBENCH],
                stdin=subprocess.DEVNULL, stdout=theirs, env={**os.environ, "TERM": "xterm", **environment},
            )
            os.close(theirs)
            written = b""
            while True:
                try:
                    part = os.read(ours, 65536)
                except OSError:  # the other end has gone
                    break
                written += part
            os.close(ours)
            self.assertEqual(run.wait(), 1)
        return written.decode()

    def test_terminal_shows_a_bar_and_takes_it_away(self):
        text = self.on_a_terminal({"NO_COLOR": ""})
        self.assertRegex(text, "\u2591+  0:\\d\\d  1 step  ")
        self.assertIn("snooze(0.4);", text)
        self.assertIn("\x1b[31mfailed: \x1b[0m", text)
        last = text.rsplit("\x1b[J", 1)[1]
        self.assertNotIn("\u2591", last)

    def test_colours_can_be_switched_off(self):
        text = self.on_a_terminal({"NO_COLOR": "1"})
        self.assertNotRegex(text, r"\x1b\[\d+m")
        self.assertIn("failed: ", text)


if __name__ == "__main__":
    unittest.main()
