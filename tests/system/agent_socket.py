"""What comes over the socket between tool and agent, or to it, and must neither
hurt the program nor take the tool's or the agent's place."""

import errno
import json
import os
import re
import socket
import tempfile
import time
import unittest
from pathlib import Path

from agentclient import AgentError, Program
from vantlesystem import LIMIT, Recording, wait_until, xdotool

WORKBENCH = os.path.join(os.environ["VANTLE_EXAMPLES"], "workbench")
MEBIBYTE = 1024 * 1024
MESSAGE_LIMIT = 64 * MEBIBYTE
PARSE_ERROR, INVALID_REQUEST, NO_METHOD, INVALID_PARAMS = -32700, -32600, -32601, -32602

# A number, a text, a list, an object: what none of these fields takes is among them.
WRONG_VALUES = (-1, 1.5, 1e300, 2**32 + 1, "", "x", [], [None], {}, {"object": {}}, True, None)
FIELDS = {
    "find": ("name", "timeout", "ready"),
    "children": ("object", "name"),
    "describe": ("object", "name"),
    "properties": ("object", "name", "names"),
    "setProperty": ("object", "name", "property", "value"),
    "invoke": ("object", "name", "method", "arguments"),
    "call": ("function", "arguments", "timeout"),
    "grab": ("object", "name"),
    "settle": ("timeout",),
    "release": ("objects",),
}


def status(process, label):
    """A number in kB of what the system says about a process."""
    text = Path(f"/proc/{process}/status").read_text()
    return int(re.search(rf"^{label}:\s+(\d+)", text, re.MULTILINE).group(1))


def processor_time(process):
    fields = Path(f"/proc/{process}/stat").read_text().rpartition(")")[2].split()
    return int(fields[11]) + int(fields[12])


def wait_until_idle(process):
    """Until two looks with a rest between them find no processor time spent."""
    last = [None]

    def rests():
        time.sleep(0.1)
        seen = processor_time(process)
        idle = seen == last[0]
        last[0] = seen
        return idle

    wait_until("the program comes to rest", rests)


