"""The list of what is linked in, and the notices."""
import json
import pathlib
import re
import subprocess
import unittest

import license_expression
import made
import building
import linked_parts

SBOM = json.loads(made.file("monitor", "spdx.json").read_text())
PACKAGES = {package["SPDXID"]: package for package in SBOM["packages"]}
NOTICES = (made.OUT / "THIRD-PARTY-NOTICES.txt").read_text()
RUN_TIME = linked_parts.installed("mingw-w64-x86-64-dev")


def related(kind):
    return [(one["spdxElementId"], one["relatedSpdxElement"]) for one in SBOM["relationships"]
            if one["relationshipType"] == kind]


def programs_of_the_build():
    """The programs in the commands of the build, but for those that it has built itself."""
    folder = made.FIRST / "source" / building.BUILD
    commands = subprocess.run(["ninja", "-C", folder, "-t", "commands", "printpath_programs"], check=True,
                              capture_output=True, text=True).stdout
    return {word for word in re.findall(r"/[^\s;=]*/s?bin/[^\s;]+", commands)
            if not pathlib.Path(word).is_relative_to(made.FIRST)}


def owner(program):
    """The package of a program, which may be a choice among alternatives, or "no package"."""
    for path in (pathlib.Path(program), pathlib.Path(program).resolve()):
        found = subprocess.run(["dpkg", "-S", path], capture_output=True, text=True)
        if found.returncode == 0:
            return found.stdout.split(":")[0]
    return "no package"


def field(package, name):
    return subprocess.run(["dpkg-query", "-W", "-f", f"${{{name}}} ", package], check=True, capture_output=True,
                          text=True).stdout


class BillOfMaterials(unittest.TestCase):
    def test_it_describes_the_monitor_in_its_version(self):
        self.assertEqual(SBOM["spdxVersion"], "SPDX-2.3")
        self.assertEqual(SBOM["dataLicense"], "CC0-1.0")
        self.assertRegex(SBOM["creationInfo"]["created"], r"^\d{4}-\d\d-\d\dT\d\d:\d\d:\d\dZ$")
        (document, monitor), = related("DESCRIBES")
        self.assertEqual(document, "SPDXRef-DOCUMENT")
        self.assertEqual(PACKAGES[monitor]["versionInfo"], made.VERSION)

    def test_it_has_all_that_readers_of_spdx_ask_for(self):
        for member in ("name", "documentNamespace"):
            self.assertTrue(SBOM[member], member)
        for creator in SBOM["creationInfo"]["creators"]:
            self.assertRegex(creator, "^(Organization|Tool): .")
        for package in SBOM["packages"]:
            for member in ("name", "SPDXID", "versionInfo", "downloadLocation", "licenseConcluded", "copyrightText"):
                self.assertTrue(package[member], f"{member} of {package['SPDXID']}")
            # True, which holds where it is not said, would ask for a checksum of the package's files.
            self.assertIs(package["filesAnalyzed"], False, package["SPDXID"])
        self.assertEqual({one["relationshipType"] for one in SBOM["relationships"]},
                         {"DESCRIBES", "STATIC_LINK", "BUILD_TOOL_OF"})

    def test_it_names_the_run_time_libraries_and_their_versions(self):
        linked = {PACKAGES[other]["name"]: PACKAGES[other] for _, other in related("STATIC_LINK")}
        self.assertLessEqual({"g++-mingw-w64-x86-64-win32", "mingw-w64-x86-64-dev"}, set(linked))
        for name, package in linked.items():
            self.assertEqual(package["versionInfo"], linked_parts.installed(name).version)

    def test_it_names_every_program_that_the_build_has_started(self):
        tools = {PACKAGES[tool]["name"] for tool, _ in related("BUILD_TOOL_OF")}
        parts_of_tools = "".join(field(name, "Depends") + field(name, "Pre-Depends") for name in tools)
        programs = programs_of_the_build()
        self.assertIn("/usr/bin/x86_64-w64-mingw32-g++-win32", programs)
        for program in programs:
            package = owner(program)
            self.assertTrue(package in tools or package in re.findall(r"[\w.+-]+", parts_of_tools),
                            f"{program} of {package}")

    def test_every_relationship_has_two_ends(self):
        for one in SBOM["relationships"]:
            for end in (one["spdxElementId"], one["relatedSpdxElement"]):
                self.assertIn(end, [*PACKAGES, "SPDXRef-DOCUMENT"])
        self.assertEqual(len(PACKAGES), len(SBOM["packages"]), "two packages have one identifier")
        for identifier in PACKAGES:
            self.assertRegex(identifier, r"^SPDXRef-[A-Za-z0-9.-]+$")

    def test_its_licences_are_spdx_or_come_with_their_texts(self):
        own = {info["licenseId"]: info["extractedText"] for info in SBOM["hasExtractedLicensingInfos"]}
        self.assertEqual(len(own), len(SBOM["hasExtractedLicensingInfos"]), "two texts for one licence")
        self.assertTrue(all(own.values()))
        spdx = license_expression.get_spdx_licensing()
        for package in PACKAGES.values():
            if package["licenseDeclared"] != "NOASSERTION":
                unknown = set(spdx.validate(package["licenseDeclared"]).invalid_symbols)
                self.assertLessEqual(unknown, set(own))
        undeclared = [package["SPDXID"] for package in PACKAGES.values()
                      if package["licenseDeclared"] == "NOASSERTION"]
        self.assertTrue(all(identifier.startswith("SPDXRef-tool-") for identifier in undeclared))


