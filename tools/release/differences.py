"""Names what differs between two folders of files that should be equal: the file, and the part of it."""
import io
import pathlib
import subprocess
import tempfile
import zipfile

import pefile


def between(first, second):
    """A line for each difference; none if both folders hold the same files with the same bytes."""
    names = sorted({file.relative_to(folder).as_posix() for folder in (first, second)
                    for file in folder.rglob("*") if file.is_file()})
    return [f"{name}: {what}" for name in names for what in file_differences(first / name, second / name)]


def file_differences(first, second):
    for file, which in ((first, "first"), (second, "second")):
        if not file.is_file():
            return [f"missing in the {which} folder"]
    return differences(first.name, first.read_bytes(), second.read_bytes())


def differences(name, first, second):
    """What differs between two contents of a file of this name."""
    if first == second:
        return []
    parts = PARTS.get(pathlib.PurePath(name).suffix.lower())
    if not parts:
        return [first_difference(first, second)]
    try:
        found = in_parts(parts(first), parts(second))
    except (pefile.PEFormatError, zipfile.BadZipFile, subprocess.CalledProcessError) as error:
        found = [f"cannot be taken apart: {error}"]
    # What no part shows is still a difference.
    return found or [f"{first_difference(first, second)}, outside its parts"]


def in_parts(first, second):
    """Compares two {name of a part: its bytes}."""
    found = []
    for part in sorted(first.keys() | second.keys()):
        if part not in first or part not in second:
            found.append(f"{part}: missing in the {'second' if part in first else 'first'}")
        else:
            found += [f"{part}: {what}" for what in differences(part, first[part], second[part])]
    return found


def first_difference(first, second):
    at = next((at for at, (one, other) in enumerate(zip(first, second)) if one != other),
              min(len(first), len(second)))
    size = f", {len(first)} and {len(second)} bytes" if len(first) != len(second) else ""
    return f"first difference at byte {at}{size}: {excerpt(first, at)} and {excerpt(second, at)}"


def excerpt(content, at):
    return repr(content[max(0, at - 8):at + 24])


def program_parts(content):
    """The headers of a program, field by field, and its sections."""
    with pefile.PE(data=content, fast_load=True) as program:
        parts = {f"section {section.Name.rstrip(bytes(1)).decode()}": section.get_data()
                 for section in program.sections}
        headers = [program.FILE_HEADER, program.OPTIONAL_HEADER, *program.sections]
        for header in headers:
            for field, value in header.dump_dict().items():
                if isinstance(value, dict):
                    owner = getattr(header, "Name", b"").rstrip(bytes(1)).decode()
                    parts[f"{header.name} {owner} {field}"] = str(value["Value"]).encode()
    return parts


def archive_parts(content):
    """The files of a ZIP and what it says about each."""
    parts = {}
    with zipfile.ZipFile(io.BytesIO(content)) as archive:
        for entry in archive.infolist():
            parts[entry.filename] = archive.read(entry)
            parts[f"{entry.filename} in the list"] = (
                f"{entry.date_time} {entry.external_attr:o} {entry.create_system} {entry.extra!r}").encode()
    return parts


def package_parts(content):
    """The tables, streams and properties of an MSI, and the files of its cabinet."""
    with tempfile.TemporaryDirectory() as temporary:
        folder = pathlib.Path(temporary)
        package = folder / "package.msi"
        package.write_bytes(content)

        # It writes the pictures of a table into its current folder, besides what it prints.
        def msiinfo(*arguments):
            return output("msiinfo", *arguments, folder=folder)

        parts = {"summary": msiinfo("suminfo", package)}
        for table in msiinfo("tables", package).decode().split():
            parts[f"table {table}"] = msiinfo("export", package, table)
        for stream in msiinfo("streams", package).decode().split():
            parts[f"stream {stream}"] = msiinfo("extract", package, stream)
        for cabinet in [part for part in parts if part.endswith(".cab")]:
            (folder / "cabinet").write_bytes(parts[cabinet])
            parts[f"{cabinet} contents"] = output("cabextract", "-l", folder / "cabinet")
            output("cabextract", "-q", "-d", folder / "files", folder / "cabinet")
            for file in (folder / "files").iterdir():
                parts[f"{cabinet} file {file.name}"] = file.read_bytes()
    return parts


def output(*command, folder=None):
    return subprocess.run(command, check=True, capture_output=True, cwd=folder).stdout


PARTS = {".exe": program_parts, ".dll": program_parts, ".drv": program_parts, ".debug": program_parts,
         ".zip": archive_parts, ".msi": package_parts}
