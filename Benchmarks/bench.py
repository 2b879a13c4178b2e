"""Measures the programs beside their peers and prints the table of ratios.

Every row is measured in this run, ours and the peer's by turns, and shows medians. Run by scripts/bench, which builds what
this needs; as root it gives the programs a home with a made-up library by a private mount of the user database, else by
nss_wrapper for both sides.
"""

import json
import os
import platform
import plistlib
import statistics
import subprocess
import sys
import threading
import time
from datetime import datetime
from pathlib import Path

PROJECT = Path(__file__).resolve().parent.parent
sys.path.append(str(PROJECT / "Tests" / "EndToEnd"))
os.environ.update(PROGRAMS=str(PROJECT / "build" / "bin"), TEST_PROGRAMS=str(PROJECT / "build" / "tests"))

import desktop_measures
import gallery_page
import growth_plot
from growth_plot import Line, Panel
from https_server import Authority, HttpsServer, body
from libraries import blog, favourites, reading_list

BUILD = PROJECT / "build"
PROGRAMS, BENCHMARKS = BUILD / "bin", BUILD / "benchmarks"
EXTENSION, HOST = PROGRAMS / "foliovault-widgets", PROGRAMS / "widgethost"
PEERS = PROJECT / "Benchmarks"
HOME = BUILD / "bench-home"
LIBRARY = HOME / "Library" / "Application Support" / "FOLIOvault"
FAVORITES = LIBRARY / "Favorites.plist"
READING_LIST = LIBRARY / "ReadingList.plist"
CACHE = HOME / "Caches" / "tips_cache.json"
PYTHON = "/usr/bin/python3"
GROWTH = PROJECT / "Documentation" / "growth.svg"
FORMS = {"binary": plistlib.FMT_BINARY, "XML": plistlib.FMT_XML}


def request(kind):
    return json.dumps({"jsonrpc": "2.0", "id": 1, "method": "timeline", "params": {
        "kind": kind, "configuration": {}, "environment": {"family": "large"}}})


REQUEST = request("FavoritesWidget")


def write(root, form, file=FAVORITES):
    file.write_bytes(plistlib.dumps(root, fmt=FORMS[form], sort_keys=False))


def run(*command):
    done = subprocess.run([str(part) for part in command], capture_output=True, check=False)
    if done.returncode != 0:
        sys.exit(f"{command[0]} failed: {done.stderr.decode()}")
    return done.stdout


def measured(*command):
    return json.loads(run(*command))


def milliseconds(seconds):
    """To three digits, but in full where there are more before the point."""
    value = seconds * 1e3
    return f"{value:.3g} ms" if value < 1000 else f"{value:.0f} ms"


class Table:
    def __init__(self):
        self.missed = 0

    def row(self, what, ours, peer, target):
        ratio = ours / peer
        verdict = "" if ratio <= target else " (missed)"
        self.missed += bool(verdict)
        print(f"| {what} | {milliseconds(ours)} | {milliseconds(peer)} | {ratio:.3f} | {target:.3g}{verdict} |", flush=True)


