#!/usr/bin/python3
"""Makes the document whose styles our Word files take, from pandoc's own.

usage: make-reference.py PANDOC'S-REFERENCE.docx OUTPUT.docx

Faces that every office program has or replaces, quiet headings, tables with lines. The same bytes each time.
"""
import re
import sys
import zipfile

INK, GREY, LINE, HEAD, ACCENT = "1A1714", "5B6068", "D5CDBE", "F7EFE0", "6E2433"
BODY, SERIF, MONO = "Calibri", "Cambria", "Consolas"
HEADING_SIZES = {1: 44, 2: 34, 3: 28, 4: 24, 5: 24, 6: 24}  # half points
OLDEST = (1980, 1, 1, 0, 0, 0)


def style(sheet, name):
    """The span of a style in the sheet."""
    start = re.search(r'<w:style [^>]*w:styleId="%s"[^>]*>' % name, sheet)
    return start.start(), sheet.index("</w:style>", start.end()) + len("</w:style>")


def in_style(sheet, name, change):
    start, end = style(sheet, name)
    return sheet[:start] + change(sheet[start:end]) + sheet[end:]


def fonts(family):
    return f'<w:rFonts w:ascii="{family}" w:hAnsi="{family}" w:cs="{family}" />'


def heading(level):
    properties = (f'<w:rPr>{fonts(SERIF)}<w:b /><w:bCs /><w:color w:val="{INK}" />'
                  f'<w:sz w:val="{HEADING_SIZES[level]}" /><w:szCs w:val="{HEADING_SIZES[level]}" /></w:rPr>')

    def change(text):
        text = re.sub(r"<w:rPr>.*?</w:rPr>", properties, text, flags=re.S)
        return re.sub(r"<w:spacing [^>]*/>", '<w:spacing w:before="360" w:after="120" />', text)
    return change


def table(text):
    sides = "".join(f'<w:{side} w:val="single" w:sz="6" w:space="0" w:color="{LINE}" />'
                    for side in ("top", "left", "bottom", "right", "insideH", "insideV"))
    text = re.sub(r'(<w:tblInd [^>]*/>)', rf"\1<w:tblBorders>{sides}</w:tblBorders>", text)
    text = re.sub(r'<w:(top|bottom) w:w="0"', r'<w:\1 w:w="40"', text)
    first = (f'<w:tblStylePr w:type="firstRow"><w:rPr><w:b /></w:rPr><w:tcPr>'
             f'<w:shd w:val="clear" w:color="auto" w:fill="{HEAD}" /></w:tcPr></w:tblStylePr>')
    text = re.sub(r'<w:tblStylePr w:type="firstRow">.*?</w:tblStylePr>', "", text, flags=re.S)
    return text.replace("</w:style>", first + "</w:style>")


def restyle(sheet):
    sheet = re.sub(r"(<w:rPrDefault>\s*<w:rPr>\s*)<w:rFonts[^>]*/>", rf"\1{fonts(BODY)}", sheet)
    sheet = re.sub(r'(<w:rPrDefault>.*?<w:sz w:val=")24(" />\s*<w:szCs w:val=")24', r"\g<1>22\g<2>22", sheet,
                   count=1, flags=re.S)
    sheet = in_style(sheet, "BodyText", lambda text: re.sub(
        r"<w:spacing [^>]*/>", '<w:spacing w:before="0" w:after="160" w:line="288" w:lineRule="auto" />', text))
    for level in HEADING_SIZES:
        sheet = in_style(sheet, f"Heading{level}", heading(level))
    sheet = in_style(sheet, "Hyperlink", lambda text: re.sub(r"<w:color [^>]*/>", f'<w:color w:val="{ACCENT}" />', text))
    sheet = in_style(sheet, "VerbatimChar", lambda text: re.sub(r"<w:rFonts[^>]*/>", fonts(MONO), text))
    return in_style(sheet, "Table", table)


def main():
    source, output = sys.argv[1:]
    with zipfile.ZipFile(source) as old, zipfile.ZipFile(output, "w") as new:
        for name in old.namelist():
            content = old.read(name)
            if name == "word/styles.xml":
                content = restyle(content.decode()).encode()
            entry = zipfile.ZipInfo(name, OLDEST)
            entry.compress_type = zipfile.ZIP_DEFLATED
            new.writestr(entry, content)


main()
