#!/usr/bin/env python3
"""Takes the pictures with scripts/screenshots and looks whether each shows its page: by its size and
by what can be read on it.

check_screenshots.py PROGRAM
"""
import json
import os
import struct
import subprocess
import sys
import tempfile

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
# What has to be in sight, on the picture of that name or on those that begin with it; the window's
# list of pages is on all of them.
SHOWN = {
    "overview": ["34 tables, 31 loaded, 0 missing", "CS_GiftList", "ZGiftListMgr", "Update"],
    "tables": ["giftName", "星光皇冠", "never read"],
    "gifts": ["“星光城堡” can be sent", "its sale has begun"],
    "gifts-gone": ["“星光皇冠” cannot be sent", "endTime is 2026-01-31"],
    "gifts-time": ["cannot be sent", "endTime is"],
    "people": ["勋爵2", "experience"],
    "people-frames": ["shows", "period"],
    "people-avatarstamps": ["worn"],
    "chat": ["主播唱得真好听", "代充金豆", "masked: 3"],
    "chat-messages": ["小明 送出 星光皇冠"],
    "pages": ["opens embedded", "left out for showPosition"],
    "pages-gone": ["is not shown"],
    "look": ["pixels"],
    "look-nobility": ["帝王", "privileges"],
    "look-flash": ["level_up, 2 frames"],
    "look-recreation": ["tomato, 2 frames"],
    "cache": ["dataTable", "would remove 10 of", "3 of 37 entries"],
    "cache-folder": ["no table's current file"],
    "log": ["加载完毕", "severity"],
}
SIZES = {"": (1280, 800), "2x": (2560, 1600)}


def size_of(picture):
    with open(picture, "rb") as file:
        return struct.unpack(">II", file.read(24)[16:])


def faults_of(folder, size):
    with open(os.path.join(folder, "texts.json"), encoding="utf-8") as file:
        texts = json.load(file)
    for picture, words in texts.items():
        if size_of(os.path.join(folder, picture)) != size:
            yield f"{picture}: not of {size} pixels"
        if words == []:
            yield f"{picture}: nothing can be read on it"
    for name, wanted in SHOWN.items():
        for picture in (name + ".png", name + "-dark.png"):
            shown = "\n".join(texts.get(picture, []))
            yield from (f"{picture}: no “{words}” in sight" for words in wanted if words not in shown)


def main():
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run([os.path.join(ROOT, "scripts", "screenshots"), "--program", sys.argv[1], folder],
                       check=True, stdout=subprocess.DEVNULL)
        faults = [os.path.join(place, fault) for place, size in SIZES.items()
                  for fault in faults_of(os.path.join(folder, place), size)]
    print("\n".join(faults) or "every picture shows its page")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
