#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
# Copyright (c) 2026 The libCPRData authors
"""Makes two-rescuers.cprlog, the recording of a two-minute session by two rescuers (30:2).

The log is kept in the repository; run this by hand after a change to the scenario:

    python3 tests/data/make_two_rescuers_log.py

It writes the log next to itself and gives the same bytes every time. README.md states what the
session holds; tests rely on those figures, so keep the two in step.

Session times are in ms and count from the start of the session; all lie on the 20 ms grid of the
waves. Depths are in hundredths of a millimetre, forces in g, volumes in ml.
"""

import math
import pathlib
from typing import NamedTuple

PERIOD = 20  # ms between two wave samples
SESSION_START = 3000  # ms of the recording at which the session time is 0
SESSION_END = 120000
MESSAGE_DELAY = 1  # ms from a wave packet to a message that follows it

WAVE_DEPTH = 9
WAVE_VOLUME = 12

SHOCK, GENERIC_EVENT, AED_REMOTE, ECG_STATUS, VERSION = 47, 48, 50, 52, 64
USER_EVENT, LIFETIME, GUIDELINES, WAVE_INFO, COMPRESSION = 68, 70, 75, 77, 79
VENTILATION, INACTIVITY, COMP_RATE, VENT_RATE = 80, 81, 87, 88
PROTOCOL, PEAK, SCORES, STATS, BINS, GUIDELINE_STATS = 101, 104, 108, 109, 110, 111
UNKNOWN = 200

TWO_RESCUERS = 4

# ---------------------------------------------------------------------------- the scenario

COMP_START_TO_PEAK = 200
COMP_PEAK_TO_END = 220
COMP_DURATION = COMP_START_TO_PEAK + COMP_PEAK_TO_END
FORCE_PER_DEPTH = 5  # g per hundredth of a millimetre: the manikin's spring

VENT_PEAK_TO_END = 400
VENT_STEP = 1300  # from one breath to the next, and from the second to the next compression
VENT_AFTER_COMP = 100

INCOMPLETE_RELEASE = 1
HAND_POSITION_OK = 4
XIPHOID = 8
HAND_POSITION_ERROR = 16
HAND_POSITION_LEFT = 32


class Run(NamedTuple):
    """Compressions at one pace, with breaths after them or not."""

    title: str
    start: int
    period: int
    depths: list
    leaning: dict  # compression number -> release depth
    hand_positions: dict  # compression number -> status bits
    breaths: list  # (volume, ms from start to peak)


RUNS = [
    Run("Run 1: 30 compressions every 540 ms, 2 breaths", 2000, 540,
        [5100, 5200, 5300, 5400, 5300, 5200] * 5, {}, {}, [(520, 800), (400, 800)]),
    Run("Run 2: 30 compressions every 560 ms, packet loss, 2 breaths", 20780, 560,
        [5000, 5100, 5200, 5100, 5000, 5100] * 5, {11: 900, 20: 900}, {},
        [(320, 800), (600, 600)]),
    Run("Run 3: 30 compressions every 540 ms, two at a wrong place; the AED is brought", 40140, 540,
        [5200, 5300, 5400, 5500, 5400, 5300] * 5, {},
        {7: HAND_POSITION_ERROR | HAND_POSITION_LEFT, 15: XIPHOID}, []),
    Run("Run 4: 30 compressions every 640 ms, the last ten too shallow, 2 breaths", 66920, 640,
        [5200] * 20 + [4600] * 10, {}, {}, [(740, 800), (700, 800)]),
    Run("Run 5: 12 compressions every 480 ms, all too shallow", 88600, 480,
        [4500] * 12, {5: 700, 6: 700, 7: 700, 8: 700}, {}, []),
    Run("Run 6: 30 compressions every 540 ms by the other rescuer, 2 breaths", 100920, 540,
        [5300, 5400, 5500] * 10, {10: 600, 21: 600}, {}, [(380, 600), (580, 800)]),
]

# End of the last compression and the whole seconds that the manikin reports from second 3 on.
PAUSES = [(56220, 10), (94300, 6)]

