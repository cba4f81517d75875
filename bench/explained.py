"""Changes keys that explanations name, and looks whether their gaps change. Called by bench/explained."""

import argparse
import json
import os
import random
import re
import subprocess
import sys
import tempfile
import time

RUN_LIMIT = 60.0  # seconds for one run
TEXTS = ['" "', '""', '"\\n"', '"   "', '"\\n\\n"', '"\\t\\t\\t"']
NUMBERS = ["0", "1", "2", "3", "8", "30", "60", "400"]


def run(program, *words):
    return subprocess.run([program, *words], capture_output=True, timeout=RUN_LIMIT)


def gap_before(text, count):
    """The white space in front of what has that many characters before it that are no white space."""
    seen = 0
    start = 0
    for place, byte in enumerate(text):
        if byte in b" \t\n\v\f\r":
            continue
        if seen == count:
            return text[start:place]
        seen += 1
        start = place + 1
    return None


def characters_before(text, line, column):
    lines = text.split(b"\n")
    front = b"\n".join(lines[: line - 1] + [lines[line - 1][: column - 1]])
    return len(re.sub(rb"[ \t\n\v\f\r]", b"", front))


class Scheme:
    def __init__(self, file):
        with open(file, encoding="utf-8") as scheme:
            self.lines = scheme.read().splitlines()

    def changed(self, key, value, kind):
        lines = [line for line in self.lines if not re.match(rf"[123] {key} ", line)]
        if key == "KEEP_LINE_BREAKS":  # lines that are no longer kept would be wrapped at the same places
            lines = [line for line in lines if not line.startswith("1 LINE_WRAP ")]
        return "\n".join(lines + [f"{kind} {key} {value}"]) + "\n"

    def changes(self, key, kinds):
        kind = kinds[key]
        values = {"1": ["0", "1"], "2": NUMBERS, "3": TEXTS}[kind]
        absent = "".join(line + "\n" for line in self.lines if not re.match(rf"[123] {key} ", line))
        return [self.changed(key, value, kind) for value in values] + [absent]


def key_types(program):
    """Of the keys, as the guide to them has them."""
    guide = run(program, "keys", "--markdown").stdout.decode()
    return dict(re.findall(r"^### (\w+)$.*?^Type: \w+ \((\d)\)", guide, re.MULTILINE | re.DOTALL))


class Check:
    def __init__(self, root, scheme_file, folder):
        self.program = os.path.join(root, "build", "vantrel")
        self.scheme_file = scheme_file
        self.scheme = Scheme(scheme_file)
        self.folder = folder
        self.kinds = key_types(self.program)

    def gaps(self, file, line):
        found = run(self.program, "explain", "-s", self.scheme_file, "--format", "json", f"{file}:{line}")
        return [json.loads(one) for one in found.stdout.decode("utf-8", "replace").splitlines()]

    def differs(self, file, gap, kept):
        """Whether some value of the gap's key changes it, or leaves it as it is found where the scheme does not."""
        text = open(file, "rb").read()
        count = characters_before(text, gap["line"], gap["column"])
        if self.changes(file, gap["key"], count, kept):
            return True
        end = sum(len(line) + 1 for line in text.split(b"\n")[: gap["line"] - 1]) + gap["column"] - 1
        for other in (kept + b" ", b" "):
            disturbed = os.path.join(self.folder, "disturbed" + os.path.splitext(file)[1])
            with open(disturbed, "wb") as out:
                out.write(text[: end - len(kept)] + other + text[end:])
            result = run(self.program, "-s", self.scheme_file, disturbed)
            comes_back = result.returncode == 0 and gap_before(result.stdout, count) == kept
            if comes_back and self.changes(disturbed, gap["key"], count, kept):
                return True
        return False

    def changes(self, file, key, count, kept):
        """Whether the gap behind so many characters is another with some value of the key."""
        for number, scheme in enumerate(self.scheme.changes(key, self.kinds)):
            other = os.path.join(self.folder, f"other{number}.vts")
            with open(other, "w", encoding="utf-8") as out:
                out.write(scheme)
            result = run(self.program, "-s", other, file)
            if result.returncode == 0 and gap_before(result.stdout, count) != kept:
                return True
        return False

    def pick(self, files, randomly):
        """A formatted file, and a gap of it that a key is said to decide."""
        while True:
            source = randomly.choice(files)
            result = run(self.program, "-s", self.scheme_file, source)
            if result.returncode != 0 or not result.stdout:
                continue
            file = os.path.join(self.folder, "formatted" + os.path.splitext(source)[1])
            with open(file, "wb") as out:
                out.write(result.stdout)
            gaps = self.gaps(file, randomly.randint(1, result.stdout.count(b"\n") + 1))
            gaps = [gap for gap in gaps if gap["key"]]
            if gaps:
                return source, file, randomly.choice(gaps)


def main():
    parser = argparse.ArgumentParser(prog="bench/explained", description=__doc__)
    parser.add_argument("root", help=argparse.SUPPRESS)
    parser.add_argument("files", nargs="+", metavar="FILE")
    parser.add_argument("-s", "--scheme", action="append", help="a scheme's file; allman and google otherwise")
    parser.add_argument("-n", "--count", type=int, default=50, help="how many gaps of each scheme")
    parser.add_argument("--seed", type=int, default=1)
    options = parser.parse_args()
    shipped = [os.path.join(options.root, "schemes", name + ".vts") for name in ("allman", "google")]
    is_fine = True
    for scheme in options.scheme or shipped:
        randomly = random.Random(options.seed)
        right = 0
        with tempfile.TemporaryDirectory() as folder:
            check = Check(options.root, scheme, folder)
            for _ in range(options.count):
                source, file, gap = check.pick(options.files, randomly)
                if check.differs(file, gap, gap["after"].encode()):
                    right += 1
                else:
                    print(f"{source}: {gap['line']}:{gap['column']} of its result does not go by {gap['setting']}")
        print(f"{os.path.basename(scheme)}: {right} of {options.count} gaps change with the key that is named")
        is_fine = is_fine and right == options.count
    print(listening_cost(options))
    return 0 if is_fine else 1


def listening_cost(options):
    """What it takes to format the files, and to hear which keys decide their gaps."""
    program = os.path.join(options.root, "build", "vantrel")
    scheme = (options.scheme or [os.path.join(options.root, "schemes", "allman.vts")])[0]

    def seconds(*words):
        begin = time.monotonic()
        subprocess.run([program, *words, "-s", scheme, *options.files], capture_output=True)
        return time.monotonic() - begin

    formatting = min(seconds("--check") for _ in range(3))
    listening = min(seconds("explain", "--summary") for _ in range(3))
    return f"{len(options.files)} files are formatted in {formatting:.2f} s, and explained in {listening:.2f} s"


if __name__ == "__main__":
    sys.exit(main())
