#!/usr/bin/python3
"""Shows the editor as its pictures make it up, without running it.

usage: compose_editor.py OUTPUT.png [--values V,V,V,V,V,V,V,V,V] [--scale 1|2] [--pictures FOLDER]

Values are the nine parameters in their order, each 0 to 1. A scale of 1 gives one pixel a point, 2 gives two.
"""

import argparse
import os
import sys

sys.dont_write_bytecode = True

try:
    import numpy  # noqa: F401, for canvas
    from PIL import Image, UnidentifiedImageError
except ImportError as missing:
    print(f"compose_editor: no Python module {missing.name}; install python3-numpy and python3-pil", file=sys.stderr)
    sys.exit(2)

import layout
from canvas import DOTS_PER_INCH, PIXELS_PER_POINT

# The controls by parameter index.
CONTROLS = (
    layout.TIME,
    layout.FEEDBACK,
    layout.LOW_PASS,
    layout.HIGH_PASS,
    layout.LOW_PASS_SWITCH,
    layout.HIGH_PASS_SWITCH,
    layout.PAN,
    layout.PAN_WIDTH,
    layout.MIX,
)
DEFAULT_VALUES = "0.35,0.5,0.2,0.3,1,0,0.5,0.8,0.65"


class OneLineParser(argparse.ArgumentParser):
    def error(self, message):
        print(f"compose_editor: {message}", file=sys.stderr)
        sys.exit(2)


def nine_values(text):
    try:
        values = [float(part) for part in text.split(",")]
    except ValueError:
        values = []
    if len(values) != len(CONTROLS) or not all(0.0 <= value <= 1.0 for value in values):
        raise argparse.ArgumentTypeError(f"'{text}' is not {len(CONTROLS)} numbers from 0 to 1 with commas between them")
    return values


def compose(folder, values):
    """The editor at two pixels a point."""

    def picture(name):
        return Image.open(os.path.join(folder, f"{name}.png")).convert("RGBA")

    editor = picture("delaybackground")
    for control, value in zip(CONTROLS, values):
        if isinstance(control, layout.Knob):
            image = picture(f"fxknob{int(int(value * 100) * 1.27)}")
        else:
            image = picture("switchon" if value >= 1.0 else "switchoff")
        height_in_points = image.height // PIXELS_PER_POINT
        corner = (control.left, layout.FACE_HEIGHT - control.bottom - height_in_points)
        editor.alpha_composite(image, tuple(PIXELS_PER_POINT * part for part in corner))
    return editor.convert("RGB")


def main():
    parser = OneLineParser(usage=__doc__.split("usage: ")[1])
    parser.add_argument("output")
    parser.add_argument("--values", type=nine_values, default=nine_values(DEFAULT_VALUES))
    parser.add_argument("--scale", type=int, choices=(1, 2), default=2)
    parser.add_argument("--pictures", default=os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
    chosen = parser.parse_args()
    if not chosen.output.endswith(".png"):
        parser.error(f"{chosen.output} does not end in .png; the editor is written as a PNG file")
    unfinished = f"{chosen.output}.part"
    try:
        editor = compose(chosen.pictures, chosen.values)
        if chosen.scale == 1:
            editor = editor.reduce(PIXELS_PER_POINT)
        resolution = DOTS_PER_INCH * chosen.scale / PIXELS_PER_POINT
        editor.save(unfinished, format="PNG", dpi=(resolution, resolution), optimize=True)
        os.replace(unfinished, chosen.output)
    except (OSError, UnidentifiedImageError) as error:
        if os.path.exists(unfinished):
            os.remove(unfinished)
        parser.error(f"{error}; the pictures come from make_pictures.py, the output folder must exist")


if __name__ == "__main__":
    main()
