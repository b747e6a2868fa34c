"""Guards against regressions: instructions executed by fixed work, compared with those recorded.

Instruction counts do not depend on what else the machine does, so a few percent can be seen.
"""

import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile

RECORD = pathlib.Path(__file__).with_name("instructions.json")
TOLERANCE = 1.05

# Hosts, targets, units under each target, sessions with the first target.
ARRAY = (1000, 100, 10, 100)

# One iteration of each; its array is ARRAY.
FIXED_WORK = ["enumerateHosts", "hostsByHand", "getHost", "enumerateControllers",
              "enumerateMappings", "associatorsOfVolume", "associatorsOfSharedVolume",
              "associatorsOfController", "readUnits"]


def instructions(build, benchmark, environment):
    """Of one iteration, the loading of the array and the benchmark library left out."""
    with tempfile.NamedTemporaryFile(suffix=".callgrind") as counts:
        subprocess.run(
            ["valgrind", "--tool=callgrind", f"--callgrind-out-file={counts.name}",
             f"--toggle-collect=(anonymous namespace)::{benchmark}(benchmark::State&)",
             build / "bin" / "bench_providers", f"--benchmark_filter=^{benchmark}$",
             "--benchmark_min_time=1e-9"],
            env=environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=True)
        return int(re.search(r"^summary: (\d+)", counts.read().decode(), re.M).group(1))


def count_all(build, progress):
    with tempfile.TemporaryDirectory() as directory:
        state = pathlib.Path(directory) / "state"
        subprocess.run([build / "bin" / "bench_array", state, *map(str, ARRAY)], check=True)
        environment = dict(os.environ, DRAV_STATE_DIR=str(state))
        for benchmark in FIXED_WORK:
            progress(benchmark)
            yield benchmark, instructions(build, benchmark, environment)
    progress("")


def run(build, record, progress):
    """Prints the counts; ends the program with 1 if one grew. With record, stores them instead."""
    counted = dict(count_all(build, progress))
    if record:
        RECORD.write_text(json.dumps(counted, indent=2) + "\n")
    recorded = json.loads(RECORD.read_text())
    print(f"{'':26}  {'instructions':>14}  {'recorded':>14}  {'ratio':>6}")
    grown = []
    for benchmark, count in counted.items():
        ratio = count / recorded[benchmark]
        print(f"{benchmark:26}  {count:14,}  {recorded[benchmark]:14,}  {ratio:6.3f}")
        if ratio > TOLERANCE:
            grown.append(benchmark)
    if grown:
        sys.exit(f"bench: more instructions than recorded, by over {TOLERANCE - 1:.0%}: "
                 f"{', '.join(grown)}. Where that is meant, record them: "
                 "./dev bench --quick --record")
