"""The rows of the benchmark's table and the description of the machine, as Markdown."""

import os
import re
import subprocess
from dataclasses import dataclass
from pathlib import Path

HEAD = "| Work | Ours | Against | Theirs | Ratio | Target | |\n|---|---:|---|---:|---:|---:|---|"


@dataclass
class Row:
    """`limit` is the largest ratio (or number of ms, where there is no rival) that passes, or None; `strict`
    asks for less than it. `ratio` is that of the two numbers unless given."""
    work: str
    ours: float
    unit: str
    rival: str = ""
    theirs: float = 0
    limit: float = None
    strict: bool = False
    ratio: float = None

    @property
    def value(self):
        if not self.rival:
            return self.ours
        return self.ours / self.theirs if self.ratio is None else self.ratio

    @property
    def verdict(self):
        if self.limit is None:
            return ""
        passed = self.value < self.limit if self.strict else self.value <= self.limit
        return "pass" if passed else "MISS"

    def line(self):
        sign = "<" if self.strict else "≤"
        unit = "" if self.rival else f" {self.unit}"
        target = "" if self.limit is None else f"{sign} {self.limit:.3g}{unit}"
        ratio = f"{self.value:.2f}" if self.rival else ""
        theirs = shown(self.theirs, self.unit) if self.rival else ""
        cells = [self.work, shown(self.ours, self.unit), self.rival, theirs, ratio, target, self.verdict]
        return f"| {' | '.join(cells)} |"


def shown(number, unit):
    if unit == "ms":
        return f"{number:,.0f} ms" if number >= 100 else f"{number:.1f} ms"
    if unit == "MiB":
        return f"{number / (1 << 20):,.1f} MiB"
    return f"{number:.3f}" if unit == "SSIM" else f"{number:,.0f} B"


def markdown(rows):
    return "\n".join([HEAD, *(row.line() for row in rows)])


def machine():
    """A list of lines."""
    cpu = _find(r"model name\s*:\s*(.+)", Path("/proc/cpuinfo").read_text())
    memory = int(_find(r"MemTotal:\s*(\d+)", Path("/proc/meminfo").read_text())) / (1 << 20)
    system = _find(r'PRETTY_NAME="(.+)"', Path("/etc/os-release").read_text())
    versions = [_version(["qpdf", "--version"], r"(\d[\d.]+)", "qpdf"),
                _version(["pdftoppm", "-v"], r"(\d[\d.]+)", "Poppler"),
                _version(["mutool", "-v"], r"(\d[\d.]+)", "MuPDF"),
                _version(["gs", "--version"], r"(\d[\d.]+)", "Ghostscript"),
                _version(["convert", "-version"], r"ImageMagick ([\d.-]+)", "ImageMagick"),
                _version(["hyperfine", "--version"], r"(\d[\d.]+)", "hyperfine")]
    return [f"- Machine: {cpu}, {os.cpu_count()} cores, {memory:.0f} GiB of memory, {system}",
            "- Versions: " + ", ".join(versions)]


def _version(command, pattern, name):
    said = subprocess.run(command, capture_output=True, text=True)
    return f"{name} {_find(pattern, said.stdout + said.stderr)}"


def _find(pattern, words):
    found = re.search(pattern, words)
    return found.group(1).strip() if found else "unknown"
