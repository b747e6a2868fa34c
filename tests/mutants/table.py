"""Reads mutants.txt, whose head says what is in it, and finds in the sources what it names."""

import collections
import dataclasses
import difflib
import pathlib
import re
import subprocess

HERE = pathlib.Path(__file__).resolve().parent
TABLE = HERE / "mutants.txt"


class Mistake(Exception):
    """What is wrong with the table, for the person who edits it."""


@dataclasses.dataclass
class Mutant:
    number: int
    area: str
    file: str
    function: str
    occurrence: int | None
    survives: bool
    before: str
    original: str
    after: str
    replacement: str

    @property
    def line(self):
        return self.before + self.original + self.after

    def __str__(self):
        return f"mutant {self.number} ({self.file}, {self.function}): {self.line}"


@dataclasses.dataclass
class Place:
    path: pathlib.Path  # from the root
    index: int          # of the line, from 0
    function: str


HEAD = re.compile(r"(\d+)  (\S+)  (\S+)(?:  occurrence (\d+))?(  survives)?")


def core(line):
    """A line without the braces that a change of style gives or takes."""
    return re.sub(r"^\} | \{$", "", line.strip())


def read_mutant(area, lines):
    head = HEAD.fullmatch(lines[0])
    parts = core(lines[1]).split("@") if len(lines) == 3 else []
    if not head or len(parts) != 3 or not lines[2].startswith(" -> "):
        raise Mistake(f"{TABLE.name}: this is no mutant:\n" + "\n".join(lines))
    number, file, function, occurrence, survives = head.groups()
    return Mutant(int(number), area, file, function, int(occurrence) if occurrence else None,
                  bool(survives), *parts, replacement=lines[2][len(" -> "):].strip())


def read_table(table=TABLE):
    """All mutants of the table."""
    mutants = []
    area = ""
    for block in re.split(r"\n\s*\n", re.sub(r"(?m)^#.*\n", "", table.read_text())):
        lines = block.strip("\n").splitlines()
        if lines and lines[0].startswith("=="):
            area = lines.pop(0).strip("= ")
        if lines:
            mutants.append(read_mutant(area, lines))
    numbers = collections.Counter(mutant.number for mutant in mutants)
    if twice := [number for number, count in numbers.items() if count > 1]:
        raise Mistake(f"{TABLE.name}: these numbers are there twice: {twice}")
    return mutants


def indentation(line):
    return len(line) - len(line.lstrip())


def function_at(lines, index):
    """The name of the function that a line is in, as its definition writes it, or ""."""
    outer = []  # the lines that this one is below, by their indentation
    depth = indentation(lines[index])
    for line in reversed(lines[:index]):
        if line.strip() and indentation(line) < depth and line.lstrip()[0] not in "#})":
            outer.append(line)
            depth = indentation(line)
    for line in reversed(outer):
        if re.match(r"\s*(namespace|class|struct|union|enum|public|private|extern)\b", line):
            continue
        name = re.search(r"([\w:~]*operator\s?[^\s\w(]+|[\w:~]*operator\(\)|[\w:~]+)\(", line)
        return name.group(1).replace(" ", "") if name else ""
    return ""


class Sources:
    """The lines of all product sources of a tree."""

    def __init__(self, root):
        listed = subprocess.run(
            ["git", "ls-files", "-z", "-co", "--exclude-standard", "--",
             "*.cpp", "*.h", ":!tests", ":!bench", ":!fuzz"],
            cwd=root, check=True, text=True, stdout=subprocess.PIPE).stdout
        names = sorted(name for name in set(listed.split("\0")) if (root / name).is_file())
        self.lines = {pathlib.Path(name): (root / name).read_text().splitlines() for name in names}
        self._by_text = collections.defaultdict(list)
        for path, lines in self.lines.items():
            for index, line in enumerate(lines):
                self._by_text[core(line)].append((path, index))

    def with_text(self, text):
        return [Place(path, index, function_at(self.lines[path], index))
                for path, index in self._by_text.get(text, [])]

    def place(self, mutant):
        """The one line that a mutant names; a mistake if there is none, or more than one."""
        everywhere = self.with_text(mutant.line)
        places = candidates(mutant, everywhere)
        functions = {(place.path, place.function) for place in places}
        if len(functions) == 1 and (mutant.occurrence or len(places) == 1):
            if (mutant.occurrence or 1) <= len(places):
                return places[(mutant.occurrence or 1) - 1]
        if not everywhere:
            nearest = difflib.get_close_matches(mutant.line, self._by_text, n=1)
            everywhere = [place for text in nearest for place in self.with_text(text)]
        raise Mistake(f"{'ambiguous' if places else 'not found'}: {mutant}" + "".join(
            f"\n    {place.path}:{place.index + 1}, {place.function}: "
            f"{self.lines[place.path][place.index].strip()}" for place in places or everywhere))


def candidates(mutant, places):
    """Of the places with a mutant's text, those that its function and file fit best."""
    last_name = mutant.function.split("::")[-1]
    in_function = [place for place in places if place.function.split("::")[-1] == last_name]
    if not in_function:  # its name may have changed, if there can be no mistake about the line
        return [place for place in places if place.path.name == mutant.file and len(places) == 1]
    places = in_function
    for fits in (lambda place: place.function == mutant.function,
                 lambda place: place.path.name == mutant.file,
                 lambda place: place.path.parts[0] == mutant.area):
        places = [place for place in places if fits(place)] or places
    return places


def placed(mutants, sources):
    """Each mutant with its place; all that cannot be placed are one mistake."""
    pairs = []
    mistakes = []
    for mutant in mutants:
        try:
            place = sources.place(mutant)
        except Mistake as mistake:
            mistakes.append(str(mistake))
        else:
            if any(place == other for _, other in pairs):
                mistakes.append(f"the line has a mutant already: {mutant}")
            pairs.append((mutant, place))
    if mistakes:
        raise Mistake("\n".join(mistakes) +
                      f"\n{len(mistakes)} of {len(mutants)} mutants have no place in the sources.")
    return pairs
