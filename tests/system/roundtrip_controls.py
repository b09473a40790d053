"""Qt Quick Controls, by mouse and keyboard: recorded and replayed."""

import subprocess
import time
import unittest

from roundtrip import APART, RoundTrip


class RoundTripControls(RoundTrip):
    def test_buttons(self):
        with self.scene("buttons", "mouseClick mouseClick mouseClick mouseClick longMouseClick mouseClick") as user:
            user.click(60, 25)
            user.click(170, 25)
            user.click(250, 25)
            user.click(300, 30)
            user.sees("pushed 1, toggle true, tool 11, delay false")
            user.window.press_for(60, 75, 1.2)
            user.sees("pushed 1, toggle true, tool 11, delay true")
            user.click(170, 25)
            user.sees("pushed 1, toggle false, tool 11, delay true")

    def test_check_boxes_radio_buttons_and_switches(self):
        clicks = "mouseClick mouseClick mouseClick mouseClick mouseClick"
        with self.scene("checks", clicks) as user:
            user.click(25, 25)
            user.click(25, 70)
            user.click(170, 70)
            user.click(270, 25)
            user.sees("box true, third 1, red false, green true, power true")
            user.click(25, 70)
            user.sees("box true, third 2, red false, green true, power true")

    def test_switch_dragged(self):
        with self.scene("checks", "mouseDrag") as user:
            user.drag((265, 25), (310, 25))
            user.sees(".*, power true")

    def test_keys_on_buttons(self):
        with self.scene("buttons", "mouseClick type type type") as user:
            user.click(60, 25)
            user.sees("pushed 1, .*")
            user.key("space")
            user.key("Tab")
            user.sees("pushed 2, .*")
            user.key("space")
            user.sees("pushed 2, toggle true, .*")

    def test_slider_dragged_clicked_and_by_keys(self):
        with self.scene("sliders", "mouseDrag mouseClick type") as user:
            user.drag((17, 25), (160, 25))
            user.sees("level [45].*")
            user.click(250, 25)
            user.sees("level 8.*")
            user.key("Left")
            user.sees("level 7.*")

    def test_range_slider(self):
        with self.scene("sliders", "mouseDrag mouseDrag") as user:
            user.drag((17, 75), (100, 75))
            user.drag((302, 75), (200, 75))
            user.sees("level 0, range [23]. to [67]., .*")

    def test_upright_slider_with_steps(self):
        with self.scene("sliders", "mouseDrag") as user:
            user.drag((355, 250), (355, 100))
            user.sees(".*, upright [56]")

    def test_dial(self):
        with self.scene("dial", "mouseDrag type") as user:
            user.drag((110, 150), (160, 70))
            user.sees("dial [34].")
            user.key("Right")
            user.sees("dial [45].")

    def test_combo_box(self):
        with self.scene("combo", "mouseClick mouseClick") as user:
            user.click(80, 25)
            user.sees("fruit Apple, .*, open")
            user.click(80, 60)
            user.sees("fruit (Apple|Banana|Cherry), city Bern, accepted 0")

    def test_combo_box_by_keys(self):
        with self.scene("combo", "mouseClick type type") as user:
            user.click(80, 25)
            user.sees("fruit Apple, .*, open")
            user.key("Down", "Return")
            user.sees("fruit Banana, city Bern, accepted 0")

    def test_editable_combo_box(self):
        with self.scene("combo", "mouseClick type type type") as user:
            user.click(230, 25)
            user.key("ctrl+a")
            user.type("Oslo")
            user.sees("fruit Apple, city Oslo, accepted 0")
            user.key("Return")
            user.sees("fruit Apple, city Oslo, accepted 1")

    def test_context_menu(self):
        with self.scene("menus", "mouseClick mouseClick mouseClick mouseClick") as user:
            user.click(100, 100, button=3)
            user.sees("nothing, open, wrap false")
            user.click(140, 115)
            user.sees("cut, wrap false")
            user.click(200, 50, button=3)
            user.sees("cut, open, wrap false")
            user.click(240, 90)
            user.sees("cut, wrap true")

    def test_submenu(self):
        with self.scene("menus", "mouseClick mouseClick mouseClick") as user:
            user.click(50, 50, button=3)
            user.sees("nothing, open, wrap false")
            user.click(80, 115)
            user.sees("nothing, open, more, wrap false")
            user.click(300, 118)
            user.sees("sort, wrap false")

    def test_menu_bar(self):
        with self.scene("menubar", "mouseClick mouseClick type") as user:
            user.click(20, 12)
            user.sees("nothing, file")
            user.click(60, 75)
            user.sees("save")
            user.key("ctrl+o")
            user.sees("open")

    def test_menu_bar_by_keys(self):
        with self.scene("menubar", "type type type") as user:
            user.key("alt+e")
            user.sees("nothing, edit")
            user.key("Down", "Return")
            user.sees("find")

    def test_dialog(self):
        with self.scene("dialog", "mouseClick type mouseClick mouseClick type") as user:
            user.click(60, 25)
            user.sees("none, open")
            user.type("because")
            user.click(100, 220)
            user.sees("accepted because")
            user.click(60, 25)
            user.sees("accepted because, open")
            user.key("Escape")
            user.sees("rejected")

    def test_dialog_by_its_buttons(self):
        with self.scene("dialog", "mouseClick mouseClick") as user:
            user.click(60, 25)
            user.sees("none, open")
            user.click(200, 220)
            user.sees("rejected")

    def test_drawer(self):
        with self.scene("drawer", "mouseDrag mouseClick mouseClick") as user:
            user.drag((1, 150), (190, 150))
            user.sees("open, items 0")
            user.click(70, 35)
            user.sees("open, items 1")
            user.click(350, 200)
            user.sees("closed, items 1")

    def test_tab_bar(self):
        with self.scene("tabs", "mouseClick mouseClick mouseClick mouseClick") as user:
            user.click(150, 15)
            user.click(50, 85)
            user.sees("tab 1, did 1")
            user.click(250, 15)
            user.click(50, 85)
            user.sees("tab 2, did 1, did 2")

    def test_stack_view(self):
        with self.scene("stackview", "mouseClick mouseClick mouseClick") as user:
            user.click(60, 25)
            user.sees("depth 2")
            time.sleep(APART)
            user.click(60, 25)
            user.sees("depth 3")
            user.click(170, 25)
            user.sees("depth 2")

    def test_text_field(self):
        with self.scene("textfield", "mouseClick type type type type type type") as user:
            user.click(100, 25)
            user.type("Hello World")
            user.key("Home", "Delete")
            user.type("J")
            user.key("ctrl+a", "ctrl+c")
            user.sees(r"name \[Jello World\] selected \[Jello World\], .*")

    def test_text_selected_by_mouse(self):
        with self.scene("textfield", "mouseClick type mouseDrag type") as user:
            user.click(100, 25)
            user.type("abcdefgh")
            user.drag((15, 25), (60, 25))
            user.sees(r"name \[abcdefgh\] selected \[.*[a-z].*\], .*")
            user.key("Delete")
            user.sees(r"name \[[a-z]+\] selected \[\], .*")

    def test_word_selected_by_double_click(self):
        with self.scene("textfield", "mouseClick type doubleClick type") as user:
            user.click(200, 25)
            user.type("one two")
            user.double_click(25, 25)
            user.sees(r"name \[one two\] selected \[one ?\], .*")
            user.type("x")
            user.sees(r"name \[x ?two\] .*")

    def test_clipboard_and_tab(self):
        with self.scene("textfield", "mouseClick type type type type type") as user:
            user.click(100, 25)
            user.type("copy")
            user.key("ctrl+a", "ctrl+c", "Tab", "ctrl+v")
            user.sees(r"name \[copy\] .* other \[copy\], .*")

    def test_password(self):
        with self.scene("textfield", "mouseClick type type") as user:
            user.click(100, 105)
            user.type('S3cret!"\\')
            user.key("BackSpace")
            user.sees(r'.* secret \[S3cret!"\]')

    def test_text_beyond_ascii(self):
        # A keyboard that has the key: xdotool would change the layout under the
        # eyes of the program.
        subprocess.run(["setxkbmap", "de"], check=True)
        self.addCleanup(subprocess.run, ["setxkbmap", "us"], check=True)
        with self.scene("textfield", "mouseClick type") as user:
            user.click(100, 65)
            user.type("Grün")
            user.sees(r".* other \[Grün\], .*")

    def test_text_that_looks_like_a_key(self):
        with self.scene("textfield", "mouseClick type type") as user:
            user.click(100, 65)
            user.type("<Tab>")
            user.sees(r".* other \[<Tab>\], .*")

    def test_text_area(self):
        with self.scene("textarea", "mouseClick type type type type") as user:
            user.click(100, 40)
            user.type("first")
            user.key("Return")
            user.type("second")
            user.key("shift+Home")
            user.sees('"first\\\\nsecond" selected "second"')

    def test_spin_box(self):
        with self.scene("spinbox", "mouseClick mouseClick mouseClick type type type mouseWheel") as user:
            user.click(140, 20)
            user.sees("count 1, typed 0")
            time.sleep(APART)
            user.click(140, 20)
            user.sees("count 2, typed 0")
            user.click(60, 75)
            user.key("ctrl+a")
            user.type("250")
            user.key("Return")
            user.sees("count 2, typed 250")
            user.wheel(60, 75, 4)
            user.sees("count 2, typed 251")

    def test_scroll_bar(self):
        with self.scene("scrollbar", "mouseDrag") as user:
            user.drag((290, 15), (290, 150))
            user.sees("at [34].")

    def test_popup(self):
        with self.scene("popups", "mouseClick mouseClick mouseClick") as user:
            user.click(60, 25)
            user.sees("open, inside 0, outside 0")
            user.click(220, 90)
            user.sees("open, inside 1, outside 0")
            user.click(60, 215)
            user.sees("closed, inside 1, outside .")

    def test_tool_tip(self):
        with self.scene("tooltip", "longMouseClick mouseClick") as user:
            user.window.press_for(60, 25, 1.3)
            user.sees("tips 1, clicks 1")
            user.click(60, 25)
            user.sees("tips 1, clicks 2")

    def test_split_view(self):
        with self.scene("splitview", "mouseDrag") as user:
            user.drag((151, 150), (260, 150))
            user.sees("left 2..")

    def test_swipe_delegate(self):
        with self.scene("swipedelegate", "mouseDrag mouseClick") as user:
            user.drag((300, 25), (150, 25))
            user.sees("position -1.0")
            user.click(350, 25)
            user.sees("position .*, deleted")


if __name__ == "__main__":
    unittest.main()
