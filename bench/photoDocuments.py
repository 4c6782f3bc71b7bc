"""Ten documents full of pictures, made from the photos of Debian's mate-backgrounds. Made once, then kept."""

import os
import random
import struct
import subprocess
import zlib
from concurrent.futures import ThreadPoolExecutor
from dataclasses import dataclass
from functools import partial
from pathlib import Path

from inputs import Prose
from pdfWriter import PdfWriter, add_page_tree

BACKGROUNDS = Path("/usr/share/backgrounds/mate")
A4_LONG, A4_SHORT = 841.89, 595.28  # points
COLUMN = A4_SHORT - 2 * 56.7  # within margins of 20 mm
CAMERA = "4000x3000"
CMYK_DECODE = "/Decode [1 0 1 0 1 0 1 0]"  # JPEG files hold these colours inverted


@dataclass
class Picture:
    """An image stream: its bytes, its size in pixels, and the rest of its dictionary."""
    data: bytes
    width: int
    height: int
    entries: str


@dataclass
class PhotoDocument:
    name: str
    path: str
    pages: int
    is_jpeg: bool


def photo_documents(folder):
    """All ten, as PhotoDocuments."""
    if not BACKGROUNDS.is_dir():
        raise SystemExit("bench/compare needs the package mate-backgrounds.")
    plans = [
        ("16 photos as they are", _every("*/*.jpg"), _as_it_is),
        ("14 pictures of deflated samples", _every("*/*.png"), _deflated),
        ("12 photos, deflated", _every("nature/*.jpg"), _deflated),
        ("12 photos, JPEG 2000", _every("nature/*.jpg"), _jpeg2000),
        ("12 photos, CMYK", _every("nature/*.jpg"), _cmyk),
        ("12 photos, grey", _every("nature/*.jpg"), _grey),
        ("5 photos of 12 megapixels", _every("nature/*.jpg")[4:9], _camera),
        ("20 scans in colour", _taken(20), partial(_scan, colour=True)),
        ("10 scans in grey", _taken(10), partial(_scan, colour=False)),
        ("100 photos of 1600 pixels", _taken(100), _part),
    ]
    return [_document(folder, number, *plan) for number, plan in enumerate(plans, 1)]


def photographs(folder):
    """A document of pages that a photograph fills, as it is. Returns a PhotoDocument."""
    path = folder / "photographs.pdf"
    photos = _every("nature/*.jpg")
    if not path.exists():
        _write(path, [_as_it_is(photo, 0) for photo in photos], _filled_page)
    return PhotoDocument("photographs", str(path), len(photos), True)


def _every(pattern):
    return sorted(BACKGROUNDS.glob(pattern))


def _taken(count):
    photos = _every("nature/*.jpg")
    return [photos[index % len(photos)] for index in range(count)]


def _document(folder, number, name, photos, store):
    path = folder / f"photos-{number}.pdf"
    if not path.exists():
        with ThreadPoolExecutor(os.cpu_count()) as workers:
            pictures = list(workers.map(store, photos, range(len(photos))))
        _write(path, pictures)
    is_jpeg = b"/DCTDecode" in path.read_bytes()
    return PhotoDocument(name, str(path), len(photos), is_jpeg)


def _write(path, pictures, page=None):
    pdf = PdfWriter()
    pages = [(pdf.reserve(), (page or _sheet)(pdf, picture)) for picture in pictures]
    root = pdf.add(f"<< /Type /Catalog /Pages {add_page_tree(pdf, pages)} 0 R >>")
    unfinished = path.with_suffix(".part")
    pdf.write(unfinished, root, pdf.add("<< /Title (Photos) >>"))
    unfinished.rename(path)


def _filled_page(pdf, picture):
    """Entries of a page as long as A4, in the picture's proportions."""
    scale = A4_LONG / max(picture.width, picture.height)
    size = (picture.width * scale, picture.height * scale)
    return _page(pdf, picture, size, (0, 0, *size))


def _sheet(pdf, picture):
    """Entries of a page of A4. A picture as high as it fills it; any other is as wide as a column of text."""
    ratio = picture.height / picture.width
    fills = ratio > 1.4
    width, height = (A4_SHORT, A4_LONG) if fills else (COLUMN, COLUMN * ratio)
    box = ((A4_SHORT - width) / 2, (A4_LONG - height) / 2, width, height)
    return _page(pdf, picture, (A4_SHORT, A4_LONG), box)


