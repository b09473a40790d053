"""A session on Debian's unmodified pentobi becomes the right script."""

import re
import unittest

import pentobisession
from vantlesystem import Recording

# What is really under the pointer at each step. The piece's mouse area and the
# board's have no id of their own that tells them apart from others, so their
# names end in whatever makes them unique.
EXPECTED = [
    r'mouseClick\("Main#rootWindow MouseArea#mouseArea:visible(:nth\(\d+\))?", 27, 22, Qt\.LeftButton\);',
    r'mouseClick\("Main#rootWindow MouseArea:visible(:nth\(\d+\))?", 288, 205, Qt\.ControlModifier, Qt\.LeftButton\);',
    r'mouseClick\("Main#rootWindow MouseArea:visible(:nth\(\d+\))?", 288, 205, Qt\.RightButton\);',
    r'longMouseClick\("Main#rootWindow MouseArea:visible(:nth\(\d+\))?", 288, 255, Qt\.LeftButton\);',
    r'mouseClick\("Main#rootWindow ToolButton#button:visible(:nth\(\d+\))?", 14, 15, Qt\.LeftButton\);',
    r'type\("Main#rootWindow PopupItem:visible(:nth\(\d+\))?", "<Esc>"\);',
    r'mouseClick\("Main#rootWindow Loader#menu:visible(:nth\(\d+\))?", 14, 15, Qt\.ShiftModifier, Qt\.LeftButton\);',
]


class RecordPentobi(unittest.TestCase):
    def test_session(self):
        with Recording(pentobisession.program()) as recording:
            window = recording.window(pentobisession.TITLE)
            pentobisession.play(recording, window)
            self.assertEqual(recording.interrupt(), 0, recording.messages())
            statements = recording.statements()
            self.assertEqual(len(statements), len(EXPECTED), recording.text())
            for statement, pattern in zip(statements, EXPECTED):
                self.assertTrue(re.fullmatch(pattern, statement), f"{statement}\n does not fit\n{pattern}")

    def test_watching_alone_records_nothing(self):
        with Recording(pentobisession.program()) as recording:
            recording.window(pentobisession.TITLE)
            self.assertEqual(recording.interrupt(), 0, recording.messages())
            self.assertEqual(recording.statements(), [], recording.text())


if __name__ == "__main__":
    unittest.main()
