"""Runs `vantle replay` on the workbench example."""

import os
import subprocess
import tempfile
import xml.etree.ElementTree
from pathlib import Path

from vantlesystem import LIMIT, VANTLE

WORKBENCH = os.path.join(os.environ["VANTLE_EXAMPLES"], "workbench")
WINDOW = "Workbench#workbench"


class Replay:
    """One run of a script, to its end."""

    def __init__(self, script, *options, program=(WORKBENCH,), environment=None):
        self.directory = tempfile.TemporaryDirectory()
        self.path = Path(self.directory.name)
        self.script = self.path / "script.js"
        self.script.write_text(script)
        self.junit = self.path / "junit.xml"
        self.report = self.path / "report.html"
        run = subprocess.run(
            [VANTLE, "replay", "--junit", self.junit, *options, self.script, "--", *program],
            cwd=self.path,
            env={**os.environ, **(environment or {})},
            capture_output=True,
            text=True,
            timeout=2 * LIMIT,
            check=False,
        )
        self.status = run.returncode
        self.output = run.stdout + run.stderr

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.directory.cleanup()

    def suite(self):
        return xml.etree.ElementTree.parse(self.junit).getroot().find("testsuite")
