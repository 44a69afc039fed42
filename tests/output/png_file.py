# output/png_file - reads a PNG of 8-bit red, green and blue, to look at its pixels.
import pathlib
import struct
import zlib

WHITE = (255, 255, 255)


def chunks(data):
    if data[:8] != b"\x89PNG\r\n\x1a\n":
        raise ValueError("no PNG file")
    at = 8
    while at < len(data):
        length, kind = struct.unpack(">I4s", data[at:at + 8])
        yield kind, data[at + 8:at + 8 + length]
        at += 12 + length


def nearest(left, up, corner):
    """The predictor of filter 4."""
    from_left, from_up, from_corner = abs(up - corner), abs(left - corner), abs(left + up - 2 * corner)
    if from_left <= from_up and from_left <= from_corner:
        return left
    return up if from_up <= from_corner else corner


def unfilter(kind, row, above, step):
    if kind == 0:
        return row
    if kind == 2:
        return bytes((a + b) & 255 for a, b in zip(row, above))
    row = bytearray(row)
    for k, value in enumerate(row):
        left = row[k - step] if k >= step else 0
        corner = above[k - step] if k >= step else 0
        guess = {1: left, 3: (left + above[k]) // 2}.get(kind)
        row[k] = (value + (nearest(left, above[k], corner) if guess is None else guess)) & 255
    return bytes(row)


class Picture:
    """Positions are in points on the landscape page, x from the left and y from the bottom."""

    def __init__(self, path):
        parts = list(chunks(pathlib.Path(path).read_bytes()))
        self.width, self.height, depth, colour, _, _, interlaced = struct.unpack(">IIBBBBB", parts[0][1])
        if depth != 8 or colour not in (2, 6) or interlaced:
            raise ValueError(f"{path}: PNG of depth {depth} and colour type {colour}")
        step = 3 if colour == 2 else 4
        packed = zlib.decompress(b"".join(data for kind, data in parts if kind == b"IDAT"))
        length = self.width * step
        self.rows = []
        above = bytes(length)
        for at in range(0, len(packed), length + 1):
            above = unfilter(packed[at], packed[at + 1:at + 1 + length], above, step)
            self.rows.append(above)
        self.step = step
        self.scale = self.width / 792

    def at(self, column, row):
        start = self.step * column
        pixel = self.rows[row][start:start + self.step]
        if self.step == 4:  # on white paper
            pixel = bytes(255 - (255 - value) * pixel[3] // 255 for value in pixel[:3])
        return tuple(pixel[:3])

    def pixels(self, left, bottom, right, top):
        """The pixels of a rectangle given in points."""
        for row in range(round(self.height - top * self.scale), round(self.height - bottom * self.scale)):
            for column in range(round(left * self.scale), round(right * self.scale)):
                yield self.at(column, row)

    def ink(self, left, bottom, right, top):
        """How many pixels of a rectangle are not white."""
        return sum(pixel != WHITE for pixel in self.pixels(left, bottom, right, top))

    def has(self, colour, left, bottom, right, top):
        return any(max(abs(a - b) for a, b in zip(pixel, colour)) < 90 for pixel in self.pixels(left, bottom, right, top))
