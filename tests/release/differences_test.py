"""What ./release --check says about files that differ. Each test plants one difference."""
import io
import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest
import zipfile

import made
import differences
import packing

EPOCH = 1_700_000_000


class Differences(unittest.TestCase):
    def setUp(self):
        keeper = tempfile.TemporaryDirectory()
        self.addCleanup(keeper.cleanup)
        self.first, self.second = pathlib.Path(keeper.name) / "first", pathlib.Path(keeper.name) / "second"
        for folder in (self.first, self.second):
            folder.mkdir()

    def found(self, name, first, second):
        (self.first / name).write_bytes(first)
        (self.second / name).write_bytes(second)
        return differences.between(self.first, self.second)

    def program(self):
        return (made.STAGE / "product" / "QVK7400SM.exe").read_bytes()

    def test_equal_folders_have_none(self):
        self.assertEqual(self.found("monitor.exe", self.program(), self.program()), [])

    def test_a_missing_file_is_named(self):
        (self.first / "notes.txt").write_text("notes")
        self.assertEqual(differences.between(self.first, self.second), ["notes.txt: missing in the second folder"])

    def test_a_text_is_named_with_the_place(self):
        found, = self.found("notes.txt", b"made at 10:00", b"made at 11:00")
        self.assertTrue(found.startswith("notes.txt: first difference at byte 9"), found)

    def test_a_header_of_a_program_is_named_by_its_field(self):
        changed = bytearray(self.program())
        header = int.from_bytes(changed[0x3C:0x40], "little")
        changed[header + 8] ^= 1
        found, = self.found("monitor.exe", self.program(), bytes(changed))
        self.assertIn("monitor.exe: IMAGE_FILE_HEADER  TimeDateStamp", found)

    def test_a_section_of_a_program_is_named(self):
        changed = bytearray(self.program())
        changed[0x1010] ^= 1
        found, = self.found("monitor.exe", self.program(), bytes(changed))
        self.assertTrue(found.startswith("monitor.exe: section .text: first difference at byte 16"), found)

    def test_a_program_in_an_archive_is_named_by_section(self):
        changed = bytearray(self.program())
        changed[0x1010] ^= 1
        found, = self.found("files.zip", self.zip_of(self.program()), self.zip_of(bytes(changed)))
        self.assertTrue(found.startswith("files.zip: monitor.exe: section .text:"), found)

    def test_the_time_of_a_file_in_an_archive_is_named(self):
        found = self.found("files.zip", self.zip_of(b"same"), self.zip_of(b"same", EPOCH + 60))
        self.assertTrue(found[0].startswith("files.zip: monitor.exe in the list: first difference"), found)

    def zip_of(self, content, time=EPOCH):
        folder = pathlib.Path(tempfile.mkdtemp(dir=self.first.parent))
        (folder / "monitor.exe").write_bytes(content)
        packing.zip_folder(folder, folder.with_suffix(".zip"), time)
        return folder.with_suffix(".zip").read_bytes()

    def test_a_row_of_a_package_is_named_by_its_table(self):
        shutil.copyfile(made.PACKAGE, self.second / "changed.msi")
        subprocess.run(["msibuild", self.second / "changed.msi", "-q",
                        "UPDATE `Property` SET `Value`='Somebody' WHERE `Property`='Manufacturer'"], check=True)
        changed = (self.second / "changed.msi").read_bytes()
        (self.second / "changed.msi").unlink()
        found = self.found("monitor.msi", made.PACKAGE.read_bytes(), changed)
        self.assertIn("monitor.msi: table Property: first difference at byte", "".join(found))

    def test_a_package_is_taken_apart_without_a_trace_in_the_current_folder(self):
        before = os.getcwd()
        os.chdir(self.first)
        self.addCleanup(os.chdir, before)
        differences.package_parts(made.PACKAGE.read_bytes())
        self.assertEqual(list(self.first.iterdir()), [])

    def test_a_file_that_cannot_be_taken_apart_is_named(self):
        found, = self.found("files.zip", b"no archive", b"not an archive")
        self.assertTrue(found.startswith("files.zip: cannot be taken apart"), found)

    def test_bytes_that_no_part_shows_are_named(self):
        found, = self.found("files.zip", self.zip_of(b"same"), b"added" + self.zip_of(b"same"))
        self.assertTrue(found.startswith("files.zip: ") and found.endswith("outside its parts"), found)


class Archives(unittest.TestCase):
    def test_modes_and_times_of_files_do_not_matter(self):
        archives = []
        for mode, time in ((0o600, 1_600_000_000), (0o777, 1_650_000_000)):
            with tempfile.TemporaryDirectory() as temporary:
                folder, out = pathlib.Path(temporary) / "files", pathlib.Path(temporary) / "out.zip"
                folder.mkdir()
                (folder / "file.txt").write_text("text")
                (folder / "file.txt").chmod(mode)
                os.utime(folder / "file.txt", (time, time))
                packing.zip_folder(folder, out, EPOCH)
                archives.append(out.read_bytes())
        self.assertEqual(*archives)
        entry, = zipfile.ZipFile(io.BytesIO(archives[0])).infolist()
        self.assertEqual(entry.date_time, (2023, 11, 14, 22, 13, 20))


class ReleaseNotes(unittest.TestCase):
    CHANGELOG = "# Changelog\n\n## 1.1.0\n\n- New.\n\n## 1.0.0 (2026-11-22)\n\n- First.\n\n## 1.0\n\n- Old.\n"

    def test_they_are_cut_from_the_changelog(self):
        self.assertEqual(packing.changes_of("1.1.0", self.CHANGELOG), "- New.")
        self.assertEqual(packing.changes_of("1.0.0", self.CHANGELOG), "- First.")

    def test_a_version_without_changes_ends_the_release(self):
        with self.assertRaisesRegex(SystemExit, '## 1.2.0'):
            packing.changes_of("1.2.0", self.CHANGELOG)

    def test_those_of_this_release_hold_its_changes(self):
        changelog = (made.STAGE / "CHANGELOG.md").read_text()
        notes = (made.OUT / "release-notes.md").read_text()
        self.assertIn(packing.changes_of(made.VERSION, changelog), notes)
        for file in made.OUT.iterdir():
            if file.name != "release-notes.md":
                self.assertIn(f"`{file.name}`", notes)


if __name__ == "__main__":
    unittest.main()
