"""Times whole processes in interleaved rounds, and prints two tables. Called by bench/compare."""

import argparse
import os
import random
import shutil
import signal
import statistics
import subprocess
import sys
import threading
import time

ROUNDS = 15
SHAPE_ROUNDS = 21  # they are short, and the fastest of them counts
SIZES = [0.1, 1, 4, 16]  # in MB
MB = 1_000_000
CELL_BUDGET = 12.0  # seconds for all rounds of one program on one input
RUN_LIMIT = 60.0  # seconds for one run
NOISE = 0.03  # what two runs of one program may differ by
SUFFIXES = (".h", ".H", ".hpp", ".hh", ".c", ".cc", ".cpp", ".cxx")


class Program:
    def __init__(self, name, arguments, is_reference=False):
        self.name = name
        self.arguments = arguments  # of the input's path
        self.is_reference = is_reference


class Bench:
    def __init__(self, root, reference):
        self.folder = os.path.join(root, "build", "bench")
        os.makedirs(self.folder, exist_ok=True)
        self.vantrel = os.path.join(root, "build", "VantrelCmd")
        self.reference = os.path.join(self.folder, "reference")
        if reference:
            shutil.copy(reference, self.reference)
        self.output = os.path.join(self.folder, "output")
        self.config = self.write("uncrustify.cfg", "indent_columns = 4\nindent_with_tabs = 0\n")
        os.environ["VANTREL_SCHEMES"] = os.path.join(root, "schemes")

    def write(self, name, text):
        path = os.path.join(self.folder, name)
        with open(path, "w", encoding="latin-1") as file:
            file.write(text)
        return path

    def with_scheme(self, scheme, program=None):
        program = program or self.vantrel
        return Program("VantrelCmd " + scheme, lambda path: [program, "-s", scheme, path, "-"])

    def programs(self):
        return [
            self.with_scheme("allman"),
            self.with_scheme("aligned"),
            self.with_scheme("allman-100"),
            self.astyle(),
            Program("clang-format", lambda path: ["clang-format", "--style=LLVM", path]),
            Program("uncrustify", lambda path: ["uncrustify", "-q", "-l", "CPP", "-c", self.config, "-f", path]),
        ]

    def c_programs(self):
        return [self.with_scheme("allman"), self.with_scheme("allman-100"), self.astyle(), self.indent()]

    def astyle(self):
        return Program("astyle", lambda path: ["astyle", "--style=allman", "--stdin=" + path], True)

    def indent(self):
        return Program("GNU indent", lambda path: ["indent", "-st", path])

    def run(self, arguments):
        """The seconds that one run takes; None when it fails or takes too long."""
        flags = os.O_WRONLY | os.O_CREAT | os.O_TRUNC
        actions = [
            (os.POSIX_SPAWN_OPEN, 1, self.output, flags, 0o644),
            (os.POSIX_SPAWN_OPEN, 2, "/dev/null", os.O_WRONLY, 0o644),
        ]
        start = time.perf_counter()
        process = os.posix_spawnp(arguments[0], arguments, os.environ, file_actions=actions)
        limit = threading.Timer(RUN_LIMIT, os.kill, (process, signal.SIGKILL))
        limit.start()
        status = os.waitpid(process, 0)[1]
        seconds = time.perf_counter() - start
        limit.cancel()
        return seconds if status == 0 else None

    def peak_memory(self, arguments):
        """In bytes. Started by time(1), for a process starts with the memory of the one that starts it."""
        report = os.path.join(self.folder, "memory")
        command = ["time", "-f", "%M", "-o", report] + arguments
        subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False)
        with open(report, encoding="ascii") as file:
            return int(file.read().split()[-1]) * 1024

    def accepts(self, programs, path):
        return all(self.run(program.arguments(path)) is not None for program in programs)

    def times(self, programs, path, expected, rounds=ROUNDS):
        """The times of each program, run in turns; `expected` says what to expect of one run."""
        times = {program: [] for program in programs}
        wanted = {}
        for program in programs:
            guess = expected.get(program, 0.0)
            wanted[program] = 0 if guess > RUN_LIMIT / 2 else max(1, min(rounds, int(CELL_BUDGET / (guess + 0.001))))
        for number in range(rounds):
            for program in programs:
                if number >= wanted[program]:
                    continue
                seconds = self.run(program.arguments(path))
                if seconds is None:
                    wanted[program] = 0
                else:
                    times[program].append(seconds)
        return {program: taken for program, taken in times.items() if taken}

    def fastest(self, program, path):
        """The time of the fastest of many runs; None when the program fails."""
        return min(self.times([program], path, {}, SHAPE_ROUNDS).get(program, [None]))


