#!/usr/bin/python3
"""Fits a fleet of data sets by Dask's distributed scheduler.

    fleet.py IN.jsonl OUT.jsonl [--scheduler ADDRESS] [--lose-a-worker]

Each line of IN is one data set as `tavlo-cli batch` takes it; OUT gets one answer for each, in
the same order. A piece of a few hundred lines is a task: a worker hands it to `tavlo-cli batch`
and returns what that writes. A worker that dies costs only the pieces it was at; the scheduler
gives them to another. A few pieces are in flight, so memory does not grow with IN.

Without --scheduler a scheduler and two workers, a process each, are started on this machine.
--lose-a-worker kills one of them in the middle, to show that every answer comes once all the
same. TAVLO_CLI names the program where it is not in the path.
"""
import argparse
import collections
import contextlib
import itertools
import os
import subprocess
import sys
import tempfile

from distributed import Client

LINES_A_PIECE = 200
PIECES_IN_FLIGHT = 8


def answers_of(lines):
    """The answers to some lines, and whether all fits were made. Runs on a worker."""
    program = os.environ.get("TAVLO_CLI", "tavlo-cli")
    done = subprocess.run([program, "batch", "--jobs", "1"], input="".join(lines),
                          capture_output=True, text=True)
    answers = done.stdout.splitlines(keepends=True)
    if done.returncode not in (0, 1) or len(answers) != sum(1 for line in lines if line.strip()):
        raise RuntimeError(f"{program} ended with {done.returncode}: {done.stderr}")
    return answers, done.returncode == 0


def pieces_of(file):
    while piece := list(itertools.islice(file, LINES_A_PIECE)):
        yield [line if line.endswith("\n") else line + "\n" for line in piece]


@contextlib.contextmanager
def local_scheduler(workers):
    """A scheduler and so many workers, each a process; the file that tells where, and these."""
    processes = []

    def start(part, *words):
        processes.append(subprocess.Popen([sys.executable, "-m", f"distributed.cli.dask_{part}",
                                           "--scheduler-file", place, "--no-dashboard", *words],
                                          stderr=subprocess.DEVNULL))

    with tempfile.TemporaryDirectory() as folder:
        place = os.path.join(folder, "scheduler.json")
        try:
            start("scheduler", "--port", "0", "--host", "127.0.0.1")
            for _ in range(workers):
                start("worker", "--nthreads", "1", "--no-nanny", "--local-directory", folder)
            yield place, processes[1:]
        finally:
            for process in processes:
                process.kill()
                process.wait()


def run(client, source, target, doomed):
    """Hands pieces out and writes their answers in order; whether all fits were made."""
    waiting = collections.deque()
    all_made = True
    written = 0

    def write_first():
        nonlocal all_made, written
        answers, made = waiting.popleft().result()
        target.writelines(answers)
        all_made = all_made and made
        written += 1

    for number, piece in enumerate(pieces_of(source)):
        # A key of its own for each: two pieces with the same lines are two tasks.
        waiting.append(client.submit(answers_of, piece, key=f"piece-{number}", retries=3))
        if len(waiting) == PIECES_IN_FLIGHT:
            write_first()
        if doomed and number == PIECES_IN_FLIGHT:
            doomed.kill()
            print("a worker was killed", file=sys.stderr)
    while waiting:
        write_first()
    print(f"{written} pieces", file=sys.stderr)
    return all_made


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("source", metavar="IN.jsonl")
    parser.add_argument("target", metavar="OUT.jsonl")
    parser.add_argument("--scheduler", help="address of one that runs, tcp://host:8786")
    parser.add_argument("--lose-a-worker", action="store_true")
    words = parser.parse_args()
    with contextlib.ExitStack() as stack:
        doomed = None
        if words.scheduler:
            client = stack.enter_context(Client(words.scheduler))
        else:
            place, workers = stack.enter_context(local_scheduler(workers=2))
            client = stack.enter_context(Client(scheduler_file=place))
            client.wait_for_workers(len(workers))
            doomed = workers[0] if words.lose_a_worker else None
        source = stack.enter_context(open(words.source, encoding="utf-8"))
        target = stack.enter_context(open(words.target, "w", encoding="utf-8"))
        return 0 if run(client, source, target, doomed) else 1


if __name__ == "__main__":
    sys.exit(main())
