#!/usr/bin/env bash
# A picture to PDF, against img2pdf, which keeps the original as we do: photographs of 12 megapixels.
. "$(dirname "$0")/lib.sh"

command -v img2pdf >/dev/null || fail "This needs Debian's package img2pdf."
# What img2pdf itself draws on.
/usr/bin/python3 - "$work" <<'PYTHON'
import random
import sys

from PIL import Image

random.seed(1)
size = (4000, 3000)
blurred = Image.effect_noise((500, 375), 80).resize(size, Image.BICUBIC)
photograph = Image.merge("RGB", (blurred, Image.radial_gradient("L").resize(size), Image.linear_gradient("L").resize(size)))
noise = Image.effect_noise(size, 6)
photograph = Image.blend(photograph, Image.merge("RGB", (noise, noise, noise)), 0.15)
folder = sys.argv[1]
photograph.save(f"{folder}/photo.jpg", quality=90)
photograph.save(f"{folder}/progressive.jpg", quality=90, progressive=True)
photograph.save(f"{folder}/photo.png")
photograph.convert("RGBA").save(f"{folder}/alpha.png")
PYTHON

status=0
# against_img2pdf NAME ROUNDS
against_img2pdf() {
    local input=$work/$1 output=$work/${1%.*}.pdf
    pair "$1" 0.5 "$2" "rm -f $output" "$bin/nolfa-cli convert $input --to pdf" "img2pdf $input -o $output" || status=1
    rm -f "$output"
    "$bin/nolfa-cli" convert "$input" --to pdf >/dev/null
    printf '%s: %d bytes more than the picture\n' "$1" $(($(stat -c %s "$output") - $(stat -c %s "$input")))
}

against_img2pdf photo.jpg 15
against_img2pdf progressive.jpg 15
against_img2pdf photo.png 5
against_img2pdf alpha.png 3
exit $status
