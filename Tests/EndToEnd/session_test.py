"""The host that runs all the time, on a session bus of its own."""

import json
import os
import signal
import subprocess
import unittest
from pathlib import Path

from support import EXTENSION, HOST, LISTS, NO_WEB, OK, SANITIZING, UNAVAILABLE, USAGE, HomeTest, SessionBus, favourites, is_running, wait_until


class SessionTest(HomeTest):
    def setUp(self):
        super().setUp()
        self.configuration = self.home / "config"
        self.arrangement = self.configuration / "widgethost" / "arrangement.json"
        self.processes = []
        self.addCleanup(self.end_processes)
        self.bus = SessionBus()
        self.addCleanup(self.bus.end)
        self.variables = {"PATH": os.environ["PATH"], "HOME": str(self.home), "XDG_CONFIG_HOME": str(self.configuration), "LANG": "C",
                          **self.bus.variables, **NO_WEB, **SANITIZING}

    def start(self, *command, **more):
        process = subprocess.Popen([str(part) for part in command], **more)
        self.processes.append(process)
        return process

    def end_processes(self):
        for process in reversed(self.processes):
            if process.poll() is None:
                process.kill()
            process.__exit__(None, None, None)

    def command(self, *arguments):
        return [str(HOST), "--extension", str(EXTENSION), "--home", str(self.home), *map(str, arguments)]

    def start_host(self, **variables):
        self.said = self.home / "said"
        with open(self.said, "wb") as said:
            host = self.start(*self.command("host"), env={**self.variables, **variables}, stderr=said)
        if "DBUS_SESSION_BUS_ADDRESS" not in variables:
            self.eventually(lambda: self.call("reload").returncode == OK)
        return host

    def call(self, *arguments, **variables):
        return subprocess.run(self.command(*arguments), env={**self.variables, **variables}, capture_output=True, timeout=60)

    def succeed(self, *arguments):
        done = self.call(*arguments)
        self.assertEqual((done.returncode, done.stderr), (OK, b""), arguments)
        return done.stdout.decode()

    def refused(self, code, *arguments):
        done = self.call(*arguments)
        self.assertEqual((done.returncode, done.stdout), (code, b""), done.stderr)
        self.assertRegex(done.stderr.decode(), r"\A(widgethost: [^\n]+\n)+\Z")
        return done.stderr.decode()

    def eventually(self, is_so):
        wait_until(is_so, "the host")

    def children(self, process):
        return [int(child) for child in Path(f"/proc/{process.pid}/task/{process.pid}/children").read_text().split()]

    def descriptors(self, process):
        return len(os.listdir(f"/proc/{process.pid}/fd"))


