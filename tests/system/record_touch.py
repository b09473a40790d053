"""Touches, as a touch screen sends them, on the workbench example and on
Debian's pentobi become the right statements."""

import re
import tempfile
import time
import unittest

import pentobisession
from record_workbench import CANVAS, COUNT, TOKEN, WORKBENCH
from vantlesystem import Recording, TouchScreen

TOKEN_AREA = '"Workbench#workbench MouseArea#tokenArea:visible"'


class RecordTouch(unittest.TestCase):
    def start(self, program, title):
        # The pipe has to be there before the program.
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.screen = TouchScreen(directory.name)
        self.addCleanup(self.screen.close)
        self.recording = Recording(program, environment=self.screen.environment())
        self.addCleanup(self.recording.__exit__)
        self.window = self.recording.window(title)

    def expect(self, *statements):
        """Ends the recording and compares; "##" stands for any whole number."""
        self.assertEqual(self.recording.interrupt(), 0, self.recording.messages())
        recorded = self.recording.statements()
        self.assertEqual(len(recorded), len(statements), self.recording.text() + self.recording.messages())
        for statement, expected in zip(recorded, statements):
            self.assertRegex(statement, "^" + re.escape(expected).replace(r"\#\#", r"-?\d+") + "$")

    def test_tap(self):
        self.start(WORKBENCH, "Workbench")
        self.screen.tap(*COUNT)
        time.sleep(1)
        self.screen.tap(*TOKEN)
        # The first tap waits until the second says that it is no double tap.
        self.expect(
            'tapObject("Workbench#workbench Button#countButton:visible", ##, ##);',
            f"tapObject({TOKEN_AREA}, ##, ##);",
        )

    def test_double_tap(self):
        self.start(WORKBENCH, "Workbench")
        self.screen.tap(*TOKEN)
        self.screen.tap(*TOKEN)
        self.expect(f"doubleTap({TOKEN_AREA}, ##, ##);")

    def test_drag_leaves_out_the_way_to_the_crossing_update(self):
        self.start(WORKBENCH, "Workbench")
        x, y = TOKEN
        self.screen.drag((x, y), *((x + 20 * step, y + 5 * step) for step in range(1, 11)))
        self.expect(f"touchAndDrag({TOKEN_AREA}, ##, ##, ##, ##);")

    def test_drag_behind_a_rest_carries_its_delay(self):
        self.start(WORKBENCH, "Workbench")
        x, y = TOKEN
        self.screen.drag((x, y), (x + 40, y), (x + 90, y), hold=1.1)
        self.assertEqual(self.recording.interrupt(), 0)
        found = re.fullmatch(
            rf"touchAndDrag\({re.escape(TOKEN_AREA)}, \d+, \d+, \d+, 0, Qt.NoModifier, (\d+)\);",
            "\n".join(self.recording.statements()),
        )
        self.assertTrue(found, self.recording.text())
        self.assertGreaterEqual(int(found.group(1)), 1100)
        self.assertEqual(int(found.group(1)) % 10, 0)

    def test_two_fingers_make_a_gesture(self):
        self.start(WORKBENCH, "Workbench")
        x, y = CANVAS
        self.screen.send((1, "down", x - 20, y))
        self.screen.send((1, "still", x - 20, y), (2, "down", x + 20, y))
        for step in range(1, 6):
            self.screen.send((1, "move", x - 20 - 10 * step, y), (2, "move", x + 20 + 10 * step, y))
        self.screen.send((1, "up", x - 70, y), (2, "up", x + 70, y))
        self.assertEqual(self.recording.interrupt(), 0)
        statements = self.recording.statements()
        self.assertEqual(len(statements), 1, self.recording.text())
        head, gesture = re.fullmatch(r'(gesture\("Workbench#workbench", )"(.*)"\);', statements[0]).groups()
        steps = re.findall(r"<step .*?</step>", gesture)
        places = [re.findall(r'<point id=\\"(\d)\\" x=\\"(\d+)\\" y=\\"(\d+)\\"', step) for step in steps]
        left = [x - 20] * 2 + [x - 20 - 10 * step for step in range(1, 6)] + [x - 70]
        right = [None, x + 20] + [x + 20 + 10 * step for step in range(1, 6)] + [x + 70]
        expected = [
            [("1", str(one), str(y))] + ([("2", str(two), str(y))] if two else []) for one, two in zip(left, right)
        ]
        self.assertEqual(places, expected)
        times = [int(time) for time in re.findall(r'<step time=\\"(\d+)', gesture)]
        self.assertEqual(times[0], 0)
        self.assertEqual(times, sorted(times))

    def test_taps_on_pentobi(self):
        self.start(pentobisession.program(), pentobisession.TITLE)
        self.screen.tap(*pentobisession.PIECE)
        time.sleep(1)
        self.screen.tap(*pentobisession.MENU)
        self.window.wait_until_settled()
        self.expect(
            'tapObject("Main#rootWindow PieceList#pieceList0:visible MouseArea[index=\\"0\\"]:visible", ##, ##);',
            'tapObject("Main#rootWindow PentobiButton#menuButton:visible ToolButton#button:visible", ##, ##);',
        )


if __name__ == "__main__":
    unittest.main()
