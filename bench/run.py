#!/usr/bin/env python3
"""Runs the benchmarks in build-bench and prints their ratios.

Every figure is a ratio of two measurements of this one run. The measurements and the ratios are
also written to build-bench/bench.json.
"""

import argparse
import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile

BUILD = pathlib.Path("build-bench")

# Name: hosts, targets, units under each target, sessions with the first target.
ARRAYS = {
    "10 hosts": (10, 1, 1, 0),
    "1,000 hosts": (1000, 1, 1, 0),
    "100,000 hosts": (100000, 1, 1, 0),
    "10,000 controllers": (1, 10000, 0, 0),
    "100 units": (1, 10, 10, 0),
    "10,000 units": (1, 1000, 10, 0),
    "100,000 units": (1, 10000, 10, 0),
    "10 sessions": (10, 1, 1, 10),
    "10,000 sessions": (10000, 1, 1, 10000),
}

# Array: which benchmarks run on it, in process and on the wire.
HOSTS = "enumerateHosts|hostsByHand|getHost"
HOSTS_ON_THE_WIRE = "enumerateHostsOnTheWire|getHostOnTheWire"
RUNS = {
    "10 hosts": (HOSTS, HOSTS_ON_THE_WIRE),
    "1,000 hosts": (HOSTS, HOSTS_ON_THE_WIRE),
    "100,000 hosts": (HOSTS, HOSTS_ON_THE_WIRE),
    "10,000 controllers": ("enumerateControllers", None),
    "100 units": ("enumerateControllers|enumerateMappings|associators", None),
    "10,000 units": ("associators|readUnits|exposeAndHide", "exposeAndHideOnTheWire"),
    "100,000 units": ("enumerateMappings|associators|readUnits", None),
    "10 sessions": ("walk", None),
    "10,000 sessions": ("walk", None),
}


def ratio(what, benchmark, array, against, of_array=None):
    """A row: a benchmark's cost per object against another's."""
    return what, (array, benchmark), (of_array or array, against)


def growth(what, benchmark, large, small):
    return ratio(f"{what}: {large} against {small}", benchmark, large, benchmark, small)


RATIOS = [
    ratio("a host by the provider, against by hand", "enumerateHosts", "1,000 hosts", "hostsByHand"),
    growth("cost of a host", "enumerateHosts", "1,000 hosts", "10 hosts"),
    growth("cost of a host", "enumerateHosts", "100,000 hosts", "1,000 hosts"),
    growth("getInstance of a host", "getHost", "100,000 hosts", "1,000 hosts"),
    ratio("a host on the wire, against in process", "enumerateHostsOnTheWire/real_time",
          "1,000 hosts", "enumerateHosts"),
    growth("cost of a host on the wire", "enumerateHostsOnTheWire/real_time", "100,000 hosts",
           "1,000 hosts"),
    growth("cost of a controller", "enumerateControllers", "10,000 controllers", "100 units"),
    ratio("an expose and hide pair on the wire, against in process",
          "exposeAndHideOnTheWire/real_time", "10,000 units", "exposeAndHide/1/real_time"),
    ratio("a volume of 1,000 exposed and hidden in one call, against of 10",
          "exposeAndHide/1000/real_time", "10,000 units", "exposeAndHide/10/real_time"),
    ratio("associators of a volume: a unit visited, against reading it", "associatorsOfVolume",
          "10,000 units", "readUnits"),
    growth("a unit visited from a volume", "associatorsOfVolume", "100,000 units", "100 units"),
    growth("a volume of a controller", "associatorsOfController", "100,000 units", "100 units"),
    growth("a mapping enumerated", "enumerateMappings", "100,000 units", "100 units"),
] + [
    growth(f"{walk}, a session visited", f"walk/{walk}", "10,000 sessions", "10 sessions")
    for walk in ("sessionsOfTarget", "connectionsOfEndpoint", "targetOfSession",
                 "endpointOfConnection")
] + [
    growth("connectionsOfSession, a call", "walk/connectionsOfSession", "10,000 sessions",
           "10 sessions"),
]


def progress(text):
    if sys.stderr.isatty():
        print(f"\r\033[K{text}", end="", file=sys.stderr, flush=True)


def measure(program, names, environment, seconds):
    # Providers write their lines to standard output, so the results go to a file.
    with tempfile.NamedTemporaryFile(dir=BUILD, suffix=".json") as results:
        subprocess.run([BUILD / "bin" / program, f"--benchmark_filter=^({names})",
                        f"--benchmark_min_time={seconds}", f"--benchmark_out={results.name}"],
                       env=environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                       check=True)
        report = json.load(results)
    for result in report["benchmarks"]:
        if result.get("error_occurred"):
            sys.exit(f"bench: {result['name']}: {result['error_message']}")
        yield result["name"], result["per_object"]


class Server:
    """smisd over a state directory, on a port of its own choice."""

    def __init__(self, state):
        self.process = subprocess.Popen(
            [BUILD / "bin" / "smisd", "--state", state, "--listen", "127.0.0.1:0", "--no-auth",
             "--module", BUILD / "lib" / "libAccessProviders.so", "--mof", "mof"],
            stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        for line in self.process.stdout:
            found = re.search(r"listening.*?(127\.0\.0\.1:\d+)", line)
            if found:
                self.address = found.group(1)
                break
        else:
            sys.exit("bench: smisd did not start")
        # Its lines are of no use here, but must be read.
        self.drain = subprocess.Popen(["cat"], stdin=self.process.stdout,
                                      stdout=subprocess.DEVNULL)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.terminate()
        self.process.wait()
        self.drain.wait()


def measure_array(directory, name, seconds):
    state = directory / re.sub(r"\W", "", name)
    progress(f"{name}: making the array")
    sizes = [str(size) for size in ARRAYS[name]]
    subprocess.run([BUILD / "bin" / "bench_array", state, *sizes], check=True)
    in_process, on_the_wire = RUNS[name]
    environment = dict(os.environ, DRAV_STATE_DIR=str(state))
    progress(f"{name}: in process")
    for benchmark, cost in measure("bench_providers", in_process, environment, seconds):
        yield benchmark, cost
    if on_the_wire:
        progress(f"{name}: on the wire")
        with Server(state) as server:
            environment["BENCH_SERVER"] = server.address
            yield from measure("bench_wire", on_the_wire, environment, seconds)


def print_table(rows):
    width = max(len(row["what"]) for row in rows)
    print(f"{'':{width}}  {'ratio':>8}  {'measured':>12}  {'against':>12}")
    for row in rows:
        print(f"{row['what']:{width}}  {row['ratio']:8.2f}  {row['measured'] * 1e6:9.3f} us  "
              f"{row['against'] * 1e6:9.3f} us")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--seconds", type=float, default=0.5,
                        help="shortest time of one measurement (default: %(default)s)")
    seconds = parser.parse_args().seconds

    costs = {}
    with tempfile.TemporaryDirectory(dir=BUILD) as directory:
        for name in ARRAYS:
            for benchmark, cost in measure_array(pathlib.Path(directory), name, seconds):
                costs[name, benchmark] = cost
    progress("")

    rows = [{"what": what, "ratio": costs[top] / costs[bottom], "measured": costs[top],
             "against": costs[bottom]} for what, top, bottom in RATIOS]
    print_table(rows)
    measurements = [{"array": array, "benchmark": benchmark, "seconds_per_object": cost}
                    for (array, benchmark), cost in costs.items()]
    (BUILD / "bench.json").write_text(
        json.dumps({"ratios": rows, "measurements": measurements}, indent=2) + "\n")


main()
