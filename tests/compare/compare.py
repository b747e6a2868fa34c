#!/usr/bin/env python3
"""compare.py REFERENCE SERVER everything|one_of_each

Asks two CIM servers, given as ADDRESS:PORT, the same questions about equal arrays and prints every
difference: what only REFERENCE says with a -, what only SERVER says with a +. The last lines count
them. Exit status: 0 only known differences, 1 others, 2 wrong usage or no server.
"""

import collections
import difflib
import sys

import known
import normal
import scenario
import wire


def difference(reference, other):
    """The lines that differ, with one line around; "" when none does."""
    diff = difflib.unified_diff(normal.lines(reference), normal.lines(other), n=1, lineterm="")
    return "\n".join(list(diff)[2:])


def compare(addresses, steps):
    counts = {"requests": 0, "errors": collections.Counter(), "different": 0,
              "known": collections.Counter()}
    answer = None
    contexts = [None, None]  # of each server's last pulled enumeration
    while True:
        try:
            name, request = steps.send(answer)
        except StopIteration:
            return counts
        if name in known.NOT_ASKED:
            print(f"not asked: {name}: {known.NOT_ASKED[name]}")
            answer = None
            continue
        answer, other = (
            wire.exchange(address, request(context) if callable(request) else request)
            for address, context in zip(addresses, contexts))
        contexts = [normal.context(given) or was
                    for given, was in zip((answer, other), contexts)]
        counts["requests"] += 1
        counts["errors"].update(normal.errors(answer))
        text = difference(answer, other)
        why = known.reason(name, text) if text else None
        if why:
            counts["known"][why] += 1
        elif text:
            counts["different"] += 1
            print(f"== {name}\n{text}", flush=True)


def main(arguments):
    try:
        *servers, asked = arguments
        steps = {"everything": scenario.everything, "one_of_each": scenario.one_of_each}[asked]()
        addresses = [(host, int(port)) for host, port in (s.rsplit(":", 1) for s in servers)]
        if len(addresses) != 2:
            raise ValueError
    except (KeyError, ValueError):
        print(__doc__.strip(), file=sys.stderr)
        return 2
    try:
        counts = compare(addresses, steps)
    except OSError as error:
        print(f"compare.py: no server answers at one of {' '.join(servers)}: {error}",
              file=sys.stderr)
        return 2
    if asked == "one_of_each":
        for text, count in counts["errors"].items():
            print(f"error, {count} times: {text}")
    for why, count in counts["known"].items():
        print(f"known difference, {count} times: {why}")
    print(f"{counts['requests']} requests, {counts['errors'].total()} of them answered with errors; "
          f"{counts['different']} differences, {counts['known'].total()} known ones")
    return 1 if counts["different"] else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
