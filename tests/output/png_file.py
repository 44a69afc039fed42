"""Reads the pixels of a PNG with 8 bits per channel and three or four channels."""
import pathlib
import struct
import zlib

WHITE, BLACK = (255, 255, 255), (0, 0, 0)
RED, GREEN, BLUE = (255, 0, 0), (0, 255, 0), (0, 0, 255)


def chunks(data):
    if data[:8] != b"\x89PNG\r\n\x1a\n":
        raise ValueError("no PNG file")
    at = 8
    while at < len(data):
        length, kind = struct.unpack(">I4s", data[at:at + 8])
        yield kind, data[at + 8:at + 8 + length]
        at += 12 + length


def paeth(left, up, corner):
    """The predictor of filter 4."""
    return min(left, up, corner, key=lambda value: abs(left + up - corner - value))


def unfilter(kind, row, above, step):
    if kind == 0:
        return row
    if kind == 2:
        return bytes((a + b) & 255 for a, b in zip(row, above))
    row = bytearray(row)
    for k, value in enumerate(row):
        left, corner = (row[k - step], above[k - step]) if k >= step else (0, 0)
        guess = {1: left, 3: (left + above[k]) // 2}.get(kind)
        row[k] = (value + (paeth(left, above[k], corner) if guess is None else guess)) & 255
    return bytes(row)


class Picture:
    """Positions are in points on the landscape page, x from the left and y from the bottom."""

    def __init__(self, path, width_in_points=792):
        parts = list(chunks(pathlib.Path(path).read_bytes()))
        header = struct.unpack(">IIBBBBB", parts[0][1])
        self.width, self.height, depth, colour, _, _, interlaced = header
        if depth != 8 or colour not in (2, 6) or interlaced:
            raise ValueError(f"{path}: PNG of depth {depth} and colour type {colour}")
        self.size = self.width, self.height
        self.step = 3 if colour == 2 else 4
        packed = zlib.decompress(b"".join(data for kind, data in parts if kind == b"IDAT"))
        length = self.width * self.step
        self.rows = []
        above = bytes(length)
        for at in range(0, len(packed), length + 1):
            above = unfilter(packed[at], packed[at + 1:at + 1 + length], above, self.step)
            self.rows.append(above)
        self.scale = self.width / width_in_points

    def pixels(self, left, bottom, right, top):
        """The pixels of a rectangle given in points."""
        for y in range(round(self.height - top * self.scale),
                       round(self.height - bottom * self.scale)):
            for x in range(round(left * self.scale), round(right * self.scale)):
                pixel = self.rows[y][self.step * x:self.step * (x + 1)]
                if self.step == 4:  # on white paper
                    pixel = [255 - (255 - value) * pixel[3] // 255 for value in pixel[:3]]
                yield tuple(pixel)

    def ink(self, left, bottom, right, top):
        """The number of pixels of a rectangle that are not white."""
        return sum(pixel != WHITE for pixel in self.pixels(left, bottom, right, top))

    def has(self, colour, left, bottom, right, top, tolerance=90):
        return any(max(abs(a - b) for a, b in zip(pixel, colour)) < tolerance
                   for pixel in self.pixels(left, bottom, right, top))
