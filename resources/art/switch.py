"""The switch: a bead in an upright slot. Up and lit is on, down and unlit is off."""

import numpy as np

import palette
from canvas import Canvas, distance_to_box, smoothstep
from layout import SWITCH_HEIGHT, SWITCH_WIDTH
from relief import shaded

SLOT_WIDTH, SLOT_HEIGHT = 11.0, 15.0
BEAD, TRAVEL = 4.3, 2.2

_SUPERSAMPLE = 8


def draw(on):
    """One state of the switch on a clear canvas of its frame's size."""
    canvas = Canvas(SWITCH_WIDTH, SWITCH_HEIGHT, -SWITCH_WIDTH / 2, -SWITCH_HEIGHT / 2, _SUPERSAMPLE)
    x, y = canvas.x, canvas.y

    # Light from above catches the slot's lower lip and leaves its upper wall in shadow.
    outside = distance_to_box(x, y + 0.5, 0.0, 0.0, SLOT_WIDTH / 2, SLOT_HEIGHT / 2, SLOT_WIDTH / 2)
    canvas.ink(palette.SLOT_LIP, canvas.coverage(outside))
    inside = distance_to_box(x, y, 0.0, 0.0, SLOT_WIDTH / 2, SLOT_HEIGHT / 2, SLOT_WIDTH / 2)
    canvas.ink(palette.SLOT, canvas.coverage(inside))

    centre = TRAVEL if on else -TRAVEL
    radius = np.hypot(x, y - centre)
    if on:
        glow = 0.30 * (1.0 - smoothstep(BEAD - 0.5, BEAD + 2.6, radius))
        canvas.ink(palette.AMBER, glow * canvas.coverage(inside))
    height = 0.75 * np.sqrt(np.maximum(BEAD**2 - radius**2, 0.0))
    material = palette.linear(palette.AMBER if on else palette.UNLIT)
    light = shaded(height, canvas.samples_per_point, material, gloss=0.10)
    if on:
        light = 0.5 * light + 0.55 * material
    else:
        light = 0.8 * light
    canvas.light(light, canvas.coverage(radius - BEAD))
    return canvas.reduced()
