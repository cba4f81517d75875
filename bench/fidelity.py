"""Formats code that keeps a style, and counts the lines that come back changed. Called by bench/fidelity."""

import argparse
import configparser
import hashlib
import os
import re
import shlex
import subprocess
import sys
import tempfile
from concurrent.futures import ThreadPoolExecutor

RUN_LIMIT = 60.0  # seconds for one run
HUNK = re.compile(rb"^@@ -\d+(?:,(\d+))? \+\d+(?:,(\d+))? @@", re.MULTILINE)
MEASURES = ["keep", "restore"]
PROGRAMS = ["ours", "clang-format", "astyle", "indent"]

# How uncrustify puts files out of style: other braces, marks, blanks and indents. Where lines end and what stands on
# one line stays, and so does what no formatter could know again.
# The last two: ">>" and "> >" are not the same tokens.
OUT_OF_STYLE = """
code_width = 0
indent_columns = 3
indent_with_tabs = 0
sp_assign = remove
sp_bool = remove
sp_compare = remove
sp_after_comma = remove
sp_before_sparen = remove
sp_inside_sparen = force
sp_inside_paren = force
nl_assign_leave_one_liners = true
nl_class_leave_one_liners = true
nl_enum_leave_one_liners = true
nl_func_leave_one_liners = true
nl_cpp_lambda_leave_one_liners = true
nl_if_leave_one_liners = true
nl_while_leave_one_liners = true
nl_for_leave_one_liners = true
sp_angle_shift = ignore
sp_permit_cpp11_shift = true
"""
BRACES = """if_brace brace_else elseif_brace else_brace for_brace while_brace do_brace brace_while switch_brace
try_brace catch_brace brace_catch struct_brace union_brace class_brace enum_brace namespace_brace""".split()
CALLS = ["func_call_paren", "func_def_paren", "func_proto_paren"]


class Program:
    """A formatter with its options, as a filter."""

    def __init__(self, name, arguments, key=None):
        self.name = name
        self.arguments = arguments
        self.key = key  # stands for its version and options; None: its results are not kept for later runs

    def format(self, text):
        """The text formatted; None when the program refuses it."""
        try:
            done = subprocess.run(self.arguments, input=text, capture_output=True, timeout=RUN_LIMIT, check=False)
        except subprocess.TimeoutExpired:
            return None
        return done.stdout if done.returncode == 0 and (done.stdout or not text) else None


class Cache:
    """What earlier runs found, in files named by what it was found for."""

    def __init__(self, folder):
        self.folder = folder

    def get(self, parts, find):
        """What `find` gives, bytes or None, for the program, the options and the texts that are its parts."""
        name = hashlib.sha256(b"\0".join(hashlib.sha256(part).digest() for part in parts)).hexdigest()
        path = os.path.join(self.folder, name[:2], name)
        if os.path.exists(path):
            with open(path, "rb") as file:
                content = file.read()
        else:
            found = find()
            content = b"refused" if found is None else b"=" + found
            os.makedirs(os.path.dirname(path), exist_ok=True)
            with tempfile.NamedTemporaryFile(dir=os.path.dirname(path), delete=False) as file:
                file.write(content)
            os.replace(file.name, path)
        return None if content == b"refused" else content[1:]


def difference(before, after):
    """The text that `diff -U0` gives for them."""
    if before == after:
        return b""
    with tempfile.TemporaryDirectory() as folder:
        paths = [os.path.join(folder, name) for name in ("before", "after")]
        for path, text in zip(paths, (before, after)):
            with open(path, "wb") as file:
                file.write(text)
        labels = ["--label=before", "--label=after"]
        return subprocess.run(["diff", "-a", "-U0"] + labels + paths, capture_output=True, check=False).stdout


def changed_lines(before, after):
    """Each hunk counts as its longer side."""
    sides = HUNK.findall(difference(before, after))
    return sum(max(int(removed or 1), int(added or 1)) for removed, added in sides)


