#!/usr/bin/env python3
# SPDX-License-Identifier: LGPL-2.1-or-later
"""names.py SOURCE BUILD BIN: checks names in the documents of SOURCE.

- The README's table of build options has the options, and the defaults, of the CMake files.
- The table of presets in docs/testing.md has the presets of CMakePresets.json with their compilers. The README names all
  presets, and no page names another one.
- Files and directories of SOURCE in backquotes or in commands exist.
- Commands and options of the programs in BIN and of the scripts are in their help or in their source.
- The kinds of tests that may be skipped are the same in docs/testing.md, scripts/test.sh, .ci/run and the tests.
- Each alternative of a pattern of `ctest -R` matches a test of the build tree BUILD. The table of tests about documents names
  existing tests."""

import glob
import json
import os
import re
import subprocess
import sys

TOOLS = ("sorrel", "sorrel-thumbnailer", "sorrel-viewer")
# Options that the documents name without their program, and that program.
OTHER_OPTIONS = {
    "-fsanitize": "gcc", "-fno-semantic-interposition": "gcc", "-Bsymbolic-functions": "ld", "-D": "cmake",
    "--ext-diff": "git", "--prefix": "cmake", "-help": "Qt Test", "--with": "rpmbuild", "--nodeps": "rpmbuild",
}

faults = {}


def fault(page, message):
    faults[f"{page}: {message}"] = True


def read(*parts):
    with open(os.path.join(*parts), encoding="utf-8") as file:
        return file.read()


def compare(page, what, named, expected):
    """Reports the names that only one of two collections has."""
    for name in sorted(set(named) - set(expected)):
        fault(page, f"names the {what} {name}, which does not exist")
    for name in sorted(set(expected) - set(named)):
        fault(page, f"does not name the {what} {name}")


def section(page, text, heading):
    """The text below a heading, up to the next heading of any level."""
    match = re.search(rf"^#+ {re.escape(heading)}\n(.*?)(?=^#+ |\Z)", text, re.MULTILINE | re.DOTALL)
    if not match:
        fault(page, f'has no section "{heading}"')
        return ""
    return match.group(1)


def rows(text):
    """The cells of the rows of a table."""
    return [[cell.strip() for cell in re.split(r"(?<!\\)\|", line)[1:-1]]
            for line in text.splitlines() if line.startswith("| `")]


# Build options

def cmake_options(source):
    options = {}
    top = read(source, "CMakeLists.txt")
    parts = read(source, "cmake", "SorrelParts.cmake")
    for text in (top, parts):
        options.update(re.findall(r'^option\((\w+) "[^"]*" (\w+)\)', text, re.MULTILINE))
        options.update(re.findall(r'^set\((SORREL_\w+) "?([^" ]*)"? CACHE STRING', text, re.MULTILINE))
    default = re.search(r"set\(\$\{option\} (\w+) CACHE STRING", parts).group(1)
    options.update((f"SORREL_BUILD_{part}", default) for part in re.findall(r"^sorrel_part\((\w+) ", parts, re.MULTILINE))
    return options


def check_build_options(source, readme):
    table = re.search(r"^\| build option .*?(?=^$)", readme, re.MULTILINE | re.DOTALL)
    named = {cells[0].strip("`"): cells[1].strip("`") for cells in rows(table.group(0))} if table else {}
    expected = cmake_options(source)
    compare("README.md", "build option", named, expected)
    for name in sorted(set(named) & set(expected)):
        if named[name] != expected[name]:
            fault("README.md", f"{name} has the default {expected[name]!r}, not {named[name]!r}")


# Presets

def compiler(presets, name):
    preset = presets[name]
    value = preset.get("cacheVariables", {}).get("CMAKE_CXX_COMPILER")
    if value:
        return {"g++": "GCC", "clang++": "Clang"}[value]
    return compiler(presets, preset["inherits"]) if "inherits" in preset else "the default"


