"""Validates files against a schema, with libxml2 and with Xerces, many in one call."""

import pathlib
import re
import shutil
import subprocess
import tempfile

AT_ONCE = 1000  # files in the arguments of one command
ROOT = re.compile(rb"(<[A-Za-z][\w.-]*)(?=[\s/>])")
LOCATION = b'\\1 xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xsi:noNamespaceSchemaLocation="%s"'


class Xmllint:
    """libxml2."""

    def __init__(self, program):
        self.program = program

    def find_invalid(self, schema, files):
        """The faults of the files that are not valid, as texts."""
        files = [str(file) for file in files]
        invalid = {}
        for first in range(0, len(files), AT_ONCE):
            invalid.update(self._judge(schema, files[first:first + AT_ONCE]))
        return invalid

    def _judge(self, schema, files):
        done = subprocess.run([self.program, "--noout", "--nonet", "--schema", schema, *files],
                              capture_output=True, check=False)
        text = done.stderr.decode(errors="replace")
        valid = set(re.findall(r"^(.*) validates$", text, re.MULTILINE))
        if not valid and "fails to validate" not in text:
            raise RuntimeError(f"{schema}: {text}")  # the schema is wrong
        faults = dict.fromkeys(file for file in files if file not in valid)
        return {file: "\n".join(re.findall(rf"^{re.escape(file)}:.* error :.*", text, re.MULTILINE)) for file in faults}


class Xerces:
    """Its sample program SAX2Count, which finds the schema where the document says."""

    def __init__(self, program):
        self.program = program

    def find_invalid(self, schema, files):
        with tempfile.TemporaryDirectory() as name:
            folder = pathlib.Path(name)
            # One path is enough for all: Xerces takes no blank in it, which the project's may have.
            for other in pathlib.Path(schema).parent.glob("*.xsd"):
                shutil.copy(other, folder)
            location = LOCATION % (folder / pathlib.Path(schema).name).as_uri().encode()
            copies = {str(folder / f"{number}.xml"): str(file) for number, file in enumerate(files)}
            for copy, file in copies.items():
                text, count = ROOT.subn(location, pathlib.Path(file).read_bytes(), count=1)
                assert count == 1, file
                pathlib.Path(copy).write_bytes(text)
            (folder / "list").write_text("".join(f"{copy}\n" for copy in copies))
            done = subprocess.run([self.program, "-v=always", "-f", "-l", folder / "list"],
                                  capture_output=True, check=False)
            text = (done.stdout + done.stderr).decode(errors="replace")
            valid = set(re.findall(r"^(\S+): \d+ ms \(", text, re.MULTILINE))
            return {file: _find_message(text, copy) for copy, file in copies.items() if copy not in valid}


def _find_message(text, copy):
    found = re.search(rf"at file {re.escape(copy)}, line.*\n *Message: (.*)", text)
    return found[1] if found else text[-500:]
