#!/usr/bin/env python3
"""Makes a pseudo translation (en_XA) from a Qt Linguist .ts catalogue.

Every message gets as translation its own source text with the letters accented,
lengthened by about 30 % and wrapped in brackets: "Cancel" becomes "[Çåñçéļ ~~]".
A person (or a test) then sees at once which texts went through the catalogue, and
the longer texts show where the form has no room for a real translation.

Kept exactly as they are, so that the program still works in the pseudo locale:
markup (tags with their attributes, entities, and the content of <style>), the
arguments %1, %L1 and %n, mnemonics (&X and &&), the pattern list at the end of a
file-dialog filter ("(*.*)"), and texts that are only an address (a URL the program
may post to). Translations of the input are ignored; only source texts are used.

Usage: pseudo_translate.py INPUT.ts OUTPUT.ts [--language en_XA]
"""

import argparse
import math
import re
import sys
import xml.etree.ElementTree as ET

ACCENTED = str.maketrans(
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz",
    "ÅƁÇÐÉƑĜĤÎĴĶĻṀÑÖÞǪŔŠŢÛṼŴẊÝŽåƀçðéƒĝĥîĵķļɱñöþǫŕšţûṽŵẋýž",
)

# Pieces of a text that are not words to translate.
TAG = r"<[^<>]*>"
ENTITY = r"&(?:#[0-9]+|#x[0-9A-Fa-f]+|[A-Za-z][A-Za-z0-9]*);"
ARGUMENT = r"%L?[0-9]+|%n"
MNEMONIC = r"&&|&."
PLAIN_TOKENS = re.compile("(" + "|".join([ARGUMENT, MNEMONIC]) + ")", re.S)
RICH_TOKENS = re.compile("(" + "|".join([TAG, ENTITY, ARGUMENT, MNEMONIC]) + ")", re.S)
LOOKS_RICH = re.compile(r"</?[A-Za-z][A-Za-z0-9]*(\s[^<>]*)?/?>")
ADDRESS = re.compile(r"^[A-Za-z][A-Za-z0-9+.-]*://\S*$")
# "All Files (*.*)": the dialog reads the patterns from the parentheses at the end.
FILTER_PATTERNS = re.compile(r"^(.*?)(\s*\([^()]*[*?][^()]*\))$", re.S)

PADDING = 0.3


def pseudo_segments(segments, visible_length):
    """Accents the words and puts the brackets and the padding around what shows.

    segments is a list of (text, kind) pairs: "word" is accented, "kept" (arguments,
    mnemonics, entities) shows but stays as it is, "markup" does not show.
    """
    shown = [i for i, (text, kind) in enumerate(segments) if kind != "markup" and text.strip()]
    if not shown:
        return "".join(text for text, _ in segments)
    padding = " " + "~" * max(1, math.ceil(visible_length * PADDING))
    out = [(text.translate(ACCENTED) if kind == "word" else text) for text, kind in segments]
    first, last = shown[0], shown[-1]
    lead = len(out[first]) - len(out[first].lstrip())
    out[first] = out[first][:lead] + "[" + out[first][lead:]
    trail = len(out[last].rstrip())
    out[last] = out[last][:trail] + padding + "]" + out[last][trail:]
    return "".join(out)


def split(text):
    """The text as (piece, kind) pairs; see pseudo_segments."""
    rich = LOOKS_RICH.search(text) is not None
    pattern = RICH_TOKENS if rich else PLAIN_TOKENS
    segments = []
    in_style = False
    for i, piece in enumerate(pattern.split(text)):
        if not piece:
            continue
        if i % 2 == 0:
            segments.append((piece, "markup" if in_style else "word"))
        elif rich and re.match(TAG, piece):
            name = re.match(r"<\s*(/?)\s*([A-Za-z0-9]*)", piece)
            if name.group(2).lower() == "style":
                in_style = name.group(1) != "/" and not piece.endswith("/>")
            segments.append((piece, "markup"))
        else:
            segments.append((piece, "markup" if in_style else "kept"))
    return segments


def pseudo(text):
    if not text or ADDRESS.match(text):
        return text
    suffix = ""
    found = FILTER_PATTERNS.match(text)
    if found and not LOOKS_RICH.search(text):
        text, suffix = found.group(1), found.group(2)
    segments = split(text)
    visible = sum(len(piece) for piece, kind in segments if kind == "word")
    return pseudo_segments(segments, visible) + suffix


def main(argv):
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("input")
    parser.add_argument("output")
    parser.add_argument("--language", default="en_XA")
    args = parser.parse_args(argv)

    tree = ET.parse(args.input)
    root = tree.getroot()
    root.set("language", args.language)
    root.attrib.pop("sourcelanguage", None)
    count = 0
    for message in root.iter("message"):
        source = message.find("source")
        translation = message.find("translation")
        if translation is None:
            translation = ET.SubElement(message, "translation")
        translation.attrib.pop("type", None)  # "unfinished", "vanished", "obsolete"
        for child in list(translation):
            translation.remove(child)
        text = pseudo(source.text or "")
        if message.get("numerus") == "yes":
            # English has two forms; both read the same here.
            translation.text = None
            for _ in range(2):
                ET.SubElement(translation, "numerusform").text = text
        else:
            translation.text = text
        count += 1

    if count == 0:
        # No output at all, so that the build does not take an empty catalogue as made.
        print("pseudo_translate.py: no messages in " + args.input, file=sys.stderr)
        return 1
    with open(args.output, "wb") as out:
        out.write(b'<?xml version="1.0" encoding="utf-8"?>\n<!DOCTYPE TS>\n')
        tree.write(out, encoding="utf-8", xml_declaration=False)
        out.write(b"\n")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
