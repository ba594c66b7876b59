#!/usr/bin/env python3
"""Runs one step of a script: its output goes into a log, a moving count stands for it.

step.py NAME LOG COMMAND...
The count is the last "[n/m]" or "n/m Test" that the command printed: one line that moves on a
terminal, with the time that has passed and what that makes of the rest; every quarter elsewhere. When the command fails, what matters of its output is printed
and the log is named; the status is the command's own.
"""
import os
import re
import signal
import subprocess
import sys
import threading
import time

COUNT = re.compile(r"^\s*\[?(\d+)/(\d+)(?:\]| Test +#\d+:) *(.*)")
TEST = re.compile(r"^\d+/\d+ Testing: (\S+)\n", re.M)


def spelled(seconds):
    return f"{round(seconds)} s" if seconds < 100 else f"{round(seconds / 60)} min"


class Progress:
    """How far a step has come, on the error output."""

    def __init__(self, name):
        self.name, self.quarter, self.start = name, 0, time.monotonic()
        self.count, self.what = (0, 0), ""
        self.terminal = sys.stderr.isatty() and os.environ.get("TERM") != "dumb"

    def show(self, done, total, what=""):
        self.count, self.what = (done, total), what
        if self.terminal:
            self.draw()
        elif total and done * 4 // total > self.quarter:
            self.quarter = done * 4 // total
            sys.stderr.write(f"{self.name}: {done}/{total}, {self.times()}\n")
            sys.stderr.flush()

    def draw(self):
        if not self.terminal:
            return
        done, total = self.count
        parts = [f"{done}/{total}"] if total else []
        parts += [self.times()] if self.seconds() else []
        line = f"{self.name}: {', '.join(parts)} {self.what}"
        width = os.get_terminal_size(sys.stderr.fileno()).columns or 80
        sys.stderr.write(f"\r\033[K{line[:width - 1]}")
        sys.stderr.flush()

    def times(self):
        """How long it has taken and, once that tells something, how long the rest will."""
        done, total = self.count
        passed = spelled(self.seconds())
        if self.seconds() == 0 or done * 20 < total or done in (0, total):
            return passed
        return f"{passed}, about {spelled(self.seconds() * (total - done) / done)} left"

    def seconds(self):
        return round(time.monotonic() - self.start)

    def end(self, words=""):
        if self.terminal:
            sys.stderr.write("\r\033[K")
        if words:
            sys.stderr.write(f"{self.name}: {words}\n")
        sys.stderr.flush()


def shortened(lines, most):
    return lines if len(lines) <= most else [*lines[:most], f"... and {len(lines) - most} lines more"]


def of_compiler(output):
    """The commands that failed with what they said, without their command lines."""
    kept, taking = [], False
    for line in output.splitlines():
        if line.startswith("FAILED: "):
            taking = True
            kept.append(line)
        elif COUNT.match(line) or line.startswith("ninja: "):
            taking = False
        elif taking and not re.match(r"^(: && )?\S*/(c\+\+|g\+\+|clang\+\+|cmake|ccache) ", line):
            kept.append(line)
    return shortened(kept, 40) or output.splitlines()[-20:]


def of_test(output):
    """The lines of one test that say what is wrong."""
    lines = output.splitlines()
    kept, follow = [], 0
    for line in lines:
        if re.match(r"^(FAIL!|XPASS|QFATAL)", line):
            follow = 6
        elif re.match(r"^\s*NOT\b", line):
            follow = 1
        elif re.match(r"^([A-Z]+!? *:|Totals:|\*{9})", line):
            follow = 0
        if follow or re.search(r"runtime error:|ERROR: \w+Sanitizer|WARNING: ThreadSanitizer", line):
            kept.append(line)
            follow -= 1 if follow else 0
    return shortened(kept, 40) or [line for line in lines if line.strip()][-15:]


def of_tests(output, log):
    """Each failed test with its own lines; its whole output is in CTest's log, kept in ours."""
    failed = re.findall(r"^\s*\d+ - (\S+) \((.*)\)$", output, re.M)
    parts = TEST.split(log)
    told = dict(zip(parts[1::2], parts[2::2]))
    kept = []
    for name, how in failed:
        said = told.get(name, "")
        said = said.partition("Output:\n" + "-" * 58 + "\n")[2] or said
        said = said.partition("<end of output>")[0]
        kept += [f"{name} ({how})", *("    " + line for line in of_test(said))]
    return kept or output.splitlines()[-20:]


def tick(progress, ended):
    """The clock goes on where the command is silent."""
    while not ended.wait(1):
        progress.draw()


def follow(progress, command, log):
    """The command's status and output; each line is looked at for the count as it comes."""
    lines, ended = [], threading.Event()
    clock = threading.Thread(target=tick, args=(progress, ended))
    clock.start()
    try:
        with open(log, "w", encoding="utf-8", errors="replace") as file, \
                subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                                 text=True, encoding="utf-8", errors="replace") as process:
            try:
                for line in process.stdout:
                    lines.append(line)
                    file.write(line)
                    count = COUNT.match(line)
                    if count:
                        what = re.sub(r"\.{3,}.*", "", count[3].split("/")[-1])
                        progress.show(int(count[1]), int(count[2]), what)
            except KeyboardInterrupt:
                process.wait()
                sys.exit(128 + signal.SIGINT)
    finally:
        ended.set()
        clock.join()
        progress.end()
    return process.returncode, "".join(lines)


def main():
    name, log, command = sys.argv[1], sys.argv[2], sys.argv[3:]
    os.makedirs(os.path.dirname(log), exist_ok=True)
    progress = Progress(name)
    status, output = follow(progress, command, log)
    status = 128 - status if status < 0 else status
    progress.end(f"{progress.seconds()} s" if progress.quarter or progress.seconds() > 5 else "")
    tests = os.path.basename(command[0]) == "ctest"
    closing = re.search(r"^\d+% tests passed, .*$", output, re.M)
    if tests and not closing:
        sys.stdout.write(output)  # asked for a list, or there was nothing to run
    if status and (closing or not tests):
        if tests:
            last = os.path.join(os.path.dirname(log), "Testing", "Temporary", "LastTest.log")
            with open(last, encoding="utf-8", errors="replace") as file:
                said = file.read()
            with open(log, "a", encoding="utf-8") as file:
                file.write(said)
        print("\n".join(of_tests(output, said) if tests else of_compiler(output)))
        print(f"{name} failed; everything it said: {os.path.relpath(log)}")
    if tests and closing:
        print(closing[0])
    return status


if __name__ == "__main__":
    sys.exit(main())
