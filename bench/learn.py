"""Measures the schemes that `vantrel learn` makes. Called by bench/learn."""

import argparse
import glob
import os
import shutil
import subprocess
import sys
import tempfile
from concurrent.futures import ThreadPoolExecutor

from fidelity import Program, changed_lines, print_table, progress, read_list

# The styles of clang-format that a project may be near to.
CLANG_STYLES = ["LLVM", "GNU", "Google", "Chromium", "Microsoft", "Mozilla", "WebKit"]


def read_sources(paths):
    texts = {}
    for path in paths:
        with open(path, "rb") as file:
            texts[path] = file.read().replace(b"\r\n", b"\n")
    return texts


class Bench:
    def __init__(self, options):
        self.root = options.root
        self.options = options
        self.vantrel = os.path.join(self.root, "build", "vantrel")
        self.folder = tempfile.mkdtemp(prefix="learn-")
        self.pool = ThreadPoolExecutor(options.processes)
        self.shipped = sorted(
            os.path.splitext(os.path.basename(path))[0] for path in glob.glob(os.path.join(self.root, "schemes/*.vts"))
        )

    def path(self, *names):
        path = os.path.join(self.folder, *names)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        return path

    def ours(self, scheme):
        return Program("ours", [self.vantrel, "-s", scheme, "--on-refusal", "fail", "-"])

    def formatted(self, program, texts):
        """By path, what the program makes of the texts; None where it refuses one."""
        return dict(zip(texts, self.pool.map(program.format, texts.values())))

    def learner(self, unknown):
        """The program with all shipped schemes beside it but one, to learn that from what it has laid out alone."""
        program = self.path("without-" + unknown, "vantrel")
        shutil.copy(self.vantrel, program)
        for name in self.shipped:
            if name != unknown:
                shutil.copy(os.path.join(self.root, "schemes", name + ".vts"), os.path.dirname(program))
        return program

    def learn(self, paths, name, learner=None):
        scheme = self.path(name + ".vts")
        done = subprocess.run(
            [learner or self.vantrel, "learn", "-o", scheme, *self.options.learn, *paths],
            capture_output=True,
            check=False,
        )
        if done.returncode != 0:
            sys.exit("learning %s: %s" % (name, done.stderr.decode()))
        return scheme

    def per_hundred(self, wanted, results):
        """Changed lines per 100 over the files that all have a result for."""
        taken = [path for path in wanted if wanted[path] is not None and results.get(path) is not None]
        lines = sum(wanted[path].count(b"\n") for path in taken)
        changed = self.pool.map(lambda path: changed_lines(wanted[path], results[path]), taken)
        return 100.0 * sum(changed) / max(1, lines)


def properties(path):
    with open(path, encoding="latin-1") as file:
        lines = [line.rstrip("\n") for line in file if line[0] in "123" and line.count(" ") >= 2]
    return {key: value for _, key, value in (line.split(" ", 2) for line in lines)}


def differing_keys(shipped, learned):
    ours, theirs = properties(shipped), properties(learned)
    keys = sorted(key for key in ours.keys() | theirs.keys() if ours.get(key) != theirs.get(key))
    return ["%s %s -> %s" % (key, ours.get(key, "-"), theirs.get(key, "-")) for key in keys]


