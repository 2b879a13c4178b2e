"""An extension that tries what it is told to, and answers `describe` with how that went.

It reads its orders from the file "orders" in its container, one a line: a word and what it is about. Its answer has "findings", a text
for each order: "yes", the name of the error, or a number. Python runs it at its start, so that the extension is a program and no script.
"""

import ctypes
import errno
import fcntl
import json
import mmap
import os
import resource
import socket
import sys
import threading
from pathlib import Path

CLONE_NEWUSER, GET_NO_NEW_PRIVILEGES, MAP_NORESERVE = 0x10000000, 39, 0x4000
LIBRARY = ctypes.CDLL(None, use_errno=True)


def use(family, kind, action):
    with socket.socket(family, kind) as made:
        action(made)


def fork(count):
    """How many of so many children live at once."""
    children = []
    try:
        for _ in range(int(count)):
            child = os.fork()
            if child == 0:
                LIBRARY.pause()
            children.append(child)
    except BlockingIOError:
        pass
    for child in children:
        os.kill(child, 9)
        os.waitpid(child, 0)
    return len(children)


def start_threads(count):
    """How many of so many run at once."""
    end, started = threading.Event(), []
    try:
        for _ in range(int(count)):
            thread = threading.Thread(target=end.wait)
            thread.start()
            started.append(thread)
    except RuntimeError:
        pass
    end.set()
    for thread in started:
        thread.join()
    return len(started)


def allocate(mebibytes, kind):
    mmap.mmap(-1, int(mebibytes) << 20, kind | mmap.MAP_ANONYMOUS | MAP_NORESERVE).close()


def descriptors(count):
    """How many of so many it can have, those that it was started with among them."""
    last = 2
    try:
        while last + 1 < int(count):
            last = os.dup(0)
    except OSError:
        pass
    os.closerange(3, last + 1)
    return last + 1


def is_open(number):
    try:
        return fcntl.fcntl(number, fcntl.F_GETFD) >= 0
    except OSError:
        return False


def unshare(_):
    if LIBRARY.unshare(CLONE_NEWUSER) != 0:
        raise OSError(ctypes.get_errno(), "unshare")


def run(path):
    os.waitpid(os.posix_spawn(path, [path], os.environ), 0)


def drop_and_run(path):
    """A program that it has written."""
    Path(path).write_text("#!/bin/true\n")
    os.chmod(path, 0o700)
    run(path)


def local(port):
    return "127.0.0.1", int(port)


TCP, UDP = (socket.AF_INET, socket.SOCK_STREAM), (socket.AF_INET, socket.SOCK_DGRAM)
ORDERS = {
    "read": lambda path: os.close(os.open(path, os.O_RDONLY)), "write": lambda path: os.close(os.open(path, os.O_WRONLY | os.O_CREAT)),
    "truncate": lambda path: os.truncate(path, 0), "remove": os.unlink, "rename": lambda path: os.rename(path, path + "2"),
    "makeFolder": os.mkdir, "makePipe": os.mkfifo, "list": lambda path: os.scandir(path).close(), "run": run, "dropAndRun": drop_and_run,
    "connect": lambda port: use(*TCP, lambda made: made.connect(local(port))), "send": lambda port: use(*UDP, lambda made: made.sendto(b"x", local(port))),
    "resolve": lambda name: socket.getaddrinfo(name, 80) and None, "bind": lambda port: use(*TCP, lambda made: made.bind(local(port))),
    # Without an address of its own the system chooses one.
    "listen": lambda _: use(*TCP, lambda made: made.listen(1)), "stream": lambda path: use(socket.AF_UNIX, socket.SOCK_STREAM, lambda made: made.connect(path)),
    "datagram": lambda path: use(socket.AF_UNIX, socket.SOCK_DGRAM, lambda made: made.connect(path)), "fork": fork, "threads": start_threads,
    "allocate": lambda size: allocate(size, mmap.MAP_PRIVATE), "share": lambda size: allocate(size, mmap.MAP_SHARED), "descriptors": descriptors,
    "openFiles": lambda _: sum(map(is_open, range(1024))), "signal": lambda process: os.kill(int(process), 0), "newNamespace": unshare,
    "ownSession": lambda _: int(os.getsid(0) == os.getpid()), "noNewPrivileges": lambda _: LIBRARY.prctl(GET_NO_NEW_PRIVILEGES, 0, 0, 0, 0),
    "coreSize": lambda _: resource.getrlimit(resource.RLIMIT_CORE)[0], "user": lambda _: os.getuid(),
}


def carry_out(line):
    word, _, about = line.partition(" ")
    try:
        found = ORDERS[word](about)
        return "yes" if found is None else str(found)
    except OSError as error:
        return errno.errorcode.get(error.errno, str(error))


# Read whole, so that no descriptor is the file's while the orders are carried out.
orders = Path(os.environ["HOME"], "orders").read_text().splitlines()
sys.stdin.readline()
print(json.dumps({"jsonrpc": "2.0", "id": 1, "result": {"identifier": "probe", "widgets": [], "findings": [carry_out(each) for each in orders]}}), flush=True)
os._exit(0)
