"""The editor's background: the maker's picture, and the face with everything printed on it."""

import numpy as np

import knob
import layout
import lettering
import palette
import ridges
from canvas import Canvas, distance_to_box, smoothstep

AXIS = 175  # of the picture and the name
FOOT = 272  # of the ridges

LABEL_SIZE, LABEL_DROP = 10.5, 40  # the drop is from a knob's centre to the baseline
SMALL_SIZE = 8.0
MARK_INNER, MARK_OUTER, MARK_OUTER_LONG = 24.5, 27.3, 28.6

_CONTOUR_FIRST, _CONTOUR_SPACING, _CONTOURS = 10.5, 7.0, 13


def _label(canvas, text, x, baseline):
    lettering.write(canvas, text, LABEL_SIZE, x, baseline, palette.BONE, tracking=0.045, weight=0.012)


def _small(canvas, text, x, baseline):
    lettering.write(canvas, text, SMALL_SIZE, x, baseline, palette.BONE, tracking=0.05, weight=0.012)


def _distance_to_controls(canvas):
    """Distance to the controls with all that is written at them, rounded off where two are near."""
    distances = []
    for control in layout.KNOBS:
        distances.append(np.hypot(canvas.x - control.x, canvas.y - control.y) - 30.0)
        half = lettering.width(control.label, LABEL_SIZE, tracking=0.045) / 2
        distances.append(distance_to_box(canvas.x, canvas.y, control.x, control.y - 36.5, half + 3, 7, 6))
        for side in (-1, 1) if control.ends else ():
            distances.append(np.hypot(canvas.x - control.x - side * 30.0, canvas.y - control.y + 26.0) - 6.0)
    for control in layout.SWITCHES:
        distances.append(distance_to_box(canvas.x, canvas.y, control.x, control.y, 17, 22, 10))
    softness = 8.0
    return -softness * np.log(np.sum(np.exp(-np.array(distances) / softness), axis=0))


def _draw_contours(canvas):
    """Map contours around the controls, fainter the farther out; they give the free places a calm ground."""
    field = _distance_to_controls(canvas)
    down, right = np.gradient(field, 1.0 / canvas.samples_per_point)
    slope = np.maximum(np.hypot(right, down), 0.05)
    shore = 1.0 - smoothstep(FOOT - 22.0, FOOT - 4.0, canvas.y)
    for step in range(_CONTOURS):
        level = _CONTOUR_FIRST + _CONTOUR_SPACING * step
        fading = 1.0 - step / _CONTOURS
        line = canvas.coverage(np.abs(field - level) / slope - 0.35)
        canvas.ink(palette.SKY, 0.65 * fading * shore * line)


def _draw_scale(canvas, control):
    dx, dy = canvas.x - control.x, canvas.y - control.y
    for step, angle in enumerate(layout.scale_angles()):
        long = step in (0, layout.SCALE_STEPS) or (control.centred and 2 * step == layout.SCALE_STEPS)
        outer, half_width = (MARK_OUTER_LONG, 0.7) if long else (MARK_OUTER, 0.5)
        if 2 * step == layout.SCALE_STEPS:
            half_width = 0.75  # at one pixel a point it lies across two columns, and would be half as bright
        turn = np.deg2rad(angle)
        along, across = dx * np.cos(turn) + dy * np.sin(turn), dy * np.cos(turn) - dx * np.sin(turn)
        mark = np.maximum(np.abs(across) - half_width, np.maximum(MARK_INNER - along, along - outer))
        canvas.ink(palette.BONE, 0.85 * canvas.coverage(mark))
    if control.ends:
        for text, side in zip(control.ends, (-1, 1)):
            _small(canvas, text, control.x + side * 29.5, control.y - 29.0)


def draw():
    """The whole background of the editor."""
    canvas = Canvas(layout.FACE_WIDTH, layout.FACE_HEIGHT)
    canvas.ink(palette.TARN, np.ones_like(canvas.alpha))
    ridges.draw(
        canvas.window(0, FOOT - 2, layout.FACE_WIDTH, layout.FACE_HEIGHT - FOOT + 2),
        AXIS, FOOT, height=104, period=58, highest=150, line=1.25,
    )
    lettering.write(canvas, "TvDelay", 40, AXIS, 344, palette.BONE, tracking=0.03)
    lettering.write(canvas, "TARNVALE MUSIC", SMALL_SIZE, AXIS, 327, palette.BONE, tracking=0.22, weight=0.012)
    _draw_contours(canvas)
    for control in layout.KNOBS:
        around = canvas.window(control.left - 16, control.bottom - 24, layout.KNOB_SIZE + 32, layout.KNOB_SIZE + 40)
        knob.draw_shadow(around, control.x, control.y)
        _draw_scale(around, control)
        _label(around, control.label, control.x, control.y - LABEL_DROP)
    for control in layout.SWITCHES:
        _small(canvas, layout.SWITCH_ON_LABEL, control.x, control.y + 12.5)
        _small(canvas, layout.SWITCH_OFF_LABEL, control.x, control.y - 18)
    return canvas