def without_white(text):
    """What may not change. The white space of a directive of several lines takes their splices in."""
    return b"".join(text.replace(b"\\\n", b"").split())


def version_of(program):
    return subprocess.run([program, "--version"], capture_output=True, check=False).stdout


def scheme_value(text):
    """The type of a scheme's value, and its spelling in a file."""
    if text in ("true", "false"):
        return 1, "1" if text == "true" else "0"
    if re.fullmatch(r"-?\d+", text):
        return 2, text
    return 3, '"%s"' % text


def fitted_scheme(text, name, settings):
    """A scheme's text under another name, with settings: KEY=value sets a key, -KEY removes it, and INDENT=text puts
    that in place of each of the scheme's indents."""
    lines = text.split("\n")
    head, entries = lines[:2] + ['"%s"' % name], {}
    for line in lines[3:]:
        if line and not line.startswith("#"):
            kind, key, value = line.split(" ", 2)
            entries[key] = (int(kind), value)
    for setting in settings:
        if setting.startswith("-"):
            entries.pop(setting[1:], None)
            continue
        key, value = setting.split("=", 1)
        if key == "INDENT":
            unit = entries["GLOBAL_INDENT_CONTENT"][1].strip('"')
            entries.update({k: (3, v.replace(unit, value)) for k, (kind, v) in entries.items() if kind == 3})
        else:
            entries[key] = scheme_value(value)
    body = ["%d %s %s" % (kind, key, value) for key, (kind, value) in sorted(entries.items())]
    return "\n".join(head + body) + "\n"


def contrary_to(astyle):
    """A configuration of uncrustify that goes against the style that astyle's options name."""
    style = re.search(r"--style=(\w+)", astyle)[1]
    tab = re.search(r"--indent=(?:force-)?tab=(\d+)", astyle)
    braces = "remove" if style in ("allman", "gnu") else "force"
    settings = {"nl_" + name: braces for name in BRACES}
    settings["nl_fdef_brace"] = "force" if style in ("google", "java") else "remove"
    settings |= {"sp_" + name: "remove" if style == "gnu" else "force" for name in CALLS}
    settings["indent_switch_case"] = 0 if "--indent-switches" in astyle else 3
    settings["input_tab_size"] = settings["output_tab_size"] = int(tab[1]) if tab else 8
    stands_by_name = "--align-pointer=name" in astyle
    for mark in ("ptr_star", "byref"):
        settings["sp_before_" + mark] = "remove" if stands_by_name else "force"
        settings["sp_after_" + mark] = "force" if stands_by_name else "remove"
    return OUT_OF_STYLE + "".join("%s = %s\n" % setting for setting in settings.items())


class Style:
    """One section of the file of styles."""

    def __init__(self, name, section, bench):
        self.name = name
        self.is_c = "indent" in section
        clang_options = "{%s, SortIncludes: Never, ReflowComments: false}" % section["clang-format"].replace("\n", " ")
        assumed = "--assume-filename=style." + ("c" if self.is_c else "cpp")
        self.programs = [
            self.ours(section["ours"], bench),
            bench.peer("clang-format", [assumed, "--style=" + clang_options]),
            bench.peer("astyle", ["--options=none", "--project=none"] + shlex.split(section["astyle"])),
        ]
        if self.is_c:
            self.programs.append(bench.peer("indent", ["-npro"] + shlex.split(section["indent"])))
        contrary = contrary_to(section["astyle"])
        config = bench.write(name + ".cfg", contrary)
        language = ["-l", "C" if self.is_c else "CPP"]
        self.spoiler = bench.peer("uncrustify", ["-q", "-c", config] + language, contrary)
        for program in self.programs + [self.spoiler]:
            if program.format(b"int a;\n") is None:
                sys.exit("%s cannot be run: %s" % (name, shlex.join(program.arguments)))

    def ours(self, text, bench):
        base, *settings = shlex.split(text)
        with open(os.path.join(bench.root, "schemes", base + ".vts"), encoding="latin-1") as file:
            scheme = fitted_scheme(file.read(), self.name, settings)
        bench.write(self.name + ".vts", scheme)
        return Program("ours", [os.path.join(bench.root, "build", "VantrelCmd"), "-s", self.name, "-", "-"])


