"""The maker's picture: two ridges, each an echo that falls off peak by peak, crossing above a dark tarn."""

import numpy as np

import palette
from canvas import distance_to_line

DECAY = 0.66  # of each peak's height from one to the next
STEEPNESS = 0.8  # half the width of a peak's foot, in periods


def _outline(foot, height, period, highest, end):
    """Corners of the ridge that falls to the right from its peak at `highest`, entering left of it."""
    corners = []
    x, peak = highest - period, height / DECAY
    while x < end + period:
        following = peak * DECAY
        # The valley lies where this peak's falling side meets the next one's rising side.
        fall = (peak - following + following / STEEPNESS) / (peak + following)
        corners.append((x, foot + peak))
        corners.append((x + fall * STEEPNESS * period, foot + peak * (1.0 - fall)))
        x, peak = x + period, following
    return corners


def draw(canvas, centre, foot, height, period, highest, line):
    """Fills the canvas from `foot` upward with the sky and both ridges, mirror images about `centre`.

    `highest` is the distance of the highest peaks from the centre, `line` the width of the ridge lines.
    """
    left = _outline(foot, height, period, centre - highest, 2.0 * centre + period)
    right = [(2.0 * centre - x, y) for x, y in reversed(left)]
    columns = canvas.x[0]
    near = np.interp(columns, *zip(*left))[None, :]
    far = np.interp(columns, *zip(*right))[None, :]

    above = canvas.coverage(foot - canvas.y)
    canvas.ink(palette.SKY, above)
    canvas.ink(palette.FAR_RIDGE, above * canvas.coverage(canvas.y - far))
    canvas.ink(palette.TARN, above * canvas.coverage(canvas.y - near))
    for corners, opacity in ((right, 0.5), (left, 1.0)):
        canvas.ink(palette.BONE, opacity * canvas.coverage(distance_to_line(canvas.x, canvas.y, corners) - line / 2.0))
