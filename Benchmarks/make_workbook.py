"""Writes a workbook as spreadsheet programs do: numbers, dates, shared strings, a formula with its cached value.

Usage: make_workbook.py ROWS OUTPUT.xlsx        ten cells a row
"""

import sys
import zipfile

MAIN = "http://schemas.openxmlformats.org/spreadsheetml/2006/main"
OFFICE = "http://schemas.openxmlformats.org/officeDocument/2006/relationships"
PACKAGE = "http://schemas.openxmlformats.org/package/2006"
HEAD = '<?xml version="1.0" encoding="UTF-8" standalone="yes"?>\n'
WORDS = ["Nord", "Sud", "Est", "Ouest", "Marché du samedi", "École", "Pressoir", "à payer", "payé", "R&amp;D"]


def cell(row, column):
    reference = f'r="{"ABCDEFGHIJ"[column]}{row}"'
    if column in (0, 4):
        return f'<c {reference} t="s"><v>{(row * 7 + column) % 5000}</v></c>'
    if column == 1:
        return f'<c {reference} s="1"><v>{40000 + row % 9000}</v></c>'
    if column == 5:
        return f'<c {reference}><f>C{row}*2</f><v>{row * 2.5}</v></c>'
    if column == 9:
        return f'<c {reference} t="b"><v>{row % 2}</v></c>'
    return f'<c {reference}><v>{row * (column + 1) / 8}</v></c>'


def rows(count):
    for row in range(1, count + 1):
        yield f'<row r="{row}" spans="1:10">' + "".join(cell(row, column) for column in range(10)) + "</row>"


def main():
    count, output = int(sys.argv[1]), sys.argv[2]
    with zipfile.ZipFile(output, "w", zipfile.ZIP_DEFLATED) as archive:
        archive.writestr("[Content_Types].xml", HEAD + f'<Types xmlns="{PACKAGE}/content-types">'
            '<Default Extension="rels" ContentType="application/vnd.openxmlformats-package.relationships+xml"/>'
            '<Default Extension="xml" ContentType="application/xml"/>'
            '<Override PartName="/xl/workbook.xml" ContentType='
            '"application/vnd.openxmlformats-officedocument.spreadsheetml.sheet.main+xml"/>'
            + "".join(f'<Override PartName="/xl/{part}.xml" ContentType='
                f'"application/vnd.openxmlformats-officedocument.spreadsheetml.{kind}+xml"/>'
                for part, kind in (("worksheets/sheet1", "worksheet"), ("styles", "styles"),
                                   ("sharedStrings", "sharedStrings"))) + "</Types>")
        archive.writestr("_rels/.rels", HEAD + f'<Relationships xmlns="{PACKAGE}/relationships">'
            f'<Relationship Id="rId1" Type="{OFFICE}/officeDocument" Target="xl/workbook.xml"/></Relationships>')
        archive.writestr("xl/workbook.xml", HEAD + f'<workbook xmlns="{MAIN}" xmlns:r="{OFFICE}"><sheets>'
            '<sheet name="Ventes" sheetId="1" r:id="rId1"/></sheets></workbook>')
        archive.writestr("xl/_rels/workbook.xml.rels", HEAD + f'<Relationships xmlns="{PACKAGE}/relationships">'
            f'<Relationship Id="rId1" Type="{OFFICE}/worksheet" Target="worksheets/sheet1.xml"/>'
            f'<Relationship Id="rId2" Type="{OFFICE}/styles" Target="styles.xml"/>'
            f'<Relationship Id="rId3" Type="{OFFICE}/sharedStrings" Target="sharedStrings.xml"/></Relationships>')
        archive.writestr("xl/styles.xml", HEAD + f'<styleSheet xmlns="{MAIN}"><fonts count="1"><font/></fonts>'
            '<fills count="1"><fill/></fills><borders count="1"><border/></borders>'
            '<cellStyleXfs count="1"><xf numFmtId="0"/></cellStyleXfs>'
            '<cellXfs count="2"><xf numFmtId="0" xfId="0"/><xf numFmtId="14" xfId="0" applyNumberFormat="1"/></cellXfs>'
            '</styleSheet>')
        strings = "".join(f"<si><t>{WORDS[number % 10]} {number}</t></si>" for number in range(5000))
        archive.writestr("xl/sharedStrings.xml", HEAD + f'<sst xmlns="{MAIN}" uniqueCount="5000">{strings}</sst>')
        with archive.open("xl/worksheets/sheet1.xml", "w") as sheet:
            sheet.write((HEAD + f'<worksheet xmlns="{MAIN}"><dimension ref="A1:J{count}"/><sheetData>').encode())
            for row in rows(count):
                sheet.write(row.encode())
            sheet.write(b"</sheetData></worksheet>")


main()
