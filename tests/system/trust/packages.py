# SPDX-License-Identifier: LGPL-2.1-or-later
"""Makes packages, takes their signatures away, and damages them."""

import io
import struct
import zipfile

MAGIC = b"APK Sig Block 42"
V2, V3, STAMP, PADDING = 0x7109871A, 0xF05368C0, 0x6DFF800D, 0x42726577


def archive(members, comment=b""):
    """A ZIP archive. The members are (name, content) or (name, content, True) for one that is not compressed."""
    target = io.BytesIO()
    with zipfile.ZipFile(target, "w") as file:
        for name, content, *stored in members:
            info = zipfile.ZipInfo(name, (2020, 1, 1, 0, 0, 0))
            info.compress_type = zipfile.ZIP_STORED if stored else zipfile.ZIP_DEFLATED
            file.writestr(info, content)
        file.comment = comment
    return target.getvalue()


def members(data):
    with zipfile.ZipFile(io.BytesIO(data)) as file:
        return [(info.filename, file.read(info)) for info in file.infolist()]


def with_members(data, change):
    """The archive with the members that `change` makes of (name, content). It has no signing block."""
    return archive([pair for name, content in members(data) for pair in change(name, content)])


def without(data, pattern):
    return with_members(data, lambda name, content: [] if pattern(name) else [(name, content)])


def changed(data, member, old, new):
    """The archive with other bytes in a member, which must have the old ones."""
    def change(name, content):
        if name != member:
            return [(name, content)]
        if old not in content:
            raise ValueError(f"{member} has no {old}")
        return [(name, content.replace(old, new, 1))]
    return with_members(data, change)


class Layout:
    """The places of the sections of a package with a signing block."""

    def __init__(self, data):
        self.end = data.rindex(b"PK\5\6")
        (self.directory,) = struct.unpack_from("<I", data, self.end + 16)
        if data[self.directory - 16:self.directory] != MAGIC:
            raise ValueError("no signing block")
        (size,) = struct.unpack_from("<Q", data, self.directory - 24)
        self.block = self.directory - 8 - size
        self.pairs = []  # (id, offset of the value, its size)
        at = self.block + 8
        while at < self.directory - 24:
            length, number = struct.unpack_from("<QI", data, at)
            self.pairs.append((number, at + 12, length - 4))
            at += 8 + length


def with_pairs(data, pairs):
    """The package with these (id, value) in its signing block; without a block when there are none."""
    layout = Layout(data)
    block = b""
    if pairs:
        body = b"".join(struct.pack("<QI", len(value) + 4, number) + value for number, value in pairs)
        room = -(len(body) + 8 + 24 + 12) % 4096
        body += struct.pack("<QI", room + 4, PADDING) + bytes(room)
        block = struct.pack("<Q", len(body) + 24) + body + struct.pack("<Q", len(body) + 24) + MAGIC
    end = bytearray(data[layout.end:])
    struct.pack_into("<I", end, 16, layout.block + len(block))
    return data[:layout.block] + block + data[layout.directory:layout.end] + bytes(end)


def without_pair(data, number):
    """The package without the value of this id; without a block when it has no other value."""
    pairs = [(each, data[at:at + size]) for each, at, size in Layout(data).pairs if each not in (number, PADDING)]
    return with_pairs(data, pairs)


def behind(data, prefix):
    """The archive behind other bytes, which all its offsets count. It has no signing block and no comment."""
    moved = bytearray(prefix + data)
    end = len(moved) - 22
    (at,) = struct.unpack_from("<I", data, len(data) - 6)
    struct.pack_into("<I", moved, end + 16, at + len(prefix))
    at += len(prefix)
    while at < end:
        (header,) = struct.unpack_from("<I", moved, at + 42)
        struct.pack_into("<I", moved, at + 42, header + len(prefix))
        at += 46 + sum(struct.unpack_from("<HHH", moved, at + 28))
    return bytes(moved)


def flipped(data, at, bit=0):
    return data[:at] + bytes([data[at] ^ 1 << bit]) + data[at + 1:]


def signed_regions(data):
    """The ranges of a package that v2 and v3 sign, and their values in the block."""
    layout = Layout(data)
    regions = [(0, layout.block), (layout.directory, layout.end), (layout.end, len(data))]
    return regions + values(data, V2, V3)


def values(data, *numbers):
    """The ranges of the values with these ids in the signing block."""
    return [(at, at + size) for number, at, size in Layout(data).pairs if number in numbers]


def damaged(data, regions, count, chance):
    """`count` copies of `data`, each with one bit changed in one of the ranges, as (offset, copy)."""
    for number in range(count):
        at = chance.randrange(*regions[number % len(regions)])
        yield at, flipped(data, at, chance.randrange(8))
