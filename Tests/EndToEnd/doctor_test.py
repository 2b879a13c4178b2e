"""What the host finds on a machine: real buses, displays, handlers and extensions, there or not."""

import json
import os
import shutil
import socket
import subprocess
import time
import unittest

from support import EXTENSION, HOST, KINDS, NO_WEB, OK, SANITIZING, UNAVAILABLE, HomeTest, SessionBus, favourites
from worlds import WaylandWorld, XWorld, skip_where_missing

STATES = {"ok", "note", "problem"}


class DoctorTest(HomeTest):
    def setUp(self):
        super().setUp()
        self.data, self.configuration = self.home / "data", self.home / "config"
        self.extensions = self.data / "widgethost" / "extensions"
        for folder in (self.extensions, self.configuration, self.home / "run"):
            folder.mkdir(parents=True)
        self.variables = {"PATH": os.environ["PATH"], "HOME": str(self.home), "XDG_DATA_HOME": str(self.data), "XDG_DATA_DIRS": "/nowhere",
                          "XDG_CONFIG_HOME": str(self.configuration), "XDG_RUNTIME_DIR": str(self.home / "run"), "LANG": "C", **NO_WEB,
                          **SANITIZING}

    def run_doctor(self, *arguments, extension=EXTENSION, **more):
        command = [HOST, "--extension", extension]
        if extension is None:
            # Elsewhere, so that no manifest is installed beside it.
            command = [shutil.copy(HOST, self.home / "run")]
        return subprocess.run([*command, "--home", self.home, "doctor", *arguments], capture_output=True, timeout=60,
                              env={**self.variables, **more})

    def doctor(self, **more):
        """The findings by their names; several of one name in a list's order."""
        done = self.run_doctor("--json", **more)
        findings = json.loads(done.stdout)
        self.assertEqual(done.returncode, UNAVAILABLE if any(each["state"] == "problem" for each in findings) else OK)
        by_name = {}
        for finding in findings:
            self.assertEqual(set(finding), {"check", "state", "found", "advice"})
            self.assertIn(finding["state"], STATES)
            self.assertTrue(finding["found"])
            self.assertEqual(bool(finding["advice"]), finding["state"] != "ok", finding)
            by_name.setdefault(finding["check"], []).append(finding)
        return by_name

    def expect(self, findings, name, *rows):
        """Each row: the state, and what the line says."""
        found = [(each["state"], each["found"]) for each in findings.get(name, [])]
        self.assertEqual([state for state, _ in found], [state for state, _ in rows], found)
        for (_, line), (_, says) in zip(found, rows):
            self.assertRegex(line, says)

    def script(self, name, body):
        path = self.home / name
        path.write_text("#!/bin/sh\n" + body)
        path.chmod(0o755)
        return path


class Extensions(DoctorTest):
    def test_the_real_one_answers_and_none_is_a_problem(self):
        self.write(favourites(3))
        findings = self.doctor()
        self.expect(findings, "extension", ("ok", rf"net\.foliovault\.widgets: starts and answers in \d+ ms, {len(KINDS)} widgets$"))
        self.expect(findings, "data", ("ok", "FOLIOvault: 1 file, readable$"))
        self.expect(self.doctor(extension=None), "extension", ("problem", "no extension is installed"))

    def test_bad_ones_are_told_apart_and_wait_side_by_side(self):
        programs = {
            "a": None, "b": "missing", "c": "exit 3", "d": "read line; exec tail -f /dev/null", "e": "read line; echo nonsense",
            "f": """read line; echo '{"jsonrpc":"2.0","id":1,"error":{"code":-32603,"message":"not today"}}'; read line""",
            "g": """read line; echo '{"jsonrpc":"2.0","id":1,"result":{"widgets":[{"kind":"Slow","families":["small"]}]}}'; exec tail -f /dev/null"""}
        for name, body in programs.items():
            manifest = {"identifier": name, "executable": "/nowhere/at/all"}
            if body not in (None, "missing"):
                manifest["executable"] = str(self.script(name, body))
            (self.extensions / f"{name}.json").write_text("{broken" if body is None else json.dumps(manifest))
        # A compositor that says nothing is waited for meanwhile.
        silent = socket.socket(socket.AF_UNIX)
        self.addCleanup(silent.close)
        self.addCleanup(os.chdir, os.getcwd())
        os.chdir(self.home / "run")
        silent.bind("silent")
        silent.listen()
        start = time.monotonic()
        findings = self.doctor(extension=None, WAYLAND_DISPLAY="silent")
        self.assertLess(time.monotonic() - start, 20)
        self.expect(findings, "compositor", ("problem", "does not answer"))
        self.expect(findings, "extension", ("problem", "a.json is no JSON object"), ("problem", "^b: cannot start .*"),
                    ("problem", "^c: .* exited with 3"), ("problem", "^d: .*no answer in 10 s"), ("problem", "^e: .*other than a message"),
                    ("problem", "^f: not today"), ("note", "^g: .*1 widget; nothing in 10 s from Slow"))


