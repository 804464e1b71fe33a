#!/usr/bin/env python3
"""mail_corpus.py PORT: hands mails of many kinds to an SMTP port, built by the email package. Each says, in its own way,
a number and "Åska i hallen". Prints how many have been accepted."""
import base64
import smtplib
import sys
from email.message import EmailMessage
from email.mime.multipart import MIMEMultipart
from email.mime.text import MIMEText

WORDS = "Åska i hallen"


def plain(number, charset, encoding):
    mail = EmailMessage()
    mail.set_content(f"{number} {WORDS}\n", charset=charset, cte=encoding)
    return mail


def page(number):
    mail = EmailMessage()
    mail.set_content(f"<html><head><style>b {{}}</style></head><body><p>{number} &Aring;ska <b>i</b> hallen</p>"
                     "<p>more</p></body></html>", subtype="html")
    return mail


def both(number):
    mail = plain(number, "utf-8", "quoted-printable")
    mail.add_alternative(f"<p>other {number}</p>", subtype="html")
    mail.add_attachment(b"attached", maintype="text", subtype="plain", filename="a.txt")
    return mail


def attached_first(number):
    mail = MIMEMultipart()
    attachment = MIMEText("9999 attached", "plain")
    attachment["Content-Disposition"] = "attachment; filename=a.txt"
    mail.attach(attachment)
    mail.attach(MIMEText(f"{number} {WORDS}", "plain", "utf-8"))
    return mail


def raw(number, head, body):
    return f"From: a@b\r\nSubject: x\r\n{head}\r\n".encode("ascii") + body


def corpus():
    number = 5001
    for charset in ("utf-8", "iso-8859-1", "iso-8859-15", "windows-1252", "iso-8859-4"):
        for encoding in ("quoted-printable", "base64", "8bit"):
            yield plain(number, charset, encoding)
            number += 1
    for make in (page, both, attached_first):
        yield make(number)
        number += 1
    bodies = [("", f"  {number} {WORDS}\r\n".encode("utf-8")),
              ("", f"{number + 1} {WORDS}\r\n".encode("windows-1252")),
              ('Content-Type: text/plain; charset = "utf-8"\r\n', f"{number + 2} {WORDS}\r\n".encode("utf-8")),
              ("Content-Type: text/plain; charset=utf-8\r\n", b"\xef\xbb\xbf" + f"{number + 3} {WORDS}".encode("utf-8"))]
    for head, body in bodies:
        yield raw(number, head, body)
    coded = base64.encodebytes(f"{number + 4} {WORDS}".encode("utf-16"))
    yield raw(number, "Content-Type: text/plain; charset=utf-16\r\nContent-Transfer-Encoding: base64\r\n", coded)


def main():
    taken = 0
    with smtplib.SMTP("127.0.0.1", int(sys.argv[1]), timeout=30) as server:
        for mail in corpus():
            data = mail if isinstance(mail, bytes) else mail.as_bytes()
            taken += not server.sendmail("alarms@example.org", ["centre@example.org"], data)
    print(taken)


main()
