"""The package and the archive as administrators and users meet them, each time on a Windows of its own."""
import pathlib
import shutil
import subprocess
import tempfile
import unittest

import made
import msi_package
from windows import Story, entries, msiexec, on_windows, product, program_files, restart, settings, wine

NEXT_VERSION = "1.0.1" if made.VERSION != "1.0.1" else "1.0.2"
EXIT_CODE_FAILED = 1603 & 0xFF
EXIT_CODE_RESTART_NEEDED = 3010 & 0xFF  # a file that was in use goes at the next start of Windows
EPOCH = 1_700_000_000


def names(folder):
    return sorted(file.name for file in folder.iterdir())


class Installation(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def install(self, package=made.PACKAGE, *properties):
        self.assertEqual(msiexec("/i", package, *properties), 0)

    def story(self, name, monitor=None):
        return Story(made.unpacked("tools"), monitor or product() / "QVK7400SM.exe", name)

    def assert_nothing_is_installed(self):
        self.assertFalse((program_files() / "QV").exists())
        self.assertEqual(entries(), [])
        self.assertEqual(settings(), {})

    def next_package(self):
        """The package of a later version: of the same programs, with this version in their resources."""
        files = made.unpacked("monitor")
        for name in ("QVK7400SM.exe", "QVK7400SMs.dll"):
            with_version(files / name, made.VERSION, NEXT_VERSION)
        shutil.copyfile(made.STAGE / "program.ico", self.folder / "program.ico")
        package = self.folder / "next.msi"
        msi_package.make(NEXT_VERSION, EPOCH, [*files.iterdir(), self.folder / "program.ico"], package)
        return package, files

    @on_windows
    def test_it_installs_without_a_question(self):
        self.install()

        archive = made.unpacked("monitor")
        self.assertEqual(names(product()), names(archive))
        for file in archive.iterdir():
            self.assertEqual((product() / file.name).read_bytes(), file.read_bytes(), file.name)
        entry, = entries()
        self.assertEqual(entry["DisplayVersion"], made.VERSION)
        self.assertEqual(entry["Publisher"], "Corvane")
        self.assertEqual(entry["NoModify"], "0x1")
        self.assertEqual(settings(), {})

    @on_windows
    def test_the_print_path_starts_the_installed_monitor(self):
        self.install()
        with self.story("alert") as story:
            story.ends_well()

    @on_windows
    def test_settings_are_written_as_they_are_given(self):
        given = {"WebSite": "https://shop.example/a b?c=1&d=2", "ValidationSite": "https://check.example"}
        self.install(made.PACKAGE, *(f"{name.upper()}={value}" for name, value in given.items()))
        self.assertEqual(settings(), given)

    @on_windows
    def test_removal_leaves_nothing_but_the_users_own_data(self):
        self.install(made.PACKAGE, "WEBSITE=https://shop.example", "VALIDATIONSITE=https://check.example")
        memory = r"HKCU\Software\Corvane\QVBL7400 SM"
        self.assertEqual(wine("reg", "add", memory, "/v", "Remembered", "/d", "cartridge", "/f").returncode, 0)

        self.assertEqual(msiexec("/x", made.PACKAGE), 0)

        self.assert_nothing_is_installed()
        self.assertIn("cartridge", wine("reg", "query", memory).stdout)

    @on_windows
    def test_a_running_monitor_goes_on_when_it_is_removed(self):
        self.install()
        with self.story("alert-stays-open") as story:
            story.wait_for("The administrator may begin")
            self.assertEqual(msiexec("/x", made.PACKAGE), 0)
            self.assertEqual(entries(), [])
            story.go_on()

    @on_windows
    def test_a_new_version_takes_the_place_of_a_running_one(self):
        package, files = self.next_package()
        self.install()
        with self.story("alert-stays-open") as story:
            story.wait_for("The administrator may begin")
            self.assertIn(msiexec("/i", package), (0, EXIT_CODE_RESTART_NEEDED))
            entry, = entries()
            self.assertEqual(entry["DisplayVersion"], NEXT_VERSION)
            story.go_on()

        # Windows moves files that are in use out of the way. Wine puts the new ones in place at the next start.
        restart()

        self.assertEqual(names(product()), names(files))
        for name in names(files):
            self.assertEqual((product() / name).read_bytes(), (files / name).read_bytes(), name)
        with self.story("alert") as story:
            story.ends_well()

    @on_windows
    def test_a_new_version_keeps_the_settings(self):
        package, _ = self.next_package()
        self.install(made.PACKAGE, "WEBSITE=https://shop.example")
        self.install(package)
        self.assertEqual(settings(), {"WebSite": "https://shop.example"})

    @on_windows
    def test_a_new_version_takes_settings_of_its_command_line_first(self):
        package, _ = self.next_package()
        self.install(made.PACKAGE, "WEBSITE=https://shop.example", "VALIDATIONSITE=https://check.example")
        self.install(package, "WEBSITE=https://new.example")
        self.assertEqual(settings(), {"WebSite": "https://new.example", "ValidationSite": "https://check.example"})

    @on_windows
    def test_an_older_version_is_refused(self):
        package, files = self.next_package()
        self.install(package)

        self.assertEqual(msiexec("/i", made.PACKAGE), EXIT_CODE_FAILED)

        entry, = entries()
        self.assertEqual(entry["DisplayVersion"], NEXT_VERSION)
        self.assertEqual((product() / "QVK7400SM.exe").read_bytes(), (files / "QVK7400SM.exe").read_bytes())

    @on_windows
    def test_a_broken_package_is_refused(self):
        whole = made.PACKAGE.read_bytes()
        cabinet = whole.index(b"MSCF")
        changed = bytearray(whole)
        changed[cabinet + 5000] ^= 1
        for name, content in (("cut-off", whole[:len(whole) // 2]), ("changed", bytes(changed)),
                              ("text", b"This is not a package.\n" * 100)):
            with self.subTest(name):
                package = self.folder / f"{name}.msi"
                package.write_bytes(content)
                self.assertNotEqual(msiexec("/i", package), 0)
                self.assert_nothing_is_installed()

    @on_windows
    def test_an_installation_that_fails_leaves_nothing(self):
        package = self.folder / "fails.msi"
        shutil.copyfile(made.PACKAGE, package)
        # The last thing that this package does is a program that fails, when all files are in place.
        run_in_system, folder_of_files = 3106, "INSTALLDIR"
        statements = [
            "INSERT INTO `CustomAction` (`Action`,`Type`,`Source`,`Target`) VALUES "
            f"('Fail',{run_in_system},'{folder_of_files}','cmd.exe /c exit 1')",
            "INSERT INTO `InstallExecuteSequence` (`Action`,`Condition`,`Sequence`) VALUES "
            "('Fail','NOT REMOVE',6500)"]
        subprocess.run(["msibuild", package, "-q", *statements], check=True)

        self.assertNotEqual(msiexec("/i", package, "WEBSITE=https://shop.example"), 0)

        self.assert_nothing_is_installed()


class Archive(unittest.TestCase):
    """The ZIP, unpacked where the monitor may only read."""

    def play_from(self, name):
        with tempfile.TemporaryDirectory() as temporary:
            folder = made.unpacked("monitor", pathlib.Path(temporary) / name)
            before = {file.name: file.stat().st_mtime_ns for file in [folder, *folder.iterdir()]}
            for file in [*folder.iterdir(), folder]:
                file.chmod(0o555)
            with Story(made.unpacked("tools"), folder / "QVK7400SM.exe", "alert") as story:
                story.ends_well()
            # Whoever runs the tests as root may write everywhere, so it is also seen that nothing was written.
            self.assertEqual({file.name: file.stat().st_mtime_ns for file in [folder, *folder.iterdir()]}, before)
            folder.chmod(0o755)

    @on_windows
    def test_it_runs_from_a_folder_that_is_read_only(self):
        self.play_from("monitor")

    @on_windows
    def test_it_runs_from_a_folder_with_blanks_and_letters_of_other_scripts(self):
        self.play_from("Größe – 打印机 мир")


def with_version(program, version, later):
    """Changes the version in the resources of a program: in the numbers and in the texts, of equal length."""
    def numbers(text):
        major, minor, patch = map(int, text.split("."))
        return ((major << 16) + minor).to_bytes(4, "little") + (patch << 16).to_bytes(4, "little")

    content = program.read_bytes()
    for old, new in ((numbers(version), numbers(later)),
                     (f"{version}.0".encode("utf-16-le"), f"{later}.0".encode("utf-16-le"))):
        assert old in content
        content = content.replace(old, new)
    program.write_bytes(content)


if __name__ == "__main__":
    unittest.main()
