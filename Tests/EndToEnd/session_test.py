"""The host that runs all the time, on a session bus of its own."""

import os
import signal
import subprocess

from support import EXTENSION, IDENTIFIER, LISTS, OK, UNAVAILABLE, USAGE, HostTest, children_of, favourites, is_running, wait_until

NO_BUS = {"DBUS_SESSION_BUS_ADDRESS": "unix:path=/nowhere"}


class SessionTest(HostTest):
    def start_host(self, variables=()):
        """Returns once commands reach it, if there is a bus."""
        self.messages = self.home / "messages"
        with open(self.messages, "wb") as messages:
            host = self.enterContext(subprocess.Popen(self.command("host"), env={**self.variables, **dict(variables)}, stderr=messages))
        self.addCleanup(host.kill)
        if not variables:
            wait_until(lambda: self.run_host("reload").returncode == OK, "the host")
        return host

    def descriptors(self, process):
        return len(os.listdir(f"/proc/{process.pid}/fd"))

    def test_commands_reach_it(self):
        self.write(favourites(3))
        for command in (("reload",), ("explain", 1)):
            self.assertIn("no host is running", self.refused(UNAVAILABLE, *command))
        self.start_host()
        self.assertEqual(self.succeed("add", "FavoritesWidget", "--family", "large"), "1\n")
        self.assertEqual(self.succeed("add", "ReadingListWidget"), "2\n")
        self.assertIn('no family "tiny"', self.refused(USAGE, "add", "ReadingListWidget", "--family=tiny"))
        self.assertEqual(self.succeed("reload", "FavoritesWidget"), "")
        explained = self.succeed("explain", 1)
        self.assertRegex(explained, r"\A1 FavoritesWidget of net.foliovault.widgets, large\n")
        self.assertRegex(explained, r"last reloaded: \d{4}-\d\d-\d\d \d\d:\d\d:\d\d, \d+ s ago, in \d+ ms\n")
        self.assertRegex(explained, r"next try: .*, in (5 min|29\d s)\n")
        self.assertNotIn("failed", explained)
        self.succeed("remove", 1)
        self.assertIn("there are 2", self.refused(USAGE, "explain", 1))
        self.assertEqual(self.succeed("host"), "A host is already running.\n")
        self.assertIn("another host", self.refused(UNAVAILABLE, "host", variables=NO_BUS))

    def test_without_a_bus_it_follows_the_file(self):
        self.write(favourites(3))
        host = self.start_host(NO_BUS)
        wait_until((self.arrangement.parent / "host.lock").exists, "the host")
        added = self.run_host("add", "FavoritesWidget", variables=NO_BUS)
        self.assertEqual((added.returncode, added.stdout), (OK, b"1\n"))
        self.assertIn(b"no session bus", added.stderr)
        wait_until(lambda: children_of(host), "the extension")
        self.assertIn("no session bus", self.refused(UNAVAILABLE, "reload", variables=NO_BUS))

    def test_another_extension_delays_no_addition(self):
        self.write_manifest("another", self.script("exec sleep 1000\n"))
        self.write_manifest(IDENTIFIER, EXTENSION)
        self.extension = None
        self.start_host()
        self.assertEqual(self.succeed("add", "WorkspacesWidget"), "1\n")

    def test_a_killed_extension_costs_no_tile_and_leaves_nothing_behind(self):
        self.write(favourites(3))
        host = self.start_host()
        for kind in LISTS:
            self.succeed("add", kind)
        self.succeed("reload")
        before = self.descriptors(host)
        for _ in range(20):
            for child in children_of(host):
                os.kill(child, signal.SIGKILL)
            # It may be asked before it is known that it is gone.
            self.run_host("reload")
        self.succeed("reload")
        self.assertEqual(len(children_of(host)), 1)
        # A command is done before the host has closed its connection.
        wait_until(lambda: self.descriptors(host) <= before, "the old descriptors")
        wait_until(lambda: not children_of(host) and self.descriptors(host) < before, "the end of the extension")

    def test_the_extension_does_not_outlive_the_host(self):
        ends = [lambda host: host.send_signal(signal.SIGTERM), lambda host: host.send_signal(signal.SIGINT), lambda host: host.kill(),
                lambda _: self.bus.process.terminate()]
        for end, code in zip(ends, (0, 0, -signal.SIGKILL, 0)):
            host = self.start_host()
            self.succeed("add", "WorkspacesWidget")
            self.succeed("reload")
            child, = children_of(host)
            if code:
                os.kill(child, signal.SIGSTOP)
            end(host)
            self.assertEqual(host.wait(20), code)
            wait_until(lambda: not is_running(child), "the end of the extension")
        self.assertEqual(self.messages.read_bytes(), b"")

    def test_a_broken_arrangement_changes_nothing_and_is_reported_once(self):
        host = self.start_host()
        self.succeed("add", "WorkspacesWidget")
        self.arrangement.write_bytes(b"{broken")
        wait_until(self.messages.read_text, "the message")
        self.arrangement.write_bytes(b"{broken too")
        self.succeed("explain", 1)
        host.terminate()
        self.assertEqual(host.wait(20), 0)
        self.assertRegex(self.messages.read_text(), r"\Awidgethost: [^\n]*arrangement.json[^\n]*\n\Z")
