"""Records real programs with real X11 input. To be run on a screen of its own
(scripts/with-display)."""

import os
import re
import signal
import subprocess
import tempfile
import time
from pathlib import Path

VANTLE = os.environ.get("VANTLE", "vantle")

# Generous: limits end a test that hangs, they never decide one that works.
LIMIT = 60


def wait_until(what, condition, limit=LIMIT):
    """Waits until condition() gives something true, and returns that. What was
    waited for in vain is said by what, a text or a function that is called then."""
    deadline = time.monotonic() + limit
    while True:
        result = condition()
        if result:
            return result
        if time.monotonic() > deadline:
            raise AssertionError(f"waited {limit} s in vain: {what() if callable(what) else what}")
        time.sleep(0.02)


def xdotool(*arguments):
    return subprocess.run(
        ["xdotool", *map(str, arguments)], check=True, capture_output=True, text=True
    ).stdout


class Window:
    """A window on the screen. Coordinates are relative to its content."""

    def __init__(self, window_id):
        self.id = window_id

    def geometry(self):
        text = subprocess.run(["xwininfo", "-id", str(self.id)], check=True, capture_output=True, text=True).stdout
        labels = ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height")
        return tuple(int(re.search(label + r":\s+(-?\d+)", text).group(1)) for label in labels)

    def picture(self):
        return subprocess.run(
            ["import", "-window", str(self.id), "-depth", "8", "rgb:-"], check=True, capture_output=True
        ).stdout

    def save_picture(self, file):
        subprocess.run(["import", "-window", str(self.id), str(file)], check=True)

    def wait_until_settled(self):
        """Until the window shows something and two looks at it are alike."""
        last = [None]

        def settled():
            seen = (self.geometry(), self.picture())
            alike = seen == last[0] and len(set(seen[1][::3])) > 4
            last[0] = seen
            if not alike:
                time.sleep(0.1)
            return alike

        wait_until("window settles", settled)

    def move_to(self, x, y):
        xdotool("mousemove", "--window", self.id, x, y)

    def click(self, x, y, button=1, modifiers=()):
        self.move_to(x, y)
        for key in modifiers:
            xdotool("keydown", key)
        xdotool("click", button)
        for key in reversed(modifiers):
            xdotool("keyup", key)

    def press_for(self, x, y, seconds, button=1):
        """A press that is held; the time is part of the input."""
        self.move_to(x, y)
        xdotool("mousedown", button)
        time.sleep(seconds)
        xdotool("mouseup", button)


class Recording:
    """`vantle record` at work on a program."""

    def __init__(self, *program, options=(), environment=None):
        self.directory = tempfile.TemporaryDirectory()
        self.script_file = Path(self.directory.name) / "script.js"
        self.log_file = Path(self.directory.name) / "log"
        self.log = open(self.log_file, "wb")
        self.process = subprocess.Popen(
            [VANTLE, "record", "-o", str(self.script_file), *map(str, options), "--", *program],
            stdout=subprocess.DEVNULL,
            stderr=self.log,
            env={**os.environ, **(environment or {})},
        )

    def __enter__(self):
        return self

    def __exit__(self, *_):
        if self.process.poll() is None:
            self.process.terminate()
            self.process.wait(LIMIT)
        self.log.close()
        self.directory.cleanup()

    def window(self, name):
        """The program's window of that title, once it shows its content."""
        deadline = time.monotonic() + LIMIT
        while time.monotonic() < deadline:
            found = subprocess.run(
                ["xdotool", "search", "--onlyvisible", "--name", name], capture_output=True, text=True
            ).stdout.split()
            if found:
                window = Window(int(found[0]))
                window.wait_until_settled()
                return window
            if self.process.poll() is not None:
                break
            time.sleep(0.05)
        raise AssertionError(f"no window {name!r} came up:\n{self.messages()}")

    def messages(self):
        return self.log_file.read_text(errors="replace")

    def text(self):
        return self.script_file.read_text() if self.script_file.exists() else ""

    def statements(self):
        """The statements so far, without comments."""
        return [line for line in self.text().splitlines() if line and not line.startswith("//")]

    def wait_for_statements(self, count):
        wait_until(
            lambda: f"{count} statements; so far:\n{self.text()}\n{self.messages()}",
            lambda: len(self.statements()) >= count,
        )
        return self.statements()

    def program_pid(self):
        """The process id of the recorded program, from the tool's own children."""
        children = subprocess.run(
            ["pgrep", "-P", str(self.process.pid)], capture_output=True, text=True
        ).stdout.split()
        return int(children[0]) if children else None

    def interrupt(self, limit=LIMIT):
        """Ctrl-C; gives the exit code."""
        self.process.send_signal(signal.SIGINT)
        return self.process.wait(limit)


def find_program(name):
    """Debian keeps games out of the usual path."""
    for directory in [*os.environ["PATH"].split(":"), "/usr/games", "/usr/lib/qt6/bin"]:
        candidate = Path(directory) / name
        if os.access(candidate, os.X_OK):
            return str(candidate)
    raise AssertionError(f"{name} is not installed; scripts/setup installs it")



class TouchScreen:
    """Fingers on the active window of a program that was started with this
    screen's environment. Each event takes its place in Qt's own queue."""

    def __init__(self, directory):
        self.path = os.path.join(directory, "touches")
        os.mkfifo(self.path)
        self.pipe = os.open(self.path, os.O_RDWR)

    def environment(self):
        return {
            "QT_QPA_GENERIC_PLUGINS": "touchplayer",
            "QT_PLUGIN_PATH": os.environ["VANTLE_TEST_PLUGINS"],
            "TOUCHPLAYER_PIPE": self.path,
        }

    def close(self):
        os.close(self.pipe)

    def send(self, *fingers, pause=0.02):
        """One event: fingers as (id, state, x, y). The pause behind it is a part of the input."""
        line = " ".join(":".join(map(str, finger)) for finger in fingers)
        os.write(self.pipe, line.encode() + b"\n")
        time.sleep(pause)

    def tap(self, x, y):
        self.send((1, "down", x, y))
        self.send((1, "up", x, y))

    def drag(self, *points, hold=0.0):
        """One finger over the points; it rests for that long before it moves."""
        self.send((1, "down", *points[0]), pause=0.02 + hold)
        for point in points[1:]:
            self.send((1, "move", *point))
        self.send((1, "up", *points[-1]))
