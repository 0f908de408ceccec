#!/usr/bin/env python3
"""Writes conference.lat beside this script: one long utterance with many
competing words.  The result is the same on every run.

    python3 examples/make_conference.py
"""

import math
import pathlib
import random

LM_SCALE = 12.0
WORD_PENALTY = -4.0
FRAME_SCORE = -43.4        # mean acoustic log likelihood of a good 10 ms frame
POSTERIOR_SCALE = 3.0      # flattens the confidences, as recognisers usually do

# One slot for each spoken word: its length in seconds and the words that
# compete for it, the spoken one first.  A word has its spelling, its
# pronunciation (SAMPA), part of speech, language-model log probability and
# how much each of its frames differs from FRAME_SCORE.
SLOTS = [
    (0.22, [("!NULL", "sil", "NULL", -0.05, 4.0)]),
    (0.21, [("good", "gUd", "JJ", -2.6, 0.0),
            ("could", "kUd", "MD", -4.4, -0.8)]),
    (0.48, [("afternoon", "A:ft@nu:n", "NN", -1.9, 0.0)]),
    (0.13, [("and", "@n", "CC", -1.8, 0.0),
            ("an", "@n", "DT", -4.6, 0.0),
            ("in", "In", "IN", -3.1, -0.6)]),
    (0.36, [("welcome", "welk@m", "VB", -2.7, 0.0)]),
    (0.10, [("to", "t@", "TO", -0.9, 0.0),
            ("the", "D@", "DT", -3.2, -0.7)]),
    (0.19, [("this", "DIs", "DT", -2.4, 0.0),
            ("these", "Di:z", "DT", -3.9, -0.9)]),
    (0.29, [("year&apos;s", "jI@z", "NN", -2.8, 0.0),
            ("years", "jI@z", "NNS", -5.1, 0.0),
            ("ears", "I@z", "NNS", -7.9, -0.2)]),
    (0.58, [("conference", "kQnfr@ns", "NN", -2.0, 0.0),
            ("confidence", "kQnfId@ns", "NN", -6.4, -0.5)]),
    (0.12, [("on", "Qn", "IN", -1.3, 0.0),
            ("an", "@n", "DT", -4.9, -0.4),
            ("in", "In", "IN", -2.6, -0.7)]),
    (0.47, [("automatic", "O:t@m{tIk", "JJ", -3.5, 0.0)]),
    (0.35, [("speech", "spi:tS", "NN", -1.7, 0.0),
            ("beach", "bi:tS", "NN", -8.3, -0.5),
            ("peach", "pi:tS", "NN", -9.0, -0.4)]),
    (0.63, [("recognition", "rek@gnIS@n", "NN", -0.6, 0.0)]),
    (0.34, [("!NULL", "sp", "NULL", -0.20, 4.0)]),
    (0.14, [("we", "wi:", "PRP", -2.2, 0.0),
            ("he", "hi:", "PRP", -3.3, -0.6)]),
    (0.12, [("are", "@", "VBP", -1.5, 0.0),
            ("were", "w@", "VBD", -2.6, -0.5)]),
    (0.40, [("pleased", "pli:zd", "JJ", -3.6, 0.0),
            ("please", "pli:z", "VB", -6.0, -0.3)]),
    (0.11, [("to", "t@", "TO", -0.4, 0.0),
            ("too", "tu:", "RB", -5.0, -0.4),
            ("two", "tu:", "CD", -5.9, -0.4)]),
    (0.24, [("see", "si:", "VB", -2.1, 0.0),
            ("sea", "si:", "NN", -8.2, 0.0)]),
    (0.20, [("so", "s@U", "RB", -3.0, 0.0),
            ("sow", "s@U", "VB", -9.8, 0.0),
            ("show", "S@U", "VB", -5.7, -0.6)]),
    (0.26, [("many", "meni", "JJ", -1.2, 0.0),
            ("money", "mVni", "NN", -6.6, -0.5)]),
    (0.10, [("of", "@v", "IN", -1.1, 0.0),
            ("have", "@v", "VB", -4.0, 0.0)]),
    (0.18, [("you", "ju:", "PRP", -2.0, 0.0),
            ("ewe", "ju:", "NN", -10.9, 0.0),
            ("new", "nju:", "JJ", -4.8, -0.6)]),
    (0.22, [("here", "hI@", "RB", -2.3, 0.0),
            ("hear", "hI@", "VB", -5.4, 0.0)]),
    (0.12, [("in", "In", "IN", -1.6, 0.0),
            ("and", "@n", "CC", -3.1, -0.5)]),
    (0.11, [("the", "D@", "DT", -0.8, 0.0),
            ("a", "@", "DT", -2.4, -0.6)]),
    (0.31, [("main", "meIn", "JJ", -4.7, 0.0),
            ("mane", "meIn", "NN", -10.2, 0.0),
            ("name", "neIm", "NN", -6.9, -0.5)]),
    (0.33, [("hall", "hO:l", "NN", -2.5, 0.0),
            ("haul", "hO:l", "VB", -9.1, 0.0),
            ("hole", "h@Ul", "NN", -7.2, -0.5)]),
    (0.46, [("today", "t@deI", "NN", -3.0, 0.0)]),
    (0.30, [("!NULL", "sil", "NULL", -0.05, 4.0)]),
]

