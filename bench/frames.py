"""What the window takes for each frame of a motion, as the programs beside the driver tell it."""

import json
import os
import subprocess
from pathlib import Path

from table import Row

SMOOTH_MS, JERK_MS = 16, 50  # of 99 frames in 100, and of each


def frames(driver, program, work, *arguments):
    """Rows for 99 in 100 frames, and for the longest."""
    path = str(Path(driver).with_name(program))
    told = subprocess.run([path, *arguments], env={**os.environ, "QT_QPA_PLATFORM": "offscreen"}, check=True,
                          capture_output=True, text=True).stdout
    times = json.loads(told)
    return [Row(f"{work}: 99 in 100 of them", times["p99"], "ms", limit=SMOOTH_MS),
            Row(f"{work}: the longest", times["longest"], "ms", limit=JERK_MS)]
