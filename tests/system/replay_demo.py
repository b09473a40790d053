"""The demonstration's script does the same every time: recorded once on
Debian's pentobi, it is replayed REPEATS times, three by default."""

import os
import subprocess
import unittest
from pathlib import Path

import pentobidemo
import pentobisession
from vantlesystem import LIMIT, VANTLE, Recording

REPEATS = int(os.environ.get("REPEATS", "3"))


def statements(text):
    return [line for line in text.splitlines() if line and not line.startswith("//")]


class ReplayDemo(unittest.TestCase):
    def test_every_replay_passes_and_records_the_script_again(self):
        with Recording(pentobisession.program()) as recording:
            pentobidemo.play(recording, recording.window(pentobisession.TITLE), say=lambda text: None)
            self.assertEqual(recording.interrupt(), 0, recording.messages())
            first = recording.statements()
            results = [self.replay(recording.script_file) for _ in range(REPEATS)]
        # All of them, so that the message tells how often it went wrong.
        self.assertEqual([second for second, _ in results], REPEATS * [first], "\n".join(out for _, out in results))

    @staticmethod
    def replay(script):
        second = Path(script).with_name("second.js")
        run = subprocess.run(
            [VANTLE, "replay", "--fresh-settings", "--record", second, script, "--", pentobisession.program()],
            capture_output=True,
            text=True,
            timeout=4 * LIMIT,
            check=False,
        )
        output = run.stdout + run.stderr
        return (statements(second.read_text()) if run.returncode == 0 else f"exit code {run.returncode}"), output


if __name__ == "__main__":
    unittest.main()
