#!/usr/bin/env bash
# Markdown tables to Excel: against zip over the same parts, which is part of the work.
. "$(dirname "$0")/lib.sh"

status=0
against_zip() {
    local cells=$1 input=$work/table-$1.md output=$work/table-$1.xlsx
    python3 - "$cells" >"$input" <<'PYTHON'
import sys

print("|" + " head |" * 10 + "\n|" + "---|" * 10)
for row in range(int(sys.argv[1]) // 10):
    print(f"| Ville {row % 977} | {row} | {row / 8} | n°{row % 31} | {row * 3} | à payer | {row % 7},5 | {row}.00 | x | <{row}> |")
PYTHON
    "$bin/nolfa-cli" convert "$input" --to xlsx >/dev/null
    rm -rf "$work/parts" && mkdir "$work/parts" && unzip -q "$output" -d "$work/parts"
    pair "$cells table cells against zip" "$2" 7 "rm -f $output $work/peer.zip" \
        "$bin/nolfa-cli convert $input --to xlsx" "env -C $work/parts zip -r -q -X $work/peer.zip ." || status=1
}

against_zip 10000 5
against_zip 100000 2
against_zip 1000000 1.2
exit $status
