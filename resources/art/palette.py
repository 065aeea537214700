"""The inks and materials, as sRGB hex strings, and their conversion to linear light."""

import numpy as np

TARN = "#233236"  # the enamel of the face, and the near ridge that runs into it
FAR_RIDGE = "#31464b"
SKY = "#415a5e"
BONE = "#f2f0ed"  # all lettering, scale marks and ridge lines
AMBER = "#f2a24c"  # a lit switch, and nothing else
BLACK = "#000000"

IVORY = "#ded2b9"
IVORY_CAP = "#e5dac3"
POINTER = "#1d2829"

SLOT = "#11191b"
SLOT_LIP = "#5b7073"
UNLIT = "#93a09e"


def linear(colour):
    """The three linear-light components, 0 to 1, of an sRGB colour written "#rrggbb"."""
    value = np.array([int(colour[i : i + 2], 16) for i in (1, 3, 5)]) / 255.0
    return np.where(value <= 0.04045, value / 12.92, ((value + 0.055) / 1.055) ** 2.4)


def encoded(light):
    """sRGB components, 0 to 1, of linear light; light beyond that span is cut off."""
    light = np.clip(light, 0.0, 1.0)
    return np.where(light <= 0.0031308, light * 12.92, 1.055 * light ** (1 / 2.4) - 0.055)
