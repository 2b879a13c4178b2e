"""An HTTPS server on loopback for tests, with certificates of its own making.

    with tempfile.TemporaryDirectory() as folder:
        authority = Authority(Path(folder))
        with HttpsServer(authority) as server:
            server.pages["/feed"] = body(b"<rss/>")
            ... SSL_CERT_FILE=authority.file, server.address("/feed") ...
            ... or https_proxy=server.proxy, and any https://made-up.example/feed ...
            server.requests[0].headers

A page is a function of the request's handler; those below make the usual ones. Every name that is asked for, directly or through
the proxy, has its certificate, unless `names` says which names alone the server has one for. Each connection has a thread.
"""

import http.server
import os
import socket
import socketserver
import ssl
import subprocess
import threading
import zlib
from dataclasses import dataclass
from pathlib import Path


class Authority:
    """Signs certificates for any name. Its own is in `file`, and in `folder` as OpenSSL looks it up there."""

    def __init__(self, work):
        self.work = Path(work)
        self.file = self.work / "authority.pem"
        self.folder = self.work / "authorities"
        self._key = self.work / "authority.key"
        self._openssl("req", "-x509", *self._new_key(self._key), "-out", self.file, "-days", "30",
                      "-subj", f"/CN=Test Authority {os.urandom(8).hex()}")
        self.folder.mkdir()
        name = self._openssl("x509", "-in", self.file, "-noout", "-hash").decode().strip()
        (self.folder / f"{name}.0").write_bytes(self.file.read_bytes())
        self._contexts = {}
        self._lock = threading.Lock()

    def context(self, name):
        """What a server needs to be `name`, a host name or an address."""
        with self._lock:
            if name not in self._contexts:
                key, certificate = self.work / f"{name}.key", self.work / f"{name}.pem"
                kind = "IP" if name.replace(".", "").isdigit() else "DNS"
                self._openssl("req", "-x509", "-CA", self.file, "-CAkey", self._key, *self._new_key(key), "-out", certificate,
                              "-days", "30", "-subj", "/CN=Test Server", "-addext", f"subjectAltName={kind}:{name}",
                              "-addext", "basicConstraints=critical,CA:FALSE")
                context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
                context.load_cert_chain(certificate, key)
                self._contexts[name] = context
            return self._contexts[name]

    @staticmethod
    def _new_key(file):
        return "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256", "-nodes", "-keyout", file

    @staticmethod
    def _openssl(*arguments):
        return subprocess.run(["openssl", *map(str, arguments)], check=True, capture_output=True).stdout


@dataclass(frozen=True)
class Request:
    host: str  # as the request says, without a port
    path: str
    headers: tuple  # pairs of name and value, in their order
    proxied: bool


class _Served:
    """A server on loopback, as long as its context lasts."""

    def __init__(self, handler):
        self.stopping = threading.Event()
        self._server = _Server(("127.0.0.1", 0), handler)
        self.port = self._server.server_address[1]
        self._thread = threading.Thread(target=self._server.serve_forever, args=(.01,))

    def __enter__(self):
        self._thread.start()
        return self

    def __exit__(self, *_):
        self.stopping.set()
        self._server.shutdown()
        self._thread.join()
        self._server.server_close()


class HttpsServer(_Served):
    def __init__(self, authority, names=None):
        """Without `names`, the server is whoever it is taken for."""
        self.authority = authority
        self.names = names
        self.pages = {}
        self.requests = []
        self._lock = threading.Lock()
        super().__init__(_Handler)
        self._server.owner = self

    def address(self, path, host="localhost"):
        return f"https://{host}:{self.port}{path}"

    @property
    def proxy(self):
        return f"http://127.0.0.1:{self.port}"

    def context(self, name):
        return self.authority.context(name if self.names is None or name in self.names else self.names[0])

    def record(self, request):
        with self._lock:
            self.requests.append(request)


