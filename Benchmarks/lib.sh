# Shared by the benchmarks beside it; sourced, never run.
. "$(dirname "${BASH_SOURCE[0]}")/../scripts/lib.sh"

bin=$top/build/release/bin
tools=$top/Resources/bin
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# pair NAME LIMIT ROUNDS PREPARE OURS THEIRS
# Runs the two commands in turn, so that whatever else the machine does hits both, and prints the medians of their
# CPU time (children included), wall time, and the ratio of ours to theirs. Fails when the ratio of CPU time is
# above LIMIT.
pair() {
    local name=$1 limit=$2 rounds=$3 prepare=$4 ours=$5 theirs=$6 round
    mkdir -p "$work/results"
    for ((round = 0; round < rounds; round++)); do
        hyperfine -N --runs 1 --style none --prepare "$prepare" --export-json "$work/results/$round-ours.json" "$ours" \
            >/dev/null 2>"$work/log" || { cat "$work/log" >&2; fail "$ours"; }
        hyperfine -N --runs 1 --style none --prepare "$prepare" --export-json "$work/results/$round-theirs.json" \
            "$theirs" >/dev/null 2>"$work/log" || { cat "$work/log" >&2; fail "$theirs"; }
    done
    python3 "$top/Benchmarks/medians.py" "$name" "$limit" "$work"/results/*-ours.json -- "$work"/results/*-theirs.json
    rm -rf "$work/results"
}
