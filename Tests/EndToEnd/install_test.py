"""What an installation has: the programs as they run from there, and what desktops, shells and people are given beside them."""

import json
import os
import re
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

from support import EXTENSION, HOST, OK, PROGRAMS, PROJECT, SANITIZING, HomeTest, favourites

NAME = "net.foliovault.WidgetHost"
COMPLETIONS = {"bash": "share/bash-completion/completions/widgethost", "zsh": "share/zsh/site-functions/_widgethost",
               "fish": "share/fish/vendor_completions.d/widgethost.fish"}
# Prints what bash offers for the words of a command line, the last of which is begun.
BASH = 'source "$1"; shift; COMP_WORDS=("$@") COMP_CWORD=$(($# - 1)); compopt() { :; }; _widgethost; printf "%s\\n" "${COMPREPLY[@]}"'
# Prints what is declared for zsh at the command, or for a command's arguments: zsh's own functions say what they are given.
ZSH = """
_arguments() { if [[ $1 == -C ]]; then state=$STATE; shift; fi; print -rl -- "$@" }
_describe() { print -rl -- "${(@P)2}" }
words=("$2")
source "$1"
"""


def needs(*programs):
    missing = [program for program in programs if not shutil.which(program)]
    return unittest.skipIf(missing, f"not installed: {', '.join(missing)}")


def run(*command, **more):
    return subprocess.run([str(part) for part in command], capture_output=True, text=True, timeout=100, **more)


def offered_by_help(*command):
    """The options that a command's help names, each with its values where they are enumerated; and the subcommands."""
    text = run(HOST, *command, "--help").stdout
    options = {}
    for name, values in re.findall(r"^  (?:-\w,)?(--[a-z]+)(?: TEXT:\{([^}]*)\})?", text, re.M):
        options[name] = values.split(",") if values else []
    _, _, subcommands = text.partition("\nSubcommands:\n")
    return options, re.findall(r"^  ([a-z]+) ", subcommands, re.M)


class InstallTest(HomeTest):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.prefix = Path(folder.name) / "a prefix"
        done = run("cmake", "--install", PROGRAMS.parent, "--prefix", cls.prefix)
        assert done.returncode == 0, done.stderr

    def accept(self, *command, **more):
        """What a program says that ends well and does not complain."""
        done = run(*command, **more)
        self.assertEqual((done.returncode, done.stderr), (OK, ""), done.stdout)
        return done.stdout


class Programs(InstallTest):
    def installed(self, *arguments, **more):
        variables = {"PATH": os.environ["PATH"], "HOME": str(self.home), "XDG_DATA_DIRS": "/nowhere", "https_proxy": "http://127.0.0.1:9",
                     **SANITIZING, **more}
        return self.accept(self.prefix / "bin" / "widgethost", "--home", self.home, *arguments, env=variables)

    def test_find_their_manifest_and_their_translations(self):
        self.write(favourites(2))
        for language, name in (("C", "Reading List"), ("de_DE.UTF-8", "Leseliste")):
            described = json.loads(self.installed("describe", "--json", LANG=language))
            self.assertEqual(described["widgets"][0]["displayName"], name)


class Desktop(InstallTest):
    @needs("desktop-file-validate")
    def test_entries_are_valid(self):
        application = self.prefix / "share" / "applications" / f"{NAME}.desktop"
        self.accept("desktop-file-validate", application, self.prefix / "etc" / "xdg" / "autostart" / f"{NAME}.desktop")
        icon = re.search("^Icon=(.*)$", application.read_text(), re.M).group(1)
        self.assertTrue((self.prefix / "share/icons/hicolor/scalable/apps" / f"{icon}.svg").exists())

    @needs("appstreamcli")
    def test_metadata_is_valid(self):
        run("appstreamcli", "validate", "--no-net", self.prefix / "share/metainfo" / f"{NAME}.metainfo.xml", check=True)

    @needs("systemd-analyze")
    def test_the_unit_is_valid_and_wanted(self):
        units = self.prefix / "lib" / "systemd" / "user"
        self.assertTrue((units / "graphical-session.target.wants" / "widgethost.service").samefile(units / "widgethost.service"))
        # systemd looks programs up where the system's are.
        unit = self.home / "widgethost.service"
        unit.write_text((units / "widgethost.service").read_text().replace("ExecStart=widgethost", f"ExecStart={HOST}"))
        done = run("systemd-analyze", "verify", "--user", "--man=no", unit, env={**os.environ, "XDG_RUNTIME_DIR": str(self.home)})
        self.assertNotIn("widgethost", done.stderr)

    @needs("/usr/lib/systemd/user-generators/systemd-xdg-autostart-generator")
    def test_systemd_starts_no_second_host_by_the_autostart_entry(self):
        units = self.home / "units"
        units.mkdir()
        variables = {**os.environ, "XDG_CONFIG_DIRS": str(self.prefix / "etc" / "xdg"), "XDG_CONFIG_HOME": "/nowhere",
                     "PATH": f"{self.prefix / 'bin'}:{os.environ['PATH']}"}
        run("/usr/lib/systemd/user-generators/systemd-xdg-autostart-generator", units, units, units, check=True, env=variables)
        self.assertEqual(list(units.glob("*.service")), [])


