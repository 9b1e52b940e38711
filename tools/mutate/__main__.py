"""Breaks the code at random, in one place at a time, and lists the breakages that no test notices."""

import argparse
import concurrent.futures
import dataclasses
import os
import pathlib
import random
import resource
import signal
import sys
import threading
import time

import draw
import witnesses
import workshop
from witnesses import ROOT, WORK

DEFAULT_FOLDERS = ["records", "catalogue", "documents", "data", "shell"]
DEFAULT_COUNT = 50
TOLERATED = 0.05  # of the breakages: a few of them change nothing that anybody could see

USAGE = "scripts/mutate [FOLDER...] [COUNT] [SEED] [--place FILE[:LINE]] [--draw N] [--list] [--workers N]"
HELP = f"""
FOLDER     {" ".join(DEFAULT_FOLDERS)} (all of these by default),
           platform or one of its folders
COUNT      breakages to try, {DEFAULT_COUNT} by default; those that do not compile are drawn again
SEED       the same seed draws the same breakages from the same code; told at the start

It works in copies of the tree under build-mutate, uncommitted changes included, and never in the tree itself. The
result is written to build-mutate/unnoticed.txt too. To repeat one, give --draw its number and everything else as it
was. Exit status: 0 if at most {TOLERATED:.0%} went unnoticed, 1 if more, 2 if nothing could be tried.
"""


@dataclasses.dataclass
class Outcome:
    breakage: draw.Breakage
    compiled: bool = True
    noticed_by: str | None = None
    building: float = 0  # seconds
    testing: float = 0


def arguments():
    parser = argparse.ArgumentParser(
        prog="scripts/mutate", usage=USAGE, description=__doc__, epilog=HELP,
        formatter_class=argparse.RawDescriptionHelpFormatter,
    )  # fmt: skip
    parser.add_argument("words", nargs="*", metavar="FOLDER, COUNT, SEED")
    parser.add_argument("--place", metavar="FILE[:LINE]", help="break only this file, or only this line")
    parser.add_argument("--draw", type=int, metavar="N", help="try only the breakage of this number again")
    parser.add_argument("--list", action="store_true", help="only list what would be broken")
    parser.add_argument("--workers", type=int, default=os.cpu_count(), metavar="N", help="copies worked in at once")
    given = parser.parse_args()
    numbers = [int(word) for word in given.words if word.isdigit()]
    folders = [word.rstrip("/") for word in given.words if not word.isdigit()]
    if given.place and not folders:
        folders = [folder for folder in witnesses.PROGRAMS if given.place.startswith(folder + "/")]
    given.folders = [f for folder in folders or DEFAULT_FOLDERS for f in expanded(folder, parser)]
    given.count, given.seed = (numbers + [None, None])[:2]
    given.count = given.count or DEFAULT_COUNT
    given.seed = random.randrange(10000) if given.seed is None else given.seed
    return given


def expanded(folder, parser):
    if folder == "platform":
        return [known for known in witnesses.PROGRAMS if known.startswith("platform/")]
    if folder not in witnesses.PROGRAMS:
        parser.error(f"no tests are known for the folder {folder}; there are {' '.join(witnesses.PROGRAMS)}")
    return [folder]


class NotSound(Exception):
    """The code as it is does not pass its own tests."""


class Run:
    def __init__(self, given, breakages):
        self.given = given
        self.breakages = breakages
        # A copy without work would only be built.
        workers = max(1, min(given.workers, given.count, len(breakages)))
        self.shops = [workshop.Workshop.first_free(ROOT, WORK) for _ in range(workers)]
        self.usual = {}  # seconds of each test in unbroken code
        self.slow = {}
        self.observers = witnesses.Observers()
        self.changed = threading.Condition()
        self.next = 0
        self.in_work = 0
        self.outcomes = []
        self.failure = None

    def counted(self):
        return sum(outcome.compiled for outcome in self.outcomes)

    def prepare(self):
        """The unbroken copies have to build and pass, or nothing that follows says anything."""
        targets = witnesses.targets_of(self.given.folders)
        began = time.monotonic()
        for shop in self.shops:
            contents = shop.refresh()
            shop.configure()
            shop.build(targets, jobs=os.cpu_count())
        took = time.monotonic() - began
        print(f"copies built: {len(self.shops)}, in {took:.0f} s; the tests as they are now:", flush=True)
        known = witnesses.Passed(contents)
        with concurrent.futures.ThreadPoolExecutor(len(self.shops)) as pool:
            measured = list(pool.map(lambda i: self.measure(targets[i], i, known), range(len(targets))))
        failures = [failed for failed in measured if failed]
        if failures:
            raise NotSound(f"{failures[0]} fails before anything is broken. See to that first.")

    def measure(self, program, i, known):
        seconds = known.seconds(program)
        failed = None
        if not seconds:
            # The first run has no experience to go by: no test is held up for taking long, only for not ending.
            failed, seconds = self.shops[i % len(self.shops)].run_tests(program, "*", FirstTime())
        if not failed:
            known.keep(program, seconds)
        print(f"  {program}: {len(seconds)} tests, {sum(seconds.values()):.0f} s", flush=True)
        self.usual.update(seconds)
        self.slow[program] = witnesses.slow_ones(seconds)
        return failed

    def take(self):
        """The next breakage in the order of the draw, or None when enough have been tried."""
        with self.changed:
            while True:
                if self.failure or self.counted() >= self.given.count or self.next >= len(self.breakages):
                    return None
                if self.counted() + self.in_work < self.given.count:
                    break
                self.changed.wait()
            self.next += 1
            self.in_work += 1
            return self.breakages[self.next - 1]

    def finish(self, outcome):
        with self.changed:
            self.in_work -= 1
            self.outcomes.append(outcome)
            self.changed.notify_all()
            print(told(outcome), flush=True)

    def work(self, shop):
        try:
            while breakage := self.take():
                self.finish(self.attempt(shop, breakage))
        except BaseException as failure:
            with self.changed:
                self.failure = self.failure or failure
                self.changed.notify_all()

    def attempt(self, shop, breakage):
        outcome = Outcome(breakage)
        file = shop.source / breakage.place.file
        file.write_text(breakage.broken, encoding="utf-8")
        try:
            for program, names in witnesses.rounds_of(breakage, self.slow, self.observers):
                began = time.monotonic()
                shop.build([program])
                built = time.monotonic()
                outcome.noticed_by, _ = shop.run_tests(program, names, self.usual)
                outcome.building += built - began
                outcome.testing += time.monotonic() - built
                if outcome.noticed_by:
                    folder = str(pathlib.Path(breakage.place.file).parent)
                    self.observers.praise(folder, program, outcome.noticed_by.split()[0])
                    break
        except workshop.BuildFailed as failure:
            outcome.compiled = not failure.is_code
            outcome.noticed_by = f"the build of {failure.step}"
        finally:
            file.write_text(breakage.source, encoding="utf-8")
        return outcome

    def all(self):
        threads = [threading.Thread(target=self.work, args=(shop,)) for shop in self.shops]
        for thread in threads:
            thread.start()
        try:
            for thread in threads:
                thread.join()
        except KeyboardInterrupt:
            for thread in threads:
                thread.join()
            print("Broken off.", flush=True)
            return
        if self.failure:
            raise self.failure


