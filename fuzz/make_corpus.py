#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
# Copyright (c) 2026 The libCPRData authors
"""Makes the seed corpora and the dictionary of the fuzz targets.

    fuzz/make_corpus.py

They come from tests/data and from the tables of the library's headers, so that they follow when a
message, a parameter or a property is added. Existing files of the same names are replaced.
"""
import re
import struct
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
DATA = ROOT / "tests" / "data"
CORPUS = ROOT / "fuzz" / "corpus"
SESSION = DATA / "golden" / "CPR"

# The bytes that fuzz_messages.cpp knows.
STATE, WAVE, MESSAGE = 0, 253, 254
CALLS_IN_SLOTS = 38  # that fuzz_calls.cpp knows
HOST_CALLS = 35
KNOWN = [38, 47, 48, 50, 52, 64, 68, 70, 75, 77, 79, 80, 81, 87, 88, 101, 104, 106, 107, 108, 109,
         110, 111]
STATES = ["CPR_MANIKIN_INIT", "CPR_INIT", "CPR_START", "CPR_ENDED", "CPR_STOP", "CPR_RECONNECTED"]
WAVES = [9, 12, 13]
LINK_SPLIT = b"\0"  # between the ways of fuzz_link.cpp
NEXT_SEQUENCE = 7


def save(target, name, content):
    path = CORPUS / target / name
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes(content)


def steps(lines):
    """The steps of fuzz_messages that do what the lines of a recorded log say."""
    out = bytearray()
    pending = None  # a header and its samples are one step

    def flush():
        nonlocal pending
        if pending is not None:
            out.extend([WAVE, NEXT_SEQUENCE, len(pending)] + sum(pending, []))
        pending = None

    for line in lines:
        fields = line.split()
        if len(fields) < 2 or fields[0].startswith("#") or fields[0] == "cprlog":
            continue
        kind = fields[1]
        if kind == "wave" and pending is not None and len(pending) < 3:
            value = struct.pack("<h", int(fields[3]))
            pending.append([WAVES.index(int(fields[2])), 1, *value])
            continue
        flush()
        if kind == "header":
            pending = []
        elif kind == "state":
            out.extend([STATE, STATES.index(fields[2])])
        elif kind == "msg":
            content = bytes.fromhex(fields[4]) if len(fields) > 4 else b""
            known = int(fields[2]) in KNOWN
            out.extend([MESSAGE, KNOWN.index(int(fields[2])) if known else len(KNOWN)])
            if not known:
                out.extend(struct.pack("<I", int(fields[2])))
            out.append(1)  # with the number of the last header
            out.append(len(content))
            out.extend(content)
    flush()
    return bytes(out)


def make_messages():
    golden = (DATA / "golden" / "golden.cprlog").read_text().splitlines()
    save("fuzz_messages", "golden", steps(golden))
    # One seed for every kind of message, at its first appearance in a long session.
    prepared = ["0 state CPR_MANIKIN_INIT", "0 state CPR_INIT", "0 state CPR_START",
                "0 header 1", "0 wave 9 100 1", "0 wave 12 20 1"]
    seen = {}
    for line in (DATA / "two-rescuers.cprlog").read_text().splitlines():
        fields = line.split()
        if len(fields) > 2 and fields[1] == "msg":
            seen.setdefault(fields[2], []).append(line)
    for identifier, lines in seen.items():
        save("fuzz_messages", f"message-{identifier}", steps(prepared + lines[:3]))
    ending = [lines[0] for identifier, lines in seen.items() if 108 <= int(identifier) <= 111]
    save("fuzz_messages", "ending", steps(prepared + ending))
    pause = [line for line in seen["81"]][:2]
    for call in range(HOST_CALLS):
        save("fuzz_messages", f"call-{call}",
             steps(prepared + pause) + bytes([call, 2, 1, 2, 3, 4, 5, 6, 7, 8]))


def make_calls():
    # Each call in the slots of a session that begins, and after it.
    for call in range(CALLS_IN_SLOTS):
        save("fuzz_calls", f"call-{call}", bytes([1, 0] + [call, 1, 2, 3] * 8))


def make_xml():
    for path in sorted((DATA / "eventlists").glob("*.xml")):
        save("fuzz_events_xml", path.stem, path.read_bytes())
    save("fuzz_events_xml", "golden", (SESSION / "CPREvents.xml").read_bytes())
    guidelines = (SESSION / "CPRGuidelines.xml").read_bytes()
    save("fuzz_guidelines_waves_xml", "guidelines", b"\0" + guidelines)
    short = re.sub(rb"\s*<(Vent|Compression)[^>]*>", b"", guidelines)
    save("fuzz_guidelines_waves_xml", "guidelines-short", b"\0" + short)
    waves = (SESSION / "CPRWaves.xml").read_bytes()
    save("fuzz_guidelines_waves_xml", "waves", b"\1" + waves)


def make_archives():
    golden = (DATA / "golden.zip").read_bytes()
    for choice in (1, 7):
        save("fuzz_archive", f"golden-{choice}", bytes([choice]) + golden)
    names = ["CPREvents.xml", "CPRWaves.xml", "COMP.WV", "VENT.WV", "CPRGuidelines.xml"]
    contents = [(SESSION / name).read_bytes() for name in names]
    contents[0] = (DATA / "eventlists" / "overlapping-pauses.xml").read_bytes()
    for wrong in [0] + [1 << bit for bit in range(6)]:
        parts = [bytes([i, wrong]) + content for i, content in enumerate(contents)]
        save("fuzz_archive", f"members-{wrong}", bytes([6]) + b"\xff\xfe".join(parts))


