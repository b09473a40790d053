"""Records pentobi, replays the script in a fresh instance, and shows that both
end in the same state: see scripts/demo."""

import json
import os
import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

import pentobidemo
import pentobisession
from vantlesystem import LIMIT, VANTLE, Recording

def say(text):
    print(f"demo: {text}", flush=True)


def facts(node, origin=None):
    """What there is to compare of an object and all below it: places count from the window."""
    geometry = node["geometry"]
    if origin is None:
        origin = (geometry["x"], geometry["y"])
    place = (geometry["x"] - origin[0], geometry["y"] - origin[1], geometry["width"], geometry["height"])
    yield node["name"], (place, node["visible"], node["notReady"])
    for child in node["children"]:
        yield from facts(child, origin)


def state(file):
    windows = json.loads(Path(file).read_text())["windows"]
    return dict(fact for window in windows for fact in facts(window))


def is_same(one, other):
    """Scripts count in whole pixels, so places may be a pixel apart."""
    if one is None or other is None or one[1:] != other[1:]:
        return False
    return all(abs(a - b) <= 1 for a, b in zip(one[0], other[0]))


def differences(recorded, replayed):
    for name in sorted(recorded.keys() | replayed.keys()):
        if not is_same(recorded.get(name), replayed.get(name)):
            yield f"{name}: {recorded.get(name)} was recorded, {replayed.get(name)} replayed"


def record(directory, program, play, options=()):
    """Records what play() does; gives the script."""
    with Recording(program, options=options) as recording:
        play(recording)
        # With --verify that takes a whole replay.
        status = recording.interrupt(5 * LIMIT)
        verdict = [line for line in recording.messages().splitlines() if re.match("vantle: (  |came back|did not)", line)]
        print("\n".join(verdict), flush=True)
        if status != 0:
            raise SystemExit(f"demo: vantle record ended with {status}:\n{recording.messages()}")
        script = recording.text()
    say("the recorded script\n")
    print(script, flush=True)
    return script


def replay(directory, script, program, options=()):
    """Whether the script passed in a fresh instance of the program."""
    file = directory / "session.js"
    file.write_text(script)
    say(f"vantle replay {file.name} -- {Path(program).name}")
    command = [VANTLE, "replay", "--fresh-settings", *options, file, "--", program]
    return subprocess.run(command).returncode == 0


def show_pentobi(directory):
    """A session on a program that is installed; gives whether its replay ends in the same state."""

    def play(recording):
        window = recording.window(pentobisession.TITLE)
        front = pentobidemo.play(recording, window, say)
        front.save_picture(directory / "recorded.png")

    say(f"vantle record --verify -- {pentobisession.PROGRAM}")
    options = ["--verify", "--fresh-settings", "--tree", directory / "recorded.json"]
    script = record(directory, pentobisession.program(), play, options)
    script += "test.compareImage('HelpWindow', 'recorded.png', {tolerance: 8, pixels: 200});\n"
    options = ["--report", directory / "report.html", "--tree", directory / "replayed.json"]
    passed = replay(directory, script, pentobisession.program(), options)
    recorded, replayed = state(directory / "recorded.json"), state(directory / "replayed.json")
    different = list(differences(recorded, replayed))
    for difference in different[:10]:
        say(difference)
    say(f"{len(recorded)} objects when recorded, {len(replayed)} when replayed, {len(different)} of them different")
    say("the picture at the end is the recorded one" if passed else "the replay failed")
    say(f"report: {os.path.relpath(directory / 'report.html')}")
    return passed and not different


def show_flick(directory):
    """A flick in the list of our example program; gives whether the replay moves the list as far."""

    def play(recording):
        window = recording.window("Workbench")
        say("flick the list")
        pentobidemo.drag(window, (60, 400), [(60, 400 - 15 * step) for step in range(1, 11)])
        recording.wait_for_statements(1)

    workbench = os.path.join(os.environ["VANTLE_EXAMPLES"], "workbench")
    say("vantle record -- workbench")
    script = record(directory, workbench, play)
    flick = re.search(r'^flick\((".*"), 0, (\d+)\);$', script, re.MULTILINE)
    if not flick:
        say("no flick was recorded")
        return False
    script += f"test.compare(Math.round(findObject({flick.group(1)}).contentY), {flick.group(2)}, 'place of the list');\n"
    return replay(directory, script, workbench)


def main():
    directory = Path(sys.argv[1] if len(sys.argv) > 1 and sys.argv[1] != "-v" else tempfile.mkdtemp()).resolve()
    shutil.rmtree(directory, ignore_errors=True)
    (directory / "flick").mkdir(parents=True)
    shown = [show_pentobi(directory), show_flick(directory / "flick")]
    raise SystemExit(0 if all(shown) else 1)


if __name__ == "__main__":
    main()
