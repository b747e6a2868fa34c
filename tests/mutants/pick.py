#!/usr/bin/env python3
"""Prints mutants of today's sources for mutants.txt, picked at random: pick.py array 8 --seed 3

The same seed picks the same mutants of the same sources. None is picked where the table has one.
"""

import argparse
import random
import re
import sys

from table import HERE, Mutant, Sources, TABLE, candidates, core, function_at, read_table

OPENING = "([{"
CLOSING = ")]}"
# Before what an expression ends, or after what it starts: one with "&&" or "||", and a comparison.
JOINED_ENDS = re.compile(r"\|\||[?,;]| : | = |\breturn ")
COMPARED_ENDS = re.compile(JOINED_ENDS.pattern + "|&&|<<")
COMPARED = {"==": "!=", "!=": "==", "<": "<=", "<=": "<", ">": ">=", ">=": ">"}


def end_of_operand(line, start, ends):
    """Where the expression that goes on at start ends; None if not in this line."""
    depth = 0
    for at in range(start, len(line)):
        depth += (line[at] in OPENING) - (line[at] in CLOSING)
        if depth < 0 or depth == 0 and ends.match(line, at):
            return at
    return None


def start_of_operand(line, end, ends):
    """Where the expression before end starts; None if not in this line."""
    depth = 0
    for at in range(end - 1, -1, -1):
        depth += (line[at] in CLOSING) - (line[at] in OPENING)
        if depth < 0:
            return at + 1
        if depth == 0 and (found := ends.match(line, at)):
            return found.end()
    return None


def operands(line, operator, ends):
    """Where an operator's operands start and end, and both; nothing if not in this line."""
    first = start_of_operand(line, operator.start(), ends)
    last = end_of_operand(line, operator.end(), ends)
    if first is not None and last is not None:
        left, right = line[first:operator.start()], line[operator.end():last]
        start = first + len(left) - len(left.lstrip())
        yield start, last - len(right) + len(right.rstrip()), left.strip(), right.strip()


def compared_otherwise(line):
    for found in re.finditer(r"(?<= )(==|!=|<=|>=|<|>)(?= )", line):
        for start, end, left, right in operands(line, found, COMPARED_ENDS):
            yield start, end, f"{left} {COMPARED[found.group()]} {right}"


def joined_otherwise(line):
    for found in re.finditer(r"(?<= )(&&|\|\|)(?= )", line):
        for start, end, left, right in operands(line, found, JOINED_ENDS):
            if found.group() == "||":
                yield start, end, f"{left} && {right}"
            else:
                left, right = (f"({one})" if "&&" in one else one for one in (left, right))
                yield start, end, f"{left} || {right}"


def negated(line):
    found = re.fullmatch(r"(?:else )?(?:if|while) \((.*)\)", line)
    if found and ";" not in found.group(1) and " = " not in found.group(1):
        yield *found.span(1), f"!({found.group(1)})"


def one_dropped(line):
    term = r"(?<![\w.>])(?<![-*/%] )((?:[\w.:]|->)+(?:\(\))?)"
    for found in re.finditer(term + r" [+-] 1\b(?!\.| [*/%])", line):
        yield *found.span(), found.group(1)


def limit_moved(line):
    for found in re.finditer(r"(?<=[<>=] )(\d+)\b(?!\.)", line):
        if re.search(r" (==|!=|<=|>=|<|>) $", line[:found.start()]):
            yield *found.span(), str(int(found.group()) + 1)


def returned_otherwise(line):
    found = re.fullmatch(r"return (true|false|\d+);", line)
    if found:
        value = found.group(1)
        other = str(int(value) + 1) if value.isdigit() else "false" if value == "true" else "true"
        yield *found.span(1), other


def left_out(line):
    if re.fullmatch(r"[\w.:>\[\]-]+\(.*\);", line) and not re.match(
            r"(throw|return|delete|static_assert|fail\w*|refuse\w*|spdlog)\b", line):
        yield 0, len(line), ";"
    if re.fullmatch(r"(_\w+|[\w\[\]]+(\.|->)[\w.\[\]>-]+)(\[.*\])? [+|&]?= .*;", line):
        yield 0, len(line), ";"


