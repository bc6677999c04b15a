# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""Finds the program's icon in pictures of the screen."""

import functools
import pathlib
import subprocess

import numpy
from rig.screen import Box
from scipy import ndimage

_ICON = pathlib.Path(__file__).parents[3] / "src/shell/Resource/Tolmar.png"
# The colour of the printer's body, which is as wide as the icon, and how far a scaled icon may differ from it.
_BODY = (20, 153, 143)
_TOLERANCE = 24
# Pixels: the sizes at which panels show icons.
_SIZES = range(14, 65)
# The body is interrupted by a thinner stripe, and begins below the paper.
_STRIPE = 4
_BODY_TOP = 95 / 256
# The mean difference of a colour value, of 255. Programs scale icons in different ways.
_LIKENESS = 24


def look(screen):
    """The pixels of the whole screen: rows, columns, colours."""
    data = subprocess.run(["import", "-window", "root", "-depth", "8", "rgb:-"], stdout=subprocess.PIPE, check=True)
    return numpy.frombuffer(data.stdout, dtype=numpy.uint8).reshape(screen.height, screen.width, 3)


@functools.lru_cache(maxsize=None)
def _icon(size):
    """The icon's colours at a size, and where it is opaque."""
    command = ["convert", str(_ICON), "-resize", f"{size}x{size}", "-depth", "8", "rgba:-"]
    pixels = numpy.frombuffer(subprocess.run(command, stdout=subprocess.PIPE, check=True).stdout, dtype=numpy.uint8)
    pixels = pixels.reshape(size, size, 4).astype(int)
    return pixels[:, :, :3], pixels[:, :, 3] > 250


def _difference(pixels, box):
    part = pixels[box.y:box.y + box.height, box.x:box.x + box.width].astype(int)
    colours, opaque = _icon(box.width)
    return numpy.abs(part - colours)[opaque].mean() if part.shape == colours.shape else numpy.inf


def _best_fit(pixels, left, top, width):
    boxes = [Box(x, y, size, size) for size in range(width - 1, width + 4) for x in range(left - 2, left + 3)
             for y in range(top - round(size * _BODY_TOP) - 2, top - round(size * _BODY_TOP) + 3)
             if size in _SIZES and x >= 0 and y >= 0]
    return min(((_difference(pixels, box), box) for box in boxes), default=(numpy.inf, None))


def icons(screen):
    """The positions of the icons that the screen shows."""
    pixels = look(screen)
    body = numpy.abs(pixels.astype(int) - _BODY).max(axis=2) <= _TOLERANCE
    regions, _ = ndimage.label(ndimage.binary_dilation(body, iterations=_STRIPE))
    found = []
    for number, (rows, columns) in enumerate(ndimage.find_objects(regions), 1):
        ys, xs = numpy.nonzero(body[rows, columns] & (regions[rows, columns] == number))
        left, width = int(xs.min()), int(xs.max() - xs.min()) + 1
        difference, box = _best_fit(pixels, columns.start + left, rows.start + int(ys.min()), width)
        if difference < _LIKENESS:
            found.append(box)
    return found
