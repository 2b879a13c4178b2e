"""The web client against a real server, in a process like the extension's."""

import os
import resource
import socket
import subprocess
import tempfile
import time
import unittest
from pathlib import Path

from https_server import Authority, HttpsServer, Peer, body, cut, drip, flood, forever, gzip_bomb, gzipped, hang, redirect, stall, until_the_end

PROBE = Path(os.environ["PROGRAMS"]).parent / "tests" / "web_client_probe"
SANITIZED = bool(os.environ.get("SANITIZED"))
MIB = 1 << 20
TOO_LARGE = "the body is larger than 16 MiB"


def setUpModule():
    folder = tempfile.TemporaryDirectory()
    unittest.addModuleCleanup(folder.cleanup)
    global authority
    authority = Authority(folder.name)


class Probe:
    """Downloads addresses in a process of its own."""

    def __init__(self, addresses, variables, timeouts, input):
        command = [str(part) for part in (PROBE, *timeouts, *addresses)]
        self.process = subprocess.Popen(command, stdin=input, stdout=subprocess.PIPE, env=variables)

    def answers(self):
        """The bodies, as bytes, and the errors, as texts, in the order of the addresses; and the resident memory."""
        answers = []
        with self.process:
            for line in self.process.stdout:
                kind, _, rest = line.rstrip(b"\n").partition(b" ")
                if kind == b"resident":
                    resident = int(rest)
                else:
                    answers.append(self.process.stdout.read(int(rest)) if kind == b"body" else rest.decode())
        assert self.process.returncode == 0, self.process.returncode
        return answers, resident


class WebClientTest(unittest.TestCase):
    def setUp(self):
        home = tempfile.TemporaryDirectory()
        self.addCleanup(home.cleanup)
        self.home = Path(home.name)
        self.server = self.start(HttpsServer(authority))
        self.pages = self.server.pages

    def start(self, server):
        server.__enter__()
        self.addCleanup(server.__exit__)
        return server

    def probe(self, *addresses, silence=30_000, total=60_000, end=500, input=subprocess.PIPE, trusted=True, **variables):
        """The timeouts are in milliseconds."""
        trust = {"SSL_CERT_FILE": str(authority.file)} if trusted else {}
        return Probe(addresses, {"HOME": str(self.home), **trust, **variables}, (silence, total, end), input)

    def get(self, address, **more):
        """The body or the error's text. A path alone is one of the server."""
        if address.startswith("/"):
            address = self.server.address(address)
        (answer,), self.resident = self.probe(address, **more).answers()
        return answer