class Peer(_Served):
    """A server that says what it likes: `talk` has each connection, and a function that pauses until the end or so many seconds."""

    def __init__(self, talk):
        peer = self

        class Connection(socketserver.BaseRequestHandler):
            def handle(self):
                peer.connections += 1
                talk(self.request, lambda seconds=None: peer.stopping.wait(seconds))
        self.connections = 0
        super().__init__(Connection)


class _Server(socketserver.ThreadingTCPServer):
    daemon_threads = True
    block_on_close = False
    request_queue_size = 128

    def handle_error(self, request, client_address):
        pass  # clients that turn away are what is tested


class _Handler(http.server.BaseHTTPRequestHandler):
    """One connection: CONNECT or TLS at once, then requests."""

    protocol_version = "HTTP/1.1"
    disable_nagle_algorithm = True

    def setup(self):
        self.owner = self.server.owner
        self.proxied = self.request.recv(1, socket.MSG_PEEK) == b"C"
        name = "localhost"
        if self.proxied:
            name = self._connect()
        context = self.owner.context(name)
        context.sni_callback = lambda tls, wanted, _: setattr(tls, "context", self.owner.context(wanted or name))
        self.request = context.wrap_socket(self.request, server_side=True)
        super().setup()

    def finish(self):
        super().finish()
        self.request.close()

    def _connect(self):
        head = b""
        while not head.endswith(b"\r\n\r\n"):
            byte = self.request.recv(1)  # what follows belongs to TLS
            if not byte:
                raise ConnectionError
            head += byte
        self.request.sendall(b"HTTP/1.1 200 Connection established\r\n\r\n")
        return head.split()[1].decode().rsplit(":", 1)[0]

    def do_GET(self):
        self.owner.record(Request(self.headers["Host"].rsplit(":", 1)[0], self.path, tuple(self.headers.items()), self.proxied))
        page = self.owner.pages.get(self.path, body(b"not here", status=404))
        page(self)

    def start(self, status, **headers):
        """Sends the head; underscores in the names of headers are hyphens."""
        self.send_response(status)
        for name, value in headers.items():
            self.send_header(name.replace("_", "-"), str(value))
        self.end_headers()

    def pause(self, seconds):
        """Waits, or raises when the server stops."""
        if self.owner.stopping.wait(seconds):
            raise ConnectionError

    def log_message(self, *_):
        pass


def body(content, status=200, **headers):
    def page(handler):
        has_body = status not in (204, 304)
        handler.start(status, **({"Content_Length": len(content)} if has_body else {}), **headers)
        if has_body:
            handler.wfile.write(content)
    return page


def redirect(address, status=302):
    return body(b"elsewhere", status=status, Location=address)


def drip(pieces, seconds):
    """The pieces one by one, with a wait before each."""
    def page(handler):
        handler.start(200, Content_Length=sum(map(len, pieces)))
        for piece in pieces:
            handler.pause(seconds)
            handler.wfile.write(piece)
    return page


def hang():
    """No answer."""
    return lambda handler: handler.pause(None)


def forever(start, piece, seconds=0):
    """The first bytes of an answer, and then the same ones again and again, with a wait before each."""
    def page(handler):
        handler.wfile.write(start)
        while True:
            handler.pause(seconds)
            handler.wfile.write(piece)
    return page


def stop(content, announced, closes=False):
    """The beginning of a body of the announced length. Then the connection closes or stays silent."""
    def page(handler):
        handler.start(200, Content_Length=announced)
        handler.wfile.write(content)
        handler.close_connection = True
        closes or handler.pause(None)
    return page


def gzip_bomb(size):
    """That many zeros in a thousandth of their size."""
    packer = zlib.compressobj(9, zlib.DEFLATED, 31)
    block = bytes(1 << 20)
    packed = b"".join(packer.compress(block) for _ in range(size >> 20)) + packer.flush()
    return body(packed, Content_Encoding="gzip")
