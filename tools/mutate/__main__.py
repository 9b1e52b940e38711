"""Breaks the code at random, in one place at a time, and lists the breakages that no test notices."""

import argparse
import concurrent.futures
import dataclasses
import json
import os
import pathlib
import random
import re
import resource
import signal
import sys
import threading
import time

import places
import workshop

ROOT = pathlib.Path(__file__).resolve().parents[2]
WORK = ROOT / "build-mutate"
DEFAULT_FOLDERS = ["records", "catalogue", "documents", "data", "shell"]
DEFAULT_COUNT = 50
TOLERATED = 0.05  # of the breakages: a few of them change nothing that anybody could see

# The test programs that answer for a folder, in the order in which they are asked, each with the tests it is asked for.
PROGRAMS = {
    "records": [("test_records", "*")],
    "catalogue": [("test_catalogue", "*"), ("test_documents", "*")],
    "documents": [("test_documents", "*"), ("test_records", "*ocument*:*nvoice*:*equisition*:*uotation*")],
    "data": [("test_data", "*"), ("test_records", "*")],
    "shell": [("test_shell", "*"), ("test_records", "*")],
    "platform/controls": [("test_controls", "*"), ("test_records", "*"), ("test_catalogue", "*")],
    "platform/report": [("test_report", "*"), ("test_documents", "*")],
    "platform/system": [("test_system", "*"), ("test_shell", "*")],
    "platform/dao": [("test_dao", "*"), ("test_data", "*")],
    "platform/sql": [("test_sql", "*"), ("test_dao", "*")],
}
TEST = re.compile(r"^TEST(_F|_P)?\(\s*(\w+),\s*(\w+)\s*\)", re.MULTILINE)

USAGE = "scripts/mutate [FOLDER...] [COUNT] [SEED] [--place FILE[:LINE]] [--draw N] [--list] [--workers N]"
HELP = f"""
FOLDER     {" ".join(DEFAULT_FOLDERS)} (all of these by default),
           platform or one of its folders
COUNT      breakages to try, {DEFAULT_COUNT} by default; those that do not compile are drawn again
SEED       the same seed draws the same breakages from the same code; told at the start

It works in copies of the tree under build-mutate, uncommitted changes included, and never in the tree itself. The
result is written to build-mutate/unnoticed.txt too. Exit status: 0 if at most {TOLERATED:.0%} went unnoticed, 1 if more, 2
if nothing could be tried.
"""


@dataclasses.dataclass(frozen=True)
class Breakage:
    number: int  # of the draw
    place: places.Place
    replacement: str
    source: str  # of the unbroken file

    @property
    def broken(self):
        return self.source[: self.place.start] + self.replacement + self.source[self.place.end :]

    @property
    def title(self):
        return f"{self.number:4} {self.place.file}:{self.place.line} {self.place.kind}"

    def lines(self):
        """The lines of the source before and after, each on one line."""
        first = self.source.rfind("\n", 0, self.place.start) + 1
        last = self.source.find("\n", self.place.end)
        tail = self.source[self.place.end : last]
        head = self.source[first : self.place.start]
        was = head + self.source[self.place.start : self.place.end] + tail
        return one_line(was), one_line(head + self.replacement + tail)


@dataclasses.dataclass
class Outcome:
    breakage: Breakage
    compiled: bool = True
    noticed_by: str | None = None
    building: float = 0  # seconds
    testing: float = 0


def one_line(text):
    return " ".join(text.split())


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
        folders = [folder for folder in PROGRAMS if given.place.startswith(folder + "/")]
    given.folders = [f for folder in folders or DEFAULT_FOLDERS for f in expanded(folder, parser)]
    given.count, given.seed = (numbers + [None, None])[:2]
    given.count = given.count or DEFAULT_COUNT
    given.seed = random.randrange(10000) if given.seed is None else given.seed
    return given


def expanded(folder, parser):
    if folder == "platform":
        return [known for known in PROGRAMS if known.startswith("platform/")]
    if folder not in PROGRAMS:
        parser.error(f"no tests are known for the folder {folder}; there are {' '.join(PROGRAMS)}")
    return [folder]


def sources_of(folder):
    return sorted(f"{folder}/{path.name}" for path in (ROOT / folder).iterdir() if path.suffix in (".cpp", ".h"))


def drawn(folders, seed, wanted):
    """All breakages of the folders in the order in which they are tried."""
    candidates = []
    for folder in folders:
        for file in sources_of(folder):
            if wanted and file != wanted.split(":")[0]:
                continue
            source = (ROOT / file).read_text(encoding="utf-8")
            for place in places.places_of(file, source):
                if not wanted or ":" not in wanted or place.line == int(wanted.split(":")[1]):
                    candidates.append((place, source))
    dice = random.Random(seed)
    dice.shuffle(candidates)
    rounds = [(place, dice.sample(place.choices, len(place.choices)), source) for place, source in candidates]
    ordered = [(place, choices[0], source) for place, choices, source in rounds]
    ordered += [(place, choice, source) for place, choices, source in rounds for choice in choices[1:]]
    return [Breakage(i, *one) for i, one in enumerate(ordered, 1)]


