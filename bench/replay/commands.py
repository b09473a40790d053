#!/usr/bin/env python3
"""What one command costs from tool to answer, on scenes of 1,000 and 10,000
items: median and worst of many, and how much of it is the way there and back,
which is what a ping takes. To be run with scripts/with-display, or with
QT_QPA_PLATFORM=offscreen."""

import argparse
import json
import os
import socket
import statistics
import subprocess
import tempfile
import time
from pathlib import Path

TOKEN = "benchmark"
QMLSCENE = "/usr/lib/qt6/bin/qmlscene"

# As many items as asked for, in rows of a hundred; the last is far from the first.
SCENE = """\
import QtQuick
import QtQuick.Controls

Window {
    id: scene
    objectName: "scene"
    width: 600; height: 400; visible: true
    property int clicks: 0

    Repeater {
        model: %d
        Item {
            id: row
            required property int index
            y: 3 * (index %% 100)
            width: 500; height: 3
            Repeater {
                model: 99
                Rectangle {
                    objectName: "cell" + row.index + "_" + index
                    x: 5 * index
                    width: 5; height: 3
                    color: index %% 2 ? "gray" : "silver"
                }
            }
        }
    }
    Button {
        id: last
        objectName: "last"
        x: 10; y: 340
        text: "Last"
        onClicked: ++scene.clicks
    }
}
"""
LAST = '[objectName="scene"] Button#last'


class Tool:
    """Stands in for the tool: greets the agent, then asks one thing at a time."""

    def __init__(self, directory):
        self.path = os.path.join(directory, "tool")
        self.listener = socket.socket(socket.AF_UNIX)
        self.listener.bind(self.path)
        self.listener.listen()
        self.listener.settimeout(120)
        self.next_id = 1000

    def environment(self, plugins, prefix):
        return {
            **os.environ,
            "QT_QPA_GENERIC_PLUGINS": "vantle",
            "QT_PLUGIN_PATH": str(plugins),
            "VANTLE_PREFIX": str(prefix),
            "VANTLE_AGENT_SOCKET": self.path,
            "VANTLE_AGENT_TOKEN": TOKEN,
        }

    def greet(self):
        self.connection, _ = self.listener.accept()
        self.lines = self.connection.makefile("r", encoding="utf-8")
        hello = json.loads(self.lines.readline())
        settings = {"record": False, "debugCompression": 0, "classesWithoutCoordinates": []}
        self.send({"jsonrpc": "2.0", "id": hello["id"], "result": settings})

    def send(self, message):
        self.connection.sendall((json.dumps(message) + "\n").encode())

    def ask(self, method, **params):
        self.next_id += 1
        self.send({"jsonrpc": "2.0", "id": self.next_id, "method": method, "params": params})
        for line in self.lines:
            answer = json.loads(line)
            if answer.get("id") == self.next_id and "method" not in answer:
                if "error" in answer:
                    raise RuntimeError(f"{method}: {answer['error']}")
                return answer["result"]
        raise RuntimeError(f"{method}: the program has gone")


def milliseconds(action, times):
    """How long each of that many calls takes."""
    taken = []
    for _ in range(times):
        start = time.perf_counter()
        action()
        taken.append(1000 * (time.perf_counter() - start))
    return taken


def measure(tool, times):
    """The commands with how long they took, ping first."""
    handle = tool.ask("find", name=LAST, timeout=60000, ready=True)["object"]
    commands = {
        "ping": lambda: tool.ask("ping"),
        "property by handle": lambda: tool.ask("properties", object=handle, names=["text"], named=False),
        "property by name": lambda: tool.ask("properties", name=LAST, names=["text"], named=False),
        "find by name": lambda: tool.ask("find", name=LAST, named=False),
        "name of a handle": lambda: tool.ask("describe", object=handle),
        "click by handle": lambda: tool.ask("call", function="mouseClick", arguments=[{"object": handle}]),
        "click by name": lambda: tool.ask("call", function="mouseClick", arguments=[LAST]),
    }
    results = {}
    for name, command in commands.items():
        milliseconds(command, 3)  # fills the caches
        results[name] = milliseconds(command, times if "click" not in name else max(times // 4, 3))
    clicks = tool.ask("properties", name='[objectName="scene"]', names=["clicks"])["properties"]["clicks"]
    if clicks != sum(3 + len(taken) for name, taken in results.items() if "click" in name):
        raise RuntimeError(f"{clicks} clicks arrived: something else was measured")
    return results


def run(items, plugins, prefix, times):
    with tempfile.TemporaryDirectory() as directory:
        scene = Path(directory) / "scene.qml"
        scene.write_text(SCENE % (items // 100))
        tool = Tool(directory)
        process = subprocess.Popen(
            [QMLSCENE, str(scene)], env=tool.environment(plugins, prefix), stderr=subprocess.DEVNULL
        )
        try:
            tool.greet()
            return measure(tool, times)
        finally:
            process.kill()
            process.wait()


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--plugins", required=True, help="directory that holds generic/libvantle.so")
    parser.add_argument("--prefix", required=True, help="where Vantle is installed, or the build directory")
    parser.add_argument("--times", type=int, default=200)
    parser.add_argument("--items", type=int, nargs="+", default=[1000, 10000])
    options = parser.parse_args()

    for items in options.items:
        results = run(items, options.plugins, options.prefix, options.times)
        ping = statistics.median(results["ping"])
        print(f"{items} items, milliseconds from tool to answer")
        print(f"{'':22}{'median':>9}{'95 %':>9}{'worst':>9}{'transport':>11}{'work':>9}")
        for name, taken in results.items():
            median = statistics.median(taken)
            most = sorted(taken)[int(0.95 * (len(taken) - 1))]
            work = max(median - ping, 0)
            print(f"{name:22}{median:>9.3f}{most:>9.3f}{max(taken):>9.3f}{100 * (1 - work / median):>9.0f} %{work:>9.3f}")


if __name__ == "__main__":
    main()
