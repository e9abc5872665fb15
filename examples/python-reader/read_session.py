#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
# Copyright (c) 2026 The libCPRData authors
"""Reads a session archive with nothing but Python's standard library, prints what it holds as JSON,
and draws it. The format stands in docs/session-format.md."""
import argparse
import array
import html
import json
import statistics
import sys
import zipfile
import zlib
from collections import Counter
from dataclasses import dataclass
from xml.etree import ElementTree

LARGEST_MEMBER = 256 * 1024 * 1024  # bytes
LONGEST = (24 * 60 + 15) * 60 * 1000  # ms; no training lasts as long
LARGEST_NUMBER = 2**32


class SessionError(Exception):
    """The file is no session archive, or damaged."""


@dataclass
class Event:
    kind: str
    start: int  # ms of session time
    parameters: dict[str, str]

    def number(self, key, default=0.0):
        """The value of a parameter; the default when it is missing or no usable number."""
        try:
            value = float(self.parameters[key])
        except (KeyError, ValueError):
            return default
        return value if abs(value) <= LARGEST_NUMBER else default

    @property
    def end(self):
        if self.kind == "CprInactivityCPR":
            return self.start + 1000 * self.number("compInactivity")
        return self.number("endTime", self.start)


@dataclass
class Wave:
    period: int  # ms
    unit: float  # what one step of a sample is worth, in mm or ml
    samples: array.array

    @property
    def length(self):
        return len(self.samples) * self.period


@dataclass
class Session:
    events: list[Event]
    depth: Wave
    volume: Wave
    guidelines: dict[str, str]

    def of_kind(self, kind):
        return [event for event in self.events if event.kind == kind]

    def band(self, name, scale=1):
        """The lower and the upper limit of the guidelines; None when they have none."""
        low, high = (Event("", 0, self.guidelines).number(name + end) / scale
                     for end in ("Min", "Max"))
        return (low, high) if high > low else None


def read_member(archive, name):
    """The bytes of a member; None when it is missing."""
    try:
        info = archive.getinfo("CPR/" + name)
        if info.file_size > LARGEST_MEMBER:
            raise SessionError(f"{name} is said to have {info.file_size} bytes, which is too much")
        return archive.read(info)
    except KeyError:
        return None
    except (zipfile.BadZipFile, zlib.error, EOFError, NotImplementedError, RuntimeError) as error:
        raise SessionError(f"{name} is damaged: {error}") from error


def read_document(archive, name):
    """The root element of an XML member, which has to be there."""
    content = read_member(archive, name)
    if content is None:
        raise SessionError(f"{name} is missing: no session archive, or a part of one")
    if b"<!DOCTYPE" in content:
        raise SessionError(f"{name} has a document type, which no session has")
    try:
        return ElementTree.fromstring(content)
    except (ElementTree.ParseError, ValueError, LookupError) as error:
        raise SessionError(f"{name} is damaged: {error}") from error


def read_events(root):
    for element in root.iterfind("evt"):
        try:
            kind, start = element.attrib["type"], int(element.attrib["msecs"])
        except (KeyError, ValueError):
            continue  # no event that anybody knows
        parameters = {p.get("type", ""): p.get("value", "") for p in element.iterfind("param")}
        if abs(start) <= LARGEST_NUMBER:
            yield Event(kind, start, parameters)


