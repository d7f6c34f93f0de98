"""What the headers and resources of the programs say, as a user gets them."""
import getpass
import pathlib
import re
import socket
import subprocess
import unittest

import made
import pefile

PRODUCT, TOOLS, SYMBOLS = made.unpacked("monitor"), made.unpacked("tools"), made.unpacked("symbols")
MONITOR, TEXTS = PRODUCT / "QVK7400SM.exe", PRODUCT / "QVK7400SMs.dll"
TOOL_PROGRAMS = [TOOLS / "printpath.exe", TOOLS / "recorder/recorder.exe",
                 TOOLS / "simulated-device/rtqewsi.dll", TOOLS / "simulated-spooler/winspool.drv"]
OPENED = {path: pefile.PE(path) for path in [MONITOR, TEXTS, *TOOL_PROGRAMS]}

HIGH_ENTROPY_ADDRESSES, MOVABLE, DATA_IS_NOT_CODE = 0x20, 0x40, 0x100
RELOCATIONS_STRIPPED = 0x1
EXECUTABLE, WRITABLE = 0x20000000, 0x80000000
FOUR_GIB = 1 << 32
# Libraries of the system that every process has or that the monitor draws, types and keeps settings with. All
# others, those of printers and of the network among them, are loaded when they are needed, from the system's
# folder only.
MONITOR_IMPORTS = {"advapi32.dll", "gdi32.dll", "imm32.dll", "kernel32.dll", "msvcrt.dll", "user32.dll"}


