#!/usr/bin/env bash
# Instructions per one-shot parse + evaluate of the expression benchmark's
# lines, Tallyvane's engine against muparser, counted by callgrind (exact and
# steady on a busy machine, unlike times). Each engine runs twice, REPS=0 and
# REPS=200; the difference of the two totals divided by 200 x the number of
# expressions leaves only the evaluations, without start-up and warm-up.
#
# usage: bench/expression_instructions.sh BUILD_DIR   (a build of the bench preset)
# prints: {"tallyvane_ir": X, "muparser_ir": Y, "ratio": Y/X}
set -euo pipefail

build=${1:?usage: $0 BUILD_DIR}
bench=$build/bench/expression_bench
[[ -x $bench ]] || { echo "no $bench: build the expression_bench target first" >&2; exit 1; }
command -v valgrind >/dev/null || { echo "valgrind is not installed" >&2; exit 1; }

reps=200
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

expressions=$("$bench" --count tallyvane 0 | awk '/^expressions:/ {print $2}')

# The total Ir of one run.
total_ir() {
    local out=$work/callgrind.$1.$2
    valgrind --tool=callgrind --callgrind-out-file="$out" "$bench" --count "$1" "$2" \
        >/dev/null 2>"$work/stderr" || { cat "$work/stderr" >&2; exit 1; }
    awk '/^(summary|totals):/ {print $2; exit}' "$out"
}

per_evaluation() {
    local base full
    base=$(total_ir "$1" 0)
    full=$(total_ir "$1" "$reps")
    awk -v a="$base" -v b="$full" -v n="$((reps * expressions))" 'BEGIN {printf "%.1f", (b - a) / n}'
}

ours=$(per_evaluation tallyvane)
theirs=$(per_evaluation muparser)
awk -v x="$ours" -v y="$theirs" \
    'BEGIN {printf "{\"tallyvane_ir\": %s, \"muparser_ir\": %s, \"ratio\": %.2f}\n", x, y, y / x}'