LITERAL = re.compile(r""""(?:\\.|[^"\\])*"|'(?:\\.|[^'\\])+'""")
PLACEHOLDER = 0xE000  # of the first literal, a character that no source has


def changes(operator, line):
    """What an operator makes of a line, while it sees no text of the line's literals."""
    texts = []

    def hide(found):
        texts.append(found.group())
        return chr(PLACEHOLDER + len(texts) - 1) * len(found.group())

    for start, end, replacement in operator(re.sub(LITERAL, hide, line)):
        for at, text in enumerate(texts):
            replacement = replacement.replace(chr(PLACEHOLDER + at) * len(text), text)
        yield start, end, replacement


# In their turns; statements twice, as there are so many of them.
OPERATORS = [compared_otherwise, joined_otherwise, negated, one_dropped, limit_moved,
             returned_otherwise, left_out, left_out]
NEVER = re.compile(r"@|^//|^#|\b(sizeof|const(expr|eval)|static_assert|template|case|operator)\b")


def may_change(lines, index):
    """Whether a line is run rather than compiled: in a function that is not constexpr."""
    line = lines[index]
    if not line.startswith(" ") or NEVER.search(line.strip()) or not function_at(lines, index):
        return False
    head = next(before for before in reversed(lines[:index]) if before and before[0] not in " })#")
    return "(" in head and "constexpr" not in head


def is_statement(lines, index):
    """Whether a line that ends a statement also starts it."""
    before = next(line.strip() for line in reversed(lines[:index]) if line.strip())
    return before[-1] in ";{}" or before == "else" or re.match(
        r"(\} )?(else )?(if|for|while) \(.*\)$|//", before) is not None


def mutants_of(sources, area):
    """All that the operators find, a list for each operator."""
    found = {operator: [] for operator in OPERATORS}
    for path, lines in sources.lines.items():
        if path.parts[0] != area or path.suffix != ".cpp":
            continue
        for index, line in enumerate(lines):
            if not may_change(lines, index):
                continue
            text = core(line)
            function = function_at(lines, index)
            for operator in found:
                if operator is left_out and not is_statement(lines, index):
                    continue
                for start, end, replacement in changes(operator, text):
                    found[operator].append((index, Mutant(
                        0, area, path.name, function, None, False, text[:start], text[start:end],
                        text[end:], replacement)))
    return found


def occurrence(sources, mutant, index):
    """Which of the lines of this text in the function it is; None if it is the only one."""
    places = candidates(mutant, sources.with_text(mutant.line))
    if len(places) == 1:
        return None
    return [place.index for place in places].index(index) + 1


def picked(sources, area, count, taken):
    """Each operator in turn gives one, of another file if it can."""
    found = mutants_of(sources, area)
    files = {}
    turn = 0
    result = []
    while len(result) < count:
        choice = found[OPERATORS[turn % len(OPERATORS)]]
        turn += 1
        random.shuffle(choice)
        choice.sort(key=lambda one: files.get(one[1].file, 0), reverse=True)
        while choice:
            index, mutant = choice.pop()
            if (mutant.file, mutant.line) in taken:
                continue
            mutant.occurrence = occurrence(sources, mutant, index)
            taken.add((mutant.file, mutant.line))
            files[mutant.file] = files.get(mutant.file, 0) + 1
            result.append(mutant)
            break
        else:
            if not any(found.values()):
                sys.exit(f"pick.py: there are only {len(result)} in {area}")
    return result


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("area", help="the part of the product, a folder")
    parser.add_argument("count", type=int)
    parser.add_argument("--seed", type=int, default=1)
    options = parser.parse_args()
    random.seed(options.seed)
    sources = Sources(HERE.parents[1])
    table = read_table() if TABLE.exists() else []
    number = max((mutant.number for mutant in table), default=0)
    taken = {(mutant.file, mutant.line) for mutant in table}
    for mutant in picked(sources, options.area, options.count, taken):
        number += 1
        head = f"{number}  {mutant.file}  {mutant.function}"
        if mutant.occurrence:
            head += f"  occurrence {mutant.occurrence}"
        print(f"{head}\n    {mutant.before}@{mutant.original}@{mutant.after}\n"
              f" -> {mutant.replacement}\n")


if __name__ == "__main__":
    main()
