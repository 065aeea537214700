"""A picture in linear light, measured in points with the origin at the lower left and y growing upward."""

import numpy as np
from PIL import Image

from palette import encoded, linear

PIXELS_PER_POINT = 2
DOTS_PER_INCH = 72 * PIXELS_PER_POINT


class Canvas:
    """Pixels of a rectangle of points.

    `x` and `y` hold each pixel's centre in points, `colour` its premultiplied linear light and `alpha` its opacity.
    A supersampled canvas holds `supersample` squared samples a pixel until `reduced` averages them.
    """

    def __init__(self, width, height, left=0.0, bottom=0.0, supersample=1):
        self.left, self.bottom, self.width, self.height = left, bottom, width, height
        self.supersample = supersample
        self.samples_per_point = PIXELS_PER_POINT * supersample
        columns, rows = width * self.samples_per_point, height * self.samples_per_point
        self.x, self.y = np.meshgrid(
            left + (np.arange(columns) + 0.5) / self.samples_per_point,
            bottom + height - (np.arange(rows) + 0.5) / self.samples_per_point,
        )
        self.colour = np.zeros((rows, columns, 3))
        self.alpha = np.zeros((rows, columns))

    def window(self, left, bottom, width, height):
        """A canvas on the same pixels, cut to a rectangle of whole points; what is drawn on it shows here."""
        left, bottom = max(left, self.left), max(bottom, self.bottom)
        right = min(left + width, self.left + self.width)
        top = min(bottom + height, self.bottom + self.height)
        scale = self.samples_per_point
        rows = slice(round((self.bottom + self.height - top) * scale), round((self.bottom + self.height - bottom) * scale))
        columns = slice(round((left - self.left) * scale), round((right - self.left) * scale))
        part = Canvas.__new__(Canvas)
        part.left, part.bottom, part.width, part.height = left, bottom, right - left, top - bottom
        part.supersample, part.samples_per_point = self.supersample, scale
        part.x, part.y = self.x[rows, columns], self.y[rows, columns]
        part.colour, part.alpha = self.colour[rows, columns], self.alpha[rows, columns]
        return part

    def copy(self):
        """A canvas of the same pixels that can be drawn on without changing this one."""
        result = self.window(self.left, self.bottom, self.width, self.height)
        result.colour, result.alpha = self.colour.copy(), self.alpha.copy()
        return result

    def coverage(self, distance):
        """How much of each pixel lies inside a shape, from the signed distance in points to its edge."""
        return np.clip(0.5 - distance * self.samples_per_point, 0.0, 1.0)

    def ink(self, colour, coverage):
        """Lays a flat colour ("#rrggbb") over the pixels."""
        self.light(linear(colour), coverage)

    def light(self, light, coverage):
        """Lays linear light, one colour or one a pixel, over the pixels."""
        coverage = np.clip(coverage, 0.0, 1.0)
        self.colour *= (1.0 - coverage)[..., None]
        self.colour += light * coverage[..., None]
        self.alpha *= 1.0 - coverage
        self.alpha += coverage

    def lay(self, other):
        """Lays another canvas of the same size over this one."""
        self.colour *= (1.0 - other.alpha)[..., None]
        self.colour += other.colour
        self.alpha *= 1.0 - other.alpha
        self.alpha += other.alpha

    def keep(self, coverage):
        """Clears what lies outside a shape."""
        self.colour *= coverage[..., None]
        self.alpha *= coverage

    def reduced(self):
        """The same rectangle with one sample a pixel."""
        result = Canvas(self.width, self.height, self.left, self.bottom)
        rows, columns = result.alpha.shape
        blocks = (rows, self.supersample, columns, self.supersample)
        result.alpha = self.alpha.reshape(blocks).mean(axis=(1, 3))
        result.colour = self.colour.reshape(blocks + (3,)).mean(axis=(1, 3))
        return result

    def image(self):
        """An 8-bit sRGB image, without an alpha channel where every pixel is opaque."""
        opaque = bool(np.all(self.alpha > 1.0 - 1e-6))
        straight = self.colour / np.maximum(self.alpha, 1e-9)[..., None]
        channels = [np.round(encoded(straight) * 255.0)]
        if not opaque:
            channels.append(np.round(self.alpha * 255.0)[..., None])
        return Image.fromarray(np.concatenate(channels, axis=2).astype(np.uint8))


def smoothstep(start, end, value):
    """0 below `start`, 1 above `end`, and a curve without corners between them."""
    t = np.clip((value - start) / (end - start), 0.0, 1.0)
    return t * t * (3.0 - 2.0 * t)


def distance_to_box(x, y, centre_x, centre_y, half_width, half_height, radius=0.0):
    """Signed distance to a box whose corners are rounded by `radius`, which lies within the half sizes."""
    dx = np.abs(x - centre_x) - half_width + radius
    dy = np.abs(y - centre_y) - half_height + radius
    return np.hypot(np.maximum(dx, 0.0), np.maximum(dy, 0.0)) + np.minimum(np.maximum(dx, dy), 0.0) - radius


def distance_to_line(x, y, points):
    """Distance to a line through the points."""
    nearest = np.full(np.shape(x), np.inf)
    for (ax, ay), (bx, by) in zip(points, points[1:]):
        along_x, along_y = bx - ax, by - ay
        t = np.clip(((x - ax) * along_x + (y - ay) * along_y) / (along_x**2 + along_y**2), 0.0, 1.0)
        nearest = np.minimum(nearest, np.hypot(x - ax - t * along_x, y - ay - t * along_y))
    return nearest
