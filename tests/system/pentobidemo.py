"""What the demonstration's user does in Debian's pentobi, with real X11 input:
a dialog with names, a piece put onto the board, a bigger window, the help."""

import time

import pentobisession
from vantlesystem import xdotool

# Places inside the windows; the main one opens at 1164 x 662.
MENU_GAME = (1050, 46)
GAME_INFO = (868, 127)
PLAYER_FIELD = (630, 240)
OK = (587, 421)
PICKED_PIECE = (617, 171)
# Straight and in small steps, as a hand moves a mouse: a statement doesn't hold
# by how much the pointer overshot the distance at which a drag begins.
BOARD_WAY = [(x, 171) for x in (*range(615, 601, -2), *range(600, 380, -20), 380)]
NEXT = (452, 15)
TEXT_WAY = [(x, 105 + x // 20) for x in (*range(40, 56, 2), *range(60, 300, 20))]


def drag(window, start, way):
    window.move_to(*start)
    xdotool("mousedown", 1)
    for point in way:
        time.sleep(0.05)
        window.move_to(*point)
    # A rest, so that nothing flies on.
    time.sleep(0.3)
    xdotool("mouseup", 1)


def drag_corner(window, dx, dy):
    """Resizes the window by the window manager's frame."""
    x, y, width, height = window.geometry()
    corner_x, corner_y = x + width - 2, y + height + 1
    xdotool("mousemove", corner_x, corner_y, "mousedown", 1)
    for step in range(1, 6):
        time.sleep(0.2)
        xdotool("mousemove", corner_x + dx * step // 5, corner_y + dy * step // 5)
    time.sleep(0.2)
    xdotool("mouseup", 1)


def play(recording, window, say):
    """Does it all. Ends with two windows open, the help in front."""
    say("open the menu with Shift, close it with Escape")
    window.click(*pentobisession.MENU, modifiers=["shift"])
    window.wait_until_settled()
    xdotool("key", "Escape")
    window.wait_until_settled()
    say("open the menu, Game, Game Info")
    for place in (pentobisession.MENU, MENU_GAME, GAME_INFO):
        window.click(*place)
        window.wait_until_settled()
    say("type the names of the players")
    window.click(*PLAYER_FIELD)
    xdotool("type", "--delay", 20, "Anna")
    xdotool("key", "Tab")
    xdotool("type", "--delay", 20, "Bo")
    window.click(*OK)
    window.wait_until_settled()
    say("pick a piece, drag it onto the board, turn it with the wheel")
    window.click(*pentobisession.PIECE)
    window.wait_until_settled()
    drag(window, PICKED_PIECE, BOARD_WAY)
    window.wait_until_settled()
    xdotool("click", 5)
    window.wait_until_settled()
    # The board takes no clicks as long as no piece is picked.
    say("click the board with Ctrl, with the right button, and for long")
    window.click(*pentobisession.BOARD, modifiers=["ctrl"])
    window.wait_until_settled()
    window.click(*pentobisession.BOARD, button=3)
    window.wait_until_settled()
    window.press_for(pentobisession.BOARD[0], pentobisession.BOARD[1] + 50, 1.2)
    window.wait_until_settled()
    say("ask for the computer's colours with the toolbar, with Escape out again")
    window.click(*pentobisession.COMPUTER_COLORS)
    window.wait_until_settled()
    xdotool("key", "Escape")
    window.wait_until_settled()
    say("make the window smaller by its frame")
    drag_corner(window, -60, -40)
    window.wait_until_settled()
    say("open the help, turn two pages and mark some text")
    xdotool("key", "F1")
    help_window = recording.window("Pentobi Help")
    for _ in range(2):
        help_window.click(*NEXT)
        help_window.wait_until_settled()
    drag(help_window, TEXT_WAY[0], TEXT_WAY[1:])
    help_window.wait_until_settled()
    return help_window
