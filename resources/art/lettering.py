"""Lettering, drawn from the font's outlines at eight times the pixels so that it can stand at any fraction of one."""

import math

import numpy as np
from PIL import Image, ImageDraw, ImageFont

from canvas import PIXELS_PER_POINT

FONT_PATH = "/usr/share/fonts/opentype/national-park/NationalPark-Regular.otf"
FONT_PACKAGE = "fonts-national-park"

_FINE = 8  # fine dots a pixel, each way
_DOTS_PER_POINT = PIXELS_PER_POINT * _FINE


def _strip(text, size, tracking, weight):
    """The text on one strip of fine dots, its baseline's row and its first and last inked columns."""
    font = ImageFont.truetype(FONT_PATH, round(size * _DOTS_PER_POINT))
    stroke = round(weight * size * _DOTS_PER_POINT)
    space = tracking * size * _DOTS_PER_POINT
    margin = 2 * stroke + _FINE
    positions, pen = [], float(margin)
    for letter, following in zip(text, text[1:] + " "):
        positions.append(pen)
        pen += font.getlength(letter + following) - font.getlength(following) + space
    ascent, descent = font.getmetrics()
    baseline = margin + ascent
    image = Image.new("L", (math.ceil(pen) + margin, baseline + descent + margin))
    draw = ImageDraw.Draw(image)
    for letter, position in zip(text, positions):
        draw.text((round(position), baseline), letter, font=font, fill=255, anchor="ls", stroke_width=stroke)
    ink_left, _, ink_right, _ = image.getbbox()
    return image, baseline, ink_left, ink_right


def width(text, size, tracking=0.0, weight=0.0):
    """The width of the ink in points."""
    _, _, ink_left, ink_right = _strip(text, size, tracking, weight)
    return (ink_right - ink_left) / _DOTS_PER_POINT


def write(canvas, text, size, x, baseline, colour, tracking=0.0, weight=0.0):
    """Writes one line with its ink centred on x.

    Size in points; `tracking` (space between letters) and `weight` (thickening of all strokes) in fractions of it. Text that
    doesn't fit on the canvas raises ValueError.
    """
    strip, strip_baseline, ink_left, ink_right = _strip(text, size, tracking, weight)
    left = (x - canvas.left) * _DOTS_PER_POINT - (ink_left + ink_right) / 2
    top = (canvas.bottom + canvas.height - baseline) * _DOTS_PER_POINT - strip_baseline
    column, row = math.floor(left / _FINE), math.floor(top / _FINE)
    shift = (round(left - column * _FINE), round(top - row * _FINE))
    padded = Image.new("L", tuple(-(-(length + _FINE) // _FINE) * _FINE for length in strip.size))
    padded.paste(strip, shift)
    coverage = np.asarray(padded.reduce(_FINE), float) / 255.0

    rows, columns = canvas.alpha.shape
    last_row, last_column = row + coverage.shape[0], column + coverage.shape[1]
    if row < 0 or column < 0 or last_row > rows or last_column > columns:
        raise ValueError(f"'{text}' runs off its canvas")
    full = np.zeros(canvas.alpha.shape)
    full[row:last_row, column:last_column] = coverage
    canvas.ink(colour, full)
