"""Bytes to a server and back."""

import re
import socket

PATIENCE = 5  # seconds for an answer to start


class Answer:
    """What a server sent: status line, headers (trailers among them), body without its chunks."""

    def __init__(self, data):
        head, _, rest = data.partition(b"\r\n\r\n")
        lines = head.decode("latin-1").split("\r\n")
        self.status = lines[0]
        self.headers = dict(self._pair(line) for line in lines[1:] if ":" in line)
        if self.headers.get("transfer-encoding") == "chunked":
            rest = self._unchunked(rest)
        elif "content-length" in self.headers:  # what follows is another answer
            rest = rest[:int(self.headers["content-length"])]
        self.body = rest

    @staticmethod
    def _pair(line):
        name, _, value = line.partition(":")
        return name.lower(), value.strip()

    def _unchunked(self, rest):
        body = b""
        while True:
            size, _, rest = rest.partition(b"\r\n")
            length = int(size.split(b";")[0] or b"0", 16)
            if length == 0:
                break
            body += rest[:length]
            rest = rest[length + 2:]
        for line in rest.decode("latin-1").split("\r\n"):
            if ":" in line:
                name, value = self._pair(line)
                self.headers[name] = value
        return body


def _is_complete(data):
    head, end, body = data.partition(b"\r\n\r\n")
    if not end:
        return False
    length = re.search(rb"(?im)^content-length: *(\d+)", head)
    if length:
        return len(body) >= int(length.group(1))
    if b"transfer-encoding: chunked" in head.lower():
        return (b"\r\n0\r\n" in body or body.startswith(b"0\r\n")) and body.endswith(b"\r\n\r\n")
    # An error of HTTP: OpenPegasus gives it no body and no length, and keeps the connection.
    return b" 200 " not in head.split(b"\r\n")[0]


def exchange(address, request):
    """Sends the request on a connection of its own. Raises OSError when no server listens."""
    data = b""
    with socket.create_connection(address, timeout=PATIENCE) as connection:
        try:
            connection.sendall(request)
        except OSError:
            pass  # it may answer before it has read all
        while not _is_complete(data):
            try:
                piece = connection.recv(1 << 20)
            except OSError:
                break
            if not piece:
                break
            data += piece
    return Answer(data)
