#!/usr/bin/env bash
# Comparing two versions of a text, word by word: against wdiff, dwdiff and git, which know no documents and no
# paragraphs. How our time grows, and what equal texts and a long table take.
. "$(dirname "$0")/lib.sh"

for peer in wdiff dwdiff; do
    command -v $peer >/dev/null || fail "This needs Debian's package $peer."
done
# The peers end with 1 where texts differ.
cat >"$work/differing" <<'SCRIPT'
#!/bin/sh
"$@"
[ $? -le 1 ]
SCRIPT
chmod +x "$work/differing"

rounds=${NOLFA_ROUNDS:-5}
status=0

# revisions KIND SIZE: the name that both files begin with
revisions() {
    local name=$work/${1%\%}-$2
    [ -f "$name-new.md" ] ||
        python3 "$top/Benchmarks/make_revisions.py" "$1" "$2" "$name-old.md" "$name-new.md"
    printf '%s' "$name"
}

# against LIMIT KIND SIZE PEER…
against() {
    local limit=$1 kind=$2 size=$3 name
    shift 3
    name=$(revisions "$kind" "$size")
    pair "$kind $size against $1" "$limit" "$rounds" true \
        "$bin/nolfa-cli compare $name-old.md $name-new.md" \
        "$work/differing $* $name-old.md $name-new.md" || status=1
}

# within SECONDS KILOBYTES KIND SIZE: the best of several runs, all of its CPU time
within() {
    local name run
    name=$(revisions "$3" "$4")
    for ((run = 0; run < rounds; run++)); do
        command time -f "%U %S %M" "$bin/nolfa-cli" compare "$name-old.md" "$name-new.md" 2>&1 >/dev/null
    done | awk -v what="$3 $4" -v seconds="$1" -v memory="$2" '
        NR == 1 || $1 + $2 < best { best = $1 + $2 }
        $3 > most { most = $3 }
        END {
            printf "%s: CPU %d ms (at most %d), %d KB of memory (at most %d)\n", what, best * 1000, seconds * 1000, most, memory
            exit !(best <= seconds && most <= memory)
        }' || status=1
}

against 0.8 1% 1000000 wdiff
against 0.3 10% 1000000 wdiff
against 0.3 rewrite 10000 dwdiff
against 0.8 1% 1000000 dwdiff
against 0.3 10% 1000000 dwdiff
# Fast where most lines are the same, and coarse: it shows no more than which words of which lines.
against 3 1% 1000000 git diff --no-index --word-diff
against 3 10% 1000000 git diff --no-index --word-diff
within 0.3 300000 equal 1000000
within 0.2 300000 table 20000
within 3 300000 rewrite 10000
for size in 10000 100000 1000000; do
    within 0.5 300000 1% "$size"
done
exit $status
