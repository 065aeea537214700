"""Where the editor's controls stand, in points, and what is written beside them."""

FACE_WIDTH, FACE_HEIGHT = 344, 400
KNOB_SIZE = 48
SWITCH_WIDTH, SWITCH_HEIGHT = 15, 16

# The scale of a knob: from the lower left over the top to the lower right.
FIRST_ANGLE, SWEEP = 225.0, 270.0
FRAMES = 128
SCALE_STEPS = 10


class Knob:
    """A knob by its frame's lower left corner, its label and what stands at the two ends of its scale."""

    def __init__(self, left, bottom, label, ends=None, centred=False):
        self.left, self.bottom, self.label, self.ends, self.centred = left, bottom, label, ends, centred
        self.x, self.y = left + KNOB_SIZE / 2, bottom + KNOB_SIZE / 2


class Switch:
    """A switch by its frame's lower left corner."""

    def __init__(self, left, bottom):
        self.left, self.bottom = left, bottom
        self.x, self.y = left + SWITCH_WIDTH / 2, bottom + SWITCH_HEIGHT / 2


TIME = Knob(60, 202, "Time", ends=("0", "1 s"))
MIX = Knob(239, 202, "Mix")
FEEDBACK = Knob(154, 202, "Feedback")
LOW_PASS = Knob(117, 119, "Low Pass")
HIGH_PASS = Knob(192, 119, "High Pass")
PAN_WIDTH = Knob(75, 37, "Pan Width")
PAN = Knob(222, 37, "Pan", ends=("L", "R"), centred=True)
KNOBS = (TIME, MIX, FEEDBACK, LOW_PASS, HIGH_PASS, PAN_WIDTH, PAN)

LOW_PASS_SWITCH = Switch(82, 132)
HIGH_PASS_SWITCH = Switch(253, 132)
SWITCHES = (LOW_PASS_SWITCH, HIGH_PASS_SWITCH)

# A filter stands in the feedback loop when its switch is on (up), and behind the loop when it is off.
SWITCH_ON_LABEL, SWITCH_OFF_LABEL = "in loop", "behind"


def frame_angle(frame):
    """The angle in degrees, counter-clockwise from the right, that knob frame 0 to 127 points to."""
    return FIRST_ANGLE - SWEEP * frame / (FRAMES - 1)


def scale_angles():
    return [FIRST_ANGLE - SWEEP * step / SCALE_STEPS for step in range(SCALE_STEPS + 1)]
