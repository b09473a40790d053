"""Names every object of real programs and looks it up again: all of them, not
a sample. Prints how many there were."""

import os
import tempfile
import unittest
from pathlib import Path

from agentclient import Program
from vantlesystem import LIMIT, find_program

HERE = Path(__file__).parent

# New game, settings of the computer and of the looks, about.
PENTOBI_DIALOGS = ("gameVariantDialog", "computerDialog", "appearanceDialog", "aboutDialog")

GENERATED_ITEMS = 10_000

# Few texts, few names and a part that is not shown: equal items abound.
GENERATED_SCENE = """
import QtQuick
Window {
    id: scene
    width: 800; height: 600; visible: true
    Repeater {
        model: %d
        Item {
            width: 8; height: 8
            visible: index %% 7 !== 0
            objectName: index %% 3 === 0 ? "item" + index : ""
            Rectangle {
                width: 4; height: 4
                Text { text: "text " + (index %% 50); Item { } }
            }
        }
    }
}
"""


class Names(unittest.TestCase):
    def check(self, program, what, at_least):
        program.ask("settle")
        result = program.ask("roundTrip")
        found = result["items"] - len(result["failures"])
        print(f"{what}: {found} of {result['items']} objects found by their names", flush=True)
        self.assertEqual(result["failures"], [], what)
        self.assertGreaterEqual(result["items"], at_least, what)
        return result["items"]

    def play(self, program, function, *arguments):
        program.ask("call", function=function, arguments=arguments, timeout=LIMIT * 1000)

    def wait_for(self, program, name):
        return program.ask("find", name=name, ready=True, timeout=LIMIT * 1000)

    def test_pentobi_screen_by_screen(self):
        with tempfile.TemporaryDirectory() as home:
            settings = {"HOME": home, "XDG_CONFIG_HOME": home, "LC_ALL": "C"}
            with Program(find_program("pentobi"), environment=settings) as program:
                self.wait_for(program, ":visible")
                main = self.check(program, "pentobi, main window", 1000)
                self.play(program, "mouseClick", "Main PentobiButton#menuButton")
                self.check(program, "pentobi, menu", main + 10)
                self.play(program, "type", "Main", "<Escape>")
                self.play(program, "type", "Main", "<F1>")
                self.wait_for(program, "HelpWindow")
                before = self.check(program, "pentobi, help", main + 2)
                # Dialogs are made when they are first opened, and stay.
                for dialog in PENTOBI_DIALOGS:
                    program.ask("invoke", name=f"Main DialogLoader#{dialog}", method="open")
                    before = self.check(program, f"pentobi, {dialog}", before + 5)

    def test_everything_that_is_hard_to_tell_apart(self):
        with Program(find_program("qmlscene"), str(HERE / "everything.qml")) as program:
            self.wait_for(program, "ApplicationWindow")
            self.check(program, "repeaters and lists", 100)
            for page in (1, 2, 0):
                program.ask("invoke", name="ApplicationWindow", method="showPage", arguments=[page])
                self.check(program, f"page {page}", 100)
            program.ask("invoke", name="ApplicationWindow", method="openAll")
            self.wait_for(program, "ApplicationWindow MenuItem[text=\"E&xit\"]:visible")
            self.check(program, "popups, dialog and menu", 120)

    def test_workbench(self):
        with Program(os.path.join(os.environ["VANTLE_EXAMPLES"], "workbench")) as program:
            self.wait_for(program, ":visible")
            self.check(program, "workbench", 30)

    def test_ten_thousand_items(self):
        with tempfile.TemporaryDirectory() as directory:
            scene = Path(directory) / "scene.qml"
            scene.write_text(GENERATED_SCENE % (GENERATED_ITEMS // 4))
            with Program(find_program("qmlscene"), str(scene)) as program:
                self.wait_for(program, ":visible")
                self.check(program, "generated scene", GENERATED_ITEMS)


if __name__ == "__main__":
    unittest.main()
