"""A Windows of its own for a test: a Wine prefix with a display, and what administrators and print paths do there."""
import functools
import os
import pathlib
import subprocess
import sys

import made

TEMPLATE = made.ROOT / "build" / "wine-template"
STORIES = pathlib.Path(__file__).parent / "stories"
SECONDS = 300


def on_windows(test):
    """Runs the body of a test within a prefix that nobody else uses: once more in another process, which
    with-wine.sh starts."""
    @functools.wraps(test)
    def outside(self):
        if os.environ.get("BEAMLINE_TEST") == self.id():
            test(self)
            return
        module, case, name = self.id().rsplit(".", 2)
        done = subprocess.run(
            ["sh", made.ROOT / "tools/wine/with-wine.sh", TEMPLATE, sys.executable, "-m", "unittest",
             f"{module}.{case}.{name}"], cwd=pathlib.Path(__file__).parent, stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, timeout=SECONDS,
            env={**os.environ, "BEAMLINE_TEST": self.id(), "LC_ALL": "C.UTF-8", "WINEDEBUG": "-all"})
        if done.returncode != 0:
            self.fail(done.stdout[-6000:])
    return outside


def drive():
    return pathlib.Path(os.environ["WINEPREFIX"]) / "drive_c"


def program_files():
    return drive() / "Program Files"


def product():
    return program_files() / "QV" / "QV Beamline K7400 MFP Series"


def windows_path(path):
    return "Z:" + str(path).replace("/", "\\")


def wine(*command):
    return subprocess.run(["wine", *command], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, text=True, errors="replace", timeout=SECONDS)


def msiexec(action, package, *properties):
    """The exit code of msiexec without windows. Wine passes on its lowest byte only, so 1603 is 67."""
    return wine("msiexec", action, windows_path(package), "/qn", *properties).returncode


def restart():
    """Ends all programs and starts Windows again, which then replaces the files that were in use."""
    subprocess.run(["wineserver", "-k"], check=False)
    subprocess.run(["wineserver", "-w"], check=True)
    assert wine("wineboot").returncode == 0


def registry(key):
    """The values below a key and its keys, {(key, name): value}."""
    found, within = {}, key
    for line in wine("reg", "query", key, "/s").stdout.splitlines():
        line = line.strip()
        if line.startswith("HKEY_"):
            within = line
        elif "    " in line:
            name, _, value = (line.split("    ") + ["", ""])[:3]
            found[within, name] = value
    return found


def entries():
    """What "Apps" lists: a dictionary for each entry that has the monitor's name."""
    listed = {}
    uninstall = r"HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall"
    for (key, name), value in registry(uninstall).items():
        listed.setdefault(key, {})[name] = value
    return [entry for entry in listed.values() if entry.get("DisplayName") == "Beamline K7400 status monitor"]


def settings():
    return {name: value for (_, name), value in registry(r"HKLM\SOFTWARE\Corvane\QVBL7400 SM").items()}


class Story:
    """printpath playing a story with a monitor. Used with `with`, it is ended at the end."""

    def __init__(self, tools, monitor, story):
        self._lines = []
        self._process = subprocess.Popen(
            ["wine", tools / "printpath.exe", "--clean", "--monitor", windows_path(monitor),
             windows_path(STORIES / f"{story}.txt")],
            stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, errors="replace")

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._process.kill()
        self._process.communicate()

    def wait_for(self, text):
        for line in self._process.stdout:
            self._lines.append(line)
            if text in line:
                return
        raise AssertionError(f"The story never said \"{text}\":\n" + "".join(self._lines))

    def go_on(self):
        """Lets the story go on that waits for the administrator, and checks that it ends well."""
        done = wine("reg", "add", r"HKLM\Software\Administrator", "/v", "Work", "/d", "done", "/f")
        assert done.returncode == 0, done.stdout
        self.ends_well()

    def ends_well(self):
        self._lines += self._process.stdout
        if self._process.wait(SECONDS) != 0:
            raise AssertionError("The story did not go as it should:\n" + "".join(self._lines))
