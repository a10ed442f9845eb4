#!/usr/bin/env python3
"""Refuses a circle of calls between the game's source files.

Reads the object files of the four layer libraries in a build folder: file A
calls file B when A's object leaves undefined a symbol that B's object
defines. Two files that call each other (directly or round a longer circle)
are one job split in two, or a job on the wrong side of a line; either way a
reader can no longer take one without the other. Prints each circle with the
symbols that close it and exits 1; exits 0 when there is none.

Usage: scripts/check-calls.py BUILD_DIR
"""
import collections
import os
import re
import subprocess
import sys

LIBRARY_DIR = re.compile(r"velthra_(floor|services|modules|shell)\.dir/(.*)\.cpp\.o$")


def objects(build):
    for root, _, files in os.walk(os.path.join(build, "CMakeFiles")):
        for name in files:
            match = LIBRARY_DIR.search(os.path.join(root, name))
            if match:
                yield match.group(2), os.path.join(root, name)


def symbols(path, *flags):
    out = subprocess.run(["nm", "-C", *flags, path], capture_output=True, text=True, check=True).stdout
    for line in out.splitlines():
        parts = line.split(None, 2) if not line.startswith(" ") else line.split(None, 1)
        yield parts


def graph(build):
    defined, wanted = {}, collections.defaultdict(set)
    for source, path in objects(build):
        for parts in symbols(path, "--defined-only", "-g"):
            # Weak and vague symbols (inline functions, templates) belong to
            # no one file.
            if len(parts) == 3 and parts[1] in "TDBR":
                defined.setdefault(parts[2], source)
        for parts in symbols(path, "-u"):
            wanted[source].add(parts[-1])
    calls = collections.defaultdict(dict)
    for source, names in wanted.items():
        for name in names:
            owner = defined.get(name)
            if owner and owner != source:
                calls[source].setdefault(owner, name)
    return calls


def circles(calls):
    """Strongly connected parts of more than one file (Tarjan)."""
    index, low, stack, on_stack, found = {}, {}, [], set(), []

    def visit(node):
        index[node] = low[node] = len(index)
        stack.append(node)
        on_stack.add(node)
        for other in calls.get(node, {}):
            if other not in index:
                visit(other)
                low[node] = min(low[node], low[other])
            elif other in on_stack:
                low[node] = min(low[node], index[other])
        if low[node] == index[node]:
            part = []
            while True:
                other = stack.pop()
                on_stack.discard(other)
                part.append(other)
                if other == node:
                    break
            if len(part) > 1:
                found.append(sorted(part))

    sys.setrecursionlimit(10000)
    for node in sorted(calls):
        if node not in index:
            visit(node)
    return found


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    calls = graph(sys.argv[1])
    if not calls:
        sys.exit(f"check-calls: no object files of the game's libraries under {sys.argv[1]}")
    found = circles(calls)
    for part in found:
        print("files that call each other: " + " ".join(part))
        for source in part:
            for owner, name in sorted(calls[source].items()):
                if owner in part:
                    print(f"  {source} -> {owner}: {name[:100]}")
    if found:
        return 1
    print(f"check-calls: {len(calls)} files, no circle of calls")
    return 0


if __name__ == "__main__":
    sys.exit(main())
