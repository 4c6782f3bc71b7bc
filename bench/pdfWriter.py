"""Writes PDF files object by object: just enough for inputs that other programs read without complaint."""

import zlib


class PdfWriter:
    def __init__(self):
        self._objects = []

    def reserve(self):
        """The number of an object whose body follows later."""
        self._objects.append(None)
        return len(self._objects)

    def put(self, number, body):
        self._objects[number - 1] = body if isinstance(body, bytes) else body.encode("latin-1")

    def add(self, body):
        number = self.reserve()
        self.put(number, body)
        return number

    def add_stream(self, data, entries="", level=6):
        return self.add(stream(data, entries, level))

    def write(self, path, root, info):
        out = bytearray(b"%PDF-1.7\n%\xe2\xe3\xcf\xd3\n")
        offsets = []
        for number, body in enumerate(self._objects, 1):
            offsets.append(len(out))
            out += b"%d 0 obj\n" % number + body + b"\nendobj\n"
        start = len(out)
        out += b"xref\n0 %d\n0000000000 65535 f \n" % (len(offsets) + 1)
        out += b"".join(b"%010d 00000 n \n" % offset for offset in offsets)
        out += b"trailer\n<< /Size %d /Root %d 0 R /Info %d 0 R >>\n" % (len(offsets) + 1, root, info)
        out += b"startxref\n%d\n%%%%EOF\n" % start
        path.write_bytes(out)


def stream(data, entries="", level=6):
    packed = zlib.compress(data if isinstance(data, bytes) else data.encode("latin-1"), level)
    head = f"<< /Length {len(packed)} /Filter /FlateDecode {entries} >>\nstream\n"
    return head.encode("latin-1") + packed + b"\nendstream"


def text(words):
    """A string object."""
    escaped = words.replace("\\", "\\\\").replace("(", "\\(").replace(")", "\\)")
    return f"({escaped})"


def refs(numbers):
    return "[" + " ".join(f"{number} 0 R" for number in numbers) + "]"


def add_page_tree(pdf, pages, fan_out=25):
    """Puts the reserved page objects into a balanced tree. `pages` is a list of (number, entries).
    Returns the root's number."""
    level = []
    for start in range(0, len(pages), fan_out):
        group = pages[start:start + fan_out]
        node = pdf.reserve()
        for number, entries in group:
            pdf.put(number, f"<< /Type /Page /Parent {node} 0 R {entries} >>")
        level.append((node, [number for number, _ in group], len(group)))
    while len(level) > 1:
        level = [_join(pdf, level[start:start + fan_out]) for start in range(0, len(level), fan_out)]
    node, kids, count = level[0]
    pdf.put(node, f"<< /Type /Pages /Kids {refs(kids)} /Count {count} >>")
    return node


def _join(pdf, group):
    parent = pdf.reserve()
    for node, kids, count in group:
        pdf.put(node, f"<< /Type /Pages /Parent {parent} 0 R /Kids {refs(kids)} /Count {count} >>")
    return parent, [node for node, _, _ in group], sum(count for _, _, count in group)