# Words that cover several slots: first and last slot, then as above.
SPANS = [
    (1, 2, "goodnight", "gUdnaIt", "UH", -6.1, -1.2),
    (3, 4, "unwelcome", "VnwelkVm", "JJ", -9.4, 0.5),
    (5, 6, "twist", "twIst", "NN", -9.0, -0.9),
    (6, 7, "disease", "dIzi:z", "NN", -9.2, 0.4),
    (9, 10, "dramatic", "dr@m{tIk", "JJ", -7.6, -1.0),
    (14, 15, "we&apos;re", "wI@", "PRP", -4.4, -0.3),
    (18, 19, "season", "si:z@n", "NN", -8.1, 0.3),
    (23, 24, "hearing", "hI@rIN", "NN", -5.2, -0.4),
    (25, 26, "domain", "d@meIn", "NN", -6.7, -0.3),
    (26, 27, "mental", "ment@l", "JJ", -7.7, -1.0),
]

NODE_COUNT = 60


def make_boundaries(rng):
    """Node times at every slot boundary; the first one is the true time."""
    boundaries = [[0.0]]
    for length, _ in SLOTS:
        boundaries.append([round(boundaries[-1][0] + length, 2)])
    inner = list(range(1, len(SLOTS)))
    missing = NODE_COUNT - len(boundaries)
    for k in rng.sample(inner, missing):
        boundaries[k].append(round(boundaries[k][0]
                                   + rng.choice((-0.04, -0.03, 0.03, 0.04)), 2))
    return boundaries


def make_links(boundaries, rng):
    links = []

    def add(start, end, off_boundaries, word):
        spelling, pron, pos, lm, difference = word
        frames = round((end - start) * 100)
        score = FRAME_SCORE + difference - 0.35 * off_boundaries
        acoustic = frames * score + rng.uniform(-1.0, 1.0)
        links.append({"start": start, "end": end, "in": spelling, "out": pron,
                      "pos": pos, "frames": frames, "a": round(acoustic, 2),
                      "l": round(lm + rng.uniform(-0.15, 0.15) * (pos != "NULL"), 2),
                      "r": -0.12 if frames < 16 else -0.02})

    for k, (_, words) in enumerate(SLOTS):
        for i, start in enumerate(boundaries[k]):
            for j, end in enumerate(boundaries[k + 1]):
                if end - start < 0.045:
                    continue
                if i == 0 and j == 0:
                    chosen = words
                elif i == 0 or j == 0:
                    chosen = words[:2]
                else:
                    chosen = words[:1]
                for word in chosen:
                    add(start, end, i + j, word)
    for first, last, *word in SPANS:
        add(boundaries[first][0], boundaries[last + 1][0], 0, word)
    equalise_homophones(links)
    for link in links:
        link["total"] = round(link["a"] + LM_SCALE * link["l"] + link["r"]
                              + WORD_PENALTY, 2)
    return links


def equalise_homophones(links):
    """The same sounds over the same frames have the same acoustic score."""
    seen = {}
    for link in links:
        key = (link["start"], link["end"], link["out"])
        link["a"] = seen.setdefault(key, link["a"])


def log_add(x, y):
    if x == -math.inf:
        return y
    return max(x, y) + math.log1p(math.exp(-abs(x - y)))


def add_confidences(links, times):
    """Posterior of every link from a forward and a backward pass."""
    scale = 1.0 / (LM_SCALE * POSTERIOR_SCALE)
    forward = dict.fromkeys(times, -math.inf)
    backward = dict.fromkeys(times, -math.inf)
    forward[times[0]] = backward[times[-1]] = 0.0
    for link in sorted(links, key=lambda link: link["start"]):
        reached = forward[link["start"]] + link["total"] * scale
        forward[link["end"]] = log_add(reached, forward[link["end"]])
    for link in sorted(links, key=lambda link: link["end"], reverse=True):
        reached = backward[link["end"]] + link["total"] * scale
        backward[link["start"]] = log_add(reached, backward[link["start"]])
    whole = backward[times[0]]
    for link in links:
        link["conf"] = math.exp(forward[link["start"]] + link["total"] * scale
                                + backward[link["end"]] - whole)


def word_xml(link):
    per_frame = link["a"] / link["frames"]
    return ("<w in='{in}' out='{out}' conf='{conf:.3f}' pos='{pos}'>"
            "<seg frames='{frames}' mean='{mean:.2f}'/></w>"
            .format(mean=per_frame, **link))


def main():
    rng = random.Random(60)
    boundaries = make_boundaries(rng)
    times = sorted(time for nodes in boundaries for time in nodes)
    if len(set(times)) != NODE_COUNT:
        raise SystemExit("two nodes share a time")
    links = make_links(boundaries, rng)
    add_confidences(links, times)
    number = {time: i for i, time in enumerate(times)}
    links.sort(key=lambda link: (link["start"], link["end"], -link["a"], -link["l"]))

    lines = ["# Opening words of a conference, made by make_conference.py.",
             "# total = a + lmscale * l + r + wdpenalty",
             "VERSION=1.0",
             "UTTERANCE=conference_opening",
             "lmscale=%.1f  wdpenalty=%.1f" % (LM_SCALE, WORD_PENALTY),
             "start=0",
             "end=%d" % (NODE_COUNT - 1),
             "N=%d  L=%d" % (NODE_COUNT, len(links)),
             "# nodes"]
    lines += ["I=%-3d t=%.2f" % (i, time) for i, time in enumerate(times)]
    lines.append("# links")
    for i, link in enumerate(links):
        lines.append("J=%-3d S=%-3d E=%-3d W=%s  a=%.2f  l=%.2f  r=%.2f  total=%.2f"
                     % (i, number[link["start"]], number[link["end"]], word_xml(link),
                        link["a"], link["l"], link["r"], link["total"]))
    target = pathlib.Path(__file__).resolve().parent / "conference.lat"
    target.write_text("\n".join(lines) + "\n", encoding="utf-8")


if __name__ == "__main__":
    main()
