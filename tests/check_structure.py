#!/usr/bin/env python3
"""Holds the tree to its floors: who may include whom, and no ring among the units.

A unit is a header with its source. Data flows from the files up to the answers, and every floor
knows only the floors below it.
"""
import os
import re
import sys

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
MANAGERS = {"gift", "decoration", "chat", "presentation", "privilege", "effect"}
ALLOWED = {"file": {"file"}, "host": {"host", "file"}, "datatable": {"datatable", "host", "file"},
           "tidy": {"tidy", "datatable", "file"} | MANAGERS,
           "startup": {"startup", "datatable"} | MANAGERS,
           "client": {"client", "datatable", "tidy", "host", "file"} | MANAGERS}
ALLOWED.update({folder: {folder, "datatable", "host", "file"} for folder in MANAGERS})
# The rooms of the programs: what each may know of the others.
PROGRAM = {"server": {"server"}, "zglobal/console": {"zglobal/console"},
           "zglobal/command": {"zglobal/command", "zglobal/console", "server"},
           "zglobal/demo": {"zglobal/demo", "zglobal/command", "zglobal/console", "server"}}


def sources(top):
    for folder, _, names in os.walk(os.path.join(ROOT, top)):
        for name in sorted(names):
            if name.endswith((".h", ".cpp")):
                yield os.path.relpath(os.path.join(folder, name), os.path.join(ROOT, top))


def includes(top, path):
    with open(os.path.join(ROOT, top, path), encoding="utf-8") as file:
        return re.findall(r'^#include "([^"]+)"', file.read(), re.M)


def exported_headers():
    with open(os.path.join(ROOT, "src", "CMakeLists.txt"), encoding="utf-8") as file:
        text = file.read()
    pairs = re.findall(r"^\s+(?:PAIRS )?(\w+/\w+)$", text, re.M)
    return set(re.findall(r"^\s+(?:HEADERS )?(\w+/\w+\.h)$", text, re.M)) | {
        f"{pair}.h" for pair in pairs}


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


def main():
    faults, graph = [], {}
    for path in sources("src"):
        folder = path.split("/")[0]
        unit = os.path.splitext(path)[0]
        for other in includes("src", path):
            if "/" not in other:
                continue
            if unit != os.path.splitext(other)[0]:
                graph.setdefault(unit, set()).add(os.path.splitext(other)[0])
            if other.split("/")[0] not in ALLOWED.get(folder, {folder}):
                faults.append(f"src/{path} may not know {other}")
    exported = exported_headers()
    for path in sources("apps"):
        room = os.path.dirname(path)
        for other in includes("apps", path):
            if os.path.exists(os.path.join(ROOT, "src", other)) and other not in exported \
                    and not other.startswith("file/"):
                faults.append(f"apps/{path} includes {other}, which is not exported")
            known = os.path.dirname(other)
            if known in ("console", "command", "demo", "server"):
                where = known if known == "server" else f"zglobal/{known}"
                unit = os.path.splitext(f"{where}/{os.path.basename(other)}")[0]
                if unit != os.path.splitext(path)[0]:
                    graph.setdefault(os.path.splitext(path)[0], set()).add(unit)
                if where not in PROGRAM.get(room, {where}):
                    faults.append(f"apps/{path} may not know {other}")

    faults += [f"a ring: {ring}" for ring in rings(graph)]
    if not exported or not graph:
        faults.append("nothing was read: the layout has changed under this check")
    print("\n".join(faults) or f"{len(graph)} units, no fault")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
