"""A copy of the sources that has all mutants at once, and its build."""

import os
import pathlib
import shutil
import subprocess
import sys

from table import HERE, Mistake

HEADER = pathlib.Path("tests/mutants/mutant.h")


def switched(mutant):
    """The mutant's line with both, the original and the replacement."""
    on = f"mutants::on({mutant.number})"
    original, replacement = mutant.original, mutant.replacement
    if original.endswith(";"):
        both = f"{{ if ({on}) {{ {replacement} }} else {{ {original} }} }}"
    else:
        both = f"({on} ? ({replacement}) : ({original}))"
    return mutant.before + both + mutant.after


def broken_texts(places, sources):
    """The new text of each file that has mutants, by its path."""
    lines = {place.path: list(sources.lines[place.path]) for _, place in places}
    for mutant, place in places:
        line = lines[place.path][place.index]
        lines[place.path][place.index] = line.replace(mutant.line, switched(mutant))
    return {path: f'#include "{os.path.relpath(HEADER, path.parent)}"\n' + "\n".join(of_file) + "\n"
            for path, of_file in lines.items()}


def make_copy(root, copy, texts):
    """Makes the copy what it should be; it leaves alone what is so already, for the next build."""
    listed = subprocess.run(["git", "ls-files", "-z", "-co", "--exclude-standard"], cwd=root,
                            check=True, text=True, stdout=subprocess.PIPE).stdout
    files = {pathlib.Path(name): root / name
             for name in listed.split("\0") if name and (root / name).is_file()}
    files[HEADER] = HERE / HEADER.name
    for path, source in files.items():
        content = texts[path].encode() if path in texts else source.read_bytes()
        target = copy / path
        if not target.exists() or target.read_bytes() != content:
            target.parent.mkdir(parents=True, exist_ok=True)
            target.write_bytes(content)
            shutil.copymode(source, target)
    for path in list(copy.rglob("*")):
        name = path.relative_to(copy)
        if path.is_file() and name.parts[0] != "build" and name not in files:
            path.unlink()


def build(copy):
    """Builds the copy as the tree is built, which lets ccache serve what has no mutant."""
    print("Building all mutants at once", file=sys.stderr, flush=True)
    if subprocess.run(["./dev", "build"], cwd=copy, stdout=sys.stderr).returncode != 0:
        raise Mistake('The copy with the mutants does not build. In the lines that the compiler '
                      'shows, "mutants::on(N)" is mutant N.')
