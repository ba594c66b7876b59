#!/usr/bin/env python3
"""Runs what README.md and docs/*.md tell their reader to type, and holds what they show to what is
printed.

check_docs.py BIN [--write] [--without FILE]... [FILE...]
BIN is the folder of the programs; FILE is a path from the root; without any, every page.

A fenced block is checked by the comment before it:
  <!-- run -->              its lines are run in a new folder that sees examples/
  <!-- prints: COMMAND -->  it shows what COMMAND prints in a new folder that sees docs/ and
                            examples/; --write puts that there
  <!-- file: PATH -->       it shows that file; --write puts that there
  <!-- part: PATH NAME -->  it shows what stands between two lines //! [NAME] of that file
Port numbers, what is drawn at random and what hangs on the clock count as equal. Every script of ours at the start of a line
and every page that a link leads to has to be there, and every call that a page names of a class, as
`Class::call()` or in the class's row of a table, in its header.
"""
import argparse
import contextlib
import glob
import os
import re
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import time

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
BLOCK = re.compile(r"<!-- (run|prints|file|part)(?:: (.*?))? -->\n```\w*\n(.*?)```", re.S)


def read(path):
    with open(path, encoding="utf-8") as file:
        return file.read()


def settled(text):
    text = re.sub(r"127\.0\.0\.1:\d+", "127.0.0.1:PORT", text)
    text = re.sub(r"\b[0-9A-F]{32}", "DIGEST", text)  # of an address with its port
    text = re.sub(r"(?m)^    “[^”]*”$", "    “DRAWN”", text)
    text = re.sub(r" of [\d-]{10} [\d:]{8} \([^)]*\)", " of TIME", text)  # a file's
    text = re.sub(r"\((in )?\d+ [a-z]+( ago)?\)", "(AGE)", text)
    text = re.sub(r" from +loaded", " from  loaded", text)  # above the ages of files
    text = re.sub(r" (just now|\d+ (second|minute)s? ago) +", " AGE ", text)
    return re.sub(r"(?m)^    now  .*$", "    now", text)


def with_free_ports(texts):
    """The same texts with ports that are free here."""
    with contextlib.ExitStack() as stack:  # all at once, so that they differ
        for port in ("8080", "8081", "8443"):
            probe = stack.enter_context(socket.socket())
            probe.bind(("127.0.0.1", 0))
            free = f"127.0.0.1:{probe.getsockname()[1]}"
            texts = [text.replace("127.0.0.1:" + port, free) for text in texts]
    return texts


def end_servers(folder):
    """A server that was told to quit takes a moment, and one that was not must not stay."""
    for trial in range(100):
        left = glob.glob(os.path.join(folder, "*", "*.pid"))
        if not left:
            return
        if trial == 50:
            for path in left:
                os.kill(int(read(path)), signal.SIGTERM)
        time.sleep(0.1)


def shell(script, programs):
    """What a script prints; a RuntimeError when it fails. Free ports stand in for its own."""
    environment = dict(os.environ, TZ="UTC", LC_ALL="C.UTF-8",
                       PATH=programs + os.pathsep + os.environ["PATH"])
    # The outer folder is as private as root's home: what a web server's own user may not pass.
    with tempfile.TemporaryDirectory() as private:
        folder = os.path.join(private, "work")
        for name in ("examples", "docs"):
            shutil.copytree(os.path.join(ROOT, name), os.path.join(folder, name))
        paths = glob.glob(os.path.join(folder, "examples", "nginx", "*.conf"))
        script, *texts = with_free_ports([script] + [read(path) for path in paths])
        for path, text in zip(paths, texts):
            with open(path, "w", encoding="utf-8") as file:
                file.write(text)
        done = subprocess.run(["bash", "-euo", "pipefail", "-c", script],
                              cwd=folder, env=environment, stdin=subprocess.DEVNULL, timeout=300,
                              encoding="utf-8", stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        end_servers(folder)
    if done.returncode != 0:
        raise RuntimeError(f"{script}\nended with {done.returncode}:\n{done.stdout}{done.stderr}")
    return done.stdout


def shown(kind, what, programs):
    if kind == "prints":
        return shell(what, programs)
    path, _, part = what.partition(" ")
    text = read(os.path.join(ROOT, path))
    return text.split(f"//! [{part}]\n")[1] if part else text


def calls_without_header(text):
    for line in text.splitlines():
        row = re.match(r"\| `(\w+)` \|", line)
        for holder, call in re.findall(r"`(?:(\w+)::)?(\w+)\(", line):
            holder = holder or (row[1] if row else "")
            for path in glob.glob(os.path.join(ROOT, "src", "*", holder + ".h")):
                if not re.search(rf"\b{call}\(", read(path)):
                    yield f"{holder}::{call}"


def check(page, programs, write):
    """The number of blocks in a page, and what is wrong with them."""
    text = read(os.path.join(ROOT, page))
    faults = [f"{page}: {script} is not there to be run"
              for script in re.findall(r"^(scripts/\w+)", text, re.M)
              if not os.access(os.path.join(ROOT, script), os.X_OK)]
    faults += [f"{page}: {target} is not there to be linked"
               for target in re.findall(r"\]\(([\w./-]+)\)", text)
               if not os.path.exists(os.path.join(ROOT, os.path.dirname(page), target))]
    faults += [f"{page}: {call} is not there to be called" for call in calls_without_header(text)]
    blocks = list(BLOCK.finditer(text))
    for match in blocks:
        kind, what, block = match.groups()
        try:
            if kind == "run":
                if not write:
                    shell(block, programs)
                continue
            now = shown(kind, what, programs)
        except RuntimeError as fault:
            faults.append(f"{page}: {fault}")
            continue
        if settled(now) == settled(block):
            continue
        if write:
            old = match.group(0)
            text = text.replace(old, old[:-len("```") - len(block)] + now + "```")
        else:
            faults.append(f"{page} does not show what is there now: {kind} {what}; "
                          "tests/check_docs.py BIN --write mends it")
    if write:
        with open(os.path.join(ROOT, page), "w", encoding="utf-8") as file:
            file.write(text)
    return len(blocks), faults


def main():
    arguments = argparse.ArgumentParser()
    arguments.add_argument("programs", metavar="BIN", type=os.path.abspath)
    arguments.add_argument("--write", action="store_true")
    arguments.add_argument("--without", action="append", default=[])
    arguments.add_argument("pages", metavar="FILE", nargs="*")
    given = arguments.parse_intermixed_args()
    # The transcript first: others show parts of it.
    pages = given.pages or ["docs/demo.md", "README.md"] + sorted(
        f"docs/{name}" for name in os.listdir(os.path.join(ROOT, "docs"))
        if name.endswith(".md") and name != "demo.md")
    blocks, faults = 0, []
    for page in pages:
        if page not in given.without:
            found, wrong = check(page, given.programs, given.write)
            blocks, faults = blocks + found, faults + wrong
    if not blocks:
        faults.append("no block was found")
    print("\n".join(faults) or f"{blocks} blocks, no fault")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
