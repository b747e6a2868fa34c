#!/usr/bin/env python3
"""Breaks the code in the ways that mutants.txt lists, and says which the tests notice.

All mutants are in one build of a copy of the sources: where a mutant is, the program takes the
original or the replacement by the environment variable ACCESS_MUTANT. The tests must pass with none
switched on; then each mutant meets the test suites that reach it, the quickest first, until one
fails, dies or hangs. Only GoogleTest's suites take part.

The exit status is 0 if the tests notice every mutant that mutants.txt doesn't mark "survives", 1 if
not, 2 if the table, the build or a test is wrong before anything is broken.
"""

import argparse
import concurrent.futures
import json
import os
import pathlib
import resource
import sys
import tempfile

from broken_copy import broken_texts, build, make_copy
from suites import run_suite, test_suites
from table import HERE, Mistake, Sources, placed, read_table

NUMBERS = 4096  # as mutant.h has it


def progress(text):
    if sys.stderr.isatty():
        print(f"\r\033[K{text}", end="", file=sys.stderr, flush=True)


def limit_memory():
    """Of this process and what it starts: an endless mutant must not take the machine."""
    limits = {resource.RLIMIT_AS: 4 << 30, resource.RLIMIT_FSIZE: 1 << 30, resource.RLIMIT_CORE: 0}
    for kind, most in limits.items():
        hard = resource.getrlimit(kind)[1]
        soft = most if hard == resource.RLIM_INFINITY else min(most, hard)
        resource.setrlimit(kind, (soft, hard))


def in_parallel(function, entries, jobs):
    """The function's result for each entry."""
    results = []
    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        try:
            for result in pool.map(function, entries):
                results.append(result)
                progress(f"{len(results)} of {len(entries)}")
        except BaseException:
            pool.shutdown(cancel_futures=True)
            raise
        finally:
            progress("")
    return results


def run_without_mutant(suites, jobs):
    """Has every suite pass, and notes how long it takes and which mutants it reaches."""

    def run(suite):
        with tempfile.NamedTemporaryFile() as reached:
            reached.truncate(NUMBERS)
            outcome = run_suite(suite, 900, ACCESS_MUTANTS_REACHED=reached.name)
            suite.reaches = frozenset(number for number, byte in enumerate(reached.read()) if byte)
        suite.seconds = outcome.seconds
        return "" if outcome.passed else f"{suite}: {outcome.how}"

    print(f"Running {len(suites)} test suites without a mutant", file=sys.stderr, flush=True)
    failures = list(filter(None, in_parallel(run, suites, jobs)))
    if failures:
        raise Mistake("Without a mutant, these suites fail already:\n" + "\n".join(failures))


def meet(mutant, place, suites):
    """One mutant and the suites that reach it, as a row of the result."""
    row = {"number": mutant.number, "area": mutant.area, "file": str(place.path),
           "line": place.index + 1, "function": mutant.function, "original": mutant.original,
           "replacement": mutant.replacement,
           "expected": "survives" if mutant.survives else "killed",
           "result": "survives", "by": "", "how": "", "seconds": 0, "suites": 0}
    reaching = [suite for suite in suites if mutant.number in suite.reaches]
    for suite in sorted(reaching, key=lambda suite: suite.seconds):
        outcome = run_suite(suite, 20 + 4 * suite.seconds, ACCESS_MUTANT=str(mutant.number))
        row["seconds"] = round(row["seconds"] + outcome.seconds, 1)
        row["suites"] += 1
        if not outcome.passed:
            row.update(result="killed", by=str(suite), how=outcome.how)
            return row
    row["how"] = f"passes in {len(reaching)} suites" if reaching else "no test reaches it"
    return row


def text_of(rows):
    """The result for people, with the sums of each area."""
    lines = []
    for row in rows:
        place = f"{row['file']}:{row['line']}"
        surprise = "" if row["result"] == row["expected"] else f"(expected: {row['expected']})"
        said = " ".join(filter(None, (row["by"], row["how"], surprise)))
        lines.append(f"{row['number']:4}  {row['result']:8} {row['seconds']:6} s  {place:58} {said}")
    areas = {area: [row for row in rows if row["area"] == area]
             for area in dict.fromkeys(row["area"] for row in rows)}
    for area, of_area in [*areas.items(), ("all", rows)]:
        killed = sum(row["result"] == "killed" for row in of_area)
        lines.append(f"{area}: {killed} of {len(of_area)} killed")
    return "\n".join(lines) + "\n"


def arguments():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--find", action="store_true",
                        help="only see that every mutant has its line")
    parser.add_argument("--only", metavar="N,N", help="the numbers of some mutants")
    parser.add_argument("--jobs", type=int, default=min(2, os.cpu_count() or 1),
                        help="suites at once (%(default)s); more disturb those that measure time")
    parser.add_argument("--root", type=pathlib.Path, default=HERE.parents[1],
                        help="the tree to break (this one)")
    parser.add_argument("--scratch", type=pathlib.Path,
                        help="where the copy and its build are (build-mutants in the tree)")
    parser.add_argument("--out", type=pathlib.Path,
                        help="where the result goes, OUT.txt and OUT.json (mutants in the scratch)")
    options = parser.parse_args()
    options.root = options.root.resolve()
    options.scratch = (options.scratch or options.root / "build-mutants").resolve()
    options.out = options.out or options.scratch / "mutants"
    return options


def main():
    options = arguments()
    mutants = read_table()
    if options.only:
        wanted = {int(number) for number in options.only.split(",")}
        mutants = [mutant for mutant in mutants if mutant.number in wanted]
    sources = Sources(options.root)
    places = placed(mutants, sources)
    if options.find:
        print(f"{len(places)} mutants have their lines")
        return 0
    copy = options.scratch / "tree"
    make_copy(options.root, copy, broken_texts(places, sources))
    build(copy)
    limit_memory()
    suites = test_suites(copy)
    run_without_mutant(suites, options.jobs)
    print(f"Running {len(places)} mutants", file=sys.stderr, flush=True)
    rows = in_parallel(lambda pair: meet(*pair, suites), places, options.jobs)
    text = text_of(rows)
    pathlib.Path(f"{options.out}.txt").write_text(text)
    pathlib.Path(f"{options.out}.json").write_text(json.dumps(rows, indent=1) + "\n")
    print(text, end="")
    return int(any(row["result"] == "survives" and row["expected"] == "killed" for row in rows))


if __name__ == "__main__":
    try:
        sys.exit(main())
    except Mistake as mistake:
        print(mistake, file=sys.stderr)
        sys.exit(2)
