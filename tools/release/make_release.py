#!/usr/bin/env python3
"""Makes the files of a release. Everybody who makes them from the same commit gets the same bytes."""
import argparse
import getpass
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

import building
import differences
import linked_parts
import msi_package
import packing
import signing

OUT = building.ROOT / "out" / "release"
WORK = building.ROOT / "build" / "release-work"
SECOND_LOCALE = "tr_TR.UTF-8"  # the small form of I is no i there
SECOND_UMASK = 0o077


def package(stage, out, epoch, signer=None):
    """Makes all files of a release in `out` from what building.stage() and linked_parts.describe() have
    collected."""
    version = (stage / "version").read_text().strip()
    changes = packing.changes_of(version, (stage / "CHANGELOG.md").read_text())
    shutil.rmtree(out, ignore_errors=True)
    out.mkdir(parents=True)

    def file(kind, ending):
        return out / f"beamline-k7400-{kind}-{version}-x64.{ending}"

    with tempfile.TemporaryDirectory() as temporary:
        parts = pathlib.Path(temporary) / "parts"
        shutil.copytree(stage, parts)
        for place in (parts / "product", parts / "tools", out):
            shutil.copyfile(stage / linked_parts.NOTICES, place / linked_parts.NOTICES)
        if signer:
            # Not the simulated libraries: they bear the names of others, and nobody shall take them for those.
            for program in [*(parts / "product").glob("*.dll"), *parts.rglob("*.exe")]:
                signer.sign(program)
        installer = file("monitor", "msi")
        msi_package.make(version, epoch, [*(parts / "product").iterdir(), parts / "program.ico"], installer)
        if signer:
            signer.sign(installer)
        packing.zip_folder(parts / "product", file("monitor", "zip"), epoch)
        packing.zip_folder(parts / "tools", file("tools", "zip"), epoch)
        packing.zip_folder(parts / "symbols", file("symbols", "zip"), epoch)
    shutil.copyfile(stage / linked_parts.SBOM, file("monitor", "spdx.json"))
    (out / "release-notes.md").write_text(packing.release_notes(version, changes, signer is not None))
    if signer:
        package_unsigned(stage, out / "SHA256SUMS.unsigned", epoch)
    (out / "SHA256SUMS").write_text(packing.checksums(out))


def package_unsigned(stage, sums, epoch):
    """Who has no key makes these files, and can compare them with what was signed."""
    with tempfile.TemporaryDirectory() as folder:
        package(stage, pathlib.Path(folder) / "out", epoch)
        shutil.copyfile(pathlib.Path(folder) / "out" / "SHA256SUMS", sums)


def copy_sources(folder):
    """Begins anew in `folder`, with a copy of the sources as they are now."""
    shutil.rmtree(folder, ignore_errors=True)
    building.copy_sources(folder / "source")


def build_stage(folder):
    """Builds the copy of the sources in `folder`; returns the folder of what a release needs of the build."""
    building.build(folder / "source")
    building.stage(folder / "source", folder / "stage")
    linked_parts.describe(folder / "source" / building.BUILD, folder / "stage", building.commit_time())
    return folder / "stage"


def make_from(folder, *prefix, umask=-1, **environment):
    """Makes the release in `folder` with the scripts of the copy of the sources there, in a process of its own."""
    script = folder / "source" / "tools" / "release" / "make_release.py"
    subprocess.run([*prefix, sys.executable, script, "--make", folder], check=True, umask=umask,
                   env={**os.environ, **environment})


def check():
    """Makes the release twice, the second time as differently as one machine can, and compares."""
    first, second = WORK / "first", WORK / "the-second-one-elsewhere"
    # Both begin with the same sources and commit, also when somebody goes on working meanwhile.
    os.environ["SOURCE_DATE_EPOCH"] = str(building.commit_time())
    copy_sources(first)
    usual = os.umask(SECOND_UMASK)
    copy_sources(second)
    os.umask(usual)
    locales = WORK / "locales"  # sorts and spells as the language does, unlike those of build/locales
    locales.mkdir(exist_ok=True)
    subprocess.run(["localedef", "-i", "tr_TR", "-f", "UTF-8", locales / SECOND_LOCALE], check=True)

    print("Making the release ...", flush=True)
    make_from(first)
    print("Making it in another folder, at another time, with another time zone, language and umask ...", flush=True)
    make_from(second, "faketime", "-f", "+400d", umask=SECOND_UMASK, TZ="Asia/Tokyo", LC_ALL=SECOND_LOCALE,
              LOCPATH=str(locales))
    found = differences.between(first / "out", second / "out")
    print("".join(f"{line}\n" for line in found), end="")
    print("The two are not equal." if found else "Every file is the same, byte by byte.")
    return 1 if found else 0


def release(signer):
    changes = building.uncommitted_changes()
    if changes:
        raise SystemExit("A release is made of a commit, and these files are not as in the last one. Commit or "
                         "remove them first:\n" + "\n".join(changes[:20]))
    copy_sources(WORK / "release")
    package(build_stage(WORK / "release"), OUT, building.commit_time(), signer)
    print(f"The release is in {OUT.relative_to(building.ROOT)}/:")
    print("".join(f"  {file.name}\n" for file in sorted(OUT.iterdir())), end="")
    if not signer:
        print("The files are not signed. ./release --sign FILE.p12 signs them.")
    return 0


def signed_release(options):
    with tempfile.TemporaryDirectory() as folder:
        password = options.password_file
        if not password:
            password = pathlib.Path(folder) / "password"
            password.touch(0o600)
            password.write_text(getpass.getpass(f"Password of {options.sign}: "))
        return release(signing.Signer(options.sign, password, building.commit_time(), options.timestamp_server))


def main(arguments):
    parser = argparse.ArgumentParser(
        prog="./release", description="Makes the files of a release in out/release/ of the last commit. "
        "Installs what is missing.")
    task = parser.add_mutually_exclusive_group()
    task.add_argument("--check", action="store_true",
                      help="make it twice, from the files as they are, and compare byte by byte; out/ is left alone")
    task.add_argument("--sign", type=pathlib.Path, metavar="FILE.p12",
                      help="sign the programs and the package with this certificate and key")
    task.add_argument("--make", type=pathlib.Path, help=argparse.SUPPRESS)
    parser.add_argument("--password-file", type=pathlib.Path, metavar="FILE",
                        help="the first line is the password of FILE.p12 (otherwise it is asked for)")
    parser.add_argument("--timestamp-server", metavar="URL",
                        help="has the time of signing confirmed, so that signatures outlive the certificate")
    options = parser.parse_args(arguments)
    os.environ["PATH"] = "/usr/bin:/bin"  # Debian's programs, which the list of parts names
    if not options.sign and (options.password_file or options.timestamp_server):
        parser.error("--password-file and --timestamp-server are for --sign")
    if options.make:
        package(build_stage(options.make), options.make / "out", building.commit_time())
        return 0
    if options.check:
        return check()
    return signed_release(options) if options.sign else release(None)


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
