"""A session on Debian's unmodified pentobi becomes the right script."""

import re
import unittest

import pentobisession
from vantlesystem import Recording

# What is really under the pointer at each step, below what tells it from others
# like it: the pieces of a player, the board.
EXPECTED = [
    r'mouseClick\("Main#rootWindow PieceList#pieceList0:visible MouseArea\[index=\\"0\\"\]:visible", 27, 22, Qt\.LeftButton\);',
    r'mouseClick\("Main#rootWindow Item#grabImageTarget:visible MouseArea:visible", 288, 205, Qt\.ControlModifier, Qt\.LeftButton\);',
    r'mouseClick\("Main#rootWindow Item#grabImageTarget:visible MouseArea:visible", 288, 205, Qt\.RightButton\);',
    r'longMouseClick\("Main#rootWindow Item#grabImageTarget:visible MouseArea:visible", 288, 255, Qt\.LeftButton\);',
    r'mouseClick\("Main#rootWindow ToolButton\[text=\\"Rated Game\\"\]:visible", 14, 15, Qt\.LeftButton\);',
    r'type\("Main#rootWindow PopupItem:visible", "<Esc>"\);',
    r'mouseClick\("Main#rootWindow PentobiButton#menuButton:visible ToolButton#button:visible", 14, 15, Qt\.ShiftModifier, Qt\.LeftButton\);',
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