class Notices(unittest.TestCase):
    def test_they_hold_the_texts_that_the_licences_ask_for(self):
        text = " ".join(NOTICES.split())
        for words in ("GCC RUNTIME LIBRARY EXCEPTION Version 3.1", "by the copyleft requirements of the license of GCC",
                      "2009-2016 the mingw-w64 project", "Redistributions in binary form must reproduce",
                      "1997-2001 Lucent Technologies", "LUCENT DISCLAIMS ALL WARRANTIES",
                      "David M. Gay", "THE AUTHOR DISCLAIMS ALL WARRANTIES", "Keith Marshall", "public domain"):
            self.assertIn(words, text)

    def test_they_name_each_linked_package_in_its_version(self):
        for _, other in related("STATIC_LINK"):
            self.assertIn(f"{PACKAGES[other]['name']} {PACKAGES[other]['versionInfo']}", NOTICES)

    def test_they_are_in_both_archives_and_beside_them(self):
        for kind in ("monitor", "tools"):
            self.assertEqual((made.unpacked(kind) / "THIRD-PARTY-NOTICES.txt").read_text(), NOTICES)


class UnknownParts(unittest.TestCase):
    """What nobody has looked at ends the release."""

    def test_an_object_of_another_licence_is_refused(self):
        paragraphs = linked_parts.copyright_paragraphs(RUN_TIME)
        with self.assertRaisesRegex(SystemExit, r"libmingwex\.a\(getopt\) is linked in, and its licence is BSD-2"):
            linked_parts.paragraphs_of("libmingwex.a(getopt)", paragraphs)

    def test_an_object_that_is_in_no_paragraph_has_the_licence_of_the_whole(self):
        paragraphs = linked_parts.copyright_paragraphs(RUN_TIME)
        found, = linked_parts.paragraphs_of("libmingwex.a(lib64_libmingwex_a-btowc)", paragraphs)
        self.assertEqual(found.licence, "ZPL-2.1")

    def test_each_object_gets_its_licences(self):
        paragraphs = linked_parts.copyright_paragraphs(RUN_TIME)
        for name, licences in (("libmingwex.a(lib64_libmingwex_a-misc)", {"Lucent"}),
                               ("libmingwex.a(lib64_libmingwex_a-strtodnrp)", {"Lucent", "David-Gay"}),
                               ("libmingwex.a(lib64_libmingwex_a-mingw_pformat)", {"Lucent", "Keith-Marshall"}),
                               ("libmingw32.a(lib64_libmingw32_a-pesect)", {"public-domain"}),
                               ("crt2.o", {"public-domain"})):
            found = linked_parts.paragraphs_of(name, paragraphs)
            self.assertLessEqual(licences, {paragraph.licence for paragraph in found}, name)

    def test_an_object_of_no_package_is_refused(self):
        with self.assertRaisesRegex(SystemExit, "belongs to no package"):
            linked_parts.package_of(pathlib.Path(__file__))

    def test_an_object_of_another_package_is_refused(self):
        with self.assertRaisesRegex(SystemExit, "must learn its licence"):
            linked_parts.package_of(pathlib.Path("/usr/bin/cmake"))


if __name__ == "__main__":
    unittest.main()
