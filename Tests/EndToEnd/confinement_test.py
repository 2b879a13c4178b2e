"""What an extension's process may do: a probe tries it with confinement and without."""

import ctypes
import json
import os
import shutil
import socket
import sys
import tempfile
import unittest
from pathlib import Path

from support import EXTENSION, HOST, SANITIZED, HostTest, is_running, response, texts, user_database, wait_until

PROBE = Path(__file__).with_name("confinement_probe.py")
CREATE_RULESET, QUERY_VERSION = 444, 1
# The version of Landlock, 0 where it is missing.
LANDLOCK = max(0, ctypes.CDLL(None).syscall(CREATE_RULESET, None, 0, QUERY_VERSION))
# Without this file the system resolves no local names either.
HOSTS = Path("/etc/hosts")


def call(function, *arguments):
    """The expression of a call."""
    return f"{function}({', '.join(repr(str(each) if isinstance(each, Path) else each) for each in arguments)})"


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
        self.container = self.containers / "probe"
        self.container.mkdir(parents=True)
        (self.home / ".ssh").mkdir()
        (self.home / ".ssh" / "id_ed25519").write_text("secret")
        self.write([])
        self.inherited = self.enterContext(tempfile.TemporaryFile())
        program = self.home / "probe"
        shutil.copy(sys.executable, program)
        modules = self.container / ".local" / "lib" / f"python3.{sys.version_info.minor}" / "site-packages"
        modules.mkdir(parents=True)
        shutil.copy(PROBE, modules / "usercustomize.py")
        self.extension = self.home / "probe.json"
        self.manifest = {"identifier": "probe", "executable": str(program), "reads": ["Library/Application Support/FOLIOvault"]}
        self.is_without_processes = (self.user or os.getuid()) == 0 or not can_have_user_namespace(self.user)

    def as_user(self):
        if not self.user:
            return {}
        os.chmod(self.home.parent, 0o755)
        for path in (self.home.parent, *self.home.parent.rglob("*")):
            os.chown(path, self.user, self.user, follow_symlinks=False)
        return {"user": self.user, "group": self.user, "extra_groups": []}

    def ask(self, *expressions, confined=True, **manifest):
        """What became of each expression."""
        self.extension.write_text(json.dumps({**self.manifest, **manifest}))
        (self.container / "expressions").write_text("".join(f"{each}\n" for each in expressions))
        # A descriptor that the host has inherited is not passed on.
        described = self.succeed(*(() if confined else ("--unconfined",)), "describe", "--json", pass_fds=[self.inherited.fileno()], **self.as_user())
        return json.loads(described)["findings"]

    def check(self, rows, **manifest):
        """Rows of an expression, its result with confinement, and its result without."""
        for confined in (True, False):
            for row, found in zip(rows, self.ask(*(row[0] for row in rows), confined=confined, **manifest), strict=True):
                with self.subTest(row[0], confined=confined):
                    self.assertEqual(found, row[1] if confined else row[2])

    @unittest.skipIf(LANDLOCK == 0, "this kernel has no Landlock, which alone guards files")
    def test_files(self):
        library, elsewhere, container, secret = self.library, self.home.parent, self.container, self.home / ".ssh" / "id_ed25519"
        (elsewhere / "note").write_text("x")
        (library / "link").symlink_to(secret)
        lists = lambda path: call("os.listdir", path) + " and None"
        favourites, file = library / "Favorites.plist", container / "file"
        refused = [*(call("open", path) for path in (secret, library / "link", self.extension)),
                   *map(lists, (secret.parent, self.home, "/etc", "/usr/share/fonts", "/etc/ssl/certs")),
                   *(call("open", path, "a") for path in (favourites, library / "new", elsewhere / "note", elsewhere / "new")),
                   call("os.mkdir", library / "folder"), call("os.rename", elsewhere / "note", elsewhere / "note2"), call("os.unlink", favourites),
                   call("os.mkfifo", container / "pipe"), *([call("os.truncate", secret, 0)] if LANDLOCK >= 3 else [])]
        allowed = [call("open", favourites), lists(library), call("open", "/etc/passwd"), lists("/usr/share/zoneinfo"), call("open", "/dev/null", "a"),
                   call("open", file, "a"), call("os.truncate", file, 0), call("os.rename", file, container / "file2"), call("os.unlink", container / "file2")]
        no_program = "EAGAIN" if self.is_without_processes else "EACCES"
        self.check([*((each, "yes", "yes") for each in allowed), (call("open", "/proc/1/cmdline"), "yes" if SANITIZED else "EACCES", "yes"),
                    *((each, "EACCES", "yes") for each in refused), (call("run", shutil.which("true")), no_program, "yes"),
                    (call("write_and_run", container / "program"), no_program, "yes")])
        # A folder that is not there is no fault.
        self.check([(call("open", self.home / "Absent" / "file"), "ENOENT", "ENOENT")], reads=["Absent"])
        hosts = [(call("open", HOSTS), "yes", "yes")] if HOSTS.exists() else []
        self.check([(lists("/etc/ssl/certs"), "yes", "yes"), *hosts, (lists("/etc/ssl"), "EACCES", "yes")], network=True)

    def test_a_script_may_use_commands(self):
        """As many as processes are allowed."""
        (self.container / "answer").write_text(response(identifier="probe", widgets=[], findings=["yes"]) + "\n")
        script = self.script('exec cat "$HOME/answer"' if self.is_without_processes else 'cat "$HOME/answer" | sed p | head -n 1')
        self.assertEqual(self.ask(executable=str(script)), ["yes"])

    def test_sockets(self):
        """Of local ones, the system's log takes datagrams; what obeys orders, such as the session's bus, takes streams."""
        tcp, udp = "socket(AF_INET, SOCK_STREAM)", "socket(AF_INET, SOCK_DGRAM)"
        log, bus = socket.socket(socket.AF_UNIX, socket.SOCK_DGRAM), socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
        with socket.create_server(("127.0.0.1", 0)) as server, tempfile.TemporaryDirectory() as folder, log, bus:
            os.chmod(folder, 0o755)
            for name, each in (("log", log), ("bus", bus)):
                each.bind(f"{folder}/{name}")
                os.chmod(f"{folder}/{name}", 0o666)
            bus.listen()
            out = [call(tcp + ".connect", server.getsockname()), call(udp + ".connect", ("127.0.0.1", 9))]
            if not SANITIZED and HOSTS.exists():  # the wrapper would look names up in a way that sanitizers do not bear
                out.append('getaddrinfo("localhost", 80) and None')
            always = [(call(tcp + ".bind", ("127.0.0.1", 0)), "EACCES", "yes"), (tcp + ".listen(1)", "EACCES", "yes"),
                      (call("socket(AF_UNIX, SOCK_DGRAM).connect", f"{folder}/log"), "yes", "yes"),
                      (call("socket(AF_UNIX, SOCK_STREAM).connect", f"{folder}/bus"), "EACCES", "yes")]
            self.check([*((each, "EACCES", "yes") for each in out[:2]), *always])
            self.check([*((each, "yes", "yes") for each in out), *always], network=True)

    def test_limits(self):
        user = str(self.user or os.getuid())
        rows = [("LIBRARY.prctl(GET_NO_NEW_PRIVILEGES, 0, 0, 0, 0)", "1", "0"),
                ("sum(map(is_open, range(1024)))", "3", "3"), ("os.getsid(0) == os.getpid()", "1", "1"), ("os.getuid()", user, user)]
        if not SANITIZED:
            rows += [("allocate(900, PRIVATE)", "yes", "yes"), ("allocate(1100, PRIVATE)", "ENOMEM", "yes"), ("allocate(1100, SHARED)", "yes", "yes"),
                     ("allocate(8200, SHARED)", "ENOMEM", "yes")]
        if LANDLOCK >= 6:
            rows.append(("os.kill(os.getppid(), 0)", "EPERM", "yes"))
        # The last one leaves no descriptor for others.
        self.check([*rows, ("len(count(lambda: threading.Thread(target=LIBRARY.pause, daemon=True).start(), 64))", "64", "64"),
                    ("3 + len(count(lambda: os.dup(0), 297))", "256", "300")])
        self.assertEqual(self.ask("resource.getrlimit(resource.RLIMIT_CORE)[0]", "LIBRARY.unshare(CLONE_NEWUSER)"), ["0", "-1"])
        self.assertEqual(self.ask("fork(100)", confined=False), ["100"])
        count = int(self.ask("fork(100)")[0])
        self.assertEqual(count, 0) if self.is_without_processes else self.assertTrue(80 < count < 97, count)

    def test_nothing_is_left_behind(self):
        answer = response(identifier="probe", widgets=[], findings=[])
        script = self.script(f"""sleep 1000 & echo $! > "$HOME/pid"; echo '{answer}'\n""")
        for confined in (True, False):
            if not confined or not self.is_without_processes:
                self.ask(confined=confined, executable=str(script))
                wait_until(lambda: not is_running((self.container / "pid").read_text().strip()), "the end of its child")


@unittest.skipUnless(os.getuid() == 0, "only root can be another user")
@unittest.skipIf(any(not folder.stat().st_mode & 0o001 for folder in HOST.parents), "other users cannot read the folder of the programs")
class Unprivileged(Anybody):
    """The same as a user without any rights, whose processes the kernel counts."""
    # No user has this id.
    user = 61_234

    def test_the_user_of_a_directory_service_has_a_home(self):
        """This user is in no file; the wrapper plays the service."""
        self.extension = EXTENSION
        self.write([{"Name": "Known", "UUID": "U", "Type": 3}])
        variables = user_database(self.home.parent, self.home, self.user)
        shown = self.succeed("render", "FavoritesWidget", "--format", "tree", variables=variables, **self.as_user())
        self.assertIn("Known", texts(json.loads(shown)))
