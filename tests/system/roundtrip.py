"""The round trip: what a user does to a scene is recorded, the script is
replayed in a program of its own, and that program ends in the same state and
gives the same script again.

Scenes are the QML documents in scenes/. They report their state in words, as
lines that begin with STATE, and do so for the first time when input can come.
"""

import contextlib
import difflib
import html
import math
import os
import re
import subprocess
import tempfile
import time
import unittest
from pathlib import Path

from vantlesystem import LIMIT, VANTLE, Recording, TouchScreen, Window, wait_until, xdotool

QMLSCENE = "/usr/lib/qt6/bin/qmlscene"
SCENES = Path(__file__).parent / "scenes"

# So long behind a click, another one in the same place is no double click.
# The recorder takes two clicks for one double click over twice Qt's interval.
APART = 0.9

DRAG_DISTANCE = 10  # Qt's, in pixels

# How long fingers really stayed depends on how busy the computer is: the step
# times of a gesture, and the delay of a drag by touch, its last argument.
STEP_TIME = re.compile(r'<step time=\\"\d+\\"')
DELAY = re.compile(r"^(touchAndDrag\(.*Modifier), \d+\);$")


def states(output):
    return re.findall(r"STATE (.*)", output)


def comparable(statements):
    return [DELAY.sub(r"\1);", STEP_TIME.sub("<step", statement)) for statement in statements]


class User:
    """Hands and eyes on a scene that is being recorded. Places are in its window."""

    def __init__(self, recording, screen):
        self.recording = recording
        self.touch_screen = screen
        wait_until(lambda: "the scene is shown:\n" + recording.messages(), self.states)
        self.window = self.window_titled("Scene|qmlscene")

    def states(self):
        return states(self.recording.messages())

    def window_titled(self, title):
        return Window(
            wait_until(
                f"window {title}",
                lambda: subprocess.run(
                    ["xdotool", "search", "--onlyvisible", "--name", title], capture_output=True, text=True
                ).stdout.split(),
            )[0]
        )

    def sees(self, pattern):
        """Waits until all of the scene's state is what the regular expression says."""
        try:
            wait_until(pattern, lambda: re.fullmatch(pattern, self.states()[-1]), 10)
        except AssertionError:
            raise AssertionError(
                f"expected {pattern!r}, the scene says:\n" + "\n".join(self.states()) + "\n" + self.recording.text()
            ) from None

    def click(self, x, y, button=1, modifiers=(), window=None):
        (window or self.window).click(x, y, button, modifiers)

    def double_click(self, x, y):
        self.window.move_to(x, y)
        xdotool("click", "--repeat", 2, "--delay", 60, 1)

    def drag(self, start, end, hold=0.0, rest=0.3, window=None):
        """By the left button. The pointer moves as that of a slow hand: its first
        event is the one with which the way is long enough for a drag. It rests
        at the end, so that it is no flick."""
        window = window or self.window
        window.move_to(*start)
        xdotool("mousedown", 1)
        time.sleep(hold)
        self.move_over(slow_way(start, end), window)
        time.sleep(rest)
        xdotool("mouseup", 1)

    def flick(self, start, dx, dy):
        self.window.move_to(*start)
        xdotool("mousedown", 1)
        self.move_over(way(start, (start[0] + dx, start[1] + dy))[1:], self.window)
        xdotool("mouseup", 1)

    def touch_drag(self, start, end, hold=0.0):
        """As drag(), by a finger."""
        self.touch_screen.drag(start, *slow_way(start, end), hold=hold)

    def move_over(self, points, window):
        words = []
        for x, y in points:
            words += ["sleep", 0.015, "mousemove", "--window", window.id, x, y]
        xdotool(*words)

    def wheel(self, x, y, button, turns=1, modifiers=()):
        """Buttons 4 to 7 are up, down, left and right."""
        self.window.move_to(x, y)
        for key in modifiers:
            xdotool("keydown", key)
        xdotool("click", "--repeat", turns, "--delay", 30, button)
        for key in modifiers:
            xdotool("keyup", key)

    def type(self, text):
        xdotool("type", "--delay", 15, text)

    def key(self, *keys):
        xdotool("key", "--delay", 15, *keys)

    def drag_frame(self, *points):
        """On the window manager's frame, slowly enough for it to follow; points are on the screen."""
        xdotool("mousemove", *points[0], "mousedown", 1)
        for point in points[1:]:
            time.sleep(0.1)
            xdotool("mousemove", *point)
        time.sleep(0.1)
        xdotool("mouseup", 1)


