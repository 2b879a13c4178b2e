"""What an extension's process may do: a probe tries it with confinement and without, and the real extension works within it."""

import ctypes
import json
import os
import shutil
import socket
import sys
import tempfile
import unittest
from pathlib import Path

from https_server import Authority, HttpsServer, body
from support import EXTENSION, HOST, NO_WEB, OK, HostTest, host, is_running, texts, wait_until

PROBE = Path(__file__).with_name("confinement_probe.py")
SANITIZED = bool(os.environ.get("SANITIZED"))
IS_ROOT = os.getuid() == 0
# Any number that is nobody's.
SOMEBODY = 61_234


def landlock_version():
    create_ruleset, query_version = 444, 1
    return max(0, ctypes.CDLL(None).syscall(create_ruleset, None, 0, query_version))


LANDLOCK = landlock_version()
HIDDEN = "the programs lie where nobody else may look"
IS_HIDDEN = any(not folder.stat().st_mode & 0o001 for folder in HOST.parents)
# A machine without the one has no names of its own either.
HOSTS = Path("/etc/hosts")
needs_landlock = unittest.skipIf(LANDLOCK == 0, "this kernel has no Landlock, which alone guards files")


def can_have_user_namespace(user):
    process = os.fork()
    if process == 0:
        if user:
            os.setuid(user)
        os._exit(0 if ctypes.CDLL(None).unshare(0x10000000) == 0 else 1)
    return os.waitpid(process, 0)[1] == 0


