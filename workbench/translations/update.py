#!/usr/bin/env python3
"""Brings workbench_*.ts up to date with the texts of the program: those in the sources, found by
lupdate, and those of gui.json. What was translated stays; what is gone from the program goes."""

import json
import pathlib
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ET

HERE = pathlib.Path(__file__).resolve().parent
ROOM = HERE.parent
GUI_KEYS = ("text", "title", "tip", "on", "do", "effect")


def own_context(path):
    """Sources without a class of their own name the context in a function tr()."""
    found = re.search(r'QCoreApplication::translate\("(\w+)", text\)', path.read_text("utf-8"))
    return found.group(1) if found else None


def texts_of_functions():
    """What lupdate doesn't see, or takes for texts of the class around the call."""
    calls = re.compile(r'\btr\(\s*((?:"(?:[^"\\]|\\.)*"\s*)+)')
    pieces = re.compile(r'"((?:[^"\\]|\\.)*)"')
    for path in sorted(ROOM.glob("*/*.cpp")):
        name = own_context(path)
        for call in calls.findall(path.read_text("utf-8")) if name else ():
            text = "".join(pieces.findall(call))
            yield name, json.loads('"%s"' % text)


def source_texts():
    yield from texts_of_functions()
    with tempfile.TemporaryDirectory() as folder:
        ts = pathlib.Path(folder) / "all.ts"
        subprocess.run(["lupdate", "-silent", "-locations", "absolute", str(ROOM), "-ts", str(ts)],
                       check=True, stderr=subprocess.DEVNULL)
        for context in ET.parse(ts).getroot().findall("context"):
            for message in context.findall("message"):
                name = context.find("name").text
                location = message.find("location")
                if location is not None:
                    path = (ts.parent / location.get("filename")).resolve()
                    if own_context(path) not in (None, name):
                        continue
                yield name, message.find("source").text


def gui_texts(node):
    if isinstance(node, dict):
        for key, value in node.items():
            if key in GUI_KEYS and isinstance(value, str):
                yield "gui", value
            else:
                yield from gui_texts(value)
    elif isinstance(node, list):
        for value in node:
            yield from gui_texts(value)


def update(ts, texts):
    known = {}
    if ts.exists():
        for context in ET.parse(ts).getroot().findall("context"):
            for message in context.findall("message"):
                translation = message.find("translation").text
                if translation:
                    known[context.find("name").text, message.find("source").text] = translation
    root = ET.Element("TS", version="2.1", language=ts.stem.split("_", 1)[1],
                      sourcelanguage="en")
    missing = 0
    contexts = {}
    for name, source in texts:
        if name not in contexts:
            contexts[name] = ET.SubElement(root, "context")
            ET.SubElement(contexts[name], "name").text = name
        message = ET.SubElement(contexts[name], "message")
        ET.SubElement(message, "source").text = source
        translation = ET.SubElement(message, "translation")
        translation.text = known.get((name, source))
        if translation.text is None:
            translation.set("type", "unfinished")
            missing += 1
    ET.indent(root)
    ts.write_text('<?xml version="1.0" encoding="utf-8"?>\n<!DOCTYPE TS>\n' +
                  ET.tostring(root, encoding="unicode") + "\n", "utf-8")
    return missing


def main():
    texts = sorted(set(source_texts()) | set(gui_texts(json.loads(
        (ROOM / "gui.json").read_text("utf-8")))))
    missing = sum(update(ts, texts) for ts in sorted(HERE.glob("workbench_*.ts")))
    print(f"{len(texts)} texts, {missing} not translated")
    return 1 if missing else 0


if __name__ == "__main__":
    sys.exit(main())
