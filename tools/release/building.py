"""Builds the product from a copy of the sources and collects what a release holds of it."""
import os
import pathlib
import re
import shutil
import subprocess

ROOT = pathlib.Path(__file__).resolve().parents[2]
BUILD = "build/release"  # of the preset, below the copy of the sources
STRIP = "x86_64-w64-mingw32-strip"
PROGRAMS = ["QVK7400SM.exe", "QVK7400SMs.dll"]
TOOLS = ["printpath.exe", "recorder/recorder.exe", "simulated-device/rtqewsi.dll",
         "simulated-spooler/winspool.drv"]


def git(*arguments):
    return subprocess.run(["git", "-C", ROOT, *arguments], check=True, capture_output=True, text=True).stdout


def commit_time():
    """Seconds since 1970. It stands for "now" in every file, so that it does not matter when they are made."""
    return int(os.environ.get("SOURCE_DATE_EPOCH") or git("log", "-1", "--format=%ct"))


def uncommitted_changes():
    return git("status", "--porcelain").splitlines()


def copy_sources(folder):
    """Copies what git knows and what it does not ignore: never a file of an earlier build."""
    folder.mkdir(parents=True)
    names = git("ls-files", "-z", "--cached", "--others", "--exclude-standard").split("\0")
    for name in sorted(filter(None, names)):
        source, copy = ROOT / name, folder / name
        if source.is_file():  # git also lists one that was removed and not committed
            copy.parent.mkdir(parents=True, exist_ok=True)
            shutil.copyfile(source, copy)
            if os.access(source, os.X_OK):
                copy.chmod(copy.stat().st_mode | 0o100)


def build(folder):
    subprocess.run(["sh", "tools/build-quietly.sh", "release", "printpath_programs"], cwd=folder, check=True,
                   stdin=subprocess.DEVNULL)


def version(folder):
    cache = (folder / BUILD / "CMakeCache.txt").read_text()
    return re.search(r"^CMAKE_PROJECT_VERSION:STATIC=(.+)$", cache, re.MULTILINE).group(1)


def stage(folder, out):
    """Copies the files of a release from the build in `folder` to `out`: a folder for each archive, and
    beside them what the package needs."""
    binaries = folder / BUILD / "bin"
    for name in PROGRAMS:
        copy(binaries / name, out / "product" / name)
    for place in ("product", "tools"):
        licence = (folder / "LICENSE").read_text()
        (out / place).mkdir(parents=True, exist_ok=True)
        (out / place / "LICENSE.txt").write_text(licence, newline="\r\n")  # for the editors of old systems
    copy(binaries / "QVK7400SM.exe.debug", out / "symbols" / "QVK7400SM.exe.debug")
    for name in TOOLS:
        copy(binaries / name, out / "tools" / name)
        subprocess.run([STRIP, "-p", "--strip-all", out / "tools" / name], check=True)
    shutil.copytree(binaries / "simulated-device" / "pages", out / "tools" / "simulated-device" / "pages")
    shutil.copytree(folder / "scenarios", out / "tools" / "scenarios")
    copy(folder / "docs" / "scenarios.md", out / "tools" / "scenarios.md")
    copy(folder / BUILD / "ui" / "pictures" / "program.ico", out / "program.ico")
    copy(folder / "CHANGELOG.md", out / "CHANGELOG.md")
    (out / "version").write_text(version(folder) + "\n")


def copy(source, target):
    target.parent.mkdir(parents=True, exist_ok=True)
    shutil.copyfile(source, target)
