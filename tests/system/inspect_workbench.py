"""`vantle inspect` on a real program: what a user types and what comes out."""

import json
import os
import subprocess
import tempfile
import unittest
from pathlib import Path

from vantlesystem import LIMIT, VANTLE

EXTENSION = """
import QtQuick
import com.corvaline.vantle.qtquick 0.1

VantleHook {
    id: hook
    function propertyFor(item, name) { return name === "nickname" ? "nick" : hook.unhandled }
    function extraPropertiesFor(item) {
        return hook.qmlId(item) === "countButton" ? ["nickname"] : hook.unhandled
    }
}
"""


def inspect(*options):
    program = os.path.join(os.environ["VANTLE_EXAMPLES"], "workbench")
    return subprocess.run(
        [VANTLE, "inspect", *map(str, options), "--", program], capture_output=True, text=True, timeout=4 * LIMIT
    )


def names_in(node):
    yield node["name"]
    for child in node["children"]:
        yield from names_in(child)


class Inspect(unittest.TestCase):
    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.directory = Path(directory.name)

    def names(self, *options):
        run = inspect("--json", *options)
        self.assertEqual(run.returncode, 0, run.stderr)
        return [name for window in json.loads(run.stdout)["windows"] for name in names_in(window)]

    def name_of_button(self, *options):
        return next(name for name in self.names(*options) if "countButton" in name)

    def test_the_tree_is_a_line_for_each_object(self):
        run = inspect()
        self.assertEqual(run.returncode, 0, run.stderr)
        lines = run.stdout.splitlines()
        self.assertEqual(len(lines), len(self.names()))
        self.assertIn("ready", lines[0])

    def test_one_object_is_shown_with_its_properties(self):
        run = inspect("--name", self.name_of_button())
        self.assertEqual(run.returncode, 0, run.stderr)
        self.assertRegex(run.stdout, r"(?m)^readiness +ready$")
        self.assertRegex(run.stdout, r"(?m)^enabled +true$")

    def test_a_wrong_name_is_told_what_comes_closest(self):
        wrong = self.name_of_button().replace("countButton", "cuontButton")
        run = inspect("--timeout", "1", "--name", wrong)
        self.assertEqual(run.returncode, 1, run.stderr)
        self.assertIn('id  expected "cuontButton", found "countButton"', run.stdout)

    def test_an_alias_stands_in_place_of_the_name(self):
        names = self.directory / "names.json"
        names.write_text(json.dumps({"counter": self.name_of_button()}))
        self.assertIn("@counter", self.names("--names", names))
        run = inspect("--names", names, "--name", "@counter")
        self.assertEqual(run.returncode, 0, run.stderr)
        self.assertRegex(run.stdout, r"(?m)^name +@counter$")

    def test_a_names_file_with_a_wrong_selector_is_warned_about(self):
        names = self.directory / "names.json"
        names.write_text(json.dumps({"counter": "Window ["}))
        run = inspect("--names", names)
        self.assertEqual(run.returncode, 0, run.stderr)
        self.assertIn("warning: no aliases are known", run.stderr)

    def test_extensions_of_several_directories_are_asked(self):
        empty = self.directory / "empty"
        full = self.directory / "full"
        empty.mkdir()
        full.mkdir()
        (full / "Nickname.qml").write_text(EXTENSION)
        names = self.names("--extensions", empty, "--extensions", full)
        self.assertEqual([name for name in names if "nickname" in name][0].count('[nickname="nick"]'), 1)
        run = inspect("--extensions", full, "--check-names")
        self.assertEqual(run.returncode, 0, run.stdout + run.stderr)


if __name__ == "__main__":
    unittest.main()