class FirstTime:
    """Stands in for the usual seconds of the tests before there are any."""

    def get(self, _test, _otherwise):
        return 60


def told(outcome):
    change = draw.one_line(outcome.breakage.source[outcome.breakage.place.start : outcome.breakage.place.end])
    place = outcome.breakage.place
    if place.kind == "statement dropped":
        change = change[:100]
    else:
        change = f"{change[:80]} -> {outcome.breakage.replacement and draw.one_line(outcome.breakage.replacement)[:80]}"
    if not outcome.compiled:
        verdict = "did not compile"
    else:
        verdict = f"noticed by {outcome.noticed_by}" if outcome.noticed_by else "UNNOTICED"
    return f"{outcome.breakage.title}: {change}: {verdict} [{outcome.building:.0f} + {outcome.testing:.0f} s]"


def summary(given, run, seconds):
    tried = [outcome for outcome in run.outcomes if outcome.compiled]
    unnoticed = [outcome for outcome in tried if not outcome.noticed_by]
    unnoticed.sort(key=lambda outcome: (outcome.breakage.place.file, outcome.breakage.place.line))
    used = resource.getrusage(resource.RUSAGE_CHILDREN)
    each = max(1, len(tried))
    lines = [
        f"{' '.join(given.folders)}, seed {given.seed}: {len(tried)} breakages, {len(tried) - len(unnoticed)} noticed, "
        f"{len(unnoticed)} UNNOTICED; {len(run.outcomes) - len(tried)} did not compile and were drawn again",
        f"{seconds / 60:.1f} minutes, {seconds / each:.1f} s a breakage; of the processors' time "
        f"{(used.ru_utime + used.ru_stime - run.used_before) / each:.1f} s a breakage",
    ]
    for outcome in unnoticed:
        was, becomes = outcome.breakage.lines()
        lines += ["", outcome.breakage.title.strip(), f"  - {was}", f"  + {becomes}"]
    return "\n".join(lines) + "\n", bool(tried) and len(unnoticed) <= TOLERATED * len(tried)


def break_off(_signal, _frame):
    workshop.PROCESSES.end_all()
    raise KeyboardInterrupt


def main():
    given = arguments()
    breakages = draw.drawn(ROOT, given.folders, given.seed, given.place)
    print(f"{len(breakages)} possible breakages in {' '.join(given.folders)}; seed {given.seed}", flush=True)
    if given.draw:
        breakages = [breakage for breakage in breakages if breakage.number == given.draw]
    if given.list or not breakages:
        for breakage in breakages[: given.count]:
            print(breakage.title, *breakage.lines(), sep="\n    ")
        return 0 if breakages else 2
    run = Run(given, breakages)
    try:
        run.prepare()
    except workshop.BuildFailed as failure:
        print(f"{str(failure)[-4000:]}\nThe code does not build as it is: {failure.step}", file=sys.stderr)
        return 2
    except NotSound as failure:
        print(failure, file=sys.stderr)
        return 2
    used = resource.getrusage(resource.RUSAGE_CHILDREN)
    run.used_before = used.ru_utime + used.ru_stime
    began = time.monotonic()
    run.all()
    text, is_good = summary(given, run, time.monotonic() - began)
    (WORK / "unnoticed.txt").write_text(text, encoding="utf-8")
    print("\n" + text, end="")
    return 0 if is_good else 1


if __name__ == "__main__":
    signal.signal(signal.SIGINT, break_off)
    signal.signal(signal.SIGTERM, break_off)
    try:
        sys.exit(main())
    except KeyboardInterrupt:
        sys.exit(130)
