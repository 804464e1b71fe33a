"""A web service on the loopback address for tests. Writes its port number to the file named as argument."""
import hashlib
import http.server
import os
import ssl
import sys
import time
import urllib.parse

EVENT = "<rocip100><EventCode>01</EventCode><site>100001</site><EventText>Text</EventText></rocip100>"
PASSWORD = "secret"


def poll(query):
    """The queue of a virtual receiver with one event."""
    values = dict(urllib.parse.parse_qsl(query))
    digest_input = values["csid"] + "Event" + values["event"] + "Pass" + PASSWORD
    if hashlib.md5(digest_input.encode("latin-1")).hexdigest() != values["pass"]:
        return "ERROR:BAD PASS\n"
    return "OK:[5]" + EVENT if values["event"] == "0" else "ERROR:EVENTQUEUEEMPTY\n"


class Handler(http.server.BaseHTTPRequestHandler):
    def do_GET(self):
        path, _, query = self.path.partition("?")
        if path == "/slow":
            time.sleep(600)
        if path in ("/headers", "/line"):
            return self.send_endlessly(b"X: " + 1000 * b"x" + b"\r\n" if path == "/headers" else 1000 * b"x")
        if path == "/to":
            self.send_response(302)
            self.send_header("Location", query)
            self.end_headers()
            return
        status = 404 if path == "/missing" else 500 if path == "/fault" else 200
        text = {"/poll": lambda: poll(query), "/long": lambda: "x" * 100000}.get(path, lambda: "path " + path)()
        self.send_response(status)
        self.send_header("Content-Length", str(len(text) + (100 if path == "/broken" else 0)))
        self.end_headers()
        self.wfile.write(text.encode("latin-1"))

    def send_endlessly(self, part):
        self.send_response(200)
        self.flush_headers()
        self.wfile.write(b"X: ")
        while True:
            try:
                self.wfile.write(part)
            except OSError:
                return

    def log_message(self, *arguments):
        pass


server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
if len(sys.argv) > 3:
    context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
    context.load_cert_chain(sys.argv[2], sys.argv[3])
    server.socket = context.wrap_socket(server.socket, server_side=True)
with open(sys.argv[1] + ".new", "w") as file:
    file.write(str(server.server_address[1]))
os.rename(sys.argv[1] + ".new", sys.argv[1])
server.serve_forever()
