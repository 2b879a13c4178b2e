"""What `doctor` finds: buses, link handlers and extensions, present or missing."""

import json
import os
import shutil
import socket
import time

from support import HOST, KINDS, OK, UNAVAILABLE, HostTest, favourites, response


class Doctor(HostTest):
    def doctor(self, **variables):
        """The findings by their names; several of one name in a list's order."""
        done = self.run_host("doctor", "--json", variables=variables)
        findings = json.loads(done.stdout)
        self.assertEqual(done.returncode, UNAVAILABLE if any(each["state"] == "problem" for each in findings) else OK)
        by_name = {}
        for finding in findings:
            self.assertEqual(bool(finding["advice"]), finding["state"] != "ok", finding)
            by_name.setdefault(finding["check"], []).append((finding["state"], finding["found"]))
        return by_name

    def expect(self, findings, name, *rows):
        """Each row: the state, and what the line says."""
        found = findings.get(name, [])
        self.assertEqual([state for state, _ in found], [state for state, _ in rows], found)
        for (_, line), (_, pattern) in zip(found, rows):
            self.assertRegex(line, pattern)

    def test_extensions(self):
        self.write(favourites(3))
        findings = self.doctor()
        self.expect(findings, "links", ("problem", "x-foliovault: no application"), ("problem", "x-foliovault-item: no application"))
        self.expect(findings, "extension", ("ok", rf"net\.foliovault\.widgets: starts and answers in \d+ ms, {len(KINDS)} widgets$"))
        self.expect(findings, "data", ("ok", "FOLIOvault: 1 file, readable$"))

        # Elsewhere, so that no manifest is installed beside it.
        self.program, self.extension = shutil.copy(HOST, self.home / "run"), None
        self.expect(self.doctor(), "extension", ("problem", "no extension is installed"))
        slow = response(widgets=[{"kind": "Slow", "families": ["small"]}])
        failed = '{"jsonrpc":"2.0","id":1,"error":{"code":-32603,"message":"not today"}}'
        scripts = {"c": "exit 3", "d": "read line; exec tail -f /dev/null", "e": "read line; echo nonsense", "f": f"read line; echo '{failed}'; read line",
                   "g": f"read line; echo '{slow}'; exec tail -f /dev/null"}
        self.write_manifest("a")
        self.write_manifest("b", "/nowhere/at/all")
        for name, body in scripts.items():
            self.write_manifest(name, self.script(body, name))
        # Nor does the compositor answer.
        silent = self.enterContext(socket.socket(socket.AF_UNIX))
        silent.bind(bytes(self.home / "run" / "silent"))
        silent.listen()
        start = time.monotonic()
        findings = self.doctor(WAYLAND_DISPLAY="silent")
        self.assertLess(time.monotonic() - start, 30)
        self.expect(findings, "compositor", ("problem", "does not answer"))
        self.expect(findings, "extension", ("problem", "a.json is not a JSON object"), ("problem", "^b: cannot start .*"),
                    ("problem", "^c: .* exited with 3"), ("problem", "^d: .*no answer in 10 s"), ("problem", "^e: .*other than a message"),
                    ("problem", "^f: not today"), ("note", "^g: .*1 widget; nothing in 10 s from Slow"))

    def test_data(self):
        self.library.rmdir()
        self.expect(self.doctor(), "data", ("problem", "FOLIOvault: No such file"))
        self.library.write_text("")
        self.expect(self.doctor(), "data", ("problem", "FOLIOvault: Not a directory"))
        self.library.unlink()
        self.library.mkdir()
        os.mkfifo(self.library / "Favorites.plist")
        for number in range(5):
            (self.library / f"lost-{number}").symlink_to("/nowhere/at/all")
        findings = self.doctor()
        self.expect(findings, "data", ("problem", r"not readable: lost-\d \(No such file or directory\), .* and 2 more$"))
        self.expect(findings, "arrangement", ("note", "no widget is placed"))
        self.arrangement.parent.mkdir()
        self.arrangement.write_text("{")
        self.expect(self.doctor(), "arrangement", ("problem", "is broken"))
        self.assertEqual(self.arrangement.read_text(), "{")

    def test_nothing_of_a_desktop(self):
        fonts = self.home / "fonts.conf"
        fonts.write_text("<?xml version='1.0'?><!DOCTYPE fontconfig SYSTEM 'fonts.dtd'><fontconfig></fontconfig>")
        findings = self.doctor(FONTCONFIG_FILE=str(fonts))
        self.expect(findings, "font", ("problem", "."))
        self.expect(findings, "compositor", ("problem", "neither WAYLAND_DISPLAY nor DISPLAY"))
        for name, row in (("session bus", ("ok", "answers")), ("running host", ("note", "not running")), ("portal", ("note", "no portal"))):
            self.expect(findings, name, row)
        findings = self.doctor(WAYLAND_DISPLAY="nothing", DISPLAY=":98765", DBUS_SESSION_BUS_ADDRESS="unix:path=/nowhere")
        self.expect(findings, "compositor", ("problem", "Wayland, nothing: cannot be reached"), ("problem", "X11, :98765: cannot"))
        self.expect(findings, "session bus", ("note", "cannot be reached"))
        self.assertNotIn("portal", findings)
