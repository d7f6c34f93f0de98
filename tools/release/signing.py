"""Signs programs and packages, so that Windows can tell who made them and that nobody has changed them."""
import pathlib
import subprocess
import tempfile

NAME = "Beamline K7400 status monitor"
ADDRESS = "https://www.corvane.example/k7400"


class Signer:
    """Signs with the certificate and key of a PKCS #12 file. The password is read from a file, so that it
    shows in no list of processes. With the address of a time stamp server the signatures stay valid when the
    certificate has expired."""

    def __init__(self, certificate, password_file, epoch, timestamp_server=None):
        # Nobody waits for a build to learn that the password was wrong.
        run(f"{certificate} cannot be read", "openssl", "pkcs12", "-in", certificate, "-noout",
            "-passin", f"file:{password_file}")
        self._options = ["-pkcs12", certificate, "-readpass", password_file, "-h", "sha256", "-n", NAME,
                         "-i", ADDRESS]
        # The time in the signature itself is that of the commit: two runs give the same bytes.
        self._options += ["-ts", timestamp_server] if timestamp_server else ["-time", str(epoch)]

    def sign(self, file):
        """Signs the file in place."""
        with tempfile.TemporaryDirectory() as folder:
            signed = pathlib.Path(folder) / file.name
            # The names and sizes of a package's parts are signed too.
            whole = ["-add-msi-dse"] if file.suffix == ".msi" else []
            run(f"{file.name} cannot be signed", "osslsigncode", "sign", *self._options, *whole, "-in", file,
                "-out", signed)
            file.write_bytes(signed.read_bytes())


def run(trouble, *command):
    """Ends the program with the trouble and with what the tool says of it."""
    done = subprocess.run(command, capture_output=True, text=True, stdin=subprocess.DEVNULL)
    if done.returncode != 0:
        raise SystemExit(f"{trouble}: {(done.stderr or done.stdout).strip()}")
