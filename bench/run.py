#!/usr/bin/env python3
"""Runs the benchmarks in build-bench and prints their ratios.

Every figure is a ratio of two measurements of this one run. The measurements and the ratios are
also written to build-bench/bench.json, the ratios as a picture to build-bench/bench.svg.
"""

import argparse
import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile

import quick
import rows
from clients import memory_of_clients
from measuring import BUILD, Server, measure, progress, smisd


def measure_array(directory, name, seconds):
    state = directory / re.sub(r"\W", "", name)
    progress(f"{name}: making the array")
    sizes = [str(size) for size in rows.ARRAYS[name]]
    subprocess.run([BUILD / "bin" / "bench_array", state, *sizes], check=True)
    in_process, on_the_wire = rows.RUNS[name]
    environment = dict(os.environ, DRAV_STATE_DIR=str(state))
    progress(f"{name}: in process")
    for benchmark, cost in measure("bench_providers", in_process, environment, seconds):
        yield benchmark, cost
    if on_the_wire:
        progress(f"{name}: on the wire")
        with Server(smisd(state)) as server:
            environment["BENCH_SERVER"] = server.address
            yield from measure("bench_wire", on_the_wire, environment, seconds)
        with Server(smisd(state)) as server:
            environment["BENCH_SERVER"] = server.address
            for _ in measure("bench_wire", "getHostOnTheWire/real_time/threads:1$", environment,
                             seconds=0):
                yield "resident", server.resident()
    for clients in rows.CLIENTS.get(name, ()):
        yield f"memory/{clients}", memory_of_clients(state, clients)


def measure_constant(seconds):
    progress("a constant body")
    with Server([BUILD / "bin" / "bench_constant"]) as server:
        yield from measure("bench_wire", "constantBody",
                           dict(os.environ, BENCH_SERVER=server.address), seconds)


def beside_openpegasus(directory, seconds):
    """The same load on both servers, where PEGASUS_HOME names an OpenPegasus."""
    if not os.environ.get("PEGASUS_HOME"):
        print("bench: not measured beside OpenPegasus: PEGASUS_HOME is not set", file=sys.stderr)
        return {}
    progress("beside OpenPegasus")
    environment = dict(os.environ)
    for server in ("OPENPEGASUS", "SMISD"):
        state = directory / server
        subprocess.run([BUILD / "bin" / "bench_array", state, *map(str, rows.ARRAYS["1,000"])],
                       check=True)
        environment[f"{server}_STATE"] = str(state.absolute())
    report = directory / "beside.json"
    subprocess.run(["tests/compare/run", "build-bench-system", BUILD, sys.executable,
                    "bench/beside.py", str(seconds), str(report)], env=environment, check=True)
    return {(server, benchmark): cost
            for server, costs in json.loads(report.read_text()).items()
            for benchmark, cost in costs.items()}


def met(row):
    """Whether a row reaches its goal; None without one."""
    if row["at_most"] is not None:
        return row["ratio"] <= row["at_most"]
    if row["at_least"] is not None:
        return row["ratio"] >= row["at_least"]
    return None


def judge(costs):
    for row in rows.RATIOS + rows.OPENPEGASUS_RATIOS:
        if row["top"] not in costs:
            continue # of OpenPegasus, where there is none
        top, bottom = costs[row["top"]], costs[row["bottom"]]
        result = {"what": row["what"], "ratio": top / bottom, "measured": top, "against": bottom,
                  "unit": row["unit"], "at_most": row["at_most"], "at_least": row["at_least"]}
        yield dict(result, met=met(result))


def in_unit(value, unit):
    return {"us": f"{value * 1e6:9.3f} us", "s": f"{value:6.2f} s",
            "bytes": f"{value:6.0f} bytes", "MB": f"{value / 1e6:6.1f} MB"}[unit]


def print_table(judged):
    width = max(len(row["what"]) for row in judged)
    print(f"{'':{width}}  {'ratio':>8}  {'measured':>12}  {'against':>12}  goal")
    for row in judged:
        goal = ""
        if row["met"] is not None:
            goal = f"<= {row['at_most']}" if row["at_most"] else f">= {row['at_least']}"
            goal += "" if row["met"] else "  MISSED"
        measured, against = (in_unit(row[of], row["unit"]) for of in ("measured", "against"))
        print(f"{row['what']:{width}}  {row['ratio']:8.2f}  {measured:>12}  {against:>12}  {goal}")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--seconds", type=float, default=0.5,
                        help="shortest time of one measurement (default: %(default)s)")
    parser.add_argument("--quick", action="store_true",
                        help="only count the instructions of fixed work, and fail where they grew")
    parser.add_argument("--record", action="store_true",
                        help="with --quick: record the counts as those to compare with")
    options = parser.parse_args()
    if options.quick:
        quick.run(pathlib.Path("build"), options.record, progress)
        return

    costs = {}
    with tempfile.TemporaryDirectory(dir=BUILD) as directory:
        for name in rows.ARRAYS:
            for benchmark, cost in measure_array(pathlib.Path(directory), name, options.seconds):
                costs[name, benchmark] = cost
        costs.update(beside_openpegasus(pathlib.Path(directory), options.seconds))
    for benchmark, cost in measure_constant(options.seconds):
        costs["constant", benchmark] = cost
    costs.update(rows.derived(costs))
    progress("")

    judged = list(judge(costs))
    print_table(judged)
    measurements = [{"array": array, "benchmark": benchmark, "seconds_per_object": cost}
                    for (array, benchmark), cost in costs.items()]
    (BUILD / "bench.json").write_text(
        json.dumps({"ratios": judged, "measurements": measurements}, indent=2) + "\n")
    import picture  # needs a package that --quick does without
    picture.draw(judged, BUILD / "bench.svg")


main()
