"""What the scripts tell: tables, and a document that several of them write, a section each."""

import re


def table(head, rows):
    """In Markdown, with an empty line behind it. The first column of the head, "Name | Number | …", is of words."""
    lines = [f"| {head} |", "|---" + "|---:" * head.count("|") + "|"]
    return "\n".join(lines + [f"| {' | '.join(map(str, row))} |" for row in rows]) + "\n"


def tell(table, words, title, path):
    """Prints the table. With a path, it takes the place of that document's section with that title, or comes at the end;
    the others stay."""
    print(table)
    if path:
        head, *sections = re.split(r"^## ", path.read_text() if path.exists() else "", flags=re.MULTILINE)
        texts = {**dict(section.split("\n", 1) for section in sections), title: f"{words}\n\n{table}"}
        path.write_text(head + "\n\n".join(f"## {name}\n\n{body.strip()}" for name, body in texts.items()) + "\n")
