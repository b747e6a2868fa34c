"""An answer as lines of text that are equal when the answers mean the same."""

import re
import socket
import xml.etree.ElementTree as ET

# Headers that say something about the answer rather than about how it travels.
HEADERS = (
    "content-type",
    "cimoperation",
    "cimerror",
    "cimstatuscode",
    "cimstatuscodedescription",
    "www-authenticate",
)
# No order is specified among the objects of an answer, nor among the members of a class.
UNORDERED = {"IRETURNVALUE", "CLASS", "METHOD"}
HOSTS = {socket.gethostname(), socket.getfqdn()}


def _text(element):
    text = element.text or ""
    if element.tag == "HOST" and text in HOSTS:
        return "THIS-HOST"
    return text if element.tag in ("VALUE", "KEYVALUE") else text.strip()


def _context(root):
    return root.find(".//PARAMVALUE[@NAME='EnumerationContext']/VALUE")


def _lines(element, depth):
    attributes = "".join(f' {name}="{text}"' for name, text in sorted(element.attrib.items()))
    yield f"{'  ' * depth}{element.tag}{attributes} {_text(element)!r}".replace(" ''", "")
    children = [list(_lines(child, depth + 1)) for child in element]
    if element.tag in UNORDERED:
        children.sort()
    for child in children:
        yield from child


def body(answer):
    """The answer's XML as an element, or None when it has none."""
    try:
        return ET.fromstring(answer.body)
    except ET.ParseError:
        return None


def lines(answer):
    result = [answer.status or "(nothing)"]
    result += [f"{name}: {answer.headers[name]}" for name in HEADERS if name in answer.headers]
    root = body(answer)
    if root is None:
        return result + ([repr(answer.body)] if answer.body else [])
    if _context(root) is not None:
        _context(root).text = "THIS-CONTEXT"
    result += _lines(root, 0)
    times = re.compile(r"\b\d{14}\.\d{6}[+-]\d{3}\b")
    return [times.sub("TIME", line) for line in result]


def context(answer):
    """That of the pulled enumeration, or None."""
    root = body(answer)
    found = None if root is None else _context(root)
    return None if found is None else found.text


def errors(answer):
    """What the answer says went wrong: at most one text."""
    root = body(answer)
    of_body = [] if root is None else [error.get("DESCRIPTION") for error in root.iter("ERROR")]
    if "cimstatuscodedescription" in answer.headers:
        return [answer.headers["cimstatuscodedescription"]]
    return of_body if answer.status.startswith("HTTP/1.1 200") else [answer.status]
