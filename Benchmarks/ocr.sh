#!/usr/bin/env bash
# Recognition of a ten-page scan in English and French: against ocrmypdf for its CPU time, and against two tesseract
# processes side by side for the wall time.
. "$(dirname "$0")/lib.sh"

command -v ocrmypdf >/dev/null || fail "This needs Debian's package ocrmypdf."

# Ten pages at 300 dots per inch, half of them French, without a text layer.
make_scan() {
    python3 - >"$work/pages.typ" <<'PYTHON'
english = """The harvest began in the last week of August, earlier than anyone could remember. The mornings were cool
and the apples had taken colour quickly, so the pickers came up from the village before the light and worked until the
carts were full. By the second Sunday, %d crates stood in the barn, and nobody knew where the rest should go."""
french = """La récolte commença dans la dernière semaine d’août, plus tôt que personne ne pouvait s’en souvenir. Les
matinées étaient fraîches et les pommes avaient vite pris leur couleur, si bien que les cueilleurs montaient du village
avant le jour. Le deuxième dimanche, %d caisses attendaient dans la grange."""
print('#set page(paper: "a4")\n#set text(size: 11pt, hyphenate: false)')
for page in range(10):
    if page:
        print("#pagebreak()")
    for paragraph in range(6):
        print(((french if page % 2 else english) % (100 * page + paragraph)) + "\n")
PYTHON
    "$tools/typst" compile "$work/pages.typ" "$work/pages.pdf"
    pdftoppm -r 300 -gray -png "$work/pages.pdf" "$work/page"
    img2pdf --imgsize 300dpix300dpi "$work"/page-*.png -o "$work/scan.pdf"
}

make_scan
cat >"$work/two-processes" <<'SCRIPT'
#!/bin/sh
# OMP_THREAD_LIMIT: one thread a process is the quickest way to run several.
cd "$1" && export OMP_THREAD_LIMIT=1
printf '%s\n' page-*.png | xargs -P 2 -I {} tesseract {} {} -l eng+fra
SCRIPT
chmod +x "$work/two-processes"

status=0
rounds=${NOLFA_ROUNDS:-3}
pair "10 pages against ocrmypdf" 0.4 "$rounds" "rm -f $work/scan.md" \
    "$bin/nolfa-cli convert $work/scan.pdf --to markdown" \
    "ocrmypdf -q -l eng+fra --output-type pdf $work/scan.pdf $work/read.pdf" || status=1
# The ratio of wall times is what counts here.
pair "10 pages against two tesseract processes" 1 "$rounds" "rm -f $work/scan.md" \
    "$bin/nolfa-cli convert $work/scan.pdf --to markdown" "$work/two-processes $work" || status=1
/usr/bin/time -f "10 pages: %M KB of memory" "$bin/nolfa-cli" convert "$work/scan.pdf" --to markdown >/dev/null
exit $status
