"""What an installation has: the programs as they run from there, and what desktops, shells and people are given beside them."""

import json
import os
import re
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

from support import COMMON, EXTENSION, HOST, OK, PROGRAMS, PROJECT, HomeTest, favourites

NAME = "net.foliovault.WidgetHost"
# Prints what bash offers for the words of a command line, the last of which is incomplete.
BASH = 'source "$1"; shift; COMP_WORDS=("$@") COMP_CWORD=$(($# - 1)); compopt() { :; }; _widgethost; printf "%s\\n" "${COMPREPLY[@]}"'


def needs(*programs):
    missing = [program for program in programs if not shutil.which(program)]
    return unittest.skipIf(missing, f"not installed: {', '.join(missing)}")


def run(*command, **more):
    return subprocess.run([str(part) for part in command], capture_output=True, text=True, timeout=100, **more)


def help_of(*command):
    """The options in a command's help, each with its values where they are enumerated; and the subcommands."""
    text = run(HOST, *command, "--help").stdout
    options = {}
    for name, values in re.findall(r"^  (?:-\w,)?(--[a-z]+)(?: TEXT:\{([^}]*)\})?", text, re.M):
        options[name] = values.split(",") if values else []
    _, _, subcommands = text.partition("\nSubcommands:\n")
    return options, re.findall(r"^  ([a-z]+) ", subcommands, re.M)


