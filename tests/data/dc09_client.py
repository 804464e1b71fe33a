#!/usr/bin/env python3
"""Transmitters of SIA DC-09, written from the public description of the protocol and knowing nothing of the program.

    dc09_client.py talk PORT UDPPORT     the table of messages and answers below, over TCP and UDP
    dc09_client.py say PORT CONTENT...   each content in a frame over one connection; prints the answers
    dc09_client.py many PORT COUNT RATE SECONDS    COUNT panels stay connected and send RATE events a second together
    dc09_client.py insist PORT FILE      sends numbered events, each until it is acknowledged, and notes these in FILE

Exit status 0 when everything was as it should be.
"""
import datetime
import os
import random
import re
import selectors
import socket
import subprocess
import sys
import time


def crc(data):
    value = 0
    for byte in data:
        value ^= byte
        for _ in range(8):
            value = (value >> 1) ^ 0xA001 if value & 1 else value >> 1
    return value


def frame(content, binary=False):
    data = content.encode("latin-1")
    check = crc(data).to_bytes(2, "big") if binary else b"%04X" % crc(data)
    return b"\n" + check + b"0%03X" % len(data) + data + b"\r"


def aes(key, data, way):
    command = ["openssl", "enc", f"-aes-{len(key) * 8}-cbc", way, "-nopad", "-K", key.hex(), "-iv", "00" * 16]
    return subprocess.run(command, input=data, capture_output=True, check=True).stdout


def encrypted(head, text, key):
    pad = "".join(random.choice("abcdefgh!%&") for _ in range(-(len(text) + 1) % 16))
    text = pad + ("|" if text.startswith("#") or not pad else "") + text
    if len(text) % 16:
        text = "x" * (-len(text) % 16) + text
    return head + "[" + aes(key, text.encode("latin-1"), "-e").hex().upper()


def stamp(offset=0):
    now = datetime.datetime.now(datetime.timezone.utc) + datetime.timedelta(seconds=offset)
    return now.strftime("_%H:%M:%S,%m-%d-%Y")


def read_frame(answer):
    """The content of one answer; complains about anything else."""
    assert answer[:1] == b"\n" and answer[-1:] == b"\r", answer
    digits = answer[9:10] == b'"'
    content = answer[9:-1] if digits else answer[7:-1]
    assert answer.find(b"\n", 1) < 0 or not digits, answer
    assert (int(answer[1:5], 16) if digits else int.from_bytes(answer[1:3], "big")) == crc(content), answer
    assert int(answer[5:9] if digits else answer[3:7], 16) == len(content), answer
    return content.decode("latin-1")


class Stream:
    def __init__(self, port):
        self.socket = socket.create_connection(("127.0.0.1", port), 10)
        self.rest = b""

    def ask(self, data, wait=10):
        self.socket.sendall(data)
        self.socket.settimeout(wait)
        try:
            while b"\r" not in self.rest[10:]:
                more = self.socket.recv(4096)
                if not more:
                    return None
                self.rest += more
        except socket.timeout:
            return None
        end = self.rest.index(b"\r", 10) + 1
        answer, self.rest = self.rest[:end], self.rest[end:]
        return read_frame(answer)


class Datagrams:
    def __init__(self, port):
        self.socket = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
        self.socket.connect(("127.0.0.1", port))

    def ask(self, data, wait=10):
        self.socket.send(data)
        self.socket.settimeout(wait)
        try:
            return read_frame(self.socket.recv(4096))
        except socket.timeout:
            return None


KEYS = {"AE128": b"0123456789abcdef", "AE192": b"0123456789abcdef01234567", "AE256": b"0123456789abcdef" * 2}
NAK = r'"NAK"0000R0L0A0\[\]_\d\d:\d\d:\d\d,\d\d-\d\d-\d{4}$'


def ask_plain(line, account):
    head = f"0001R1L0#{account}"
    ack = re.escape(f'"ACK"{head}[]') + "$"
    data = f"[#{account}|Nri1/BA01]"
    yield f'"SIA-DCS"{head}{data}', ack
    yield f'"SIA-DCS"0002R1L0#{account}{data}{stamp()}', re.escape('"ACK"0002')
    yield f'"ADM-CID"0003#{account}[#{account}|1130 01 001]', re.escape(f'"ACK"0003#{account}[]')
    yield f'"NULL"0004R1L0#{account}[]', re.escape('"ACK"0004')
    yield f'"NULL"0005R1L0#{account}[]{stamp(-60)}', NAK
    yield f'"NULL"0006R1L0#{account}[]{stamp(60)}', NAK
    yield f'"ABC-DEF"0007R1L0#{account}[]', re.escape(f'"DUH"0007R1L0#{account}[]')