class OneHost(SessionTest):
    def test_commands_reach_it(self):
        self.write(favourites(3))
        for command in (("reload",), ("explain", 1)):
            self.assertIn("no host is running", self.refused(UNAVAILABLE, *command))
        self.start_host()
        self.assertEqual(self.succeed("add", "FavoritesWidget", "--family", "large"), "1\n")
        self.assertEqual(self.succeed("add", "ReadingListWidget"), "2\n")
        for wrong, says in (("--family=tiny", 'no family "tiny"'), ("--set=group=a", 'no parameter "group"'), ("--set=filter=b", 'no choice of "filter" "b"')):
            self.assertIn(says, self.refused(USAGE, "add", "ReadingListWidget", wrong))
        self.assertEqual(self.succeed("reload"), "")
        self.assertEqual(self.succeed("reload", "FavoritesWidget"), "")
        explained = self.succeed("explain", 1)
        self.assertRegex(explained, r"\A1 FavoritesWidget of net.foliovault.widgets, large\n")
        self.assertRegex(explained, r"last reloaded: \d{4}-\d\d-\d\d \d\d:\d\d:\d\d, \d+ s ago, in \d+ ms\n")
        self.assertRegex(explained, r"next try: .*, in (5 min|29\d s)\n")
        self.assertNotIn("failed", explained)
        self.succeed("remove", 1)
        self.assertIn("there are 2", self.refused(USAGE, "explain", 1))
        self.assertEqual(self.succeed("host"), "A host is already running.\n")

    def test_without_a_bus_it_follows_the_file(self):
        self.write(favourites(3))
        nowhere = {"DBUS_SESSION_BUS_ADDRESS": "unix:path=/nowhere"}
        host = self.start_host(**nowhere)
        self.eventually(lambda: (self.configuration / "widgethost" / "host.lock").exists())
        done = self.call("add", "FavoritesWidget", **nowhere)
        self.assertEqual((done.returncode, done.stdout), (OK, b"1\n"))
        self.assertIn(b"no session bus", done.stderr)
        self.eventually(lambda: self.children(host))
        self.eventually(lambda: not self.children(host))
        done = self.call("reload", **nowhere)
        self.assertEqual(done.returncode, UNAVAILABLE)
        self.assertIn(b"no session bus", done.stderr)

    def test_two_never_run_on_one_arrangement(self):
        self.start_host()
        done = self.call("host", DBUS_SESSION_BUS_ADDRESS="unix:path=/nowhere")
        self.assertEqual(done.returncode, UNAVAILABLE)
        self.assertIn(b"another host", done.stderr)

    def test_it_ends_when_it_is_told_to_and_leaves_nothing(self):
        for end in (lambda host: host.send_signal(signal.SIGTERM), lambda host: host.send_signal(signal.SIGINT), lambda _: self.bus.process.terminate()):
            host = self.start_host()
            self.succeed("add", "WorkspacesWidget")
            self.succeed("reload")
            child, = self.children(host)
            end(host)
            self.assertEqual(host.wait(20), 0)
            self.assertFalse(Path(f"/proc/{child}").exists())

    def test_another_extension_keeps_no_addition_waiting(self):
        silent = self.home / "silent"
        silent.write_text("#!/bin/sh\nexec sleep 1000\n")
        silent.chmod(0o755)
        manifests = self.home / "data" / "widgethost" / "extensions"
        manifests.mkdir(parents=True)
        for name, program in (("another", silent), ("net.foliovault.widgets", EXTENSION)):
            (manifests / f"{name}.json").write_text(json.dumps({"identifier": name, "executable": str(program)}))
        self.variables["XDG_DATA_HOME"] = str(self.home / "data")
        self.command = lambda *arguments: [str(HOST), "--home", str(self.home), *map(str, arguments)]
        self.start_host()
        self.assertEqual(self.succeed("add", "WorkspacesWidget"), "1\n")


class Supervision(SessionTest):
    def test_a_killed_extension_costs_no_tile_and_leaves_nothing_behind(self):
        self.write(favourites(3))
        host = self.start_host()
        for kind in LISTS:
            self.succeed("add", kind)
        self.succeed("reload")
        before = self.descriptors(host)
        for _ in range(30):
            for child in self.children(host):
                os.kill(child, signal.SIGKILL)
            # It may be asked before it is known that it is gone.
            self.call("reload")
        self.succeed("reload")
        self.assertEqual(len(self.children(host)), 1)
        # A command is done before the host has closed its connection.
        self.eventually(lambda: self.descriptors(host) <= before)
        self.eventually(lambda: not self.children(host) and self.descriptors(host) < before)

    def test_a_hanging_extension_does_not_outlive_a_killed_host(self):
        host = self.start_host()
        self.succeed("add", "WorkspacesWidget")
        self.succeed("reload")
        child, = self.children(host)
        os.kill(child, signal.SIGSTOP)
        host.kill()
        host.wait()
        self.eventually(lambda: not is_running(child))

    def test_a_broken_arrangement_changes_nothing_and_is_said_once(self):
        host = self.start_host()
        self.succeed("add", "WorkspacesWidget")
        self.arrangement.write_bytes(b"{broken")
        self.eventually(lambda: self.said.read_text())
        self.arrangement.write_bytes(b"{broken too")
        self.succeed("explain", 1)
        host.terminate()
        self.assertEqual(host.wait(20), 0)
        self.assertRegex(self.said.read_text(), r"\Awidgethost: [^\n]*arrangement.json[^\n]*\n\Z")


if __name__ == "__main__":
    unittest.main()
