"""A file and what the public tools see in it. Each is looked up once."""

from functools import cached_property
from pathlib import Path

from corpusTools import appearance
from corpusTools import outsideTools as tools
from corpusTools.pdfReader import PdfReader


class SeenFile:
    def __init__(self, path, password, folder):
        self.path, self.password, self._folder = Path(path), password, folder
        self.plain = (tools.decrypted(self.path, password, folder) if password else None) or self.path

    is_locked = cached_property(lambda self: tools.is_locked(self.path))
    faults = cached_property(lambda self: tools.faults(self.path, self.password))
    count = cached_property(lambda self: tools.qpdf_count(self.path, self.password))
    sizes = cached_property(lambda self: tools.page_sizes(self.plain, self.count))
    texts = cached_property(lambda self: tools.texts(self.plain))
    drawn = cached_property(lambda self: appearance.by_mupdf(self.plain))
    reader = cached_property(lambda self: PdfReader.of(self.plain))
    streams = cached_property(lambda self: PdfReader.of(self.plain, streams=True))

    @cached_property
    def pixels(self):
        """Digests of the pages by the first renderer that sees any, and that renderer."""
        for renderer in (tools.pixels, tools.poppler_pixels):
            if pages := renderer(self.plain):
                return pages, renderer
        return None, None

    @cached_property
    def turned(self):
        copy = tools.turned(self.plain, self._folder)
        return SeenFile(copy, "", self._folder) if copy else None
