#!/usr/bin/env python3
"""Composes s_done.wav, the short sound at the end of a search: make_sound.py OUTPUT.

The sound is three soft, rising bell notes. The script needs only the standard library and makes the
same bytes on every machine.
"""

import math
import struct
import sys
import wave

RATE = 22050
LENGTH = 0.75  # seconds

# (start in seconds, frequency in Hz, loudness): an A major triad, the last note held.
NOTES = ((0.00, 880.00, 0.30), (0.09, 1108.73, 0.30), (0.18, 1318.51, 0.36))
# (multiple of the note's frequency, share, decay per second): what makes a sine sound like a bell.
PARTIALS = ((1.0, 1.0, 7.0), (2.0, 0.35, 11.0), (3.01, 0.15, 18.0))
ATTACK = 0.006  # seconds; without it each note begins with a click


def note_at(time, frequency):
    """Returns the value of a struck note, `time` seconds after the stroke."""
    if time < 0:
        return 0.0
    value = sum(share * math.exp(-decay * time) * math.sin(2 * math.pi * frequency * factor * time)
                for factor, share, decay in PARTIALS)
    return value * min(1.0, time / ATTACK)


def samples():
    total = int(RATE * LENGTH)
    for index in range(total):
        time = index / RATE
        value = sum(loud * note_at(time - start, frequency) for start, frequency, loud in NOTES)
        fade = min(1.0, (total - index) / (0.05 * RATE))
        yield round(20000 * max(-1.0, min(1.0, value * fade)))


def main():
    if len(sys.argv) != 2:
        sys.exit("usage: make_sound.py OUTPUT")
    with wave.open(sys.argv[1], "wb") as sound:
        sound.setnchannels(1)
        sound.setsampwidth(2)
        sound.setframerate(RATE)
        sound.writeframes(b"".join(struct.pack("<h", sample) for sample in samples()))


if __name__ == "__main__":
    main()
