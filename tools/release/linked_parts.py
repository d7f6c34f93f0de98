"""Says what is linked into the programs: an SPDX list of parts, and the notices that their licences ask for.

The linker's maps name every object that went into a program. Debian's packages say which version that is, and
their copyright files, which licence it has. An object that cannot be told ends the release.
"""
import collections
import fnmatch
import json
import pathlib
import re
import subprocess
import time

NOTICES = "THIRD-PARTY-NOTICES.txt"
SBOM = "sbom.spdx.json"

DOCUMENTATION = pathlib.Path("/usr/share/doc")
COMPILER = "gcc-mingw-w64"  # the names of Debian's source packages
RUN_TIME = "mingw-w64"
COMPILER_LICENCE = "GPL-3.0-or-later WITH GCC-exception-3.1"
# The licences of the run-time library's objects, as Debian's copyright file names them: SPDX's names.
LICENCES = {"ZPL-2.1": "ZPL-2.1", "public-domain": "LicenseRef-public-domain", "Lucent": "LicenseRef-Lucent",
            "David-Gay": "LicenseRef-David-Gay", "Keith-Marshall": "LicenseRef-Keith-Marshall"}
# The copyright file names some sources by their folder only. These objects come from them.
FOLDERS = {
    "mingw-w64-crt/crt/*": r"libmingw32\.a\(.*|(dll)?crt2u?\.o",
    "mingw-w64-crt/gdtoa/*": r"libmingwex\.a\((d|g|s)?misc|libmingwex\.a\((gdtoa|gethex|hd_init|hexnan|strto\w+|sum|ulp"
                             r"|g_\w+|g__fmt|arithchk|qnan)\b",
}
# What makes the programs without becoming a part of them.
BUILD_TOOLS = ["binutils-mingw-w64-x86-64", "cmake", "faketime", "g++-mingw-w64-x86-64-win32", "gettext", "icoutils",
               "imagemagick", "librsvg2-bin", "msitools", "ninja-build", "python3", "python3-pefile",
               "python3-polib", "wixl"]

Package = collections.namedtuple("Package", "name version source")
Paragraph = collections.namedtuple("Paragraph", "patterns copyright licence text")


def describe(build, stage, epoch):
    """Writes NOTICES and SBOM to `stage` for the programs that were built in the folder `build`."""
    version = (stage / "version").read_text().strip()
    packages = linked_packages(build)
    licences = run_time_licences(packages)
    notices = notices_text(version, packages, licences)
    (stage / NOTICES).write_text(notices, newline="\r\n")  # so that the editors of old systems show the lines
    sbom = bill_of_materials(version, packages, licences, epoch)
    (stage / SBOM).write_text(json.dumps(sbom, indent=2) + "\n")


def linked_packages(build):
    """The Debian packages that objects come from, each with the names of these objects."""
    packages = collections.defaultdict(set)
    owners = {}
    for file, member in sorted(linked_objects(build)):
        if file not in owners:
            owners[file] = package_of(file)
        packages[owners[file]].add(f"{file.name}({member})" if member else file.name)
    return dict(packages)


def linked_objects(build):
    """Every file outside the build that a map names, and the member of it that was linked in."""
    for link_map in sorted(build.glob("*.map")):
        text = link_map.read_text(errors="replace")
        for archive, member in re.findall(r"^(/\S+\.a)\((\S+?)\.o\)$", text.split("\nMemory Configuration")[0],
                                          re.MULTILINE):
            yield pathlib.Path(archive).resolve(), member
        for file in re.findall(r"^LOAD (/\S+\.o)$", text, re.MULTILINE):
            yield pathlib.Path(file).resolve(), ""


def package_of(file):
    owner = subprocess.run(["dpkg", "-S", file], capture_output=True, text=True)
    if owner.returncode != 0:
        raise SystemExit(f"{file} is linked in and belongs to no package: nobody knows its licence.")
    package = installed(owner.stdout.split(":")[0])
    if package.source not in (COMPILER, RUN_TIME):
        raise SystemExit(f"{file} is linked in and comes from {package.name}: tools/release/linked_parts.py must "
                         "learn its licence.")
    return package


def installed(name):
    line = subprocess.run(["dpkg-query", "-W", "-f", "${Package} ${Version} ${source:Package}", name], check=True,
                          capture_output=True, text=True).stdout
    return Package(*line.split())


def run_time_licences(packages):
    """The paragraphs of the copyright file that speak of the linked objects of the run-time library."""
    used = []
    for package, objects in packages.items():
        if package.source == RUN_TIME:
            paragraphs = copyright_paragraphs(package)
            for name in sorted(objects):
                used += [paragraph for paragraph in paragraphs_of(name, paragraphs) if paragraph not in used]
    return used


def copyright_paragraphs(package):
    """The paragraphs of Debian's machine-readable copyright file that speak of the library's sources."""
    text = (DOCUMENTATION / package.name / "copyright").read_text()
    found = []
    for block in re.split(r"\n\n+", text):
        fields = dict(re.findall(r"^(\w[\w-]*):[ \t]*(.*(?:\n[ \t].*)*)", block, re.MULTILINE))
        patterns = [name for name in fields.get("Files", "").split()
                    if name == "*" or name.startswith("mingw-w64-crt/")]
        if patterns:
            licence, _, terms = fields["License"].partition("\n")
            found.append(Paragraph(patterns, fields["Copyright"], licence.strip(), terms))
    if not found or found[0].patterns != ["*"]:
        raise SystemExit(f"The copyright file of {package.name} is not as tools/release/linked_parts.py reads it.")
    return found


