"""Every kind of real input on Debian's unmodified pentobi becomes the right
statement, as text."""

import re
import time
import unittest

import pentobisession
from vantlesystem import Recording, xdotool

ROOT = r'"Main#rootWindow'
NUMBER = r"-?\d+"
POINT = rf"{NUMBER}, {NUMBER}"
# Pieces and squares have neither ids nor names of their own, so that they are
# looked for below what does.
BELOW = rf"{ROOT}(?: .*)?"
PIECE = rf'{ROOT} MouseArea#dragArea:visible MouseArea:visible"'
ON_BOARD = rf'{BELOW} (Image\[source=\\"image://pentobi/square/[^"]*\\"\]|MouseArea):visible(:nth\(\d+\))?"'

# Places inside the window.
MENU_GAME = (1050, 46)
GAME_INFO = (868, 127)
PLAYER_FIELD = (630, 240)
OK = (587, 421)
PICKED_PIECE = (617, 171)
EMPTY = (900, 500)


class RecordPentobiPatterns(unittest.TestCase):
    def setUp(self):
        self.recording = Recording(pentobisession.program())
        self.addCleanup(self.recording.__exit__)
        self.window = self.recording.window(pentobisession.TITLE)

    def settle(self):
        self.window.wait_until_settled()

    def drag(self, points, hold=0.0):
        self.window.move_to(*points[0])
        xdotool("mousedown", 1)
        time.sleep(hold)
        for point in points[1:]:
            self.window.move_to(*point)
        xdotool("mouseup", 1)

    def drag_frame(self, points):
        """On the window manager's frame, slowly enough for it to follow; points are on the screen."""
        xdotool("mousemove", *points[0], "mousedown", 1)
        for point in points[1:]:
            time.sleep(0.2)
            xdotool("mousemove", *point)
        time.sleep(0.2)
        xdotool("mouseup", 1)
        self.settle()

    def expect(self, *patterns):
        recorded = self.recording.statements()
        self.assertEqual(len(recorded), len(patterns), self.recording.text() + self.recording.messages())
        for statement, pattern in zip(recorded, patterns):
            self.assertRegex(statement, f"^{pattern}$")

    def finish(self):
        self.assertEqual(self.recording.interrupt(), 0, self.recording.messages())

    def test_menu_dialog_and_typing(self):
        for place in (pentobisession.MENU, MENU_GAME, GAME_INFO):
            self.window.click(*place)
            self.settle()
        self.window.click(*PLAYER_FIELD)
        xdotool("type", "--delay", 20, "Anna B!")
        xdotool("key", "shift+Left")
        xdotool("key", "Tab")
        xdotool("type", "--delay", 20, "Bo")
        self.window.click(*OK)
        self.finish()
        name = rf"{ROOT} TextField#textFieldPlayerName"
        self.expect(
            rf'mouseClick\({ROOT} PentobiButton#menuButton:visible ToolButton#button:visible", {POINT}, Qt\.LeftButton\);',
            rf'mouseClick\({ROOT} MenuItem\[text=\\"Game\\"\]:visible", {POINT}, Qt\.LeftButton\);',
            rf'mouseClick\({ROOT} MenuItem\[text=\\"Game Info\\"\]:visible", {POINT}, Qt\.LeftButton\);',
            rf'mouseClick\({name}0:visible", {POINT}, Qt\.LeftButton\);',
            rf'type\({name}0:visible", "Anna B!"\);',
            rf'type\({name}0:visible", "<Shift\+Left>"\);',
            rf'type\({name}0:visible", "<Tab>"\);',
            rf'type\({name}1:visible", "Bo"\);',
            rf'mouseClick\({ROOT} ButtonOk\[text=\\"OK\\"\]:visible", {POINT}, Qt\.LeftButton\);',
        )

    def test_drags_wheel_and_double_click(self):
        self.window.click(*pentobisession.PIECE)
        self.settle()
        self.drag([PICKED_PIECE, (600, 171), (500, 200), (400, 250), (330, 256)])
        self.settle()
        xdotool("click", "--repeat", 2, "--delay", 150, 5)
        self.settle()
        self.drag([(330, 256), (320, 256), (300, 256), (280, 270)], hold=1.3)
        self.settle()
        self.window.move_to(*EMPTY)
        xdotool("click", "--repeat", 2, "--delay", 60, 1)
        self.finish()
        self.expect(
            rf'mouseClick\({BELOW} MouseArea\[index=\\"\d+\\"\]:visible", {POINT}, Qt\.LeftButton\);',
            rf"mouseDrag\({PIECE}, {POINT}, {POINT}, Qt\.NoModifier, Qt\.LeftButton\);",
            rf"mouseWheel\({ON_BOARD}, {POINT}, 0, -30, Qt\.NoModifier\);",
            rf"longMouseDrag\({ON_BOARD}, {POINT}, {POINT}, Qt\.NoModifier, Qt\.LeftButton\);",
            rf'doubleClick\({BELOW} MouseArea:visible(:nth\(\d+\))?", {POINT}, Qt\.LeftButton\);',
        )

    def test_window_moved_resized_and_closed_by_its_frame(self):
        x, y, width, height = self.window.geometry()
        # A click in between shows that what came before is complete.
        self.window.click(*EMPTY)
        # The window manager reports a move at its end, and one move alone may
        # belong to a resize: it takes two.
        self.drag_frame([(x + 240, y - 10), (x + 250, y - 10), (x + 280, y + 12)])
        x, y, width, height = self.window.geometry()
        self.drag_frame([(x + 240, y - 10), (x + 250, y - 10), (x + 225, y - 20)])
        self.window.click(*EMPTY)
        x, y, width, height = self.window.geometry()
        corner = (x + width - 2, y + height + 1)
        self.drag_frame([corner, *((corner[0] - 10 * step, corner[1] - 4 * step) for step in range(1, 6))])
        x, y, width, height = self.window.geometry()
        xdotool("mousemove", x + width - 10, y - 10, "click", 1)
        self.assertEqual(self.recording.process.wait(60), 0, self.recording.messages())
        self.expect(
            rf'mouseClick\({BELOW} MouseArea:visible(:nth\(\d+\))?", {POINT}, Qt\.LeftButton\);',
            rf'moveWindow\({ROOT}", 25, 12\);',
            rf'mouseClick\({BELOW} MouseArea:visible(:nth\(\d+\))?", {POINT}, Qt\.LeftButton\);',
            rf'setWindowSize\({ROOT}", {width}, {height}\);',
            rf'closeWindow\({ROOT}"\);',
        )


if __name__ == "__main__":
    unittest.main()