class Manual(InstallTest):
    @needs("man")
    def test_pages_are_set_without_warnings(self):
        pages = sorted((self.prefix / "share" / "man").glob("man*/*"))
        self.assertEqual([page.name for page in pages], ["foliovault-widgets.1", "widgethost.1", "widgethost-extension.5"])
        for page in pages:
            self.accept("man", "--warnings", "-E", "UTF-8", "-l", page, env={**os.environ, "MANROFFSEQ": "", "LC_ALL": "C.UTF-8"})

    def test_the_page_has_what_help_has(self):
        page = (self.prefix / "share/man/man1/widgethost.1").read_text()
        options, commands = offered_by_help()
        self.assertGreater(len(commands), 9)
        head, *blocks = re.split(rf"^\.It Cm (?=(?:desktop|{'|'.join(commands)})\b)", page, flags=re.M)
        described = {re.match("[a-z]+", block).group(): block for block in blocks}
        for option in options:
            self.assertIn(f"Fl -{option[2:]}", head)
        for command in commands:
            self.assertIn(command, described)
            for option, values in offered_by_help(command)[0].items():
                if option == "--help":
                    continue
                self.assertIn(f"Fl -{option[2:]}", described[command], command)
                line = re.search(rf"Fl -{option[2:]} Cm (.*)", described[command])
                self.assertLessEqual(set(values), set(re.findall(r"\w+", line.group(1))) if line else set(), (command, option))


class Completions(InstallTest):
    def bash(self, *words, program=HOST):
        return self.accept("bash", "-c", BASH, "bash", self.prefix / COMPLETIONS["bash"], program, *words).split()

    def fish(self, *words):
        line = " ".join(("widgethost", *words))
        script = f"source '{self.prefix / COMPLETIONS['fish']}'; complete -C '{line}'"
        variables = {**os.environ, "HOME": str(self.home), "PATH": f"{PROGRAMS}:{os.environ['PATH']}"}
        return [row.split("\t")[0] for row in self.accept("fish", "--no-config", "-c", script, env=variables).splitlines()]

    def test_bash_and_fish_offer_what_help_has(self):
        for shell, offer in (("bash", self.bash), ("fish", self.fish)):
            if not shutil.which(shell):
                continue
            with self.subTest(shell):
                options, commands = offered_by_help()
                self.assertLessEqual(set(commands), set(offer("")))
                self.assertLessEqual(set(options), set(offer("--")))
                for command in commands:
                    options, _ = offered_by_help(command)
                    self.assertLessEqual(set(options), set(offer(command, "--")), command)
                    for option, values in options.items():
                        if values:
                            self.assertEqual(set(offer(command, option, "")), set(values), (command, option))
                self.assertNotIn("--family", offer("list", "--"))

    def zsh(self, command):
        variables = {**os.environ, "STATE": "argument" if command else "command"}
        return self.accept("zsh", "-f", "-c", ZSH, "zsh", self.prefix / COMPLETIONS["zsh"], command, env=variables).splitlines()

    @needs("zsh")
    def test_zsh_declares_what_help_has(self):
        _, commands = offered_by_help()
        self.assertLessEqual(set(commands), {row.split(":")[0] for row in self.zsh("")})
        for command in ("", *commands):
            rows = self.zsh(command)
            for option, values in offered_by_help(*command.split())[0].items():
                row = next((row for row in rows if re.search(rf"(^|\)|\*){option}\[", row)), "")
                self.assertTrue(row, (command, option))
                if values:
                    self.assertEqual(set(values), set(re.search(r"\(([\w ]+)\)$", row).group(1).split()), (command, option))

    def test_bash_asks_the_extension_for_kinds(self):
        named = ("--extension", EXTENSION, "--home", self.home)
        self.assertEqual(self.bash(*named, "render", "Fav"), ["FavoritesWidget"])
        self.assertEqual(self.bash(*named, "add", "--set", "group", "=", "Work", "T"), ["TipsWidget"])
        self.assertEqual(self.bash(*named, "render", "FavoritesWidget", "T"), [])
        self.assertEqual(self.bash("render", "-o", str(PROJECT / "READ")), [str(PROJECT / "README.md")])


if __name__ == "__main__":
    unittest.main()
