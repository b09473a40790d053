"""Windows, and fingers on a touch screen: recorded and replayed."""

import time
import unittest

from roundtrip import RoundTrip
from vantlesystem import wait_until, xdotool


class RoundTripWindows(RoundTrip):
    def test_moved(self):
        with self.scene("movedwindow", "mouseClick moveWindow mouseClick") as user:
            user.click(60, 25)
            user.sees("moved 0 0, clicks 1")
            x, y, _, _ = user.window.geometry()
            # The window manager reports a move at its end, and one move alone
            # may belong to a resize: it takes two.
            user.drag_frame((x + 200, y - 10), (x + 210, y - 10), (x + 260, y + 10))
            user.sees("moved [1-9].*, clicks 1")
            x, y, _, _ = user.window.geometry()
            user.drag_frame((x + 200, y - 10), (x + 190, y - 10), (x + 180, y + 20))
            time.sleep(0.3)
            user.click(60, 25)
            user.sees("moved .*, clicks 2")

    def test_resized(self):
        with self.scene("windows", "mouseClick setWindowSize mouseClick") as user:
            user.click(60, 25)
            user.sees(".*, clicks 1")
            x, y, width, height = user.window.geometry()
            corner = (x + width - 2, y + height + 1)
            user.drag_frame(corner, *((corner[0] + 10 * step, corner[1] + 6 * step) for step in range(1, 6)))
            user.sees("size 4[1-9]. 3[0-9]., .*")
            user.click(60, 25)
            user.sees(".*, clicks 2")

    def test_maximised_and_back(self):
        with self.scene("windows", "mouseClick setWindowState mouseClick setWindowState mouseClick") as user:
            user.click(60, 25)
            user.sees("size 400 300, normal, clicks 1")
            for state, clicks in (("maximised", 2), ("normal", 3)):
                x, y, _, _ = user.window.geometry()
                xdotool("mousemove", x + 150, y - 10, "click", "--repeat", 2, "--delay", 60, 1)
                user.sees(f"size .*, {state}, .*")
                # The window manager still moves it.
                user.window.wait_until_settled()
                user.click(60, 25)
                user.sees(f"size .*, {state}, clicks {clicks}")

    def test_closed(self):
        with self.scene("windows", "mouseClick closeWindow", ends=True) as user:
            user.click(60, 25)
            user.sees(".*, clicks 1")
            x, y, width, _ = user.window.geometry()
            xdotool("mousemove", x + width - 10, y - 10, "click", 1)

    def test_second_window(self):
        with self.scene("secondwindow", "mouseClick mouseClick type mouseClick closeWindow mouseClick") as user:
            user.click(60, 25)
            user.sees("here 1, there , two windows")
            second = user.window_titled("Second")
            second.wait_until_settled()
            user.click(80, 25, window=second)
            user.type("word")
            user.sees("here 1, there word, .*")
            user.click(60, 75, window=second)
            user.sees("here 1, there word clicked, .*")
            x, y, width, _ = second.geometry()
            xdotool("mousemove", x + width - 10, y - 10, "click", 1)
            user.sees(".*, one window")
            user.click(200, 200)


class RoundTripTouch(RoundTrip):
    def test_taps(self):
        with self.scene("touch", "tapObject tapObject doubleTap") as user:
            fingers = user.touch_screen
            fingers.tap(60, 25)
            user.sees("clicks 1, .*")
            time.sleep(0.9)
            fingers.tap(140, 25)
            user.sees("clicks 1, doubles 0, box true, .*")
            time.sleep(0.9)
            fingers.tap(300, 200)
            fingers.tap(300, 200)
            user.sees("clicks 1, doubles 1, .*")

    def test_drags(self):
        with self.scene("touch", "touchAndDrag touchAndDrag touchAndDrag") as user:
            user.touch_drag((17, 75), (161, 75))
            user.sees(".*, level [45].*")
            user.touch_drag((50, 150), (120, 190))
            user.sees(".*, card (?!20 120).*")
            user.touch_drag((120, 190), (160, 200), hold=1.2)
            user.sees(".*, card 1.*")

    def test_flick(self):
        with self.scene("flicks", "flick") as user:
            user.touch_screen.drag(*((90, 250 - 15 * step) for step in range(9)))
            user.recording.wait_for_statements(1)
            user.sees("down true, right false")

    def test_pinch(self):
        with self.scene("pinch", "gesture") as user:
            fingers = user.touch_screen
            fingers.send((1, "down", 130, 150))
            fingers.send((1, "still", 130, 150), (2, "down", 170, 150))
            for step in range(1, 8):
                fingers.send((1, "move", 130 - 6 * step, 150 - 2 * step), (2, "move", 170 + 6 * step, 150 + 2 * step))
            fingers.send((1, "up", 88, 136), (2, "up", 212, 164))
            user.sees("scale (1[.][1-9].|[2-9].*), turned .*")

    def test_two_fingers_at_once(self):
        with self.scene("pinch", "gesture") as user:
            fingers = user.touch_screen
            fingers.send((1, "down", 330, 100), (2, "down", 370, 200))
            fingers.send((1, "move", 331, 110), (2, "move", 371, 210))
            fingers.send((1, "up", 331, 110), (2, "up", 371, 210))
            user.sees(".*, points 2")


if __name__ == "__main__":
    unittest.main()