def make_logs():
    golden = (DATA / "golden" / "golden.cprlog").read_text().splitlines()
    save("fuzz_log", "golden", "\n".join(golden).encode())
    save("fuzz_log", "short", "\n".join(golden[:12]).encode())
    kinds = ["cprlog 1", "# remark", "", "0 start 2026-01-31T09:00:00Z", "0 manikin M 1",
             "0 state CPR_INIT", "1 state CPR_START", "2 learner Ann", "3 header 1",
             "3 wave 9 100 1", "4 msg 68 1 00", "4 msg 200 1", "5 remark 3 Hands",
             "6 unremark 3 Hands", "6 stream manikin-1 gateway s1", "6 batch 1", "7 batch 0"]
    save("fuzz_log", "kinds", "\r\n".join(kinds).encode())


def make_links():
    """Streams of senders, each on a way of its own; what splits them fuzz_link.cpp knows."""
    golden = (DATA / "golden" / "golden.cprlog").read_text().splitlines()
    records = [line for line in golden if line.split(" ")[0].isdecimal()]
    first = "cprlink 1 manikin-1 gateway s1"
    short = [first, "0 batch 1", "0 manikin Manikin 1", "0 state CPR_MANIKIN_INIT", "", "# remark",
             "5 state CPR_INIT", "10 batch 2", "10 state CPR_START", "11 header 1", "11 wave 9 100 1"]
    save("fuzz_link", "golden", link([first, "0 batch 1", *records[:40], "9000 bye"]))
    save("fuzz_link", "short", link([*short, "1000 beat", "2000 bye"]))
    save("fuzz_link", "lost", link([*short, "20 lost", "30 found", "31 batch 3",
                                    "31 state CPR_ENDED", "40 bye"]))
    # It breaks inside of a batch, and goes on with that batch, with one before it, or behind a gap.
    save("fuzz_link", "again", link(short, [first, *short[7:], "50 batch 3", "60 bye"]))
    save("fuzz_link", "older", link(short, [*short, "50 batch 3", "60 bye"]))
    save("fuzz_link", "gap", link(short, [first, "50 batch 9", "60 header 2", "70 bye"]))
    save("fuzz_link", "others", link(short, ["cprlink 1 manikin-1 other s1", "0 batch 1"],
                                     ["cprlink 1 manikin-1 gateway s2", *short[1:], "9 bye"],
                                     ["cprlink 1 manikin-2 gateway s1", *short[1:]]))
    save("fuzz_link", "strange", link([first, "0 state CPR_INIT", first, "9 batch 0", "8 batch 1",
                                       "7 stream a b c", "-1 beat", "6 start", "99999999999 beat"],
                                      ["cprlink 2 a b c"], ["cprlink 1 .. b c"], ["beat"]))


def link(*streams):
    return LINK_SPLIT.join("".join(line + "\n" for line in lines).encode() for lines in streams)


def make_dictionary():
    source = ROOT / "libs" / "libCPRData"
    base = (source / "CPREventBase.h").read_text()
    words = ["<evt ", "</evt>", "<param ", "/>", "type=\"", "msecs=\"", "value=\"", "units=\"",
             "<eventList>", "</eventList>", "<waveFormList>", "<waveForm ", "</waveForm>",
             "<scale ", "<externalFile ", "fileName=\"", "unit=\"", "<guidelines>",
             "<GuideLineSettings>", "</GuideLineSettings>", "<?xml version=\"1.0\"?>",
             "<!DOCTYPE a [<!ENTITY b \"c\">]>", "&amp;", "&#10;", "<![CDATA[", "]]>", "<!--", "-->",
             "COMP.WV", "VENT.WV", "\\xff\\xfe", "PK\\x01\\x02", "PK\\x03\\x04", "PK\\x05\\x06",
             "PK\\x06\\x06", "cprlog 1", " msg ", " header ", " wave ", " state ", " learner ", " start ", " manikin ",
             " remark ", " unremark ",
             " stream ", " batch ", "cprlink 1 ", " beat", " lost", " found", " bye", "welcome ",
             "ack ", "start", "stop", "refused ", "manikin-1 gateway s1",
             "2147483647", "-2147483648", "4294967295", "1e38", "nan", "inf", "-1"]
    words += STATES
    for enum in ("EventType", "ParameterType"):
        body = re.search(r"enum " + enum + r"[\s:\w]*\{(.*?)\};", base, re.S).group(1)
        body = re.sub(r"//.*|/\*.*?\*/", "", body)
        words += [entry.split("=")[0].strip() for entry in body.split(",") if entry.strip()]
    for header in ("CPRGuidelines.h", "CPRWaveformInfo.h"):
        words += re.findall(r"Q_PROPERTY\(\s*\w+\s+\*?(\w+)", (source / header).read_text())
    lines = ['"' + word.replace('"', '\\"') + '"' for word in dict.fromkeys(words)]
    (ROOT / "fuzz" / "cprdata.dict").write_text("\n".join(lines) + "\n")


make_messages()
make_calls()
make_xml()
make_archives()
make_logs()
make_links()
make_dictionary()
