#!/usr/bin/env python3
"""Holds the tree to its floors: who may include whom, and no ring among the units; and the list of
configuration keys to what is read.

check_structure.py          checks, the drawing in docs/architecture.md included
check_structure.py --draw   prints that drawing
check_structure.py --write  puts it into the page

A room is a folder of sources; it knows rooms of the floors below its own, never one beside it. A
unit is a header with its source.
"""
import os
import re
import sys

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
PAGE = os.path.join(ROOT, "docs", "architecture.md")
DRAWING = re.compile(r"(?<=<!-- drawing -->\n```text\n).*?(?=```)", re.S)
FLOORS = [  # from the bottom
    ["src/file", "src/qtpromise"],
    ["src/host"],
    ["src/datatable"],
    ["src/gift", "src/decoration", "src/chat", "src/presentation", "src/privilege", "src/effect"],
    ["src/startup", "src/tidy"],
    ["src/client", "src/models", "apps/signals"],
    ["apps/server", "apps/content", "apps/zglobal/console"],
    ["apps/lint", "apps/diff", "apps/inspector/host"],
    ["apps/why", "apps/publish"],
    ["apps/zglobal/command", "apps/inspector/parts"],
    ["apps/zglobal/demo", "apps/inspector/pages"],
    ["apps/inspector/window"],
    ["apps/zglobal", "apps/inspector", "apps/commandreference", "apps/tablereference", "bench", "examples/embed",
     "examples/giftshop", "examples/guide", "examples/managers", "examples/own-host/host",
     "src/testing"],
    ["examples/own-host", "examples/testing"],
]
FLOOR = {room: number for number, rooms in enumerate(FLOORS) for room in rooms}
PLACE = {room: place for rooms in FLOORS for place, room in enumerate(rooms)}
KEYS_PAGE = os.path.join("docs", "content.md")
KEY_READ = re.compile(r'(?:[cC]onfig(?:uration)?|onServer)\(\s*QStringLiteral\("(\w+)"')
KEY_REPORTED = re.compile(r'\{"(\w+)", ConfigKey::')
FOLDERS_OF_INCLUDES = ["src", "apps", "apps/zglobal", "src/qtpromise", "tests"]


def sources():
    for top in ("src", "apps", "bench", "examples"):
        for folder, _, names in os.walk(os.path.join(ROOT, top)):
            for name in sorted(names):
                if name.endswith((".h", ".cpp")) or name == "QtPromise":
                    yield os.path.relpath(os.path.join(folder, name), ROOT).replace(os.sep, "/")


def content(path):
    with open(os.path.join(ROOT, path), encoding="utf-8") as file:
        return file.read()


def includes(path):
    """The files of ours that a file includes, as paths from the root."""
    for name in re.findall(r'^\s*#\s*include\s*["<]([^">]+)[">]', content(path), re.M):
        for folder in [os.path.dirname(path)] + FOLDERS_OF_INCLUDES:
            found = os.path.normpath(f"{folder}/{name}").replace(os.sep, "/")
            if os.path.isfile(os.path.join(ROOT, found)):
                yield found
                break


def exported_headers():
    text = content("src/CMakeLists.txt")
    pairs = re.findall(r"^\s+(?:PAIRS )?(\w+/\w+)$", text, re.M)
    headers = re.findall(r"^\s+(?:HEADERS )?(\w+/\w+\.h)$", text, re.M)
    return {f"src/{name}" for name in headers} | {f"src/{pair}.h" for pair in pairs} | {
        "src/qtpromise/QtPromise"}


def key_faults():
    """Configuration keys are read in many places; the page and the report have to know them all."""
    text = "".join(content(path) for path in sources() if path.startswith("src/"))
    section = content(KEYS_PAGE).split("## Configuration")[1].split("\n## ")[0]
    cells = "".join(re.findall(r"^\| (`.*?) \|", section, re.M))
    read = set(KEY_READ.findall(text))
    return [f"{where}: the keys {sorted(read ^ known)} are missing, or not read"
            for where, known in ((KEYS_PAGE, set(re.findall(r"`(\w+)`", cells))),
                                 ("the report", set(KEY_REPORTED.findall(text))))
            if read != known]


def rings(graph):
    state, found = {}, []

    def visit(unit, trail):
        state[unit] = "open"
        for other in sorted(graph.get(unit, ())):
            if state.get(other) == "open":
                found.append(" -> ".join(trail[trail.index(other):] + [other]))
            elif other not in state:
                visit(other, trail + [other])
        state[unit] = "done"

    for unit in sorted(graph):
        if unit not in state:
            visit(unit, [unit])
    return found


def read():
    """What is wrong, which units each unit includes, and which rooms each room knows."""
    faults, units, rooms, exported = [], {}, {}, exported_headers()
    for path in sources():
        room, unit = os.path.dirname(path), os.path.splitext(path)[0]
        if room not in FLOOR:
            faults.append(f"{path} lies in a room without a floor")
            continue
        for other in includes(path):
            known, included = os.path.dirname(other), os.path.splitext(other)[0]
            if included != unit:
                units.setdefault(unit, set()).add(included)
            if known == room:
                continue
            rooms.setdefault(room, set()).add(known)
            if FLOOR.get(known, len(FLOORS)) >= FLOOR[room]:
                faults.append(f"{path} may not know {other}")
            elif path.startswith(("apps/", "examples/")) and other.startswith("src/") \
                    and other not in exported:
                faults.append(f"{path} includes {other}, which is not exported")
    faults += [f"a ring: {ring}" for ring in rings(units)]
    if not units:
        faults.append("nothing was read: the layout has changed under this check")
    return faults, units, rooms


def drawing(rooms):
    """The floors from the top, with arrows to the rooms known that do not follow from others."""
    def reached(room):
        known = rooms.get(room, set())
        return known.union(*(reached(other) for other in known)) if known else set()

    lines = []
    for number, floor in reversed(list(enumerate(FLOORS))):
        drawn = {}  # rooms that know the same are drawn as one
        for room in floor:
            known = rooms.get(room, set())
            direct = known - set().union(*(reached(other) for other in known))
            arrows = sorted(direct, key=lambda other: (-FLOOR[other], PLACE[other]))
            drawn.setdefault(tuple(arrows), []).append(room)
        for place, (known, names) in enumerate(drawn.items()):
            floor_number = f"{number}" if place == 0 else " "
            left = [f"{floor_number:<2} {names[0]}"] + [f"   {name}" for name in names[1:]]
            left[0] = f"{left[0]:<26}" + (f"──> {', '.join(known)}" if known else "")
            lines += [line.rstrip() for line in left]
    return "\n".join(lines) + "\n"


def main():
    faults, units, rooms = read()
    faults += key_faults()
    if faults:
        print("\n".join(faults))
        return 1
    current = drawing(rooms)
    if "--draw" in sys.argv:
        print(current, end="")
        return 0
    with open(PAGE, encoding="utf-8") as file:
        page = file.read()
    if "--write" in sys.argv:
        with open(PAGE, "w", encoding="utf-8") as file:
            file.write(DRAWING.sub(lambda _: current, page))
    elif DRAWING.findall(page) != [current]:
        print("the drawing in docs/architecture.md is not current: run scripts/reference")
        return 1
    print(f"{len(units)} units, no fault")
    return 0


if __name__ == "__main__":
    sys.exit(main())
