#!/usr/bin/env python3
"""Checks that includes in src/ run one way.

A floor includes only its own files and floors below it, the standard library,
and, on the floors that may, named outside libraries. Ends with 1 and a line for
each arrow that runs the wrong way.
"""
import pathlib
import re
import sys

# From the ground up. Floors of the same rank never include each other.
CORE = ["ports", "numerics", "project", "solver", "fit", "chart", "files", "analyses", "guidance"]
ALLOWED = {floor: set(CORE[: rank + 1]) for rank, floor in enumerate(CORE)}
ALLOWED["painter"] = set(CORE[: CORE.index("files")]) | {"painter"}
ALLOWED["cli"] = set(CORE) | {"painter", "cli"}
ALLOWED["workspace"] = set(CORE) | {"painter", "workspace"}

# Outside libraries by the start of the header's name.
OUTSIDE = {
    "files": ["csv.h"],
    "painter": ["Q"],
    "cli": ["CLI/", "nlohmann/"],
    "workspace": ["Q"],
}
SYSTEM = {  # headers of the operating system, on the floors that touch it
    "files": ["sys/", "unistd.h", "fcntl.h"],
    "cli": ["sys/", "unistd.h", "fcntl.h", "dlfcn.h"],
    "workspace": ["sys/", "unistd.h", "fcntl.h"],
}
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')


def fault(floor, bracket, name):
    if bracket == '"':
        target = name.split("/")[0]
        if target in ALLOWED[floor]:
            return None
        return f"{floor} must not include {name}"
    allowed = OUTSIDE.get(floor, []) + SYSTEM.get(floor, [])
    if any(name.startswith(start) for start in allowed):
        return None
    if re.fullmatch(r"[a-z_0-9]+", name):
        return None  # the standard library
    return f"{floor} must not use <{name}>"


def main(source):
    root = pathlib.Path(source)
    files = sorted(p for p in root.rglob("*") if p.suffix in (".h", ".cpp"))
    faults = []
    for path in files:
        floor = path.relative_to(root).parts[0]
        if floor not in ALLOWED:
            faults.append(f"{path}: no such floor: {floor}")
            continue
        for number, line in enumerate(path.read_text().splitlines(), 1):
            match = INCLUDE.match(line)
            problem = match and fault(floor, *match.groups())
            if problem:
                faults.append(f"{path}:{number}: {problem}")
    print("\n".join(faults) if faults else f"{len(files)} files, every include runs one way")
    return 1 if faults or not files else 0


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit("usage: check_layers.py SOURCE_FOLDER")
    sys.exit(main(sys.argv[1]))
