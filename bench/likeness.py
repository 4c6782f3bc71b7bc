"""How like an original the pages of a smaller copy look."""

import subprocess

import numpy

SIDE = 1300  # pixels
WINDOW = 8
C1, C2 = (0.01 * 255) ** 2, (0.03 * 255) ** 2
LUMA = numpy.array([0.299, 0.587, 0.114])


def by_mutool(path, page):
    side = str(SIDE)
    return _samples(["mutool", "draw", "-q", "-F", "ppm", "-w", side, "-h", side, "-o", "-", path, str(page)])


def by_pdftocairo(path, page):
    drawing = ["pdftocairo", "-png", "-singlefile", "-f", str(page), "-scale-to", str(SIDE), path, "-"]
    png = subprocess.run(drawing, check=True, capture_output=True).stdout
    return _samples(["convert-im6.q16", "png:-", "-depth", "8", "ppm:-"], png)


def likenesses(original, copy, pages, draw=by_mutool):
    """The structural similarity (Wang, Bovik, Sheikh and Simoncelli, 2004) of each page, in grey, drawn with
    a long side of 1,300 pixels."""
    return [_similarity(draw(original, page), draw(copy, page)) for page in pages]


def _samples(command, given=None):
    data = subprocess.run(command, check=True, capture_output=True, input=given).stdout
    width, height = (int(word) for word in data.split(maxsplit=4)[1:3])
    return numpy.frombuffer(data[-width * height * 3:], numpy.uint8).reshape(height, width, 3) @ LUMA


def _similarity(a, b):
    mean_a, mean_b = _means(a), _means(b)
    variance_a, variance_b = _means(a * a) - mean_a ** 2, _means(b * b) - mean_b ** 2
    covariance = _means(a * b) - mean_a * mean_b
    like = (2 * mean_a * mean_b + C1) * (2 * covariance + C2)
    return (like / ((mean_a ** 2 + mean_b ** 2 + C1) * (variance_a + variance_b + C2))).mean()


def _means(samples):
    """Of every window, through sums over all that is above and left."""
    sums = numpy.pad(samples, ((1, 0), (1, 0))).cumsum(0).cumsum(1)
    windows = (sums[WINDOW:, WINDOW:] - sums[:-WINDOW, WINDOW:] - sums[WINDOW:, :-WINDOW]
               + sums[:-WINDOW, :-WINDOW])
    return windows / WINDOW ** 2