# Session times of the first and the last header that is missing.
LOSS = (26860, 27080)


class Compression(NamedTuple):
    start: int
    peak: int
    end: int
    since_previous: int
    depth: int
    floor: int  # release depth of the compression before
    release: int
    status: int
    rate: int  # 0 where the manikin does not know one


class Ventilation(NamedTuple):
    start: int
    peak: int
    end: int
    since_previous: int
    volume: int
    rate: int  # 0 where the manikin does not know one


def rounded(numerator, denominator):
    """The nearest whole number, halves up."""
    return (2 * numerator + denominator) // (2 * denominator)


def make_compressions():
    compressions = []
    for run in RUNS:
        floor = 0
        for number, depth in enumerate(run.depths, start=1):
            start = run.start + (number - 1) * run.period
            release = run.leaning.get(number, 0)
            status = run.hand_positions.get(number, HAND_POSITION_OK)
            if release:
                status |= INCOMPLETE_RELEASE
            compressions.append(Compression(
                start=start,
                peak=start + COMP_START_TO_PEAK,
                end=start + COMP_DURATION,
                since_previous=start - compressions[-1].start if compressions else 0,
                depth=depth,
                floor=floor,
                release=release,
                status=status,
                # A run's first compression has none before it at the same pace.
                rate=rounded(60000, run.period) if number > 1 else 0))
            floor = release
    return compressions


def make_ventilations():
    ventilations = []
    for run in RUNS:
        start = run.start + (len(run.depths) - 1) * run.period + COMP_DURATION + VENT_AFTER_COMP
        for volume, start_to_peak in run.breaths:
            before = [v.start for v in ventilations]
            ventilations.append(Ventilation(
                start=start,
                peak=start + start_to_peak,
                end=start + start_to_peak + VENT_PEAK_TO_END,
                since_previous=start - before[-1] if before else 0,
                volume=volume,
                # Over the last two intervals, which are a breath and a cycle.
                rate=rounded(120000, start - before[-2]) if len(before) > 1 else 0))
            start += VENT_STEP
    return ventilations


COMPRESSIONS = make_compressions()
VENTILATIONS = make_ventilations()

# ---------------------------------------------------------------------------- waves


