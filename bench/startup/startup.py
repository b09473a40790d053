#!/usr/bin/env python3
"""What the agent costs a real program at start: time until its window shows,
processor time and resident memory once it has settled, with and without the
agent, in turn, in one run. To be run with scripts/with-display."""

import argparse
import json
import os
import socket
import statistics
import subprocess
import sys
import tempfile
import threading
import time
from pathlib import Path

TOKEN = "benchmark"


class Tool:
    """Stands in for the tool: answers the agent's hello and takes what comes."""

    def __init__(self):
        self.directory = tempfile.TemporaryDirectory()
        self.path = os.path.join(self.directory.name, "tool")
        self.socket = socket.socket(socket.AF_UNIX)
        self.socket.bind(self.path)
        self.socket.listen()
        self.greeted = 0
        threading.Thread(target=self.serve, daemon=True).start()

    def serve(self):
        while True:
            connection, _ = self.socket.accept()
            threading.Thread(target=self.talk, args=(connection,), daemon=True).start()

    def talk(self, connection):
        for line in connection.makefile("r"):
            message = json.loads(line)
            if message.get("method") != "hello":
                continue
            result = {"record": True, "debugCompression": 0, "classesWithoutCoordinates": []}
            answer = {"jsonrpc": "2.0", "id": message["id"], "result": result}
            connection.sendall((json.dumps(answer) + "\n").encode())
            self.greeted += 1


def visible_windows(name):
    return subprocess.run(["xdotool", "search", "--onlyvisible", "--name", name], capture_output=True).stdout


def resident_kib(pid):
    for line in Path(f"/proc/{pid}/smaps_rollup").read_text().splitlines():
        if line.startswith("Rss:"):
            return int(line.split()[1])
    raise RuntimeError("no Rss in smaps_rollup")


def processor_seconds(pid):
    fields = Path(f"/proc/{pid}/stat").read_text().rsplit(")", 1)[1].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


def wait_until_idle(pid):
    """Until the program used no processor time for half a second."""
    last, since = processor_seconds(pid), time.monotonic()
    while time.monotonic() - since < 0.5:
        time.sleep(0.05)
        now = processor_seconds(pid)
        if now != last:
            last, since = now, time.monotonic()


def measure(program, title, environment):
    start = time.monotonic()
    process = subprocess.Popen(program, env=environment, stderr=subprocess.DEVNULL)
    try:
        while not visible_windows(title):
            if process.poll() is not None or time.monotonic() - start > 60:
                raise RuntimeError(f"{program[0]} shows no window called {title}")
        shown = time.monotonic() - start
        wait_until_idle(process.pid)
        return shown, processor_seconds(process.pid), resident_kib(process.pid) / 1024
    finally:
        process.kill()
        process.wait()
        while visible_windows(title):
            time.sleep(0.01)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--plugins", required=True, help="directory that holds generic/libvantle.so")
    parser.add_argument("--title", required=True, help="title of the program's window")
    parser.add_argument("--runs", type=int, default=10)
    parser.add_argument("program", nargs="+")
    options = parser.parse_args()

    tool = Tool()
    plain = dict(os.environ)
    watched = {
        **plain,
        "QT_QPA_GENERIC_PLUGINS": "vantle",
        "QT_PLUGIN_PATH": options.plugins,
        "VANTLE_AGENT_SOCKET": tool.path,
        "VANTLE_AGENT_TOKEN": TOKEN,
    }
    measure(options.program, options.title, plain)  # fills the disk cache
    runs = {"without agent": [], "with agent": []}
    for _ in range(options.runs):
        runs["without agent"].append(measure(options.program, options.title, plain))
        runs["with agent"].append(measure(options.program, options.title, watched))
    if tool.greeted != options.runs:
        sys.exit(f"the agent came {tool.greeted} times in {options.runs} runs: nothing was measured")

    medians = {kind: [statistics.median(column) for column in zip(*rows)] for kind, rows in runs.items()}
    print(f"{options.program[0]}, medians of {options.runs} runs each, in turn")
    print(f"{'':16}{'window shows':>14}{'processor time':>16}{'resident':>12}")
    for kind, (shown, cpu, resident) in medians.items():
        print(f"{kind:16}{shown * 1000:>11.0f} ms{cpu * 1000:>13.0f} ms{resident:>8.1f} MiB")
    before, after = medians["without agent"], medians["with agent"]
    shares = [100 * (a - b) / b for a, b in zip(after, before)]
    print(f"{'agent costs':16}{shares[0]:>12.1f} %{shares[1]:>14.1f} %{shares[2]:>10.1f} %")


if __name__ == "__main__":
    main()