def round_trip(bench):
    """Lays files out with each shipped scheme, learns from the result, and lays the originals out with that."""
    with open(bench.options.list, encoding="utf-8") as file:
        paths = [line for line in file.read().split("\n") if line]
    step = max(1, len(paths) // bench.options.files)
    # How wide tabs are cannot be learned where the scheme has left none.
    texts = {path: text.expandtabs(8) for path, text in read_sources(paths[::step][: bench.options.files]).items()}
    rows = [["scheme", "same lines per 100", "keys that differ"]]
    for name in bench.options.schemes or bench.shipped:
        progress(name)
        shipped = os.path.join(bench.root, "schemes", name + ".vts")
        wanted = bench.formatted(bench.ours(shipped), texts)
        laid_out = []
        for number, (path, text) in enumerate(wanted.items()):
            if text is not None:
                laid_out.append(bench.path(name, "%03d-%s" % (number, os.path.basename(path))))
                with open(laid_out[-1], "wb") as file:
                    file.write(text)
        learned = bench.learn(laid_out, name, bench.learner(name))
        results = bench.formatted(bench.ours(learned), texts)
        differing = differing_keys(shipped, learned)
        rows.append([name, "%.2f" % (100 - bench.per_hundred(wanted, results)), str(len(differing))])
        if bench.options.keys:
            print("\n".join([name] + ["  " + line for line in differing]), flush=True)
        if bench.options.keep:
            os.replace(learned, os.path.join(bench.options.keep, name + ".learned.vts"))
    progress("")
    print_table(rows)


def nearest(bench, programs, texts):
    """Of the programs the one that changes the fewest lines of the texts."""
    return min(programs, key=lambda program: bench.per_hundred(texts, bench.formatted(program, texts)))


def detected(bench, name, path, extension):
    """Uncrustify with the configuration that it finds for a file; it takes no more than one."""
    config = bench.path(name + ".cfg")
    program = ["uncrustify", "-q", "-l", "C" if extension == "c" else "CPP"]
    subprocess.run(program + ["--detect", "-f", path, "-o", config], capture_output=True, check=False)
    return Program("uncrustify", program + ["-c", config])


def real_styles(bench):
    """Learns from half of the files of a project, and lays the others out."""
    rows = [["", "files", "learned", "shipped", "", "clang-format", "", "uncrustify"]]
    for name in bench.options.styles:
        progress(name)
        known = read_sources(read_list(bench.options.lists, name, "tune"))
        held = read_sources(read_list(bench.options.lists, name, "held"))
        if not known or not held:
            sys.exit("%s: no lists" % name)
        learned = bench.ours(bench.learn(list(known), name))
        few = dict(list(known.items())[:: max(1, len(known) // 20)])
        shipped = nearest(bench, [bench.ours(scheme) for scheme in bench.shipped], few)
        extension = "c" if all(path.endswith((".c", ".h")) for path in known) else "cpp"
        options = "--style={BasedOnStyle: %s, SortIncludes: Never}"
        assumed = "--assume-filename=a." + extension
        clang = [Program(style, ["clang-format", options % style, assumed]) for style in CLANG_STYLES]
        clang = nearest(bench, clang, few)
        uncrustify = detected(bench, name, max(known, key=lambda path: len(known[path])), extension)
        programs = [learned, shipped, clang, uncrustify]
        results = [bench.formatted(program, held) for program in programs]
        taken = {path: held[path] for path in held if all(result[path] is not None for result in results)}
        rates = ["%.2f" % bench.per_hundred(taken, result) for result in results]
        rows.append([name, str(len(taken)), rates[0], rates[1], shipped.arguments[2], rates[2], clang.name, rates[3]])
        print("  ".join(rows[-1]), file=sys.stderr)
    progress("")
    print("Changed lines per 100 of the files that were not learned from.\n")
    print_table(rows)


def parse_arguments():
    parser = argparse.ArgumentParser(prog="bench/learn", description=__doc__)
    parser.add_argument("root", help=argparse.SUPPRESS)
    parser.add_argument("-j", dest="processes", type=int, default=2, metavar="PROCESSES")
    parser.add_argument("--learn", type=str.split, default=[], metavar="OPTIONS", help="for vantrel learn")
    commands = parser.add_subparsers(required=True)
    rounds = commands.add_parser("round", help=round_trip.__doc__)
    rounds.add_argument("list", help="a file with the paths of sources, one a line")
    rounds.add_argument("schemes", nargs="*", metavar="SCHEME", help="all shipped ones, when none is given")
    rounds.add_argument("--files", type=int, default=60, metavar="N", help="how many of the list (60)")
    rounds.add_argument("--keys", action="store_true", help="print the keys that differ")
    rounds.add_argument("--keep", metavar="FOLDER", help="for the schemes that were learned")
    rounds.set_defaults(run=round_trip)
    styles = commands.add_parser("styles", help=real_styles.__doc__)
    styles.add_argument("styles", nargs="+", metavar="STYLE")
    styles.add_argument(
        "--lists",
        default=os.environ.get("VANTREL_STYLE_LISTS"),
        required="VANTREL_STYLE_LISTS" not in os.environ,
        metavar="FOLDER",
        help="holds files STYLE.tune and STYLE.held with the paths of sources (or VANTREL_STYLE_LISTS)",
    )
    styles.set_defaults(run=real_styles)
    return parser.parse_args()


def main():
    options = parse_arguments()
    options.run(Bench(options))


if __name__ == "__main__":
    main()
