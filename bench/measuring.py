"""Runs benchmark programs and servers."""

import json
import pathlib
import re
import subprocess
import sys
import tempfile

BUILD = pathlib.Path("build-bench")


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


def resident(pid, what="VmRSS"):
    """Bytes of memory of a process."""
    status = pathlib.Path(f"/proc/{pid}/status").read_text()
    return int(re.search(rf"^{what}:\s+(\d+) kB", status, re.M).group(1)) * 1024


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
        return resident(self.process.pid, what)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.terminate()
        self.process.wait()
        self.drain.wait()
