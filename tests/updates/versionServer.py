"""Serves version files as good and bad servers do, on this machine only, until its input ends.

Usage: versionServer.py FOLDER; puts root.pem and other.pem there, of which the first one is its own certificate, and prints
three ports: of HTTPS, of HTTP, and of a server that takes connections and says nothing.
"""
import socket
import ssl
import subprocess
import sys
import threading
import time
from http.server import BaseHTTPRequestHandler, ThreadingHTTPServer

GOOD = b'{"version": "2.0", "build": 7}'


class Handler(BaseHTTPRequestHandler):
    asked = 6  # for "counted"

    def do_GET(self):
        getattr(self, self.path[1:])()

    def log_message(self, *_):
        pass

    def answer(self, body, status=200, length=None, **headers):
        self.send_response(status)
        for name, value in {"Content-Length": str(length or len(body)), **headers}.items():
            self.send_header(name.replace("_", "-"), value)
        self.end_headers()
        self.wfile.write(body)

    def good(self): self.answer(GOOD)
    def full(self): self.answer(GOOD.ljust(65536))
    def tooLong(self): self.answer(GOOD.ljust(65537))
    def endless(self): self.answer(GOOD.ljust(1 << 28), length=1 << 40)
    def gone(self): self.answer(GOOD, 404)
    def partial(self): self.answer(GOOD, 206)
    def noJson(self): self.answer(b"<html>")
    def cut(self): self.answer(GOOD, length=99)
    def hanging(self): time.sleep(60)
    def hangsInside(self): self.answer(GOOD, length=99) or time.sleep(60)
    def moved(self): self.answer(b"", 302, Location="/good", Set_Cookie="seen=1")
    def asksForCookies(self): self.answer(b"", 302, Location="/givesCookies", Set_Cookie="seen=1")
    def givesCookies(self): self.answer(GOOD, 500 if self.headers["Cookie"] else 200)
    def counted(self):
        Handler.asked += 1
        self.answer(b'{"version": "2.0", "build": %d}' % Handler.asked)

    def elsewhere(self): self.answer(b"", 302, Location=f"https://127.0.0.1:{secure.server_port}/good")
    def plain(self): self.answer(b"", 302, Location=f"http://localhost:{plain.server_port}/good")


def certificate(name):
    file = f"{sys.argv[1]}/{name}.pem"
    subprocess.run(["openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes", "-days", "2",
                    "-subj", "/CN=" + name, "-addext", "subjectAltName=DNS:localhost,IP:127.0.0.1", "-keyout", file + ".key",
                    "-out", file], check=True, capture_output=True)
    return file


secure, plain = (ThreadingHTTPServer(("127.0.0.1", 0), Handler) for _ in range(2))
silent = socket.create_server(("127.0.0.1", 0))
certificate("other")
file = certificate("root")
context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
context.load_cert_chain(file, file + ".key")
secure.socket = context.wrap_socket(secure.socket, server_side=True)
for server in secure, plain:
    server.daemon_threads = True
    threading.Thread(target=server.serve_forever, daemon=True).start()
print(secure.server_port, plain.server_port, silent.getsockname()[1], flush=True)
sys.stdin.read()
