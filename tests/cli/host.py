"""Runs the command-line host on pages in a folder of their own.

QUILL names the program; QUILL_EMULATOR what runs it where it was built for another system.
"""
import gzip
import json
import os
import pathlib
import subprocess
import tempfile
import unittest

PROGRAM = [part for part in (os.environ.get("QUILL_EMULATOR"), os.environ["QUILL"]) if part]
WINDOWS = os.environ["QUILL"].endswith(".exe")
unix_only = unittest.skipIf(WINDOWS, "needs what only Unix has")


def page(text):
    """A page whose main content is one paragraph."""
    return f"<!DOCTYPE html><html><head><title>Title</title></head><body><p>{text}</p></body></html>".encode()


class HostTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="quill test ")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def write(self, name, content):
        """Writes a file below the folder; text becomes a page, bytes stay what they are."""
        file = self.folder / name
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_bytes(page(content) if isinstance(content, str) else content)

    def write_packed(self, name, text):
        self.write(name, gzip.compress(page(text)))

    def quill(self, *arguments, input=b"", code=0, errors=None):
        """Runs the program in the folder and returns its output. `errors` are the names that standard error has to
        name, one a line and in this order; without them it has to be empty, unless the usage was wrong."""
        run = subprocess.run([*PROGRAM, *arguments], cwd=self.folder, input=input, capture_output=True)
        said = run.stderr.decode("utf-8", "replace")
        self.assertEqual(run.returncode, code, said)
        if code != 2:
            lines = said.splitlines()
            self.assertEqual(len(lines), len(errors or []), said)
            for line, name in zip(lines, errors or []):
                self.assertIn(f"quill: {name}: ", line.replace("\\", "/"))
        return run.stdout

    def lines(self, *arguments, **options):
        """The output's lines of text, without the blank ones."""
        return [line for line in self.quill(*arguments, **options).decode().splitlines() if line]

    def objects(self, *arguments, **options):
        """The objects that --json prints."""
        return [json.loads(line) for line in self.quill("--json", *arguments, **options).splitlines()]

    def files_read(self, *arguments, **options):
        return [row["file"].replace("\\", "/") for row in self.objects(*arguments, **options)]
