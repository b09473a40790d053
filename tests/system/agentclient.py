"""A tool of a few lines: starts a program with the agent inside and talks to it
as docs/protocol.md says."""

import json
import os
import secrets
import socket
import subprocess
import tempfile
from pathlib import Path

from vantlesystem import LIMIT, VANTLE


class AgentError(Exception):
    """What the agent answered in place of a result."""

    def __init__(self, error):
        super().__init__(error["message"])
        self.code = error["code"]
        self.data = error.get("data")


def installation():
    """The prefix of the command and the directory of the agent's plugin."""
    prefix = Path(VANTLE).resolve().parent.parent
    plugins = next(path for path in prefix.glob("lib*/**/vantle/plugins"))
    return prefix, plugins


class Program:
    """A program with the agent inside. `record` is what the tool asks for."""

    def __init__(self, *command, settings=None, environment=None):
        self.directory = tempfile.TemporaryDirectory()
        path = os.path.join(self.directory.name, "s")
        self.server = socket.socket(socket.AF_UNIX)
        self.server.bind(path)
        self.server.listen()
        self.server.settimeout(LIMIT)
        token = secrets.token_hex(32)
        prefix, plugins = installation()
        preloaded = os.environ.get("VANTLE_TEST_PRELOAD")
        self.process = subprocess.Popen(
            command,
            env={
                **os.environ,
                "QT_QPA_GENERIC_PLUGINS": "vantle",
                "QT_PLUGIN_PATH": str(plugins),
                "VANTLE_PREFIX": str(prefix),
                "VANTLE_AGENT_SOCKET": path,
                "VANTLE_AGENT_TOKEN": token,
                **({"LD_PRELOAD": preloaded} if preloaded else {}),
                **(environment or {}),
            },
        )
        self.connection, _ = self.server.accept()
        self.connection.settimeout(10 * LIMIT)
        self.stream = self.connection.makefile("r", encoding="utf-8")
        self.notifications = []
        self.last_id = 0
        hello = self.receive()
        assert hello["method"] == "hello" and hello["params"]["token"] == token, hello
        self.hello = hello["params"]
        result = {"record": False, "debugCompression": 0, "classesWithoutCoordinates": [], **(settings or {})}
        self.send({"id": hello["id"], "result": result})

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.stream.close()
        self.connection.close()
        self.server.close()
        if self.process.poll() is None:
            self.process.kill()
        self.process.wait(LIMIT)
        self.directory.cleanup()

    def send(self, message):
        self.connection.sendall(json.dumps({"jsonrpc": "2.0", **message}).encode() + b"\n")

    def receive(self):
        line = self.stream.readline()
        if not line:
            raise EOFError("the agent is gone")
        return json.loads(line)

    def post(self, method, /, **params):
        """Sends a request and gives its id."""
        self.last_id += 1
        self.send({"id": self.last_id, "method": method, "params": params})
        return self.last_id

    def answer(self, request):
        """The answer to a request; notifications that come before it are kept."""
        while True:
            message = self.receive()
            if "method" in message:
                self.notifications.append(message)
            elif message["id"] == request:
                if "error" in message:
                    raise AgentError(message["error"])
                return message["result"]

    def ask(self, method, /, **params):
        return self.answer(self.post(method, **params))
