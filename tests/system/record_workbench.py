"""Real input on the workbench example becomes the right statements, as text."""

import os
import re
import time
import unittest

from vantlesystem import Recording, xdotool

WORKBENCH = os.path.join(os.environ["VANTLE_EXAMPLES"], "workbench")

# Places inside the window.
COUNT = (60, 25)
RESET = (130, 25)
ABOUT = (200, 25)
LOCKED = (280, 25)
NAME = (200, 48)
TOKEN = (60, 130)
CANVAS = (400, 150)
ROW = (60, 204)


class RecordWorkbench(unittest.TestCase):
    def setUp(self):
        self.recording = Recording(WORKBENCH)
        self.addCleanup(self.recording.__exit__)
        self.window = self.recording.window("Workbench")

    def expect(self, *statements):
        """Ends the recording and compares; "#" stands for any whole number."""
        self.assertEqual(self.recording.interrupt(), 0, self.recording.messages())
        recorded = self.recording.statements()
        patterns = [re.escape(statement).replace(r"\#\#", r"-?\d+") for statement in statements]
        self.assertEqual(len(recorded), len(statements), self.recording.text())
        for statement, pattern in zip(recorded, patterns):
            self.assertRegex(statement, f"^{pattern}$")

    def test_clicks_name_the_controls_that_were_used(self):
        self.window.click(*COUNT)
        self.window.click(*RESET, modifiers=["ctrl"])
        self.window.click(*COUNT, modifiers=["ctrl", "shift"])
        self.window.click(*ROW)
        self.expect(
            'mouseClick("Workbench#workbench Button#countButton:visible", ##, ##, Qt.LeftButton);',
            'mouseClick("Workbench#workbench Button[objectName=\\"resetButton\\"]:visible", ##, ##, '
            "Qt.ControlModifier, Qt.LeftButton);",
            'mouseClick("Workbench#workbench Button#countButton:visible", ##, ##, '
            "Qt.ControlModifier|Qt.ShiftModifier, Qt.LeftButton);",
            'mouseClick("Workbench#workbench ListView#list:visible ItemDelegate[objectName=\\"row0\\"]:visible", ##, ##, '
            "Qt.LeftButton);",
        )

    def test_coordinates_are_those_inside_the_item(self):
        self.window.click(*TOKEN)
        self.expect(
            'mouseClick("Workbench#workbench MouseArea#tokenArea:visible", '
            + ", ".join(str(v) for v in self.inside_token(*TOKEN)) + ", Qt.LeftButton);"
        )

    def inside_token(self, x, y):
        """The token stands at (20, 20) of the canvas, and that where the layout puts it."""
        canvas_top = self.canvas_top()
        return x - 8 - 20, y - canvas_top - 20

    def canvas_top(self):
        """The first row of the canvas's colour in the window's picture."""
        _, _, width, _ = self.window.geometry()
        picture = self.window.picture()
        row_length = 3 * width
        for row in range(len(picture) // row_length):
            pixel = picture[row * row_length + 3 * 400 : row * row_length + 3 * 400 + 3]
            if pixel == bytes((0xDF, 0xE7, 0xEF)):
                return row
        self.fail("the canvas does not show")

    def test_other_buttons_and_long_presses(self):
        self.window.click(*TOKEN, button=3)
        self.window.press_for(*TOKEN, 1.2)
        self.expect(
            'mouseClick("Workbench#workbench MouseArea#tokenArea:visible", ##, ##, Qt.RightButton);',
            'longMouseClick("Workbench#workbench MouseArea#tokenArea:visible", ##, ##, Qt.LeftButton);',
        )

    def test_double_click(self):
        self.window.move_to(*TOKEN)
        xdotool("click", "--repeat", 2, "--delay", 60, 1)
        self.expect('doubleClick("Workbench#workbench MouseArea#tokenArea:visible", ##, ##, Qt.LeftButton);')

    def test_drag_leaves_out_the_way_to_the_crossing_move(self):
        x, y = TOKEN
        self.window.move_to(x, y)
        xdotool("mousedown", 1)
        for step in range(1, 11):
            self.window.move_to(x + 20 * step, y + 5 * step)
            # Qt makes one move of those that a busy program finds waiting.
            if step == 1:
                time.sleep(0.5)
        xdotool("mouseup", 1)
        # The first move is the one that crosses the drag distance.
        self.expect(
            'mouseDrag("Workbench#workbench MouseArea#tokenArea:visible", ##, ##, ##, ##, '
            "Qt.NoModifier, Qt.LeftButton);"
        )

    def test_disabled_control_records_nothing(self):
        self.window.click(*LOCKED)
        self.window.click(*COUNT)
        self.expect('mouseClick("Workbench#workbench Button#countButton:visible", ##, ##, Qt.LeftButton);')

    def test_typing_with_modifiers_and_special_keys(self):
        self.window.click(*NAME)
        xdotool("type", "--delay", 20, "Hello you")
        xdotool("key", "Left", "BackSpace")
        xdotool("type", "--delay", 20, "!")
        xdotool("key", "ctrl+a")
        field = "Workbench#workbench TextField#nameField:visible"
        self.expect(
            f'mouseClick("{field}", ##, ##, Qt.LeftButton);',
            f'type("{field}", "Hello you");',
            f'type("{field}", "<Left>");',
            f'type("{field}", "<Backspace>");',
            f'type("{field}", "!");',
            f'type("{field}", "<Ctrl+A>");',
        )

    def test_wheel_turns_on_one_item_become_one_statement(self):
        self.window.move_to(*CANVAS)
        xdotool("click", "--repeat", 3, "--delay", 20, 5)
        self.expect(
            'mouseWheel("Workbench#workbench Rectangle[objectName=\\"canvas\\"]:visible", ##, ##, 0, -45, '
            "Qt.NoModifier);",
        )

    def test_wheel_turns_that_scroll_go_to_the_list_whatever_row_comes_by(self):
        self.window.move_to(*ROW)
        xdotool("click", "--repeat", 2, "--delay", 300, 5)
        self.window.click(*COUNT)
        statements = self.recording.wait_for_statements(2)
        self.assertRegex(
            statements[0],
            r'^mouseWheel\("Workbench#workbench ListView#list:visible", \d+, \d+, 0, -30, Qt\.NoModifier, 0, \d+\);$',
        )

    def test_modal_dialog_keeps_what_it_covers_out_of_the_script(self):
        self.window.click(*ABOUT)
        self.recording.wait_for_statements(1)
        self.window.wait_until_settled()
        self.window.click(*COUNT)
        self.recording.wait_for_statements(2)
        xdotool("key", "Escape")
        self.recording.wait_for_statements(3)
        statements = self.recording.statements()
        self.assertNotIn("countButton", self.recording.text())
        self.assertRegex(statements[0], r'^mouseClick\("Workbench#workbench Button\[text=\\"About…\\"\]')


if __name__ == "__main__":
    unittest.main()
