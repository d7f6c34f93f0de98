"""./release refuses what would not become a release of a commit."""
import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

import made


def release(root, *arguments):
    return subprocess.run(["/usr/bin/python3", root / "tools/release/make_release.py", *arguments], text=True,
                          stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)


class Command(unittest.TestCase):
    def test_changes_that_are_not_committed_are_refused(self):
        with tempfile.TemporaryDirectory() as temporary:
            root = pathlib.Path(temporary)
            shutil.copytree(made.ROOT / "tools" / "release", root / "tools" / "release")
            identity = {f"GIT_{who}_{what}": "tester" for who in ("AUTHOR", "COMMITTER") for what in ("NAME", "EMAIL")}
            for command in (["init", "-q"], ["add", "."], ["commit", "-q", "-m", "first"]):
                subprocess.run(["git", "-C", root, *command], check=True, env={**os.environ, **identity})
            (root / "forgotten.txt").write_text("not committed")

            done = release(root)

        self.assertEqual(done.returncode, 1)
        self.assertIn("forgotten.txt", done.stdout)
        self.assertIn("Commit or remove them first", done.stdout)

    def test_a_password_without_a_certificate_is_refused(self):
        done = release(made.ROOT, "--password-file", "password")
        self.assertEqual(done.returncode, 2)
        self.assertIn("are for --sign", done.stdout)

    def test_a_certificate_that_is_not_there_is_told_before_the_build(self):
        done = release(made.ROOT, "--sign", "missing.p12", "--password-file", "missing")
        self.assertEqual(done.returncode, 1)
        self.assertIn("missing.p12 cannot be read", done.stdout)

    def test_help_says_what_there_is(self):
        done = subprocess.run([made.ROOT / "release", "--help"], capture_output=True, text=True)
        self.assertEqual(done.returncode, 0)
        for option in ("--check", "--sign", "--password-file", "--timestamp-server"):
            self.assertIn(option, done.stdout)


if __name__ == "__main__":
    unittest.main()
