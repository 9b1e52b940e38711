"""The breakages that are possible, in the order in which a seed draws them."""

import dataclasses
import random

import places


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


def one_line(text):
    return " ".join(text.split())


def sources_of(root, folder):
    return sorted(f"{folder}/{path.name}" for path in (root / folder).iterdir() if path.suffix in (".cpp", ".h"))


def drawn(root, folders, seed, wanted):
    """All breakages of the folders in the order in which they are tried."""
    candidates = []
    for folder in folders:
        for file in sources_of(root, folder):
            if wanted and file != wanted.split(":")[0]:
                continue
            source = (root / file).read_text(encoding="utf-8")
            for place in places.places_of(file, source):
                if not wanted or ":" not in wanted or place.line == int(wanted.split(":")[1]):
                    candidates.append((place, source))
    dice = random.Random(seed)
    dice.shuffle(candidates)
    rounds = [(place, dice.sample(place.choices, len(place.choices)), source) for place, source in candidates]
    ordered = [(place, choices[0], source) for place, choices, source in rounds]
    ordered += [(place, choice, source) for place, choices, source in rounds for choice in choices[1:]]
    return [Breakage(i, *one) for i, one in enumerate(ordered, 1)]
