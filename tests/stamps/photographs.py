#!/usr/bin/python3
"""How well ink is lifted off photographs: `photographs.py STEPS [COUNT]` composes photos of known ink on paper with
gradients, shadows and creases up to 10 % darker, coloured light, noise and JPEG, has STEPS (folvane-stamp-steps) lift the
ink, and compares with what the same ink over flat white gives. Prints a line a photo; fails where the mean error of alpha
within the ink's box is above 0.04, the hue of saturated ink more than 12 degrees off, or more than 0.5 % of the other
pixels keep an alpha above 0.1."""
import colorsys
import subprocess
import sys
import tempfile
from pathlib import Path

import numpy as np

from stampReference import blurred, lifted

INKS = [(28, 46, 150), (20, 24, 90), (178, 24, 34), (24, 24, 28), (16, 96, 60), (120, 40, 130)]


def strokes(height, width, chance):
    """How much ink lies on each pixel, 0 to 1: soft edges, uneven pressure."""
    ink = np.zeros((height, width))
    t = np.linspace(0, 1, 6000)
    for _ in range(chance.integers(2, 5)):
        a, b, c = chance.uniform(2, 14, 3)
        x = width * (0.2 + 0.6 * t + 0.05 * np.sin(a * t + c))
        y = height * (chance.uniform(0.35, 0.65) + 0.14 * np.sin(b * t) * np.cos(a * t))
        radius = chance.uniform(2, 6)
        for px, py in zip(x[::6], y[::6]):
            x0, y0, reach = int(px), int(py), int(radius) + 2
            yy, xx = np.mgrid[y0 - reach:y0 + reach + 1, x0 - reach:x0 + reach + 1]
            dot = np.clip(radius + 0.5 - np.hypot(xx - px, yy - py), 0, 1)
            area = ink[y0 - reach:y0 + reach + 1, x0 - reach:x0 + reach + 1]
            np.maximum(area, dot, out=area)
    return ink * chance.uniform(0.85, 1)


def light(height, width, chance):
    """What falls on the paper: a gradient, a soft shadow's edge and a crease, coloured."""
    y, x = np.mgrid[0:height, 0:width]
    angle = chance.uniform(0, 2 * np.pi)
    along = (x / width - 0.5) * np.cos(angle) + (y / height - 0.5) * np.sin(angle)
    level = chance.uniform(0.6, 0.95) * (1 + chance.uniform(0, 0.5) * along)
    edge = (x - width * chance.uniform(0.2, 0.8)) * np.cos(angle) + (y - height * 0.5) * np.sin(angle)
    level *= 1 - chance.uniform(0.04, 0.10) / (1 + np.exp(-edge / chance.uniform(3, 40)))
    crease = np.abs(y - height * chance.uniform(0.1, 0.9) - 0.1 * x)
    level *= 1 - chance.uniform(0.03, 0.10) * np.exp(-(crease / chance.uniform(2, 6)) ** 2)
    return level[..., None] * np.array([1, chance.uniform(0.9, 1), chance.uniform(0.75, 1)])


def composed(chance, width=1600, height=1200):
    """The photo, what the ink is over white, and where it is."""
    amount = strokes(height, width, chance)[..., None]
    colour = np.array(INKS[chance.integers(len(INKS))]) / 255
    reflected = 1 - amount * (1 - colour)
    photo = reflected * light(height, width, chance) * chance.uniform(225, 255)
    photo = blurred(photo, chance.uniform(0.4, 0.8)) + chance.normal(0, chance.uniform(1, 3.5), photo.shape)
    return np.clip(photo, 0, 255).astype(np.uint8), np.rint(reflected * 255).astype(np.uint8), amount[..., 0]


def hue(pixels):
    """Of the summed colour, in degrees."""
    red, green, blue = pixels.reshape(-1, 3).mean(axis=0)
    return 360 * colorsys.rgb_to_hsv(red / 255, green / 255, blue / 255)[0]


def judged(ours, truth, amount):
    """Mean error of alpha in the ink's box, hue's error in degrees (0 for ink without one), share of paper left."""
    box = np.argwhere(amount > 0)
    inside = tuple(slice(low, high + 1) for low, high in zip(box.min(axis=0), box.max(axis=0)))
    error = np.abs(ours[inside][..., 3].astype(float) - truth[inside][..., 3]).mean() / 255
    core = (ours[..., 3] > 200) & (truth[..., 3] > 200)
    mine, wanted = (pixels[core][:, :3].astype(float) for pixels in (ours, truth))
    saturated = wanted.size and np.ptp(wanted.mean(axis=0)) > 40
    turned = abs((hue(mine) - hue(wanted) + 180) % 360 - 180) if saturated else 0.0
    off = blurred(np.repeat(amount[..., None], 3, axis=2), 3)[..., 0] < 0.001
    return error, turned, (ours[off][:, 3] > 25.5).mean()


def main():
    steps, count = sys.argv[1], int(sys.argv[2]) if len(sys.argv) > 2 else 30
    failed = 0
    with tempfile.TemporaryDirectory() as folder:
        for seed in range(count):
            chance = np.random.default_rng(seed)
            photo, over_white, amount = composed(chance)
            height, width = amount.shape
            ppm, jpeg = Path(folder, "photo.ppm"), Path(folder, "photo.jpg")
            ppm.write_bytes(b"P6 %d %d 255\n" % (width, height) + photo.tobytes())
            quality = str(chance.integers(75, 96))
            subprocess.run(["convert-im6.q16", str(ppm), "-quality", quality, str(jpeg)], check=True)
            subprocess.run([steps, jpeg, folder], check=True, capture_output=True)
            ours = np.frombuffer(Path(folder, "lifted").read_bytes(), np.uint8).reshape(height, width, 4)
            white = np.full((height, width, 3), 255, np.uint8)
            error, turned, left = judged(ours, lifted(over_white, white), amount)
            good = error <= 0.04 and turned <= 12 and left <= 0.005
            failed += not good
            print(f"photo {seed}: alpha {error:.4f}, hue {turned:.1f} degrees, paper left {100 * left:.3f} %"
                  + ("" if good else "  MISS"), flush=True)
    sys.exit(failed > 0)


if __name__ == "__main__":
    main()
