#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
# Copyright (c) 2026 The libCPRData authors
"""Sends a manikin to a receiver, such as "cprsession record" or the viewer, with Python alone.

    gateway.py LOG --to tcp:PORT|local:NAME|- [--speed FACTOR]

An example to copy. Link is what every gateway needs; RecordedManikin plays a recorded log and stands
for the manikin: put your own in its place. docs/manikin-link.md describes the lines of the link,
docs/recorded-log.md the records. Exit status: 0 the receiver has all; 1 it has not; 2 wrong usage.
"""
import argparse
import collections
import getpass
import os
import re
import select
import signal
import socket
import sys
import tempfile
import time
import uuid

FIRST_PAUSE, LONGEST_PAUSE = 0.2, 5.0  # s, before a broken way is tried again
PATIENCE = 10.0  # s, for the receiver's first answer
CLOSING = 2.0  # s, for the receiver to close when it has all
BEAT = 0.6  # s without a line; the receiver wants one each second
BATCH_SECONDS, BATCH_BYTES = 0.1, 4096  # no batch gets longer
CAPACITY = 16 * 1024 * 1024  # bytes kept for a receiver that is away: more than an hour
MAX_UNSENT = 64 * 1024  # bytes before the operating system takes them


class RecordedManikin:
    """A manikin that is read from a recorded log. Yours has the same functions."""

    def __init__(self, name, speed):
        self.speed, self.began, self.begin = speed, None, 0
        self.records = self.read(name)
        self.following = next(self.records, None)

    @staticmethod
    def read(name):
        with open(name, "rb") as log:
            if log.readline().rstrip(b"\r\n") != b"cprlog 1":
                raise ValueError(f"{name} is no recorded log")
            for line in log:
                msecs, _, what = line.rstrip(b"\r\n").partition(b" ")
                # What a log says of the link by which it came is not of the manikin.
                if what and not line.startswith(b"#") and not what.startswith((b"stream ", b"batch ")):
                    yield int(msecs), what

    def start(self):
        """The instructor lets the session begin. May come more than once."""
        if self.began is None:
            self.began, self.begin = time.monotonic(), self.following[0] if self.following else 0

    def stop(self):
        """The instructor ends the session: what there is to tell about it is to come, then no more."""
        running, msecs = self.began is not None and self.following, self.now()
        self.records = iter([(msecs, b"state CPR_ENDED")] if running else [])
        self.following = next(self.records, None)

    def now(self):
        return self.begin + int((time.monotonic() - (self.began or time.monotonic())) * 1000 * self.speed)

    def next(self):
        """The next record: its time in ms since the session began, and its text as in a log. None when
        there is none yet."""
        record = self.following
        starts = record and record[1] == b"state CPR_START"  # before it, all can be told at once
        if not record or (self.began is None and starts) or (self.began and record[0] > self.now()):
            return None
        self.following = next(self.records, None)
        return record

    def is_over(self):
        return self.following is None


