"""The knob: turned ivory with a scalloped grip and an inlaid pointer, lit from above."""

import numpy as np

import palette
from canvas import Canvas, smoothstep
from layout import KNOB_SIZE, frame_angle
from relief import shaded

CAP, GRIP_INNER, GRIP_OUTER = 14.8, 15.6, 19.4  # radii in points
SCALLOPS, SCALLOP_DEPTH = 18, 0.5
HEIGHT, DOME = 6.0, 1.3
POINTER_START, POINTER_END, POINTER_WIDTH = 5.4, 18.0, 2.2

_SUPERSAMPLE = 4


def draw_shadow(canvas, x, y):
    """What a knob centred there throws onto the face: a wide soft shadow below it and a close dark one."""
    dx, dy = canvas.x - x, canvas.y - y
    canvas.ink(palette.BLACK, 0.50 * (1.0 - smoothstep(14.0, 26.5, np.hypot(dx, dy + 3.0))))
    canvas.ink(palette.BLACK, 0.55 * (1.0 - smoothstep(GRIP_OUTER - 0.6, GRIP_OUTER + 2.6, np.hypot(dx, dy + 0.9))))


def draw(frame):
    """Knob frame 0 to 127 by itself on a clear canvas of one knob's size, the centre at (0, 0)."""
    canvas = Canvas(KNOB_SIZE, KNOB_SIZE, -KNOB_SIZE / 2, -KNOB_SIZE / 2, _SUPERSAMPLE)
    x, y = canvas.x, canvas.y
    radius = np.hypot(x, y)
    turn = np.deg2rad(frame_angle(frame))
    along = x * np.cos(turn) + y * np.sin(turn)
    across = y * np.cos(turn) - x * np.sin(turn)

    # The scallops turn with the pointer, which runs out along a ridge between two of them.
    scallops = 1.0 - 2.0 * np.abs(np.sin(SCALLOPS / 2 * (np.arctan2(y, x) - turn)))
    grip = radius - SCALLOP_DEPTH * scallops * smoothstep(CAP, CAP + 1.8, radius)
    height = HEIGHT * (1.0 - np.clip((grip - GRIP_INNER) / (GRIP_OUTER - GRIP_INNER), 0.0, 1.0) ** 1.6)
    height += DOME * np.sqrt(1.0 - (np.minimum(radius, GRIP_INNER) / 18.0) ** 2)
    height -= 0.25 * np.exp(-(((radius - CAP) / 0.35) ** 2))  # the turned groove around the cap

    cap = canvas.coverage(radius - CAP)[..., None]
    ivory = palette.linear(palette.IVORY) * (1.0 - cap) + palette.linear(palette.IVORY_CAP) * cap
    light = shaded(height, canvas.samples_per_point, ivory, gloss=0.14)
    inlay = canvas.coverage(
        np.maximum(np.abs(across) - POINTER_WIDTH / 2, np.maximum(POINTER_START - along, along - POINTER_END))
    )[..., None]
    dark = shaded(0.4 * height, canvas.samples_per_point, palette.linear(palette.POINTER), gloss=0.03)
    canvas.light(light * (1.0 - inlay) + dark * inlay, canvas.coverage(grip - GRIP_OUTER))
    return canvas.reduced()
