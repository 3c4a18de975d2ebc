"""End to end: the program in an X server, with real files and real conversions."""

import os
import pathlib
import shutil
import sys
import tempfile
import time
import unittest

import pyatspi

import desktop
from desktop import DragSource, Program, wait_for

BINARY, SOURCE, SAMPLES = sys.argv[1:4]

# What each sample becomes without a choice of the user's.
OUTPUTS = {
    "report.docx": "report.md",
    "orchard.md": "orchard.pdf",
    "letter.pdf": "letter.md",
    "harvest.xlsx": "harvest.md",
    "meeting.pptx": "meeting.md",
    "notice.png": "notice.md",
}


class ApplicationTest(unittest.TestCase):
    def setUp(self):
        self._folder = tempfile.TemporaryDirectory()
        self.folder = pathlib.Path(self._folder.name)
        self.settings = self.folder / "settings"
        self.files = self.folder / "Mes documents"
        self.files.mkdir()

    def tearDown(self):
        self._folder.cleanup()

    def start(self, *files):
        return Program(BINARY, self.settings, self.files, *files)

    def sample(self, name, source=None):
        return shutil.copy(pathlib.Path(SAMPLES) / (source or name), self.files / name)

    def every_sample(self):
        return [self.sample(name, "orchard.pdf" if name == "letter.pdf" else None) for name in OUTPUTS]

    def wait_for_end_of_batch(self, program):
        def count():
            return [name for name in program.names("label") if name.startswith("Converting ")]

        wait_for("the footer's count", count)
        wait_for("the end", lambda: not count())

    def test_real_files_of_every_format_are_dropped_converted_and_named(self):
        files = self.every_sample()
        before = {file: pathlib.Path(file).read_bytes() for file in files}
        with self.start() as program, DragSource(SOURCE, files) as source:
            program.find("heading", "Drop documents below")
            self.assertTrue(source.drag(400, 350))
            program.find("push button", "Convert 6 files")
            program.press("push button", "Convert 6 files")
            self.wait_for_end_of_batch(program)
            self.assertEqual([name for name in program.names("list item") if not name.endswith("Converted")], [])
            self.assertEqual({file.name for file in self.files.iterdir() if file.is_file()}, {*OUTPUTS, *OUTPUTS.values()})
            # A second time: nothing is written over.
            program.press("push button", "Clear")
            program.find("heading", "Drop documents below")
            self.assertTrue(source.drag(400, 350))
            program.press("push button", "Convert 6 files")
            self.wait_for_end_of_batch(program)
            self.assertEqual(len(list(self.files.glob("* 2.*"))), len(OUTPUTS))
            program.find("list item", "report.docx, Word → Markdown, EXCELLENT, Converted")
        self.assertIn("# ", (self.files / "report.md").read_text())
        self.assertTrue((self.files / "orchard.pdf").read_bytes().startswith(b"%PDF-"))
        self.assertEqual({file: pathlib.Path(file).read_bytes() for file in files}, before)

    def test_more_files_are_dropped_on_the_list_and_the_unknown_are_told(self):
        unknown = self.files / "tool.exe"
        unknown.write_bytes(b"MZ")
        report = self.sample("report.docx")
        with self.start(report) as program, DragSource(SOURCE, [self.sample("meeting.pptx"), report, unknown]) as source:
            program.find("list item", "report.docx, Word → Markdown, EXCELLENT")
            self.assertTrue(source.drag(400, 300))
            program.find("list item", "meeting.pptx, PowerPoint → Markdown, GOOD")
            program.find("alert", "One file was skipped. Nolfa cannot open that format. Already in the list.")
            self.assertEqual(len(program.names("list item")), 2)

    def test_files_are_chosen_in_the_open_panel(self):
        self.sample("report.docx")
        with self.start() as program:
            program.press("page tab", "Compare")
            program.key("ctrl+o")
            program.click("push button", "Cancel")
            program.find("heading", "Compare")
            program.key("ctrl+o")
            program.find("dialog", "Choose the documents you want to convert.")
            program.click("label", "report.docx")
            program.click("push button", "Add")
            program.find("list item", "report.docx, Word → Markdown, EXCELLENT")

    def test_a_damaged_file_fails_with_its_sentence(self):
        broken = self.files / "broken.docx"
        broken.write_bytes(b"PK\x03\x04 and no more")
        with self.start(broken) as program:
            program.press("push button", "Convert")
            row = program.find("list item", "broken.docx, Word → Markdown, EXCELLENT, Failed")
            self.assertTrue(row.description.strip())
        self.assertEqual([file.name for file in self.files.iterdir()], ["broken.docx"])

    def test_an_end_in_the_middle_leaves_nothing_half_done(self):
        long_text = self.files / "long.md"
        long_text.write_text("# Chapter\n\n" + "Some *words* of a long book. " * 60_000)
        scratch = self.folder / "scratch"
        scratch.mkdir()
        os.environ["TMPDIR"] = str(scratch)
        try:
            with self.start(long_text) as program:
                program.press("push button", "Convert")
                program.find("animation", "Converting")
                wait_for("a child at work", lambda: desktop.children_of(program.process.pid))
                begin = time.monotonic()
                program.process.terminate()
                self.assertEqual(program.process.wait(desktop.DEADLINE), 0)
                self.assertLess(time.monotonic() - begin, 5)
        finally:
            del os.environ["TMPDIR"]
        self.assertEqual([file.name for file in self.files.iterdir()], ["long.md"])
        self.assertEqual(list(scratch.iterdir()), [])

    def test_the_tree_names_every_part(self):
        with self.start(self.sample("report.docx")) as program:
            program.find("list item", "report.docx, Word → Markdown, EXCELLENT")
            seen = [(node.getRoleName(), node.name) for node in program.nodes()]
            for wanted in [("frame", "Nolfa"), ("page tab list", "Tool"), ("page tab", "Convert"), ("page tab", "Compare"),
                           ("page tab", "Watermark"), ("push button", "What to expect"), ("push button", "Settings"),
                           ("push button", "Choose files…"), ("label", "Drop more documents"), ("list", "Documents"),
                           ("combo box", "Convert to"), ("push button", "Remove"), ("push button", "Clear"),
                           ("push button", "Convert")]:
                self.assertIn(wanted, seen)
            self.assertFalse([part for part in seen if part[0] in ("push button", "combo box", "page tab") and not part[1]])
            program.press("page tab", "Compare")
            program.find("heading", "Compare")
            program.press("page tab", "Convert")
            program.press("push button", "Remove")
            program.find("heading", "Drop documents below")

    def test_settings_take_hold_at_once_and_outlive_the_program(self):
        with self.start(self.sample("report.docx")) as program:
            program.press("push button", "Settings")
            program.find("frame", "Settings")
            program.press("check box", "Show the file in the Finder after converting")
            program.choose("Interface language", "Français")
            program.find("push button", "Convertir")
            program.find("list item", "report.docx, Word → Markdown, EXCELLENT")
            program.find("frame", "Réglages")
        with self.start() as program:
            program.find("heading", "Déposez vos documents ci-dessous")
            program.press("push button", "Réglages")
            box = program.find("check box", "Afficher le fichier dans le Finder après la conversion")
            self.assertTrue(box.getState().contains(pyatspi.STATE_CHECKED))

    def test_the_sheet_says_what_to_expect_and_goes(self):
        with self.start() as program:
            program.press("push button", "What to expect")
            program.find("dialog", "What to expect")
            program.press("push button", "Done")
            wait_for("the sheet to go", lambda: not program.all("dialog"))

    def test_targets_and_menus_answer_assistive_technology(self):
        with self.start(self.sample("report.docx")) as program:
            program.choose("Convert to", "Documents, PDF")
            program.find("list item", "report.docx, Word → PDF, GOOD")
            program.press("menu bar", "Help")
            program.press("menu item", "What to expect")
            program.find("dialog", "What to expect")

    def test_a_switch_to_a_larger_tool_grows_the_window(self):
        with self.start() as program:
            self.assertEqual(program.size(), (820, 560))
            program.press("page tab", "Compare")
            wait_for("a larger window", lambda: program.size() == (900, 560))
            program.press("page tab", "Convert")
            program.find("heading", "Drop documents below")
            self.assertEqual(program.size(), (900, 560))

    def test_the_keys_of_the_x_server_reach_the_program(self):
        with self.start(self.sample("report.docx")) as program:
            program.find("list item", "report.docx, Word → Markdown, EXCELLENT")
            program.key("ctrl+3")
            program.find("heading", "Watermark")
            program.key("ctrl+1")
            program.find("push button", "Convert")
            program.key("Return")
            program.find("list item", "report.docx, Word → Markdown, EXCELLENT, Converted")
            program.key("ctrl+Delete")
            program.find("heading", "Drop documents below")
        self.assertTrue((self.files / "report.md").exists())


desktop.main([ApplicationTest])
