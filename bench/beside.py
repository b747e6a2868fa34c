"""The same load on an OpenPegasus server and on smisd, with the same module and equal arrays.

beside.py SECONDS FILE: run by tests/compare/run, which starts both; writes the measurements as JSON.
"""

import json
import os
import pathlib
import sys

from measuring import measure, resident
from rows import OPENPEGASUS_OPERATIONS


def environment_of(pid):
    return pathlib.Path(f"/proc/{pid}/environ").read_bytes().split(b"\0")


def resident_with_agents(pid):
    """OpenPegasus runs providers in processes of their own; all have the state directory."""
    state = next(entry for entry in environment_of(pid) if entry.startswith(b"DRAV_STATE_DIR="))
    total = 0
    for process in pathlib.Path("/proc").glob("[0-9]*"):
        try:
            if state in environment_of(process.name):
                total += resident(process.name)
        except OSError:
            pass  # it has ended
    return total


def main():
    seconds, file = sys.argv[1:]
    costs = {}
    for server in ("OpenPegasus", "smisd"):
        port, pid = map(int, os.environ[server.upper()].split())
        environment = dict(os.environ, BENCH_SERVER=f"127.0.0.1:{port}")
        names = "|".join(f"{operation}$" for operation in OPENPEGASUS_OPERATIONS)
        costs[server] = dict(measure("bench_wire", names, environment, seconds))
        costs[server]["memory"] = resident_with_agents(pid)
    pathlib.Path(file).write_text(json.dumps(costs))


main()
