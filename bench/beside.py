"""The same load on an OpenPegasus server and on smisd, with the same module and equal arrays.

beside.py SECONDS FILE: run by tests/compare/run, which starts both; writes the measurements as JSON.
"""

import json
import os
import pathlib
import re
import sys

from measuring import measure, resident
from rows import OPENPEGASUS_OPERATIONS


def children(pid):
    for status in pathlib.Path("/proc").glob("[0-9]*/status"):
        try:
            parent = re.search(r"^PPid:\s+(\d+)", status.read_text(), re.M)
        except OSError:
            continue # it has ended
        if int(parent.group(1)) == pid:
            yield int(status.parent.name)


def resident_with_children(pid):
    return resident(pid) + sum(map(resident_with_children, children(pid)))


def main():
    seconds, file = sys.argv[1:]
    costs = {}
    for server in ("OpenPegasus", "smisd"):
        port, pid = map(int, os.environ[server.upper()].split())
        environment = dict(os.environ, BENCH_SERVER=f"127.0.0.1:{port}")
        names = "|".join(f"{operation}$" for operation in OPENPEGASUS_OPERATIONS)
        costs[server] = dict(measure("bench_wire", names, environment, seconds))
        costs[server]["memory"] = resident_with_children(pid)
    pathlib.Path(file).write_text(json.dumps(costs))


main()
