"""A job that goes on beside the requests that follow. The engine does one thing at a time: a page that takes long to
draw keeps it busy, so that a save behind it is surely still waiting when the next lines are read."""

from pathlib import Path

from driverCase import DriverCase, make_locked
from pdfWriter import PdfWriter, add_page_tree


class Jobs(DriverCase):
    def setUp(self):
        super().setUp()
        make_slow(Path("slow.pdf"))
        self.ask("open", files=["a.pdf", "slow.pdf"])

    def keep_engine_busy(self):
        return self.begin("image", file=1, page=1, longSide=1000)

    def test_start_at_once_and_tell_their_end_once(self):
        started = self.begin("saveAs", file=0, to="copy.pdf", id="save")
        self.assertEqual(started, {"id": "save", "ok": True, "job": 1})
        self.ask("wait", job=1, id=7).tells(
            id=7, outcome="done", saved=["@/copy.pdf"], panels=[{}], toast="Saved “copy.pdf”")
        self.ask("wait", job=1).tells(ok=False)
        make_locked("locked.pdf", "pw")
        self.begin("open", files="locked.pdf", passwords={"locked.pdf": ["pw"]})
        self.ask("wait", job=2).tells(outcome="done", prompts=[{"fileName": "locked.pdf"}])

    def test_write_nothing_when_cancelled(self):
        copy = {"to": "copy.pdf"}
        for verb, fields in (("saveAs", copy), ("measure", {}), ("compress", {"limit": 1, **copy})):
            with self.subTest(verb):
                self.keep_engine_busy()
                job = self.begin(verb, file=0, **fields)["job"]
                self.ask("cancel", job=job).tells(outcome="cancelled", error=None, toast=None)
        self.assertFalse(Path("copy.pdf").exists())
        self.ask("state").tells(busy=None)

    def test_drop_a_second_one_after_its_panel(self):
        self.keep_engine_busy().tells(job=1)
        self.begin("saveAs", file=0, to="first.pdf").tells(job=2)
        self.ask("extract", file=0, to="second.pdf").tells(outcome="dropped", error=None, panels=[{}])
        self.ask("saveAs", file=0).tells(outcome="cancelled")
        self.ask("saveAs", file=0, to="a.pdf").tells(outcome="refused")
        self.ask("wait", job=2).tells(outcome="done", saved=["@/first.pdf"])
        self.assertFalse(Path("second.pdf").exists())

    def test_keep_their_errors_from_other_requests(self):
        self.keep_engine_busy()
        self.begin("saveAs", file=0, to="full.pdf")
        self.ask("delete", file=1).tells(
            outcome="refused", error="A file needs at least one page. To get rid of it, close the file.")
        self.ask("wait", job=2).tells(outcome="failed", error="No space left on device")

    def test_stop_at_the_end_of_input(self):
        self.keep_engine_busy()
        self.begin("saveAs", file=0, to="copy.pdf")
        self.driver.end_input()
        self.assertFalse(Path("copy.pdf").exists())


def make_slow(path):
    lines = "40 w\n" + "".join(f"0 {2 * at} m 600 {800 - 2 * at} l S\n" for at in range(400))
    pdf = PdfWriter()
    contents = pdf.add_stream(lines)
    tree = add_page_tree(pdf, [(pdf.reserve(), f"/MediaBox [0 0 600 800] /Contents {contents} 0 R")])
    pdf.write(path, pdf.add(f"<< /Type /Catalog /Pages {tree} 0 R >>"), pdf.add("<< >>"))