def draw(wave, start, end, first, last):
    """Draws half a cosine from first to last, both ends included."""
    steps = (end - start) // PERIOD
    for step in range(steps + 1):
        share = (1 - math.cos(math.pi * step / steps)) / 2
        # The small term keeps halves from falling to either side with the platform's cosine.
        wave[start // PERIOD + step] = math.floor(first + (last - first) * share + 0.5 + 1e-6)


def make_depth_wave():
    """Depth by sequence number; the hands rest on the chest between two compressions of a run."""
    wave = [0] * (SESSION_END // PERIOD + 1)
    for index, comp in enumerate(COMPRESSIONS):
        draw(wave, comp.start, comp.peak, comp.floor, comp.depth)
        draw(wave, comp.peak, comp.end, comp.depth, comp.release)
        if comp.release:
            draw(wave, comp.end, COMPRESSIONS[index + 1].start, comp.release, comp.release)
    return wave


def make_volume_wave():
    wave = [0] * (SESSION_END // PERIOD + 1)
    for vent in VENTILATIONS:
        draw(wave, vent.start, vent.peak, 0, vent.volume)
        draw(wave, vent.peak, vent.end, vent.volume, 0)
    return wave


# ---------------------------------------------------------------------------- messages


def content(length, *fields):
    """Content of length bytes; a field is (index, width, value), little-endian."""
    data = bytearray(length)
    for index, width, value in fields:
        data[index:index + width] = (value % (1 << (8 * width))).to_bytes(width, "little")
    assert len(data) == length
    return bytes(data)


def in_bytes(first, values):
    return [(first + offset, 1, value) for offset, value in enumerate(values)]


def version_info():
    return content(
        23,
        (6, 1, 2), (7, 1, 3), (12, 1, 1), (13, 4, 1047),  # firmware 3.2.1.1047
        (10, 1, 4),  # adult male
        (17, 1, 1), (18, 1, 4), (19, 1, 2),  # RFID module 1.4.2
        (20, 1, 2), (21, 1, 1),  # Feedpod 2.1
        (22, 1, 2))  # an AED trainer of type 2


def lifetime_compressions():
    return content(6, (1, 1, 0), (2, 4, 184320))


def lifetime_ventilations():
    return content(6, (1, 1, 1), (2, 4, 12288))


def lifetime_battery():
    return content(
        28, (1, 1, 32),
        (2, 2, 210), (4, 2, 160), (6, 2, 50),  # cycles, slow and fast charges
        (8, 2, 640), (10, 2, 75), (12, 2, 3), (14, 2, 4),  # hours: slow, fast, cold, warm
        (16, 1, 35), (17, 1, 97),  # average minimum and maximum level in percent
        (18, 2, 6), (20, 2, 480), (22, 2, 2600), (24, 2, 2450), (26, 2, 9))


def wave_info(wave_type, delay):
    return content(9, (1, 1, wave_type), (2, 1, PERIOD), (7, 2, delay))


def guidelines(identifier, active, depth_min, depth_max, too_deep, per_cycle_two_rescuers):
    assert len(identifier) == 25
    return content(
        52,
        # compressions: depths in mm, rates, release force and depth, the least depth that counts
        (2, 1, depth_min), (3, 1, depth_max), (46, 1, too_deep), (23, 1, 12),
        (21, 1, 100), (22, 1, 120), (4, 1, 110),
        (5, 2, 2500), (7, 1, 5),
        (36, 1, 1),  # relative depth
        # seconds until a pause is noticed: level 3, 2, 1, 0, and 0 with breaths alone
        (12, 1, 16), (17, 1, 21), (18, 1, 11), (19, 1, 3), (20, 1, 9),
        # breaths: volumes, inflation times, seconds until a pause is noticed
        (24, 2, 110), (26, 2, 400), (28, 2, 700), (30, 2, 700), (32, 2, 1500), (16, 1, 31),
        # lowest and highest breaths per minute: one rescuer, two, breaths alone, high performance
        (34, 1, 4), (14, 1, 12), (43, 1, 4), (44, 1, 12), (35, 1, 8), (15, 1, 14),
        (8, 1, 9), (9, 1, 11),
        # the cycle, and the flow times in percent: compressions alone, one rescuer, two
        (37, 1, 30), (38, 1, 2), (39, 1, per_cycle_two_rescuers),
        (40, 1, 95), (41, 1, 60), (42, 1, 75),
        (47, 1, 1), (48, 1, 2), (49, 1, 5),  # 2 to 5 breaths before the first compression
        (45, 1, 1), (50, 1, active), (51, 1, active)) + identifier.encode("ascii")


def compression(comp, now):
    return content(
        18,
        (1, 2, now - comp.start), (3, 2, comp.depth * FORCE_PER_DEPTH),
        (5, 2, comp.release * FORCE_PER_DEPTH), (7, 1, comp.status), (8, 2, comp.depth),
        (10, 2, comp.release), (12, 2, COMP_START_TO_PEAK), (14, 2, COMP_PEAK_TO_END),
        (16, 2, comp.since_previous))


def ventilation(vent, now):
    return content(
        12,
        (1, 2, now - vent.start), (4, 2, vent.peak - vent.start), (6, 2, vent.end - vent.peak),
        (8, 2, vent.since_previous), (10, 2, vent.volume))


def user_event(text):
    return content(66, (1, 1, 1), *in_bytes(2, text.encode("ascii")))


# ---------------------------------------------------------------------------- statistics


def mean(values):
    return rounded(sum(values), len(values))


def deviation(values):
    average = sum(values) / len(values)
    return math.floor(math.sqrt(sum((v - average) ** 2 for v in values) / len(values)) + 0.5)


def percent(values, condition):
    return rounded(100 * sum(1 for v in values if condition(v)), len(values))


def histogram(values, limits):
    """Percent of the values in each of six bins; a limit is the lowest value of its bin."""
    edges = [-math.inf] + limits + [math.inf]
    return [percent(values, lambda v: low <= v < high) for low, high in zip(edges, edges[1:])]


DEPTHS = [comp.depth for comp in COMPRESSIONS]
RELEASES = [comp.release for comp in COMPRESSIONS]
STROKES = [comp.depth - comp.release for comp in COMPRESSIONS]
COMP_RATES = [comp.rate for comp in COMPRESSIONS if comp.rate]
VOLUMES = [vent.volume for vent in VENTILATIONS]
INFLATIONS = [vent.peak - vent.start for vent in VENTILATIONS]
VENT_RATES = [vent.rate for vent in VENTILATIONS if vent.rate]
PAUSE_SECONDS = [seconds for _, seconds in PAUSES]
COMPS_PER_CYCLE = [len(run.depths) for run in RUNS]
VENTS_PER_CYCLE = [len(run.breaths) for run in RUNS if run.breaths]
FLOW_TIME = rounded(100 * sum((len(run.depths) - 1) * run.period + COMP_DURATION for run in RUNS),
                    SESSION_END)
SHOCK_TIME = 63000


def independent_stats():
    return content(
        68,
        (1, 4, 1767225600), (5, 2, SESSION_END // 1000), (7, 2, SHOCK_TIME // 1000),
        (9, 2, COMPRESSIONS[0].start // 1000), (11, 2, VENTILATIONS[0].start // 1000),
        (13, 2, len(COMPRESSIONS)), (15, 2, len(COMPS_PER_CYCLE)),
        (17, 2, len(VENTILATIONS)), (19, 2, len(VENTS_PER_CYCLE)), (21, 2, len(PAUSES)),
        (23, 2, mean(DEPTHS)), (25, 2, deviation(DEPTHS)),
        (27, 2, mean(RELEASES)), (29, 2, deviation(RELEASES)),
        (31, 1, mean(COMP_RATES)), (32, 1, deviation(COMP_RATES)),
        (33, 2, mean(VOLUMES)), (35, 2, deviation(VOLUMES)),
        (37, 1, mean(VENT_RATES)), (38, 1, deviation(VENT_RATES)),
        (39, 1, percent(COMPRESSIONS, lambda c: c.status & HAND_POSITION_OK)),
        (40, 1, percent(COMPRESSIONS, lambda c: c.status & XIPHOID)),
        (41, 2, mean(STROKES)), (43, 2, deviation(STROKES)),
        (45, 2, mean(PAUSE_SECONDS)), (47, 2, sum(PAUSE_SECONDS)),
        (49, 2, mean(INFLATIONS)), (51, 2, deviation(INFLATIONS)),
        (53, 1, 0),  # no breaths before the first compression
        (54, 2, mean(VENTS_PER_CYCLE)),
        (56, 2, min(VENTS_PER_CYCLE)), (58, 2, max(VENTS_PER_CYCLE)),
        (60, 2, mean(COMPS_PER_CYCLE)),
        (62, 2, min(COMPS_PER_CYCLE)), (64, 2, max(COMPS_PER_CYCLE)),
        (66, 1, FLOW_TIME), (67, 1, rounded(60000 * len(VENTILATIONS), SESSION_END)))


def bin_stats():
    bins = (histogram(DEPTHS, [4500, 5000, 5500, 6000, 6500])
            + histogram(RELEASES, [250, 500, 750, 1000, 1500])
            + histogram(COMP_RATES, [80, 100, 110, 121, 141])
            + histogram(PAUSE_SECONDS, [5, 10, 15, 20, 30])
            + histogram(VOLUMES, [300, 400, 550, 700, 800])
            + histogram(VENT_RATES, [4, 6, 9, 11, 13]))
    return content(37, *in_bytes(1, bins))


def guideline_stats():
    return content(14, *in_bytes(1, [
        percent(DEPTHS, lambda d: 5000 <= d <= 6000),
        percent(RELEASES, lambda r: r <= 500),
        percent(COMP_RATES, lambda r: 100 <= r <= 120),
        percent(COMP_RATES, lambda r: r < 100),
        percent(VOLUMES, lambda v: 400 <= v < 700),
        percent(VOLUMES, lambda v: v < 400),
        percent(VENT_RATES, lambda r: 4 <= r <= 12),
        percent(VENT_RATES, lambda r: r > 12),
        -1, -1,  # rates of a session with breaths alone: not measured
        percent(INFLATIONS, lambda t: 700 <= t <= 1500),
        percent(INFLATIONS, lambda t: t < 700),
        percent(STROKES, lambda s: 5000 <= s <= 6000)]))


def scores():
    comp_score, vent_score = 63, 81
    # Three quarters of the overall score are the compressions'. The manikin takes nothing off for
    # interruptions in a session with an AED.
    overall = math.floor(comp_score * 0.75 + vent_score * 0.25 + 0.5)
    return content(27, *in_bytes(1, [
        10, 30, 12, 8, 30,  # release, too shallow, rate too low, too high, hand position
        comp_score,
        12, 12, 0, 0, 5, 15,  # volume small, large, rate low, high, pause, breaths in a cycle
        vent_score,
        FLOW_TIME,
        4, 0, 5, 10,  # stroke length, too deep, compressions in a cycle, flow time
        overall,
        1,  # scored as a session with an AED
        4, 0,  # too few and too many breaths before the first compression
        6, 3,  # inflation too fast, too slow
        2, 1]))  # breaths per minute too few, too many


# ---------------------------------------------------------------------------- the log


class Log:
    def __init__(self):
        self.lines = ["cprlog 1"]
        self.msecs = 0

    def comment(self, text):
        self.lines.append("# " + text if text else "#")

    def add(self, msecs, text):
        assert msecs >= self.msecs
        self.msecs = msecs
        self.lines.append(f"{msecs} {text}")

    def message(self, msecs, identifier, sequence, data):
        self.add(msecs, f"msg {identifier} {sequence} {data.hex()}")


class Happening(NamedTuple):
    """A message that the manikin sends at a session time."""

    identifier: int
    data: bytes
    comment: str = ""


def make_happenings():
    happenings = {}

    def add(time, *happening):
        assert time % PERIOD == 0
        assert not LOSS[0] <= time <= LOSS[1], f"a message at {time} ms would be lost"
        happenings.setdefault(time, []).append(Happening(*happening))

    for comp in COMPRESSIONS:
        add(comp.peak + PERIOD, PEAK, content(3, (1, 2, comp.depth)))
        now = comp.end + PERIOD
        if comp.rate:
            add(now, COMP_RATE, content(3, (1, 2, comp.rate)))
        add(now, COMPRESSION, compression(comp, now))

    for vent in VENTILATIONS:
        now = vent.end + PERIOD
        if vent.rate:
            add(now, VENT_RATE, content(2, (1, 1, vent.rate)))
        add(now, VENTILATION, ventilation(vent, now))

    for last_end, seconds in PAUSES:
        for reported in range(3, seconds + 1):
            now = last_end + 1000 * reported
            first = reported == 3
            add(now, INACTIVITY, content(3, (1, 2, reported)),
                f"No compression since {last_end} ms, reported every second" if first else "")
            if first:
                add(now, COMP_RATE, content(3))

    def generic(event):
        return content(2, (1, 1, event))

    def one_byte(value):
        return content(2, (1, 1, value))

    def rhythm(value):
        return content(3, (1, 1, value), (2, 1, value))

    add(42000, GENERIC_EVENT, generic(1), "The AED trainer is switched on")
    add(45000, AED_REMOTE, one_byte(9), "Remote control: show where the pads go")
    add(47000, AED_REMOTE, one_byte(5), "Remote control: pads loose, a button that makes no event")
    add(50000, ECG_STATUS, rhythm(1), "Ventricular fibrillation")
    add(60000, GENERIC_EVENT, generic(6), "Shock advised")
    add(SHOCK_TIME, SHOCK, content(3, (1, 2, 200)), "Shock of 200 J")
    add(SHOCK_TIME + PERIOD, GENERIC_EVENT, generic(11), "Shock delivered")
    add(64500, ECG_STATUS, rhythm(4), "Sinus rhythm")
    add(75000, ECG_STATUS, rhythm(4), "Sinus rhythm, reported again")
    add(77000, ECG_STATUS, rhythm(0), "No rhythm, which makes no event")
    add(96000, USER_EVENT, user_event("Change of rescuer"), "The rescuers change places")
    return happenings


def write_preparation(log):
    log.comment("Two rescuers, 30:2, two minutes. Made by make_two_rescuers_log.py.")
    log.comment("")
    log.comment("The manikin is connected and tells about itself")
    log.add(0, "state CPR_MANIKIN_INIT")
    log.message(120, VERSION, 0, version_info())
    log.message(140, LIFETIME, 0, lifetime_compressions())
    log.message(160, LIFETIME, 0, lifetime_ventilations())
    log.message(180, LIFETIME, 0, lifetime_battery())
    log.message(200, WAVE_INFO, 0, wave_info(WAVE_DEPTH, 40))
    log.message(220, WAVE_INFO, 0, wave_info(WAVE_VOLUME, 60))
    log.comment("The guideline set in force, for adults, and one for children")
    log.message(240, GUIDELINES, 0, guidelines("2025-EU-STD-A-01-20250901", 1, 50, 60, 2, 30))
    log.message(260, GUIDELINES, 0, guidelines("2025-EU-STD-C-02-20250901", 0, 40, 50, 1, 15))
    log.comment("The learners and the protocol: two rescuers")
    log.add(900, "learner Mira Holm")
    log.add(950, "learner Jörg Aldane")
    # The first byte is for the event list, the second for the session info.
    log.message(1000, PROTOCOL, 0, content(2, (0, 1, TWO_RESCUERS), (1, 1, TWO_RESCUERS)))
    log.comment("The session is prepared and started")
    log.add(2000, "state CPR_INIT")
    log.add(SESSION_START, "state CPR_START")


def write_session(log):
    depth_wave = make_depth_wave()
    volume_wave = make_volume_wave()
    happenings = make_happenings()
    titles = {run.start: run.title for run in RUNS}
    titles[VENTILATIONS[-1].end + PERIOD] = "Hands off until the end"

    for sequence in range(1, SESSION_END // PERIOD + 1):
        time = sequence * PERIOD
        if time in titles:
            log.comment("")
            log.comment(titles[time])
        if LOSS[0] <= time <= LOSS[1]:
            if time == LOSS[0]:
                log.comment("12 wave packets are lost")
            continue
        now = SESSION_START + time
        log.add(now, f"header {sequence}")
        log.add(now, f"wave {WAVE_DEPTH} {depth_wave[sequence]} {sequence}")
        log.add(now, f"wave {WAVE_VOLUME} {volume_wave[sequence]} {sequence}")
        for happening in happenings.pop(time, []):
            if happening.comment:
                log.comment(happening.comment)
            log.message(now + MESSAGE_DELAY, happening.identifier, sequence, happening.data)
    assert not happenings


def write_results(log):
    end = SESSION_START + SESSION_END
    last = SESSION_END // PERIOD
    log.comment("")
    log.comment("The session has ended; statistics, scores and a message that nobody knows")
    log.add(end + 20, "state CPR_ENDED")
    log.message(end + 100, STATS, last, independent_stats())
    log.message(end + 120, BINS, last, bin_stats())
    log.message(end + 140, GUIDELINE_STATS, last, guideline_stats())
    log.message(end + 200, SCORES, last, scores())
    log.message(end + 220, UNKNOWN, last, content(4, (1, 1, 1)))


def main():
    log = Log()
    write_preparation(log)
    write_session(log)
    write_results(log)
    path = pathlib.Path(__file__).with_name("two-rescuers.cprlog")
    path.write_bytes(("\n".join(log.lines) + "\n").encode("utf-8"))


if __name__ == "__main__":
    main()
