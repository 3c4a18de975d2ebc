#!/usr/bin/env bash
# The start of the window: processor time and memory until its first frame is drawn, by the processor. Medians of ten.
. "$(dirname "$0")/lib.sh"

export XDG_CONFIG_HOME=$work/settings XDG_RUNTIME_DIR=$work/runtime
mkdir -m 700 "$XDG_RUNTIME_DIR"
python3 "$top/Benchmarks/first_frame.py" "$bin/Nolfa"