class Answers(WebClientTest):
    def test_bodies_arrive_whatever_the_status(self):
        for status in (200, 203, 304, 404, 410, 500, 503):
            self.pages[f"/{status}"] = body(b"\0body\n" * 1000, status=status)
        self.pages["/204"] = body(b"", status=204)
        self.pages["/empty"] = body(b"")
        self.pages["/unmarked"] = until_the_end(b"as long as it is")
        for path in self.pages:
            expected = {"/304": b"", "/204": b"", "/empty": b"", "/unmarked": b"as long as it is"}.get(path, b"\0body\n" * 1000)
            self.assertEqual(self.get(path), expected, path)
        self.assertEqual(self.get("/missing"), b"not here")

    def test_requests_say_nothing_of_their_own(self):
        path = "/2/feed.php?product=A&lang=de"
        self.pages[path] = body(b"feed")
        self.assertEqual(self.get(path), b"feed")
        request, = self.server.requests
        host = ("Host", f"localhost:{self.server.port}")
        self.assertEqual(request.headers, (host, ("Accept", "*/*"), ("Accept-Encoding", "gzip, deflate")))

    def test_nothing_is_kept_on_the_disk(self):
        self.pages["/"] = body(b"feed", Set_Cookie="a=b; Max-Age=1000", Strict_Transport_Security="max-age=1000",
                               Alt_Svc='h2="localhost:1"; ma=1000')
        self.assertEqual(self.get("/"), b"feed")
        self.assertEqual(list(self.home.iterdir()), [])

    def test_encodings_are_taken_off(self):
        content = b"<item/>" * 10_000
        self.pages["/gzip"] = gzipped(content)
        self.pages["/broken"] = body(b"\x1f\x8b\x08 this is no gzip", Content_Encoding="gzip")
        self.pages["/strange"] = body(content, Content_Encoding="strange")
        self.assertEqual(self.get("/gzip"), content)
        self.assertRegex(self.get("/broken"), "^Error while processing content unencoding")
        self.assertRegex(self.get("/strange"), "^Unrecognized content encoding type")

    def test_redirects_are_followed_within_https(self):
        self.pages["/0"] = body(b"arrived")
        for i in range(1, 22):
            self.pages[f"/{i}"] = redirect(f"/{i - 1}", status=(301, 302, 303, 307, 308)[i % 5])
        self.pages["/absolute"] = redirect(self.server.address("/0"))
        self.pages["/loop"] = redirect("/loop")
        self.pages["/nowhere"] = body(b"the body of a redirect", status=302)
        for path in ("/20", "/absolute"):
            self.assertEqual(self.get(path), b"arrived", path)
        for path in ("/21", "/loop"):
            self.assertEqual(self.get(path), "Maximum (20) redirects followed", path)
        self.assertEqual(self.get("/nowhere"), b"the body of a redirect")
        for address in (f"http://localhost:{self.server.port}/0", "ftp://localhost/0", "file:///etc/passwd"):
            self.pages["/out"] = redirect(address)
            refused = f'^Protocol "{address.partition(":")[0]}" .*disabled'
            self.assertRegex(self.get("/out"), refused)
            self.assertRegex(self.get(address), refused)

    def test_sixteen_mebibytes_are_the_most(self):
        self.pages["/most"] = body(bytes(16 * MIB))
        self.assertEqual(self.get("/most"), bytes(16 * MIB))
        self.pages["/more"] = body(bytes(16 * MIB + 1))
        self.pages["/announced"] = stall(b"x", 16 * MIB + 1)
        self.pages["/flood"] = flood(100_000_000)
        self.pages["/bomb"] = gzip_bomb(200 * MIB)
        for path, most in (("/more", 16), ("/announced", 16), ("/flood", 64), ("/bomb", 64)):
            self.assertEqual(self.get(path), TOO_LARGE, path)
            if not SANITIZED:
                self.assertLess(self.resident, most * MIB, path)

    def test_what_is_cut_short_is_no_answer(self):
        self.pages["/"] = cut(b"half", 8)
        # By the length that was announced, or by the end of the encryption, whichever libcurl sees first.
        self.assertRegex(self.get("/"), "4 bytes remaining|unexpected eof")

    def test_whoever_is_not_there_does_not_answer(self):
        with socket.create_server(("127.0.0.1", 0)) as free:
            port = free.getsockname()[1]
        self.assertRegex(self.get(f"https://localhost:{port}/"), f"^Failed to connect to localhost port {port}")
        self.assertEqual(self.get("https://absent.example/"), "Could not resolve host: absent.example")

    def test_many_are_loaded_side_by_side(self):
        for i in range(40):
            self.pages[f"/{i}"] = drip([b"%d" % i] * 5, .2)
        start = time.monotonic()
        answers, _ = self.probe(*(self.server.address(f"/{i}") for i in range(40))).answers()
        self.assertEqual(answers, [b"%d" % i * 5 for i in range(40)])
        self.assertLess(time.monotonic() - start, 20)

    def test_a_machine_without_the_library_says_so(self):
        (self.home / "libcurl.so.4").touch()
        self.assertEqual(self.get("/", LD_LIBRARY_PATH=str(self.home)), "libcurl.so.4 cannot be loaded")

    @unittest.skipIf(SANITIZED, "sanitizers have memory of their own")
    def test_little_memory_is_left_in_use(self):
        self.pages["/"] = body(bytes(3_000_000))
        self.get("/")
        self.assertLess(self.resident, 16 * MIB)


class Trust(WebClientTest):
    def setUp(self):
        super().setUp()
        self.pages["/"] = body(b"feed")
        strange = self.home / "strange"
        strange.mkdir()
        self.stranger = Authority(strange)

    def test_servers_prove_who_they_are(self):
        unknown = "SSL certificate problem: unable to get local issuer certificate"
        missing = str(self.home / "missing")
        ours, strangers = authority, self.stranger
        rows = [({"SSL_CERT_FILE": ours.file}, b"feed"), ({"SSL_CERT_DIR": ours.folder}, b"feed"),
                ({"SSL_CERT_FILE": ours.file, "SSL_CERT_DIR": strangers.folder}, b"feed"),
                ({"SSL_CERT_FILE": strangers.file, "SSL_CERT_DIR": ours.folder}, b"feed"),
                ({"SSL_CERT_FILE": ours.file, "SSL_CERT_DIR": missing}, b"feed"),
                ({"SSL_CERT_DIR": f"{missing}:{ours.folder}", "SSL_CERT_FILE": ""}, b"feed"),
                ({}, unknown), ({"SSL_CERT_FILE": "", "SSL_CERT_DIR": ""}, unknown),
                ({"SSL_CERT_FILE": strangers.file}, unknown), ({"SSL_CERT_DIR": strangers.folder}, unknown)]
        for variables, expected in rows:
            variables = {name: str(value) for name, value in variables.items()}
            self.assertEqual(self.get("/", trusted=False, **variables), expected, variables)
        self.assertRegex(self.get("/", trusted=False, SSL_CERT_FILE=missing), "^error setting certificate file: ")

    def test_a_certificate_is_good_for_its_name_alone(self):
        other = self.start(HttpsServer(authority, names=["other.example"]))
        other.pages["/"] = body(b"feed")
        self.assertRegex(self.get(other.address("/")), "^SSL: no alternative certificate subject name matches .*'localhost'$")
        self.assertEqual(self.get("https://other.example/", https_proxy=other.proxy), b"feed")
        self.assertRegex(self.get("https://feeds.example/", https_proxy=other.proxy), "'feeds.example'$")
        self.assertEqual([request.host for request in other.requests], ["other.example"])


