"""The driver as a person at a terminal has it, in a new folder, with documents to work on."""

import contextlib
import json
import os
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
sys.path[:0] = [str(ROOT / "tests"), str(ROOT / "bench")]

from corpusTools.driver import Driver
from inputs import make_plain

PATIENCE = 240  # seconds for a test, for sanitized builds on a busy machine


class Answer(dict):
    def tells(self, **wanted):
        """Fails where something of what is wanted is missing: in an object other fields may stand beside it."""
        if not _fits(self, wanted):
            raise AssertionError(f"{self}\nlacks {wanted}")


class DriverCase(unittest.TestCase):
    """Ready are a.pdf with five pages, b.pdf with two, and full.pdf, where no byte can be written. A path in the folder
    is relative in a request, and begins with "@/" in an answer."""

    def setUp(self):
        self.folder = self.enterContext(tempfile.TemporaryDirectory())
        self.enterContext(contextlib.chdir(self.folder))
        make_plain(Path("a.pdf"), 5)
        make_plain(Path("b.pdf"), 2)
        Path("full.pdf").symlink_to("/dev/full")
        self.driver = self.enterContext(Driver(os.environ["FOLVANE_DRIVER"], PATIENCE, address_space=None))

    def receive(self):
        answer = json.dumps(self.driver.receive("request"), ensure_ascii=False)
        return Answer(json.loads(answer.replace(self.folder, "@")))

    def ask(self, verb, **fields):
        self.driver.send(verb, **fields)
        return self.receive()

    def begin(self, verb, **fields):
        """Starts a job beside the requests that follow."""
        return self.ask(verb, **fields, **{"async": True})


def make_locked(path, password):
    subprocess.run(["qpdf", "--encrypt", password, password, "256", "--", "b.pdf", path], check=True)


def _fits(told, wanted):
    if type(told) not in (type(wanted), Answer):
        return False
    if isinstance(wanted, dict):
        return all(key in told and _fits(told[key], wanted[key]) for key in wanted)
    if isinstance(wanted, list):
        return len(told) == len(wanted) and all(map(_fits, told, wanted))
    return told == wanted
