#!/usr/bin/env python3
"""Runs the benchmarks in build-bench and prints their ratios.

Every figure is a ratio of two measurements of this one run. The measurements and the ratios are
also written to build-bench/bench.json, the ratios as a picture to build-bench/bench.svg.
"""

import argparse
import concurrent.futures
import http.client
import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile

import quick

BUILD = pathlib.Path("build-bench")

# Name: hosts, targets, units under each target, sessions with the first target.
ARRAYS = {
    "one object of each kind": (1, 1, 1, 0),
    "100,000 hosts": (100000, 1, 1, 0),
    "100 units": (1, 10, 10, 0),
    "10,000 units": (1, 1000, 10, 0),
    "100,000 units": (1, 10000, 10, 0),
    "10 sessions": (10, 1, 1, 10),
    "10,000 sessions": (10000, 1, 1, 10000),
    # With a unit for each of its volumes.
    "1,000,000 volumes": (100000, 100, 10000, 0),
    # So many hosts, targets and volumes each, and twice as many units.
    "1,000": (1000, 1000, 2, 0),
    "100,000": (100000, 100000, 2, 0),
    "1,000,000": (1000000, 1000000, 2, 0),
}

# Array: which benchmarks run on it, in process and on the wire.
SIZES = ("enumerateHosts|enumerateControllers|enumerateMappings|getHost|getController|"
         "findHostByName|findVolumeByKey")
RUNS = {
    "one object of each kind": ("getHost", "getHostOnTheWire/real_time/threads:1$"),
    "100,000 hosts": ("enumerateHosts", "enumerateHostsOnTheWire|loopback"),
    "100 units": ("associators", None),
    "10,000 units": ("associators|readUnits|exposeAndHide",
                     "exposeAndHideOnTheWire/real_time/threads:1$"),
    "100,000 units": ("associators", None),
    "10 sessions": ("walk", None),
    "10,000 sessions": ("walk", None),
    "1,000,000 volumes": ("startUp|memory", None),
    "1,000": (SIZES + "|hostsByHand|flush|change|readBesideWriters",
              "enumerateHostsOnTheWire|getHostOnTheWire|exposeAndHideOnTheWire"),
    "100,000": ("getHost|flush|change/real_time/threads:1$", None),
    "1,000,000": (SIZES + "|flush|change/real_time/threads:1$", None),
}


# Array: how many clients read all of its hosts at once.
CLIENTS = {"1,000,000": (1, 16)}


def ratio(what, benchmark, array, against, of_array=None, at_most=None, at_least=None,
          unit="us"):
    """A row: a benchmark's cost per object against another's, and its goal."""
    return {"what": what, "top": (array, benchmark), "bottom": (of_array or array, against),
            "at_most": at_most, "at_least": at_least, "unit": unit}


def growth(what, benchmark, large, small, **goal):
    return ratio(f"{what}: {large} against {small}", benchmark, large, benchmark, small, **goal)


