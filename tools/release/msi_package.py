"""Makes the package that installs the monitor from product.wxs.

wixl writes a package that holds random numbers and the time, and leaves out what it does not know of;
msibuild puts right what wixl has left.
"""
import datetime
import hashlib
import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import uuid

import pefile

SOURCE = pathlib.Path(__file__).with_name("product.wxs")
SETTINGS = {"WEBSITE": "WebSiteSetting", "VALIDATIONSITE": "ValidationSiteSetting"}
# In English, US; the number stands in the programs' own version resources too.
LANGUAGE = 1033


def make(version, epoch, files, out):
    """Makes the package `out` of the files, the paths of everything that product.wxs names. The same files
    give the same bytes."""
    with tempfile.TemporaryDirectory() as temporary:
        folder = pathlib.Path(temporary)
        for file in [SOURCE, *files]:
            shutil.copyfile(file, folder / file.name)
            os.utime(folder / file.name, (epoch, epoch))  # the cabinet keeps these times
        package = folder / "new.msi"
        run_wixl(version, epoch, folder, package)
        msibuild(package, "-q", *corrections(folder))
        msibuild(package, "-s", "Beamline K7400 status monitor", "Corvane", f"x64;{LANGUAGE}",
                 package_code(version, folder))
        shutil.copyfile(package, out)


def environment():
    """The caller's, but for its settings of time and language, and for a clock that it may be shown itself."""
    own = {name: value for name, value in os.environ.items()
           if name != "LD_PRELOAD" and not name.startswith("FAKETIME")}
    return {**own, "TZ": "UTC", "LC_ALL": "C.UTF-8"}


def run_wixl(version, epoch, folder, package):
    """wixl asks the clock for the times of the package, so it is shown another clock."""
    now = datetime.datetime.fromtimestamp(epoch, datetime.timezone.utc).strftime("%Y-%m-%d %H:%M:%S")
    subprocess.run(["faketime", "-f", now, "wixl", "-a", "x64", "-D", f"Version={version}",
                    "-D", f"ProductCode={identity(f'product {version}')}", "-o", package.name, SOURCE.name],
                   cwd=folder, check=True, env=environment())


def msibuild(package, *arguments):
    subprocess.run(["msibuild", package, *arguments], check=True, env=environment())


def corrections(folder):
    """Statements for what wixl leaves wrong, one for each row: a DELETE of two rows removes only one."""
    # Without its version Windows takes the new program for an older one and keeps the one that is installed.
    # A file with a version must have no hash.
    for name in ("QVK7400SM.exe", "QVK7400SMs.dll"):
        yield (f"UPDATE `File` SET `Version`='{file_version(folder / name)}', `Language`='{LANGUAGE}' "
               f"WHERE `File`='{name}'")
        yield f"DELETE FROM `MsiFileHash` WHERE `File_`='{name}'"
    # A setting that was not given is not written, rather than written empty.
    for property_name, component in SETTINGS.items():
        yield f"UPDATE `Component` SET `Condition`='{property_name}' WHERE `Component`='{component}'"
    # The old version is removed within the installation. When that fails, the old version comes back.
    yield ("UPDATE `InstallExecuteSequence` SET `Sequence`=1501 WHERE `Action`='RemoveExistingProducts'")
    # What the user's part of an installation with windows may hand to the part that runs as administrator.
    secure = ";".join(["WIX_DOWNGRADE_DETECTED", "WIX_UPGRADE_DETECTED", *SETTINGS])
    yield f"UPDATE `Property` SET `Value`='{secure}' WHERE `Property`='SecureCustomProperties'"


def file_version(file):
    """The version that Windows compares, from the program's own resources, such as 1.0.0.0."""
    with pefile.PE(file, fast_load=True) as program:
        program.parse_data_directories([pefile.DIRECTORY_ENTRY["IMAGE_DIRECTORY_ENTRY_RESOURCE"]])
        info = program.VS_FIXEDFILEINFO[0]
    numbers = (info.FileVersionMS >> 16, info.FileVersionMS & 0xFFFF, info.FileVersionLS >> 16,
               info.FileVersionLS & 0xFFFF)
    return ".".join(map(str, numbers))


def identity(name):
    """A GUID that is always the same for the name."""
    product = uuid.UUID(re.search(r'UpgradeCode="(.+?)"', SOURCE.read_text()).group(1))
    return f"{{{uuid.uuid5(product, name)}}}".upper()


def package_code(version, folder):
    """Windows takes two packages with one code for the same, so it follows from the content."""
    content = hashlib.sha256()
    for file in sorted(folder.iterdir()):
        if file.suffix != ".msi":
            content.update(file.read_bytes())
    return identity(f"package {version} {content.hexdigest()}")
