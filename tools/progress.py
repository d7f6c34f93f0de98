#!/usr/bin/env python3
"""progress.py LABEL LOG COMMAND...: runs a command, adds its output to LOG, and shows on a terminal how
far it is: LABEL, steps done of all (as ninja and ctest print them) and the time so far.

Where standard output is no terminal nothing is shown. A caller whose own output goes through a pipe to a
terminal names the terminal's file descriptor in BEAMLINE_PROGRESS_FD. Ends with the exit code of the
command, 128 and the signal when a signal ended it, 127 when it cannot be started.
"""
import os
import re
import signal
import subprocess
import sys
import time

STEP = re.compile(rb"^(?:\[(\d+)/(\d+)\] | *(\d+)/(\d+) Test +#)", re.MULTILINE)
CLEAR_LINE = "\r\033[K"


def terminal():
    """The file descriptor of the terminal to draw on, or None."""
    try:
        descriptor = int(os.environ.get("BEAMLINE_PROGRESS_FD", "1"))
        return descriptor if os.isatty(descriptor) else None
    except (ValueError, OSError):
        return None


class Display:
    """One line on a terminal, written anew as the log of a command grows."""

    def __init__(self, descriptor, label, log, begin):
        self._descriptor, self._label, self._log = descriptor, label, open(log, "rb")
        self._log.seek(begin)
        self._began, self._steps, self._unfinished_line = time.monotonic(), "", b""

    def update(self):
        lines = (self._unfinished_line + self._log.read()).rpartition(b"\n")
        self._unfinished_line = lines[2]
        for step in STEP.finditer(lines[0]):
            done, total = [int(number) for number in step.groups() if number]
            self._steps = f"{done} of {total}, "
        minutes, seconds = divmod(int(time.monotonic() - self._began), 60)
        text = f"  {self._label}: {self._steps}{minutes}:{seconds:02d}"
        columns = os.get_terminal_size(self._descriptor).columns or 80  # a new terminal may say 0
        self._write(CLEAR_LINE + text[:columns - 1])

    def close(self):
        self._write(CLEAR_LINE)
        self._log.close()

    def _write(self, text):
        os.write(self._descriptor, text.encode())


def run(label, command, log, environment=None):
    """Runs the command and returns its exit code as a shell would."""
    with open(log, "ab") as output:
        begin = output.tell()
        try:
            process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=output,
                                       stderr=subprocess.STDOUT, env=environment)
        except OSError as error:
            output.write(f"{command[0]} cannot be started: {error.strerror}\n".encode())
            return 127
    descriptor = terminal()
    display = Display(descriptor, label, log, begin) if descriptor is not None else None
    try:
        while display and process.poll() is None:
            display.update()
            try:
                process.wait(0.5)
            except subprocess.TimeoutExpired:
                pass
        status = process.wait()
    finally:
        if process.poll() is None:  # we were interrupted: what we started must not stay behind
            process.terminate()
            process.wait()
        if display:
            display.close()
    return status if status >= 0 else 128 - status


def stop(number, _frame):
    sys.exit(128 + number)


if __name__ == "__main__":
    if len(sys.argv) < 4:
        sys.exit(__doc__)
    signal.signal(signal.SIGTERM, stop)
    sys.exit(run(sys.argv[1], sys.argv[3:], sys.argv[2]))
