"""An extension that answers `describe` with what became of expressions of Python.

It reads them from the file "expressions" in its container, one a line. Its answer has "findings", a text for each: "yes", the name of the
error, or a number. Python runs this file at its start, so that the extension is a program and no script.
"""

import ctypes
import errno
import fcntl
import json
import mmap
import os
import resource
import sys
import threading
from pathlib import Path
from socket import AF_INET, AF_UNIX, SOCK_DGRAM, SOCK_STREAM, getaddrinfo, socket

CLONE_NEWUSER, GET_NO_NEW_PRIVILEGES, MAP_NORESERVE = 0x10000000, 39, 0x4000
PRIVATE, SHARED = mmap.MAP_PRIVATE, mmap.MAP_SHARED
LIBRARY = ctypes.CDLL(None)


def count(make, limit):
    """Returns what could be made, up to the limit."""
    made = []
    try:
        for _ in range(limit):
            made.append(make())
    except (OSError, RuntimeError):
        pass
    return made


def fork(limit):
    """Returns how many children live at once."""
    children = count(lambda: os.fork() or LIBRARY.pause(), limit)
    for child in children:
        os.kill(child, 9)
        os.waitpid(child, 0)
    return len(children)


def is_open(descriptor):
    try:
        return fcntl.fcntl(descriptor, fcntl.F_GETFD) >= 0
    except OSError:
        return False


def allocate(mebibytes, kind):
    mmap.mmap(-1, mebibytes << 20, kind | mmap.MAP_ANONYMOUS | MAP_NORESERVE).close()


def run(path):
    os.waitpid(os.posix_spawn(path, [path], os.environ), 0)


def write_and_run(path):
    Path(path).write_text("#!/bin/true\n")
    os.chmod(path, 0o700)
    run(path)


def evaluate(expression):
    try:
        value = eval(expression)
    except Exception as error:
        return errno.errorcode.get(getattr(error, "errno", None), repr(error))
    return str(int(value)) if isinstance(value, int) else "yes"


# Read whole, so that no descriptor is the file's meanwhile.
expressions = Path(os.environ["HOME"], "expressions").read_text().splitlines()
sys.stdin.readline()
findings = [evaluate(each) for each in expressions]
print(json.dumps({"jsonrpc": "2.0", "id": 1, "result": {"identifier": "probe", "widgets": [], "findings": findings}}), flush=True)
os._exit(0)
