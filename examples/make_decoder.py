#!/usr/bin/env python3
"""Writes decoder.slf beside this script: a lattice in the form in which a
decoder writes it, with plain words on its nodes and far too many of them for a
drawing.  The result is the same on every run.

    python3 examples/make_decoder.py
"""

import pathlib
import random

LM_SCALE = 12.0
WORD_PENALTY = -2.0
FRAME_SCORE = -61.5        # mean acoustic log likelihood of a good 10 ms frame
FRAMES_PER_SECOND = 100

# What was said, a slot for each word: where it ends, and the words that compete
# for it, the spoken one first.  A word has its spelling, its language-model log
# probability and how much each of its frames is worse than the best.
SLOTS = [
    (0.31, [("<s>", 0.0, 0.0)]),
    (0.55, [("LET'S", -3.1, 0.0), ("LESS", -5.4, 0.9), ("LETS", -6.0, 0.0), ("THAT'S", -3.3, 1.9)]),
    (0.86, [("MOVE", -3.9, 0.0), ("MOVED", -6.2, 0.5), ("MOOD", -8.1, 0.7)]),
    (0.95, [("THE", -1.0, 0.0), ("A", -2.3, 0.6), ("THEIR", -4.1, 0.8)]),
    (1.32, [("MEETING", -3.2, 0.0), ("MEET", -5.9, 1.6), ("SEATING", -9.4, 0.8),
            ("MEETINGS", -5.0, 0.6)]),
    (1.45, [("TO", -0.8, 0.0), ("TWO", -4.9, 0.1), ("THE", -3.4, 1.1), ("DO", -5.2, 0.5)]),
    (1.93, [("THURSDAY", -3.0, 0.0), ("THIRSTY", -9.0, 0.7), ("TUESDAY", -3.0, 0.9)]),
    (2.51, [("AFTERNOON", -2.1, 0.0), ("AFTER", -4.4, 2.4)]),
    (2.60, [("IF", -3.2, 0.0), ("AS", -4.0, 0.7), ("A", -3.9, 1.2)]),
    (2.81, [("THAT", -2.6, 0.0), ("THAT'S", -3.5, 0.3), ("THERE", -3.9, 1.3)]),
    (3.12, [("SUITS", -5.7, 0.0), ("SEATS", -8.3, 0.6), ("SUITES", -10.8, 0.9),
            ("SHOOTS", -9.3, 0.8)]),
    (3.66, [("EVERYONE", -3.4, 0.0), ("EVERY", -4.0, 1.5), ("ANYONE", -4.6, 1.4)]),
    (4.02, [("</s>", -1.2, 0.0)]),
]
SHIFTS = [0, -1, 1, -2, 2, -3, 3]      # where else a word may end, in frames
PREDECESSORS = 3                       # links that enter a node


def nodes_and_links(chance):
    """Nodes (end frame, word) in the order of their times, and links between them."""
    nodes, links = [(0, "!NULL")], []
    before = [0]
    for number, (end, words) in enumerate(SLOTS):
        is_last = number == len(SLOTS) - 1
        here = []
        for word, language, worse in words:
            shifts = [0] if is_last else SHIFTS[:7 if len(words) > 1 else 3]
            for shift in shifts:
                frame = round(end * FRAMES_PER_SECOND) + shift
                node = len(nodes)
                nodes.append((frame, word))
                here.append(node)
                for start in chance.sample(before, min(len(before), PREDECESSORS)):
                    frames = frame - nodes[start][0]
                    acoustic = frames * (FRAME_SCORE - worse) - 6.0 * abs(shift)
                    links.append((start, node, acoustic - chance.uniform(0, 8),
                                  language - chance.uniform(0, 1)))
        # Every word may go on: a node that no link has left gets one to a random node.
        left = {start for start, *_ in links}
        for node in before:
            if node not in left:
                end_node = chance.choice(here)
                frames = nodes[end_node][0] - nodes[node][0]
                links.append((node, end_node, frames * (FRAME_SCORE - 1.0), -4.0))
        before = here
    return nodes, links


def write(path):
    chance = random.Random(20268)
    nodes, links = nodes_and_links(chance)
    order = sorted(range(len(nodes)), key=lambda node: nodes[node][0])
    index = {node: place for place, node in enumerate(order)}
    lines = ["VERSION=1.0", "UTTERANCE=meeting-0042.plp", "lmname=meetings.3gram",
             f"lmscale={LM_SCALE:.2f}  wdpenalty={WORD_PENALTY:.2f}", "prscale=1.00", "acscale=1.00",
             "vocab=meetings.dct", f"N={len(nodes)}  L={len(links)}"]
    for place, node in enumerate(order):
        frame, word = nodes[node]
        variant = "" if word == "!NULL" else "v=1"
        lines.append(f"I={place:<4} t={frame / FRAMES_PER_SECOND:.2f}  W={word:<19} {variant}".rstrip())
    links.sort(key=lambda link: (index[link[1]], index[link[0]]))
    for number, (start, end, acoustic, language) in enumerate(links):
        lines.append(f"J={number:<5} S={index[start]:<4} E={index[end]:<4} a={acoustic:<9.2f} "
                     f"l={language:<7.3f} r=0.00")
    path.write_text("\n".join(lines) + "\n", encoding="utf-8")


if __name__ == "__main__":
    write(pathlib.Path(__file__).with_name("decoder.slf"))