class FileResult:
    """Changed lines of one file: by measure and program, None where the program refuses the file."""

    def __init__(self, lines):
        self.lines = lines
        self.changed = {}
        self.shown = b""


class Bench:
    def __init__(self, options):
        self.root = options.root
        self.options = options
        folder = os.path.join(self.root, "build", "bench", "fidelity")
        self.fitted = os.path.join(folder, "fitted")
        os.makedirs(self.fitted, exist_ok=True)
        os.environ["VANTREL_SCHEMES"] = self.fitted
        self.cache = Cache(os.path.join(folder, "cache"))
        paths = {"clang-format": options.clang_format} | {name: name for name in ("astyle", "indent", "uncrustify")}
        self.tools = {name: (path, version_of(path)) for name, path in paths.items()}
        self.pool = ThreadPoolExecutor(options.processes)

    def write(self, name, text):
        path = os.path.join(self.fitted, name)
        with open(path, "w", encoding="latin-1") as file:
            file.write(text)
        return path

    def peer(self, name, arguments, config=""):
        path, version = self.tools[name]
        key = repr((name, version, arguments, config)).encode()
        return Program(name, [path] + arguments, key)

    def count(self, program, original, text):
        """The lines in which the program's result for the text differs from the original; None when refused."""

        def find():
            result = program.format(text)
            return None if result is None else b"%d" % changed_lines(original, result)

        found = find() if program.key is None else self.cache.get([program.key, original, text], find)
        return None if found is None else int(found)

    def out_of_style(self, style, text):
        """The text as another formatter leaves it; None when it does not, or damages it."""
        spoiled = self.cache.get([style.spoiler.key, text], lambda: style.spoiler.format(text))
        return spoiled if spoiled is not None and without_white(spoiled) == without_white(text) else None

    def measure(self, style, path):
        with open(path, "rb") as file:
            text = file.read().replace(b"\r\n", b"\n")
        result = FileResult(text.count(b"\n"))
        for measure in self.options.measures:
            given = text if measure == "keep" else self.out_of_style(style, text)
            result.changed[measure] = {
                program.name: None if given is None else self.count(program, text, given)
                for program in style.programs
            }
            if self.options.show == measure and given is not None:
                shown = next((program for program in style.programs if program.name == self.options.of), None)
                formatted = (shown and shown.format(given)) or text
                result.shown += b"==== %s\n%s" % (path.encode(), difference(text, formatted))
        return result

    def run(self, style, paths):
        return list(self.pool.map(lambda path: self.measure(style, path), paths))


def progress(text):
    if sys.stderr.isatty():
        sys.stderr.write("\r\033[K" + text)
        sys.stderr.flush()


def figures(results, measure, programs):
    """The cells of one measure, over the files that no program refuses: their number, then the changed lines per 100
    of each program, the lowest marked."""
    taken = [result for result in results if None not in result.changed[measure].values()]
    lines = max(1, sum(result.lines for result in taken))
    changed = {program: sum(result.changed[measure][program] for result in taken) for program in programs}
    lowest = min(changed.values())
    cells = [str(len(taken))]
    for name in PROGRAMS:
        if name not in changed or not taken:
            cells.append("- ")
        else:
            cells.append("%.1f%s" % (100.0 * changed[name] / lines, "*" if changed[name] == lowest else " "))
    return cells


def row_of(style, results, measures):
    names = [program.name for program in style.programs]
    refusals = [sum(result.changed[measures[0]][name] is None for result in results) for name in names]
    row = [style.name, str(len(results)), str(refusals[0]), str(max(refusals[1:]))]
    for measure in measures:
        row += figures(results, measure, names)
    return row


