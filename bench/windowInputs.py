"""A document whose pages can be recognised on the screen."""

import inputs
from pdfWriter import PdfWriter, add_page_tree

MARK = "#1060c0"  # the colour of the square in the middle of each page


def make_marked(path, pages=5000):
    """Pages of text with a square of one colour in their middle."""
    red, green, blue = (int(MARK[at:at + 2], 16) / 255 for at in (1, 3, 5))
    square = f"{red:.4f} {green:.4f} {blue:.4f} rg 247 370 100 100 re f\n"
    pdf = PdfWriter()
    numbers = [pdf.reserve() for _ in range(pages)]
    fonts = inputs._add_fonts(pdf)
    bodies = []
    for index, number in enumerate(numbers):
        prose = inputs.Prose(index % 50)  # making 5,000 different texts takes long and shows nothing more
        contents = pdf.add_stream(inputs._text_page(prose, index) + square)
        bodies.append((number, f"{inputs.A4} /Resources << /Font << /F1 {fonts[0]} 0 R /F2 {fonts[1]} 0 R >> >> "
                               f"/Contents {contents} 0 R"))
    tree = add_page_tree(pdf, bodies)
    pdf.write(path, pdf.add(f"<< /Type /Catalog /Pages {tree} 0 R >>"), inputs._add_info(pdf, "Marked pages"))
