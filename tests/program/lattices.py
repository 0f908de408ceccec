"""A small lattice for tests that need any, with what the viewer makes of it, and its sound."""

import wave

SMALL = """\
N=3
I=0 t=0
I=1 t=0.5
I=2 t=1
J=0 S=0 E=1 W=<w in='to' out='zu'/> a=-1.5
J=1 S=1 E=2 W=<w in='you' out='dir'/> a=-0.25
"""
_ENDS = """\
digraph G {
rankdir=LR;
0 [shape=doublecircle, color=darkorange, style=filled, fillcolor=lightgrey];
2 [shape=doublecircle, color=red, style=filled, fillcolor=lightgrey];
"""
SMALL_DESCRIPTION = _ENDS + """\
0 -> 1 [ color=black,label = "to / zu", comment="ID = 0"];
1 -> 2 [ color=black,label = "you / dir", comment="ID = 1"];
}
"""
SMALL_BY_VALUE = _ENDS + """\
0 -> 1 [ color=black,label = "1.5", comment="ID = 0"];
1 -> 2 [ color=black,label = "0.25", comment="ID = 1"];
}
"""
SMALL_WITH_BEST_PATH = _ENDS + """\
1 [shape=doubleoctagon, color=blue, style=filled, fillcolor=yellow];
0 -> 1 [ color=blue, fontcolor=blue,label = "to / zu", comment="ID = 0"];
1 -> 2 [ color=blue, fontcolor=blue,label = "you / dir", comment="ID = 1"];
}
"""


def write_sound(path, seconds):
    """A steady value, which shows as a block in the sound strip."""
    with wave.open(str(path), "wb") as sound:
        sound.setparams((1, 2, 8000, 0, "NONE", ""))
        sound.writeframes(b"\0\1" * 8000 * seconds)