def way(start, end, steps=8):
    """From one point to another."""
    return [tuple(math.floor(a + (b - a) * step / steps + 0.5) for a, b in zip(start, end)) for step in range(steps + 1)]


def slow_way(start, end):
    """Same, behind the start, as a slow hand goes it: over the point where it
    becomes a drag, and pixel by pixel until whatever is dragged has noticed."""
    dx, dy = end[0] - start[0], end[1] - start[1]
    total = abs(dx) + abs(dy)
    x = math.floor(DRAG_DISTANCE * abs(dx) / total + 0.5)
    crossing = start[0] + int(math.copysign(x, dx)), start[1] + int(math.copysign(DRAG_DISTANCE - x, dy))
    whole = max(abs(a - b) for a, b in zip(crossing, end))
    fine = way(crossing, end, whole)[: DRAG_DISTANCE + 3]
    return fine + way(fine[-1], end)[1:]


class RoundTrip(unittest.TestCase):
    maxDiff = None

    @contextlib.contextmanager
    def scene(self, name, functions, ends=False):
        """A user at work on the scene. Behind that the round trip is made and
        checked. The functions are those that the script has to call; ends is
        whether the user ends the program."""
        with tempfile.TemporaryDirectory() as directory:
            screen = TouchScreen(directory)
            try:
                yield from self.recorded(name, functions, ends, screen, Path(directory))
            finally:
                screen.close()

    def recorded(self, name, functions, ends, screen, directory):
        program = [QMLSCENE, str(SCENES / f"{name}.qml")]
        # Out of the way: what comes up under the pointer is entered by it.
        xdotool("mousemove", 1279, 899)
        with Recording(*program, environment=screen.environment()) as recording:
            user = User(recording, screen)
            yield user
            status = recording.process.wait(LIMIT) if ends else recording.interrupt()
            self.assertEqual(status, 0, recording.messages())
            script = recording.text()
            first = recording.statements()
            end = user.states()[-1]
        called = [statement.split("(")[0] for statement in first]
        self.assertEqual(called, functions.split(), script)
        xdotool("mousemove", 1279, 899)
        self.replayed(program, script, first, end, ends, directory)

    def replayed(self, program, script, first, end, ends, directory):
        script_file, second_file, results = (directory / name for name in ("first.js", "second.js", "results.xml"))
        # What the last statement set off may take its time.
        arrival = (
            "\ntry { waitFor(() => children()[0].outcome === %s, 5000); } catch (error) { }\n" % repr(end)
            if not ends
            else ""
        )
        script_file.write_text(script + arrival)
        run = subprocess.run(
            [VANTLE, "replay", "--timeout", "10", "--record", second_file, "--junit", results, script_file, "--", *program],
            stdout=subprocess.PIPE,
            stderr=subprocess.STDOUT,
            text=True,
            timeout=2 * LIMIT,
            check=False,
        )
        self.assertEqual(run.returncode, 0, f"{script}\n{run.stdout}")
        second = [
            line for line in second_file.read_text().splitlines() if line and not line.startswith("//")
        ]
        output = results.read_text()
        difference = "\n".join(difflib.ndiff(first, second)) + "\n" + output
        self.assertEqual(comparable(second), comparable(first), difference)
        self.assertEqual(html.unescape(states(output)[-1]), end, difference)