def reading(table, rounds):
    lists = (("favourites", favourites, FAVORITES, "FavoritesWidget"), ("reading-list", reading_list, READING_LIST, "ReadingListWidget"))
    for name, make, file, kind in lists:
        root = make(20_000)
        for form, every, whole in (("binary", 1 / 3, .2), ("XML", 1 / 3, .2)):
            write(root, form, file)
            size = file.stat().st_size / 1e6
            times = measured(BENCHMARKS / "reading_benchmark", name, file, rounds)
            entries = f"20,000 {name} entries, {size:.0f} MB {form}"
            table.row(f"`readFromPlist`, {entries}, over libplist", times["everyRecord"], times["libplist"], every)
            times = measured(BENCHMARKS / "start_benchmark", max(3, rounds // 2), request(kind), EXTENSION, "--", PYTHON, PEERS / "peer_timeline.py", file)
            table.row("a whole `timeline` from start, the same, over Python's plistlib", times["ours"], times["peer"], whole)


def feed(table, rounds):
    file = BUILD / "bench-feed.xml"
    file.write_text(blog(1000), encoding="utf-8")
    times = measured(BENCHMARKS / "feed_benchmark", file, rounds * 4)
    table.row(f"the tips of a feed of 1,000 items, {file.stat().st_size / 1e6:.1f} MB, over expat with empty handlers", times["tips"], times["expat"], 2.5)
    peer = float(run(PYTHON, PEERS / "peer_feed.py", file, max(3, rounds // 3)))
    table.row("the same over Python's feedparser", times["tips"], peer, 1 / 30)


def starting(table, rounds):
    write(favourites(16), "binary")
    times = measured(BENCHMARKS / "start_benchmark", rounds * 40, REQUEST, EXTENSION, "--", BENCHMARKS / "plain_program")
    table.row("start to first `timeline`, 16 favourites, over a plain C++ program", times["ours"], times["peer"], 1.3)


def starting_confined(table, rounds):
    write(favourites(16), "binary")
    # Where the programs know the home by the wrapper, the host passes it on.
    home = [HOME] if "NSS_WRAPPER_PASSWD" in os.environ else []
    times = measured(BENCHMARKS / "confinement_benchmark", rounds * 40, EXTENSION, "FavoritesWidget", *home)
    table.row("start to first answer by the host, confined, over not confined", times["ours"], times["peer"], 1.3)


def reloading(table, rounds):
    example = BUILD / "bench-example"
    run("rm", "-rf", example)
    run("cp", "-r", PROJECT / "Resources" / "Example", example)
    times = measured(BENCHMARKS / "reload_benchmark", rounds * 20, EXTENSION, example)
    table.row("a reload of four tiles, from the extension's start to display lists, over `python3 -c pass`", times["ours"], times["python"], .7)


def starting_with_tips(table, rounds):
    write(favourites(16), "binary")
    long_ago = -(datetime(2001, 1, 1) - datetime(2200, 1, 1)).total_seconds()
    tip = {"title": "Let a smart rule file your invoices", "description": "Name the sender once, and every invoice is filed. " * 12,
           "link": "https://www.foliovault.example/blog/invoices", "pubDate": 794_000_000.5, "guid": "invoices"}
    CACHE.write_text(json.dumps({"timestamp": long_ago, "tips": [tip] * 50}))
    both = request("TipsWidget") + "\n" + REQUEST
    times = measured(BENCHMARKS / "start_benchmark", rounds * 40, both, EXTENSION, "--", EXTENSION)
    table.row("start to first `timeline` of 50 cached tips, with a date by ICU, over that of 16 favourites", times["ours"], times["peer"], 3)
    CACHE.unlink()


def warm(table, rounds):
    for count, target in ((16, .5), (1000, .2)):
        write(favourites(count), "binary")
        times = measured(BENCHMARKS / "line_benchmark", rounds * 40, REQUEST, EXTENSION, "--", PYTHON, PEERS / "peer_timeline.py", FAVORITES, "--loop")
        table.row(f"a warm `timeline`, {count:,} favourites with icons, over Python's loop", times["ours"], times["peer"], target)


def example_host():
    """The host's command line, to show the widgets of the example library."""
    example = BUILD / "bench-example"
    run("rm", "-rf", example)
    run("cp", "-r", PROJECT / "Resources" / "Example", example)
    return HOST, "--extension", EXTENSION, "--home", example


def drawing(table, rounds):
    host = example_host()
    entry, frames = BUILD / "bench-entry.json", BUILD / "bench-frames.json"
    for form, file in (("tree", entry), ("frames", frames)):
        run(*host, "render", "FavoritesWidget", "--family", "large", "--format", form, "-o", file)
    times = measured(BENCHMARKS / "drawing_benchmark", "picture", entry, rounds * 20)
    table.row("one large picture with its PNG, scale 2, over plain Pango, Cairo and its PNG writer", times["picture"], times["plainPicture"], .5)
    drawn = measured(BENCHMARKS / "drawing_benchmark", "drawing", entry, rounds * 20)["drawing"]
    peer = float(run(PYTHON, PEERS / "peer_drawing.py", frames, rounds * 20))
    table.row("the same drawing without PNG, again and again, over pycairo", drawn, peer, .5)


def by_turns(rounds, *commands):
    """The median seconds that each command takes from start to end."""
    times = [[] for _ in commands]
    for _ in range(rounds + 1):
        for command, taken in zip(commands, times):
            start = time.perf_counter()
            run(*command)
            taken.append(time.perf_counter() - start)
    return [statistics.median(taken[1:]) for taken in times]


def gallery(table, rounds):
    host = example_host()
    pictures, frames = BUILD / "bench-gallery", BUILD / "bench-frames"
    for folder in (pictures, frames):
        run("rm", "-rf", folder)
        folder.mkdir()

    def render(kind, family, form):
        return run(*host, "render", kind, "--family", family, "--format", form).decode()
    kinds = [widget["kind"] for widget in json.loads(run(*host, "describe", "--json"))["widgets"]]
    names = [f"{kind}-{family}" for kind in kinds for family in gallery_page.SIZES]
    files = [frames / f"{name}.json" for name in names]
    for name, file in zip(names, files):
        file.write_text(render(*name.split("-"), "frames"), encoding="utf-8")
    page, screenshot = BUILD / "bench-gallery.html", BUILD / "bench-screenshot.png"
    page.write_text(gallery_page.page(kinds, render, PROJECT / "Resources" / "Symbols"), encoding="utf-8")

    ours = (*host, "gallery", "--appearance", "light", "-o", pictures)
    browser = ("chromium", "--headless", "--no-sandbox", "--disable-gpu", "--hide-scrollbars", "--no-first-run", "--disable-background-networking",
               f"--user-data-dir={BUILD / 'bench-chromium'}", "--force-device-scale-factor=2",
               f"--window-size={gallery_page.WIDTH},{gallery_page.height(kinds)}", f"--screenshot={screenshot}", f"file://{page}")
    plain = (PYTHON, PEERS / "peer_drawing.py", "--write", pictures, *files)
    own, shot, drawn = by_turns(rounds, ours, browser, plain)
    for file in (screenshot, *(pictures / f"{name}{which}.png" for name in names for which in ("-light", ""))):
        if file.stat().st_size < 1000:
            sys.exit(f"{file} shows nothing")
    table.row("all 16 pictures from nothing, scale 2, over headless Chromium's screenshot of a page with the same", own, shot, 1 / 12)
    table.row("the same over a Python process that draws and writes them with pycairo", own, drawn, .5)


def downloading(table, rounds):
    item = "<item><title>Tip %d</title><description><![CDATA[" + "<p>What to do &amp; why</p>" * 40 + "]]></description></item>\n"
    with HttpsServer(Authority()) as server:
        server.pages["/feed"] = body("".join(item % i for i in range(2700)).encode())
        times = measured("env", f"SSL_CERT_FILE={server.authority.file}", BENCHMARKS / "download_benchmark", rounds * 4, server.address("/feed"))
    table.row("a download of 3 MB by HTTPS, over libcurl alone", times["ours"], times["libcurl"], 1.1)


class Watched:
    """The extension, and what memory it holds, in MiB."""

    def __init__(self, **variables):
        self.variables = {**os.environ, **variables}

    def __enter__(self):
        self.process = subprocess.Popen([EXTENSION], stdin=subprocess.PIPE, stdout=subprocess.PIPE, env=self.variables)
        self.ask('{"jsonrpc":"2.0","id":0,"method":"previews"}')
        return self

    def __exit__(self, *_):
        self.process.communicate()

    def ask(self, line):
        self.process.stdin.write(line.encode() + b"\n")
        self.process.stdin.flush()
        self.process.stdout.readline()

    def held(self):
        fields = {}
        with open(f"/proc/{self.process.pid}/smaps_rollup", encoding="ascii") as lines:
            for line in lines:
                parts = line.split()
                if parts[-1] == "kB":
                    fields[parts[0].rstrip(":")] = int(parts[1]) / 1024
        return fields

    def peak_while_asking(self, line, times):
        """The most of each kind that it held while it answered."""
        peak, done = {"Private_Dirty": 0, "Rss": 0}, threading.Event()

        def watch():
            while not done.is_set():
                now = self.held()
                for key in peak:
                    peak[key] = max(peak[key], now[key])
        watcher = threading.Thread(target=watch)
        watcher.start()
        for _ in range(times):
            self.ask(line)
        done.set()
        watcher.join()
        return peak


def memory():
    """What the extension holds while it answers from a file of 100 MB, and afterwards."""
    write(favourites(66_000), "binary")
    os.sync()  # what is not on the disk yet would count as dirty
    with Watched() as extension:
        before = extension.held()
        peak = extension.peak_while_asking(REQUEST, 5)
        after = extension.held()
    size = FAVORITES.stat().st_size / 2**20
    print(f"\nMemory of the extension, MiB, with a file of {size:.0f} MiB:\n")
    print("| | before | while answering | afterwards |\n| --- | --- | --- | --- |")
    for key, name in (("Private_Dirty", "private dirty"), ("Rss", "resident")):
        print(f"| {name} | {before[key]:.1f} | {peak[key]:.1f} | {after[key]:.1f} |")


def memory_of_tips():
    """What the extension holds before and after it has downloaded a feed."""
    with HttpsServer(Authority()) as server:
        server.pages["/2/apps/supportmaterials.xml.php?product=FOLIOvault&edition=Pro&version=4&lang=en"] = body(blog(1000).encode())
        with Watched(https_proxy=server.proxy, SSL_CERT_FILE=str(server.authority.file), LANG="C") as extension:
            before = extension.held()
            peak = extension.peak_while_asking(request("TipsWidget"), 1)
            after = extension.held()
        if len(server.requests) != 1:
            sys.exit("no tips were downloaded")
    CACHE.unlink()
    print(f"\nWith a feed of 1,000 items downloaded: {before['Rss']:.1f} MiB resident before, {peak['Rss']:.1f} meanwhile, "
          f"{after['Rss']:.1f} afterwards ({after['Private_Dirty']:.1f} private; at most 16).")


def growth(rounds):
    """Time and memory of a reading list from sixteen entries to a hundred thousand: a table, and a picture of it."""
    print("\nA reading list that grows, an icon with each entry:\n")
    print("| entries | file | `readFromPlist` | per MB of file | private memory of a timeline |\n| --- | --- | --- | --- | --- |")
    every, held, sizes = ({form: {} for form in FORMS} for _ in range(3))
    for form in FORMS:
        for count in (16, 100, 1_000, 10_000, 100_000):
            write(reading_list(count), form, READING_LIST)
            os.sync()
            size = READING_LIST.stat().st_size / 1e6
            times = measured(BENCHMARKS / "reading_benchmark", "reading-list", READING_LIST, rounds)
            with Watched() as extension:
                before = extension.held()["Private_Dirty"]
                peak = extension.peak_while_asking(request("ReadingListWidget"), 5)["Private_Dirty"]
            every[form][count], held[form][count], sizes[form][count] = times["everyRecord"] * 1e3, peak, size * 1e6 / 2**20
            print(f"| {count:,} {form} | {size:.3g} MB | {milliseconds(times['everyRecord'])} | {every[form][count] / size:.3f} ms | +{peak - before:.1f} MiB |", flush=True)
    READING_LIST.unlink()
    blue, orange, grey = "#0b62c4", "#c2570c", "#6e7781"
    GROWTH.write_text(growth_plot.drawn([
        Panel("Time", "ms", [Line(f"every item, {form}", blue, every[form], dashed=form == "XML") for form in FORMS]),
        Panel("Private memory, beside the file", "MiB", [Line(f"{name}, {form}", colour, values[form], dashed=form == "XML")
                                for name, colour, values in (("the file", grey, sizes), ("the extension", orange, held)) for form in FORMS])]),
        encoding="utf-8")


def showing(table, rounds):
    frames = BUILD / "bench-frames.json"
    run(*example_host(), "render", "FavoritesWidget", "--format", "frames", "-o", frames)
    desktop_measures.measure(table, rounds, PROGRAMS, PROJECT, frames, PEERS / "peer_window.py")


def machine():
    with open("/proc/cpuinfo", encoding="ascii") as lines:
        model = next((line.split(":")[1].strip() for line in lines if line.startswith("model name")), platform.machine())
    return f"{os.cpu_count()} × {model}, Linux {platform.release().split('-')[0]}"


def main():
    rounds = 5 if "--quick" in sys.argv else 15
    LIBRARY.mkdir(parents=True, exist_ok=True)
    CACHE.parent.mkdir(exist_ok=True)
    os.environ["XDG_CACHE_HOME"] = str(CACHE.parent)
    print(f"Measured on {machine()}.\n")
    if "--growth" in sys.argv:
        growth(rounds)
        return
    if "--desktop" in sys.argv:
        showing(Table(), rounds)
        return
    print("| what | ours | the peer | ratio | at most |\n| --- | --- | --- | --- | --- |")
    table = Table()
    for part in (reading, feed, downloading, starting, starting_confined, starting_with_tips, reloading, warm, drawing, gallery):
        part(table, rounds)
    showing(table, rounds)
    memory()
    memory_of_tips()
    growth(rounds)
    print(f"\n{table.missed} missed." if table.missed else "\nAll reached.")


if __name__ == "__main__":
    main()
