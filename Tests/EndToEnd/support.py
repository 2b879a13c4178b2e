"""What the end-to-end tests share: homes with a library in them, and the two programs."""

import json
import os
import plistlib
import subprocess
import tempfile
import time
import unittest
from pathlib import Path

PROGRAMS = Path(os.environ["PROGRAMS"])
EXTENSION = PROGRAMS / "foliovault-widgets"
HOST = PROGRAMS / "widgethost"
PROJECT = Path(__file__).resolve().parent.parent.parent
OK, USAGE, UNAVAILABLE, CANNOT_CREATE, CONFIGURATION = 0, 64, 69, 73, 78
# The families, and how large each is in points.
SIZES = {"small": (170, 170), "medium": (364, 170), "large": (364, 364), "extraLarge": (752, 364)}
FAMILIES = tuple(SIZES)
# The list widgets by kind, with the file of the library that each shows.
LISTS = {"ReadingListWidget": "ReadingList.plist", "FavoritesWidget": "Favorites.plist", "WorkspacesWidget": "OrderedWorkspaces.plist"}
# All widgets, in the order in which hosts list them.
KINDS = (*LISTS, "TipsWidget")
# What a sanitized program is told.
SANITIZING = {name: os.environ[name] for name in ("LSAN_OPTIONS", "ASAN_OPTIONS") if name in os.environ}
# A proxy that nobody runs: tests do not leave this machine.
NO_WEB = {"https_proxy": "http://127.0.0.1:9"}
# What begins like a picture.
PNG = bytes.fromhex("89504e470d0a1a0a0000000d4948445200000001000000010806000000")


def favourites(count, **more):
    return [{"Name": f"Favourite {i}", "UUID": f"U-{i}", "Type": 3, **more} for i in range(count)]


class HomeTest(unittest.TestCase):
    """A test with a user's home of its own."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.home = Path(folder.name) / "Ada Ä"
        self.library = self.home / "Library" / "Application Support" / "FOLIOvault"
        self.library.mkdir(parents=True)
        self.file = self.library / "Favorites.plist"

    def write(self, root, form=plistlib.FMT_BINARY, name="Favorites.plist"):
        (self.library / name).write_bytes(plistlib.dumps(root, fmt=form))

    def environment(self, **more):
        """The variables that a host sets, and a user database that knows this home."""
        users, groups = self.home.parent / "passwd", self.home.parent / "group"
        users.write_text(f"user:x:{os.getuid()}:{os.getgid()}::{self.home}:/bin/sh\n")
        groups.write_text(f"user:x:{os.getgid()}:\n")
        container = self.home.parent / "container"
        container.mkdir(exist_ok=True)
        variables = {
            "PATH": os.environ["PATH"], "HOME": str(container), "XDG_CACHE_HOME": str(container / "Caches"),
            "LD_PRELOAD": "libnss_wrapper.so", "NSS_WRAPPER_PASSWD": str(users), "NSS_WRAPPER_GROUP": str(groups), **NO_WEB, **more}
        if os.environ.get("SANITIZED"):
            variables["ASAN_OPTIONS"] = "verify_asan_link_order=0"
        return variables


class Extension:
    """The extension's process, spoken to line by line."""

    def __init__(self, environment):
        self.process = subprocess.Popen([EXTENSION], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                        stderr=subprocess.PIPE, env=environment)
        self.count = 0

    def __enter__(self):
        return self

    def __exit__(self, *_):
        if self.process.poll() is None:
            self.process.kill()
        self.process.__exit__(None, None, None)

    def send(self, method, **params):
        self.count += 1
        request = {"jsonrpc": "2.0", "id": self.count, "method": method, "params": params}
        self.process.stdin.write(json.dumps(request).encode() + b"\n")
        self.process.stdin.flush()
        return self.count

    def receive(self):
        return json.loads(self.process.stdout.readline())

    def call(self, method, **params):
        number = self.send(method, **params)
        answer = self.receive()
        assert answer["id"] == number, answer
        return answer

    def timeline(self, family="large", kind="FavoritesWidget", mode="fullColor", **configuration):
        return self.call("timeline", kind=kind, configuration=configuration,
                         environment={"family": family, "renderingMode": mode})["result"]


BUS_CONFIGURATION = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
    "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
    <type>session</type> <listen>unix:tmpdir={folder}</listen> <auth>EXTERNAL</auth> <servicedir>{services}</servicedir>
    <policy context="default"> <allow send_destination="*" eavesdrop="true"/> <allow eavesdrop="true"/> <allow own="*"/> </policy>
</busconfig>
"""


class SessionBus:
    """A session bus of its own. It starts the services described in a folder, if one is given, with these variables; none of the
    machine's."""

    def __init__(self, services="/nowhere", variables=None):
        self.folder = tempfile.TemporaryDirectory()
        configuration = Path(self.folder.name) / "bus.conf"
        configuration.write_text(BUS_CONFIGURATION.format(folder=self.folder.name, services=services))
        self.process = subprocess.Popen(["dbus-daemon", "--config-file", configuration, "--nofork", "--print-address=1"],
                                        stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, env=variables)
        self.variables = {"DBUS_SESSION_BUS_ADDRESS": self.process.stdout.readline().decode().strip()}

    def end(self):
        """May be called again."""
        self.process.kill()
        self.process.__exit__(None, None, None)
        self.folder.cleanup()


def wait_until(is_so, what, seconds=20):
    """Asks until the answer is true, and answers with it."""
    deadline = time.monotonic() + seconds
    while not (answer := is_so()):
        if time.monotonic() > deadline:
            raise AssertionError(f"waited {seconds} s for {what}")
        time.sleep(.02)
    return answer


def is_running(process):
    """False for a zombie too: a killed process remains until its parent reaps it."""
    try:
        return Path(f"/proc/{process}/stat").read_text().rpartition(")")[2].split()[0] not in "ZX"
    except (FileNotFoundError, ProcessLookupError):  # The latter if it is reaped between open and read.
        return False


def nodes(node):
    """A view's nodes, itself first."""
    yield node
    for key in ("child", "fallback"):
        if key in node:
            yield from nodes(node[key])
    for child in node.get("children", ()):
        yield from nodes(child)


def texts(entry):
    return [node["text"] for node in nodes(entry["content"]["view"]) if node["type"] == "text"]


def host(*arguments, **more):
    """Runs widgethost to its end."""
    return subprocess.run([HOST, *map(str, arguments)], capture_output=True, timeout=100, **more)


class HostTest(HomeTest):
    more_variables = {}

    def host(self, *arguments, extension=EXTENSION, **more):
        variables = {**os.environ, **NO_WEB, "XDG_DATA_HOME": str(self.home / "data"), "XDG_CONFIG_HOME": str(self.home / "config"),
                     "HOME": str(self.home), "LANG": "C", **self.more_variables}
        return host("--extension", extension, "--home", self.home, *arguments, env=variables, **more)

    def succeed(self, *arguments, **more):
        done = self.host(*arguments, **more)
        self.assertEqual((done.returncode, done.stderr), (OK, b""))
        return done.stdout

    def refused(self, code, *arguments, **more):
        """The one line that the failure says."""
        done = self.host(*arguments, **more)
        self.assertEqual(done.returncode, code, done.stderr)
        self.assertEqual(done.stdout, b"")
        line = done.stderr.decode()
        self.assertRegex(line, r"\Awidgethost: [^\n]+\n\Z")
        return line