def progress(text):
    if sys.stderr.isatty():
        sys.stderr.write("\r\033[K" + text)
        sys.stderr.flush()


def source_files(packages):
    listed = subprocess.run(["dpkg", "-L"] + packages, capture_output=True, text=True, check=True).stdout.split("\n")
    return sorted(path for path in set(listed) if path.endswith(SUFFIXES) and os.path.isfile(path))


def fill(pieces, length):
    """Pieces in turns, as many as fit."""
    chosen, free, misses = [], length, 0
    for number in range(100 * len(pieces)):
        piece = pieces[number % len(pieces)]
        if len(piece) <= free:
            chosen.append(piece)
            free -= len(piece)
            misses = 0
        else:
            misses += 1
        if misses == len(pieces):
            break
    return "".join(chosen)


def build_inputs(bench, files, sizes, suffix, programs):
    """Of the files that all of the programs accept."""
    accepted = []
    for path in files:
        progress("Looking for sources: %d" % len(accepted))
        if bench.accepts(programs, path):
            with open(path, encoding="latin-1") as file:
                accepted.append(file.read() + "\n")
    random.Random(1).shuffle(accepted)
    inputs = []
    for size in sizes:
        text = fill(accepted, int(size * MB))
        path = bench.write("input-%g%s" % (size, suffix), text)
        if not bench.accepts(programs[:1], path):
            sys.exit("The sources are not accepted in one file: " + path)
        inputs.append((size, path))
    print("%d files, %.1f MB, of which the inputs are made." % (len(accepted), sum(map(len, accepted)) / MB))
    return inputs


def shown_time(seconds):
    return "%.1f ms" % (seconds * 1000) if seconds < 1 else "%.2f s" % seconds


def print_row(cells, widths):
    first = cells[0].ljust(widths[0])
    print("  ".join([first] + [cell.rjust(width) for cell, width in zip(cells[1:], widths[1:])]))


def print_table(rows):
    widths = [max(len(row[i]) for row in rows) for i in range(len(rows[0]))]
    for number, row in enumerate(rows):
        print_row(row, widths)
        if number == 0:
            print("  ".join("-" * width for width in widths))


def compare_programs(bench, programs, inputs):
    per_mb = {}  # of 1 MB, what growth is relative to
    expected = {}
    rows = [["", "size", "median", "to astyle", "peak memory", "to input", "time per MB to that of 1 MB"]]
    results = []
    for size, path in inputs:
        progress("%g MB" % size)
        length = os.path.getsize(path)
        times = bench.times(programs, path, expected)
        medians = {program: statistics.median(taken) for program, taken in times.items()}
        results.append((size, path, length, medians))
        larger = [other for other, _ in inputs if other > size]
        for program, seconds in medians.items():
            if larger:
                expected[program] = seconds * larger[0] / size
            if size == 1:
                per_mb[program] = seconds / length
    for program in programs:
        for size, path, length, medians in results:
            if program not in medians:
                rows.append([program.name, "%g MB" % size, "skipped", "", "", "", ""])
                continue
            seconds = medians[program]
            astyle = next((taken for other, taken in medians.items() if other.is_reference), None)
            memory = bench.peak_memory(program.arguments(path))
            rows.append(
                [
                    program.name,
                    "%g MB" % size,
                    shown_time(seconds),
                    "%.2f" % (seconds / astyle) if astyle else "",
                    "%.1f MB" % (memory / MB),
                    "%.1f" % (memory / length),
                    "%.2f" % (seconds / length / per_mb[program]) if program in per_mb else "",
                ]
            )
    progress("")
    print_table(rows)


def compare_to_reference(bench, inputs):
    rows = [["", "size", "reference", "now", "", "memory of it", "now"]]
    for scheme in ("allman", "aligned", "allman-100"):
        pair = [bench.with_scheme(scheme, bench.reference), bench.with_scheme(scheme)]
        for size, path in inputs:
            progress("%s, %g MB, and the reference" % (scheme, size))
            times = bench.times(pair, path, {})
            if len(times) < len(pair):
                rows.append([scheme, "%g MB" % size, "failed", "", "", "", ""])
                continue
            before, now = (min(times[program]) for program in pair)
            change = now / before - 1
            memory = [bench.peak_memory(program.arguments(path)) for program in pair]
            verdict = "%.0f %% %s" % (abs(change) * 100, "SLOWER" if change > 0 else "faster")
            rows.append(
                [
                    scheme,
                    "%g MB" % size,
                    shown_time(before),
                    shown_time(now),
                    verdict if abs(change) > NOISE else "the same",
                    "%.1f MB" % (memory[0] / MB),
                    "%.1f MB" % (memory[1] / MB),
                ]
            )
    progress("")
    print("\nThe fastest runs, and those of %s.\n" % bench.reference)
    print_table(rows)