class Proxies(WebClientTest):
    def test_proxies_are_those_of_the_variables(self):
        self.pages["/"] = body(b"feed")
        feed, own, proxy = "https://feeds.example/", self.server.address("/"), self.server.proxy
        rows = [(feed, {"https_proxy": proxy}, True), (feed, {"HTTPS_PROXY": proxy}, True), (feed, {"all_proxy": proxy}, True),
                (own, {"https_proxy": proxy}, True), (own, {"https_proxy": proxy, "no_proxy": "a.example,localhost"}, False),
                (own, {"https_proxy": proxy, "NO_PROXY": "*"}, False), (own, {"http_proxy": "http://127.0.0.1:1"}, False)]
        for address, variables, proxied in rows:
            self.assertEqual(self.get(address, **variables), b"feed", variables)
            self.assertEqual(self.server.requests.pop().proxied, proxied, variables)

    def test_a_proxy_that_is_not_there_is_not_passed_by(self):
        self.pages["/"] = body(b"feed")
        self.assertRegex(self.get("/", https_proxy="http://127.0.0.1:1"), "^Failed to connect to 127.0.0.1 port 1 ")
        self.assertEqual(self.get("/", https_proxy="http://absent.example:1"), "Could not resolve proxy: absent.example")


HEAD = b"HTTP/1.1 200 OK\r\n"
CHUNKED = HEAD + b"Transfer-Encoding: chunked\r\n\r\n1\r\nx\r\n0\r\n"
FIELD = b"Field: " + b"x" * 1000 + b"\r\n"
REFUSAL = b"HTTP/1.1 407 Proxy Authentication Required\r\n"
SILENCE = "^Timed out waiting for data$|^Connection timed out|^Resolving timed out|^Proxy CONNECT aborted|^SSL connection timeout|^Received HTTP code 407|Timeout was reached$"
# Newer versions of the library have bounds of their own, on the number of headers.
TOO_MUCH = "^the headers are larger than 256 KiB$|^Too many response headers"