def talk(tcp_port, udp_port):
    """Every answer as the description has it. Two senders for each kind of line, so that nothing is a repeat."""
    for line, account in ((Stream(tcp_port), "1234"), (Datagrams(udp_port), "1235")):
        for content, expected in ask_plain(line, account):
            answer = line.ask(frame(content))
            assert answer and re.match(expected, answer), (content, answer)
        wrong = bytearray(frame(f'"NULL"0008#{account}[]'))
        wrong[1] ^= 1
        assert line.ask(bytes(wrong), 1) is None
        assert line.ask(frame(f'"NULL"0009#{account}[]', True)) == f'"ACK"0009#{account}[]'
        for name, key in KEYS.items():
            name += account[-1]
            head = f'"*SIA-DCS"0010R1L0#{name}'
            answer = line.ask(frame(encrypted(head, f"#{name}|Nri1/FA02][X012W34.1][Y045N12.2]{stamp()}", key)))
            begin = f'"*ACK"0010R1L0#{name}['
            assert answer and answer.startswith(begin), answer
            plain = aes(key, bytes.fromhex(answer[len(begin):]), "-d").decode("latin-1")
            assert re.match(r"[^|\[\]]*\]_\d\d:\d\d:\d\d,\d\d-\d\d-\d{4}$", plain), plain
            other = bytes([key[0] ^ 1]) + key[1:]
            answer = line.ask(frame(encrypted(f'"*NULL"0011R1L0#{name}', "]" + stamp(), other)))
            assert answer and re.match(NAK, answer), answer
    return 0


def say(port, contents):
    line = Stream(port)
    for content in contents:
        print(line.ask(frame(content)), flush=True)
    return 0


class Panel:
    def __init__(self, port, number):
        self.socket = socket.create_connection(("127.0.0.1", port), 30)
        self.socket.setblocking(False)
        self.account = f"{number:06d}"
        self.sequence = 0
        self.sent_at = None

    def send(self, event):
        self.sequence += 1
        head = f"{self.sequence % 10000:04d}R1L0#{self.account}"
        data = f'"SIA-DCS"{head}[#{self.account}|Nri1/BA{self.sequence % 100:02d}]' if event else f'"NULL"{head}[]'
        self.socket.send(frame(data))
        self.sent_at = time.monotonic()


def many(port, count, rate, seconds):
    """Prints how many were acknowledged, and the times to the acknowledgement."""
    selector = selectors.DefaultSelector()
    panels = [Panel(port, number) for number in range(count)]
    for panel in panels:
        selector.register(panel.socket, selectors.EVENT_READ, panel)
    times, lost, sent = [], 0, 0

    def listen(wait):
        nonlocal lost
        for key, _ in selector.select(wait):
            panel = key.data
            answer = panel.socket.recv(4096)
            if not answer:
                lost += 1
                selector.unregister(panel.socket)
            elif panel.sent_at is not None:
                assert '"ACK"' in read_frame(answer), answer
                times.append(time.monotonic() - panel.sent_at)
                panel.sent_at = None

    for panel in panels:
        panel.send(False)
        listen(0)
    end = time.monotonic() + 30
    while any(panel.sent_at is not None for panel in panels) and time.monotonic() < end:
        listen(0.1)
    links = len(times)
    times.clear()
    start = time.monotonic()
    while time.monotonic() < start + seconds:
        while sent < (time.monotonic() - start) * rate:
            panel = panels[sent % count]
            if panel.sent_at is None:
                panel.send(True)
                sent += 1
            else:
                break
        listen(0.001)
    end = time.monotonic() + 30
    while len(times) < sent and time.monotonic() < end:
        listen(0.1)
    times.sort()
    part = lambda share: times[min(len(times) - 1, int(len(times) * share))] * 1000 if times else 0
    print(f"links {links} sent {sent} acknowledged {len(times)} lost {lost} "
          f"p50 {part(0.5):.3f} ms p99 {part(0.99):.3f} ms", flush=True)
    return 0 if len(times) == sent and lost == 0 and links == count else 1


def insist(port, path):
    """Until the file NAME.stop is there. An event that is not acknowledged is sent again as it was."""
    number, line = 0, None
    with open(path, "a", encoding="ascii") as noted:
        while not os.path.exists(path + ".stop"):
            number += 1
            message = frame(f'"SIA-DCS"{number % 10000:04d}#4321[#4321|Nri1/BA{number:06d}]')
            while True:
                try:
                    line = line or Stream(port)
                    if line.ask(message, 5):
                        break
                except OSError:
                    time.sleep(0.02)
                line = None
            noted.write(f"BA{number:06d}\n")
            noted.flush()
    return 0


def main(words):
    if words[0] == "talk":
        return talk(int(words[1]), int(words[2]))
    if words[0] == "say":
        return say(int(words[1]), words[2:])
    if words[0] == "many":
        return many(int(words[1]), int(words[2]), float(words[3]), float(words[4]))
    return insist(int(words[1]), words[2])


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
