"""The release that `./release --check` has left in build/, for the tests of its files. BEAMLINE_RELEASE names
another folder with one."""
import os
import pathlib
import sys
import tempfile
import zipfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tools" / "release"))

FIRST = pathlib.Path(os.environ.get("BEAMLINE_RELEASE", ROOT / "build" / "release-work" / "first"))
STAGE, OUT = FIRST / "stage", FIRST / "out"
VERSION = (STAGE / "version").read_text().strip()


def file(kind, ending):
    return OUT / f"beamline-k7400-{kind}-{VERSION}-x64.{ending}"


PACKAGE = file("monitor", "msi")


def unpacked(kind, folder=None):
    """The folder of what a ZIP of the release holds, by default a temporary one that goes with the process."""
    if folder is None:
        keeper = tempfile.TemporaryDirectory()
        _keepers.append(keeper)
        folder = pathlib.Path(keeper.name)
    with zipfile.ZipFile(file(kind, "zip")) as archive:
        archive.extractall(folder)
    return folder


_keepers = []