def read_wave(archive, description):
    try:
        period = 1000 // min(max(int(description.attrib["sampleRate"]), 1), 1000)
        unit = float(description.find("scale").attrib["lsbValue"])
        member = description.find("externalFile").attrib["fileName"]
    except (AttributeError, KeyError, ValueError) as error:
        raise SessionError(f"CPRWaves.xml: a description is not complete: {error}") from error
    content = read_member(archive, member) or b""
    samples = array.array("h", content[: min(len(content), 2 * (LONGEST // period)) // 2 * 2])
    if sys.byteorder == "big":
        samples.byteswap()
    return Wave(period, unit, samples)


def read_session(path):
    try:
        with zipfile.ZipFile(path) as archive:
            descriptions = read_document(archive, "CPRWaves.xml").findall("waveForm")
            if len(descriptions) < 2:
                raise SessionError("CPRWaves.xml has no descriptions of two waves")
            depth, volume = (read_wave(archive, description) for description in descriptions[:2])
            events = list(read_events(read_document(archive, "CPREvents.xml")))
            settings = read_document(archive, "CPRGuidelines.xml")
            guidelines = {setting.tag: setting.get("value", "") for setting in settings}
            return Session(events, depth, volume, guidelines)
    except (OSError, zipfile.BadZipFile) as error:
        raise SessionError(f"it cannot be read as a zip archive: {error}") from error


def summary(session):
    info, score = (next(iter(session.of_kind(kind)), Event("", 0, {})).parameters
                   for kind in ("CprSessionInfo", "CprSessionScore"))

    def mean(kind, key):
        values = [event.number(key) for event in session.of_kind(kind)]
        return round(statistics.fmean(values), 2) if values else None

    return {
        "learners": [name for name in info.get("students", "").split(",") if name],
        "start": info.get("startTime", ""),
        "length_s": -(-session.depth.length // 1000),
        "guidelines": session.guidelines.get("GuidelinesID", ""),
        "events": dict(sorted(Counter(event.kind for event in session.events).items())),
        "mean_depth_mm": mean("CprCompEvent", "compDepth"),
        "mean_volume_ml": mean("CprVentEvent", "ventVolume"),
        "overall_score": score.get("overallScore", ""),
    }


class Picture:
    """Two lanes over one time axis. Times are ms, positions are pixels."""

    WIDTH, HEIGHT, LEFT, RIGHT, LANE = 1200, 570, 110, 30, 200

    def __init__(self, session):
        self.session, self.parts = session, []
        ends = [event.end for event in session.events]
        self.length = min(max([1, session.depth.length, session.volume.length, *ends]), LONGEST)

    def x(self, msecs):
        return round(self.LEFT + (self.WIDTH - self.LEFT - self.RIGHT) * msecs / self.length, 1)

    def add(self, tag, text="", **attributes):
        shown = "".join(f' {key.replace("_", "-")}="{value}"' for key, value in attributes.items())
        self.parts.append(f"<{tag}{shown}>{html.escape(text)}</{tag}>")

    def box(self, start, end, top, bottom, fill):
        self.add("rect", x=self.x(start), y=round(top, 1), height=round(bottom - top, 1),
                 width=max(round(self.x(end) - self.x(start), 1), 1.5), fill=fill)

    def label(self, text, y):
        self.add("text", text, x=self.LEFT - 8, y=round(y + 4, 1), text_anchor="end")

    def lane(self, wave, band, y, highest):
        """A wave with its target band. y(value) is where a value lies."""
        top, bottom = sorted((y(0), y(highest)))
        self.box(0, self.length, top, bottom, "#f3f5f6")
        for limit in band or ():
            self.label(f"{limit:g}", y(limit))
        if band:
            self.box(0, self.length, *sorted(map(y, band)), "#c8e6c9")
        columns = {}  # the lowest and the highest value of each column of pixels
        for i, sample in enumerate(wave.samples):
            column, value = round(self.x((i + 1) * wave.period)), sample * wave.unit
            low, high = columns.get(column, (value, value))
            columns[column] = min(low, value), max(high, value)
        points = [f"{x},{y(min(max(value, 0), highest)):.1f}"
                  for x, values in columns.items() for value in values]
        self.add("polyline", points=" ".join(points), fill="none", stroke="#1565c0")

    def marks(self, title, kind, top, color):
        """A row of marks: compressions and ventilations where they begin, pauses as they last."""
        self.label(title, top + 5)
        for event in self.session.of_kind(kind):
            end = event.end if kind == "CprInactivityCPR" else event.start
            self.box(event.start, end, top, top + 10, color)

    def draw(self):
        session, facts = self.session, summary(self.session)
        self.add("text", ", ".join([*facts["learners"], facts["start"]]), x=self.LEFT, y=24)
        self.label("Depth, mm", 46)
        self.lane(session.depth, session.band("CompressionDepth", 100),
                  lambda depth: 46 + self.LANE * depth / 75, 75)
        self.marks("Compressions", "CprCompEvent", 254, "#37474f")
        self.marks("Pauses", "CprInactivityCPR", 270, "#ef6c00")
        self.lane(session.volume, session.band("VentilationVolume"),
                  lambda volume: 306 + self.LANE * (1 - volume / 1000), 1000)
        self.label("Volume, ml", 306)
        self.marks("Ventilations", "CprVentEvent", 514, "#37474f")
        step = next((s for s in (1, 5, 10, 30, 60, 300, 600) if self.length <= 20000 * s), 3600)
        for secs in range(0, int(self.length / 1000) + 1, step):
            self.add("text", f"{secs // 60}:{secs % 60:02}", x=self.x(1000 * secs), y=556,
                     text_anchor="middle")
        return (f'<svg xmlns="http://www.w3.org/2000/svg" width="{self.WIDTH}" '
                f'height="{self.HEIGHT}" font-family="sans-serif" font-size="13">\n'
                '<rect width="100%" height="100%" fill="#ffffff"/>\n'
                + "\n".join(self.parts) + "\n</svg>\n")


def main():
    parser = argparse.ArgumentParser(description="Shows what a session archive holds.")
    parser.add_argument("session", help="the archive")
    parser.add_argument("--plot", metavar="FILE.svg", help="draw the session as well")
    arguments = parser.parse_args()
    try:
        session = read_session(arguments.session)
        print(json.dumps(summary(session), indent=4))
        if arguments.plot:
            with open(arguments.plot, "w", encoding="utf-8") as file:
                file.write(Picture(session).draw())
    except SessionError as error:
        sys.exit(f"{arguments.session}: {error}")
    except OSError as error:
        sys.exit(f"cannot write: {error}")


if __name__ == "__main__":
    main()
