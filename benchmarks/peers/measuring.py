"""What the scripts beside this have in common."""

import os
import signal

REPETITIONS = 7


def print_figure(name, value, unit):
    """A figure in the layout of the benchmark programs' CSV, which scripts/benchmark.sh reads."""
    print(f'"{name}_median",{REPETITIONS},{value:.6f},{value:.6f},{unit}', flush=True)


def run_interruptibly(main):
    """Runs `main`; an interrupt leaves it in order and then ends the process as it ends others, so
    that a script which called it stops, too."""
    try:
        main()
    except KeyboardInterrupt:
        signal.signal(signal.SIGINT, signal.SIG_DFL)
        os.kill(os.getpid(), signal.SIGINT)
