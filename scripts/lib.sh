# Shared by the scripts beside it; sourced, never run.
set -euo pipefail
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$top"

fail() { printf '%s\n' "$*" >&2; exit 1; }
note() { printf '%s\n' "$*" >&2; }

# Runs a command as root, however root is to be had here.
as_root() {
    if [ "$(id -u)" = 0 ]; then "$@"
    elif command -v sudo >/dev/null; then sudo "$@"
    else fail "This needs root (or sudo): $*"
    fi
}

# All the cores, or what NOLFA_JOBS says.
jobs_wanted() { printf '%s' "${NOLFA_JOBS:-$(nproc)}"; }
