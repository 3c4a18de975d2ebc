"""Starts the window ten times, without and with a screen, and prints what its first frame cost. Fails above the limits."""

import os
import pathlib
import statistics
import subprocess
import sys

BINARY = sys.argv[1]
X_SERVER = pathlib.Path(__file__).parent.parent / "Tests/Application/in-x-server"
RUNS = 10
CPU_LIMIT = 400  # milliseconds
MEMORY_LIMIT = 150  # MiB
TICK = 1000 / os.sysconf("SC_CLK_TCK")


def first_frame(platform):
    """Milliseconds of processor time of all threads, and MiB resident, when the first frame is drawn."""
    env = dict(os.environ, QT_QPA_PLATFORM=platform, QT_QUICK_BACKEND="software", QT_FORCE_STDERR_LOGGING="1",
               QT_LOGGING_RULES="qt.scenegraph.time.renderloop=true")
    with subprocess.Popen([BINARY], env=env, stderr=subprocess.PIPE, text=True) as program:
        try:
            for line in program.stderr:
                if "rendered" in line:
                    break
            else:
                sys.exit("start: no frame")
            times = pathlib.Path(f"/proc/{program.pid}/stat").read_text().rsplit(")", 1)[1].split()
            status = pathlib.Path(f"/proc/{program.pid}/status").read_text().splitlines()
            resident = next(int(line.split()[1]) for line in status if line.startswith("VmRSS"))
            return (int(times[11]) + int(times[12])) * TICK, resident / 1024
        finally:
            program.kill()


def main():
    if len(sys.argv) == 2:
        subprocess.run([sys.executable, __file__, BINARY, "offscreen"], check=True)
        subprocess.run([X_SERVER, sys.executable, __file__, BINARY, "xcb"], check=True)
        return
    platform = sys.argv[2]
    results = [first_frame(platform) for _ in range(RUNS)]
    cpu, memory = (statistics.median(column) for column in zip(*results))
    print(f"start, {platform}: first frame after {cpu:.0f} ms of CPU (limit {CPU_LIMIT}), "
          f"{memory:.0f} MiB resident (limit {MEMORY_LIMIT})")
    if cpu > CPU_LIMIT or memory > MEMORY_LIMIT:
        sys.exit(1)


main()
