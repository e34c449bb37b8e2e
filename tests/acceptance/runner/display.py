"""The X display of a run: a private one, so that cases neither disturb each other nor the person at the machine."""

from __future__ import annotations

import os
import select
import struct
import subprocess
import tempfile
import time
import zlib
from collections.abc import Iterator
from contextlib import contextmanager
from pathlib import Path

DISPLAY_VARIABLE = "LETTERLIFT_ACCEPTANCE_DISPLAY"
# The file that the given display's server maps its screen to, see Xvfb's option -fbdir; without it no pictures.
FRAME_BUFFER_VARIABLE = "LETTERLIFT_ACCEPTANCE_FRAME_BUFFER"
START_TIME_LIMIT = 20
SCREEN = "1280x1024x24"
# A box is reported once it is on the screen, which is before it is painted.
PAINT_TIME = 0.3


class DisplayError(Exception):
    """There is no display to run on, or no picture of it."""


class Display:
    def __init__(self, name: str, frame_buffer: Path | None = None) -> None:
        self.name = name
        self._frame_buffer = frame_buffer

    def save_screenshot(self, path: Path) -> None:
        if self._frame_buffer is None:
            raise DisplayError(f"There is no picture of the display {self.name}: {FRAME_BUFFER_VARIABLE} isn't set.")
        path.parent.mkdir(parents=True, exist_ok=True)
        time.sleep(PAINT_TIME)
        path.write_bytes(xwd_to_png(self._frame_buffer.read_bytes()))


@contextmanager
def open_display() -> Iterator[Display]:
    if given := os.environ.get(DISPLAY_VARIABLE):
        frame_buffer = os.environ.get(FRAME_BUFFER_VARIABLE)
        yield Display(given, Path(frame_buffer) if frame_buffer else None)
        return
    with tempfile.TemporaryDirectory(prefix="letterlift-display-") as folder:
        read_end, write_end = os.pipe()
        # Without -noreset the server starts anew as soon as its last client has gone.
        server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write_end), "-screen", "0", SCREEN, "-fbdir", folder]
            + ["-nolisten", "tcp", "-noreset"],
            pass_fds=[write_end],
            stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL,
        )
        os.close(write_end)
        try:
            yield Display(":" + _display_number(read_end), Path(folder) / "Xvfb_screen0")
        finally:
            os.close(read_end)
            server.terminate()
            server.wait()


def _display_number(read_end: int) -> str:
    number = b""
    while not number.endswith(b"\n"):
        ready, _, _ = select.select([read_end], [], [], START_TIME_LIMIT)
        part = os.read(read_end, 16) if ready else b""
        if not part:
            raise DisplayError("Xvfb doesn't start.")
        number += part
    return number.decode("ascii").strip()


def xwd_to_png(image: bytes) -> bytes:
    """Takes the frame buffer's one format: 32 bits a pixel, little-endian, blue first (X11/XWDFile.h)."""
    header = struct.unpack_from(">25I", image)
    header_size, width, height, bytes_per_line, colours = header[0], header[4], header[5], header[12], header[19]
    colour_size = 12
    start = header_size + colours * colour_size
    rows = bytearray()
    for y in range(height):
        line_start = start + y * bytes_per_line
        line = image[line_start : line_start + width * 4]
        pixels = bytearray(width * 3)
        pixels[0::3], pixels[1::3], pixels[2::3] = line[2::4], line[1::4], line[0::4]
        rows += b"\0" + pixels
    return (
        b"\x89PNG\r\n\x1a\n"
        + _png_chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0))
        + _png_chunk(b"IDAT", zlib.compress(bytes(rows)))
        + _png_chunk(b"IEND", b"")
    )


def _png_chunk(kind: bytes, content: bytes) -> bytes:
    return struct.pack(">I", len(content)) + kind + content + struct.pack(">I", zlib.crc32(kind + content))
