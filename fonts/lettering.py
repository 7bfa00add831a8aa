# SPDX-License-Identifier: GPL-3.0-or-later
"""Plain digits and capitals, drawn with a round pen, for what stands below the bars.

A character is a list of strokes, a stroke the way of the pen's middle: points (x, y) and arcs, joined by
straight lines. The pen is 1 wide, its middle goes from 0 to 4 across and from 0 to 7 upwards, so that
the inked character is 5 wide and 8 high.
"""
import dataclasses
import math

PEN = 1.0
WIDTH = 4.0 + PEN
HEIGHT = 7.0 + PEN

STEP = 10          # degrees between two points of an arc
CORNER = 2 * STEP  # a greater turn than this is a corner


@dataclasses.dataclass(frozen=True)
class Arc:
    """A part of an ellipse, from one angle to another, in degrees: 0 is right, 90 is up."""
    x: float
    y: float
    rx: float
    ry: float
    begin: float
    end: float

    def points(self):
        steps = max(1, math.ceil(abs(self.end - self.begin) / STEP))
        for i in range(steps + 1):
            angle = math.radians(self.begin + (self.end - self.begin) * i / steps)
            yield self.x + self.rx * math.cos(angle), self.y + self.ry * math.sin(angle)


def ellipse(x, y, rx, ry):
    return [Arc(x, y, rx, ry, 0, 360)]


def turned(strokes):
    """The strokes turned upside down."""
    def turn(item):
        if isinstance(item, Arc):
            return Arc(4 - item.x, 7 - item.y, item.rx, item.ry, item.begin + 180, item.end + 180)
        return 4 - item[0], 7 - item[1]
    return [[turn(item) for item in stroke] for stroke in strokes]


S = [Arc(2, 5.3, 1.8, 1.7, 25, 270), Arc(2, 1.8, 2, 1.8, 90, -155)]
SIX = [ellipse(2, 2.2, 2, 2.2), [Arc(3.7, 2.2, 3.7, 4.8, 180, 97)]]

STROKES = {
    "0": [[Arc(2, 5.1, 1.9, 1.9, 0, 180), Arc(2, 1.9, 1.9, 1.9, 180, 360), (3.9, 5.1)]],
    "1": [[(1, 5.7), (2.6, 7), (2.6, 0)]],
    "2": [[Arc(2, 5, 2, 2, 160, -43.6), (0, 0), (4, 0)]],
    "3": [[Arc(1.9, 5.3, 1.8, 1.7, 150, -90), Arc(1.9, 1.8, 2.1, 1.8, 90, -150)]],
    "4": [[(3, 0), (3, 7), (0, 2), (4, 2)]],
    "5": [[(3.6, 7), (0.7, 7), (0.4, 3.9), Arc(1.9, 2.3, 2.1, 2.3, 135, -150)]],
    "6": SIX,
    "7": [[(0, 7), (4, 7), (1.4, 0)]],
    "8": [ellipse(2, 5.3, 1.75, 1.7), ellipse(2, 1.8, 2, 1.8)],
    "9": turned(SIX),
    "A": [[(0, 0), (2, 7), (4, 0)], [(0.7, 2.3), (3.3, 2.3)]],
    "B": [[(0, 0), (0, 7), Arc(2, 5.3, 1.7, 1.7, 90, -90), (0, 3.6)],
          [(2, 3.6), Arc(2.1, 1.8, 1.9, 1.8, 90, -90), (0, 0)]],
    "C": [[Arc(2.1, 4.9, 2.1, 2.1, 25, 180), Arc(2.1, 2.1, 2.1, 2.1, 180, 335)]],
    "D": [[(0, 0), (0, 7), Arc(1.6, 4.6, 2.4, 2.4, 90, 0), Arc(1.6, 2.4, 2.4, 2.4, 0, -90), (0, 0)]],
    "E": [[(3.8, 7), (0.2, 7), (0.2, 0), (3.8, 0)], [(0.2, 3.6), (3.3, 3.6)]],
    "F": [[(3.8, 7), (0.2, 7), (0.2, 0)], [(0.2, 3.6), (3.3, 3.6)]],
    "G": [[Arc(2.1, 4.9, 2.1, 2.1, 25, 180), Arc(2.1, 2.1, 2.1, 2.1, 180, 360), (4.2, 3.2),
           (2.4, 3.2)]],
    "H": [[(0, 0), (0, 7)], [(4, 0), (4, 7)], [(0, 3.6), (4, 3.6)]],
    "I": [[(2, 0), (2, 7)]],
    "J": [[(3.3, 7), Arc(1.6, 1.8, 1.7, 1.8, 0, -160)]],
    "K": [[(0.1, 0), (0.1, 7)], [(3.9, 7), (0.1, 2.8)], [(1.5, 4.3), (4.1, 0)]],
    "L": [[(0.3, 7), (0.3, 0), (3.8, 0)]],
    "M": [[(-0.3, 0), (-0.3, 7), (2, 2.6), (4.3, 7), (4.3, 0)]],
    "N": [[(0, 0), (0, 7), (4, 0), (4, 7)]],
    "O": [ellipse(2, 3.5, 2.4, 3.5)],
    "P": [[(0.2, 0), (0.2, 7), Arc(2.1, 5.1, 1.9, 1.9, 90, -90), (0.2, 3.2)]],
    "Q": [ellipse(2, 3.5, 2.4, 3.5), [(2.5, 1.6), (4.3, -0.4)]],
    "R": [[(0.2, 0), (0.2, 7), Arc(2.1, 5.1, 1.9, 1.9, 90, -90), (0.2, 3.2)], [(2, 3.2), (4.1, 0)]],
    "S": [S],
    "T": [[(0, 7), (4, 7)], [(2, 7), (2, 0)]],
    "U": [[(0, 7), Arc(2, 2, 2, 2, 180, 360), (4, 7)]],
    "V": [[(0, 7), (2, 0), (4, 7)]],
    "W": [[(-0.5, 7), (0.75, 0), (2, 5.4), (3.25, 0), (4.5, 7)]],
    "X": [[(0, 0), (4, 7)], [(0, 7), (4, 0)]],
    "Y": [[(0, 7), (2, 3.2), (4, 7)], [(2, 3.2), (2, 0)]],
    "Z": [[(0, 7), (4, 7), (0, 0), (4, 0)]],
    "-": [[(0.6, 3), (3.4, 3)]],
    ".": [[(2, 0), (2, 0.2)]],
    "$": [S, [(2, -0.8), (2, 7.8)]],
    "/": [[(0.4, -0.4), (3.6, 7.4)]],
    "+": [[(0, 3.2), (4, 3.2)], [(2, 1.2), (2, 5.2)]],
    "%": [ellipse(0.6, 5.8, 1.1, 1.2), ellipse(3.4, 1.2, 1.1, 1.2), [(3.9, 7), (0.1, 0)]],
}


