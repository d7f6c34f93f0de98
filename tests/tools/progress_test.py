#!/usr/bin/env python3
"""What tools/progress.py shows on a terminal, keeps out of a log, and tells about a command's end."""
import os
import pathlib
import pty
import subprocess
import sys
import tempfile
import unittest

from print_each_case import run

PROGRAM = pathlib.Path(__file__).resolve().parents[2] / "tools" / "progress.py"
NINJA = "printf '[1/12] a\\n[7/12] b\\n'; sleep 1"
CTEST = "printf '      Start 1: a\\n 3/80 Test  #3: a ....   Passed    0.1 sec\\n'; sleep 1"


class Progress(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.log = os.path.join(self.folder.name, "log")

    def command(self, *command):
        return [sys.executable, str(PROGRAM), "building it", self.log, *command]

    def shown_on_terminal(self, script, through_pipe=False):
        """What a terminal gets while the script runs, on standard output or on a descriptor of its own."""
        ours, theirs = pty.openpty()
        environment = {**os.environ, **({"BEAMLINE_PROGRESS_FD": str(theirs)} if through_pipe else {})}
        ran = subprocess.run(self.command("sh", "-c", script), check=True, env=environment,
                             stdout=subprocess.PIPE if through_pipe else theirs, pass_fds=(theirs,))
        os.write(theirs, b"end")
        os.close(theirs)
        shown = b""
        while not shown.endswith(b"end"):
            shown += os.read(ours, 65536)
        os.close(ours)
        self.assertFalse(ran.stdout)
        return shown.decode().removesuffix("end")

    def test_a_terminal_shows_the_steps_that_are_built(self):
        self.assertIn("building it: 7 of 12, 0:0", self.shown_on_terminal(NINJA))

    def test_a_terminal_shows_the_tests_that_are_done(self):
        self.assertIn("building it: 3 of 80, 0:0", self.shown_on_terminal(CTEST))

    def test_a_terminal_behind_a_pipe_is_reached_by_its_descriptor(self):
        self.assertIn("building it: 7 of 12, 0:0", self.shown_on_terminal(NINJA, through_pipe=True))

    def test_the_line_is_gone_at_the_end(self):
        self.assertTrue(self.shown_on_terminal(NINJA).endswith("\r\033[K"))

    def test_a_log_gets_nothing_of_it(self):
        ran = subprocess.run(self.command("sh", "-c", NINJA), capture_output=True, text=True, check=True)
        self.assertEqual((ran.stdout, ran.stderr), ("", ""))

    def test_the_output_of_the_command_is_added_to_its_log(self):
        for word in ("one", "two"):
            subprocess.run(self.command("echo", word), check=True)
        with open(self.log, encoding="utf-8") as log:
            self.assertEqual(log.read(), "one\ntwo\n")

    def test_the_exit_code_is_that_of_the_command(self):
        self.assertEqual(subprocess.run(self.command("sh", "-c", "exit 3"), check=False).returncode, 3)

    def test_a_command_that_was_killed_has_failed(self):
        killed = self.command("sh", "-c", "kill -9 $$")
        self.assertEqual(subprocess.run(killed, check=False).returncode, 128 + 9)

    def test_a_missing_command_has_failed(self):
        self.assertEqual(subprocess.run(self.command("/no/such/program"), check=False).returncode, 127)


if __name__ == "__main__":
    os.environ.pop("BEAMLINE_PROGRESS_FD", None)  # of a ./test that runs us
    sys.exit(run(sys.modules[__name__]))
