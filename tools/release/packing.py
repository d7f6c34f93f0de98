"""Archives, checksums and release notes. The same content gives the same bytes."""
import hashlib
import re
import time
import zipfile


def zip_folder(folder, out, epoch):
    """Packs all files below the folder, sorted by name, all with one time and one mode."""
    with zipfile.ZipFile(out, "w", zipfile.ZIP_DEFLATED, compresslevel=9) as archive:
        for file in sorted(folder.rglob("*"), key=lambda file: file.relative_to(folder).as_posix()):
            if file.is_file():
                entry = zipfile.ZipInfo(file.relative_to(folder).as_posix(), time.gmtime(epoch)[:6])
                entry.compress_type = zipfile.ZIP_DEFLATED
                entry.create_system = 3  # the mode is one of Unix
                entry.external_attr = 0o100644 << 16
                archive.writestr(entry, file.read_bytes())


def checksums(folder):
    """The text of SHA256SUMS for the files of the folder; `sha256sum --check` reads it."""
    return "".join(f"{hashlib.sha256(file.read_bytes()).hexdigest()}  {file.name}\n"
                   for file in sorted(folder.iterdir()) if file.name != "SHA256SUMS")


def changes_of(version, changelog):
    """The part of the changelog about the version."""
    part = re.search(rf"^## {re.escape(version)}\b.*?\n(.*?)(?=^## |\Z)", changelog, re.MULTILINE | re.DOTALL)
    if not part:
        raise SystemExit(f"CHANGELOG.md has no heading \"## {version}\": write what is new in this version.")
    return part.group(1).strip()


NOTES = """# Beamline K7400 status monitor {version}

{signed}

| file | what |
|---|---|
| `beamline-k7400-monitor-{version}-x64.msi` | installs the monitor |
| `beamline-k7400-monitor-{version}-x64.zip` | the same files, to unpack anywhere |
| `beamline-k7400-tools-{version}-x64.zip` | `printpath`, the simulated device and spooler, scenarios |
| `beamline-k7400-symbols-{version}-x64.zip` | function names and lines, for a debugger |
| `beamline-k7400-monitor-{version}-x64.spdx.json` | what the programs are made of (SPDX) |
| `THIRD-PARTY-NOTICES.txt` | the licences of what is linked in |
| `SHA256SUMS` | checksums, for `sha256sum --check` |
{more}
{changes}
"""


def release_notes(version, changes, signed):
    if signed:
        text = ("The package and all programs are signed. The simulated libraries in the ZIP of the tools are not: "
                "they stand for those of others.")
        more = ("| `SHA256SUMS.unsigned` | checksums before signing: who makes the release again without the "
                "key gets these |\n")
    else:
        text = "The files are not signed."
        more = ""
    return NOTES.format(version=version, signed=text, more=more, changes=changes)
