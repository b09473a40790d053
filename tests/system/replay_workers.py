"""Several scripts at a time, each with a program of its own."""

import os
import tempfile
import unittest
import xml.etree.ElementTree
from pathlib import Path
from subprocess import run

from replaying import WINDOW, WORKBENCH
from vantlesystem import LIMIT, VANTLE

SCRIPT = f"""\
const status = findObject("{WINDOW} Label#status");
mouseClick("{WINDOW} Button#countButton:visible", 20, 10, Qt.LeftButton);
mouseClick("{WINDOW} Button#countButton:visible", 20, 10, Qt.LeftButton);
waitFor(() => status.count === 2);
test.compare(status.count, 2);
"""

# Notes what the program was given, and becomes the program.
WRAPPER = f"""\
#!/bin/sh
env > "$NOTES/$$"
stat --format "runtime mode %a" "$XDG_RUNTIME_DIR" >> "$NOTES/$$"
exec "{WORKBENCH}"
"""

OWN = ("XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_STATE_HOME", "XDG_RUNTIME_DIR")


class ReplayWorkers(unittest.TestCase):
    def test_four_scripts_on_two_workers(self):
        with tempfile.TemporaryDirectory() as name:
            directory = Path(name)
            scripts = [directory / f"script{i}.js" for i in range(4)]
            for script in scripts:
                script.write_text(SCRIPT)
            wrapper = directory / "wrapper"
            wrapper.write_text(WRAPPER)
            wrapper.chmod(0o700)
            notes = directory / "notes"
            notes.mkdir()
            session = directory / "session"
            (session / "pulse").mkdir(parents=True, mode=0o700)
            session.chmod(0o700)
            done = run(
                [VANTLE, "replay", "--workers", "2", "--offscreen", "--junit", directory / "junit.xml",
                 *scripts, "--", wrapper],
                env={**os.environ, "NOTES": str(notes), "XDG_RUNTIME_DIR": str(session)},
                capture_output=True, text=True, timeout=2 * LIMIT, check=False,
            )
            self.assertEqual(done.returncode, 0, done.stdout + done.stderr)
            self.assertIn("4 scripts: 4 passed", done.stdout)

            suites = xml.etree.ElementTree.parse(directory / "junit.xml").getroot().findall("testsuite")
            self.assertEqual([suite.get("name") for suite in suites], [str(script) for script in scripts])
            for suite in suites:
                self.assertEqual((suite.get("tests"), suite.get("failures"), suite.get("errors")), ("2", "0", "0"))

            programs = [note.read_text() for note in notes.iterdir()]
            self.assertEqual(len(programs), 4)
            for program in programs:
                self.assertIn("runtime mode 700\n", program)
            variables = [dict(line.split("=", 1) for line in p.splitlines() if "=" in line) for p in programs]
            for variable in OWN:
                directories = {each[variable] for each in variables}
                self.assertEqual(len(directories), 4, variable)
                self.assertNotIn(str(session), directories)
                for path in directories:
                    self.assertFalse(os.path.exists(path), "left behind: " + path)
            self.assertTrue((session / "pulse").is_dir(), "what belongs to the session must stay")


if __name__ == "__main__":
    unittest.main()
