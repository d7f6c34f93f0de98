"""The tables of the package. Debian has no program that checks packages, so the rules stand here."""
import re
import subprocess
import unittest

import made
import differences  # made has set the path

PARTS = differences.package_parts(made.PACKAGE.read_bytes())
VERSIONED = ["QVK7400SM.exe", "QVK7400SMs.dll"]
SIXTY_FOUR_BITS = 0x100
SOURCE = (made.ROOT / "tools/release/product.wxs").read_text()


def table(name):
    """Rows as dictionaries. The first lines have the columns, their types, and the table's name and keys."""
    columns, _, _, *rows = PARTS[f"table {name}"].decode().split("\r\n")
    return [dict(zip(columns.split("\t"), row.split("\t"))) for row in rows if row]


PROPERTIES = {row["Property"]: row["Value"] for row in table("Property")}


class Package(unittest.TestCase):
    def test_it_is_for_all_users_of_a_64_bit_system(self):
        self.assertEqual(PROPERTIES["ALLUSERS"], "1")
        self.assertIn(b"x64;1033", PARTS["summary"])

    def test_its_entry_has_version_publisher_and_icon_and_no_modify_button(self):
        self.assertEqual(PROPERTIES["ProductName"], "Beamline K7400 status monitor")
        self.assertEqual(PROPERTIES["ProductVersion"], made.VERSION)
        self.assertEqual(PROPERTIES["Manufacturer"], "Corvane")
        self.assertEqual(PROPERTIES["ARPNOMODIFY"], "1")
        self.assertEqual(PROPERTIES["ARPPRODUCTICON"], "product.ico")
        self.assertEqual([row["Name"] for row in table("Icon")], ["product.ico"])

    def test_a_running_monitor_is_not_closed(self):
        self.assertEqual(PROPERTIES["MSIRESTARTMANAGERCONTROL"], "DisableShutdown")

    def test_programs_have_their_version_and_no_hash(self):
        versions = {row["File"]: row["Version"] for row in table("File")}
        hashed = {row["File_"] for row in table("MsiFileHash")}
        for name in VERSIONED:
            self.assertEqual(versions[name], f"{made.VERSION}.0")
        others = set(versions) - set(VERSIONED)
        self.assertTrue(others)
        self.assertEqual({versions[name] for name in others}, {""})
        self.assertEqual(hashed, others)

    def test_components_have_the_identities_of_the_source(self):
        components = {row["Component"]: row["ComponentId"].strip("{}").lower() for row in table("Component")}
        self.assertEqual(components, dict(re.findall(r'<Component Id="(\w+)" Guid="([0-9a-f-]+)"', SOURCE)))
        self.assertEqual(len(set(components.values())), len(components))

    def test_each_file_and_value_is_the_key_of_a_64_bit_component(self):
        keys = [row["KeyPath"] for row in table("Component") if row["Component"] != "QvFolderOnly"]
        self.assertEqual(sorted(keys), sorted([row["File"] for row in table("File")]
                                              + [row["Registry"] for row in table("Registry")]))
        for row in table("Component"):
            self.assertTrue(int(row["Attributes"]) & SIXTY_FOUR_BITS, row["Component"])

    def test_settings_are_written_only_if_they_are_given(self):
        conditions = {row["Component"]: row["Condition"] for row in table("Component") if row["Condition"]}
        self.assertEqual(conditions, {"WebSiteSetting": "WEBSITE", "ValidationSiteSetting": "VALIDATIONSITE"})

    def test_settings_reach_the_part_that_runs_as_administrator(self):
        secure = PROPERTIES["SecureCustomProperties"].split(";")
        found = [row["ActionProperty"] for row in table("Upgrade")]
        self.assertEqual(sorted(secure), sorted(["WEBSITE", "VALIDATIONSITE", *found]))

    def test_older_versions_are_replaced_and_newer_ones_refused(self):
        rows = sorted((row["VersionMin"], row["VersionMax"]) for row in table("Upgrade"))
        self.assertEqual(rows, [("", made.VERSION), (made.VERSION, "")])
        refusals = [row["Description"] for row in table("LaunchCondition")]
        self.assertTrue(any(text.startswith("A newer version of [ProductName] is installed") for text in refusals))

    def test_a_failed_upgrade_brings_the_old_version_back(self):
        numbers = {row["Action"]: int(row["Sequence"]) for row in table("InstallExecuteSequence")}
        self.assertEqual(numbers["RemoveExistingProducts"], numbers["InstallInitialize"] + 1)

    def test_no_two_actions_have_one_number(self):
        for sequence in ("InstallExecuteSequence", "InstallUISequence"):
            numbers = [row["Sequence"] for row in table(sequence)]
            self.assertEqual(len(set(numbers)), len(numbers), sequence)

    def test_what_the_command_line_gives_is_kept_over_the_search(self):
        for sequence in ("InstallExecuteSequence", "InstallUISequence"):
            numbers = {row["Action"]: int(row["Sequence"]) for row in table(sequence)}
            for setting in ("WebSite", "ValidationSite"):
                self.assertLess(numbers[f"Keep{setting}"], numbers["AppSearch"])
                self.assertLess(numbers["AppSearch"], numbers[f"Take{setting}"])

    def test_it_runs_no_program(self):
        types = {int(row["Type"]) & 0x3F for row in table("CustomAction")}
        self.assertEqual(types, {51})  # sets a property

    def test_its_files_are_those_of_the_archive(self):
        archive = made.unpacked("monitor")
        names = {row["FileName"].split("|")[-1] for row in table("File")}
        self.assertEqual(names, {file.name for file in archive.iterdir()})
        ids = {row["File"]: row["FileName"].split("|")[-1] for row in table("File")}
        for identifier, name in ids.items():
            part = next(content for part, content in PARTS.items() if part.endswith(f" file {identifier}"))
            self.assertEqual(part, (archive / name).read_bytes(), name)


class Pages(unittest.TestCase):
    def test_administrators_read_of_this_version_and_of_an_update_to_the_next(self):
        major, minor, patch = map(int, made.VERSION.split("."))
        page = (made.ROOT / "docs/deployment.md").read_text()
        self.assertEqual(set(re.findall(r"\b\d+\.\d+\.\d+\b", page)), {made.VERSION, f"{major}.{minor}.{patch + 1}"})


class Sums(unittest.TestCase):
    def test_the_checksums_are_of_every_other_file(self):
        done = subprocess.run(["sha256sum", "--check", "--strict", "--quiet", "SHA256SUMS"], cwd=made.OUT,
                              capture_output=True, text=True)
        self.assertEqual((done.returncode, done.stdout), (0, ""))
        named = {line.split("  ")[1] for line in (made.OUT / "SHA256SUMS").read_text().splitlines()}
        self.assertEqual(named, {file.name for file in made.OUT.iterdir()} - {"SHA256SUMS"})


if __name__ == "__main__":
    unittest.main()
