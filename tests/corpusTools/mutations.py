"""Damages files by chance, in ways that reach far into whoever reads them."""

import re
import struct
import subprocess
import zlib
from functools import partial

NUMBERS = [b"0", b"-1", b"1", b"65536", b"2147483647", b"-2147483648", b"4294967295", b"9223372036854775807", b"1e30", b"0.0000001"]
WORDS = [0, 1, 0x7FFF, 0xFFFF, 0x10000, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF]
NUMBER = re.compile(rb"(?<![\w.#-])-?\d+(?:\.\d+)?(?![\w.])")
NAME = re.compile(rb"/[A-Za-z][A-Za-z0-9]{0,30}")
REFERENCE = re.compile(rb"\b\d+ \d+ R\b")
STREAM = re.compile(rb"(?<=stream\n).*?(?=\r?\nendstream)", re.DOTALL)
PNG_START = b"\x89PNG\r\n\x1a\n"
INFLATED_LIMIT = 4 << 20


def flip_bits(chance, data):
    changed = bytearray(data)
    for _ in range(chance.choice([1, 1, 3, 20])):
        changed[chance.randrange(len(changed))] ^= 1 << chance.randrange(8)
    return bytes(changed)


def overwrite(chance, data):
    start, end = _run(chance, data)
    filling = chance.choice([bytes(end - start), b"\xff" * (end - start), chance.randbytes(end - start)])
    return data[:start] + filling + data[end:]


def cut(chance, data):
    start, end = _run(chance, data)
    return data[:start] + data[end:] if chance.random() < 0.8 else data[:start]


def double(chance, data):
    start, end = _run(chance, data)
    return data[:end] + data[start:end] * chance.choice([1, 1, 1, 40]) + data[end:]


def hostile_words(chance, data):
    """Binary numbers of two and four bytes, mostly in the head."""
    changed = bytearray(data)
    for _ in range(chance.randint(1, 4)):
        form, mask = chance.choice([("<H", 0xFFFF), (">H", 0xFFFF), ("<I", 0xFFFFFFFF), (">I", 0xFFFFFFFF)])
        end = min(len(changed), chance.choice([64, 512, len(changed)])) - 4
        struct.pack_into(form, changed, chance.randrange(max(1, end)), chance.choice(WORDS) & mask)
    return bytes(changed)


def mutate(chance, data, ways):
    for _ in range(chance.choice([1, 1, 2, 3])):
        data = chance.choice(ways)(chance, data) if len(data) > 16 else data
    return data


def with_true_offsets(data):
    """A PDF in qpdf's editable form with its table mended, if it can be: so that the damage is reached as it stands."""
    return subprocess.run(["fix-qdf"], input=data, capture_output=True).stdout or data


def with_true_checksums(data):
    """A PNG whose chunks are taken for good."""
    out, at = bytearray(PNG_START), len(PNG_START)
    while at + 12 <= len(data):
        length = min(struct.unpack_from(">I", data, at)[0], len(data) - at - 12)
        body = data[at + 4:at + 8 + length]
        out += struct.pack(">I", length) + body + struct.pack(">I", zlib.crc32(body))
        at += 12 + length
    return bytes(out)


def _run(chance, data):
    start = chance.randrange(len(data))
    return start, min(len(data), start + chance.choice([1, 4, 16, len(data) // 100 + 1, len(data) // 20 + 1, len(data) // 4 + 1]))


def _substitute(pattern, new, chance, data):
    """A few places that fit the pattern, from the last on, so that the others stay where they were found."""
    found = list(pattern.finditer(data))
    others = [match.group() for match in found]
    for match in sorted(chance.sample(found, min(len(found), chance.randint(1, 6))), key=lambda match: -match.start()):
        data = data[:match.start()] + new(chance, match.group(), others) + data[match.end():]
    return data


def _packed_again(chance, packed, _):
    """What a stream inflates to, changed."""
    try:
        plain = zlib.decompressobj().decompress(packed, INFLATED_LIMIT)
    except zlib.error:
        return mutate(chance, packed, BYTES)
    return zlib.compress(mutate(chance, plain, BYTES + IN_TEXT))


def _other(chance, _, others):
    return chance.choice(others)


HOSTILE_NUMBERS = partial(_substitute, NUMBER, lambda chance, *_: chance.choice(NUMBERS))
IN_TEXT = [HOSTILE_NUMBERS, partial(_substitute, NAME, _other), partial(_substitute, REFERENCE, _other),
           partial(_substitute, NAME, lambda chance, old, _: b"/" + b"x" * (len(old) - 1))]  # as if the key were not there
IN_STREAMS = [partial(_substitute, STREAM, _packed_again), partial(_substitute, STREAM, lambda chance, old, _: mutate(chance, old, BYTES))]
BYTES = [flip_bits, overwrite, cut, double]
IN_PDF = BYTES + IN_TEXT * 2 + IN_STREAMS * 2
IN_PICTURE = BYTES + [hostile_words, hostile_words, HOSTILE_NUMBERS]
