"""Flicks, by a mouse on X11 and by a finger on a touch screen, become one
statement each that moves the right flickable by the way of its content."""

import os
import re
import tempfile
import time
import unittest
from pathlib import Path

from vantlesystem import Recording, TouchScreen, xdotool

QMLSCENE = "/usr/lib/qt6/bin/qmlscene"
SCENE = Path(__file__).parent / "scenes" / "flickables.qml"

# A quick way up and its last point, by where it begins.
FLICKABLE = (90, 250)
LIST = (290, 250)
NESTED = (500, 150)


def way(start, dx, dy, steps=8):
    x, y = start
    return [(x + dx * step // steps, y + dy * step // steps) for step in range(steps + 1)]


class RecordFlicks(unittest.TestCase):
    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.screen = TouchScreen(directory.name)
        self.addCleanup(self.screen.close)
        self.recording = Recording(QMLSCENE, str(SCENE), environment=self.screen.environment())
        self.addCleanup(self.recording.__exit__)
        self.window = self.recording.window("Flickables")

    def mouse_drag(self, points):
        self.window.move_to(*points[0])
        xdotool("mousedown", 1)
        for point in points[1:]:
            # Of moves that are queued at once, Qt delivers the last one only.
            time.sleep(0.02)
            self.window.move_to(*point)
        xdotool("mouseup", 1)

    def flicked(self, count=1):
        """The flicks that were recorded: (objectName, dx, dy) each."""
        self.recording.wait_for_statements(count)
        self.assertEqual(self.recording.interrupt(), 0, self.recording.messages())
        flicks = []
        for statement in self.recording.statements():
            found = re.fullmatch(r'flick\("(.*)", (-?\d+), (-?\d+)\);', statement)
            self.assertTrue(found, self.recording.text())
            name = re.findall(r'objectName=\\"(\w+)\\"', found.group(1))[-1]
            flicks.append((name, int(found.group(2)), int(found.group(3))))
        return flicks

    def check_vertical(self, name, drag, start):
        drag(way(start, 0, -120))
        [(flicked, dx, dy)] = self.flicked()
        self.assertEqual((flicked, dx), (name, 0))
        # The content follows the pointer behind the drag distance, and runs on.
        self.assertGreater(dy, 60)

    def test_flickable_by_mouse(self):
        self.check_vertical("flickable", self.mouse_drag, FLICKABLE)

    def test_flickable_by_touch(self):
        self.check_vertical("flickable", lambda points: self.screen.drag(*points), FLICKABLE)

    def test_list_by_mouse(self):
        self.check_vertical("list", self.mouse_drag, LIST)

    def test_list_by_touch(self):
        self.check_vertical("list", lambda points: self.screen.drag(*points), LIST)

    def check_nested(self, drag):
        drag(way(NESTED, 0, -120))
        self.recording.wait_for_statements(1)
        drag(way(NESTED, -90, 0))
        inner, outer = self.flicked(2)
        self.assertEqual((inner[0], inner[1]), ("inner", 0))
        self.assertGreater(inner[2], 60)
        self.assertEqual((outer[0], outer[2]), ("outer", 0))
        self.assertGreater(outer[1], 40)

    def test_nested_by_mouse(self):
        self.check_nested(self.mouse_drag)

    def test_nested_by_touch(self):
        self.check_nested(lambda points: self.screen.drag(*points))

    def test_press_without_movement_is_no_flick(self):
        self.window.click(*FLICKABLE)
        self.window.click(*LIST, button=3)
        self.assertEqual(self.recording.interrupt(), 0)
        self.assertEqual([s.split("(")[0] for s in self.recording.statements()], ["mouseClick", "mouseClick"])


if __name__ == "__main__":
    unittest.main()
