#!/usr/bin/env python3
"""The Debian package, made by CPack from the install rules as a packager
makes it: its contents and its control fields, unpacked into a temporary
root and run from there, checked by Debian's validators (desktop entry,
AppStream metadata) and by lintian (no error)."""

import argparse
import gzip
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as ET

BUILD = pathlib.Path(".")
ICON_SIZES = (16, 22, 24, 32, 48, 64, 128, 256)
APP_ID = "fr.ostrane.Ostrane"


def run(*command, **kw):
    return subprocess.run([str(c) for c in command], capture_output=True, text=True, timeout=300, **kw)


class TheDebianPackage(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.work = pathlib.Path(tempfile.mkdtemp(prefix="ostrane-package-"))
        made = run("cpack", "-G", "DEB", "--config", BUILD / "CPackConfig.cmake", "-B", cls.work)
        if made.returncode != 0:
            raise AssertionError("cpack failed:\n" + made.stdout + made.stderr)
        cls.deb = next(cls.work.glob("ostrane_*.deb"))
        cls.root = cls.work / "root"
        unpacked = run("dpkg-deb", "-x", cls.deb, cls.root)
        if unpacked.returncode != 0:
            raise AssertionError(unpacked.stderr)

    @classmethod
    def tearDownClass(cls):
        shutil.rmtree(cls.work, ignore_errors=True)

    def field(self, name):
        return run("dpkg-deb", "-f", self.deb, name).stdout.strip()

    def test_its_files_are_the_programs_entry_icons_metadata_and_docs(self):
        listed = run("dpkg-deb", "-c", self.deb).stdout.splitlines()
        files = sorted(line.split()[-1][1:] for line in listed if not line.startswith("d"))
        expected = sorted(
            ["/usr/bin/ostrane", "/usr/bin/ostrane-cli",
             "/usr/share/applications/ostrane.desktop",
             "/usr/share/metainfo/%s.metainfo.xml" % APP_ID,
             "/usr/share/icons/hicolor/scalable/apps/ostrane.svg",
             "/usr/share/man/man6/ostrane.6.gz", "/usr/share/man/man6/ostrane-cli.6.gz",
             "/usr/share/doc/ostrane/aide.html", "/usr/share/doc/ostrane/copyright",
             "/usr/share/doc/ostrane/changelog.gz"]
            + ["/usr/share/icons/hicolor/%dx%d/apps/ostrane.png" % (s, s) for s in ICON_SIZES])
        self.assertEqual(files, expected)
        for line in listed:
            mode, owner = line.split()[:2]
            self.assertEqual(owner, "root/root", line)
            self.assertIn(mode, ("drwxr-xr-x", "-rwxr-xr-x", "-rw-r--r--"), line)
        for program in ("ostrane", "ostrane-cli"):
            mode = next(line.split()[0] for line in listed if line.endswith("/usr/bin/" + program))
            self.assertEqual(mode, "-rwxr-xr-x")
        # The icons are what their folder says.
        for size in ICON_SIZES:
            png = (self.root / ("usr/share/icons/hicolor/%dx%d/apps/ostrane.png" % (size, size))).read_bytes()
            self.assertEqual(png[:8], b"\x89PNG\r\n\x1a\n")
            self.assertEqual((int.from_bytes(png[16:20], "big"), int.from_bytes(png[20:24], "big")), (size, size))
        svg = ET.parse(self.root / "usr/share/icons/hicolor/scalable/apps/ostrane.svg").getroot()
        self.assertEqual(svg.get("viewBox"), "0 0 64 64")
        self.assertNotIn("<text", (self.root / "usr/share/icons/hicolor/scalable/apps/ostrane.svg").read_text())
        with gzip.open(self.root / "usr/share/man/man6/ostrane.6.gz", "rt", encoding="utf-8") as page:
            self.assertIn("--dossier-utilisateur", page.read().replace("\\-", "-"))

    def test_its_control_fields_name_qts_packages(self):
        self.assertEqual(self.field("Package"), "ostrane")
        self.assertEqual(self.field("Version"), "1.23")
        self.assertEqual(self.field("Section"), "misc")
        depends = [d.strip().split()[0] for d in self.field("Depends").split(",")]
        for package in ("libqt6core6", "libqt6gui6", "libqt6widgets6", "libqt6multimedia6", "libqt6network6",
                        "libqt6printsupport6", "fonts-dejavu-core", "libc6", "libstdc++6"):
            self.assertIn(package, depends)
        self.assertTrue(self.field("Description").startswith("compagnon de jeu de Tablinor"))

    def test_the_unpacked_programs_run_from_the_temporary_root(self):
        checked = run(self.root / "usr/bin/ostrane-cli", "check", "AA")
        self.assertEqual(checked.returncode, 0, checked.stderr)
        self.assertTrue(checked.stdout.startswith("AA\toui\t"), checked.stdout)
        self.assertEqual(checked.stdout.count("\n"), 1)
        env = {"PATH": "/usr/bin:/bin", "HOME": str(self.work)}  # no display at all
        version = run(self.root / "usr/bin/ostrane", "--version", env=env)
        self.assertEqual((version.returncode, version.stdout), (0, "Ostrane 1.23\n"))

    def test_the_desktop_entry_and_the_metadata_pass_debians_validators(self):
        entry = self.root / "usr/share/applications/ostrane.desktop"
        validated = run("desktop-file-validate", entry)
        self.assertEqual((validated.returncode, validated.stdout + validated.stderr), (0, ""))
        text = entry.read_text(encoding="utf-8")
        self.assertIn("\nExec=ostrane --dossier-utilisateur\n", text)
        self.assertIn("\nCategories=Game;BoardGame;\n", text)
        self.assertIn("\nIcon=ostrane\n", text)
        tree = run("appstreamcli", "validate-tree", "--no-net", "--explain", self.root)
        self.assertEqual(tree.returncode, 0, tree.stdout + tree.stderr)
        info = ET.parse(self.root / ("usr/share/metainfo/%s.metainfo.xml" % APP_ID)).getroot()
        self.assertEqual(info.findtext("id"), APP_ID)
        self.assertEqual(info.findtext("project_license"), "GPL-3.0-or-later AND MPL-2.0")
        self.assertEqual(info.findtext("launchable"), "ostrane.desktop")
        images = [i.text.rsplit("/", 1)[1] for i in info.iter("image")]
        self.assertEqual(images, ["main_window_proposal.png", "analysis_list.png", "picker.png"])
        # Named from the pictures the build's own tests take.
        for name in images:
            self.assertTrue((BUILD / "screenshots" / name).exists() or not (BUILD / "screenshots").exists(), name)

    def test_lintian_finds_no_error(self):
        if not shutil.which("lintian"):
            self.fail("lintian is missing (tools/build.sh test installs it)")
        said = run("lintian", "--allow-root", self.deb)
        errors = [line for line in said.stdout.splitlines() if line.startswith("E:")]
        warnings = [line for line in said.stdout.splitlines() if line.startswith("W:")]
        self.assertEqual(errors, [])
        print("lintian warnings: %d" % len(warnings), *warnings, sep="\n", file=sys.stderr)


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    parser.add_argument("--build", required=True)
    args, rest = parser.parse_known_args()
    BUILD = pathlib.Path(args.build).resolve()
    unittest.main(argv=[sys.argv[0]] + rest, verbosity=2)
