"""Views, handlers and areas that Qt Quick offers below its controls, by mouse
and keyboard: recorded and replayed."""

import re
import time
import unittest

from roundtrip import APART, RoundTrip


class RoundTripViews(RoundTrip):
    def test_list_with_delegates_made_on_demand(self):
        with self.scene("listview", "mouseClick mouseWheel mouseClick type type") as user:
            user.click(100, 45)
            user.sees("picked 1, current 1, at the top")
            user.wheel(100, 100, 5)
            user.sees("picked 1, current 1, scrolled")
            user.click(100, 200)
            user.sees("picked ([2-9]|1[0-9]), .*")
            picked = int(re.search("[0-9]+", user.states()[-1]).group())
            user.key("Down", "Down")
            user.sees(f"picked {picked}, current {picked + 2}, scrolled")

    def test_list_flicked(self):
        with self.scene("listview", "flick mouseClick") as user:
            user.flick((100, 250), 0, -150)
            user.recording.wait_for_statements(1)
            user.click(100, 150)
            user.sees("picked [1-9][0-9]*, .*")

    def test_grid_by_mouse_and_keys(self):
        with self.scene("gridview", "mouseClick type type") as user:
            user.click(150, 85)
            user.sees("picked 5, current 5")
            user.key("Right", "Down")
            user.sees("picked 5, current 10")

    def test_table_and_tree(self):
        with self.scene("tables", "mouseClick mouseClick mouseWheel") as user:
            user.click(60, 75)
            user.sees("picked row 2, .*")
            user.click(300, 12)
            user.sees("picked tree Oak, scrolled false")
            user.wheel(60, 100, 5)
            user.sees("picked tree Oak, scrolled true")

    def test_swipe_view(self):
        with self.scene("swipeview", "flick mouseClick") as user:
            user.flick((300, 220), -200, 0)
            user.recording.wait_for_statements(1)
            user.sees("page 1")
            user.click(200, 115)
            user.sees("page 1, did 1")

    def test_tumbler_flicked(self):
        with self.scene("tumbler", "flick") as user:
            user.flick((190, 160), 0, -100)
            user.recording.wait_for_statements(1)
            user.sees("hour 0, minute [1-9][0-9]*")

    def test_tumbler_that_wraps(self):
        with self.scene("tumbler", "mouseDrag") as user:
            user.drag((60, 120), (60, 50))
            user.sees("hour [1-9], minute 0")

    def test_flickables(self):
        with self.scene("flicks", "flick flick") as user:
            user.flick((90, 250), 0, -120)
            user.recording.wait_for_statements(1)
            user.flick((350, 75), -120, 0)
            user.recording.wait_for_statements(2)
            user.sees("down true, right true")

    def test_path_view(self):
        with self.scene("pathview", "mouseDrag mouseClick") as user:
            user.drag((205, 150), (90, 150))
            user.sees("current [1-9], picked none")
            user.click(200, 150)
            user.sees("current [1-9], picked [1-9]")

    def test_drag_and_drop_inside_the_scene(self):
        with self.scene("dragdrop", "mouseDrag") as user:
            user.drag((50, 50), (300, 150))
            user.sees("dropped at 2.., 1..")

    def test_handlers(self):
        with self.scene("handlers", "mouseClick mouseClick longMouseClick mouseDrag mouseWheel") as user:
            user.click(75, 50)
            user.click(75, 50, button=3)
            user.sees("taps 1, doubles 0, longs 0, rights 1, .*")
            user.window.press_for(100, 70, 1.2)
            user.sees("taps 1, doubles 0, longs 1, .*")
            user.drag((50, 180), (120, 230))
            user.sees(".*, card [1-9][0-9]* .*, wheel 0")
            user.wheel(275, 200, 4, turns=2)
            user.sees(".*, wheel [1-9][0-9]*")

    def test_double_tap_handler(self):
        with self.scene("handlers", "doubleClick") as user:
            user.double_click(75, 50)
            user.sees("taps 2, doubles 1, .*")

    def test_hover_handler(self):
        with self.scene("handlers", "mouseClick mouseClick") as user:
            user.click(250, 50)
            user.sees(".*, hovers 1, .*")
            user.click(75, 50)
            user.sees("taps 1, .*")

    def test_mouse_area_with_press_and_hold(self):
        functions = "mouseClick longMouseClick doubleClick mouseClick mouseClick mouseClick"
        with self.scene("presshold", functions) as user:
            user.click(50, 50)
            user.sees("clicks 1, .*")
            user.window.press_for(150, 60, 1.2)
            user.sees("clicks 1, holds 1, .*")
            user.double_click(80, 150)
            user.sees("clicks 2, holds 1, doubles 1.*")
            user.click(60, 60, button=3)
            user.click(90, 60, button=2)
            user.click(120, 60, modifiers=["ctrl", "shift"])
            user.sees("clicks 5, holds 1, doubles 1.* with .*")

    def test_drag_behind_a_long_press(self):
        with self.scene("longdrag", "longMouseDrag") as user:
            user.drag((60, 60), (200, 160), hold=1.2)
            user.sees("tile [1-9].*, lifted true")

    def test_clicks_in_one_place(self):
        with self.scene("presshold", "mouseClick mouseClick mouseClick") as user:
            for count in range(1, 4):
                user.click(50, 50)
                user.sees(f"clicks {count}, .*")
                time.sleep(APART)

    def test_turned_and_scaled_items(self):
        with self.scene("turned", "mouseClick mouseClick mouseDrag") as user:
            user.click(90, 52)
            user.sees("clicked turned .*")
            user.click(300, 60)
            user.sees("clicked scaled 5 2, .*")
            user.drag((200, 75), (200, 180))
            user.sees(".*, level [1-9].*")

    def test_shortcuts_and_focus(self):
        functions = "type type type type type type type"
        with self.scene("shortcuts", functions) as user:
            user.key("ctrl+shift+k", "F5", "Up", "Next")
            user.type("q")
            user.sees("keys chord refresh up down q, pushed 0, focus reader")
            user.key("Tab")
            user.sees(".*, focus first")
            user.key("space")
            user.sees(".*, pushed 1, focus first")

    def test_items_that_are_all_alike(self):
        with self.scene("twins", "mouseClick mouseClick mouseClick") as user:
            user.click(150, 60)
            user.click(50, 20)
            user.click(250, 100)
            user.sees("clicked 4 0 8")

    def test_items_that_come_and_go(self):
        functions = "mouseClick mouseClick mouseClick mouseClick mouseClick"
        with self.scene("dynamic", functions) as user:
            user.click(60, 25)
            user.sees("log, items 1, .*")
            time.sleep(APART)
            user.click(60, 25)
            user.sees("log, items 2, .*")
            user.click(60, 75)
            user.sees("log -Item 0, items 1, .*")
            user.click(200, 25)
            user.window.wait_until_settled()
            user.click(165, 75)
            user.sees("log -Item 0 gone, .*")

    def test_wheel_in_all_directions(self):
        with self.scene("wheels", "mouseWheel mouseWheel mouseWheel mouseWheel") as user:
            user.wheel(75, 75, 4, turns=3)
            user.sees("turns 3, zoom 100, .*")
            user.wheel(75, 75, 5, modifiers=["ctrl"])
            user.sees("turns 3, zoom 90, .*")
            user.wheel(75, 75, 6)
            user.sees("turns 13, zoom 90, .*")
            user.wheel(300, 150, 5, turns=2)
            user.sees("turns 13, zoom 90, scrolled true")

    def test_document_without_a_window(self):
        with self.scene("plain", "mouseClick mouseClick type") as user:
            user.click(60, 45)
            user.click(200, 45)
            user.type("abc")
            user.sees("clicks 11, keys abc")


if __name__ == "__main__":
    unittest.main()
