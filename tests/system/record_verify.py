"""`vantle record --verify`: what comes back is told, and what does not with the
statement after which it first differed."""

import tempfile
import unittest
from pathlib import Path

from roundtrip import QMLSCENE
from vantlesystem import Recording

HEAD = "import QtQuick\nimport QtQuick.Controls\n"

SAME = HEAD + """
ApplicationWindow {
    id: main; width: 300; height: 200; visible: true; title: "Verified"
    CheckBox { id: bold; text: "Bold" }
    TextField { id: field; y: 50; width: 200 }
    Rectangle {
        y: 100; width: 20; height: 20; color: "red"
        NumberAnimation on x { running: bold.checked; from: 0; to: 200; duration: 1500; loops: Animation.Infinite }
    }
}
"""

# Each instance counts from somewhere else once the button has been clicked.
DIFFERENT = HEAD + """
ApplicationWindow {
    id: main; width: 300; height: 200; visible: true; title: "Verified"
    property int count: 0
    Button { id: same; text: "same"; onClicked: ++main.count }
    Button { id: chance; y: 60; text: "chance"; onClicked: said.text = Math.random() }
    Label { id: said; objectName: "said"; y: 120; text: "nothing" }
}
"""

QUITS = HEAD + """
ApplicationWindow {
    id: main; width: 300; height: 200; visible: true; title: "Verified"
    Button { id: quit; text: "quit"; onClicked: Qt.exit(7) }
}
"""


class Verify(unittest.TestCase):
    def verified(self, document, play, ends=False):
        """Exit code and messages of a recording of what play() does."""
        with tempfile.TemporaryDirectory() as directory:
            scene = Path(directory) / "scene.qml"
            scene.write_text(document)
            with Recording(QMLSCENE, str(scene), options=["--verify"]) as recording:
                window = recording.window("Verified")
                play(recording, window)
                status = recording.process.wait(60) if ends else recording.interrupt()
                return status, recording.messages() + recording.text()

    def test_what_comes_back(self):
        def play(recording, window):
            window.click(15, 20)
            recording.wait_for_statements(1)
            window.click(50, 70)
            recording.wait_for_statements(2)

        status, messages = self.verified(SAME, play)
        self.assertIn("vantle: came back: 2 statements, ", messages)
        self.assertEqual(status, 0)

    def test_what_differs(self):
        def play(recording, window):
            window.click(20, 20)
            recording.wait_for_statements(1)
            window.click(20, 80)
            recording.wait_for_statements(2)

        status, messages = self.verified(DIFFERENT, play)
        self.assertEqual(status, 1, messages)
        self.assertRegex(messages, r"did not come back: .*; it first differed after statement 2, mouseClick\(.*#chance")
        self.assertRegex(messages, r'"said".*: text was "0\.\d+", is "0\.\d+"')

    def test_how_the_program_ends(self):
        status, messages = self.verified(QUITS, lambda recording, window: window.click(20, 20), ends=True)
        self.assertIn("vantle: came back: 1 statement, and the program ended as recorded", messages)
        self.assertEqual(status, 0)


if __name__ == "__main__":
    unittest.main()
