"""A web service on the loopback address for tests. Writes its port number to the file named as argument."""
import hashlib
import http.server
import os
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
        status = 404 if path == "/missing" else 500 if path == "/fault" else 200
        text = {"/poll": lambda: poll(query), "/long": lambda: "x" * 100000}.get(path, lambda: "path " + path)()
        self.send_response(status)
        self.send_header("Content-Length", str(len(text) + (100 if path == "/broken" else 0)))
        self.end_headers()
        self.wfile.write(text.encode("latin-1"))

    def log_message(self, *arguments):
        pass


server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
with open(sys.argv[1] + ".new", "w") as file:
    file.write(str(server.server_address[1]))
os.rename(sys.argv[1] + ".new", sys.argv[1])
server.serve_forever()