def check_presets(source, pages):
    presets = {preset["name"]: preset for preset in json.loads(read(source, "CMakePresets.json"))["configurePresets"]}
    testing = "docs/testing.md"
    named = {}
    for cells in rows(section(testing, pages[testing], "Presets")):
        named.update(zip(re.findall(r"`([^`]*)`", cells[0]), re.split(r", ", cells[1])))
    compare(testing, "preset", named, presets)
    for name in sorted(set(named) & set(presets)):
        if named[name] != compiler(presets, name):
            fault(testing, f"the preset {name} takes {compiler(presets, name)}, not {named[name]}")
    listed = re.search(r"`cmake --list-presets`([^.]*)\.", pages["README.md"])
    compare("README.md", "preset", re.findall(r"`([^`]*)`", listed.group(1)) if listed else [], presets)
    for page, text in pages.items():
        for name in re.findall(r"--preset ([\w-]+)", text):
            if name not in presets:
                fault(page, f"names the preset {name}, which does not exist")


# Files, commands and options

def code(text):
    """The texts in backquotes of a page, and the commands of its consoles."""
    text = text.replace("\\|", "|")
    consoles = re.findall(r"^ *```console\n(.*?)^ *```", text, re.MULTILINE | re.DOTALL)
    prose = re.sub(r"^ *```.*?^ *```", "", text, flags=re.MULTILINE | re.DOTALL)
    commands = [match for console in consoles
                for match in re.findall(r"^ *(?:\$ )((?:.*\\\n|.*\|\n)*.*)$", console, re.MULTILINE)]
    return re.findall(r"`([^`]+)`", prose), commands


def check_files(source, page, spans, commands):
    top = set(os.listdir(source)) - {"build", ".git"}
    for text in spans + commands:
        for path in re.findall(r"(?<![\w./~{-])((?:\.?[\w-]+/)+[\w.*-]*)", text):
            if path.split("/")[0] in top and not re.search(r"[A-Z]{4,}(?!\w*\.(md|txt))", path):
                base = os.path.join(source, path)
                if not glob.glob(base) and not glob.glob(os.path.join(source, os.path.dirname(page), path)):
                    fault(page, f"names {path}, which does not exist")


def help_of(program):
    """The help text of a program."""
    return subprocess.run([*program, "--help"], stdout=subprocess.PIPE, text=True, check=True).stdout


def options_in(text):
    """The options that a help text describes, or that a script compares its arguments with."""
    described = re.findall(r"^ +(-.*?)(?:  |$)", text, re.MULTILINE)
    compared = re.findall(r"^ *((?:--[\w-]+(?: \| )?)+)\)", text, re.MULTILINE)
    return set(re.findall(r"(?<![\w-])(--?\w[\w-]*)", "\n".join(described + compared)))


class Tools:
    def __init__(self, source, directory):
        self.source = source
        self.options = {}
        self.commands = {}
        for tool in TOOLS:
            shown = help_of([os.path.join(directory, tool)])
            self.options[tool] = options_in(shown)
            listed = re.search(r"^Commands:\n(.*?)^$", shown, re.MULTILINE | re.DOTALL)
            self.commands[tool] = re.findall(r"^  (\w+)", listed.group(1), re.MULTILINE) if listed else []
            for command in self.commands[tool]:
                shown = help_of([os.path.join(directory, tool), command])
                self.options[f"{tool} {command}"] = options_in(shown)
        if not self.commands["sorrel"]:
            fault("sorrel --help", "lists no commands")
        for path in glob.glob(os.path.join(source, "scripts", "*.sh")):
            self.options[os.path.relpath(path, source)] = options_in(read(path))
        self.all = set().union(*self.options.values())

    def check_command(self, page, text, is_command):
        """Checks the commands and their options in a span or in a line of a console."""
        for part in re.split(r"[|;&>]|\$\(", re.sub(r"'[^']*'|\"[^\"]*\"", "TEXT", text)):
            words = part.replace("\\\n", " ").split()
            while words and (re.match(r"\w+=", words[0]) or words[0] == "sudo"):
                words.pop(0)
            if not is_command and words and words[0].startswith("-"):
                option = words[0].split("=")[0]
                if option not in self.all and option not in OTHER_OPTIONS:
                    fault(page, f"names the option {option}, which no program here has")
            for at, word in enumerate(words):
                name = word[2:] if word.startswith("./") else word
                name = name.rsplit("/", 1)[-1] if name.startswith("build/") else name
                if name in TOOLS or (name.startswith("scripts/") and name in self.options):
                    self.check_call(page, name, words[at + 1:])
                    break

    def check_call(self, page, name, arguments):
        options = set(self.options[name])
        if self.commands.get(name) and arguments and re.fullmatch(r"[a-z]+", arguments[0]):
            if arguments[0] not in self.commands[name]:
                fault(page, f"names the command {name} {arguments[0]}, which does not exist")
                return
            name = f"{name} {arguments[0]}"
            options |= self.options[name]
        if name == "scripts/test.sh":
            options.add("-R")  # which goes to CTest
        for argument in arguments:
            option = argument.split("=")[0]
            if re.fullmatch(r"--?\w[\w-]*", option) and option not in options:
                fault(page, f"names the option {option} of {name}, which does not exist")