RATIOS = [
    ratio("a host by the provider, against by hand", "enumerateHosts", "1,000", "hostsByHand",
          at_most=1.15),
] + [
    growth(what, benchmark, "1,000,000", "1,000", at_most=goal)
    for what, benchmark, goal in (
        ("a host enumerated", "enumerateHosts", 1.2),
        ("a controller enumerated", "enumerateControllers", 1.2),
        ("a mapping enumerated", "enumerateMappings", 1.2),
        ("getInstance of a host", "getHost", 1.3),
        ("getInstance of a controller", "getController", 1.3),
        ("a host found by its name", "findHostByName", 1.3),
        ("a volume found by its key", "findVolumeByKey", 1.3),
    )
] + [
    ratio("associators of a volume: a unit visited, against reading it", "associatorsOfVolume",
          "10,000 units", "readUnits", at_most=1.5),
    ratio("the same where each target has the volume: controllers are built",
          "associatorsOfSharedVolume", "10,000 units", "readUnits"),
    growth("a unit visited from a volume", "associatorsOfVolume", "100,000 units", "100 units"),
    growth("a volume of a controller", "associatorsOfController", "100,000 units", "100 units"),
] + [
    growth(f"{walk}, a session visited", f"walk/{walk}", "10,000 sessions", "10 sessions")
    for walk in ("sessionsOfTarget", "connectionsOfEndpoint", "targetOfSession",
                 "endpointOfConnection")
] + [
    growth("connectionsOfSession, a call", "walk/connectionsOfSession", "10,000 sessions",
           "10 sessions"),
    ratio("a volume of 1,000 exposed and hidden in one call, against of 10",
          "exposeAndHide/1000/real_time", "10,000 units", "exposeAndHide/10/real_time"),
    ratio("an expose and hide pair on the wire, against in process",
          "exposeAndHideOnTheWire/real_time/threads:1", "10,000 units",
          "exposeAndHide/1/real_time"),
    ratio("a host on the wire, against in process", "enumerateHostsOnTheWire/real_time",
          "100,000 hosts", "enumerateHosts"),
    growth("cost of a host on the wire", "enumerateHostsOnTheWire/real_time", "100,000 hosts",
           "1,000"),
    ratio("bytes of 100,000 hosts sent per second, against from memory", "loopback/real_time",
          "100,000 hosts", "enumerateHostsOnTheWire/real_time", at_least=0.25),
    ratio("GetInstance requests per second of 8 clients, against of a constant body",
          "constantBody/real_time/threads:8", "constant",
          "getHostOnTheWire/real_time/threads:8", "1,000", at_least=0.5),
] + [
    ratio(f"GetInstance: time of a request, {clients} clients against 1",
          f"getHostOnTheWire/real_time/threads:{clients}", "1,000",
          "getHostOnTheWire/real_time/threads:1") for clients in (8, 64)
] + [
    ratio("ExposePaths and HidePaths per second of 16 clients, against flushes", "flush/real_time",
          "1,000", "a method of 16 clients", at_least=1),
    ratio("changes per second, against flushes", "flush/real_time", "1,000",
          "change/real_time/threads:1"),
    ratio("changes per second of 16 threads, against flushes", "flush/real_time", "1,000",
          "change/real_time/threads:16"),
    growth("a change", "change/real_time/threads:1", "100,000", "1,000"),
    growth("a change", "change/real_time/threads:1", "1,000,000", "1,000"),
    ratio("reads per second beside 1 writer, against none", "readBesideWriters/0", "1,000",
          "readBesideWriters/1"),
    ratio("reads per second beside 4 writers, against none", "readBesideWriters/0", "1,000",
          "readBesideWriters/4"),
    ratio("start-up of 1,000,000 volumes with units and 100,000 hosts, against 5 s",
          "startUp/iterations:1/manual_time", "1,000,000 volumes", "5 s", at_most=1, unit="s"),
    ratio("memory of the array for each of these 2,100,000 objects, against 400 bytes",
          "memory of an object", "1,000,000 volumes", "400 bytes", at_most=1, unit="bytes"),
] + [
    ratio(f"memory for each of {clients} clients that enumerate 1,000,000 hosts, against 16 MiB",
          f"memory/{clients}", "1,000,000", "16 MiB", at_most=1, unit="bytes")
    for clients in (1, 16)
] + [
    ratio("memory of smisd for each of 100,000 hosts, against 400 bytes", "memory",
          "100,000 hosts", "400 bytes", at_most=1, unit="bytes"),
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


def smisd(state):
    return [BUILD / "bin" / "smisd", "--state", state, "--listen", "127.0.0.1:0", "--no-auth",
            "--module", BUILD / "lib" / "libAccessProviders.so", "--mof", "mof"]


class Server:
    """A server that says on which port it listens."""

    def __init__(self, command):
        self.process = subprocess.Popen(command, stdout=subprocess.PIPE,
                                        stderr=subprocess.DEVNULL, text=True)
        for line in self.process.stdout:
            found = re.search(r"listening.*?(127\.0\.0\.1:\d+)", line)
            if found:
                self.address = found.group(1)
                break
        else:
            sys.exit(f"bench: {command[0]} did not start")
        # Its lines are of no use here, but must be read.
        self.drain = subprocess.Popen(["cat"], stdin=self.process.stdout,
                                      stdout=subprocess.DEVNULL)

    def resident(self, what="VmRSS"):
        """Bytes of memory."""
        status = pathlib.Path(f"/proc/{self.process.pid}/status").read_text()
        return int(re.search(rf"^{what}:\s+(\d+) kB", status, re.M).group(1)) * 1024

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.terminate()
        self.process.wait()
        self.drain.wait()


def enumerate_instances(address, class_name):
    """Reads the answer and drops it."""
    body = f"""<?xml version="1.0" encoding="utf-8" ?>
<CIM CIMVERSION="2.0" DTDVERSION="2.0"><MESSAGE ID="1" PROTOCOLVERSION="1.0"><SIMPLEREQ>
<IMETHODCALL NAME="EnumerateInstances">
<LOCALNAMESPACEPATH><NAMESPACE NAME="root"/><NAMESPACE NAME="snia"/></LOCALNAMESPACEPATH>
<IPARAMVALUE NAME="ClassName"><CLASSNAME NAME="{class_name}"/></IPARAMVALUE>
</IMETHODCALL></SIMPLEREQ></MESSAGE></CIM>"""
    connection = http.client.HTTPConnection(address)
    connection.request("POST", "/cimom", body, {
        "Content-Type": "application/xml", "CIMOperation": "MethodCall",
        "CIMMethod": "EnumerateInstances", "CIMObject": "root/snia"})
    response = connection.getresponse()
    if response.status != 200:
        sys.exit(f"bench: EnumerateInstances: {response.status} {response.reason}")
    dropped = bytearray(1 << 20)
    while response.readinto(dropped):
        pass


def memory_of_clients(state, clients):
    """Bytes that smisd needs, at most, for each of so many clients that read all hosts at once."""
    progress(f"memory for {clients} clients")
    with Server(smisd(state)) as server:
        enumerate_instances(server.address, "CIM_ControllerConfigurationService")
        loaded = server.resident()
        with concurrent.futures.ThreadPoolExecutor(clients) as pool:
            list(pool.map(enumerate_instances, [server.address] * clients,
                          ["CIM_StorageHardwareID"] * clients))
        return (server.resident("VmHWM") - loaded) / clients


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
        with Server(smisd(state)) as server:
            environment["BENCH_SERVER"] = server.address
            yield from measure("bench_wire", on_the_wire, environment, seconds)
        with Server(smisd(state)) as server:
            environment["BENCH_SERVER"] = server.address
            for _ in measure("bench_wire", "getHostOnTheWire/real_time/threads:1$", environment,
                             seconds=0):
                yield "resident", server.resident()
    for clients in CLIENTS.get(name, ()):
        yield f"memory/{clients}", memory_of_clients(state, clients)


def met(row):
    """Whether a row reaches its goal; None without one."""
    if row["at_most"] is not None:
        return row["ratio"] <= row["at_most"]
    if row["at_least"] is not None:
        return row["ratio"] >= row["at_least"]
    return None


def derived(costs):
    """What follows from the measurements, and what some are held against."""
    alone = costs["one object of each kind", "resident"]
    pair = costs["1,000", "exposeAndHideOnTheWire/real_time/threads:16"]
    volumes = costs["1,000,000 volumes", "memory/iterations:1"]
    return {
        ("100,000 hosts", "memory"): (costs["100,000 hosts", "resident"] - alone) / 100000,
        ("100,000 hosts", "400 bytes"): 400,
        ("1,000", "a method of 16 clients"): pair / 2,
        ("1,000,000 volumes", "memory of an object"): volumes / 2100000,
        ("1,000,000 volumes", "400 bytes"): 400,
        ("1,000,000 volumes", "5 s"): 5,
        ("1,000,000", "16 MiB"): 16 * 1024 * 1024,
    }


def judge(costs):
    for row in RATIOS:
        top, bottom = costs[row["top"]], costs[row["bottom"]]
        result = {"what": row["what"], "ratio": top / bottom, "measured": top, "against": bottom,
                  "unit": row["unit"], "at_most": row["at_most"], "at_least": row["at_least"]}
        yield dict(result, met=met(result))


def measure_constant(seconds):
    progress("a constant body")
    with Server([BUILD / "bin" / "bench_constant"]) as server:
        yield from measure("bench_wire", "constantBody",
                           dict(os.environ, BENCH_SERVER=server.address), seconds)


def in_unit(value, unit):
    return {"us": f"{value * 1e6:9.3f} us", "s": f"{value:6.2f} s",
            "bytes": f"{value:6.0f} bytes"}[unit]


def print_table(rows):
    width = max(len(row["what"]) for row in rows)
    print(f"{'':{width}}  {'ratio':>8}  {'measured':>12}  {'against':>12}  goal")
    for row in rows:
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
        for name in ARRAYS:
            for benchmark, cost in measure_array(pathlib.Path(directory), name, options.seconds):
                costs[name, benchmark] = cost
    for benchmark, cost in measure_constant(options.seconds):
        costs["constant", benchmark] = cost
    costs.update(derived(costs))
    progress("")

    rows = list(judge(costs))
    print_table(rows)
    measurements = [{"array": array, "benchmark": benchmark, "seconds_per_object": cost}
                    for (array, benchmark), cost in costs.items()]
    (BUILD / "bench.json").write_text(
        json.dumps({"ratios": rows, "measurements": measurements}, indent=2) + "\n")
    import picture  # needs a package that --quick does without
    picture.draw(rows, BUILD / "bench.svg")


main()
