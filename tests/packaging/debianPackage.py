#!/usr/bin/env python3
"""Has packaging/make-deb pack a build that stands, and judges the package by what dpkg tells of it.

Usage: debianPackage.py BUILD
"""
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
BUILD = Path(sys.argv.pop()).resolve()
ID = next((BUILD / "packaging").glob("*.desktop")).stem
SIZES = (16, 22, 24, 32, 48, 64, 128, 256, 512)
FILES = {"bin/folvane", "libexec/folvane/folvane-draw-svg", "libexec/folvane/folvane-read-codes",
         f"share/applications/{ID}.desktop", f"share/dbus-1/services/{ID}.service", f"share/metainfo/{ID}.metainfo.xml",
         "share/doc/folvane/changelog.Debian.gz", "share/doc/folvane/copyright", "share/man/man1/folvane.1.gz",
         "share/lintian/overrides/folvane",
         f"share/icons/hicolor/scalable/apps/{ID}.svg", f"share/icons/hicolor/symbolic/apps/{ID}-symbolic.svg",
         *(f"share/icons/hicolor/{size}x{size}/apps/{ID}.png" for size in SIZES)}
LOADED_LATER = {"fonts-urw-base35", "poppler-data", "qt6-image-formats-plugins", "qt6-wayland"}


def output(*command):
    return subprocess.run([str(word) for word in command], check=True, stdout=subprocess.PIPE, text=True).stdout


class DebianPackage(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = cls.enterClassContext(tempfile.TemporaryDirectory())
        # Fails on an error or a warning of lintian, too.
        cls.package = output(ROOT / "packaging/make-deb", "--build", BUILD, "--to", folder).splitlines()[-1]
        cls.tree = Path(folder) / "tree"
        output("dpkg-deb", "--extract", cls.package, cls.tree)

    def test_it_tells_what_it_is_and_needs(self):
        name, version, depends = (output("dpkg-deb", "--field", self.package, field).strip()
                                  for field in ("Package", "Version", "Depends"))
        self.assertEqual((name, version), ("folvane", (BUILD / "packaging/debian/version").read_text().strip()))
        needed = {entry.split()[0] for entry in depends.split(",")}
        self.assertLessEqual(LOADED_LATER | {"libqt6widgets6", "libqt6svg6", "libzxing2"}, needed)

    def test_it_holds_these_files_for_everyone_to_read(self):
        entries = [line.split(maxsplit=5) for line in output("dpkg-deb", "--contents", self.package).splitlines()]
        files = {path.removeprefix("./usr/"): rights for rights, *_, path in entries if not path.endswith("/")}
        self.assertEqual(set(files), FILES)
        self.assertEqual({owner for _, owner, *_ in entries}, {"root/root"})
        self.assertEqual({path for path, rights in files.items() if rights == "-rwxr-xr-x"},
                         {path for path in FILES if path.startswith(("bin/", "libexec/"))})

    def test_nothing_in_it_tells_where_it_was_built(self):
        telling = [path for path in self.tree.rglob("*") if path.is_file() and bytes(ROOT) in path.read_bytes()]
        self.assertEqual(telling, [])


if __name__ == "__main__":
    unittest.main()