def own_tests(file):
    """The tests of the file's own unit, else of its window: frmMain_panes.cpp has none but frmMain_*_test.cpp."""
    path = pathlib.Path(file)
    folder = ROOT / "tests" / path.parent
    if not folder.is_dir():
        return []
    found = [folder / f"{path.stem}_test.cpp"]
    if not found[0].exists():
        head = path.stem.split("_")[0]
        found = [f for f in sorted(folder.glob(f"{head}*_test.cpp")) if re.split("_", f.stem)[0] == head]
    names = []
    for test_file in found:
        for kind, suite, name in TEST.findall(test_file.read_text(encoding="utf-8")):
            names.append(f"*/{suite}.{name}/*" if kind == "_P" else f"{suite}.{name}")
    return names


def rounds_of(breakage, slow, observers):
    """Which program to ask for which tests: those nearest to the breakage first, the slow ones of a program last."""
    folder = str(pathlib.Path(breakage.place.file).parent)
    first, rest = [], []
    early = own_tests(breakage.place.file)
    for program, names in PROGRAMS[folder]:
        late = [test for test in slow.get(program, []) if names == "*" and test not in early]
        early += [test for test in observers.best(folder, program) if test not in early + late]
        first += [(program, ":".join(early))] if early else []
        rest += [(program, f"{names}-{':'.join(early + late)}")]
        rest += [(program, ":".join(late))] if late else []
        early = []
    return first + rest


def slow_ones(seconds):
    """The few tests that take as long as dozens of the others."""
    usual = sum(seconds.values()) / max(1, len(seconds))
    return [test for test, took in seconds.items() if took > 10 * usual]


def targets_of(folders):
    return list(dict.fromkeys(program for folder in folders for program, _ in PROGRAMS[folder]))


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
        self.observers = Observers()
        self.changed = threading.Condition()
        self.next = 0
        self.in_work = 0
        self.outcomes = []
        self.failure = None

    def counted(self):
        return sum(outcome.compiled for outcome in self.outcomes)

    def prepare(self):
        """The unbroken copies have to build and pass, or nothing that follows says anything."""
        targets = targets_of(self.given.folders)
        began = time.monotonic()
        for shop in self.shops:
            contents = shop.refresh()
            shop.configure()
            shop.build(targets, jobs=os.cpu_count())
        print(f"copies built: {len(self.shops)}, in {time.monotonic() - began:.0f} s; the tests as they are now:", flush=True)
        known = Passed(contents)
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
        self.slow[program] = slow_ones(seconds)
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
            for program, names in rounds_of(breakage, self.slow, self.observers):
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


class Passed:
    """The test programs that have passed on this very code, with the seconds of each test, kept between two runs."""

    def __init__(self, contents):
        self.contents = contents

    def file(self, program):
        return WORK / f"passed-{program}.json"

    def seconds(self, program):
        try:
            kept = json.loads(self.file(program).read_text())
        except (OSError, ValueError):
            return {}
        return kept["seconds"] if kept["contents"] == self.contents else {}

    def keep(self, program, seconds):
        self.file(program).write_text(json.dumps({"contents": self.contents, "seconds": seconds}))


class Observers:
    """The tests that have noticed most in a folder, kept between two runs: asked first, they spare the others."""

    FILE = WORK / "observers.json"

    def __init__(self):
        self.lock = threading.Lock()
        try:
            self.counts = json.loads(self.FILE.read_text())
        except (OSError, ValueError):
            self.counts = {}

    def best(self, folder, program):
        with self.lock:
            counts = self.counts.get(f"{folder} {program}", {})
            return sorted(counts, key=counts.get, reverse=True)[:15]

    def praise(self, folder, program, test):
        with self.lock:
            counts = self.counts.setdefault(f"{folder} {program}", {})
            counts[test] = counts.get(test, 0) + 1
            self.FILE.write_text(json.dumps(self.counts))


class FirstTime:
    """Stands in for the usual seconds of the tests before there are any."""

    def get(self, _test, _otherwise):
        return 60


def told(outcome):
    change = one_line(outcome.breakage.source[outcome.breakage.place.start : outcome.breakage.place.end])
    place = outcome.breakage.place
    if place.kind == "statement dropped":
        change = change[:100]
    else:
        change = f"{change[:80]} -> {outcome.breakage.replacement and one_line(outcome.breakage.replacement)[:80]}"
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
    breakages = drawn(given.folders, given.seed, given.place)
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