class HostileTool(unittest.TestCase):
    """The agent's end: what calls itself the tool breaks every rule."""

    def setUp(self):
        # A sanitizer keeps what was freed, which would count as memory; the
        # driver that draws otherwise leaks a little.
        options = os.environ.get("ASAN_OPTIONS", "") + ":quarantine_size_mb=1"
        self.program = Program(WORKBENCH, environment={"ASAN_OPTIONS": options, "QT_QUICK_BACKEND": "software"})
        self.addCleanup(self.program.__exit__)
        self.assertTrue(self.program.ask("settle", timeout=10000)["settled"])

    def send_line(self, line):
        self.program.connection.sendall(line + b"\n")

    def error_code(self):
        message = self.program.receive()
        self.assertIn("error", message)
        return message["error"]["code"]

    def assert_answers(self):
        self.assertIs(self.program.ask("ping")["playing"], False)
        self.assertEqual(len(self.program.ask("children")["objects"]), 1)

    def assert_runs_on_alone(self):
        """The program rests, and closes as a user closes it: nothing is left of the agent but silence."""
        process = self.program.process
        wait_until_idle(process.pid)
        self.assertIsNone(process.poll())
        window = xdotool("search", "--onlyvisible", "--pid", process.pid).split()[0]
        # What has the focus takes the key as a user's: openbox closes the window by it.
        xdotool("windowactivate", "--sync", window, "key", "alt+F4")
        self.assertEqual(process.wait(LIMIT), 0)

    def hang_up(self):
        # The stream holds the same socket open.
        self.program.connection.shutdown(socket.SHUT_RDWR)

    def test_messages_without_sense_are_answered_with_errors(self):
        lines = {
            b"garbage": PARSE_ERROR,
            bytes(range(256)).replace(b"\n", b""): PARSE_ERROR,
            b"[" * 100_000: PARSE_ERROR,
            b'{"a":' * 100_000: PARSE_ERROR,
            b'{"jsonrpc":"2.0","id":1,"method":"\xff\xfe"}': PARSE_ERROR,
            b"\xed\xa0\x80": PARSE_ERROR,
            b"[]": INVALID_REQUEST,
            b'{"jsonrpc":"2.0","id":1,"method":"fly"}': NO_METHOD,
            b'{"jsonrpc":"2.0","id":1,"method":"call","params":[]}': INVALID_PARAMS,
        }
        for line, code in lines.items():
            with self.subTest(line=line[:40]):
                self.send_line(line)
                self.assertEqual(self.error_code(), code)
        self.assert_answers()

    def test_wrong_values_are_answered_for_every_field_of_every_request(self):
        target = {"name": self.program.ask("children")["objects"][0]["name"]}
        for method, fields in FIELDS.items():
            for field in fields:
                for value in WRONG_VALUES:
                    with self.subTest(method=method, field=field, value=value):
                        params = {"timeout": 0} if "timeout" in fields else {}
                        if "object" in fields and field not in target:
                            params.update(target)
                        params[field] = value
                        try:
                            self.assertIsInstance(self.program.answer(self.program.post(method, **params)), dict)
                        except AgentError as error:
                            self.assertIn(error.code, (INVALID_PARAMS, -32010, -32011, -32012, -32013), str(error))
        self.assert_answers()

    def test_half_a_message_keeps_nobody_waiting_but_its_sender(self):
        self.program.connection.sendall(b'{"jsonrpc":"2.0","id":7,')
        wait_until_idle(self.program.process.pid)
        self.send_line(b'"method":"ping"}')
        self.assertEqual(self.program.receive()["id"], 7)
        self.program.connection.sendall(b'{"jsonrpc":')
        self.hang_up()
        self.assert_runs_on_alone()

    def test_a_message_of_a_gibibyte_ends_the_connection_and_takes_no_such_memory(self):
        process = self.program.process.pid
        before = status(process, "VmHWM")
        sent = 0
        with self.assertRaises(OSError):
            # To who counts lengths in front of messages, four gibibytes; to the agent, a line without end.
            self.program.connection.sendall(b"\xff\xff\xff\xff")
            while sent < 1024 * MEBIBYTE:
                self.program.connection.sendall(b"x" * MEBIBYTE)
                sent += MEBIBYTE
        self.assertLess(sent, MESSAGE_LIMIT + 8 * MEBIBYTE)
        answer = self.program.receive()
        self.assertEqual(answer["error"]["code"], INVALID_REQUEST)
        self.assertIn(str(MESSAGE_LIMIT), answer["error"]["message"])
        with self.assertRaises((EOFError, ConnectionError)):
            self.program.receive()
        self.assertLess(status(process, "VmHWM") - before, 4 * MESSAGE_LIMIT // 1024)
        self.assert_runs_on_alone()

    def test_who_sends_on_without_reading_answers_is_cut_off(self):
        process = self.program.process.pid
        before = status(process, "VmHWM")
        # The answer repeats the name of the method.
        request = json.dumps({"jsonrpc": "2.0", "id": 1, "method": "x" * MEBIBYTE}).encode()
        with self.assertRaises(OSError):
            for _ in range(4 * MESSAGE_LIMIT // MEBIBYTE):
                self.send_line(request)
        self.assertLess(status(process, "VmHWM") - before, 2 * MESSAGE_LIMIT // 1024)
        self.assert_runs_on_alone()

    def test_who_leaves_without_having_read_any_answer_leaves_the_program_at_rest(self):
        request = json.dumps({"jsonrpc": "2.0", "id": 1, "method": "x" * MEBIBYTE}).encode()
        for _ in range(MESSAGE_LIMIT // MEBIBYTE + 4):
            self.send_line(request)
        wait_until_idle(self.program.process.pid)
        self.hang_up()
        self.assert_runs_on_alone()

    def test_disconnecting_in_the_middle_of_a_wait(self):
        self.program.post("find", name="Never", timeout=600000)
        self.program.post("call", function="mouseClick", arguments=["Never"], timeout=600000)
        self.program.post("settle", timeout=600000)
        self.hang_up()
        self.assert_runs_on_alone()

    def test_disconnecting_in_the_middle_of_a_large_answer(self):
        self.program.post("grab")
        self.program.post("tree")
        self.program.post("roundTrip")
        self.program.connection.recv(1)
        self.hang_up()
        self.assert_runs_on_alone()

    def test_disconnecting_in_the_middle_of_input(self):
        name = self.program.ask("children")["objects"][0]["name"]
        self.program.post("call", function="type", arguments=[name, "x" * 2000])
        self.hang_up()
        self.assert_runs_on_alone()

    def test_nobody_else_gets_at_the_agent(self):
        """It listens nowhere, and what the program starts inherits no connection."""
        listening = {line.split()[6] for line in Path("/proc/net/unix").read_text().splitlines() if " 00010000 " in line}
        sockets = 0
        for file in Path(f"/proc/{self.program.process.pid}/fd").iterdir():
            match = re.fullmatch(r"socket:\[(\d+)\]", os.readlink(file))
            if not match:
                continue
            sockets += 1
            self.assertNotIn(match.group(1), listening)
            flags = re.search(r"flags:\s+(\d+)", Path(str(file).replace("/fd/", "/fdinfo/")).read_text()).group(1)
            self.assertTrue(int(flags, 8) & os.O_CLOEXEC, file)
        self.assertGreater(sockets, 0)


class HostileCallers(unittest.TestCase):
    """The tool's end, while it records: one recording outlasts all of them."""

    @classmethod
    def setUpClass(cls):
        runtime = tempfile.TemporaryDirectory()
        cls.addClassCleanup(runtime.cleanup)
        # Anybody may enter what surrounds the tool's own directory.
        os.chmod(runtime.name, 0o755)
        cls.recording = Recording(WORKBENCH, environment={"XDG_RUNTIME_DIR": runtime.name})
        cls.addClassCleanup(cls.recording.__exit__)
        cls.window = cls.recording.window("Workbench")
        (cls.path,) = map(str, Path(runtime.name).glob("vantle-*/agent"))

    def call(self):
        caller = socket.socket(socket.AF_UNIX)
        self.addCleanup(caller.close)
        # With a limit it would fail where the queue is full, instead of waiting.
        caller.connect(self.path)
        caller.settimeout(LIMIT)
        return caller

    def answer_to(self, data):
        """Everything that the tool answers, up to its end of the connection."""
        caller = self.call()
        caller.sendall(data)
        answer = b""
        while block := caller.recv(4096):
            answer += block
        return answer

    def assert_still_records(self):
        # A click on the window's own ground; it is recorded once no second one can follow.
        count = len(self.recording.statements())
        self.window.click(3, 3)
        self.recording.wait_for_statements(count + 1)

    def test_only_the_user_may_enter(self):
        self.assertEqual(os.stat(os.path.dirname(self.path)).st_mode & 0o777, 0o700)
        self.assertEqual(os.stat(self.path).st_mode & 0o077, 0)

    @unittest.skipUnless(os.geteuid() == 0, "only root can become another user")
    def test_another_user_is_refused_by_the_system(self):
        # Not even when the directory stands open: the socket has its own lock.
        for mode in (0o700, 0o755):
            os.chmod(os.path.dirname(self.path), mode)
            self.assertEqual(self.error_of_another_user(), errno.EACCES)
        os.chmod(os.path.dirname(self.path), 0o700)
        self.assert_still_records()

    def error_of_another_user(self):
        """What the system says to another user who connects; 0 if it lets them in."""
        child = os.fork()
        if child == 0:
            result = 1
            try:
                os.setgroups([])
                os.setgid(65534)
                os.setuid(65534)
                with socket.socket(socket.AF_UNIX) as caller:
                    result = caller.connect_ex(self.path)
            finally:
                os._exit(result)
        return os.waitstatus_to_exitcode(os.waitpid(child, 0)[1])

    def test_strangers_are_sent_away_and_the_recording_goes_on(self):
        cases = (
            b"garbage\n",
            b"[" * 50000 + b"\n",
            b'{"jsonrpc":"2.0","id":1,"method":"hello"}\n',
            b'{"jsonrpc":"2.0","id":1,"method":"stopRecording"}\n',
            b'{"jsonrpc":"2.0","method":"statement","params":{}}\n',
        )
        for case in cases:
            with self.subTest(case=case[:40]):
                self.assertLess(len(self.answer_to(case)), 1000)
        self.assert_still_records()

    def test_two_at_once_and_thousands_in_a_row(self):
        self.call()
        half = self.call()
        half.sendall(b'{"jsonrpc":')
        for _ in range(2000):
            with socket.socket(socket.AF_UNIX) as caller:
                caller.connect(self.path)
        self.assert_still_records()

    def test_who_sends_without_end_is_cut_off(self):
        process = self.recording.process.pid
        before = status(process, "VmHWM")
        caller = self.call()
        with self.assertRaises(OSError):
            for _ in range(1024):
                caller.sendall(b"x" * MEBIBYTE)
        self.assertLess(status(process, "VmHWM") - before, 16 * 1024)
        self.assert_still_records()


if __name__ == "__main__":
    unittest.main()