class Anybody(HostTest):
    """The probe as the user who runs the tests."""

    user = None

    def setUp(self):
        super().setUp()
        self.container = self.home / ".local" / "share" / "widgethost" / "containers" / "probe"
        self.container.mkdir(parents=True)
        (self.home / ".ssh").mkdir()
        (self.home / ".ssh" / "id_ed25519").write_text("secret")
        self.write([])
        self.inherited = self.enterContext(tempfile.TemporaryFile())
        self.probe = self.home / "probe"
        shutil.copy(sys.executable, self.probe)
        modules = self.container / ".local" / "lib" / f"python3.{sys.version_info.minor}" / "site-packages"
        modules.mkdir(parents=True)
        shutil.copy(PROBE, modules / "usercustomize.py")
        self.manifest = {"identifier": "probe", "executable": str(self.probe), "reads": ["Library/Application Support/FOLIOvault"]}

    def ask(self, *orders, confined=True, **manifest):
        """What became of each order."""
        (self.home / "probe.json").write_text(json.dumps({**self.manifest, **manifest}))
        (self.container / "orders").write_text("".join(f"{order}\n" for order in orders))
        more = {}
        if self.user:
            for path in (self.home.parent, *self.home.parent.rglob("*")):
                os.chown(path, self.user, self.user, follow_symlinks=False)
            more = {"user": self.user, "group": self.user, "extra_groups": []}
        flags = () if confined else ("--unconfined",)
        variables = {"PATH": os.environ["PATH"], **NO_WEB}
        # A descriptor that the host has inherited is not passed on.
        done = host("--extension", self.home / "probe.json", "--home", self.home, *flags, "describe", "--json", env=variables,
                    pass_fds=[self.inherited.fileno()], **more)
        self.assertEqual((done.returncode, done.stderr), (OK, b""))
        return json.loads(done.stdout)["findings"]

    def check(self, rows, **manifest):
        """Rows of an order, what confinement makes of it, and what becomes of it without."""
        orders = [row[0] for row in rows]
        for confined in (True, False):
            for row, found in zip(rows, self.ask(*orders, confined=confined, **manifest), strict=True):
                with self.subTest(row[0], confined=confined):
                    self.assertEqual(found, row[1] if confined else row[2])

    @needs_landlock
    def test_files(self):
        library, elsewhere, container, secret = self.library, self.home.parent, self.container, self.home / ".ssh" / "id_ed25519"
        (elsewhere / "note").write_text("x")
        (library / "link").symlink_to(secret)
        no_program = "EAGAIN" if self.is_without_processes() else "EACCES"
        refused = [f"read {secret}", f"read {library}/link", f"list {self.home}/.ssh", f"list {self.home}", f"read {self.home}/probe.json", "list /etc",
                   "list /usr/share/fonts", "list /etc/ssl/certs", f"write {library}/Favorites.plist", f"write {library}/new",
                   f"makeFolder {library}/folder", f"write {elsewhere}/note", f"write {elsewhere}/new", f"rename {elsewhere}/note",
                   f"remove {library}/Favorites.plist", f"makePipe {container}/pipe", *([f"truncate {secret}"] if LANDLOCK >= 3 else [])]
        allowed = [f"read {library}/Favorites.plist", f"list {library}", "read /etc/passwd", "list /usr/share/zoneinfo", "write /dev/null",
                   f"write {container}/file", f"rename {container}/file", f"truncate {container}/file2", f"remove {container}/file2"]
        self.check([*((order, "yes", "yes") for order in allowed), ("read /proc/1/cmdline", "yes" if SANITIZED else "EACCES", "yes"),
                    *((order, "EACCES", "yes") for order in refused), (f"run {shutil.which('true')}", no_program, "yes"),
                    (f"dropAndRun {container}/program", no_program, "yes")])
        # A folder that is not there is no fault.
        self.check([(f"read {self.home}/Absent/file", "ENOENT", "ENOENT")], reads=["Absent"])

    @needs_landlock
    def test_what_connecting_takes(self):
        hosts = [("read /etc/hosts", "yes", "yes")] if HOSTS.exists() else []
        self.check([("list /etc/ssl/certs", "yes", "yes"), *hosts, ("list /etc/ssl", "EACCES", "yes")], network=True)

    def test_a_script_may_use_commands(self):
        """As many as processes are allowed."""
        answer = '{"jsonrpc": "2.0", "id": 1, "result": {"identifier": "probe", "widgets": [], "findings": ["yes"]}}'
        (self.container / "answer").write_text(answer + "\n")
        script = self.home / "script"
        command = 'exec cat "$HOME/answer"' if self.is_without_processes() else 'cat "$HOME/answer" | sed p | head -n 1'
        script.write_text(f"#!/usr/bin/env sh\n{command}\n")
        script.chmod(0o755)
        self.assertEqual(self.ask(executable=str(script)), ["yes"])

    def test_network(self):
        with socket.create_server(("127.0.0.1", 0)) as server:
            port = server.getsockname()[1]
            rows = [(f"connect {port}", "EACCES", "yes"), ("send 9", "EACCES", "yes"), ("bind 0", "EACCES", "yes"), ("listen", "EACCES", "yes")]
            self.check(rows)
            allowed = [(f"connect {port}", "yes", "yes"), ("send 9", "yes", "yes"), *rows[2:]]
            if not SANITIZED and HOSTS.exists():  # the wrapper would look names up in a way that sanitizers do not bear
                allowed.append(("resolve localhost", "yes", "yes"))
            self.check(allowed, network=True)

    def test_local_sockets(self):
        """The system's log takes datagrams; what obeys orders, such as the session's bus, takes streams."""
        log, bus = socket.socket(socket.AF_UNIX, socket.SOCK_DGRAM), socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
        with tempfile.TemporaryDirectory() as folder, log, bus:
            os.chmod(folder, 0o755)
            for name, each in (("log", log), ("bus", bus)):
                each.bind(f"{folder}/{name}")
                os.chmod(f"{folder}/{name}", 0o666)
            bus.listen()
            for network in (False, True):
                self.check([(f"datagram {folder}/log", "yes", "yes"), (f"stream {folder}/bus", "EACCES", "yes")], network=network)

    def test_limits(self):
        user = str(self.user or os.getuid())
        rows = [("descriptors 300", "256", "300"), ("noNewPrivileges", "1", "0"), ("openFiles", "3", "3"), ("ownSession", "1", "1"),
                ("threads 64", "64", "64"), ("user", user, user)]
        if not SANITIZED:
            rows += [("allocate 900", "yes", "yes"), ("allocate 1100", "ENOMEM", "yes"), ("share 1100", "yes", "yes"), ("share 8200", "ENOMEM", "yes")]
        self.check(rows)
        self.assertEqual(self.ask("coreSize", "newNamespace"), ["0", "EPERM"])
        self.assertEqual(self.ask("fork 100", confined=False), ["100"])
        count = int(self.ask("fork 100")[0])
        self.assertEqual(count, 0) if self.is_without_processes() else self.assertTrue(80 < count < 97, count)

    @unittest.skipIf(LANDLOCK < 6, "this kernel's Landlock does not guard other processes")
    def test_signals(self):
        process = os.fork()
        if process == 0:
            if self.user:
                os.setuid(self.user)
            os.execlp("sleep", "sleep", "100")
        try:
            self.check([(f"signal {process}", "EPERM", "yes")])
        finally:
            os.kill(process, 9)
            os.waitpid(process, 0)

    def test_nothing_is_left_behind(self):
        script = self.home / "script"
        script.write_text("""#!/bin/sh
            sleep 1000 &
            echo $! > "$HOME/pid"
            echo '{"jsonrpc": "2.0", "id": 1, "result": {"identifier": "probe", "widgets": [], "findings": []}}'
            """)
        script.chmod(0o755)
        for confined in (True, False):
            if confined and self.is_without_processes():
                continue
            self.ask(confined=confined, executable=str(script))
            wait_until(lambda: not is_running((self.container / "pid").read_text().strip()), "the end of its child")

    def is_without_processes(self):
        user = self.user or os.getuid()
        return user == 0 or not can_have_user_namespace(self.user)