class Data(DoctorTest):
    def test_what_cannot_be_read_is_said(self):
        self.library.rmdir()
        self.expect(self.doctor(), "data", ("problem", "FOLIOvault: No such file"))
        os.mkfifo(self.library)
        self.expect(self.doctor(), "data", ("problem", "FOLIOvault: Not a directory"))
        self.library.unlink()
        self.library.mkdir()
        os.mkfifo(self.library / "Favorites.plist")
        for number in range(5):
            (self.library / f"lost-{number}").symlink_to("/nowhere/at/all")
        self.expect(self.doctor(), "data", ("problem", r"not readable: lost-\d \(No such file or directory\), .* and 2 more$"))

    def test_the_arrangement_is_read_and_left_alone(self):
        file = self.configuration / "widgethost" / "arrangement.json"
        file.parent.mkdir()
        self.expect(self.doctor(), "arrangement", ("note", "no widget is placed"))
        file.write_text("{")
        self.expect(self.doctor(), "arrangement", ("problem", "is broken"))
        self.assertEqual(file.read_text(), "{")


class Links(DoctorTest):
    def test_each_scheme_has_its_handler_or_none(self):
        self.write([{"Title": "Page", "URL": "https://www.example.org/", "UUID": "U-1"}], name="ReadingList.plist")
        self.write(favourites(2))
        before = self.doctor()["links"]
        self.assertEqual({each["state"] for each in before}, {"problem"})
        self.assertIn("x-scheme-handler/x-foliovault-item", "".join(each["advice"] for each in before))
        applications = self.data / "applications"
        applications.mkdir()
        (applications / "vault.desktop").write_text(
            "[Desktop Entry]\nType=Application\nName=The Vault\nExec=true %u\nMimeType=x-scheme-handler/x-foliovault-item;\n")
        (self.configuration / "mimeapps.list").write_text("[Default Applications]\nx-scheme-handler/x-foliovault-item=vault.desktop\n")
        after = self.doctor()["links"]
        self.assertEqual([each["found"] for each in after if each["state"] == "ok"], ["x-foliovault-item: opens The Vault"])
        self.assertEqual(len(after), len(before))

    def test_fonts_are_those_that_fontconfig_has(self):
        names = ["font", "font, Japanese", "font, Arabic", "font, Hebrew", "font, emoji"]
        fonts = self.home / "fonts.conf"
        fonts.write_text("<?xml version='1.0'?><!DOCTYPE fontconfig SYSTEM 'fonts.dtd'><fontconfig></fontconfig>")
        findings = self.doctor(FONTCONFIG_FILE=str(fonts))
        self.assertEqual([findings[name][0]["state"] for name in names], ["problem", "note", "note", "note", "note"])


class Desktop(DoctorTest):
    def test_nothing_of_a_desktop(self):
        findings = self.doctor()
        self.expect(findings, "compositor", ("problem", "neither WAYLAND_DISPLAY nor DISPLAY"))
        self.expect(findings, "session bus", ("note", "not found"))
        self.assertNotIn("portal", findings)
        findings = self.doctor(WAYLAND_DISPLAY="nothing", DISPLAY=":98765", DBUS_SESSION_BUS_ADDRESS="unix:path=/nowhere")
        self.expect(findings, "compositor", ("problem", "Wayland, nothing: cannot be reached"), ("problem", "X11, :98765: cannot"))
        self.expect(findings, "session bus", ("note", "cannot be reached"))

    def test_a_bus_without_a_host(self):
        bus = SessionBus()
        self.addCleanup(bus.end)
        findings = self.doctor(**bus.variables)
        for name, row in (("session bus", ("ok", "answers")), ("running host", ("note", "not running")), ("portal", ("note", "no portal"))):
            self.expect(findings, name, row)

    def display_of(self, world):
        return {name: value for name, value in world.environment().items() if name in ("XDG_RUNTIME_DIR", "WAYLAND_DISPLAY", "DISPLAY")}

    def test_a_compositor_with_a_layer_shell(self):
        skip_where_missing(WaylandWorld)
        world = WaylandWorld()
        self.addCleanup(world.stop)
        findings = self.doctor(**self.display_of(world))
        self.expect(findings, "compositor", ("ok", "Wayland, wayland-"))
        self.expect(findings, "windows", ("ok", r"layer shell, version \d"))

    def test_an_x_server_with_a_window_manager_and_without(self):
        skip_where_missing(XWorld)
        world = XWorld(compositing=True)
        self.addCleanup(world.stop)
        display = self.display_of(world)
        findings = self.doctor(**display)
        self.expect(findings, "window manager", ("ok", "^Openbox$"))
        self.expect(findings, "windows", ("ok", "desktop type, under"))
        self.expect(findings, "compositing", ("ok", "running"))
        for program in (world.parts[0], world.parts[2]):
            program.kill()
            program.wait()
        findings = self.doctor(**display)
        for name, row in {"compositor": ("ok", "X11, "), "window manager": ("note", "not found"), "compositing": ("note", "corners")}.items():
            self.expect(findings, name, row)


if __name__ == "__main__":
    unittest.main()
