#!/usr/bin/env bash
# What our command line adds to the pandoc it runs: a Word file of one page, and one of 500.
. "$(dirname "$0")/lib.sh"

# document PAGES: a Word file with headings, emphasis, a list and a table on each page.
document() {
    python3 - "$1" >"$work/source.md" <<'PYTHON'
import sys

for page in range(int(sys.argv[1])):
    print(f"# Page {page}\n")
    for paragraph in range(5):
        print(("The *quick* fox, **numbered** %d, jumps over the lazy dog again and again. " % paragraph) * 5 + "\n")
    print("- one\n- two\n    - three\n\n| a | b |\n|---|---|\n| 1 | 2 |\n| 3 | 4 |\n")
PYTHON
    "$tools/pandoc" -f markdown -o "$work/pages-$1.docx" "$work/source.md"
}

against_pandoc() {
    local pages=$1 limit=$2 rounds=$3 input=$work/pages-$1.docx output=$work/pages-$1.md
    document "$pages"
    pair "$pages page(s) to Markdown" "$limit" "$rounds" "rm -rf $output $work/pages-$pages-media" \
        "$bin/nolfa-cli convert $input --to markdown" \
        "$tools/pandoc -f docx -t gfm-raw_html --wrap=none --extract-media $work/pages-$pages-media -o $output $input"
}

status=0
against_pandoc 1 1.5 41 || status=1
against_pandoc 500 1.02 15 || status=1
exit $status
