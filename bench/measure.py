"""Times and peaks: of public tools by hyperfine and GNU time, of this program by its driver."""

import json
import os
import statistics
import subprocess
import tempfile
from collections.abc import Callable
from dataclasses import dataclass, field

from corpusTools.driver import Driver


@dataclass
class Sample:
    """What the rounds measured, with medians. Times in milliseconds, peaks and `bytes` in bytes."""
    times: list = field(default_factory=list)
    peaks: list = field(default_factory=list)
    bytes: int = 0

    @property
    def ms(self):
        return statistics.median(self.times)

    def ratio_to(self, other):
        """The median over the rounds, so that a slow spell of the machine meets both sides."""
        return statistics.median(own / theirs for own, theirs in zip(self.times, other.times))

    @property
    def peak(self):
        return statistics.median(self.peaks)


@dataclass
class Tool:
    """A command; `output` is the file that it writes, if any. Pictures on standard output are discarded."""
    command: list
    output: str = ""


@dataclass
class Job:
    """One piece of work for the driver: `steps(ask)` does it and returns the milliseconds that count.
    `output` is the file that it writes, if any."""
    steps: Callable
    output: str = ""


def rounds(driver, job, tools, runs):
    """Runs the job and each tool in turn, `runs` times over, after one round to warm up.
    Returns the job's Sample and the tools' Samples by name."""
    ours, theirs = Sample(), {name: Sample() for name in tools}
    for round_number in range(runs + 1):
        counts = round_number > 0
        job_round(driver, job, ours, counts)
        for name, tool in tools.items():
            run_tool(tool, theirs[name], counts)
    for name, tool in tools.items():
        theirs[name].peaks.append(tool_peak(tool.command))
        theirs[name].bytes = _size(tool.output)
    return ours, theirs


def job_round(driver, job, sample, counts):
    """Does the job once in a driver of its own, and keeps its time and peak when they count."""
    _remove(job.output)
    with Driver(driver) as session:
        idle = session.ask("rss")["peak"]
        ms = job.steps(session.ask)
        grown = session.ask("rss")["peak"] - idle
    if counts:
        sample.times.append(ms)
        sample.peaks.append(grown)
        sample.bytes = _size(job.output)


def run_tool(tool, sample, counts):
    """Runs the tool once, and keeps its time when it counts."""
    _remove(tool.output)
    with tempfile.NamedTemporaryFile(suffix=".json") as result:
        _quietly(["hyperfine", "-N", "--runs", "1", "--style", "none", "--export-json", result.name,
                  _quoted(tool.command)])
        seconds = json.load(result)["results"][0]["median"]
    if counts:
        sample.times.append(seconds * 1000)


def tool_peak(command):
    """The largest resident size that the command reached, in bytes."""
    with tempfile.NamedTemporaryFile("r") as report:
        _quietly(["/usr/bin/time", "-f", "%M", "-o", report.name, *command])
        return int(report.read().split()[-1]) * 1024


def _quietly(command):
    subprocess.run(command, check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)


def _quoted(command):
    return " ".join("'" + str(word).replace("'", "'\\''") + "'" for word in command)


def _remove(path):
    if path and os.path.exists(path):
        os.remove(path)


def _size(path):
    return os.path.getsize(path) if path else 0
