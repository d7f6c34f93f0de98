"""Signing, with a certificate that is made on the spot."""
import hashlib
import pathlib
import subprocess
import tempfile
import unittest
import zipfile

import made
import building
import differences
import make_release
import signing

EPOCH = 1_700_000_000
PASSWORD = "with a blank and ü"


def run(*command):
    return subprocess.run(command, capture_output=True, text=True)


class Signing(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        keeper = tempfile.TemporaryDirectory()
        cls.addClassCleanup(keeper.cleanup)
        cls.folder = pathlib.Path(keeper.name)
        cls.certificate, cls.file = cls.folder / "cert.pem", cls.folder / "test.p12"
        cls.password = cls.folder / "password"
        cls.password.write_text(PASSWORD + "\n")
        key = cls.folder / "key.pem"
        for command in (
                ["openssl", "req", "-x509", "-newkey", "rsa:3072", "-sha256", "-days", "30", "-nodes",
                 "-subj", "/CN=Test signer/O=Corvane", "-addext", "keyUsage=critical,digitalSignature",
                 "-addext", "extendedKeyUsage=codeSigning", "-keyout", key, "-out", cls.certificate],
                ["openssl", "pkcs12", "-export", "-inkey", key, "-in", cls.certificate,
                 "-passout", f"file:{cls.password}", "-out", cls.file]):
            subprocess.run(command, check=True, capture_output=True)
        cls.signed, cls.unsigned = cls.folder / "signed", cls.folder / "unsigned"
        make_release.package(made.STAGE, cls.signed, EPOCH, cls.signer())
        make_release.package(made.STAGE, cls.unsigned, EPOCH)
        cls.parts = differences.package_parts((cls.signed / made.PACKAGE.name).read_bytes())

    @classmethod
    def signer(cls, **options):
        return signing.Signer(cls.file, cls.password, EPOCH, **options)

    def verified(self, content):
        file = self.folder / "verified"
        file.write_bytes(content)
        return run("osslsigncode", "verify", "-CAfile", self.certificate, "-in", file)

    def installed(self, name):
        return next(content for part, content in self.parts.items() if part.endswith(f" file {name}"))

    def test_the_package_and_the_programs_in_it_are_signed(self):
        for content in ((self.signed / made.PACKAGE.name).read_bytes(), *map(self.installed, building.PROGRAMS)):
            done = self.verified(content)
            self.assertEqual(done.returncode, 0, done.stdout)
            self.assertIn("CN=Test signer", done.stdout.replace(" = ", "="))
            self.assertIn("Beamline K7400 status monitor", done.stdout)
            self.assertIn("https://www.corvane.example/k7400", done.stdout)
            self.assertIn("SHA256", done.stdout)

    def test_the_names_and_sizes_in_the_package_are_signed_too(self):
        done = self.verified((self.signed / made.PACKAGE.name).read_bytes())
        self.assertNotIn("MsiDigitalSignatureEx stream doesn't exist", done.stdout + done.stderr)

    def test_the_tools_are_signed_but_not_the_libraries_that_stand_for_others(self):
        with zipfile.ZipFile(next(self.signed.glob("*-tools-*.zip"))) as archive:
            signed = {name: self.verified(archive.read(name)).returncode == 0 for name in archive.namelist()
                      if name.endswith((".exe", ".dll", ".drv"))}
        self.assertEqual(signed, {"printpath.exe": True, "recorder/recorder.exe": True,
                                  "simulated-device/rtqewsi.dll": False, "simulated-spooler/winspool.drv": False})

    def test_the_archive_holds_the_signed_files_of_the_package(self):
        with zipfile.ZipFile(next(self.signed.glob("*-monitor-*.zip"))) as archive:
            for name in building.PROGRAMS:
                self.assertEqual(archive.read(name), self.installed(name), name)

    def test_a_changed_byte_is_found(self):
        content = bytearray(self.installed("QVK7400SM.exe"))
        content[5000] ^= 1
        self.assertNotEqual(self.verified(bytes(content)).returncode, 0)

    def test_without_a_certificate_nothing_is_signed(self):
        self.assertNotEqual(self.verified((self.unsigned / made.PACKAGE.name).read_bytes()).returncode, 0)

    def test_the_notes_say_whether_the_files_are_signed(self):
        self.assertIn("The package and all programs are signed.", (self.signed / "release-notes.md").read_text())
        self.assertIn("The files are not signed.", (self.unsigned / "release-notes.md").read_text())

    def test_who_has_no_key_can_check_what_was_signed(self):
        self.assertEqual((self.signed / "SHA256SUMS.unsigned").read_text(),
                         (self.unsigned / "SHA256SUMS").read_text())

    def test_the_checksums_are_of_the_signed_files(self):
        digest = hashlib.sha256((self.signed / made.PACKAGE.name).read_bytes()).hexdigest()
        self.assertIn(f"{digest}  {made.PACKAGE.name}\n", (self.signed / "SHA256SUMS").read_text())

    def test_signing_twice_gives_the_same_bytes(self):
        again = self.folder / "again"
        make_release.package(made.STAGE, again, EPOCH, self.signer())
        self.assertEqual(differences.between(self.signed, again), [])

    def test_a_wrong_password_is_told_at_once(self):
        wrong = self.folder / "wrong"
        wrong.write_text("wrong\n")
        with self.assertRaisesRegex(SystemExit, "test.p12 cannot be read"):
            signing.Signer(self.file, wrong, EPOCH)

    def test_a_time_stamp_server_that_does_not_answer_ends_the_release(self):
        signer = self.signer(timestamp_server="http://127.0.0.1:9/")
        file = self.folder / "program.exe"
        file.write_bytes((made.STAGE / "product" / "QVK7400SM.exe").read_bytes())
        with self.assertRaisesRegex(SystemExit, "program.exe cannot be signed"):
            signer.sign(file)


if __name__ == "__main__":
    unittest.main()
