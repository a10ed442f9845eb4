#!/usr/bin/env python3
"""Lists the functions declared in the game's headers that carry no comment.

A declaration counts as commented when a comment sits on one of its own
lines, on the line just above it, or above a group of declarations it belongs
to (lines of code with no blank line, brace or access label between the
comment and it). Free functions, member functions, constructors, operators and
inline accessors all count; deleted functions and function-pointer variables
do not.

The group rule cannot tell a comment meant for a group from one meant for the
first declaration alone: an uncommented declaration written directly under a
commented one, with no blank line between, counts as commented. Leave a blank
line after a comment that speaks of one function only.

Prints "file:line name" for every uncommented function, then the count. A
report for developers, not a check: it always exits 0. Some names say all
(GetX, SetPosition, a constructor): those are listed too, and the developer
decides.

Usage: scripts/undocumented.py [SOURCE_ROOT]
"""
import os
import re
import sys

FOLDERS = ["common", "render", "scene", "sound", "input", "console", "particles", "menu", "game", "app"]

ACCESS = re.compile(r"^\s*(public|private|protected)\s*:\s*$")
OPERATOR = re.compile(r"\boperator\s*(\(\)|[^\s(]+)\s*\($")
NAME = re.compile(r"(~?[A-Za-z_]\w*)\s*$")


def split_lines(text):
    """Per line: the code with comments removed, and whether it held a comment."""
    code_lines, comment_flags = [], []
    in_block = False
    for line in text.split("\n"):
        code, has_comment, i = [], in_block, 0
        in_string = None
        while i < len(line):
            c = line[i]
            if in_block:
                if line.startswith("*/", i):
                    in_block = False
                    i += 2
                    continue
                i += 1
                continue
            if in_string:
                # The text of a literal is dropped: a '(' or '{' in it is not code.
                if c == "\\":
                    i += 2
                    continue
                if c == in_string:
                    code.append(c)
                    in_string = None
                i += 1
                continue
            if c in "\"'":
                in_string = c
                code.append(c)
            elif line.startswith("//", i):
                has_comment = True
                break
            elif line.startswith("/*", i):
                has_comment = True
                in_block = True
                i += 2
                continue
            else:
                code.append(c)
            i += 1
        code_lines.append("".join(code).rstrip())
        comment_flags.append(has_comment)
    return code_lines, comment_flags


def function_name(statement):
    """The declared function's name, or None when the statement declares none."""
    first = statement.find("(")
    if first < 0:
        return None
    head = statement[:first]
    if "=" in head and "operator" not in head:
        return None  # a variable with an initialiser, an alias
    if statement[first + 1:].lstrip().startswith("*") or statement[first + 1:].lstrip().startswith("&"):
        return None  # a function-pointer variable: int (*f)(int)
    if re.search(r"\)\s*(const\s*)?=\s*delete\b", statement):
        return None
    for keyword in ("typedef", "using", "#", "static_assert", "return"):
        if head.lstrip().startswith(keyword):
            return None
    match = OPERATOR.search(statement[:first + 1])
    if match:
        return "operator" + match.group(1)
    match = NAME.search(head)
    if not match:
        return None
    name = match.group(1)
    if name in ("if", "while", "for", "switch", "sizeof", "decltype", "alignas", "__attribute__"):
        return None
    return name


def scan(path):
    """(line number, qualified name, covered) for each function declared in the header."""
    with open(path, encoding="utf-8", errors="replace") as f:
        text = f.read()
    code, comment = split_lines(text)
    found = []
    scopes = []  # names of the enclosing classes (None for other braces)
    statement, start, paren, body_depth = "", -1, 0, 0
    for n, line in enumerate(code):
        stripped = line.strip()
        if body_depth:
            body_depth += line.count("{") - line.count("}")
            continue
        if not statement.strip() and (stripped.startswith("#") or ACCESS.match(line)):
            continue
        i = 0
        while i < len(line):
            c = line[i]
            if body_depth:
                if c == "{":
                    body_depth += 1
                elif c == "}":
                    body_depth -= 1
                i += 1
                continue
            if not statement.strip() and not c.isspace():
                start = n
            if c == "(":
                paren += 1
            elif c == ")":
                paren -= 1
            if paren == 0 and c == ";":
                name = function_name(statement.strip())
                if name:
                    found.append((start, name, scopes[:]))
                statement = ""
            elif paren == 0 and c == "{":
                name = function_name(statement.strip())
                if name:
                    found.append((start, name, scopes[:]))
                    body_depth = 1
                    statement = ""
                elif "=" in statement:
                    statement += c  # brace initialiser: the statement goes on to its ';'
                    inner = 1
                    i += 1
                    while i < len(line) and inner:
                        inner += {"{": 1, "}": -1}.get(line[i], 0)
                        statement += line[i]
                        i += 1
                    continue
                else:
                    m = re.match(r"\s*(class|struct)\s+(\w+)", statement)
                    scopes.append(m.group(2) if m else None)
                    statement = ""
            elif paren == 0 and c == "}":
                if scopes:
                    scopes.pop()
                statement = ""
            else:
                statement += c
            i += 1
        statement += " "
        if ACCESS.match(line):
            statement = ""

    results = []
    for start, name, scope in found:
        end = start
        while end + 1 < len(code) and not re.search(r"[;}]\s*$", code[end]):
            end += 1
        covered = any(comment[start:end + 1])
        k = start - 1
        while not covered and k >= 0:
            above = code[k].strip()
            if not above and comment[k]:
                covered = True  # a comment line (or block) directly above this line or its group
            elif not above or above.endswith("{") or above.startswith(("}", "#")) or ACCESS.match(code[k]):
                break
            k -= 1
        classes = [s for s in scope if s]
        results.append((start + 1, "::".join(classes + [name]), covered))
    return results


def main():
    root = sys.argv[1] if len(sys.argv) > 1 else os.path.join(os.path.dirname(os.path.abspath(__file__)), "..")
    if not any(os.path.isdir(os.path.join(root, folder)) for folder in FOLDERS):
        print("undocumented.py: none of %s under %s" % (", ".join(FOLDERS), root), file=sys.stderr)
    total = missing = 0
    for folder in FOLDERS:
        base = os.path.join(root, folder)
        if not os.path.isdir(base):
            continue
        for dirpath, _, files in sorted(os.walk(base)):
            for name in sorted(files):
                if not name.endswith(".h"):
                    continue
                path = os.path.join(dirpath, name)
                for line, function, covered in scan(path):
                    total += 1
                    if not covered:
                        missing += 1
                        print("%s:%d %s" % (os.path.relpath(path, root), line, function))
    print("%d of %d functions declared in headers have no comment" % (missing, total))
    return 0


if __name__ == "__main__":
    try:
        main()
    except Exception as error:  # a report, never a failed step
        print("undocumented.py: %s" % error, file=sys.stderr)
    sys.exit(0)
