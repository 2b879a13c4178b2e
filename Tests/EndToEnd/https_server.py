"""An HTTPS server on loopback for tests, with certificates of its own making.

Clients trust it with SSL_CERT_FILE=server.authority.file. They reach a path at server.address(path), or at any host's name with
https_proxy=server.proxy. A page is a function of the request's handler; those below make the usual ones. The server has a certificate for every
name that is requested, directly or through the proxy, or for `names` alone. Each connection has a thread.
"""

import atexit
import http.server
import shutil
import socket
import socketserver
import ssl
import subprocess
import tempfile
import threading
from collections import namedtuple
from pathlib import Path

import trustme


class Authority:
    """Signs certificates for any name. Its own is in `file`, and in `folder` as OpenSSL looks it up there."""

    def __init__(self):
        self.folder = Path(tempfile.mkdtemp())
        atexit.register(shutil.rmtree, self.folder)
        self.file = self.folder / "authority.pem"
        self.authority, self.contexts, self.lock = trustme.CA(), {}, threading.Lock()
        self.authority.cert_pem.write_to_path(self.file)
        subprocess.run(["openssl", "rehash", self.folder], check=True)

    def context(self, name):
        """For a server of this name."""
        with self.lock:
            if name not in self.contexts:
                self.contexts[name] = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
                self.authority.issue_cert(name).configure_cert(self.contexts[name])
            return self.contexts[name]


# The host is without a port; the headers are pairs of name and value in their order.
Request = namedtuple("Request", "host path headers")


class Server(socketserver.ThreadingTCPServer):
    """A server on loopback, as long as its context lasts. `handle` gets each connection, its address and this."""

    daemon_threads = True
    block_on_close = False
    request_queue_size = 128

    def __init__(self, handle):
        super().__init__(("127.0.0.1", 0), handle)
        self.stopping = threading.Event()
        self.port = self.server_address[1]

    def __enter__(self):
        threading.Thread(target=self.serve_forever, args=(.01,)).start()
        return self

    def __exit__(self, *_):
        self.stopping.set()
        self.shutdown()
        self.server_close()

    def handle_error(self, request, client_address):
        pass  # Clients that close their connection are what is tested.


class HttpsServer(Server):
    def __init__(self, authority, names=None):
        self.authority, self.names = authority, names
        self.pages, self.requests = {}, []
        super().__init__(Handler)

    def address(self, path):
        return f"https://localhost:{self.port}{path}"

    @property
    def proxy(self):
        return f"http://127.0.0.1:{self.port}"

    def context(self, name):
        return self.authority.context(name if self.names is None or name in self.names else self.names[0])


class Handler(http.server.BaseHTTPRequestHandler):
    """One connection: CONNECT or TLS at once, then requests."""

    protocol_version = "HTTP/1.1"
    disable_nagle_algorithm = True

    def setup(self):
        is_proxied = self.request.recv(1, socket.MSG_PEEK) == b"C"
        name = self.connect() if is_proxied else "localhost"
        context = self.server.context(name)
        context.sni_callback = lambda tls, wanted, _: setattr(tls, "context", self.server.context(wanted or name))
        self.request = context.wrap_socket(self.request, server_side=True)
        super().setup()

    def finish(self):
        super().finish()
        self.request.close()

    def connect(self):
        head = b""
        while not head.endswith(b"\r\n\r\n"):
            byte = self.request.recv(1)  # What follows belongs to TLS.
            if not byte:
                raise ConnectionError
            head += byte
        self.request.sendall(b"HTTP/1.1 200 Connection established\r\n\r\n")
        return head.split()[1].decode().rsplit(":", 1)[0]

    def do_GET(self):
        self.server.requests.append(Request(self.headers["Host"].rsplit(":", 1)[0], self.path, tuple(self.headers.items())))
        self.server.pages.get(self.path, body(b"not here", status=404))(self)

    def start(self, status, **headers):
        """Sends the head; underscores in the names of headers are hyphens."""
        self.send_response(status)
        for name, value in headers.items():
            self.send_header(name.replace("_", "-"), str(value))
        self.end_headers()

    def pause(self, seconds):
        """Waits, or raises when the server stops."""
        if self.server.stopping.wait(seconds):
            raise ConnectionError

    def log_message(self, *_):
        pass


def body(content, status=200, **headers):
    def page(handler):
        handler.start(status, **({} if status == 304 else {"Content_Length": len(content), **headers}))
        if status != 304:
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


def forever(start=b"", piece=b"", seconds=0):
    """The first bytes of an answer, and then the same ones again and again, with a wait before each; or silence."""
    def page(handler):
        handler.wfile.write(start)
        while True:
            handler.pause(seconds if piece else None)
            handler.wfile.write(piece)
    return page
