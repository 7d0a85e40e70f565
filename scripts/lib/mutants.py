"""Reads the list of mutants: mutants.py LIST COMMAND [ARGUMENT...], in the project's root.

A mutant is a head line, a comment that says what it breaks, and its replacements. Each old text
stands exactly once in the file; several lines of one sign are one text, and an old text without a
new one goes:

    == R1 registry_key.cpp registry_keys|registry_read
    # the rights that opening asks for are too wide
    - KEY_QUERY_VALUE
    + KEY_ALL_ACCESS

The file goes by its base name, or a pattern of it, below src or java, so that the list outlives
moves; of the files that match, one alone holds the texts. The last word names what is run first:
classes of the Java tests, or files of scenes.

    check               says what does not fit: files, texts, tests
    ids [ID...]         the mutants, or these, when they are there: id, file, what runs first, comment
    apply ID            puts one mutant into the files
    killers LOG         the tests that failed, by the log of a run
"""

import fnmatch
import pathlib
import re
import subprocess
import sys


class Mutant:
    def __init__(self, head):
        self.id, self.file, self.first = (head.split() + [""])[1:4]
        self.breaks = ""
        self.replacements = []

    def replaced(self):
        """The one file that holds the texts, and its content with the fault; or ValueError."""
        paths = [path for path in tracked("src", "java") if fnmatch.fnmatch(path.name, self.file)]
        contents = {path: path.read_text(encoding="utf-8") for path in paths}
        old = self.replacements[0][0]
        holders = [path for path in paths if old in contents[path]]
        if len(holders) != 1:
            raise ValueError(f"{len(holders)} of {len(paths)} files {self.file} hold: {old}")
        content = contents[holders[0]]
        for old, new in self.replacements:
            if content.count(old) != 1:
                raise ValueError(f"{holders[0]} holds {content.count(old)} times: {old}")
            content = content.replace(old, new)
        return holders[0], content

    def misfits(self):
        if not self.breaks or not self.replacements:
            yield "has no comment or no replacement"
            return
        try:
            path, content = self.replaced()
            if content == path.read_text(encoding="utf-8"):
                yield "changes nothing"
        except ValueError as error:
            yield str(error)
        names = {path.stem for path in tracked("tests")}
        for name in filter(None, self.first.split("|")):
            if name not in names:
                yield f"no test is called {name}"


def tracked(*folders):
    names = subprocess.check_output(["git", "ls-files", *folders], text=True)
    return [path for path in map(pathlib.Path, names.splitlines()) if path.is_file()]


def read(path):
    mutants = []
    before = ""
    for line in pathlib.Path(path).read_text(encoding="utf-8").split("\n"):
        sign, text = line[:1], line[2:]
        if line.startswith("== "):
            mutants.append(Mutant(line))
        elif mutants and sign == "#":
            mutants[-1].breaks += (" " if mutants[-1].breaks else "") + text
        elif mutants and sign in ("-", "+"):
            replacements = mutants[-1].replacements
            if sign == "-" and before != "-":
                replacements.append(["", ""])
            side = "-+".index(sign)
            replacements[-1][side] += ("\n" if sign == before else "") + text
        before = sign
    return mutants


def check(mutants):
    ids = [mutant.id for mutant in mutants]
    misfits = [f"{name}: stands twice" for name in sorted(set(ids)) if ids.count(name) > 1]
    misfits += [f"{mutant.id}: {misfit}" for mutant in mutants for misfit in mutant.misfits()]
    print(*misfits, f"{len(mutants)} mutants, {len(misfits)} misfits", sep="\n")
    return 1 if misfits else 0


def list_ids(mutants, wanted):
    known = {mutant.id: mutant for mutant in mutants}
    for name in wanted or known:
        if name not in known:
            sys.exit(f"No mutant is called {name}")
        mutant = known[name]
        print(mutant.id, mutant.file, mutant.first or ".", mutant.breaks, sep="\t")


def apply(mutants, name):
    path, content = next(mutant for mutant in mutants if mutant.id == name).replaced()
    path.write_text(content, encoding="utf-8")


def killers(log):
    text = pathlib.Path(log).read_text(encoding="utf-8", errors="replace")
    found = re.findall(r"className = '[\w.]*?(\w+)', methodName = '(\w+)'", text)
    names = [".".join(names) for names in found] + re.findall(r"\[  FAILED  \] ([\w./]+)", text)
    print(", ".join(dict.fromkeys(names)) or "the run")


def main(path, command, *arguments):
    if command == "killers":
        killers(*arguments)
    elif command == "check":
        return check(read(path))
    elif command == "ids":
        list_ids(read(path), arguments)
    elif command == "apply":
        apply(read(path), *arguments)
    return 0


sys.exit(main(*sys.argv[1:]))
