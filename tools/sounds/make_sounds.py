#!/usr/bin/env python3
"""Makes the six sounds of Ostrane: data/sounds/101.wav to 106.wav.

    python3 tools/sounds/make_sounds.py [outdir]      (default: data/sounds)

Plain RIFF WAVE, PCM, mono, synthesised from sines with soft attacks and
decays, so the files are the same bytes at every run. Each file is read back
and checked (format, length, level, silent ends) before the script ends.

  101  tile set down: a soft wooden "tock"          0.24 s  11025 Hz  8-bit
  102  a gentle two-note marimba (not played)       0.99 s  11025 Hz  8-bit
  103  two-note chime: solution ready / sound on    0.48 s  22050 Hz 16-bit
  104  a slow falling chime (never played)          1.85 s  11025 Hz  8-bit
  105  a soft rising arpeggio (not played)          2.73 s  11025 Hz  8-bit
  106  end of the game: a short cheerful fanfare    1.40 s  22050 Hz  8-bit
"""

import math
import os
import struct
import sys
import wave



class Noise:
    """A small linear congruential generator: the same noise on every system."""

    def __init__(self, seed):
        self.state = seed & 0xFFFFFFFF

    def next(self):
        self.state = (1664525 * self.state + 1013904223) & 0xFFFFFFFF
        return self.state / 2147483648.0 - 1.0  # -1 .. 1


def envelope(t, attack, decay):
    """Rises along a half sine in `attack` seconds, then falls exponentially
    with time constant `decay`."""
    if t < 0:
        return 0.0
    if t < attack:
        return 0.5 - 0.5 * math.cos(math.pi * t / attack)
    return math.exp(-(t - attack) / decay)


def bell(freq, t, attack, decay, partials=((1.0, 1.0), (2.0, 0.35), (3.0, 0.12))):
    """A struck tone: a few harmonic partials, the higher ones dying faster."""
    s = 0.0
    for ratio, amp in partials:
        s += amp * math.sin(2 * math.pi * freq * ratio * t) * envelope(t, attack, decay / ratio)
    return s


def finish(samples, rate, peak):
    """Scales the whole to `peak` and fades the ends to silence: 1 ms at the
    start (the envelopes already rise from zero), 12 ms at the end."""
    top = max(abs(s) for s in samples) or 1.0
    out = [s * peak / top for s in samples]
    n = len(out)
    for length, at_end in ((int(0.001 * rate), False), (int(0.012 * rate), True)):
        for i in range(length):
            g = 0.5 - 0.5 * math.cos(math.pi * i / length)
            out[n - 1 - i if at_end else i] *= g
    return out


def render(duration, rate, voice):
    n = int(round(duration * rate))
    return [voice(i / rate) for i in range(n)]


def tock(rate):
    noise = Noise(101)
    low = 0.0
    hit = []
    for i in range(int(0.02 * rate)):  # a short filtered knock of noise
        low += 0.35 * (noise.next() - low)
        hit.append(low * envelope(i / rate, 0.0015, 0.004))

    def voice(t):
        body = (0.9 * math.sin(2 * math.pi * 640 * t) * envelope(t, 0.002, 0.030)
                + 0.5 * math.sin(2 * math.pi * 1180 * t) * envelope(t, 0.002, 0.016)
                + 0.25 * math.sin(2 * math.pi * 2050 * t) * envelope(t, 0.0015, 0.008)
                + 0.2 * math.sin(2 * math.pi * 310 * t) * envelope(t, 0.003, 0.045))
        i = int(t * rate)
        return body + (0.8 * hit[i] if i < len(hit) else 0.0)

    return render(0.24, rate, voice)


def marimba(rate):
    notes = [(0.0, 783.99), (0.16, 523.25)]  # G5 then C5

    def voice(t):
        return sum(bell(f, t - start, 0.004, 0.18, ((1.0, 1.0), (4.0, 0.12)))
                   for start, f in notes if t >= start)

    return render(0.99, rate, voice)


def chime(rate):
    notes = [(0.0, 1318.51), (0.11, 1760.0)]  # E6 then A6

    def voice(t):
        return sum(bell(f, t - start, 0.003, 0.14) for start, f in notes if t >= start)

    return render(0.48, rate, voice)