class Link:
    """Sends one session of one manikin; nothing of it is lost on the way.

    Records are kept, in batches, until the receiver has them on its disk. When the way breaks, the
    receiver says behind which batch the new one is to go on."""

    def __init__(self, address, manikin, sender, session):
        self.way, _, self.place = address.partition(":")
        self.first_line = f"cprlink 1 {manikin} {sender} {session}\n".encode()
        self.socket, self.is_ready, self.timeout = None, False, 0.0
        self.pause, self.unsent, self.heard, self.written_at = FIRST_PAUSE, b"", b"", 0.0
        self.kept, self.kept_bytes = collections.deque(), 0  # (number, text) of each batch
        self.index, self.offset = 0, 0  # in kept: what is to be written next
        self.last, self.written, self.acknowledged, self.batch_at = 0, 0, 0, 0.0
        self.msecs, self.msecs_at = 0, time.monotonic()
        self.is_lost = self.said_lost = self.is_finishing = self.said_bye = False
        self.wants_start = self.wants_stop = self.is_over = False
        self.problem = None  # why not all has come to the receiver

    def has_room(self):
        """No: the receiver has been away for long. A record that you drop then is lost: say so."""
        return self.kept_bytes < CAPACITY

    def send(self, msecs, what):
        self.msecs, self.msecs_at = max(msecs, self.msecs), time.monotonic()
        if (not self.kept or len(self.kept[-1][1]) >= BATCH_BYTES
                or self.msecs_at - self.batch_at >= BATCH_SECONDS):
            self.last, self.batch_at = self.last + 1, self.msecs_at
            self.kept.append((self.last, bytearray(b"%d batch %d\n" % (self.msecs, self.last))))
            self.kept_bytes += len(self.kept[-1][1])
        line = b"%d %s\n" % (self.msecs, what)
        self.kept[-1][1].extend(line)
        self.kept_bytes += len(line)

    def set_lost(self, is_lost):
        """The manikin cannot be reached, or can be again."""
        self.is_lost = is_lost

    def finish(self):
        """Nothing more comes; is_over says when the receiver has all."""
        self.is_finishing = True

    def turn(self, seconds):
        """Sends and receives what there is, and waits no longer than this."""
        if not self.socket and not self.is_over and time.monotonic() >= self.timeout:
            self.open()
        if self.is_over or not self.socket:
            time.sleep(0 if self.is_over else seconds)
            return
        self.fill()
        try:
            reads = [self.socket] if self.way != "-" else []
            readable, writable, _ = select.select(reads, [self.socket] if self.unsent else [], [], seconds)
            if writable:
                count = os.write(self.socket.fileno(), self.unsent)
                self.unsent, self.written_at = self.unsent[count:], time.monotonic()
            if readable:
                self.read(self.socket.recv(MAX_UNSENT))
        except BlockingIOError:
            pass
        except OSError as error:
            self.broken(str(error))
        if self.socket and not self.is_ready and time.monotonic() >= self.timeout:
            self.broken("the receiver does not answer")
        self.look_for_end()

    def open(self):
        try:
            if self.way == "-":  # a pipe has no answers: all may be sent, and is received when written
                self.socket, self.is_ready, self.wants_start = sys.stdout, True, True
            else:
                family = socket.AF_INET if self.way == "tcp" else socket.AF_UNIX
                self.socket = socket.socket(family, socket.SOCK_STREAM)
                self.socket.settimeout(PATIENCE)
                self.socket.connect(("127.0.0.1", int(self.place)) if self.way == "tcp" else
                                    f"{runtime_folder()}/{self.place}")
                self.socket.setblocking(False)
            self.unsent, self.heard = self.first_line, b""
            self.timeout = time.monotonic() + PATIENCE
        except OSError as error:
            self.broken(str(error))

    def fill(self):
        """Puts what is to be written next behind what waits to be."""
        while self.is_ready and self.index < len(self.kept) and len(self.unsent) < MAX_UNSENT:
            number, text = self.kept[self.index]
            self.unsent += text[self.offset:]
            self.offset, self.written = len(text), max(self.written, number)
            if self.index == len(self.kept) - 1:
                break  # of the last batch more may come
            self.index, self.offset = self.index + 1, 0
        if not self.is_ready or self.unsent or self.said_bye:
            return
        if self.is_lost != self.said_lost:
            self.said_lost = self.is_lost
            self.say("lost" if self.is_lost else "found")
        if self.is_finishing:
            self.said_bye = True
            self.say("bye")
        elif time.monotonic() - self.written_at >= BEAT:
            self.say("beat")

    def say(self, word):
        msecs = self.msecs + int((time.monotonic() - self.msecs_at) * 1000)
        self.unsent += b"%d %s\n" % (msecs if word == "beat" else self.msecs, word.encode())

    def read(self, received):
        if not received:
            self.broken("the receiver has closed the connection")
            return
        *lines, self.heard = (self.heard + received).split(b"\n")
        for line in lines:
            word, _, rest = line.decode(errors="replace").partition(" ")
            number = int(rest) if word in ("welcome", "ack") and rest.isdecimal() else None
            if word == "welcome" and number is not None and not self.is_ready:
                if number < self.acknowledged:
                    self.problem = f"the receiver has lost what came behind batch {number}"
                self.forget(number)
                self.index, self.offset, self.is_ready, self.pause = 0, 0, True, FIRST_PAUSE
                # A manikin that is lost is said to be so again: the receiver may not have heard it.
                self.said_lost = self.said_lost and not self.is_lost
            elif word == "ack" and number is not None:
                self.forget(number)
            elif word == "start":
                self.wants_start = True
            elif word == "stop":
                self.wants_stop = True
            elif word == "refused":
                self.problem, self.is_over = f"refused: {rest}", True

    def forget(self, number):
        """The receiver has the batches up to this one on its disk."""
        self.acknowledged = max(self.acknowledged, min(number, self.written))
        while self.kept and self.kept[0][0] <= self.acknowledged:
            self.kept_bytes -= len(self.kept.popleft()[1])
            self.index, self.offset = (self.index - 1, self.offset) if self.index else (0, 0)

    def broken(self, reason):
        if self.socket and self.way != "-":
            self.socket.close()
        self.is_over = self.is_over or self.way == "-" or (self.said_bye and not self.kept)
        if self.way == "-":
            self.problem = reason
        elif not self.is_over and self.pause == FIRST_PAUSE:
            print(f"{reason}; trying again", file=sys.stderr)
        self.socket, self.is_ready, self.said_bye = None, False, False
        self.timeout, self.pause = time.monotonic() + self.pause, min(2 * self.pause, LONGEST_PAUSE)

    def look_for_end(self):
        if self.way == "-" and not self.unsent:
            self.forget(self.written)
        if not self.said_bye or self.kept or self.unsent or self.is_over:
            return
        self.is_over = True
        if self.socket and self.way != "-":  # closed by the receiver, which has read all by then
            self.socket.settimeout(CLOSING)
            try:
                while self.socket.recv(MAX_UNSENT):
                    pass
            except OSError:
                pass


