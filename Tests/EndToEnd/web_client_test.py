"""The web client with a real server, in a process of its own."""

import gzip
import os
import socket
import subprocess
import tempfile
import time
import unittest
from pathlib import Path

from https_server import Authority, HttpsServer, Server, body, drip, forever, redirect
from support import SANITIZED, wait_until

PROBE = Path(os.environ["TEST_PROGRAMS"]) / "web_client_probe"
MIB = 1 << 20
# More than the largest body takes. Sanitizers need more than that.
MEMORY = () if SANITIZED else ("prlimit", f"--data={96 * MIB}")
TOO_LARGE = "^the body is larger than 16 MiB$"
AUTHORITY = Authority()
HEAD = b"HTTP/1.1 200 OK\r\n"
CHUNKED = HEAD + b"Transfer-Encoding: chunked\r\n\r\n1\r\nx\r\n0\r\n"
FIELD = b"Field: " + b"x" * 1000 + b"\r\n"
REFUSAL = b"HTTP/1.1 407 Proxy Authentication Required\r\n"
SILENCE = "^Timed out waiting for data$|^Connection timed out|^Resolving timed out|^Proxy CONNECT aborted|^SSL connection timeout|^Received HTTP code 407|Timeout was reached$"
# Newer versions of the library have bounds of their own, on the number of headers.
TOO_MUCH = "^the headers are larger than 256 KiB$|^Too many response headers"
REFUSED = "^Received HTTP code 407 from proxy after CONNECT$"


