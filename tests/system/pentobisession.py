"""What a user does in Debian's pentobi, with real X11 input, for the
demonstration and for the tests."""

import time

from vantlesystem import find_program, xdotool

PROGRAM = "pentobi"
TITLE = "Pentobi"

# Places inside the window, which pentobi opens at 1164 x 662.
NEW_GAME = (16, 17)
COMPUTER_COLORS = (46, 17)
PLAY = (136, 17)
BOARD = (300, 250)
PIECE = (645, 100)
MENU = (1146, 17)


def program():
    return find_program(PROGRAM)


def play(recording, window, say=lambda text: None):
    """Does it all, each step once the one before has become a statement."""
    done = 0

    def step(description, action):
        nonlocal done
        say(description)
        action()
        done += 1
        recording.wait_for_statements(done)

    step("click a piece", lambda: window.click(*PIECE))
    step("Ctrl+click the board", lambda: window.click(*BOARD, modifiers=["ctrl"]))
    step("right-click the board", lambda: window.click(*BOARD, button=3))
    step("press long on the board", lambda: window.press_for(BOARD[0], BOARD[1] + 50, 1.2))
    step("click the toolbar button for the computer's colours", lambda: window.click(*COMPUTER_COLORS))
    window.wait_until_settled()
    step("close the dialog with Escape", lambda: (xdotool("key", "Escape"), time.sleep(0)))
    window.wait_until_settled()
    step("Shift+click the menu button", lambda: window.click(*MENU, modifiers=["shift"]))