def initialiser(count):
    return "int table[] = { %s };\n" % ", ".join(str(i) for i in range(count))


def nested_call(depth):
    return "void f() { %s1%s; }\n" % ("call(" * depth, ", 2)" * depth)


def shift_chain(count):
    return "void f() { out%s; }\n" % "".join(" << value%d" % i for i in range(count))


def condition(count):
    terms = " && ".join("first%d == second%d" % (i, i) for i in range(count))
    return "void f() { if (%s) g(); }\n" % terms


def declarations(count):
    types = ["int", "unsigned long", "const char *", "double", "std::string"]
    return "".join("%s name%d = %d;\n" % (types[i % len(types)], i, i) for i in range(count))


def statements(count):
    return "void f() { %s}\n" % ("a = call(b, c); " * count)


def comments(count):
    return "enum E { %s A };\n" % ("/* a */ " * count)


SHAPES = [
    ("initialiser of %d elements", initialiser, 25_000, "allman-100"),
    ("call nested %d deep", nested_call, 50, "allman-100"),
    ("chain of %d shifts", shift_chain, 1_250, "allman-100"),
    ("condition of %d terms", condition, 500, "allman-100"),
    ("line of %d statements", statements, 10_000, "allman-100"),
    ("line of %d comments", comments, 20_000, "allman-100"),
    ("run of %d declarations", declarations, 12_500, "aligned"),
]


def compare_shapes(bench):
    start = bench.fastest(bench.with_scheme("allman"), bench.write("one.cpp", "int a;\n"))
    rows = [["", "scheme", "fastest", "4 times as many", "growth", "peak memory", "to input"]]
    for name, make, count, scheme in SHAPES:
        progress(name % count)
        program = bench.with_scheme(scheme)
        paths = [bench.write("shape-%d.cpp" % n, make(n)) for n in (count, 4 * count)]
        times = [bench.fastest(program, path) for path in paths]
        if None in times:
            rows.append([name % count, scheme] + [shown_time(t) if t else "failed" for t in times] + ["", "", ""])
            continue
        memory = bench.peak_memory(program.arguments(paths[1]))
        work = [seconds - start for seconds in times]
        rows.append(
            [
                name % count,
                scheme,
                shown_time(times[0]),
                shown_time(times[1]),
                "%.1f" % (work[1] / work[0]) if work[0] > 0.0002 else "",
                "%.1f MB" % (memory / MB),
                "%.1f" % (memory / os.path.getsize(paths[1])),
            ]
        )
    progress("")
    print("\nGrowth without the %s that starting takes; 4 is linear.\n" % shown_time(start))
    print_table(rows)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("root", help=argparse.SUPPRESS)
    parser.add_argument("sizes", nargs="*", type=float, help="in MB")
    parser.add_argument("--large", type=float, help="one size more, in MB")
    parser.add_argument("--reference", help="an earlier VantrelCmd")
    parser.add_argument("--packages", nargs="+", help=argparse.SUPPRESS)
    parser.add_argument("--c-packages", nargs="+", help=argparse.SUPPRESS)
    arguments = parser.parse_args()
    bench = Bench(arguments.root, arguments.reference)
    sizes = sorted((arguments.sizes or SIZES) + ([arguments.large] if arguments.large else []))
    vantrel = bench.with_scheme("allman")
    files = source_files(arguments.packages)
    inputs = build_inputs(bench, files, sizes, ".cpp", [vantrel])
    c_inputs = build_inputs(bench, source_files(arguments.c_packages), sizes, ".c", [vantrel, bench.indent()])
    print("Median of up to %d runs of whole processes, in turns. C++, then C.\n" % ROUNDS)
    compare_programs(bench, bench.programs(), inputs)
    print()
    compare_programs(bench, bench.c_programs(), c_inputs)
    if os.path.exists(bench.reference):
        compare_to_reference(bench, inputs)
    compare_shapes(bench)


if __name__ == "__main__":
    main()
