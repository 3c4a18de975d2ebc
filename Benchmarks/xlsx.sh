#!/usr/bin/env bash
# A workbook to Markdown, its unzip included: against xlsx2csv, and against mere unpacking of the same parts.
. "$(dirname "$0")/lib.sh"

command -v xlsx2csv >/dev/null || fail "This needs Debian's package xlsx2csv."
status=0
# against_peers CELLS ROUNDS LIMIT_CSV LIMIT_UNZIP
against_peers() {
    local cells=$1 input=$work/book-$1.xlsx output=$work/book-$1.md
    python3 "$top/Benchmarks/make_workbook.py" $((cells / 10)) "$input"
    pair "$cells cells against xlsx2csv" "$3" "$2" "rm -f $output" \
        "$bin/nolfa-cli convert $input --to markdown" "xlsx2csv $input $work/book.csv" || status=1
    pair "$cells cells against unzip -p" "$4" "$2" "rm -f $output" \
        "$bin/nolfa-cli convert $input --to markdown" "unzip -p $input" || status=1
    rm -f "$output"
    /usr/bin/time -f "$cells cells: %M KB of memory" "$bin/nolfa-cli" convert "$input" --to markdown >/dev/null
    printf '%s cells: %s KB of Markdown\n' "$cells" $(($(stat -c %s "$output") / 1024))
}

against_peers 10000 11 1 50
against_peers 100000 11 1 10
against_peers 1000000 7 0.15 3
exit $status