def outlines(character):
    """The closed outlines of a character's ink, clockwise, the holes the other way. They may overlap."""
    contours = []
    for stroke in STROKES[character]:
        for run, closed in smooth_runs(way_of(stroke)):
            contours += ring(run) if closed else [band(run)]
    return contours


def way_of(stroke):
    """A stroke's points, arcs taken apart, none twice in a row."""
    way = []
    for item in stroke:
        for point in item.points() if isinstance(item, Arc) else [item]:
            if not way or math.dist(point, way[-1]) > 1e-6:
                way.append(point)
    return way


def smooth_runs(way):
    """The way cut at its corners, as (points, closed): a way without corners may end where it began."""
    directions = [direction(a, b) for a, b in zip(way, way[1:])]
    if math.dist(way[0], way[-1]) < 1e-6 and not any(map(is_corner, directions,
                                                         directions[1:] + directions[:1])):
        return [(way[:-1], True)]
    runs, begin = [], 0
    for i in range(1, len(directions)):
        if is_corner(directions[i - 1], directions[i]):
            runs.append((way[begin:i + 1], False))
            begin = i
    return runs + [(way[begin:], False)]


def direction(a, b):
    length = math.dist(a, b)
    return (b[0] - a[0]) / length, (b[1] - a[1]) / length


def opposite(way):
    return -way[0], -way[1]


def is_corner(a, b):
    return a[0] * b[0] + a[1] * b[1] < math.cos(math.radians(CORNER))


def beside(points, before, behind):
    """The points moved by half a pen to the left of the way; the directions at its ends are given."""
    ways = [before, *map(direction, points, points[1:]), behind]
    for (x, y), a, b in zip(points, ways, ways[1:]):
        # Along the middle of both directions' normals, as far as to touch both parallels.
        normal = -(a[1] + b[1]), a[0] + b[0]
        scale = PEN / 2 / (1 + a[0] * b[0] + a[1] * b[1])
        yield x + normal[0] * scale, y + normal[1] * scale


def cap(x, y, way):
    """The pen's round end, from the left of the way around to the right of it."""
    begin = math.degrees(math.atan2(way[0], -way[1]))
    return list(Arc(x, y, PEN / 2, PEN / 2, begin, begin - 180).points())[1:-1]


def band(run):
    """The outline of an open run, with round ends."""
    first, last = direction(*run[:2]), direction(*run[-2:])
    first_back, last_back = opposite(last), opposite(first)
    return (list(beside(run, first, last)) + cap(*run[-1], last)
            + list(beside(run[::-1], first_back, last_back)) + cap(*run[0], last_back))


def ring(run):
    """The two outlines of a closed run."""
    around = run if is_clockwise(run) else run[::-1]
    outlines_of_both_sides = []
    for way in around, around[::-1]:
        closing = direction(way[-1], way[0])
        outlines_of_both_sides.append(list(beside(way, closing, closing)))
    return outlines_of_both_sides


def is_clockwise(points):
    return sum(a[0] * b[1] - b[0] * a[1] for a, b in zip(points, points[1:] + points[:1])) < 0
