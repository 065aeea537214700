"""The loading window's background: the maker's picture on a card, with a plain ground for the line of text."""

import numpy as np

import lettering
import palette
import ridges
from canvas import Canvas, distance_to_box

WIDTH, HEIGHT, CORNER = 250, 121, 8
AXIS, FOOT = 125, 46  # the text stands below the foot of the ridges


def draw():
    canvas = Canvas(WIDTH, HEIGHT)
    canvas.ink(palette.TARN, np.ones_like(canvas.alpha))
    picture = canvas.window(0, FOOT - 2, WIDTH, HEIGHT - FOOT + 2)
    ridges.draw(picture, AXIS, FOOT, height=56, period=44, highest=114, line=1.0)
    lettering.write(canvas, "TvDelay", 25, AXIS, 88, palette.BONE, tracking=0.03)
    lettering.write(canvas, "TARNVALE MUSIC", 6.5, AXIS, 76.5, palette.BONE, tracking=0.22, weight=0.012)
    card = distance_to_box(canvas.x, canvas.y, WIDTH / 2, HEIGHT / 2, WIDTH / 2, HEIGHT / 2, CORNER)
    canvas.keep(canvas.coverage(card))
    return canvas