def runtime_folder():
    return os.environ.get("XDG_RUNTIME_DIR") or f"{tempfile.gettempdir()}/runtime-{getpass.getuser()}"


def main(log, address, speed):
    # The ids: of the manikin, of what sends for it, and of the session, which is new each time.
    host = re.sub("[^A-Za-z0-9._-]", "-", socket.gethostname())[:40]
    link = Link(address, "manikin-2", f"gateway.py.{host}", uuid.uuid4().hex)
    try:
        manikin = RecordedManikin(log, float(speed))
        interrupts = []
        for number in (signal.SIGINT, signal.SIGTERM):
            signal.signal(number, lambda *which: interrupts.append(which))
        while not link.is_over:
            link.turn(0.01)
            if link.wants_start:
                manikin.start()
            if (link.wants_stop or interrupts) and not link.is_finishing:
                manikin.stop()
            for _ in range(500):  # then the link has its turn again
                record = manikin.next() if link.has_room() else None
                if not record:
                    break
                link.send(*record)
            if manikin.is_over():
                link.finish()
    except (OSError, ValueError) as error:
        sys.exit(f"gateway.py: {error}")
    sys.exit(f"gateway.py: {link.problem}" if link.problem else 0)


if __name__ == "__main__":
    parser = argparse.ArgumentParser(description="Sends a recorded log to a receiver of manikins.")
    parser.add_argument("log", metavar="LOG")
    parser.add_argument("--to", required=True, metavar="tcp:PORT|local:NAME|-")
    parser.add_argument("--speed", type=float, default=1, metavar="FACTOR")
    given = parser.parse_args()
    if not re.fullmatch(r"-|tcp:[0-9]{1,5}|local:[A-Za-z0-9._-]{1,64}", given.to):
        parser.error("--to takes tcp:PORT, local:NAME or -")
    main(given.log, given.to, given.speed)