class Bounds(WebClientTest):
    """Whatever a server, a proxy or the network does, it comes to an end."""

    def page(self, page):
        """Where the server shows this page, with the variables that it takes to get there."""
        path = f"/{len(self.pages)}"
        self.pages[path] = page
        return self.server.address(path), {}

    def proxy(self, *said, seconds=None):
        """The same, by a proxy that says these pieces one after the other, the last again and again unless it is to pause for ever."""
        def talk(connection, pause):
            connection.recv(1000)
            for piece in said:
                connection.sendall(piece)
            while not pause(seconds):
                connection.sendall(said[-1])
        return "https://feeds.example/", {"https_proxy": f"http://127.0.0.1:{self.start(Peer(talk)).port}"}

    def silent(self):
        mute = self.start(Peer(lambda _, pause: pause()))
        # One that nobody answers for: the first connections fill its queue.
        deaf = socket.create_server(("127.0.0.1", 0), backlog=0)
        self.addCleanup(deaf.close)
        for _ in range(2):
            waiting = socket.socket()
            waiting.setblocking(False)
            waiting.connect_ex(deaf.getsockname())
            self.addCleanup(waiting.close)
        return {"name": ("https://silent.example/", {}), "proxy's name": ("https://a.example/", {"https_proxy": "http://silent.example:1"}),
                "network": (f"https://127.0.0.1:{deaf.getsockname()[1]}/", {}), "TLS": (f"https://localhost:{mute.port}/", {}),
                "proxy": self.proxy(), "TLS through a proxy": self.proxy(HEAD + b"\r\n"), "refusal": self.proxy(REFUSAL),
                "SOCKS proxy": ("https://localhost/", {"all_proxy": f"socks5://127.0.0.1:{mute.port}"}),
                "server": self.page(hang()), "header": self.page(forever(HEAD + b"Fie", b"", 60)), "body": self.page(stall(b"a", 2)),
                "redirect": self.page(redirect(f"https://localhost:{mute.port}/")), "trailer": self.page(forever(CHUNKED, b"", 60))}

    def dripping(self):
        slow = drip([b"x"] * 1000, .2)

        def slow_redirect(handler):
            handler.pause(.4)
            redirect(handler.path)(handler)
        return {"headers": self.page(forever(HEAD, b"A: b\r\n", .2)), "body": self.page(slow), "redirects": self.page(slow_redirect),
                "trailers": self.page(forever(CHUNKED, b"A: b\r\n", .2)), "proxy": self.proxy(HEAD, b"A: b\r\n", seconds=.2)}

    def endless(self):
        last = b"Location: /\r\nTransfer-Encoding: chunked\r\n\r\n"
        many = self.page(lambda handler: handler.wfile.write(b"HTTP/1.1 302 Found\r\nContent-Length: 0\r\n" + FIELD * 15
                                                             + b"Location: " + handler.path.encode() + b"\r\n\r\n"))
        return {"headers": (*self.page(forever(HEAD, FIELD)), TOO_MUCH), "redirects' headers": (*many, TOO_MUCH),
                "interim answers": (*self.page(forever(b"", b"HTTP/1.1 103 Early Hints\r\nA: b\r\n\r\n")), TOO_MUCH),
                "trailers": (*self.page(forever(CHUNKED, FIELD)), TOO_MUCH),
                "header": (*self.page(forever(HEAD + b"A: ", b"x" * 1000)), "(?i)memory|too large|larger|header"),
                "redirect's body": (*self.page(forever(b"HTTP/1.1 302 Found\r\n" + last, b"1000\r\n" + b"x" * 4096 + b"\r\n")), TOO_LARGE),
                "proxy's headers": (*self.proxy(HEAD, FIELD, seconds=0), TOO_MUCH),
                "proxy's refusal": (*self.proxy(REFUSAL + b"\r\n", FIELD, seconds=0), "^Received HTTP code 407 from proxy after CONNECT$"),
                "proxy's chunks": (*self.proxy(REFUSAL + last, b"1\r\nx\r\n", seconds=0), "^Received HTTP code 407 from proxy after CONNECT$")}

    def check(self, rows, least, most, timeouts):
        """All side by side: each has the error that is expected, in time, and takes little memory."""
        start = time.monotonic()
        probes = {what: self.probe(address, **timeouts, **variables) for what, (address, variables, _) in rows.items()}
        for what, probe in probes.items():
            (error,), resident = probe.answers()
            self.assertRegex(error, rows[what][2], what)
            self.assertTrue(least < time.monotonic() - start < most, what)
            if not SANITIZED:
                self.assertLess(resident, 64 * MIB, what)

    def test_who_makes_progress_is_waited_for(self):
        self.pages["/"] = drip([b"x" * 100] * 8, .3)
        self.assertEqual(self.get("/", silence=1500, total=20_000), b"x" * 800)

    def test_who_makes_none_is_given_up(self):
        self.check({what: (*row, SILENCE) for what, row in self.silent().items()}, .9, 12, {"silence": 1000})

    def test_who_takes_too_long_is_given_up(self):
        self.check({what: (*row, "^Timed out$") for what, row in self.dripping().items()}, 1.9, 12, {"silence": 5000, "total": 2000})

    def test_who_sends_too_much_is_given_up(self):
        self.check(self.endless(), 0, 20, {})

    def test_the_end_of_the_input_leaves_time_to_finish(self):
        self.pages["/"] = drip([b"x"] * 5, .1)
        for input in (subprocess.PIPE, subprocess.DEVNULL):
            probe = self.probe(self.server.address("/"), input=input, end=20_000)
            if input == subprocess.PIPE:
                self.until_asked(1)
                probe.process.stdin.close()
            self.assertEqual(probe.answers()[0], [b"xxxxx"])

    def test_and_no_more_at_any_moment(self):
        rows = {**self.silent(), **self.dripping()}
        probes = [self.probe(address, **variables) for address, variables in rows.values()]
        self.until_asked(4)
        time.sleep(1)
        start = time.monotonic()
        for probe in probes:
            probe.process.stdin.close()
        for what, probe in zip(rows, probes):
            self.assertEqual(probe.answers()[0], ["cancelled"], what)
            self.assertLess(time.monotonic() - start, 2, what)
        self.assertEqual(self.probe("https://silent.example/", end=0, input=subprocess.DEVNULL).answers()[0], ["cancelled"])

    @unittest.skipIf(SANITIZED, "sanitizers need time of their own")
    def test_waiting_costs_nothing(self):
        self.pages["/"] = hang()
        before = resource.getrusage(resource.RUSAGE_CHILDREN)
        self.assertEqual(self.get("/", input=subprocess.DEVNULL, end=1500), "cancelled")
        after = resource.getrusage(resource.RUSAGE_CHILDREN)
        self.assertLess(after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime, .7)

    def until_asked(self, count):
        deadline = time.monotonic() + 20
        while len(self.server.requests) < count and time.monotonic() < deadline:
            time.sleep(.01)


if __name__ == "__main__":
    unittest.main()
