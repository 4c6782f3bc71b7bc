"""A virtual X server, and the moment at which a program's window appears on it."""

import os
import select
import subprocess
import tempfile
import time

from Xlib import X, display, error

SCREEN = "1920x1200x24"
SMALLEST_SIDE = 200  # pixels: toolkits also map small helpers of their own


class NoWindow(Exception):
    """The program ended, or showed no window in time."""


class XServer:
    """An Xvfb of our own, as a context manager; `name` is what goes into DISPLAY."""

    def __enter__(self):
        reader, writer = os.pipe()
        self._process = subprocess.Popen(
            ["Xvfb", "-displayfd", str(writer), "-screen", "0", SCREEN, "-nolisten", "tcp", "-noreset"],
            pass_fds=[writer], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(writer)
        with os.fdopen(reader) as pipe:
            number = pipe.readline().strip()
        if not number:
            raise NoWindow("Xvfb did not start.")
        self.name = f":{number}"
        return self

    def __exit__(self, *_):
        self._process.terminate()
        self._process.wait()


class Program:
    """A program with a window, started with a home of its own. As a context manager: it is ended at the end."""

    def __init__(self, command, server, deadline=60):
        self._command, self._server, self._deadline = command, server, deadline

    def __enter__(self):
        self._home = tempfile.TemporaryDirectory(prefix="window-bench-")
        self._watch = display.Display(self._server.name)
        self._watch.screen().root.change_attributes(event_mask=X.SubstructureNotifyMask)
        self._watch.sync()
        self._start = time.perf_counter()
        self._process = subprocess.Popen(self._command, env=self._environment(), stdin=subprocess.DEVNULL,
                                         stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        return self

    def __exit__(self, *_):
        self._process.kill()
        self._process.wait()
        self._watch.close()
        self._home.cleanup()

    def mapped(self):
        """Milliseconds from the start of the process until the X server told that its first window of its own
        is mapped. Raises NoWindow."""
        while True:
            self._wait_for_events()
            now = time.perf_counter()
            while self._watch.pending_events():
                if self._is_main_window(self._watch.next_event()):
                    return (now - self._start) * 1000

    def resident(self, quiet=10, interval=0.1):
        """Bytes of resident memory, once they have stayed the same for `quiet` looks."""
        seen, same = self._rss(), 0
        end = time.monotonic() + self._deadline
        while same < quiet and time.monotonic() < end:
            time.sleep(interval)
            now = self._rss()
            seen, same = (seen, same + 1) if now == seen else (now, 0)
        return seen

    def _wait_for_events(self):
        while self._watch.pending_events() == 0:
            if self._process.poll() is not None:
                raise NoWindow(f"{self._command[0]} ended with {self._process.returncode}.")
            if time.perf_counter() > self._start + self._deadline:
                raise NoWindow(f"{self._command[0]} showed no window in {self._deadline} s.")
            select.select([self._watch], [], [], 0.2)

    def _is_main_window(self, event):
        if event.type != X.MapNotify or event.override:
            return False
        try:
            size = event.window.get_geometry()
        except error.BadDrawable:
            return False
        return size.width >= SMALLEST_SIDE and size.height >= SMALLEST_SIDE

    def _rss(self):
        with open(f"/proc/{self._process.pid}/status") as status:
            for line in status:
                if line.startswith("VmRSS:"):
                    return int(line.split()[1]) * 1024
        raise NoWindow(f"{self._command[0]} is gone.")

    def _environment(self):
        names = ("HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME")
        own = {name: self._home.name for name in names}
        left = {name: value for name, value in os.environ.items()
                if not name.startswith(("QT_", "GDK_", "WAYLAND_"))}
        return {**left, **own, "DISPLAY": self._server.name, "QT_QPA_PLATFORM": "xcb"}
