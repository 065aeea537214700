#!/usr/bin/python3
"""Draws every picture of the editor.

usage: make_pictures.py [FOLDER]

Writes the pictures as PNG files into FOLDER, which must exist; without it, into the folder above this script.
"""

import os
import sys

sys.dont_write_bytecode = True

try:
    import numpy
    import PIL  # noqa: F401, for canvas and lettering
except ImportError as missing:
    print(f"make_pictures: no Python module {missing.name}; install python3-numpy and python3-pil", file=sys.stderr)
    sys.exit(2)

import face
import knob
import layout
import lettering
import loading
import slider
import switch
from canvas import DOTS_PER_INCH


def fail(message):
    print(f"make_pictures: {message}", file=sys.stderr)
    sys.exit(2)


def knob_grounds(background):
    """The parts of the background below the knobs."""
    for control in layout.KNOBS:
        yield background.window(control.left, control.bottom, layout.KNOB_SIZE, layout.KNOB_SIZE)


def pictures():
    """Every picture's name and image."""
    background = face.draw()
    # One filmstrip serves all knobs and its frames replace what is below them, so every frame carries the ground of
    # all seven, and these have to be the same.
    ground, *others = knob_grounds(background)
    for control, other in zip(layout.KNOBS[1:], others):
        if not numpy.array_equal(numpy.asarray(ground.image()), numpy.asarray(other.image())):
            raise RuntimeError(f"the face below {control.label} differs from that below {layout.KNOBS[0].label}")

    yield "delaybackground", background.image()
    for frame in range(layout.FRAMES):
        picture = ground.copy()
        picture.lay(knob.draw(frame))
        yield f"fxknob{frame}", picture.image()
    yield "switchoff", switch.draw(on=False).image()
    yield "switchon", switch.draw(on=True).image()
    yield "bmp00131", slider.draw_track().image()
    yield "bmp00130", slider.draw_bead().image()
    yield "loadback", loading.draw().image()


def main(arguments):
    if len(arguments) > 1 or any(argument.startswith("-") for argument in arguments):
        fail("takes one argument at most, the folder to write to")
    folder = arguments[0] if arguments else os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
    if not os.path.isdir(folder):
        fail(f"{folder} is not a folder; name an existing one")
    if not os.path.isfile(lettering.FONT_PATH):
        fail(f"no font at {lettering.FONT_PATH}; install {lettering.FONT_PACKAGE}")

    drawn = list(pictures())
    for name, image in drawn:
        path = os.path.join(folder, f"{name}.png")
        unfinished = f"{path}.part"
        try:
            image.save(unfinished, format="PNG", dpi=(DOTS_PER_INCH, DOTS_PER_INCH), optimize=True)
            os.replace(unfinished, path)
        except OSError as error:
            if os.path.exists(unfinished):
                os.remove(unfinished)
            fail(f"cannot write {path}: {error.strerror}; choose a folder with room that can be written to")


if __name__ == "__main__":
    main(sys.argv[1:])
