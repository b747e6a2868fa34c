#!/usr/bin/env python3
"""pairs.py DIRECTORY: writes each request of tests/wire/pairs to a file of its own.

tests/wire/pairs/README.md describes what is read here.
"""

import json
import pathlib
import sys

PAIRS = pathlib.Path(__file__).parent.parent / "wire" / "pairs"


def _bytes(text):
    return text.replace("'", '"').encode("latin-1")


def _changed(request, changes):
    for old, new in changes.items():
        if _bytes(old) not in request:
            raise ValueError(f"there is no {old!r} in its template")
        request = request.replace(_bytes(old), _bytes(new))
    return request


def _without(request, texts):
    for text in texts:
        at = request.index(_bytes(text))
        end = request.index(b"\n", at) + 1
        request = request[:request.rindex(b"\n", 0, at) + 1] + request[end:]
    return request


def _with_headers(request, lines):
    return request.replace(b"\n\n", b"\n" + _bytes("\n".join(lines)) + b"\n\n", 1)


def _with_body(request, body):
    return request[:request.index(b"\n\n") + 2] + _bytes(body)


def _end_of_parameters(request):
    return request.rindex(b"</", 0, request.rindex(b"METHODCALL>"))


def _with_parameters(request, lines):
    start = request.index(b"\n", request.index(b"<LOCAL")) + 1
    return _with_more(request[:start] + request[_end_of_parameters(request):], lines)


def _with_more(request, lines):
    end = _end_of_parameters(request)
    return request[:end] + b"".join(_bytes(line) + b"\n" for line in lines) + request[end:]


def _repeated(request, counts):
    for text, count in counts.items():
        request = _changed(request, {text: "".join(text.replace("#", str(i)) for i in range(count))})
    return request


EDITS = {
    "request": lambda _, text: _bytes(text),
    "change": _changed,
    "without": _without,
    "headers": _with_headers,
    "body": _with_body,
    "parameters": _with_parameters,
    "more parameters": _with_more,
    "repeat": _repeated,
}


def requests():
    """All of them, by name."""
    found = {file.stem: file.read_bytes() for file in PAIRS.glob("*.request")}
    templates = {"": b"", **found}
    for file in PAIRS.glob("*.json"):
        for template, rows in json.loads(file.read_text()).items():
            for row in rows:
                request = templates[template]
                for key, value in row.items():
                    request = EDITS[key](request, value) if key in EDITS else request
                found[row["name"]] = request
    return dict(sorted(found.items()))


if __name__ == "__main__":
    directory = pathlib.Path(sys.argv[1])
    directory.mkdir(parents=True, exist_ok=True)
    for name, request in requests().items():
        (directory / name).write_bytes(request)