class WebClientTest(unittest.TestCase):
    def setUp(self):
        self.home = Path(self.enterContext(tempfile.TemporaryDirectory()))
        self.server = self.enterContext(HttpsServer(AUTHORITY))
        self.pages = self.server.pages

    def probe(self, address, silence=30_000, total=60_000, end=500, input=subprocess.PIPE, **variables):
        """Downloads an address, or a path of the server. The timeouts are in milliseconds."""
        address = self.server.address(address) if address.startswith("/") else address
        command = [str(part) for part in (*MEMORY, PROBE, silence, total, end, address)]
        trust = {} if any(name.startswith("SSL_CERT") for name in variables) else {"SSL_CERT_FILE": str(AUTHORITY.file)}
        return subprocess.Popen(command, stdin=input, stdout=subprocess.PIPE, env={"HOME": str(self.home), **trust, **variables})

    def result(self, probe):
        """The body, or the error's text."""
        with probe:
            kind, _, result = probe.stdout.read().partition(b" ")
        self.assertEqual(probe.returncode, 0)
        return result if kind == b"body" else result.decode()

    def expect(self, expected, address, **more):
        """Requires a body, or an error that matches a pattern."""
        result = self.result(self.probe(address, **more))
        if isinstance(expected, bytes):
            self.assertTrue(result == expected, (address, more, result[:100]))
        else:
            self.assertIsInstance(result, str)
            self.assertRegex(result, expected)

    def test_pages(self):
        content, refused = b"\0body\n" * 1000, '^Protocol "{}" .*disabled'
        rows = {f"/{status}": (body(content, status=status), content) for status in (200, 203, 404, 410, 500, 503)}
        rows |= {f"/redirect{i}": (redirect(f"/redirect{i - 1}" if i else "/200", status=(301, 302, 303, 307, 308)[i % 5]), content) for i in range(20)}
        rows |= {"/304": (body(content, status=304), b""), "/empty": (body(b""), b""), "/nowhere": (body(b"a redirect's", status=302), b"a redirect's"),
                 "/absolute": (redirect(self.server.address("/200")), content), "/gzip": (body(gzip.compress(content), Content_Encoding="gzip"), content),
                 "/broken": (body(b"\x1f\x8b\x08 this is no gzip", Content_Encoding="gzip"), "^Error while processing content unencoding"),
                 "/strange": (body(content, Content_Encoding="strange"), "^Unrecognized content encoding type"),
                 "/long": (redirect("/redirect19"), "^Maximum .20. redirects followed"), "/loop": (redirect("/loop"), "^Maximum .20. redirects followed"),
                 "/http": (redirect(f"http://localhost:{self.server.port}/200"), refused.format("http")), "/ftp": (redirect("ftp://localhost/"), refused.format("ftp")),
                 "/file": (redirect("file:///etc/passwd"), refused.format("file")), "/max": (body(bytes(16 * MIB)), bytes(16 * MIB)),
                 "/more": (body(bytes(16 * MIB + 1)), TOO_LARGE),
                 "/announced": (forever(HEAD + b"Content-Length: %d\r\n\r\nx" % (16 * MIB + 1)), TOO_LARGE),
                 "/flood": (forever(HEAD + b"Connection: close\r\n\r\n", bytes(1 << 16)), TOO_LARGE),
                 "/bomb": (body(gzip.compress(bytes(100 * MIB)), Content_Encoding="gzip"), TOO_LARGE),
                 # By the announced length, or by the end of the encryption, whichever libcurl sees first.
                 "/cut": (body(b"half", Content_Length=8, Connection="close"), "4 bytes remaining|unexpected eof")}
        self.pages.update({path: page for path, (page, _) in rows.items()})
        for path, (_, expected) in rows.items():
            with self.subTest(path):
                self.expect(expected, path)
        for address, error in (("http://localhost/", refused.format("http")), ("file:///etc/passwd", refused.format("file")),
                               ("https://absent.example/", "^Could not resolve host: absent.example$"), ("https://127.0.0.1:1/", "^Failed to connect to 127.0.0.1 port 1")):
            self.expect(error, address)
        self.assertEqual(self.server.requests[0].headers,
                         (("Host", f"localhost:{self.server.port}"), ("Accept", "*/*"), ("Accept-Encoding", "gzip, deflate")))
        self.assertEqual(list(self.home.iterdir()), [])
        (self.home / "libcurl.so.4").touch()
        self.expect("^libcurl.so.4 cannot be loaded$", "/", LD_LIBRARY_PATH=str(self.home))

    def test_certificates(self):
        self.pages["/"] = body(b"feed")
        ours, stranger, missing = AUTHORITY, Authority(), str(self.home / "missing")
        unknown = "^SSL certificate problem: unable to get local issuer certificate$"
        rows = [({"SSL_CERT_FILE": ours.file}, b"feed"), ({"SSL_CERT_DIR": ours.folder}, b"feed"),
                ({"SSL_CERT_FILE": ours.file, "SSL_CERT_DIR": stranger.folder}, b"feed"),
                ({"SSL_CERT_FILE": stranger.file, "SSL_CERT_DIR": ours.folder}, b"feed"),
                ({"SSL_CERT_FILE": ours.file, "SSL_CERT_DIR": missing}, b"feed"),
                ({"SSL_CERT_DIR": f"{missing}:{ours.folder}", "SSL_CERT_FILE": ""}, b"feed"),
                ({"SSL_CERT_FILE": "", "SSL_CERT_DIR": ""}, unknown), ({"SSL_CERT_FILE": stranger.file}, unknown),
                ({"SSL_CERT_DIR": stranger.folder}, unknown), ({"SSL_CERT_FILE": missing}, "^error setting certificate file: ")]
        for variables, expected in rows:
            with self.subTest(variables):
                self.expect(expected, "/", **{name: str(value) for name, value in variables.items()})
        other = self.enterContext(HttpsServer(AUTHORITY, names=["other.example"]))
        other.pages["/"] = body(b"feed")
        self.expect("^SSL: no alternative certificate subject name matches .*'localhost'$", other.address("/"))
        self.expect(b"feed", "https://other.example/", https_proxy=other.proxy)
        self.expect("'feeds.example'$", "https://feeds.example/", https_proxy=other.proxy)
        self.assertEqual([request.host for request in other.requests], ["other.example"])

    def page(self, page):
        """The address of this page, and the variables that lead there."""
        path = f"/{len(self.pages)}"
        self.pages[path] = page
        return self.server.address(path), {}

    def proxy(self, *pieces, seconds=None):
        """The same, by a proxy that sends these pieces, and the last one again and again unless `seconds` is None."""
        def talk(connection, _, server):
            connection.recv(1000)
            for piece in pieces:
                connection.sendall(piece)
            while not server.stopping.wait(seconds):
                connection.sendall(pieces[-1])
        return "https://feeds.example/", {"https_proxy": f"http://127.0.0.1:{self.enterContext(Server(talk)).port}"}

    def silent(self):
        mute = self.enterContext(Server(lambda _connection, _address, server: server.stopping.wait()))
        # Nobody accepts: the first connections fill its queue.
        deaf = socket.create_server(("127.0.0.1", 0), backlog=0)
        self.addCleanup(deaf.close)
        for _ in range(2):
            waiting = socket.socket()
            waiting.setblocking(False)
            waiting.connect_ex(deaf.getsockname())
            self.addCleanup(waiting.close)
        return {"name": ("https://silent.example/", {}), "proxy's name": ("https://a.example/", {"https_proxy": "http://silent.example:1"}),
                "network": (f"https://127.0.0.1:{deaf.getsockname()[1]}/", {}), "TLS": (f"https://localhost:{mute.port}/", {}),
                "proxy": self.proxy(b""), "TLS through a proxy": self.proxy(HEAD + b"\r\n"), "refusal": self.proxy(REFUSAL),
                "SOCKS proxy": ("https://localhost/", {"all_proxy": f"socks5://127.0.0.1:{mute.port}"}),
                "server": self.page(forever()), "header": self.page(forever(HEAD + b"Fie")), "body": self.page(forever(HEAD + b"Content-Length: 2\r\n\r\na")),
                "redirect": self.page(redirect(f"https://localhost:{mute.port}/")), "trailer": self.page(forever(CHUNKED))}

    def dripping(self):
        def slow_redirect(handler):
            handler.pause(.4)
            redirect(handler.path)(handler)
        return {"headers": self.page(forever(HEAD, b"A: b\r\n", .2)), "body": self.page(drip([b"x"] * 1000, .2)), "redirects": self.page(slow_redirect),
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
                "proxy's refusal": (*self.proxy(REFUSAL + b"\r\n", FIELD, seconds=0), REFUSED),
                "proxy's chunks": (*self.proxy(REFUSAL + last, b"1\r\nx\r\n", seconds=0), REFUSED)}

    def check(self, rows, earliest, latest, **timeouts):
        """All side by side: each has the expected error, in time."""
        start = time.monotonic()
        probes = {name: self.probe(address, **timeouts, **variables) for name, (address, variables, _) in rows.items()}
        for name, probe in probes.items():
            self.assertRegex(self.result(probe), rows[name][2], name)
            self.assertTrue(earliest < time.monotonic() - start < latest, name)

    def test_every_download_ends(self):
        """Even if a server, a proxy or the network stays silent or never stops."""
        self.pages["/progress"] = drip([b"x" * 100] * 8, .3)
        self.expect(b"x" * 800, "/progress", silence=1500, total=20_000)
        self.check({name: (*row, SILENCE) for name, row in self.silent().items()}, .9, 12, silence=1000)
        self.check({name: (*row, "^Timed out$") for name, row in self.dripping().items()}, 1.9, 12, silence=5000, total=2000)
        self.check(self.endless(), 0, 20)

    def test_the_end_of_the_input(self):
        """What takes no longer than the time that is left is finished, the rest is cancelled."""
        self.pages["/short"] = drip([b"x"] * 5, .1)
        self.expect(b"xxxxx", "/short", input=subprocess.DEVNULL, end=20_000)
        rows = {**self.silent(), **self.dripping()}
        probes = [self.probe(address, **variables) for address, variables in rows.values()]
        wait_until(lambda: len(self.server.requests) >= 4, "the requests")
        start = time.monotonic()
        for probe in probes:
            probe.stdin.close()
        for name, probe in zip(rows, probes):
            self.assertEqual(self.result(probe), "cancelled", name)
            self.assertLess(time.monotonic() - start, 10, name)
        self.expect("^cancelled$", "https://silent.example/", end=0, input=subprocess.DEVNULL)
