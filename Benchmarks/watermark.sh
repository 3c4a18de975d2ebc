#!/usr/bin/env bash
# A line over every page: against qpdf, which lays a page that was made before over each, and pdftk, which does the
# same. A book of 2,400 pages, a score of 900, and a document of pictures. Then tiles, and the preview of one page.
. "$(dirname "$0")/lib.sh"

book=/usr/share/R/doc/manual/fullrefman.pdf
score=/usr/share/doc/lilypond/html/Documentation/notation.fr.pdf
pictures=$work/pictures.pdf
[ -f "$book" ] || fail "No book: install r-doc-pdf."
[ -f "$score" ] || fail "No score: install lilypond-doc-pdf-fr."

# Forty pictures of noise, as photographs that can't be packed further: 84 MB.
python3 - "$work" <<'PYTHON'
import random, struct, sys, zlib

def chunk(kind, data):
    return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

random.seed(1)
for number in range(40):
    rows = b"".join(b"\0" + random.randbytes(3000) for _ in range(700))
    with open(f"{sys.argv[1]}/{number:02}.png", "wb") as file:
        file.write(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", 1000, 700, 8, 2, 0, 0, 0))
                   + chunk(b"IDAT", zlib.compress(rows, 1)) + chunk(b"IEND", b""))
PYTHON
img2pdf "$work"/*.png -o "$pictures" 2>/dev/null
rm "$work"/*.png

# What the peers lay over the pages: our own stamp on an empty page.
printf '%s' '%PDF-1.4
1 0 obj << /Type /Catalog /Pages 2 0 R >> endobj
2 0 obj << /Type /Pages /Count 1 /Kids [3 0 R] >> endobj
3 0 obj << /Type /Page /Parent 2 0 R /MediaBox [0 0 595 842] >> endobj
trailer << /Root 1 0 R /Size 4 >>' >"$work/empty.pdf"
stamp=$work/stamp.pdf
"$bin/nolfa-cli" watermark "$work/empty.pdf" --text CONFIDENTIEL --output "$stamp" >/dev/null

# against NAME INPUT [LIMIT]
against() {
    local name=$1 input=$2 limit=${3:-0.3} out=$work/out.pdf ours
    ours="$bin/nolfa-cli watermark $input --text CONFIDENTIEL --output $out"
    pair "$name against qpdf" "$limit" 5 "rm -f $out" "$ours" "qpdf $input --overlay $stamp --from= --repeat=1 -- $out"
    pair "$name against pdftk" "$limit" 3 "rm -f $out" "$ours" "pdftk $input stamp $stamp output $out"
    command time -f "$name: memory %M kB (at most 100000)" $ours 2>"$work/memory" >/dev/null
    cat "$work/memory"
    [ "$(sed 's/.*memory \([0-9]*\) .*/\1/' "$work/memory")" -le 100000 ] || fail "$name takes too much memory."
    awk -v name="$name" -v ours="$(stat -c %s "$out")" -v theirs="$(stat -c %s "$input")" 'BEGIN {
        printf "%s: size %.3f of the input (at most 1.05)\n", name, ours / theirs; exit ours > theirs * 1.05 }' ||
        fail "$name grows too much."
}

against "book" "$book"
against "score" "$score"
# Nearly all of it is the system copying bytes, on both sides; what is ours alone is the start of the fonts.
against "pictures" "$pictures" 0.5

qpdf "$book" --pages . 1-2000 -- "$work/two-thousand.pdf"
seconds() { command time -f '%U %S' "$@" 2>&1 >/dev/null | awk '{ print $1 + $2 }'; }
tiled=$(seconds "$bin/nolfa-cli" watermark "$work/two-thousand.pdf" --text CONFIDENTIEL --placement tiled --output "$work/out.pdf")
echo "2,000 pages with tiles: $tiled s of CPU (at most 2)"
awk -v time="$tiled" 'BEGIN { exit time > 2 }' || fail "Tiles take too long."
"$bin/nolfa-benchmarks" --benchmark_filter=previewPage --benchmark_format=csv 2>/dev/null | awk -F, '
    /^"previewPage/ { printf "%s: %.1f ms (at most 60)\n", $1, $3; late += $3 > 60; count++ } END { exit late || !count }' ||
    fail "A preview takes too long."
