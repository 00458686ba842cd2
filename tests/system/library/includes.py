#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""includes.py SOURCE: checks that the sources in SOURCE are a house of rooms, each with one subject.

A unit is a class with its header and its source. A room is a folder with sources. The checks:
- No unit includes itself by way of others, except for the pairs in ALLOWED.
- No room includes itself by way of others.
- A product includes only itself and those before it in PRODUCTS; sources of the tools are of one product, and those of
  the viewer.
- No room has more than MOST files.
"""

import pathlib
import re
import sys
import tempfile

MOST = 25
# From what everything rests on to what rests on everything. A product's public headers belong to it.
PRODUCTS = ("include", "src", "kit", "qml", "tools", "kde", "viewer")
# Products that have all their folders on the path, and those of tools/common.
BY_NAME = ("tools", "kde", "viewer")
KIT_HEADERS = tuple(f"kit/include/{library}" for library in ("core", "gui", "trust"))
PUBLIC = {"include": "src", **{f"{place}/SorrelKit": "kit" for place in KIT_HEADERS}}
INCLUDE = re.compile(r'^\s*#\s*include\s*[<"]([^>"]+)[>"]', re.MULTILINE)

# XmlLoader::load() takes an ApkResources, which renders references; ApkResources::loadXml() uses an XmlLoader. Both
# signatures are part of the binary interface.
ALLOWED = {("src/document/XmlLoader", "include/ApkResources")}


def cycles(graph):
    """The sets of nodes that reach each other, by Tarjan's algorithm without recursion."""
    index, low, on_stack, stack, found = {}, {}, set(), [], []
    for root in graph:
        if root in index:
            continue
        work = [(root, iter(sorted(graph.get(root, ()))))]
        index[root] = low[root] = len(index)
        stack.append(root)
        on_stack.add(root)
        while work:
            node, successors = work[-1]
            for successor in successors:
                if successor not in index:
                    index[successor] = low[successor] = len(index)
                    stack.append(successor)
                    on_stack.add(successor)
                    work.append((successor, iter(sorted(graph.get(successor, ())))))
                    break
                if successor in on_stack:
                    low[node] = min(low[node], index[successor])
            else:
                work.pop()
                if work:
                    low[work[-1][0]] = min(low[work[-1][0]], low[node])
                if low[node] == index[node]:
                    component = set(stack[stack.index(node):])
                    del stack[stack.index(node):]
                    on_stack -= component
                    if len(component) > 1:
                        found.append(component)
    return found


class House:
    def __init__(self, source):
        self.source = source
        self.files = sorted(path.relative_to(source) for product in PRODUCTS for path in (source / product).rglob("*")
                            if path.suffix in (".h", ".cpp"))
        self.public = {(PUBLIC[str(path.parent)], path.stem): path.with_suffix("")
                       for path in self.files if str(path.parent) in PUBLIC}
        self.by_name = {}
        for path in self.files:
            self.by_name.setdefault(path.name, []).append(path)

    def unit(self, path):
        return str(self.public.get((path.parts[0], path.stem), path.with_suffix("")))

    def included(self, path):
        """The files of the house that the file includes."""
        for name in INCLUDE.findall((self.source / path).read_text()):
            roots = [path.parent, *map(pathlib.Path, ("include", "src", "kit", "qml", "viewer", *KIT_HEADERS))]
            found = [root / name for root in roots if (self.source / root / name).is_file()]
            if not found and path.parts[0] in BY_NAME:
                products = {"tools", path.parts[0]}
                found = [other for other in self.by_name.get(name, ()) if other.parts[0] in products]
            if found:
                yield found[0]

    def faults(self):
        units, rooms, sizes = {}, {}, {}
        for path in self.files:
            room = str(path.parent)
            sizes[room] = sizes.get(room, 0) + 1
            units.setdefault(self.unit(path), set())
            rooms.setdefault(room, set())
            for other in self.included(path):
                if self.unit(other) != self.unit(path):
                    units[self.unit(path)].add(self.unit(other))
                if other.parent != path.parent:
                    rooms[room].add(str(other.parent))
                if PRODUCTS.index(other.parts[0]) > PRODUCTS.index(path.parts[0]):
                    yield f"{path} includes {other}, which rests on it"
        for unit, other in sorted(ALLOWED & {(unit, other) for unit in units for other in units[unit]}):
            units[unit].discard(other)
        for cycle in cycles(units):
            yield "these include each other: " + ", ".join(sorted(cycle))
        for cycle in cycles(rooms):
            yield "these rooms include each other: " + ", ".join(sorted(cycle))
        for room, size in sizes.items():
            if size > MOST:
                yield f"{room} has {size} files, more than {MOST}"


def self_check():
    """What is wrong with this check itself: a made-up house has every fault, and each is found."""
    with tempfile.TemporaryDirectory() as directory:
        source = pathlib.Path(directory)
        sources = {"include/A.h": "", "src/A.cpp": '#include "low/B.h"\n', "src/low/B.h": "#include <A.h>\n",
                   "src/low/C.h": '#include "high/D.h"\n', "src/high/D.h": "", "src/high/E.h": '#include "low/C.h"\n',
                   "src/low/F.h": '#include "kitchen/G.h"\n', "kit/kitchen/G.h": ""}
        sources.update({f"kit/large/H{number}.h": "" for number in range(MOST + 1)})
        for name, text in sources.items():
            (source / name).parent.mkdir(parents=True, exist_ok=True)
            (source / name).write_text(text)
        found = sorted(House(source).faults())
    expected = ["kit/large has 26 files, more than 25",
                "src/low/F.h includes kit/kitchen/G.h, which rests on it",
                "these include each other: include/A, src/low/B",
                "these rooms include each other: src/high, src/low"]
    return [] if found == expected else [f"the check itself finds {found} in a made-up house"]


def main():
    house = House(pathlib.Path(sys.argv[1]))
    faults = self_check() + ([] if house.files else ["there are no sources"]) + list(house.faults())
    sys.exit("\n".join(faults) or 0)


main()
