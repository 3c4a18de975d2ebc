#!/usr/bin/env bash
# Word to PDF beside LibreOffice, and what our way to typst adds to pandoc's own: a text of one page, and one of 50.
. "$(dirname "$0")/lib.sh"

# document PAGES: a text with headings, emphasis, a list and a table on each page, as Markdown and as Word.
document() {
    python3 - "$1" >"$work/pages-$1.md" <<'PYTHON'
import sys

for page in range(int(sys.argv[1])):
    print(f"# Page {page}\n")
    for paragraph in range(5):
        print(("The *quick* fox, **numbered** %d, jumps over the lazy dog again and again. " % paragraph) * 5 + "\n")
    print("- one\n- two\n    - three\n\n| a | b |\n|---|---|\n| 1 | 2 |\n| 3 | 4 |\n")
PYTHON
    "$tools/pandoc" -f gfm -o "$work/pages-$1.docx" "$work/pages-$1.md"
}

measure() {
    local pages=$1 rounds=$2 limit=$3 input=$work/pages-$1 output=$work/pages-$1.pdf result=0
    document "$pages"
    pair "$pages page(s) of Word to PDF, beside LibreOffice" 1 "$rounds" "rm -f $output" \
        "$bin/nolfa-cli convert $input.docx --to pdf" \
        "soffice --headless --convert-to pdf --outdir $work $input.docx" || result=1
    pair "$pages page(s) of Markdown to PDF, beside pandoc with typst" "$limit" "$rounds" "rm -f $output" \
        "$bin/nolfa-cli convert $input.md --to pdf" \
        "$tools/pandoc -f gfm $input.md -o $output --pdf-engine=$tools/typst" || result=1
    return $result
}

status=0
measure 1 9 1.2 || status=1
measure 50 5 1.2 || status=1
exit $status
