#!/usr/bin/env python3
"""Checks that includes in src/ run one way.

A floor includes only its own files and floors below it, the standard library,
and, on the floors that may, named outside libraries. Inside a floor with
sub-folders the same holds for these. Ends with 1 and a line for each arrow that
runs the wrong way.
"""
import pathlib
import re
import sys


def each_knows_those_before(names):
    return {name: set(names[: rank + 1]) for rank, name in enumerate(names)}


# From the ground up.
CORE = ["ports", "numerics", "life", "fit", "project", "chart", "files", "analyses", "guidance", "actions"]
ALLOWED = each_knows_those_before(CORE)
# A drawing is played without any knowledge of files and actions. The two top
# floors never include each other.
ALLOWED["painter"] = set(CORE[: CORE.index("files")]) | {"painter"}
ALLOWED["cli"] = set(CORE) | {"painter", "cli"}
ALLOWED["workspace"] = set(CORE) | {"painter", "workspace"}

# The order inside a floor; "" are the files at the floor's root.
INNER = {
    "fit": each_knows_those_before(
        ["", "ranks", "line", "likelihood", "minimiser", "mixture", "starts", "search", "door"]),
    "chart": each_knows_those_before(["record", "scales", "parts", "compose"]),
    "workspace": each_knows_those_before(["qt", "format", "chart", "fit", "sample", "data", "guidance", "frame"]),
}
INNER["chart"]["report"] = {"record", "report"}  # a document that holds drawings
INNER["chart"]["metafile"] = {"record", "metafile"}  # beside the composition: a player

# Outside libraries by the start of the header's name.
OUTSIDE = {
    "fit": ["oneapi/tbb/"],
    "files": ["csv.h"],
    "analyses": ["boost/math/"],
    "painter": ["Q"],
    "cli": ["CLI/", "nlohmann/", "simdjson.h", "oneapi/tbb/"],
    "workspace": ["Q"],
}
SYSTEM = {  # headers of the operating system, on the floors that touch it
    "files": ["sys/", "unistd.h", "fcntl.h", "dirent.h"],
    "cli": ["sys/", "unistd.h", "fcntl.h", "dlfcn.h"],
    "workspace": ["sys/", "unistd.h", "fcntl.h", "malloc.h", "poll.h", "xcb/"],
}
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')


def place(path):
    """Floor and sub-folder ("" for none) of a path below src/."""
    parts = path.split("/")
    return parts[0], parts[1] if len(parts) > 2 else ""


def fault_in_house(floor, folder, name):
    target_floor, target_folder = place(name)
    if target_floor not in ALLOWED[floor]:
        return f"{floor} must not include {name}"
    if target_floor == floor and floor in INNER and target_folder not in INNER[floor][folder]:
        return f"{floor}/{folder} must not include {name}"
    return None


def fault_outside(floor, name):
    allowed = OUTSIDE.get(floor, []) + SYSTEM.get(floor, [])
    if any(name.startswith(start) for start in allowed):
        return None
    if re.fullmatch(r"[a-z_0-9]+", name):
        return None  # the standard library
    return f"{floor} must not use <{name}>"


def faults_of(path, root):
    floor, folder = place(path.relative_to(root).as_posix())
    if floor not in ALLOWED:
        return [f"{path}: no such floor: {floor}"]
    if floor in INNER and folder not in INNER[floor]:
        return [f"{path}: no such folder in {floor}: {folder or 'its root'}"]
    faults = []
    for number, line in enumerate(path.read_text().splitlines(), 1):
        match = INCLUDE.match(line)
        if not match:
            continue
        bracket, name = match.groups()
        problem = fault_in_house(floor, folder, name) if bracket == '"' else fault_outside(floor, name)
        if problem:
            faults.append(f"{path}:{number}: {problem}")
    return faults


def main(source):
    root = pathlib.Path(source)
    files = sorted(p for p in root.rglob("*") if p.suffix in (".h", ".cpp"))
    faults = [fault for path in files for fault in faults_of(path, root)]
    print("\n".join(faults) if faults else f"{len(files)} files, every include runs one way")
    return 1 if faults or not files else 0


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit("usage: check_layers.py SOURCE_FOLDER")
    sys.exit(main(sys.argv[1]))
