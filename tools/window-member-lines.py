#!/usr/bin/env python3
"""Counts the lines of MainWindow's member definitions (signature to closing brace) in
form/*.cpp, per file and in all: how much of the program still lives in the window."""
import glob
import os
import re
import sys

root = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..")
definition = re.compile(r"^([A-Za-z][\w:<>*& ,]*[\s*&])?MainWindow::~?\w+\(")
total = 0
for path in sorted(glob.glob(os.path.join(root, "form", "*.cpp"))):
    lines = open(path, encoding="utf-8").read().split("\n")
    count = 0
    i = 0
    while i < len(lines):
        if not definition.match(lines[i]):
            i += 1
            continue
        depth, started, j = 0, False, i
        while j < len(lines):
            for ch in lines[j]:
                if ch == "{":
                    depth += 1
                    started = True
                elif ch == "}":
                    depth -= 1
            if started and depth == 0:
                break
            j += 1
        count += j - i + 1
        i = j + 1
    if count:
        print(f"{count:5d} {os.path.basename(path)}")
    total += count
print(f"{total:5d} in all")
sys.exit(0)
