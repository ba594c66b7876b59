#!/usr/bin/env python3
"""Runs what the README tells its reader to type and holds what it shows to what is printed.

check_readme.py BIN [--write]; BIN is the folder of the built programs.

A fenced block is checked by the comment before it:
  <!-- run -->              its lines are run in a new folder that sees examples/
  <!-- prints: COMMAND -->  it shows what COMMAND prints; --write puts that there
  <!-- file: PATH -->       it shows that file
Port numbers and what hangs on the clock count as equal.
"""
import glob
import os
import re
import signal
import socket
import subprocess
import sys
import tempfile
import time

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
README = os.path.join(ROOT, "README.md")
BLOCK = re.compile(r"<!-- (run|prints|file)(?:: (.*?))? -->\n```\w*\n(.*?)```", re.S)


def settled(text):
    text = re.sub(r"127\.0\.0\.1:\d+", "127.0.0.1:PORT", text)
    text = re.sub(r"\b[0-9A-F]{32}", "DIGEST", text)  # of an address with its port
    return re.sub(r"(?m)^    now  .*$", "    now", text)


def shell(script, folder, programs):
    environment = dict(os.environ, TZ="UTC", LC_ALL="C.UTF-8",
                       PATH=programs + os.pathsep + os.environ["PATH"])
    return subprocess.run(["bash", "-euo", "pipefail", "-c", script], cwd=folder, text=True,
                          env=environment, stdin=subprocess.DEVNULL, encoding="utf-8",
                          stdout=subprocess.PIPE, stderr=subprocess.PIPE, timeout=300)


def free_port():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return str(probe.getsockname()[1])


def end_servers(folder):
    """A server that was told to quit takes a moment, and one that was not must not stay."""
    for trial in range(100):
        left = glob.glob(os.path.join(folder, "*", "*.pid"))
        if not left:
            return
        if trial == 50:
            for path in left:
                with open(path, encoding="utf-8") as file:
                    os.kill(int(file.read()), signal.SIGTERM)
        time.sleep(0.1)


def run(script, programs):
    with tempfile.TemporaryDirectory() as folder:
        # A web server that is started as root reads as somebody else.
        os.chmod(folder, 0o755)
        subprocess.run(["cp", "-r", os.path.join(ROOT, "examples"), folder], check=True)
        port = free_port()
        subprocess.run(["sed", "-i", f"s/8080/{port}/", "examples/nginx/zglobal.conf"], cwd=folder,
                       check=True)
        done = shell(script.replace("8080", port), folder, programs)
        end_servers(folder)
        if done.returncode != 0:
            return f"{script}ended with {done.returncode}:\n{done.stdout}{done.stderr}"
    return None


def shown(kind, what, programs):
    if kind == "file":
        with open(os.path.join(ROOT, what), encoding="utf-8") as file:
            return file.read()
    with tempfile.TemporaryDirectory() as folder:
        done = shell(what, folder, programs)
        if done.returncode != 0:
            sys.exit(f"{what} ended with {done.returncode}:\n{done.stdout}{done.stderr}")
        return done.stdout


def main():
    programs, write = os.path.abspath(sys.argv[1]), "--write" in sys.argv
    with open(README, encoding="utf-8") as file:
        readme = file.read()
    faults, checked = [], 0
    for match in list(BLOCK.finditer(readme)):
        kind, what, block = match.groups()
        checked += 1
        if kind == "run":
            fault = None if write else run(block, programs)
            faults += [fault] if fault else []
            continue
        now = shown(kind, what, programs)
        if write:
            old = match.group(0)
            readme = readme.replace(old, old[:-len("```") - len(block)] + now + "```")
        elif settled(now) != settled(block):
            faults.append(f"{kind} {what}: the README shows something else; "
                          "tests/check_readme.py BIN --write mends it")
    if write:
        with open(README, "w", encoding="utf-8") as file:
            file.write(readme)
    for command in re.findall(r"^(scripts/\w+)", readme, re.M):
        if not os.access(os.path.join(ROOT, command), os.X_OK):
            faults.append(f"{command} is not there to be run")
    if not checked:
        faults.append("no block was found")
    print("\n".join(faults) or f"{checked} blocks, no fault")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
