"""The test suites of a build, and what becomes of them when they are run."""

import dataclasses
import json
import os
import pathlib
import re
import signal
import subprocess
import tempfile
import time

from table import Mistake


@dataclasses.dataclass
class Suite:
    program: str
    name: str
    directory: str
    seconds: float = 0                # without a mutant
    reaches: frozenset = frozenset()  # the numbers of the mutants whose lines it runs

    def __str__(self):
        return f"{os.path.basename(self.program)} {self.name}"


def test_programs(tree):
    """Where ctest would run each GoogleTest program."""
    listed = subprocess.run(["ctest", "--test-dir", "build", "--show-only=json-v1"], cwd=tree,
                            check=True, stdout=subprocess.PIPE).stdout
    directories = {}
    for test in json.loads(listed)["tests"]:
        for entry in test.get("properties", []):
            if entry["name"] == "WORKING_DIRECTORY" and "command" in test:
                directories[test["command"][0]] = entry["value"]
    return {program: directory for program, directory in directories.items()
            if b"--gtest_list_tests" in pathlib.Path(program).read_bytes()}


def test_suites(tree):
    suites = []
    for program, directory in test_programs(tree).items():
        listed = subprocess.run([program, "--gtest_list_tests"], cwd=directory, check=True,
                                text=True, stdout=subprocess.PIPE).stdout
        suites += [Suite(program, name, directory)
                   for name in re.findall(r"^([\w/]+)\.(?=$|\s+#)", listed, re.M)]
    if not suites:
        raise Mistake("ctest knows no program of GoogleTest")
    return suites


@dataclasses.dataclass
class Outcome:
    passed: bool
    how: str  # the first test that failed, or how the program ended
    seconds: float


def run_suite(suite, limit, **variables):
    """Runs a suite until its first failure, in a process group and a directory of its own."""
    with tempfile.TemporaryDirectory(prefix="mutant-", ignore_cleanup_errors=True) as directory, \
            tempfile.TemporaryFile("w+", errors="replace") as output:
        started = time.monotonic()
        process = subprocess.Popen(
            [suite.program, f"--gtest_filter={suite.name}.*", "--gtest_fail_fast", "--gtest_brief"],
            cwd=suite.directory, env=dict(os.environ, TMPDIR=directory, **variables),
            stdin=subprocess.DEVNULL, stdout=output, stderr=subprocess.STDOUT,
            start_new_session=True)
        try:
            status = process.wait(limit)
        except subprocess.TimeoutExpired:
            status = None
        finally:
            end_group(process)
        seconds = time.monotonic() - started
        output.seek(0)
        return Outcome(status == 0, how_it_ended(status, output.read()), seconds)


def end_group(process):
    """Ends a program and what it has left running."""
    try:
        os.killpg(process.pid, signal.SIGKILL)
    except ProcessLookupError:
        pass
    process.wait()


def how_it_ended(status, output):
    failed = re.search(r"^\[  FAILED  \] [^.\n]*\.(\S+?)(?:, where .*)? \(\d+ ms\)", output, re.M)
    if status is None:
        return "hangs"
    if status < 0:
        return f"ends by signal {-status}"
    return failed.group(1) if status and failed else f"ends with status {status}"
