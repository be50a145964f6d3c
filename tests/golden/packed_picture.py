"""Pictures in files: packed ones, as docs/formats/packed-picture.md tells, and JPEG files whose pixels are known."""

import struct
import zlib
from dataclasses import dataclass, replace

GREY8, GREY16, GREY32, COLOR = range(4)
PIXEL_SIZES = [1, 2, 4, 4]


@dataclass(frozen=True)
class Picture:
    """The pixels are rows from the top, numbers with their lowest byte first, colours as red, green, blue, alpha."""

    kind: int
    width: int
    height: int
    pixels: bytes
    alpha: bool = False

    def packed(self):
        size = PIXEL_SIZES[self.kind]
        stored = b""
        for y in range(self.height):
            row = self.pixels[y * self.width * size : (y + 1) * self.width * size]
            for place in range(size):
                plane = row[place::size]
                stored += bytes((value - left) % 256 for value, left in zip(plane, b"\0" + plane))
        head = b"\x8aZP\n" + bytes([1, self.kind, int(self.alpha), 0]) + struct.pack("<II", self.width, self.height)
        # Without compression the bytes are the same with every release of zlib.
        return head + zlib.compress(stored, 0)

    def tell(self):
        alpha = " alpha" if self.alpha else ""
        return f"{self.kind} {self.width}x{self.height}{alpha} {zlib.crc32(self.pixels):08x}"

    def with_alpha(self, alpha):
        return replace(self, alpha=alpha)

    def recoloured(self, rule):
        """The colours as `rule` makes them of each."""
        colours = [rule(self.pixels[i : i + 4]) for i in range(0, len(self.pixels), 4)]
        return replace(self, pixels=b"".join(colours))


def some_picture(kind, n):
    """A small picture, with something white in it when it has colours."""
    width, height = 2 + n % 2, 1 + n % 3
    count = width * height
    if kind == GREY32:
        pixels = struct.pack(f"<{count}f", *(n + 0.5 * i for i in range(count)))
    else:
        pixels = bytes((n * 37 + i * 101) % 256 for i in range(count * PIXEL_SIZES[kind]))
    if kind == COLOR:
        pixels = pixels[:4] + b"\xff\xff\xff\xff" + pixels[8:]
    return Picture(kind, width, height, pixels, kind == COLOR and n % 2 == 0)


@dataclass(frozen=True)
class Jpeg:
    """A JPEG file of grey blocks of 8 x 8 pixels side by side."""

    file: bytes
    greys: tuple

    def packed(self):
        return self.file

    def picture(self):
        row = b"".join(bytes([grey, grey, grey, 255]) * 8 for grey in self.greys)
        return Picture(COLOR, 8 * len(self.greys), 8, row * 8)


def jpeg_segment(marker, data):
    return bytes([0xFF, marker]) + struct.pack(">H", len(data) + 2) + data


def grey_jpeg(greys):
    """All numbers of the blocks but the first are 0, and without quantisation that one is 8 times the grey less 128."""
    bits, last = "", 0
    for grey in greys:
        value = 8 * (grey - 128)
        step, last = value - last, value
        size = abs(step).bit_length()
        bits += f"{size:04b}"
        if size:
            bits += f"{step if step > 0 else step + (1 << size) - 1:0{size}b}"
        bits += "0"
    bits += "1" * (-len(bits) % 8)
    # A code of four bits stands for each size of a step, a code of one bit for the end of a block.
    sizes = jpeg_segment(0xC4, bytes([0x00, 0, 0, 0, 12] + [0] * 12 + list(range(12))))
    ends = jpeg_segment(0xC4, bytes([0x10, 1] + [0] * 15 + [0]))
    frame = jpeg_segment(0xC0, struct.pack(">BHHBBBB", 8, 8, 8 * len(greys), 1, 1, 0x11, 0))
    file = (b"\xff\xd8" + jpeg_segment(0xDB, b"\0" + b"\1" * 64) + frame + sizes + ends
            + jpeg_segment(0xDA, bytes([1, 1, 0x00, 0, 63, 0]))
            + int(bits, 2).to_bytes(len(bits) // 8, "big").replace(b"\xff", b"\xff\0") + b"\xff\xd9")
    return Jpeg(file, tuple(greys))


class NoPicture:
    """No bytes in the place of a packed picture."""

    def packed(self):
        return b""


NO_PICTURE = NoPicture()
