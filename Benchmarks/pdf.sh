#!/usr/bin/env bash
# The text of a book of 2,400 pages to Markdown: against structured text of the library beneath, and another reader.
. "$(dirname "$0")/lib.sh"

book=/usr/share/R/doc/manual/fullrefman.pdf
[ -f "$book" ] || fail "No book: install r-doc-pdf."
ours="$bin/nolfa-cli convert $book --to markdown --into $work/out"
mkdir "$work/out"
pair "2,415 pages against mutool's structured text" 0.8 5 "rm -f $work/out/fullrefman.md" "$ours" \
    "mutool draw -q -F stext.json -o /dev/null $book"
pair "2,415 pages against pdftotext" 0.25 5 "rm -f $work/out/fullrefman.md" "$ours" "pdftotext $book /dev/null"
rm -f "$work/out/fullrefman.md"
command time -f "memory: %M kB" $ours >/dev/null
