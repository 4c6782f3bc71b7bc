"""What is kept lasts when the machine stops: the driver's calls to the system, as strace tells them."""

import json
import os
import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

CALLS = "openat,fsync,fdatasync,rename,renameat,renameat2,linkat"
NO_TRACING = 77  # told to ctest, which then counts the test as skipped
PATIENCE = 240   # seconds
CALL = re.compile(r"^\d+ +(\w+)\((.*)\) += (-?\d+)")
PATH = re.compile(r'"((?:[^"\\]|\\.)*)"')
UNFINISHED = re.compile(r"^(\d+) +(.*) <unfinished \.\.\.>$")
RESUMED = re.compile(r"^(\d+) +<\.\.\. \w+ resumed>(.*)$")


def can_trace():
    with tempfile.NamedTemporaryFile() as log:
        return subprocess.run(["strace", "-o", log.name, "true"], stderr=subprocess.DEVNULL).returncode == 0


def whole_lines(log):
    """A call that another thread interrupted stands in two pieces."""
    begun = {}
    for line in log.splitlines():
        if (start := UNFINISHED.match(line)):
            begun[start[1]] = f"{start[1]} {start[2]}"
        elif (end := RESUMED.match(line)):
            yield begun.pop(end[1], "") + end[2]
        else:
            yield line


def events(log):
    """("flush", path) and ("name", file, path) of the calls that succeeded, in order. The file is the path that it had
    first; one that had none is its folder and the number of the call that made it."""
    opened, first_paths, told = {}, {}, []
    for number, call in enumerate(filter(None, map(CALL.match, whole_lines(log)))):
        verb, words, result = call[1], call[2], int(call[3])
        paths = PATH.findall(words)
        if result < 0:
            continue
        if verb == "openat":
            opened[result] = f"{paths[0]}#{number}" if "O_TMPFILE" in words else paths[0]
        elif verb in ("fsync", "fdatasync"):
            told.append(("flush", opened.get(int(words))))
        else:
            unnamed = re.fullmatch(r"/proc/self/fd/(\d+)", paths[0])
            file = opened[int(unnamed[1])] if unnamed else paths[0]
            first_paths[paths[1]] = first_paths.get(file, file)
            told.append(("name", first_paths[paths[1]], paths[1]))
    return told


class Durability(unittest.TestCase):
    def setUp(self):
        self.folder = Path(self.enterContext(tempfile.TemporaryDirectory())).resolve()

    def told(self, request):
        """The events of a driver that is asked this."""
        log = self.folder / "calls"
        home = dict.fromkeys(["XDG_DATA_HOME", "XDG_CONFIG_HOME"], str(self.folder)) | {"QT_QPA_PLATFORM": "offscreen"}
        traced = ["strace", "-f", "-s", "4096", "-e", "trace=" + CALLS, "-o", log, os.environ["FOLVANE_DRIVER"]]
        result = subprocess.run(traced, input=json.dumps(request), env={**os.environ, **home}, capture_output=True,
                                text=True, timeout=PATIENCE)
        self.assertEqual(json.loads(result.stdout).get("outcome"), "done", result.stderr)
        return events(log.read_text())

    def assert_lasts(self, told, path):
        """Flushed, named, and the name flushed; returns where it was named."""
        named = next((at for at, event in enumerate(told) if event[0] == "name" and event[-1] == str(path)), None)
        self.assertIsNotNone(named, f"{path} was not put in its place: {told}")
        self.assertIn(("flush", told[named][1]), told[:named], "before it gets its name")
        self.assertIn(("flush", str(path.parent)), told[named:], "the folder, once it has")
        return named

    def test_picture_and_index_of_a_stamp(self):
        photo = self.folder / "photo.pgm"
        photo.write_bytes(b"P5 300 200 255\n" + bytes(30 if 90 < x < 200 and 80 < y < 120 else 250
                                                      for y in range(200) for x in range(300)))
        for request in ({"do": "makeStamp", "from": str(photo)}, {"do": "readyStamp", "word": "PAID"}):
            told = self.told(request)
            stamps = self.folder / "Folvane/Stamps"
            picture = max(stamps.glob("*.png"), key=lambda path: path.stat().st_mtime_ns)
            with self.subTest(request["do"]):
                first, second = (self.assert_lasts(told, path) for path in (picture, stamps / "stamps.json"))
                self.assertLess(first, second)
                self.assertIn(("flush", str(stamps)), told[first:second], "the picture lasts before it is listed")


if __name__ == "__main__":
    if not can_trace():
        print("strace is not allowed to trace here.")
        sys.exit(NO_TRACING)
    unittest.main()
