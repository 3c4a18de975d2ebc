#!/usr/bin/python3
"""Makes the three static fonts of the family "Newsreader 24pt" from the variable font.

usage: make-newsreader.py FOLDER-OF-WOFF2 OUTPUT-FOLDER

The variable font comes in three parts by script, each with the axes weight and optical size. Every style is cut at
24 points out of each part, and the parts are merged. A second run gives the same bytes.
"""
import logging
import os
import pathlib
import sys
import tempfile

from fontTools import subset
from fontTools.merge import Merger, Options as MergeOptions
from fontTools.ttLib import TTFont
from fontTools.varLib import instancer

FAMILY = "Newsreader 24pt"
STYLES = {"Regular": 400, "Medium": 500, "SemiBold": 600}
PARTS = ("latin", "latin-ext", "vietnamese")
OPTICAL_SIZE = 24
UNNEEDED_TABLES = ["STAT", "gasp", "prep", "meta", "DSIG"]
FIRST_PRINTABLE = 0x20
WINDOWS, UNICODE, ENGLISH = 3, 1, 0x409


def instance(source, weight):
    font = TTFont(source, recalcTimestamp=False)
    font = instancer.instantiateVariableFont(
        font, {"wght": weight, "opsz": OPTICAL_SIZE}, overlap=instancer.OverlapMode.KEEP_AND_SET_FLAGS)
    font.flavor = None
    return font


def keep_characters(font, characters):
    options = subset.Options()
    options.layout_features = ["*"]
    options.name_IDs = ["*"]
    options.notdef_outline = True
    options.glyph_names = True
    options.drop_tables += UNNEEDED_TABLES
    subsetter = subset.Subsetter(options)
    subsetter.populate(unicodes=characters)
    subsetter.subset(font)


def cut_parts(source, weight, folder):
    """Writes the parts of one style, no character in two of them: the merger would invent a substitution of one
    blank by the other, and PDFs would lose their blanks."""
    seen, files = set(), []
    for part in PARTS:
        font = instance(source / f"newsreader-{part}-standard-normal.woff2", weight)
        keep_characters(font, {c for c in font.getBestCmap() if c >= FIRST_PRINTABLE and c not in seen})
        seen |= set(font.getBestCmap())
        files.append(str(folder / f"{part}.ttf"))
        font.save(files[-1])
    return files


def rename(font, style, weight):
    name = font["name"]
    name.names = [record for record in name.names if record.nameID in (0, 5, 7, 8, 9, 11, 12, 13, 14)]
    full = FAMILY if style == "Regular" else f"{FAMILY} {style}"
    postscript = f"{FAMILY.replace(' ', '')}-{style}"
    texts = {1: full, 2: "Regular", 3: f"1.003;PROD;{postscript}", 4: full, 6: postscript}
    if style != "Regular":
        texts |= {16: FAMILY, 17: style}
    for number, text in texts.items():
        name.setName(text, number, WINDOWS, UNICODE, ENGLISH)
    font["OS/2"].usWeightClass = weight
    regular, bold, italic = 1 << 6, 1 << 5, 1
    font["OS/2"].fsSelection = font["OS/2"].fsSelection & ~(bold | italic) | regular
    font["head"].macStyle = 0
    return postscript


def remove_control_characters(font):
    """One on the glyph of the blank would be what a PDF says the blank is."""
    for table in font["cmap"].tables:
        for character in [c for c in table.cmap if c < FIRST_PRINTABLE]:
            del table.cmap[character]


def make(source, style, weight, output):
    options = MergeOptions()
    options.drop_tables = UNNEEDED_TABLES + ["MVAR", "HVAR", "avar"]
    with tempfile.TemporaryDirectory() as folder:
        font = Merger(options=options).merge(cut_parts(source, weight, pathlib.Path(folder)))
    postscript = rename(font, style, weight)
    remove_control_characters(font)
    font.recalcTimestamp = False
    font.save(output / f"{postscript}.ttf")


def main():
    source, output = map(pathlib.Path, sys.argv[1:])
    logging.disable(logging.WARNING)
    # The merger stamps the time of day into its result otherwise.
    os.environ["SOURCE_DATE_EPOCH"] = "1577836800"
    for style, weight in STYLES.items():
        make(source, style, weight, output)


main()
