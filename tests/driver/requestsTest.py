"""Lines that are no requests, and what comes back of those that are."""

import json

from driverCase import DriverCase

BAD_LINES = [
    b"", b"{}", b"open", b'{"do": "state"', b'["state"]', b'{"do": "\xff\xfe"}', b"[" * 5000,
    b'{"do": "state", "to": "' + b"x" * (17 << 20) + b'"}',
]
BAD_FIELDS = {
    "sing": [{}],
    "state": [{"async": "yes"}],
    "open": [{"files": [""]}, {"files": [], "tool": "hammer"}, {"files": [], "passwords": {"a": "x"}}],
    "turn": [{}, {"file": 0, "clockwise": "no"}],
    "close": [{"file": -1}, {"file": 0.5}, {"file": 1}, {"file": 1e300}],
    "delete": [{"file": 0, "pages": "1"}, {"file": 0, "pages": [0]}, {"file": 0, "pages": [3]}],
    "dropPages": [{"file": 0}],
    "image": [{"file": 0, "page": 1, "longSide": 9, "to": "/nowhere/a.png"}],
    "saveAs": [{"file": 0, "to": 1}, {"file": 7, "async": True}],
    "compress": [{"file": 0, "choice": "small", "limit": 5}, {"file": 0, "maxPixels": 700, "jpegQuality": 1.5}],
    "mergeMove": [{"from": 0, "to": 0}],
    "exportImages": [{"file": 0, "dpi": 150}],
    "split": [{"file": 0, "mode": "every", "every": 0}],
    "closeRequest": [{"file": 0, "answer": "perhaps"}],
    "cancel": [{"job": 1}],
    "wait": [{"job": 1, "async": True}],
}


class Requests(DriverCase):
    def test_bad_ones_are_answered_and_the_next_is_carried_out(self):
        self.ask("open", files=["b.pdf"])
        requests = [{"do": verb, **fields} for verb, all_bad in BAD_FIELDS.items() for fields in all_bad]
        for line in BAD_LINES + [json.dumps(request).encode() for request in requests]:
            with self.subTest(line[:100]):
                self.driver.put(line + b"\n")
                answer = self.receive()
                self.assertTrue(answer["ok"] is False and answer["bad"], answer)
                self.ask("state").tells(documents=[{"pages": [{}, {}]}])

    def test_the_id_comes_back_as_it_was(self):
        for sent in ("text", 9007199254740993, 1.5, None, True, {"a": [1]}):
            self.ask("state", id=sent).tells(ok=True, id=sent)
            self.ask("sing", id=sent).tells(ok=False, id=sent)
        self.assertNotIn("id", self.ask("state"))

    def test_the_last_line_needs_no_end(self):
        self.driver.put(b'{"do": "rss"}\n{"do": "state"}')
        self.assertEqual(len(self.driver.end_input()), 2)
