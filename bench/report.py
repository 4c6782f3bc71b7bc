"""The page of benchmarks: one part for each script that writes it."""

import re
from pathlib import Path

PAGE = Path(__file__).resolve().parents[1] / "docs/benchmarks.md"


def put_section(title, lines):
    """Puts the lines under a heading of the second level, in place of what stood there, and leaves the rest."""
    before = PAGE.read_text() if PAGE.exists() else "# Benchmarks\n"
    kept = re.sub(rf"(?ms)^## {re.escape(title)}\n.*?(?=^## |\Z)", "", before).rstrip()
    PAGE.parent.mkdir(exist_ok=True)
    PAGE.write_text("\n".join([kept, "", f"## {title}", "", *lines, ""]))


def sections():
    """Everything from the first heading of the second level on, for a script that writes the rest anew."""
    words = PAGE.read_text() if PAGE.exists() else ""
    found = re.search(r"(?m)^## ", words)
    return words[found.start():] if found else ""