def paragraphs_of(name, paragraphs):
    """Those that may speak of an object such as libmingwex.a(lib64_libmingwex_a-misc). An archive does not say
    the folder of a source, so more than one may match; a notice too many does no harm."""
    name = re.sub(r"\(lib64_lib\w+-", "(", name)
    source = re.sub(r".*\(|\)|\.o$", "", name) + ".c"
    found, certain = [], False
    for paragraph in paragraphs[1:]:
        matching = [pattern for pattern in paragraph.patterns if matches(pattern, name, source)]
        if matching and paragraph.licence not in LICENCES:
            raise SystemExit(f"{name} is linked in, and its licence is {paragraph.licence}: "
                             "tools/release/linked_parts.py must learn what it asks for.")
        if matching:
            found.append(paragraph)
        certain = certain or any(pattern in FOLDERS or pattern.endswith(f"/{source}") for pattern in matching)
    return found if certain else [*found, paragraphs[0]]


def matches(pattern, name, source):
    if pattern in FOLDERS:
        return re.match(FOLDERS[pattern], name)
    return not pattern.endswith("/*") and fnmatch.fnmatchcase(source, pattern.rpartition("/")[2])


def plain(terms):
    """The text of a field, of which each line begins with a blank and an empty line is a dot."""
    return "\n".join("" if line.strip() == "." else line.strip() for line in terms.splitlines()).strip()


def exception_text(package):
    text = (DOCUMENTATION / package.name / "copyright").read_text()
    part = re.search(r"^GCC RUNTIME LIBRARY EXCEPTION\n.*?by the copyleft\s+requirements of the\s+license of GCC\.$",
                     text, re.MULTILINE | re.DOTALL)
    if not part:
        raise SystemExit(f"The copyright file of {package.name} does not hold the run-time library exception.")
    return part.group()


def notices_text(version, packages, licences):
    compilers = sorted(package for package in packages if package.source == COMPILER)
    run_times = sorted(package for package in packages if package.source == RUN_TIME)
    parts = [f"Beamline K7400 status monitor {version}: notices about the software of others\n\n"
             "The programs contain parts of two free run-time libraries. The licence of the monitor itself is in "
             "LICENSE.txt.\n"]
    parts.append(heading("Run-time libraries of the GNU compiler") + listing(compilers) +
                 "Copyright (C) Free Software Foundation, Inc. These parts are under the GNU General Public License, "
                 "version 3 or later,\nwith the exception below, which allows them to be a part of any program.\n\n"
                 + exception_text(compilers[0]) + "\n")
    parts.append(heading("Run-time library of mingw-w64") + listing(run_times))
    for paragraph in licences:
        parts.append(f"--- {paragraph.licence}\n\nCopyright: " + plain(paragraph.copyright) + "\n\n"
                     + (plain(paragraph.text) or "These parts are in the public domain.") + "\n")
    return "\n".join(parts)


def heading(text):
    return f"{'=' * 72}\n{text}\n{'=' * 72}\n"


def listing(packages):
    return "".join(f"{package.name} {package.version}\n" for package in packages) + "\n"


def bill_of_materials(version, packages, licences, epoch):
    name = f"beamline-k7400-monitor-{version}-x64"
    run_time_licence = " AND ".join(sorted(LICENCES[licence] for licence in {one.licence for one in licences}))
    listed = [spdx_package("Monitor", "Beamline K7400 status monitor", version, "MIT")]
    relationships = [relationship("DOCUMENT", "DESCRIBES", "Monitor")]
    for package in sorted(packages):
        licence = COMPILER_LICENCE if package.source == COMPILER else run_time_licence
        listed.append(spdx_package(f"linked-{package.name}", package.name, package.version, licence))
        relationships.append(relationship("Monitor", "STATIC_LINK", f"linked-{package.name}"))
    for tool in map(installed, BUILD_TOOLS):
        listed.append(spdx_package(f"tool-{tool.name}", tool.name, tool.version, "NOASSERTION"))
        relationships.append(relationship(f"tool-{tool.name}", "BUILD_TOOL_OF", "Monitor"))
    return {
        "spdxVersion": "SPDX-2.3", "dataLicense": "CC0-1.0", "SPDXID": "SPDXRef-DOCUMENT", "name": name,
        "documentNamespace": f"https://www.corvane.example/spdx/{name}",
        "creationInfo": {"created": time.strftime("%Y-%m-%dT%H:%M:%SZ", time.gmtime(epoch)),
                         "creators": ["Organization: Corvane", f"Tool: release-{version}"]},
        "packages": listed, "relationships": relationships,
        "hasExtractedLicensingInfos": [
            {"licenseId": LICENCES[one.licence], "name": one.licence,
             "extractedText": plain(one.text) or "These files are in the public domain."}
            for one in licences if LICENCES[one.licence].startswith("LicenseRef-")],
    }


def spdx_package(identifier, name, version, licence):
    return {"SPDXID": spdx_id(identifier), "name": name, "versionInfo": version, "downloadLocation": "NOASSERTION",
            "filesAnalyzed": False, "licenseConcluded": licence, "licenseDeclared": licence,
            "copyrightText": "NOASSERTION"}


def relationship(element, kind, other):
    return {"spdxElementId": spdx_id(element), "relationshipType": kind, "relatedSpdxElement": spdx_id(other)}


def spdx_id(name):
    """SPDX allows letters, digits, dots and hyphens in identifiers."""
    return "SPDXRef-" + re.sub(r"[^A-Za-z0-9.-]", "-", name)
