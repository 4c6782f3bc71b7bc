"""What the public tools say of a file: its pages, faults, text and pixels."""

import re
import subprocess
import tempfile
from hashlib import md5
from pathlib import Path

PATIENCE = 120  # seconds for one call of a tool
WHERE = re.compile(r"\([^()]*offset \d+\)|\(object[^()]*\)|object stream \d+|page object \d+ \d+"
                   r"|object \d+ \d+:?|stream \d+ \d+|at offset \d+")
NOISE = re.compile(r"\d+")


def run(*command):
    """Exit code (None when it took too long), standard output, standard error."""
    try:
        said = subprocess.run([str(word) for word in command], capture_output=True, timeout=PATIENCE)
    except subprocess.TimeoutExpired:
        return None, "", "took too long"
    return said.returncode, said.stdout.decode("utf-8", "replace"), said.stderr.decode("utf-8", "replace")


def qpdf_count(path, password=""):
    said = run("qpdf", f"--password={password}", "--show-npages", path)[1].strip()
    return int(said) if said.isdigit() else 0


def pdfinfo_count(path, password=""):
    for option in ("-upw", "-opw"):
        found = re.search(r"^Pages:\s+(\d+)", run("pdfinfo", option, password, path)[1], re.MULTILINE)
        if found:
            return int(found.group(1))
    return 0


def is_locked(path):
    """Whether the file does not open without a password."""
    return run("qpdf", "--requires-password", path)[0] == 0


def decrypted(path, password, folder):
    """A copy without encryption, in the folder, or None."""
    return _copied(path, Path(folder) / f"plain-{path.name}", f"--password={password}", "--decrypt")


def turned(path, folder):
    """A copy with each page turned by 90 degrees, in the folder, or None."""
    return _copied(path, Path(folder) / f"turned-{path.name}", "--rotate=+90:1-z")


def _copied(path, copy, *options):
    return copy if run("qpdf", *options, path, copy)[0] in (0, 3) else None


def faults(path, password=""):
    """The kinds of fault that `qpdf --check` finds, without file names and numbers."""
    code, _, errors = run("qpdf", f"--password={password}", "--check", path)
    said = [line for line in errors.splitlines() if line.strip() and "operation succeeded" not in line]
    kinds = {_kind(line, path) for line in said}
    return kinds | ({"took too long"} if code is None else set())


def texts(path):
    """The text of each page, or None when there is none to be had."""
    code, said, _ = run("pdftotext", "-enc", "UTF-8", path, "-")
    return said.split("\f")[:-1] if code == 0 else None


def page_sizes(path, count):
    """Width and height of each page as it is shown, in whole points, by Poppler."""
    said = run("pdfinfo", "-l", max(count, 1), path)[1]
    sizes = re.findall(r"^Page +\d+ size: +([\d.]+) x ([\d.]+)", said, re.MULTILINE)
    turns = re.findall(r"^Page +\d+ rot: +(\d+)", said, re.MULTILINE)
    shown = [(round(float(width)), round(float(height))) for width, height in sizes]
    return [size if int(turn) % 180 == 0 else size[::-1] for size, turn in zip(shown, turns)]


def pixels(path):
    """A digest of each page at 72 dpi by MuPDF, or None."""
    _, said, errors = run("mutool", "draw", "-r", "72", "-s", "5", "-F", "ppm", "-o", "/dev/null", path)
    return re.findall(r"^page .* \d+ ([0-9a-f]{32})$", said + errors, re.MULTILINE) or None


def poppler_pixels(path):
    """The same by Poppler."""
    with tempfile.TemporaryDirectory() as folder:
        run("pdftoppm", "-r", "72", path, f"{folder}/page")
        pages = sorted(Path(folder).iterdir(), key=lambda page: int(re.findall(r"\d+", page.stem)[-1]))
        return [md5(page.read_bytes()).hexdigest() for page in pages] or None


def _kind(line, path):
    line = line.replace(str(path), "").replace("WARNING:", "").replace("ERROR:", "")
    return NOISE.sub("#", WHERE.sub("", line)).strip(" :,")
