"""How recordings end: whatever happens to the program or to the tool, nothing
that was recorded is lost, and the other one goes on."""

import os
import signal
import unittest

from vantlesystem import Recording, wait_until, xdotool

WORKBENCH = os.path.join(os.environ["VANTLE_EXAMPLES"], "workbench")
COUNT = (60, 25)


def is_running(pid):
    try:
        with open(f"/proc/{pid}/stat") as status:
            return status.read().rsplit(")", 1)[1].split()[0] != "Z"
    except FileNotFoundError:
        return False


class RecordEndings(unittest.TestCase):
    def record_one_click(self):
        recording = Recording(WORKBENCH)
        self.addCleanup(recording.__exit__)
        window = recording.window("Workbench")
        window.click(*COUNT)
        recording.wait_for_statements(1)
        return recording, window

    def test_killed_program_leaves_everything_up_to_then(self):
        recording, _ = self.record_one_click()
        os.kill(recording.program_pid(), signal.SIGKILL)
        self.assertEqual(recording.process.wait(60), 2, recording.messages())
        self.assertEqual(len(recording.statements()), 1)
        self.assertIn("SIGKILL", recording.text().splitlines()[-1])
        self.assertIn("SIGKILL", recording.messages())

    def test_crashed_program_is_told_by_its_signal(self):
        recording, _ = self.record_one_click()
        # Not SIGSEGV, which a sanitizer in the program would make an exit of.
        os.kill(recording.program_pid(), signal.SIGABRT)
        self.assertEqual(recording.process.wait(60), 2, recording.messages())
        self.assertEqual(len(recording.statements()), 1)
        self.assertIn("SIGABRT", recording.messages())

    def test_killed_tool_leaves_the_program_running(self):
        recording, window = self.record_one_click()
        program = recording.program_pid()
        recording.process.kill()
        recording.process.wait(60)
        try:
            before = window.picture()
            window.click(*COUNT)
            wait_until("the program goes on counting clicks", lambda: window.picture() != before)
            self.assertTrue(is_running(program))
        finally:
            os.kill(program, signal.SIGKILL)

    def test_interrupt_keeps_a_click_that_waits_for_its_double(self):
        recording, window = self.record_one_click()
        window.click(*COUNT)
        program = recording.program_pid()
        self.assertEqual(recording.interrupt(), 0, recording.messages())
        self.assertEqual(len(recording.statements()), 2, recording.text())
        wait_until("the program ends with the recording", lambda: not is_running(program))

    def test_closed_window_ends_the_recording(self):
        recording, window = self.record_one_click()
        # By the button in the window manager's frame.
        x, y, width, _ = window.geometry()
        xdotool("mousemove", x + width - 10, y - 10, "click", 1)
        self.assertEqual(recording.process.wait(60), 0, recording.messages())
        self.assertRegex(recording.statements()[-1], r'^closeWindow\("Workbench#workbench"\);$')


if __name__ == "__main__":
    unittest.main()