@unittest.skipUnless(IS_ROOT, "only root can be somebody else")
class Somebody(Anybody):
    """The same as a user without any rights, whose processes the kernel counts."""

    user = SOMEBODY

    def setUp(self):
        super().setUp()
        os.chmod(self.home.parent, 0o755)
        if IS_HIDDEN:
            self.skipTest(HIDDEN)


class RealExtension(HostTest):
    """What its lists on their own do not take: certificates, names and the web, a cache, translations, zones."""

    def test_downloads_and_keeps_tips(self):
        page = b"""<rss version="2.0"><channel><item><title>A tip</title><category>Tips</category><link>https://blog.example</link>
            <description>About it</description><pubDate>Tue, 20 Mar 2025 09:30:00 +0100</pubDate></item></channel></rss>"""
        with tempfile.TemporaryDirectory() as folder, HttpsServer(Authority(folder)) as server:
            server.pages["/2/apps/supportmaterials.xml.php?product=FOLIOvault&edition=Pro&version=4&lang=en"] = body(page)
            variables = {"PATH": os.environ["PATH"], "LANG": "C", "https_proxy": server.proxy, "SSL_CERT_FILE": str(server.authority.file)}
            done = host("--extension", EXTENSION, "--home", self.home, "render", "TipsWidget", "--format", "tree", env=variables)
        self.assertEqual((done.returncode, done.stderr), (OK, b""))
        self.assertIn("A tip", texts(json.loads(done.stdout)))
        cache = self.home / ".local" / "share" / "widgethost" / "containers" / "net.foliovault.widgets" / "Caches" / "tips_cache.json"
        self.assertIn("A tip", cache.read_text())

    def test_speaks_the_users_language(self):
        variables = {"PATH": os.environ["PATH"], "LANG": "de_DE.UTF-8", "TZ": "Asia/Tokyo", **NO_WEB}
        done = host("--extension", EXTENSION, "--home", self.home, "describe", env=variables)
        self.assertIn("Favoriten", done.stdout.decode())


@unittest.skipUnless(IS_ROOT, "only root can be somebody else")
@unittest.skipIf(IS_HIDDEN, HIDDEN)
class UserOfADirectoryService(HostTest):
    """Whom no file names; the wrapper plays the service."""

    def test_has_a_home(self):
        self.write([{"Name": "Known", "UUID": "U", "Type": 3}])
        variables = {**self.environment(), "HOME": str(self.home)}
        (self.home.parent / "passwd").write_text(f"user:x:{SOMEBODY}:{SOMEBODY}::{self.home}:/bin/sh\n")
        for path in (self.home.parent, *self.home.parent.rglob("*")):
            os.chown(path, SOMEBODY, SOMEBODY)
        done = host("--extension", EXTENSION, "render", "FavoritesWidget", "--format", "tree", env=variables,
                    user=SOMEBODY, group=SOMEBODY, extra_groups=[])
        self.assertEqual((done.returncode, done.stderr), (OK, b""))
        self.assertIn("Known", texts(json.loads(done.stdout)))


if __name__ == "__main__":
    unittest.main()