# Kinds of tests that are skipped

def check_kinds(source, pages):
    skips = set()
    for path in glob.glob(os.path.join(source, "tests", "**", "*.*"), recursive=True):
        if path.endswith((".sh", ".py")):
            skips.update(re.findall(r"""\bskip(?: |\(['"])([a-z]+)(?= "|['"],)""", read(path)))
    section_text = section("docs/testing.md", pages["docs/testing.md"], "Running")
    table = section_text[section_text.find("| kind |"):]
    compare("docs/testing.md", "kind of tests", [cells[0].strip("`") for cells in rows(table)], skips)
    for path, pattern in (("scripts/test.sh", r"fail instead: ([a-z, ]+)\."), (".ci/run", r"SORREL_TESTS_REQUIRE=([a-z,]+)")):
        listed = re.search(pattern, read(source, path))
        compare(path, "kind of tests", re.findall("[a-z]+", listed.group(1)) if listed else [], skips)


# Tests

def check_tests(build, pages):
    shown = subprocess.run(["ctest", "--test-dir", build, "--show-only=json-v1"], stdout=subprocess.PIPE, text=True,
                           check=True).stdout
    tests = [test["name"] for test in json.loads(shown[shown.index("{"):])["tests"]]
    for page, text in pages.items():
        for quote, pattern in re.findall(r"(?:ctest|scripts/test\.sh)\b[^`\n]* -R ('?)([^'`\n ]+)", text):
            if pattern == "NAME":
                continue
            pattern = pattern.replace("\\|", "|")
            for alternative in pattern.split("|") if "(" not in pattern else [pattern]:
                if not any(re.search(alternative, test) for test in tests):
                    fault(page, f"no test matches {alternative!r} in {quote}{pattern}{quote}")
    for cells in rows(section("docs/testing.md", pages["docs/testing.md"], "Documents")):
        for name in re.findall(r"`([^`]*)`", cells[0]):
            if name not in tests:
                fault("docs/testing.md", f"names the test {name}, which does not exist")


def main():
    source, build, programs = sys.argv[1:]
    paths = [path for pattern in ("*.md", "docs/**/*.md", "examples/*.md", "packaging/*.md")
             for path in glob.glob(os.path.join(source, pattern), recursive=True)]
    pages = {os.path.relpath(path, source): read(path) for path in sorted(paths)}
    check_build_options(source, pages["README.md"])
    check_presets(source, pages)
    check_kinds(source, pages)
    check_tests(build, pages)
    tools = Tools(source, programs)
    for page, text in pages.items():
        spans, commands = code(text)
        if page != "CHANGELOG.md":  # which names what was there once
            check_files(source, page, spans, commands)
        for texts in (spans, commands):
            for span in texts:
                tools.check_command(page, span, texts is commands)
    if faults:
        sys.exit("\n".join(faults))


main()
