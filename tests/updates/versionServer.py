"""Serves version files over HTTPS, on this machine only, as good and bad servers do, until its input ends.

Usage: versionServer.py FOLDER; puts its certificate there (own.pem) and another one (other.pem), and prints its port.
"""
import ssl
import subprocess
import sys
import threading
import time
from http.server import BaseHTTPRequestHandler, ThreadingHTTPServer

GOOD = b'{"version": "2.0", "build": 7}'


def certificate(name):
    file = f"{sys.argv[1]}/{name}.pem"
    subprocess.run(["openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256", "-nodes", "-out", file,
                    "-keyout", file + ".key", "-subj", "/CN=localhost", "-addext", "subjectAltName=DNS:localhost,IP:127.0.0.1"],
                   check=True)
    return file


class Handler(BaseHTTPRequestHandler):
    counted = 6

    def do_GET(self):
        status, body, headers = ANSWERS[self.path[1:]]
        if self.path == "/counted":
            Handler.counted += 1
            body = GOOD.replace(b"7", b"%d" % self.counted)
        self.send_response(500 if "Cookie" in self.headers else status)
        for name, value in {"Content-Length": len(body), **headers}.items():
            self.send_header(name, value)
        self.end_headers()
        self.wfile.write(body)
        time.sleep(60 if "hangs" in self.path else 0)


server = ThreadingHTTPServer(("127.0.0.1", 0), Handler)
server.daemon_threads = True
port = server.server_port
ANSWERS = {
    "good": (200, GOOD, {}), "counted": (200, GOOD, {}), "noJson": (200, b"<html>", {}),
    "gone": (404, GOOD, {}), "partial": (206, GOOD, {}),
    "full": (200, GOOD.ljust(65536), {}), "tooLong": (200, GOOD.ljust(65537), {}),
    "endless": (200, GOOD.ljust(1 << 28), {"Content-Length": 1 << 40}),
    "cut": (200, GOOD, {"Content-Length": 99}), "hangs": (200, GOOD, {"Content-Length": 99}),
    "moved": (302, b"", {"Location": "/good", "Set-Cookie": "seen=1"}),
    "plain": (302, b"", {"Location": f"http://localhost:{port}/good"}),
    "elsewhere": (302, b"", {"Location": f"https://127.0.0.1:{port}/good"})}
certificate("other")
own = certificate("own")
context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
context.load_cert_chain(own, own + ".key")
server.socket = context.wrap_socket(server.socket, server_side=True)
threading.Thread(target=server.serve_forever, daemon=True).start()
print(port, flush=True)
sys.stdin.read()
