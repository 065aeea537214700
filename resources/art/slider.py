"""The bitmap slider: a lying track and the ivory bead that runs on it."""

import numpy as np

import palette
from canvas import Canvas, distance_to_box, smoothstep
from relief import shaded

TRACK_WIDTH, TRACK_HEIGHT = 150, 21
SLOT_HEIGHT, SLOT_MARGIN = 5.0, 6.0
# The slider insets its bead by 4 points in a regular slider's knob of 21.
BEAD_SIZE, BEAD, POINTER_WIDTH = 13, 6.1, 1.6

_SUPERSAMPLE = 4


def draw_track():
    canvas = Canvas(TRACK_WIDTH, TRACK_HEIGHT, -TRACK_WIDTH / 2, -TRACK_HEIGHT / 2, _SUPERSAMPLE)
    slot = (0.0, 0.0, TRACK_WIDTH / 2 - SLOT_MARGIN, SLOT_HEIGHT / 2, SLOT_HEIGHT / 2)
    canvas.ink(palette.SLOT_LIP, canvas.coverage(distance_to_box(canvas.x, canvas.y + 0.5, *slot)))
    canvas.ink(palette.SLOT, canvas.coverage(distance_to_box(canvas.x, canvas.y, *slot)))
    return canvas.reduced()


def draw_bead():
    canvas = Canvas(BEAD_SIZE, BEAD_SIZE, -BEAD_SIZE / 2, -BEAD_SIZE / 2, _SUPERSAMPLE)
    radius = np.hypot(canvas.x, canvas.y)
    height = 2.5 * (1.0 - smoothstep(BEAD - 1.8, BEAD + 0.4, radius))
    height += 0.5 * np.sqrt(np.maximum(1.0 - (radius / 9.0) ** 2, 0.0))
    light = shaded(height, canvas.samples_per_point, palette.linear(palette.IVORY_CAP), gloss=0.14)
    mark = canvas.coverage(np.maximum(np.abs(canvas.x) - POINTER_WIDTH / 2, np.abs(canvas.y) - 3.4))[..., None]
    light = light * (1.0 - mark) + palette.linear(palette.POINTER) * mark
    canvas.light(light, canvas.coverage(radius - BEAD))
    return canvas.reduced()
