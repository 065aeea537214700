"""Light on raised shapes: one lamp above the face and a little in front of it, and the room's own dim light."""

import numpy as np

_LAMP = np.array([0.0, 0.62, 0.785])
_LAMP /= np.linalg.norm(_LAMP)
_HALFWAY = _LAMP + np.array([0.0, 0.0, 1.0])
_HALFWAY /= np.linalg.norm(_HALFWAY)

_ROOM, _DIRECT, _SHARPNESS = 0.35, 0.90, 36


def shaded(height, samples_per_point, material, gloss):
    """Linear light that a surface sends to the viewer.

    `height` in points over the pixel grid, `material` its linear colour, one or one a pixel, and `gloss` the
    strength of the lamp's reflection in it.
    """
    down, right = np.gradient(height, 1.0 / samples_per_point)
    normal = np.dstack([-right, down, np.ones_like(height)])
    normal /= np.linalg.norm(normal, axis=2, keepdims=True)
    lamp = np.maximum(normal @ _LAMP, 0.0)
    room = 1.0 + 0.5 * normal[..., 1]
    reflection = gloss * np.maximum(normal @ _HALFWAY, 0.0) ** _SHARPNESS
    return material * (_ROOM * room + _DIRECT * lamp)[..., None] + reflection[..., None]
