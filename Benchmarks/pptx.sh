#!/usr/bin/env bash
# A deck of 200 slides with notes to Markdown: against mere unpacking, and in milliseconds.
. "$(dirname "$0")/lib.sh"

{
    for slide in $(seq 200); do
        printf '# Slide %s\n\n- one\n- two\n    - three\n\n| a | b |\n|---|---|\n| 1 | 2 |\n\n::: notes\nRemember %s.\n:::\n\n' \
            "$slide" "$slide"
    done
} >"$work/deck-source.md"
"$tools/pandoc" -f markdown -t pptx -o "$work/deck.pptx" "$work/deck-source.md"
pair "200 slides against unzip -p" 5 21 "rm -f $work/deck.md" \
    "$bin/nolfa-cli convert $work/deck.pptx --to markdown" "unzip -p $work/deck.pptx"