def print_table(rows):
    widths = [max(len(row[i]) for row in rows) for i in range(len(rows[0]))]
    for row in rows:
        cells = [row[0].ljust(widths[0])] + [cell.rjust(width) for cell, width in zip(row[1:], widths[1:])]
        print("  ".join(cells).rstrip())


def read_list(folder, style, half):
    path = os.path.join(folder, "%s.%s" % (style, half))
    if not os.path.exists(path):
        return []
    with open(path, encoding="utf-8") as file:
        return [line for line in file.read().split("\n") if line]


def parse_arguments():
    parser = argparse.ArgumentParser(
        prog="bench/fidelity",
        description="Counts the lines per 100 that formatters change in code that keeps a style: given as it is "
        "(keep), and after uncrustify, without a column limit, has put it out of style (restore), each against the "
        "original. The styles, and how each formatter is fitted to them, are in bench/styles.ini.",
        epilog="The newest clang-format comes with npm: `npm install clang-format-node` in a folder of its own, then "
        "--clang-format=FOLDER/node_modules/clang-format-node/bin/cfn-linux-x64/clang-format.",
    )
    parser.add_argument("root", help=argparse.SUPPRESS)
    parser.add_argument("styles", nargs="*", metavar="STYLE", help="all, when none is given")
    parser.add_argument(
        "--lists",
        default=os.environ.get("VANTREL_STYLE_LISTS"),
        metavar="FOLDER",
        help="holds a file STYLE.HALF for each style, with the paths of sources, one a line "
        "(or the environment variable VANTREL_STYLE_LISTS)",
    )
    parser.add_argument("--half", default="held", help="of the lists: tune or held (the default)")
    parser.add_argument("--measure", dest="measures", action="append", choices=MEASURES, help="both, when not given")
    parser.add_argument("--show", choices=MEASURES, help="print what results differ in, in place of the table")
    parser.add_argument("--of", choices=PROGRAMS, default="ours", help="whose results to show")
    parser.add_argument("--clang-format", default="clang-format", metavar="PATH")
    parser.add_argument("-j", dest="processes", type=int, default=2, metavar="PROCESSES")
    options = parser.parse_intermixed_args()
    if not options.lists:
        parser.error("no --lists, and no VANTREL_STYLE_LISTS")
    options.measures = [options.show] if options.show else options.measures or MEASURES
    return options


def read_styles(root):
    sections = configparser.ConfigParser(interpolation=None, delimiters=("=",))
    with open(os.path.join(root, "bench", "styles.ini"), encoding="utf-8") as file:
        sections.read_file(file)
    return sections


def main():
    options = parse_arguments()
    sections = read_styles(options.root)
    unknown = [name for name in options.styles if name not in sections]
    if unknown:
        sys.exit("No such style: " + ", ".join(unknown))
    bench = Bench(options)
    heads = ["", "", "refused", ""] + [cell for measure in options.measures for cell in ["", measure, "", "", ""]]
    columns = ["files", "ours", "clang", "astyle", "indent"]
    rows = [heads, ["", "files", "by us", "others"] + columns * len(options.measures)]
    for name in options.styles or sections.sections():
        paths = read_list(options.lists, name, options.half)
        if not paths:
            progress("")
            print("%s: no list" % name, file=sys.stderr)
            continue
        progress("%s: %d files" % (name, len(paths)))
        style = Style(name, sections[name], bench)
        results = bench.run(style, paths)
        if options.show:
            sys.stdout.buffer.write(b"".join(result.shown for result in results))
        else:
            rows.append(row_of(style, results, options.measures))
    progress("")
    if not options.show:
        print("Changed lines per 100; * is the lowest. What any program refuses is left out for all.\n")
        print_table(rows)


if __name__ == "__main__":
    main()
