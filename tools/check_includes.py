#!/usr/bin/env python3
"""Checks what no compiler sees: that no include runs upward, and that each header has #pragma once.

The order of the folders, from low to high, is the block "layers" of docs/architecture.md; a file may
include from its own folder and from lower ones. A line may also name one file, which then stands
higher or lower than its folder. A folder that is not listed counts to the one it stands in, unless
that has other folders in the list: then it has to be listed too.
"""

import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
LAYERS = "docs/architecture.md"

# What a part may include beside itself. The order alone would allow more; parts that are not here
# (tests, benchmarks) may include everything.
MAY_INCLUDE = {
    "pegasus": [],
    "commandline": [],
    "engine": ["pegasus/Pegasus"],
    "array": ["engine", "pegasus/Pegasus"],
    "providers": ["engine", "pegasus/Pegasus"],
    "server": ["commandline", "pegasus"],
    "cli": ["array", "commandline", "engine", "pegasus/Pegasus"],
}

INCLUDE = re.compile(r'\s*#\s*include\s*(["<])([^">]+)[">]')


def read_layers():
    """The folders and files of the list, each with its rank."""
    text = (ROOT / LAYERS).read_text()
    block = re.search(r"^```layers\n(.*?)^```$", text, re.M | re.S)
    if not block:
        sys.exit(f"{LAYERS}: there is no block that begins with ```layers")
    lines = [line.strip() for line in block.group(1).splitlines() if line.strip()]
    names = [re.split(r"\s{2,}", line)[0] for line in lines]
    missing = [name for name in names if not (ROOT / name).exists()]
    if missing:
        sys.exit("\n".join(f"{LAYERS}: the layer {name} does not exist" for name in missing))
    return {name: rank for rank, name in enumerate(names)}


def layer_of(path, layers):
    """The list's entry that a file counts to; None: its folder has to be listed."""
    if path in layers:
        return path
    folder = path
    while "/" in folder:
        folder = folder.rsplit("/", 1)[0]
        if folder in layers:
            others_below = any(name.startswith(folder + "/") and (ROOT / name).is_dir() for name in layers)
            return folder if path.rsplit("/", 1)[0] == folder or not others_below else None
    return None


def included_file(quote, name):
    """The file of ours that an include names; None: it is the system's or a library's."""
    if quote == '"':
        return name
    for folder in ("pegasus", "."):
        if (ROOT / folder / name).is_file():
            return str(pathlib.PurePosixPath(folder, name))
    return None


def wrong_with_include(path, target, layers):
    if not (ROOT / target).is_file():
        return f"{target} does not exist; quoted includes start at the root"
    part = path.split("/")[0]
    allowed = MAY_INCLUDE.get(part)
    if allowed is not None and not any(target.startswith(name + "/") for name in [part, *allowed]):
        return f"{part} may not include {target}"
    own, other = layer_of(path, layers), layer_of(target, layers)
    if own and other and layers[other] > layers[own]:
        return f"{target} is above {own} ({LAYERS})"
    return None


def complaints_about(path, layers):
    if layer_of(path, layers) is None:
        yield f"{path}: its folder is not among the layers of {LAYERS}"
    lines = (ROOT / path).read_text().splitlines()
    if path.endswith(".h") and "#pragma once" not in lines:
        yield f"{path}: there is no #pragma once"
    for number, line in enumerate(lines, 1):
        include = INCLUDE.match(line)
        target = include and included_file(*include.groups())
        wrong = target and wrong_with_include(path, target, layers)
        if wrong:
            yield f"{path}:{number}: {wrong}"


def main():
    layers = read_layers()
    listed = subprocess.run(["git", "ls-files", "-co", "--exclude-standard", "*.cpp", "*.h"], cwd=ROOT,
                            check=True, capture_output=True, text=True).stdout.split()
    complaints = [complaint for path in listed if (ROOT / path).is_file()
                  for complaint in complaints_about(path, layers)]
    print("\n".join(complaints), end="\n" if complaints else "")
    return 1 if complaints else 0


if __name__ == "__main__":
    sys.exit(main())
