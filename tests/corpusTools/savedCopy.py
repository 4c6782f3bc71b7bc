"""A file that was saved, and what the tools see in it. Each is looked up once."""

import re
from functools import cached_property
from hashlib import md5

from corpusTools import appearance
from corpusTools import outsideTools as tools

FILE_ID = re.compile(rb"/ID \[<[0-9a-fA-F]*><[0-9a-fA-F]*>\]")  # new each time that a file is written


class Copy:
    def __init__(self, path, password):
        self.path = path
        self.password = password
        self.size = path.stat().st_size

    @cached_property
    def digest(self):
        """Of everything but the file's identifier."""
        return md5(FILE_ID.sub(b"", self.path.read_bytes())).digest()

    @cached_property
    def plain(self):
        return tools.decrypted(self.path, self.password, self.path.parent) if self.password else self.path

    @cached_property
    def faults(self):
        return tools.faults(self.path, self.password)

    @cached_property
    def pages(self):
        return tools.qpdf_count(self.path, self.password)

    @cached_property
    def sizes(self):
        return tools.page_sizes(self.plain, self.pages)

    @cached_property
    def texts(self):
        return tools.texts(self.plain)

    @cached_property
    def mupdf_pages(self):
        return appearance.by_mupdf(self.plain)

    def forget_pages(self):
        """Lets go of the drawn pages, many megabytes where there are many."""
        self.__dict__.pop("mupdf_pages", None)