class Installation(HomeTest):
    @classmethod
    def setUpClass(cls):
        cls.prefix = Path(cls.enterClassContext(tempfile.TemporaryDirectory())) / "a prefix"
        cls.share = cls.prefix / "share"
        done = run("cmake", "--install", PROGRAMS.parent, "--prefix", cls.prefix)
        assert done.returncode == 0, done.stderr

    def accept(self, *command, **more):
        """The output of a program that succeeds without a warning."""
        done = run(*command, **more)
        self.assertEqual((done.returncode, done.stderr), (OK, ""), done.stdout)
        return done.stdout

    def test_programs_find_their_manifest_and_their_translations(self):
        self.write(favourites(2))
        for language, name in (("C", "Reading List"), ("de_DE.UTF-8", "Leseliste")):
            variables = {**COMMON, "HOME": str(self.home), "XDG_DATA_DIRS": "/nowhere", "LANG": language}
            described = json.loads(self.accept(self.prefix / "bin" / "widgethost", "--home", self.home, "describe", "--json", env=variables))
            self.assertEqual(described["widgets"][0]["displayName"], name)

    @needs("desktop-file-validate", "appstreamcli")
    def test_entries_and_metadata_are_valid(self):
        application = self.share / "applications" / f"{NAME}.desktop"
        self.accept("desktop-file-validate", application, self.prefix / "etc" / "xdg" / "autostart" / f"{NAME}.desktop")
        icon = re.search("^Icon=(.*)$", application.read_text(), re.M).group(1)
        self.assertTrue((self.share / "icons/hicolor/scalable/apps" / f"{icon}.svg").exists())
        run("appstreamcli", "validate", "--no-net", self.share / "metainfo" / f"{NAME}.metainfo.xml", check=True)

    @needs("systemd-analyze", "/usr/lib/systemd/user-generators/systemd-xdg-autostart-generator")
    def test_systemd_starts_one_host(self):
        """By the unit, and none by the autostart entry."""
        units = self.prefix / "lib" / "systemd" / "user"
        self.assertTrue((units / "graphical-session.target.wants" / "widgethost.service").samefile(units / "widgethost.service"))
        # systemd looks programs up where the system's are.
        unit = self.home / "widgethost.service"
        unit.write_text((units / "widgethost.service").read_text().replace("ExecStart=widgethost", f"ExecStart={HOST}"))
        done = run("systemd-analyze", "verify", "--user", "--man=no", unit, env={**os.environ, "XDG_RUNTIME_DIR": str(self.home)})
        self.assertNotIn("widgethost", done.stderr)
        variables = {**os.environ, "XDG_CONFIG_DIRS": str(self.prefix / "etc" / "xdg"), "XDG_CONFIG_HOME": "/nowhere",
                     "PATH": f"{self.prefix / 'bin'}:{os.environ['PATH']}"}
        generated = self.home / "units"
        generated.mkdir()
        run("/usr/lib/systemd/user-generators/systemd-xdg-autostart-generator", *[generated] * 3, check=True, env=variables)
        self.assertEqual(list(generated.glob("*.service")), [])

    @needs("man")
    def test_manual_pages_are_set_without_warnings(self):
        pages = sorted((self.share / "man").glob("man*/*"))
        self.assertEqual([page.name for page in pages], ["foliovault-widgets.1", "widgethost.1", "widgethost-extension.5"])
        for page in pages:
            self.accept("man", "--warnings", "-E", "UTF-8", "-l", page, env={**os.environ, "MANROFFSEQ": "", "LC_ALL": "C.UTF-8"})

    def bash(self, *words, program=HOST):
        return self.accept("bash", "-c", BASH, "bash", self.share / "bash-completion/completions/widgethost", program, *words).split()

    def fish(self, *words):
        script = f"source '{self.share / 'fish/vendor_completions.d/widgethost.fish'}'; complete -C '{' '.join(('widgethost', *words))}'"
        variables = {**os.environ, "HOME": str(self.home), "PATH": f"{PROGRAMS}:{os.environ['PATH']}"}
        return [row.split("\t")[0] for row in self.accept("fish", "--no-config", "-c", script, env=variables).splitlines()]

    def test_the_manual_and_the_shells_have_what_help_has(self):
        """zsh has it somewhere in its file."""
        page, zsh = ((self.share / file).read_text() for file in ("man/man1/widgethost.1", "zsh/site-functions/_widgethost"))
        if shutil.which("zsh"):
            self.accept("zsh", "-n", self.share / "zsh/site-functions/_widgethost")
        options, commands = help_of()
        self.assertGreater(len(commands), 9)
        head, *blocks = re.split(rf"^\.It Cm (?=(?:desktop|{'|'.join(commands)})\b)", page, flags=re.M)
        described = {re.match("[a-z]+", block).group(): block for block in blocks}
        for option in options:
            self.assertIn(f"Fl -{option[2:]}", head)
        shells = [offer for shell, offer in (("bash", self.bash), ("fish", self.fish)) if shutil.which(shell)]
        for offer in shells:
            self.assertLessEqual(set(commands), set(offer("")))
            self.assertLessEqual(set(options), set(offer("--")))
            self.assertNotIn("--family", offer("list", "--"))
        for command in commands:
            self.assertRegex(zsh, rf"""['"]{command}:""")
            values = help_of(command)[0]
            for offer in shells:
                self.assertLessEqual(set(values), set(offer(command, "--")), command)
            for option, choices in values.items():
                with self.subTest(command, option=option):
                    self.assertRegex(zsh, rf"{option}\b" + "".join(rf"(?=.*\b{choice}\b)" for choice in choices))
                    if option != "--help":
                        line = re.search(rf"Fl -{option[2:]}\b(.*)", described[command])
                        self.assertLessEqual(set(choices), set(re.findall(r"\w+", line[1])))
                    for offer in shells:
                        self.assertEqual(set(offer(command, option, "")) if choices else set(), set(choices))

    @needs("bash")
    def test_bash_offers_what_extensions_have(self):
        named = ("--extension", EXTENSION, "--home", self.home)
        self.assertEqual(self.bash(*named, "render", "Fav"), ["FavoritesWidget"])
        self.assertEqual(self.bash(*named, "add", "--set", "group", "=", "Work", "T"), ["TipsWidget"])
        self.assertEqual(self.bash(*named, "render", "FavoritesWidget", "T"), [])
        self.assertEqual(self.bash("render", "-o", str(PROJECT / "READ")), [str(PROJECT / "README.md")])
