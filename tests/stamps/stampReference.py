#!/usr/bin/python3
"""The steps from a photo to a stamp once more, in NumPy: `stampReference.py STEPS` makes pictures of known ink on known
paper, has the program STEPS (folvane-stamp-steps) work on them, and fails where the two disagree. Given the same paper,
lifted ink agrees to the byte; paper and the last resampling agree to 2 of 255 in 99.9 % of the samples."""
import subprocess
import sys
import tempfile
from pathlib import Path

import numpy as np

F = np.float32


def photo(width, height, seed):
    """Ink of three colours over unevenly lit paper, with noise."""
    chance = np.random.default_rng(seed)
    y, x = np.mgrid[0:height, 0:width]
    light = 0.55 + 0.4 * x / width - 0.15 * y / height
    paper = light[..., None] * np.array([235, 228, 214])
    picture = paper.copy()
    for ink in ([30, 40, 150], [170, 20, 30], [25, 25, 28]):
        a, b, (c, d) = 0.05, 0.9, chance.uniform(0.1, 0.9, 2)
        t = np.linspace(0, 1, 4000)
        xs = width * (a + (b - a) * t + 0.06 * np.sin(11 * t + seed))
        ys = height * (c + (d - c) * t + 0.08 * np.cos(9 * t))
        near = np.zeros((height, width))
        for dx in range(-2, 3):
            for dy in range(-2, 3):
                near[np.clip(ys.astype(int) + dy, 0, height - 1), np.clip(xs.astype(int) + dx, 0, width - 1)] = \
                    chance.uniform(0.5, 1)
        picture = picture * (1 - near[..., None] * (1 - np.array(ink) / 255))
    return np.clip(picture + chance.normal(0, 2, picture.shape), 0, 255).astype(np.uint8)


def dilated(picture, radius):
    reach = int(radius)
    height, width = picture.shape[:2]
    padded = np.pad(picture, ((reach, reach), (reach, reach), (0, 0)))
    best = np.zeros_like(picture)
    for dy in range(-reach, reach + 1):
        for dx in range(-reach, reach + 1):
            if dx * dx + dy * dy <= radius * radius:
                np.maximum(best, padded[reach + dy:reach + dy + height, reach + dx:reach + dx + width], out=best)
    return best


def blurred(picture, deviation):
    reach = int(4 * deviation) + 1
    weights = np.exp(-0.5 * (np.arange(-reach, reach + 1) / deviation) ** 2)
    weights /= weights.sum()
    result = picture.astype(float)
    for axis in (0, 1):
        padding = [(reach, reach) if axis == one else (0, 0) for one in range(3)]
        padded = np.pad(result, padding, mode="edge")
        length = result.shape[axis]
        result = sum(weight * np.take(padded, range(i, i + length), axis) for i, weight in enumerate(weights))
    return result


def paper_behind(pixels):
    radius = max(max(pixels.shape[:2]) / 120, 3)
    return blurred(dilated(pixels, radius), 2 * radius)


def lifted(pixels, paper):
    low, high = F(0.12), F(0.42)
    flat = np.minimum(pixels[..., :3].astype(F) / np.maximum(paper.astype(F), F(40)), F(1))
    darkness = F(1) - flat.min(axis=2)
    t = np.clip((darkness - low) / (high - low), F(0), F(1))
    alpha = t * t * (F(3) - F(2) * t)
    with np.errstate(divide="ignore", invalid="ignore"):
        ink = np.maximum(F(1) - (F(1) - flat) / alpha[..., None], F(0))
        colour = np.trunc(alpha[..., None] * ink * F(255))
    result = np.dstack([colour, np.trunc(alpha * F(255))])
    return np.where((alpha < F(0.02))[..., None], 0, result).astype(np.uint8)


def span(counts):
    lines = np.flatnonzero(counts >= 3)
    return int(lines[0]), int(lines[-1])


def ink_box(pixels):
    """Left, top, right, bottom; the last two beyond it."""
    dark = pixels[..., 3] >= 26
    (top, bottom), (left, right) = span(dark.sum(axis=1)), span(dark.sum(axis=0))
    margin = max(4, max(right - left, bottom - top) // 40)
    return (max(left - margin, 0), max(top - margin, 0),
            min(right + 1 + margin, pixels.shape[1]), min(bottom + 1 + margin, pixels.shape[0]))


def averaging(old, new):
    """Each of the new samples as the average of the old ones that it covers."""
    edges = np.arange(new + 1) * old / new
    cells = np.arange(old)
    cover = np.minimum(edges[1:, None], cells + 1) - np.maximum(edges[:-1, None], cells)
    return np.clip(cover, 0, None) * new / old


def cut_out(pixels, longest=1200):
    left, top, right, bottom = ink_box(pixels)
    crop = pixels[top:bottom, left:right].astype(float)
    height, width = crop.shape[:2]
    scale = min(longest / max(width, height), 1)
    new_height, new_width = (max(int(np.floor(scale * side + 0.5)), 1) for side in (height, width))
    return np.einsum("ij,jkc,lk->ilc", averaging(height, new_height), crop, averaging(width, new_width), optimize=True)


def close(name, ours, reference):
    share = (np.abs(ours.astype(float) - reference) > 2).mean()
    print(f"  {name}: {100 * share:.4f} % of samples differ by more than 2")
    return share <= 0.001


def agrees(steps, width, height, seed, folder):
    picture = folder / "photo.ppm"
    picture.write_bytes(b"P6 %d %d 255\n" % (width, height) + photo(width, height, seed).tobytes())
    told = subprocess.run([steps, picture, folder], capture_output=True, text=True, check=True).stdout.split()
    size = [int(number) for number in told]

    def step(name, across, down, channels=4):
        return np.frombuffer((folder / name).read_bytes(), np.uint8).reshape(down, across, channels)

    pixels, ink = (step(name, size[0], size[1]) for name in ("pixels", "lifted"))
    paper, stamp, expected = step("paper", size[0], size[1], 3), step("stamp", size[2], size[3]), cut_out(ink)
    print(f"{width} x {height}: stamp of {size[2]} x {size[3]}")
    return all([np.array_equal(ink, lifted(pixels, paper)), close("paper", paper, paper_behind(pixels[..., :3])),
                stamp.shape == expected.shape and close("stamp", stamp, expected)])


def main():
    with tempfile.TemporaryDirectory() as folder:
        results = [agrees(sys.argv[1], *size, seed, Path(folder))
                   for seed, size in enumerate([(320, 200), (333, 517), (2600, 1300)])]
    sys.exit(not all(results))


if __name__ == "__main__":
    main()
