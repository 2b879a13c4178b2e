"""Shared by the end-to-end tests: homes with a library in them, the two programs, and waiting."""

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
IDENTIFIER = "net.foliovault.widgets"
OK, USAGE, UNAVAILABLE, CANNOT_CREATE, CONFIGURATION = 0, 64, 69, 73, 78
# The families, and their sizes in points.
SIZES = {"small": (170, 170), "medium": (364, 170), "large": (364, 364), "extraLarge": (752, 364)}
# The list widgets by kind, with the file of the library that each shows.
LISTS = {"ReadingListWidget": "ReadingList.plist", "FavoritesWidget": "Favorites.plist", "WorkspacesWidget": "OrderedWorkspaces.plist"}
# All widgets, in the order in which hosts list them.
KINDS = (*LISTS, "TipsWidget")
SANITIZED = bool(os.environ.get("SANITIZED"))
# What every program gets: the options of sanitizers, and a proxy that does not exist, so that tests have no other network.
COMMON = {"PATH": os.environ["PATH"], "https_proxy": "http://127.0.0.1:9",
          **{name: os.environ[name] for name in ("LSAN_OPTIONS", "ASAN_OPTIONS") if name in os.environ}}
# The start of a picture.
PNG = bytes.fromhex("89504e470d0a1a0a0000000d4948445200000001000000010806000000")


def favourites(count, **more):
    return [{"Name": f"Favourite {i}", "UUID": f"U-{i}", "Type": 3, **more} for i in range(count)]


def response(**result):
    """The line of an extension that answers its first request with this result."""
    return json.dumps({"jsonrpc": "2.0", "id": 1, "result": result})


def wait_until(condition, what, seconds=20):
    """Calls until the result is true, and returns it."""
    deadline = time.monotonic() + seconds
    while not (result := condition()):
        if time.monotonic() > deadline:
            raise AssertionError(f"waited {seconds} s for {what}")
        time.sleep(.02)
    return result


def is_running(process):
    """False for a zombie too: a killed process remains until its parent reaps it."""
    try:
        return Path(f"/proc/{process}/stat").read_text().rpartition(")")[2].split()[0] not in "ZX"
    except (FileNotFoundError, ProcessLookupError):  # The latter if it is reaped between open and read.
        return False


def children_of(process):
    """The processes that a host's main thread has started."""
    path = Path(f"/proc/{process.pid}/task/{process.pid}/children")
    return [int(child) for child in path.read_text().split()] if path.exists() else []


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


class HomeTest(unittest.TestCase):
    """A test with a user's home of its own."""

    def setUp(self):
        self.home = Path(self.enterContext(tempfile.TemporaryDirectory())) / "Ada Ä"
        self.library = self.home / "Library" / "Application Support" / "FOLIOvault"
        self.library.mkdir(parents=True)

    def write(self, root, form=plistlib.FMT_BINARY, name="Favorites.plist"):
        (self.library / name).write_bytes(plistlib.dumps(root, fmt=form))

    def script(self, body, name="script"):
        path = self.home / name
        path.write_text("#!/bin/sh\n" + body)
        path.chmod(0o755)
        return path

    def environment(self, **more):
        """The variables that a host sets, and a user database with this home."""
        container = self.home.parent / "container"
        container.mkdir(exist_ok=True)
        return {**COMMON, "HOME": str(container), "XDG_CACHE_HOME": str(container / "Caches"), **user_database(self.home.parent, self.home), **more}


def user_database(folder, home, user=os.getuid()):
    """The variables of a program to which this home is the user's; the database is written into the folder."""
    users, groups = folder / "passwd", folder / "group"
    users.write_text(f"user:x:{user}:{user}::{home}:/bin/sh\n")
    groups.write_text(f"user:x:{user}:\n")
    return {"LD_PRELOAD": "libnss_wrapper.so", "NSS_WRAPPER_PASSWD": str(users), "NSS_WRAPPER_GROUP": str(groups),
            **({"ASAN_OPTIONS": "verify_asan_link_order=0"} if SANITIZED else {})}


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

    def timeline(self, family="large", kind="FavoritesWidget"):
        return self.call("timeline", kind=kind, configuration={}, environment={"family": family})["result"]


BUS_CONFIGURATION = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
    "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
    <type>session</type> <listen>unix:tmpdir={folder}</listen> <auth>EXTERNAL</auth> <servicedir>{services}</servicedir>
    <policy context="default"> <allow send_destination="*" eavesdrop="true"/> <allow eavesdrop="true"/> <allow own="*"/> </policy>
</busconfig>
"""


class SessionBus:
    """A session bus that starts only the services described in a folder, with these variables."""

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


class HostTest(HomeTest):
    """A test of the host's commands, on a session bus of its own. Without `extension` they find those of the manifests."""
    program, extension = HOST, EXTENSION

    def setUp(self):
        super().setUp()
        self.bus = SessionBus()
        self.addCleanup(self.bus.end)
        self.data, self.configuration, runtime = self.home / "data", self.home / "config", self.home / "run"
        for folder in (self.data, self.configuration, runtime):
            folder.mkdir()
        self.containers = self.home / ".local" / "share" / "widgethost" / "containers"
        self.arrangement = self.configuration / "widgethost" / "arrangement.json"
        self.variables = {**COMMON, "HOME": str(self.home), "XDG_DATA_HOME": str(self.data), "XDG_DATA_DIRS": "/nowhere", "LANG": "C",
                          "XDG_CONFIG_HOME": str(self.configuration), "XDG_RUNTIME_DIR": str(runtime), **self.bus.variables}

    def command(self, *arguments, extension=None):
        extension = extension or self.extension
        return [str(each) for each in (self.program, *(("--extension", extension) if extension else ()), "--home", self.home, *arguments)]

    def run_host(self, *arguments, extension=None, variables=(), **more):
        """A command, run to its end."""
        return subprocess.run(self.command(*arguments, extension=extension), capture_output=True, timeout=100,
                              env={**self.variables, **dict(variables)}, **more)

    def succeed(self, *arguments, **more):
        done = self.run_host(*arguments, **more)
        self.assertEqual((done.returncode, done.stderr), (OK, b""), arguments)
        return done.stdout.decode()

    def refused(self, code, *arguments, **more):
        """The one line that says why."""
        done = self.run_host(*arguments, **more)
        self.assertEqual((done.returncode, done.stdout), (code, b""), done.stderr)
        line = done.stderr.decode()
        self.assertRegex(line, r"\Awidgethost: [^\n]+\n\Z")
        return line

    def write_manifest(self, name, executable=None, **more):
        """Installs an extension for this user; a broken manifest without an executable."""
        folder = self.data / "widgethost" / "extensions"
        folder.mkdir(parents=True, exist_ok=True)
        manifest = {"identifier": name, "executable": str(executable), **more}
        (folder / f"{name}.json").write_text(json.dumps(manifest) if executable else "{broken")
