"""Which tests are asked about a breakage, and in which order; what is remembered of them between two runs."""

import json
import pathlib
import re
import threading

ROOT = pathlib.Path(__file__).resolve().parents[2]
WORK = ROOT / "build-mutate"

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
    "platform/dao/postgres": [("test_server", "*")],
    "platform/sql": [("test_sql", "*"), ("test_dao", "*")],
}
TEST = re.compile(r"^TEST(_F|_P)?\(\s*(\w+),\s*(\w+)\s*\)", re.MULTILINE)


def own_tests(file):
    """The tests of the file's own unit, else of its window: frmDetails_input.cpp has none but frmDetails_*_test.cpp."""
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