class Programs(unittest.TestCase):
    def test_addresses_are_random_in_64_bits(self):
        for path, program in OPENED.items():
            with self.subTest(path.name):
                flags = HIGH_ENTROPY_ADDRESSES | MOVABLE
                self.assertEqual(program.OPTIONAL_HEADER.DllCharacteristics & flags, flags)
                self.assertGreaterEqual(program.OPTIONAL_HEADER.ImageBase, FOUR_GIB)

    def test_relocations_are_there_for_all_code(self):
        for path, program in OPENED.items():
            with self.subTest(path.name):
                self.assertFalse(program.FILE_HEADER.Characteristics & RELOCATIONS_STRIPPED)
                if path != TEXTS:  # it has texts only, and nothing that could point anywhere
                    self.assertTrue(getattr(program, "DIRECTORY_ENTRY_BASERELOC", []))

    def test_data_is_not_executed(self):
        for path, program in OPENED.items():
            with self.subTest(path.name):
                self.assertTrue(program.OPTIONAL_HEADER.DllCharacteristics & DATA_IS_NOT_CODE)

    def test_no_section_is_writable_and_executable(self):
        for path, program in OPENED.items():
            with self.subTest(path.name):
                for section in program.sections:
                    both = section.Characteristics & (EXECUTABLE | WRITABLE)
                    self.assertNotEqual(both, EXECUTABLE | WRITABLE, section.Name)

    def test_the_texts_have_no_code(self):
        program = OPENED[TEXTS]
        self.assertEqual(program.OPTIONAL_HEADER.AddressOfEntryPoint, 0)
        for section in program.sections:
            if section.Characteristics & EXECUTABLE:  # the linker's two lists of constructors, both empty
                self.assertEqual(section.get_data().rstrip(b"\0"), (b"\xff" * 8 + bytes(8) + b"\xff" * 8))

    def test_the_monitor_imports_allowed_libraries_only(self):
        program = OPENED[MONITOR]
        libraries = {entry.dll.decode().lower() for entry in program.DIRECTORY_ENTRY_IMPORT}
        self.assertEqual(libraries - MONITOR_IMPORTS, set())
        self.assertFalse(hasattr(program, "DIRECTORY_ENTRY_DELAY_IMPORT"))

    def test_the_texts_import_nothing(self):
        program = OPENED[TEXTS]
        self.assertFalse(hasattr(program, "DIRECTORY_ENTRY_IMPORT"))

    def test_the_product_exports_nothing(self):
        for path in (MONITOR, TEXTS):
            with self.subTest(path.name):
                program = OPENED[path]
                exports = getattr(program, "DIRECTORY_ENTRY_EXPORT", None)
                self.assertEqual(exports.symbols if exports else [], [])

    def test_headers_hold_no_time_and_a_right_checksum(self):
        for path, program in OPENED.items():
            with self.subTest(path.name):
                self.assertEqual(program.FILE_HEADER.TimeDateStamp, 0)
                self.assertTrue(program.verify_checksum())

    def test_every_program_says_what_it_is_in_one_version(self):
        descriptions = set()
        for path, program in OPENED.items():
            with self.subTest(path.name):
                fixed = program.VS_FIXEDFILEINFO[0]
                numbers = [fixed.FileVersionMS >> 16, fixed.FileVersionMS & 0xFFFF, fixed.FileVersionLS >> 16,
                           fixed.FileVersionLS & 0xFFFF]
                self.assertEqual(".".join(map(str, numbers)), f"{made.VERSION}.0")
                self.assertEqual((fixed.ProductVersionMS, fixed.ProductVersionLS),
                                 (fixed.FileVersionMS, fixed.FileVersionLS))
                texts = {key.decode(): value.decode() for info in program.FileInfo[0] if info.Key == b"StringFileInfo"
                         for key, value in info.StringTable[0].entries.items()}
                self.assertEqual(texts["FileVersion"], f"{made.VERSION}.0")
                self.assertEqual(texts["ProductVersion"], f"{made.VERSION}.0")
                self.assertEqual(texts["CompanyName"], "Corvane")
                self.assertEqual(texts["ProductName"], "Beamline K7400 status monitor")
                self.assertEqual(texts["OriginalFilename"], path.name)
                self.assertEqual(texts["InternalName"], path.stem)
                self.assertRegex(texts["LegalCopyright"], r"^Copyright \(c\) 20\d\d ")
                descriptions.add(texts["FileDescription"])
        self.assertEqual(len(descriptions), len(OPENED))

    def test_the_manifest_has_the_version(self):
        manifest = re.search(rb"<assembly .*?</assembly>", MONITOR.read_bytes(), re.DOTALL).group().decode()
        identity = re.search(r'<assemblyIdentity [^>]*name="Corvane[^>]*>', manifest).group()
        self.assertIn(f'version="{made.VERSION}.0"', identity)

    def test_the_symbols_belong_to_the_monitor_and_have_lines(self):
        symbols = SYMBOLS / "QVK7400SM.exe.debug"
        self.assertTrue(MONITOR.read_bytes().count(b"QVK7400SM.exe.debug\0"), "the program does not name them")
        names = output("x86_64-w64-mingw32-nm", symbols)
        address = re.search(r"^([0-9a-f]+) T WinMain$", names, re.MULTILINE).group(1)
        self.assertRegex(output("x86_64-w64-mingw32-addr2line", "-e", symbols, address), r"app/win_main\.cpp:\d+")
        self.assertIn("no symbols", output("x86_64-w64-mingw32-nm", MONITOR))


def output(*command):
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True).stdout


class Traces(unittest.TestCase):
    """Nothing in the files tells where and by whom they were made."""

    def assert_none(self, places, folder):
        files = [file for file in folder.rglob("*") if file.is_file()]
        self.assertTrue(files)
        for file in files:
            content = file.read_bytes()
            for place in places:
                for text in (place.encode(), place.encode("utf-16-le")):
                    at = content.find(text)
                    if at >= 0:
                        self.fail(f"{file.name} holds {place}: {content[max(0, at - 40):at + 80]}")

    def test_no_file_names_a_folder_or_the_user_of_the_builder(self):
        user = getpass.getuser()
        places = [str(made.ROOT), f"{pathlib.Path.home()}/", "/home/", "/root/", "/tmp/", f"/{user}/",
                  f"\\{user}\\", f"{user}@{socket.gethostname()}"]
        for folder in (PRODUCT, TOOLS, SYMBOLS, made.OUT):
            self.assert_none(places, folder)

    def test_no_program_names_a_folder_of_the_system_that_built_it(self):
        for folder in (PRODUCT, TOOLS):  # the symbols hold those of the people who built the compiler
            self.assert_none(["/usr/"], folder)


if __name__ == "__main__":
    unittest.main()
