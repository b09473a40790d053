"""A session of random input on a program, recorded and replayed.

    scripts/with-display python3 tests/system/random_session.py --seed 7 --seconds 600 -- /usr/games/pentobi --seed 1

Clicks, double clicks, long presses, drags, the wheel, keys, text, context
menus, windows that are moved, resized and maximised: real X11 input on a
program under `vantle record`. The script is replayed in a fresh instance, and
what that comes to is held against what was recorded: its objects, and the
pictures of its windows. The same seed makes the same session on a program that
behaves the same.

Exit code 0: it came back. 1: it did not; the first difference is printed.
"""

import argparse
import json
import os
import random
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time
from pathlib import Path

from demo import is_same, state
from vantlesystem import LIMIT, VANTLE, Recording, Window, wait_until, xdotool

STATEMENT = re.compile(r"^[A-Za-z]+\(")
# Names of what takes presses, in the statements that play on a point.
NTH = re.compile(r":nth\(")

KEYS = "Tab Tab shift+Tab Return Escape Escape space Up Down Left Right Home End Prior Next BackSpace Delete".split()
WORDS = ["word", "Ada", "12", "x", "two words", "a-b_c", "(7)"]


class Hand:
    """What a hand does to the windows of one program, by chance."""

    def __init__(self, pid, seed, log):
        self.random = random.Random(seed)
        self.pid = pid
        self.log = log
        self.done = {}
        # When there was a window to act on.
        self.last = time.monotonic()

    def windows(self):
        """The program's windows on the screen that are large enough to be used."""
        found = subprocess.run(
            ["xdotool", "search", "--all", "--onlyvisible", "--pid", str(self.pid), "--name", "."],
            capture_output=True,
            text=True,
        ).stdout.split()
        usable = []
        for number in found:
            window = Window(int(number))
            try:
                _, _, width, height = window.geometry()
            except (subprocess.CalledProcessError, AttributeError):
                continue
            if width >= 40 and height >= 40:
                usable.append(window)
        return usable

    def act(self):
        """One action on one window; whether there was a window to act on."""
        windows = self.windows()
        if not windows:
            return False
        self.last = time.monotonic()
        window = self.random.choice(windows) if self.random.random() < 0.25 else windows[-1]
        # Drawn ahead of looking at the program, so that one seed gives one sequence.
        kind = self.random.choices(
            [self.click, self.double_click, self.press_long, self.context, self.drag, self.wheel,
             self.key, self.type, self.modified_click, self.change_window, self.hover],
            weights=[34, 4, 3, 6, 14, 9, 12, 5, 3, 3, 7],
        )[0]
        try:
            kind(window)
        except (subprocess.CalledProcessError, AttributeError):
            return False  # the window has gone meanwhile
        self.done[kind.__name__] = self.done.get(kind.__name__, 0) + 1
        time.sleep(self.random.choice([0.05, 0.15, 0.3, 0.6]))
        return True

    def note(self, *words):
        print(time.strftime("%H:%M:%S"), *words, file=self.log, flush=True)

    def place(self, window):
        _, _, width, height = window.geometry()
        return self.random.randrange(2, width - 2), self.random.randrange(2, height - 2)

    def click(self, window, button=1, modifiers=()):
        x, y = self.place(window)
        self.note("click", window.id, x, y, button, *modifiers)
        window.click(x, y, button, modifiers)

    def context(self, window):
        self.click(window, 3)

    def modified_click(self, window):
        self.click(window, 1, [self.random.choice(["ctrl", "shift"])])

    def double_click(self, window):
        x, y = self.place(window)
        self.note("double click", window.id, x, y)
        window.move_to(x, y)
        xdotool("click", "--repeat", 2, "--delay", 70, 1)

    def press_long(self, window):
        x, y = self.place(window)
        self.note("long press", window.id, x, y)
        window.press_for(x, y, 1.1)

    def hover(self, window):
        x, y = self.place(window)
        self.note("hover", window.id, x, y)
        window.move_to(x, y)

    def drag(self, window):
        x, y = self.place(window)
        dx, dy = self.random.randint(-250, 250), self.random.randint(-250, 250)
        if self.random.random() < 0.4:
            dx, dy = self.random.choice([(dx, 0), (0, dy)])
        step = self.random.choice([2, 8, 8, 25, 60])
        self.note("drag", window.id, x, y, dx, dy, step)
        count = max(1, int((dx * dx + dy * dy) ** 0.5 / step))
        window.move_to(x, y)
        words = ["mousedown", 1, "sleep", 0.05]
        for number in range(1, count + 1):
            words += ["mousemove", "--window", window.id, "--", x + dx * number // count, y + dy * number // count, "sleep", 0.01]
        xdotool(*words, "sleep", self.random.choice([0, 0.3]), "mouseup", 1)

    def wheel(self, window):
        x, y = self.place(window)
        button, notches = self.random.choice([4, 5, 5, 5, 6, 7]), self.random.randint(1, 8)
        self.note("wheel", window.id, x, y, button, notches)
        window.move_to(x, y)
        xdotool("click", "--repeat", notches, "--delay", 50, button)

    def key(self, _window):
        keys = [self.random.choice(KEYS) for _ in range(self.random.randint(1, 3))]
        self.note("keys", *keys)
        xdotool("key", "--delay", 60, *keys)

    def type(self, _window):
        word = self.random.choice(WORDS)
        self.note("type", word)
        xdotool("type", "--delay", 40, word)

    def change_window(self, window):
        x, y, width, height = window.geometry()
        what = self.random.choice(["move", "size", "maximise", "restore"])
        self.note(what, window.id)
        if what == "move":
            xdotool("windowmove", window.id, self.random.randint(0, 150), self.random.randint(20, 120))
        elif what == "size":
            xdotool("windowsize", window.id, max(200, width + self.random.randint(-80, 80)), max(150, height + self.random.randint(-80, 80)))
        else:
            change = "add" if what == "maximise" else "remove"
            subprocess.run(["wmctrl", "-i", "-r", str(window.id), "-b", f"{change},maximized_vert,maximized_horz"], check=False)
        time.sleep(0.5)


def settings(directory, name):
    """An environment in which no run of a program sees what another one left behind."""
    environment = dict(os.environ)
    for variable in ("XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR", "HOME"):
        place = directory / name / variable.lower()
        place.mkdir(parents=True, exist_ok=True)
        place.chmod(0o700)
        environment[variable] = str(place)
    return environment


def settle(windows):
    """Until what was set off has come to an end, as far as that can be seen."""
    for window in windows:
        try:
            window.wait_until_settled()
        except (AssertionError, subprocess.CalledProcessError, AttributeError):
            pass


def is_on_screen(window):
    """Whether all of it is: of the others there is no complete picture."""
    x, y, width, height = window.geometry()
    screen_width, screen_height = map(int, xdotool("getdisplaygeometry").split())
    return x >= 0 and y >= 0 and x + width <= screen_width and y + height <= screen_height


def record(arguments, directory):
    """Makes the session; gives the statements, and the pictures by their windows' places."""
    log = open(directory / "actions.log", "w")
    os.environ.update(settings(directory, "recorded"))
    pictures = {}
    with Recording(*arguments.program, options=["--tree", directory / "recorded.json"]) as recording:
        pid = wait_until("the program starts", recording.program_pid)
        hand = Hand(pid, arguments.seed, log)
        wait_until("a window comes up", hand.windows)
        settle(hand.windows())
        deadline = time.monotonic() + arguments.seconds
        count = 0
        while time.monotonic() < deadline and count < arguments.actions and recording.process.poll() is None:
            if hand.act():
                count += 1
            elif time.monotonic() - hand.last > 20:
                break
            else:
                time.sleep(0.2)
        xdotool("mousemove", 1279, 899)
        ended = recording.process.poll() is not None
        if not ended:
            time.sleep(1)
            settle(hand.windows())
            for window in filter(is_on_screen, hand.windows()):
                picture = directory / f"recorded{len(pictures)}.png"
                window.save_picture(picture)
                pictures[picture.name] = window.geometry()
            recording.interrupt()
        shutil.copy(recording.script_file, directory / "session.js")
        (directory / "recording.log").write_text(recording.messages())
        text = recording.text()
    print(f"{count} actions: " + ", ".join(f"{n} {name}" for name, n in sorted(hand.done.items())))
    return text, pictures, ended


def picture_checks(directory, pictures):
    """Statements that hold the windows of those places against the pictures."""
    for window in json.loads((directory / "recorded.json").read_text())["windows"]:
        geometry = window["geometry"]
        place = tuple(round(geometry[key]) for key in ("x", "y", "width", "height"))
        for file, seen in pictures.items():
            if window["visible"] and seen == place:
                name = json.dumps(window["name"])
                yield f"test.compareImage({name}, {json.dumps(str(directory / file))}, {{tolerance: 8, pixels: 200}});"


def replay(arguments, directory, script, checks):
    """Replays it; gives the exit code and what the tool said."""
    file = directory / "replay.js"
    # Pointers are out of the way at the end of both.
    file.write_text(script + "snooze(2);\n" + "\n".join(checks) + "\n")
    xdotool("mousemove", 1279, 899)
    run = subprocess.run(
        [VANTLE, "replay", "--timeout", str(arguments.timeout), "--tree", directory / "replayed.json",
         "--junit", directory / "replay.xml", file, "--", *arguments.program],
        env=settings(directory, "replayed"),
        stdout=subprocess.PIPE,
        stderr=subprocess.STDOUT,
        text=True,
        check=False,
    )
    (directory / "replay.log").write_text(run.stdout)
    return run.returncode, run.stdout


def report_failure(script, output):
    """Which statement failed, and why."""
    found = re.search(r"^failed: .*?:(\d+):\d+\n((?:  .*\n)*)", output, re.MULTILINE)
    if not found:
        print(output[-2000:])
        return
    lines = script.splitlines()
    number = int(found.group(1))
    before = sum(1 for line in lines[: number - 1] if STATEMENT.match(line))
    total = sum(1 for line in lines if STATEMENT.match(line))
    print(f"the replay failed at statement {before + 1} of {total}:")
    print(found.group(2).rstrip())


def report_names(script):
    statements = [line for line in script.splitlines() if STATEMENT.match(line)]
    nth = [line for line in statements if NTH.search(line)]
    names = {}
    for line in nth:
        name = re.sub(r":nth\(\d+\)", ":nth", line.split(":visible")[0].split("(", 1)[1])
        names[name] = names.get(name, 0) + 1
    share = 100 * len(nth) / len(statements) if statements else 0
    print(f"{len(statements)} statements, {len(nth)} with :nth ({share:.1f} %)")
    for name, count in sorted(names.items(), key=lambda entry: -entry[1])[:8]:
        print(f"  {count} {name}")


def compare(directory):
    """Prints what differs between the objects of both; whether nothing does."""
    recorded, replayed = state(directory / "recorded.json"), state(directory / "replayed.json")
    different = [name for name in recorded if not is_same(recorded[name], replayed.get(name))]
    extra = [name for name in replayed if name not in recorded]
    print(f"{len(recorded)} objects when recorded, {len(replayed)} when replayed; {len(different) + len(extra)} differ")
    for name in different[:5]:
        print(f"  {name}: {recorded[name]} was recorded, {replayed.get(name, 'nothing')} replayed")
    for name in extra[:5]:
        print(f"  {name}: only in the replay")
    return not different and not extra


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--seconds", type=float, default=600, help="how long the session may last (600)")
    parser.add_argument("--actions", type=int, default=10**9, help="how many actions it may have")
    parser.add_argument("--timeout", type=int, default=10, help="--timeout of the replay (10)")
    parser.add_argument("--output", help="folder for script, pictures and logs; otherwise a temporary one")
    parser.add_argument("program", nargs="+")
    arguments = parser.parse_args()
    directory = Path(arguments.output or tempfile.mkdtemp(prefix="random-session-")).resolve()
    shutil.rmtree(directory, ignore_errors=True)
    directory.mkdir(parents=True)
    print(f"seed {arguments.seed}, in {directory}", flush=True)

    script, pictures, ended = record(arguments, directory)
    report_names(script)
    sys.stdout.flush()
    checks = [] if ended else list(picture_checks(directory, pictures))
    began = time.monotonic()
    status, output = replay(arguments, directory, script, checks)
    print(f"the replay took {time.monotonic() - began:.0f} s and gave {status}; {len(checks)} pictures compared")
    if ended:
        print("the program ended during the session")
        raise SystemExit(status)
    if status != 0:
        report_failure(script, output)
        raise SystemExit(1)
    print("the pictures are the same" if checks else "no window was on the screen as a whole")
    raise SystemExit(0 if compare(directory) else 1)


if __name__ == "__main__":
    main()
