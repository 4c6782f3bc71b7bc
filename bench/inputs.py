"""Makes the documents that the benchmark measures with. The same bytes each time."""

import math
import random

from pdfWriter import PdfWriter, add_page_tree, refs, stream, text

BOOK_PAGES = 1000
ROMAN_PAGES = 20
CHAPTERS = 20
SECTIONS = 4  # of each chapter: 100 bookmarks with the chapters themselves
FORM_PAGES = 5  # with a text field, two checkboxes and a choice each
A4 = "/MediaBox [0 0 595.28 841.89]"

WORDS = """the of and to in is that for it as was with be by on not he his but at are this have from or had
an they which one you were all her she there would their we him been has when who will no more if out so up
said what its about than into them can only other time new some could these two may first then do any like
my now over such our man me even most made after also well many must before through back years where much
your way down should because long each just state those people too mister good how very make world still see
work life under day being never against great both between came another same while last might house found
came general during without place around small however home water number night point part system form fact
group hand company rather public order school light paper window letter service morning question government
business country history figure measure journey kitchen garden copper harbour lantern north several remained
evidence committee pressure distance material temperature organisation particular consideration""".split()


class Prose:
    """Sentences with the rhythm of real ones, from a fixed seed."""

    def __init__(self, seed):
        self._random = random.Random(seed)
        self._weights = [1 / (rank + 3) for rank in range(len(WORDS))]

    def title(self):
        return " ".join(self._words(self._random.randint(2, 5))).capitalize()

    def lines(self, count, width=72):
        """Lines of at most `width` characters, broken between words."""
        lines, line = [], ""
        while len(lines) < count:
            for word in self._sentence():
                if len(line) + 1 + len(word) > width:
                    lines.append(line)
                    line = word
                else:
                    line = f"{line} {word}" if line else word
        return lines[:count]

    def _words(self, count):
        return self._random.choices(WORDS, self._weights, k=count)

    def _sentence(self):
        words = self._words(self._random.randint(5, 22))
        words[0] = words[0].capitalize()
        words[len(words) // 2] += self._random.choice(["", "", ","])
        words[-1] += "."
        return words


def make_book(path, pages=BOOK_PAGES):
    """Pages of text with links, bookmarks, named destinations, page labels and form fields."""
    pdf = PdfWriter()
    numbers = [pdf.reserve() for _ in range(pages)]
    fonts = _add_fonts(pdf)
    prose = Prose(pages)
    marks = _marked_pages(pages)
    fields, widgets = _add_form(pdf, numbers, fonts, pages)
    bodies = []
    for index, number in enumerate(numbers):
        contents = pdf.add_stream(_text_page(prose, index))
        annotations = widgets.get(index, []) + _links_of(pdf, index, numbers)
        bodies.append((number, f"{A4} /Resources << /Font << /F1 {fonts[0]} 0 R /F2 {fonts[1]} 0 R >> >> "
                               f"/Contents {contents} 0 R /Annots {refs(annotations)}"))
    tree = add_page_tree(pdf, bodies)
    outlines = _add_outlines(pdf, prose, marks, numbers)
    names = _add_names(pdf, numbers)
    root = pdf.add(f"<< /Type /Catalog /Pages {tree} 0 R /Outlines {outlines} 0 R /PageMode /UseOutlines "
                   f"/Names << /Dests {names} 0 R >> "
                   f"/PageLabels << /Nums [0 << /S /r >> {ROMAN_PAGES} << /S /D /St 1 >>] >> "
                   f"/AcroForm << /Fields {refs(fields)} /DA (/F1 10 Tf 0 g) "
                   f"/DR << /Font << /F1 {fonts[0]} 0 R >> >> >> >>")
    pdf.write(path, root, _add_info(pdf, "A long book"))


def make_plain(path, pages=5000):
    pdf = PdfWriter()
    numbers = [pdf.reserve() for _ in range(pages)]
    font = _add_fonts(pdf)[0]
    bodies = []
    for index, number in enumerate(numbers):
        contents = pdf.add_stream(f"BT /F1 24 Tf 72 720 Td (Page {index + 1}) Tj ET")
        bodies.append((number, f"{A4} /Resources << /Font << /F1 {font} 0 R >> >> /Contents {contents} 0 R"))
    tree = add_page_tree(pdf, bodies)
    pdf.write(path, pdf.add(f"<< /Type /Catalog /Pages {tree} 0 R >>"), _add_info(pdf, "Plain pages"))


def make_illustrated(path, pages=117):
    """A picture and curves on each page, and one resources dictionary that all pages share."""
    pdf = PdfWriter()
    numbers = [pdf.reserve() for _ in range(pages)]
    font = _add_fonts(pdf)[0]
    pictures = " ".join(f"/Im{index} {_add_picture(pdf, index)} 0 R" for index in range(pages))
    resources = pdf.add(f"<< /Font << /F1 {font} 0 R >> /XObject << {pictures} >> >>")
    bodies = []
    for index, number in enumerate(numbers):
        contents = pdf.add_stream(_illustrated_page(Prose(index), index))
        bodies.append((number, f"{A4} /Resources {resources} 0 R /Contents {contents} 0 R"))
    tree = add_page_tree(pdf, bodies)
    pdf.write(path, pdf.add(f"<< /Type /Catalog /Pages {tree} 0 R >>"), _add_info(pdf, "Illustrated"))


def _add_fonts(pdf):
    return [pdf.add(f"<< /Type /Font /Subtype /Type1 /BaseFont /{name} /Encoding /WinAnsiEncoding >>")
            for name in ("Times-Roman", "Helvetica-Bold")]


def _add_info(pdf, title):
    return pdf.add(f"<< /Title {text(title)} /Author (Bench) /CreationDate (D:20240101000000Z) >>")


def _text_page(prose, index):
    """A heading, about 3,000 characters of text and a page number."""
    lines = prose.lines(46)
    shown = "\n".join(f"{text(line)} Tj T*" for line in lines)
    return (f"BT /F2 16 Tf 72 780 Td {text(prose.title())} Tj ET\n"
            f"BT /F1 11 Tf 14.5 TL 72 750 Td\n{shown}\nET\n"
            f"0.5 w 72 60 m 523 60 l S BT /F1 9 Tf 290 45 Td ({index + 1}) Tj ET\n")


def _links_of(pdf, index, numbers):
    """A link on every second page, in turn forward and back, by each of three ways to name a target."""
    if index % 2:
        return []
    count, turn = len(numbers), index // 2
    target = (index + 137) % count if turn % 2 else (index - 137) % count
    forward = turn % 2
    if forward and target < index or not forward and target > index:
        target = count - 1 if forward else 0
    explicit = f"[{numbers[target]} 0 R /XYZ 72 {760 - target % 7 * 90} null]"
    way = [f"/Dest {explicit}", f"/A << /S /GoTo /D {explicit} >>",
           f"/Dest (place{_nearest_place(target):04d})"][turn % 3]
    bottom = 700 - turn % 9 * 60
    rect = f"[72 {bottom} 240 {bottom + 14}]"
    return [pdf.add(f"<< /Type /Annot /Subtype /Link /Rect {rect} /Border [0 0 0] {way} >>")]


def _nearest_place(index):
    return index - index % 10


def _add_names(pdf, numbers):
    """Every tenth page has a name; the names stand in leaves of 25."""
    places = range(0, len(numbers), 10)
    leaves = []
    for start in range(0, len(places), 25):
        part = places[start:start + 25]
        pairs = " ".join(f"(place{place:04d}) [{numbers[place]} 0 R /Fit]" for place in part)
        limits = f"/Limits [(place{part[0]:04d}) (place{part[-1]:04d})]"
        leaves.append(pdf.add(f"<< {limits} /Names [{pairs}] >>"))
    return pdf.add(f"<< /Kids {refs(leaves)} >>")


def _marked_pages(pages):
    """The pages of the chapters and their sections, as lists of page indexes."""
    step = pages // (CHAPTERS * (SECTIONS + 1))
    return [[(chapter * (SECTIONS + 1) + part) * step for part in range(SECTIONS + 1)]
            for chapter in range(CHAPTERS)]


def _add_outlines(pdf, prose, marks, numbers):
    root = pdf.reserve()
    chapters = [pdf.reserve() for _ in marks]
    for place, (chapter, pages) in enumerate(zip(chapters, marks)):
        sections = [pdf.reserve() for _ in pages[1:]]
        for at, (section, page) in enumerate(zip(sections, pages[1:])):
            title = f"{place + 1}.{at + 1} {prose.title()}"
            pdf.put(section, _bookmark(title, numbers[page], chapter, sections, at))
        below = f"/First {sections[0]} 0 R /Last {sections[-1]} 0 R /Count {len(sections)}"
        title = f"{place + 1} {prose.title()}"
        pdf.put(chapter, _bookmark(title, numbers[pages[0]], root, chapters, place, below))
    pdf.put(root, f"<< /Type /Outlines /First {chapters[0]} 0 R /Last {chapters[-1]} 0 R "
                  f"/Count {len(chapters) * (SECTIONS + 1)} >>")
    return root


def _bookmark(title, page, parent, siblings, at, below=""):
    before = f"/Prev {siblings[at - 1]} 0 R " if at else ""
    after = f"/Next {siblings[at + 1]} 0 R " if at + 1 < len(siblings) else ""
    return (f"<< /Title {text(title)} /Parent {parent} 0 R {before}{after}{below} "
            f"/Dest [{page} 0 R /XYZ 72 800 null] >>")


def _add_form(pdf, numbers, fonts, pages):
    """Returns the fields and, for each page index, its widgets."""
    fields, widgets = [], {}
    for at in range(FORM_PAGES):
        index = (at * 2 + 1) * pages // (2 * FORM_PAGES)
        page = numbers[index]
        made = [_add_text_field(pdf, page, at, fonts[0]), _add_checkbox(pdf, page, at, 0, on=True),
                _add_checkbox(pdf, page, at, 1, on=False), _add_choice(pdf, page, at, fonts[0])]
        widgets[index] = made
        fields += made
    return fields, widgets


def _add_text_field(pdf, page, at, font):
    look = _add_look(pdf, 180, 18, f"/Tx BMC q BT /F1 10 Tf 4 5 Td (Answer {at + 1}) Tj ET Q EMC", font)
    return pdf.add(f"<< /Type /Annot /Subtype /Widget /FT /Tx /T (name{at}) /V (Answer {at + 1}) /F 4 "
                   f"/P {page} 0 R /Rect [72 24 252 42] /DA (/F1 10 Tf 0 g) /AP << /N {look} 0 R >> >>")


def _add_checkbox(pdf, page, at, side, on):
    ticked = _add_look(pdf, 14, 14, "1 w 2 2 10 10 re S 3 7 m 6 3 l 11 11 l S")
    empty = _add_look(pdf, 14, 14, "1 w 2 2 10 10 re S")
    state = "/Yes" if on else "/Off"
    left = 270 + side * 20
    return pdf.add(f"<< /Type /Annot /Subtype /Widget /FT /Btn /T (tick{at}{side}) /V {state} /AS {state} "
                   f"/F 4 /P {page} 0 R /Rect [{left} 24 {left + 14} 38] "
                   f"/AP << /N << /Yes {ticked} 0 R /Off {empty} 0 R >> >> >>")


def _add_choice(pdf, page, at, font):
    look = _add_look(pdf, 120, 18, "/Tx BMC q BT /F1 10 Tf 4 5 Td (Green) Tj ET Q EMC", font)
    return pdf.add(f"<< /Type /Annot /Subtype /Widget /FT /Ch /Ff 131072 /T (colour{at}) /V (Green) "
                   f"/Opt [(Red) (Green) (Blue)] /F 4 /P {page} 0 R /Rect [320 24 440 42] "
                   f"/DA (/F1 10 Tf 0 g) /AP << /N {look} 0 R >> >>")


def _add_look(pdf, width, height, content, font=None):
    resources = f"/Font << /F1 {font} 0 R >>" if font else ""
    return pdf.add_stream(content, f"/Type /XObject /Subtype /Form /BBox [0 0 {width} {height}] "
                                   f"/Resources << {resources} >>")


def _add_picture(pdf, index, width=320, height=240):
    """A photograph-like picture: smooth waves with grain, so that it does not pack to nothing."""
    grain = random.Random(index).randbytes(width * height * 3)
    across = [int(100 + 60 * math.sin((x + index * 9) / 30)) for x in range(width * 3)]
    rows = bytearray()
    for y in range(height):
        shade = int(40 * math.sin((y + index) / 25))
        row = grain[y * width * 3:(y + 1) * width * 3]
        rows += bytes(base + shade + (noise & 7) for base, noise in zip(across, row))
    return pdf.add(stream(bytes(rows), f"/Type /XObject /Subtype /Image /Width {width} /Height {height} "
                                       "/ColorSpace /DeviceRGB /BitsPerComponent 8", level=1))


def _illustrated_page(prose, index):
    lines = "\n".join(f"{text(line)} Tj T*" for line in prose.lines(18))
    curves = "\n".join(f"{at / 40:.3f} 0.3 0.6 RG {72 + at} 120 m {100 + at} {200 + at * 3} {300 - at} "
                       f"{60 + at * 4} {500 - at * 2} {150 + (at * index) % 90} c S" for at in range(40))
    return (f"BT /F1 11 Tf 14 TL 72 780 Td\n{lines}\nET\n"
            f"q 400 0 0 230 97 270 cm /Im{index} Do Q\n0.7 w\n{curves}\n")
