"""Each verb: the fields that it takes and tells."""

import subprocess
from pathlib import Path

from driverCase import DriverCase, make_locked

# Name: request to a document of five pages, of which the second and the fourth are selected; the pages after it, by
# index in their source, with their turn; the positions selected.
EDITS = {
    "select all": ("select", {}, "0 1 2 3 4", [1, 2, 3, 4, 5]),
    "turn the selection": ("turn", {}, "0 1' 2 3' 4", [2, 4]),
    "turn left": ("turn", {"pages": [1], "clockwise": False}, "0''' 1 2 3 4", [2, 4]),
    "turn nothing": ("turn", {"pages": []}, "0 1 2 3 4", [2, 4]),
    "delete the selection": ("delete", {}, "0 2 4", []),
    "move the selection": ("move", {"before": 1}, "1 3 0 2 4", [1, 2]),
    "move to the end": ("move", {"pages": [1], "before": None}, "1 2 3 4 0", [1, 3]),
    "drop a page": ("dropPages", {"page": 5, "before": 1}, "4 0 1 2 3", [3, 5]),
    "insert": ("insert", {"files": ["b.pdf"]}, "0 1 2 3 0 1 4", [5, 6]),
}


class Verbs(DriverCase):
    def setUp(self):
        super().setUp()
        noise = ["-size", "1400x1050", "xc:grey", "-seed", "7", "+noise", "Random"]
        subprocess.run(["convert-im6.q16", *noise, "photo.jpg"], check=True)
        make_locked("locked.pdf", "pw")

    def open(self, *files):
        self.ask("open", files=files).tells(outcome="done", file=0)

    def edit(self):
        self.ask("turn", file=0, pages=[1]).tells(outcome="done")

    def test_edits(self):
        for name, (verb, fields, wanted, selection) in EDITS.items():
            with self.subTest(name):
                self.open("a.pdf")
                self.ask("select", file=0, pages=[4, 2]).tells(outcome="done")
                self.ask(verb, file=0, **fields).tells(outcome="done")
                document = self.ask("state")["documents"][0]
                pages = " ".join(str(page["index"]) + "'" * (page["turn"] // 90) for page in document["pages"])
                self.assertEqual((pages, document["selection"]), (wanted, selection))
            self.ask("close", file=0)

    def test_open(self):
        self.ask("state").tells(destination="home", file=None, documents=[])
        files = ["b.pdf", "photo.jpg", "a.pdf"]
        self.ask("open", files=files, tool="split", id=[7]).tells(
            id=[7], ok=True, outcome="done", error=None, toast=None, prompts=[], panels=[], saved=[], bytes=0, file=2)
        self.ask("state").tells(destination="file", sheet="split", file=2)
        self.ask("open", files="notes.txt").tells(outcome="refused", error="Folvane opens PDFs and images.")
        self.ask("open", files=["notes.txt", "none.pdf"]).tells(outcome="failed", file=2)
        self.ask("insert", file=0, files=["none.pdf"]).tells(outcome="failed")

    def test_state_and_image(self):
        self.open("a.pdf")
        self.edit()
        self.ask("image", file=0, page=1, longSide=80, to="a.png").tells(outcome="done", width=80, height=57)
        self.assertEqual(Path("a.png").read_bytes()[:4], b"\x89PNG")
        page = {"path": "@/a.pdf", "index": 0, "turn": 90, "width": 841.89, "height": 595.28, "stamps": []}
        document = {"url": "file://@/a.pdf", "name": "a", "isPDF": True, "isEdited": True, "locked": False,
                    "selection": [], "statusLine": "5 pages · not saved", "pages": [page, {}, {}, {}, {}]}
        self.ask("state").tells(busy=None, closing=None, sheet=None, merge=[], documents=[document])

    def test_save_and_extract(self):
        Path("there.pdf").write_text("old")
        self.open("a.pdf")
        panel = {"kind": "save", "name": "a (edited).pdf", "near": "@", "prompt": None, "types": ["pdf"]}
        self.ask("saveAs", file=0).tells(outcome="cancelled", saved=[], panels=[panel])
        question = {"kind": "replace", "name": "there.pdf", "near": "@"}
        self.ask("saveAs", file=0, to="there").tells(outcome="cancelled", panels=[{}, question, {}])
        saved = self.ask("saveAs", file=0, to=["there", "else.pdf"])
        saved.tells(saved=["@/else.pdf"], bytes=Path("else.pdf").stat().st_size)
        self.ask("saveAs", file=0, to="there", replace=True).tells(
            outcome="done", saved=["@/there.pdf"], toast="Saved “there.pdf”")
        self.ask("state", to="left-over.pdf").tells(ok=True)
        self.ask("saveAs", file=0).tells(outcome="cancelled")
        self.ask("saveAs", file=0, to="a.pdf").tells(outcome="refused")
        self.ask("saveAs", file=0, to="full.pdf").tells(outcome="failed", error="No space left on device")
        self.ask("extract", file=0, pages=[5, 1, 2], to="copy.pdf").tells(
            outcome="done", panels=[{"name": "a (pages 1-2, 5).pdf"}], saved=["@/copy.pdf"])
        self.ask("state").tells(documents=[{"selection": [1, 2, 5]}])
        self.driver.end_input()
        self.assertIn("friend.savedFiles=3", (self.driver.config / "folvane/folvane.ini").read_text())

    def test_compress(self):
        self.open("photo.jpg")
        self.ask("compress", file=0, choice="small", to="s.pdf").tells(builds=1, reached=None)
        self.ask("measure", file=0).tells(outcome="done", mostlyTextNote=None)
        self.ask("compress", file=0, choice="small", to="s.pdf").tells(outcome="done", builds=0)
        self.ask("compress", file=0, limit=100000000, to="s.pdf").tells(builds=0, reached=True, pagesAsPictures=False)
        self.ask("compress", file=0, limit=1, to="s.pdf").tells(builds=3, reached=False)
        step = {"maxPixels": 700, "jpegQuality": 0.2, "pagesAsPictures": True}
        self.ask("compress", file=0, **step, to="s.pdf").tells(builds=1, reached=None, pagesAsPictures=True)
        self.ask("compress", file=0, choice="small").tells(outcome="cancelled", saved=[])
        self.ask("turn", file=0)
        self.ask("compress", file=0, choice="small", to="s.pdf").tells(builds=1)

    def test_merge(self):
        self.open("a.pdf")
        self.ask("mergeAdd", file=0).tells(outcome="done")
        self.ask("merge", to="m.pdf").tells(outcome="refused")
        self.ask("mergeAdd", files=["b.pdf", "locked.pdf"]).tells(
            outcome="cancelled", prompts=[{"fileName": "locked.pdf", "wasWrong": False}])
        self.ask("mergeAdd", files="none.pdf").tells(outcome="failed")
        self.ask("mergeAdd", files="photo.jpg").tells(outcome="done")
        self.ask("mergeMove", **{"from": 2}, to=0).tells(outcome="done")
        self.ask("mergeMove", **{"from": [0, 1]}, to=3).tells(outcome="done")
        rows = [{"name": "b", "pages": 2}, {"name": "photo", "pages": 1}, {"name": "a", "pages": 5}]
        self.ask("state").tells(destination="merge", merge=rows)
        self.ask("mergeRemove", row=1).tells(outcome="done")
        self.ask("merge").tells(outcome="cancelled")
        self.ask("merge", to="m.pdf").tells(outcome="done", saved=["@/m.pdf"], panels=[{"name": "b (merged).pdf"}])
        self.ask("mergeClear").tells(outcome="done")
        self.ask("state").tells(merge=[])

    def test_split(self):
        self.open("a.pdf")
        self.ask("split", file=0, mode="ranges", ranges="2-1", folder=".").tells(outcome="refused", panels=[])
        self.ask("split", file=0, mode="each").tells(outcome="cancelled")
        self.ask("split", file=0, mode="every", every=3, folder=".").tells(
            outcome="done", saved=["@/./a 1-3.pdf", "@/./a 4-5.pdf"],
            panels=[{"kind": "folder", "prompt": "Split Here"}])
        self.ask("select", file=0, pages=[1, 4])
        self.ask("split", file=0, mode="ranges", folder=".").tells(summary="Makes 2 files: 1, 4")

    def test_password(self):
        asked = [{"fileName": "locked.pdf", "wasWrong": wrong} for wrong in (False, True)]
        self.ask("open", files=["locked.pdf"], passwords={"locked.pdf": ["no", "pw"]}).tells(
            outcome="done", prompts=asked)
        self.ask("state").tells(documents=[{"locked": True}])
        self.ask("password", file=0, password="", to="e.pdf").tells(outcome="refused")
        self.ask("password", file=0, password="new", to="new.pdf").tells(
            outcome="done", panels=[{"name": "locked (protected).pdf"}])
        self.ask("password", file=0, to="free.pdf").tells(
            outcome="done", panels=[{"name": "locked (no password).pdf"}])
        self.ask("compress", file=0, limit=1, to="small.pdf").tells(outcome="done")
        for copy in ("small.pdf", "new.pdf"):
            self.ask("open", files=[copy]).tells(outcome="cancelled", prompts=[{}])
        self.ask("open", files=["new.pdf"], passwords={"new.pdf": ["new"]}).tells(outcome="done")
        self.ask("open", files=["free.pdf"]).tells(outcome="done", prompts=[])

    def test_export(self):
        self.open("a.pdf")
        self.ask("exportImages", file=0, pages=[5, 2], jpeg=True, dpi=100, folder=".").tells(
            outcome="done", saved=["@/./a page 2.jpg", "@/./a page 5.jpg"])
        self.ask("exportImages", file=0, pages=[1], folder=".").tells(saved=["@/./a page 1.jpg"])

    def test_stamps(self):
        subprocess.run(["convert-im6.q16", "-size", "300x200", "xc:white", "-fill", "navy", "-draw",
                        "rectangle 50,50 250,110", "ink.png"], check=True)
        made = self.ask("makeStamp", name=" Me ", **{"from": "ink.png"})
        made.tells(outcome="done", record={"name": "Me", "pixelWidth": 211, "pixelHeight": 71})
        self.ask("makeStamp", **{"from": "a.pdf"}).tells(outcome="failed", error="This image can't be read.")
        paid = self.ask("readyStamp", word="PAID", date="Nov 23, 2026", ink="blue")
        paid.tells(outcome="done", record={"name": "PAID · Nov 23, 2026"})
        self.ask("readyStamp").tells(outcome="refused")
        ink, paid = made["record"]["id"], paid["record"]["id"]
        self.ask("renameStamp", stamp=ink, name="Ink").tells(outcome="done")
        self.ask("stamps").tells(stamps=[{"name": "Ink"}, {"id": paid}])
        self.open("a.pdf")
        placed = self.ask("place", file=0, page=2, stamp=ink, center=[0.25, 0.5])["placement"]
        where = {"file": 0, "page": 2, "placement": placed["id"]}
        self.ask("updateStamp", **where, rotation=30).tells(
            placement={"stamp": ink, "center": [0.25, 0.5], "width": 0.34, "rotation": 30})
        self.ask("addToAll", **where).tells(outcome="done", toast="Added to all 5 pages")
        self.ask("removeStamp", **where).tells(outcome="done")
        self.ask("saveAs", file=0, to="signed.pdf").tells(outcome="done", panels=[{"name": "a (signed).pdf"}])
        self.ask("place", file=0, page=2, stamp=paid)
        self.ask("deleteStamp", stamp=ink).tells(outcome="done")
        pages = self.ask("state")["documents"][0]["pages"]
        self.assertEqual([len(page["stamps"]) for page in pages], [0, 1, 0, 0, 0])

    def test_close_and_quit(self):
        self.open("a.pdf")
        self.ask("open", files=["b.pdf"]).tells(file=1)
        self.ask("quit").tells(outcome="done", names=[], verdict="terminateNow")
        self.edit()
        self.ask("quit").tells(outcome="cancelled", names=["a"], verdict="terminateCancel")
        self.ask("quit", answer="quitAnyway").tells(outcome="done", verdict="terminateNow")
        self.ask("closeRequest", file=0, answer="cancel").tells(outcome="cancelled", names=["a"], verdict="open")
        self.ask("closeRequest", file=0, answer="saveAs", to="b.pdf").tells(outcome="refused")
        self.ask("closeRequest", file=0, answer="saveAs", to="copy.pdf").tells(
            outcome="done", names=["a"], verdict="open", saved=["@/copy.pdf"])
        self.edit()
        self.ask("closeRequest", file=0, answer="dontSave").tells(outcome="done", verdict="closed")
        self.edit()
        self.ask("close", file=0).tells(outcome="done", names=[], verdict="closed")
        self.ask("state").tells(documents=[], closing=None)

    def test_codes(self):
        subprocess.run(["zint", "-b", "EANX", "-d", "401234567890", "-o", "bars.png"], check=True)
        bars = {"payload": "4012345678901", "symbology": "ean13", "origin": "bars.png", "page": None}
        self.ask("codes", files=["bars.png", "a.pdf"]).tells(outcome="done", found=[bars], emptyMessage=None)
        self.ask("codes", files=["a.pdf"]).tells(found=[bars], emptyMessage="No codes found in “a.pdf”.")
        job = self.begin("codes", files=["a.pdf"] * 20)["job"]
        self.ask("cancel", job=job).tells(outcome="cancelled", found=[bars], emptyMessage=None)

    def test_content(self):
        self.ask("content", payload="WIFI:S:Home;;").tells(
            outcome="done", kind="wifi", title="Wi-Fi",
            fields={"ssid": "Home", "password": None, "security": "", "isHidden": False})
        self.ask("content", payload="0123456789012", symbology="ean13").tells(
            kind="product", fields={"number": "123456789012", "kind": "upcA"})
        self.ask("content", payload="x", symbology="QR").tells(ok=False)

    def test_numbers(self):
        self.ask("parse", text="8-10; 1–3", count=10).tells(ranges=[[8, 10], [1, 3]])
        self.ask("parse", text="5-3", count=10).tells(ranges=None)
        self.ask("describe", numbers=[9, 1, 2, 3, 5, 8, 3]).tells(text="1-3, 5, 8-9")
        self.assertGreater(self.ask("rss")["peak"], 5_000_000)

    def test_link(self):
        self.ask("link", url="http://xn--bcher-kva.blogspot.com/a", rawText="http://BÜCHER.blogspot.com/a").tells(
            displayAddress="http://bücher.blogspot.com/a", host="bücher.blogspot.com", realSite="bücher.blogspot.com",
            warnings=["plainHTTP", "internationalName"],
            sentences=["Not encrypted: the address starts with http, not https.",
                       "Special characters in the name can imitate another site."])
