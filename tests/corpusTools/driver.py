"""A client of folvane-driver: one fresh process, one JSON object a line each way."""

import json
import os
import resource
import select
import subprocess
import sys
import tempfile
import time
from functools import partial
from pathlib import Path

CHECKOUT = Path(__file__).resolve().parents[2]
DEFAULT_DRIVER = CHECKOUT / "build/release/bin/folvane-driver"
END_SECONDS = 30  # after the last request
ADDRESS_SPACE = 8 << 30  # a backstop only: the thread stacks and the font cache are address space too


def add_driver_options(parser):
    parser.add_argument("--driver", default=DEFAULT_DRIVER, type=Path)
    parser.add_argument("--sanitized", action="store_true", help="for a driver built with sanitizers")


def pdfs_below(folder):
    """At least one, in order."""
    return sorted(folder.rglob("*.pdf")) or sys.exit(f"No PDF files below {folder}.")


def room(options, seconds):
    """What a Driver gets that may live so long; sanitizers need more time, and address space without end."""
    return {"deadline": seconds * 12, "address_space": None} if options.sanitized else {"deadline": seconds}


class DriverFailed(Exception):
    """The driver crashed, hung, or said that a request was wrong."""


class DriverTooSlow(DriverFailed):
    """No answer came in time; the process was killed."""


class Driver:
    """Use as a context manager. `deadline` is in seconds for the whole life of the process, `address_space`
    in bytes; None is no limit."""

    def __init__(self, program=DEFAULT_DRIVER, deadline=None, address_space=ADDRESS_SPACE):
        self._home = tempfile.TemporaryDirectory(prefix="folvane-driver-")
        self.data, self.config = Path(self._home.name, "data"), Path(self._home.name, "config")
        self._errors = tempfile.TemporaryFile()
        self._end = None if deadline is None else time.monotonic() + deadline
        self._unread = b""
        self._process = subprocess.Popen(
            [str(program)], stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=self._errors,
            env={**os.environ, "XDG_DATA_HOME": str(self.data), "XDG_CONFIG_HOME": str(self.config), "QT_QPA_PLATFORM": "offscreen"},
            bufsize=0, preexec_fn=partial(_limit, address_space))

    def __enter__(self):
        return self

    def __exit__(self, failure, *_):
        """Raises DriverFailed when the process ends badly, as one with leaks does under sanitizers."""
        self._process.stdin.close()
        try:
            self._process.wait(timeout=END_SECONDS)
        except subprocess.TimeoutExpired:
            self._process.kill()
        death = self._death()
        self._process.stdout.close()
        self._errors.close()
        self._home.cleanup()
        if self._process.returncode and not failure:
            raise DriverFailed(f"at the end: {death}")

    def ask(self, verb, **fields):
        """The answer to one request, as a dictionary. Raises DriverFailed."""
        self.send(verb, **fields)
        answer = self.receive(verb)
        if not answer.get("ok"):
            raise DriverFailed(f"{verb}: {answer.get('bad')}")
        return answer

    def send(self, verb, **fields):
        """Puts a request, whose answer `receive` gives in its turn."""
        self.put(json.dumps({"do": verb, **fields}).encode() + b"\n", verb)

    def put(self, data, verb="a line"):
        """Puts bytes as they are."""
        try:
            self._process.stdin.write(data)
        except BrokenPipeError:
            raise DriverFailed(f"{verb}: {self._death()}")

    def end_input(self):
        """The lines that are still answered when the input ends. The process is then about to end."""
        self._process.stdin.close()
        return (self._unread + self._process.stdout.read()).splitlines()

    def receive(self, verb, seconds=None):
        """The next answer, also one that says that the request was wrong. `seconds` takes the place of the deadline."""
        return json.loads(self._line(verb, self._end if seconds is None else time.monotonic() + seconds))

    def forget_peak(self):
        """The peak counts from what the process holds now."""
        Path(f"/proc/{self._process.pid}/clear_refs").write_text("5")

    def peak(self):
        """The peak memory of the process so far, in bytes, as the kernel counts it."""
        return self.ask("rss")["peak"]

    def _line(self, verb, end):
        while b"\n" not in self._unread:
            left = None if end is None else max(0.0, end - time.monotonic())
            if not select.select([self._process.stdout], [], [], left)[0]:
                self._process.kill()
                raise DriverTooSlow(f"{verb}: no answer in time")
            chunk = os.read(self._process.stdout.fileno(), 1 << 20)
            if not chunk:
                raise DriverFailed(f"{verb}: {self._death()}")
            self._unread += chunk
        line, self._unread = self._unread.split(b"\n", 1)
        return line

    def _death(self):
        code = self._process.wait()
        self._errors.seek(0)
        words = self._errors.read().decode("utf-8", "replace").strip().splitlines()
        reports = [line for line in words if "Sanitizer" in line or "runtime error" in line] or words[-1:]
        return f"the driver ended with {code}" + (f" ({reports[0][:200]})" if reports else "")


def _limit(address_space):
    if address_space:
        resource.setrlimit(resource.RLIMIT_AS, (address_space, address_space))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
