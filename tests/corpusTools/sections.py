"""A document that several scripts write, a section each."""

import re


def write_section(path, title, text):
    """Puts the text in place of the section with that title, or at the end; the others stay."""
    head, *sections = re.split(r"^## ", path.read_text() if path.exists() else "", flags=re.MULTILINE)
    texts = dict(section.split("\n", 1) for section in sections)
    texts[title] = text
    path.write_text(head + "\n\n".join(f"## {name}\n\n{body.strip()}" for name, body in texts.items()) + "\n")