def _page(pdf, picture, size, box):
    """`size` in points; `box`: left, bottom, width and height of the picture."""
    left, bottom, width, height = box
    image = pdf.add(f"<< /Type /XObject /Subtype /Image /Width {picture.width} /Height {picture.height} "
                    f"/BitsPerComponent 8 {picture.entries} /Length {len(picture.data)} >>\n"
                    "stream\n".encode() + picture.data + b"\nendstream")
    contents = pdf.add_stream(f"q {width:.2f} 0 0 {height:.2f} {left:.2f} {bottom:.2f} cm /P Do Q")
    return (f"/MediaBox [0 0 {size[0]:.2f} {size[1]:.2f}] /Resources << /XObject << /P {image} 0 R >> >> "
            f"/Contents {contents} 0 R")


def _as_it_is(photo, _):
    return _jpeg(photo.read_bytes(), "/ColorSpace /DeviceRGB")


def _deflated(photo, _):
    return _samples(_converted(photo, "ppm:-", "-background", "white", "-flatten", "-strip", "-depth", "8"))


def _jpeg2000(photo, _):
    """OpenJPEG through ImageMagick, with losses that are not seen."""
    data = _converted(photo, "jp2:-", "-define", "jp2:quality=42")
    header = data.index(b"ihdr")
    height, width = struct.unpack(">II", data[header + 4:header + 12])
    return Picture(data, width, height, "/Filter /JPXDecode /ColorSpace /DeviceRGB")


def _cmyk(photo, _):
    data = _converted(photo, "jpeg:-", "-colorspace", "CMYK", "-quality", "90")
    return _jpeg(data, f"/ColorSpace /DeviceCMYK {CMYK_DECODE}")


def _grey(photo, _):
    data = _converted(photo, "jpeg:-", "-colorspace", "Gray", "-quality", "90")
    return _jpeg(data, "/ColorSpace /DeviceGray")


def _camera(photo, _):
    data = _converted(photo, "jpeg:-", "-resize", f"{CAMERA}^", "-extent", CAMERA, "-attenuate", "0.1",
                      "-seed", "1", "+noise", "Gaussian", "-quality", "92")
    return _jpeg(data, "/ColorSpace /DeviceRGB")


def _part(photo, index):
    """A cut of the photo, another one each time."""
    chance = random.Random(index)
    left, top = (chance.randint(0, most) for most in (300, 200))
    data = _converted(photo, "jpeg:-", "-resize", "1900x1400^", "-crop", f"1600x1200+{left}+{top}", "+repage",
                      "-quality", "90")
    return _jpeg(data, "/ColorSpace /DeviceRGB")


def _scan(photo, index, colour):
    """A sheet of A4 with a photo above a column of text, on paper with grain."""
    dpi = 300
    width, height = (round(points / 72 * dpi) for points in (A4_SHORT, A4_LONG))
    edge, line = dpi * 3 // 4, dpi // 5
    words = "\n".join(Prose(index).lines(height // 2 // line - 4))
    data = _converted(
        photo, "jpeg:-", "-resize", f"{width - 2 * edge}x{height // 2 - edge}", "-background", "#f4f1ea",
        "-gravity", "north", "-splice", f"0x{edge}", "-extent", f"{width}x{height}", "-gravity", "northwest",
        "-font", "Nimbus-Roman", "-pointsize", str(dpi // 7), "-fill", "#202024",
        "-annotate", f"+{edge}+{height // 2 + edge}", words, "-attenuate", "0.15", "-seed", "1",
        "+noise", "Gaussian", "-quality", "85", *([] if colour else ["-colorspace", "Gray"]))
    return _jpeg(data, f"/ColorSpace /{'DeviceRGB' if colour else 'DeviceGray'}")


def _converted(photo, *words):
    *options, output = [*words[1:], words[0]]
    command = ["convert-im6.q16", photo, *options, output]
    return subprocess.run(command, check=True, capture_output=True).stdout


def _samples(ppm):
    kind, width, height, most, samples = ppm.split(maxsplit=4)
    width, height = int(width), int(height)
    assert kind == b"P6" and most == b"255"
    samples = ppm[-width * height * 3:]  # the first of them may look like a blank
    return Picture(zlib.compress(samples), width, height, "/Filter /FlateDecode /ColorSpace /DeviceRGB")


def _jpeg(data, entries):
    width, height = _size_of_jpeg(data)
    return Picture(data, width, height, f"/Filter /DCTDecode {entries}")


def _size_of_jpeg(data):
    """From the frame header (ITU-T T.81, B.2.2), of whatever process."""
    at = 2
    while data[at + 1] not in (0xC0, 0xC1, 0xC2):
        at += 2 + struct.unpack(">H", data[at + 2:at + 4])[0]
    height, width = struct.unpack(">HH", data[at + 5:at + 9])
    return width, height