def falling(rate):
    notes = [(0.0, 1046.50), (0.28, 880.0), (0.56, 698.46)]  # C6, A5, F5

    def voice(t):
        return sum(0.8 * bell(f, t - start, 0.006, 0.42) for start, f in notes if t >= start)

    return render(1.85, rate, voice)


def arpeggio(rate):
    notes = [(0.0, 392.0), (0.32, 493.88), (0.64, 587.33), (0.96, 783.99)]  # G4 B4 D5 G5

    def voice(t):
        return sum(bell(f, t - start, 0.05, 0.55, ((1.0, 1.0), (2.0, 0.2)))
                   for start, f in notes if t >= start)

    return render(2.73, rate, voice)


def fanfare(rate):
    # C5 E5 G5, then C6 held with a light vibrato: a little brass-like tone.
    notes = [(0.0, 523.25, 0.12), (0.13, 659.26, 0.12), (0.26, 783.99, 0.12), (0.40, 1046.50, 0.78)]
    brass = ((1.0, 1.0), (2.0, 0.45), (3.0, 0.25), (4.0, 0.12))

    def voice(t):
        s = 0.0
        for start, f, length in notes:
            u = t - start
            if u < 0:
                continue
            if u < length:
                gain = 0.5 - 0.5 * math.cos(math.pi * min(u / 0.015, 1.0))
            else:
                gain = math.exp(-(u - length) / (0.08 if length > 0.5 else 0.05))
            gain *= math.exp(-u / (1.2 if length > 0.5 else 0.4))
            vib = 1.0 + (0.004 * math.sin(2 * math.pi * 5.5 * u) if length > 0.5 else 0.0)
            for ratio, amp in brass:
                s += gain * amp * math.sin(2 * math.pi * f * ratio * vib * u)
        return s

    return render(1.40, rate, voice)


SOUNDS = [
    # number, rate, bytes a sample, duration, loudest sample (of full scale), maker
    (101, 11025, 1, 0.24, 0.45, tock),
    (102, 11025, 1, 0.99, 0.40, marimba),
    (103, 22050, 2, 0.48, 0.40, chime),
    (104, 11025, 1, 1.85, 0.40, falling),
    (105, 11025, 1, 2.73, 0.40, arpeggio),
    (106, 22050, 1, 1.40, 0.50, fanfare),
]


def encode(samples, width):
    if width == 1:  # unsigned, silence at 128
        return bytes(max(0, min(255, int(round(128 + 127 * s)))) for s in samples)
    return b"".join(struct.pack("<h", max(-32767, min(32767, int(round(32767 * s)))))
                    for s in samples)


def write(path, rate, width, samples):
    with wave.open(path, "wb") as w:
        w.setnchannels(1)
        w.setsampwidth(width)
        w.setframerate(rate)
        w.writeframes(encode(samples, width))


def check(path, rate, width, duration, loudest):
    with wave.open(path, "rb") as w:
        assert w.getnchannels() == 1, path
        assert w.getsampwidth() == width, path
        assert w.getframerate() == rate, path
        assert w.getcomptype() == "NONE", path
        frames = w.readframes(w.getnframes())
        n = w.getnframes()
    assert abs(n / rate - duration) < 0.005, (path, n / rate)
    if width == 1:
        values = [(b - 128) / 127 for b in frames]
    else:
        values = [v / 32767 for (v,) in struct.iter_unpack("<h", frames)]
    peak = max(abs(v) for v in values)
    assert loudest - 0.02 < peak <= loudest + 0.01, (path, peak)
    step = 2.0 / 127
    assert abs(values[0]) <= step and abs(values[-1]) <= step, (path, "ends are not silent")
    with open(path, "rb") as f:
        head = f.read(12)
    assert head[:4] == b"RIFF" and head[8:12] == b"WAVE", path


def main():
    here = os.path.dirname(os.path.abspath(__file__))
    out = sys.argv[1] if len(sys.argv) > 1 else os.path.normpath(os.path.join(here, "..", "..", "data", "sounds"))
    os.makedirs(out, exist_ok=True)
    for number, rate, width, duration, loudest, maker in SOUNDS:
        path = os.path.join(out, "%d.wav" % number)
        write(path, rate, width, finish(maker(rate), rate, loudest))
        check(path, rate, width, duration, loudest)
        print("%s  %.2f s  %d Hz  %d-bit  %d bytes"
              % (path, duration, rate, 8 * width, os.path.getsize(path)))


if __name__ == "__main__":
    main()
