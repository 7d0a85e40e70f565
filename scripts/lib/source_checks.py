"""Rules of the house that a reader of the sources can rely on: source_checks.py RULE

Prints what breaks the rule, and fails then.
"""

import difflib
import pathlib
import re
import sys

project = pathlib.Path(__file__).resolve().parents[2]
sources = sorted(path for path in (project / "src").rglob("*") if path.suffix in (".h", ".cpp"))

# The rooms from the bottom up, and the rooms above which each stands. Those that export natives may
# use bridge/java besides, in *_natives.cpp.
ROOMS = {
    "bridge/win32": "",
    "bridge/java": "bridge/win32",
    "registry": "bridge/win32",
    "security": "bridge/win32",
    "service": "bridge/win32 bridge/java security",
    "environment": "bridge/win32 registry",
    "process": "bridge/win32 bridge/java registry",
    "product": "bridge/win32 registry security",
    "file/properties": "bridge/win32 bridge/java security",
    "file/in_use": "bridge/win32 file/properties",
    "file/drives": "bridge/win32 registry environment",
    "desktop": "bridge/win32 environment file/properties",
    "cleaner": "bridge/win32 file/in_use",
}


def room_of(path):
    return path.rpartition("/")[0]


def arrows():
    """A file includes only what its room may know; no room stands above itself."""
    lower = set()
    for room, uses in ROOMS.items():
        if not set(uses.split()) <= lower:
            yield f"{room} stands below a room that it uses"
        lower.add(room)
    for path in sources:
        name = path.relative_to(project / "src").as_posix()
        allowed = {room_of(name), *ROOMS.get(room_of(name), "").split()}
        if name.endswith("_natives.cpp"):
            allowed.add("bridge/java")
        for included in re.findall(r'#include "(.*)"', path.read_text("utf-8")):
            if room_of(included) not in allowed:
                yield f"{name} includes {included}"


def namespace():
    """All names of the library are in its namespace; the natives, whose names Java gives, use it."""
    for path in sources:
        wanted = "using namespace" if path.name.endswith("_natives.cpp") else "namespace"
        if not re.search(rf"^{wanted} corvane\b", path.read_text("utf-8"), re.MULTILINE):
            yield f"{path.relative_to(project)} lacks `{wanted} corvane`"


# Not what follows "with": that is the reason that comes with a code.
CODE = re.compile(r"(?<!with )(?<![\w.])(?:-\d{5,7}|0x[0-9A-F]{8})\b")


def documented_codes():
    """What docs/natives.md says: the codes of each class and method."""
    codes, owner = {}, ""
    for line in (project / "docs/natives.md").read_text("utf-8").splitlines():
        cells = [cell.strip() for cell in line.split("|")]
        if line.startswith("## "):
            owner = line[3:].strip()
        elif len(cells) == 7 and re.fullmatch(r"`\w+`(, `\w+`)*", cells[1]):
            methods, found = re.findall(r"\w+", cells[1]), CODE.findall(cells[4])
            each = [[code] for code in found] if len(found) == len(methods) else [found] * len(methods)
            codes.update({(owner, method): set(own) for method, own in zip(methods, each)})
    return codes


def declared_codes():
    """What the Javadoc of each native says behind `@throws ServiceException`."""
    codes = {}
    for path in (project / "java").rglob("*.java"):
        for comment, method in re.findall(
            r"/\*\*((?:(?!\*/).)*)\*/\s*public native [\w\[\]<>]+ (\w+)\(", path.read_text("utf-8"), re.DOTALL
        ):
            thrown = comment.partition("@throws ServiceException")[2].partition("@")[0]
            codes[path.stem, method] = set(CODE.findall(thrown))
    return codes


def codes():
    """The code at a Java declaration is the code in the reference."""
    documented, declared = documented_codes(), declared_codes()
    for native in sorted(documented.keys() | declared.keys()):
        said, told = declared.get(native), documented.get(native)
        if said != told:
            yield f"{'.'.join(native)}: {said} at its declaration, {told} in docs/natives.md"


def natives():
    """Each native stands under its whole class and method where it is defined, once."""
    text = "".join(path.read_text("utf-8") for path in sources if path.name.endswith("_natives.cpp"))
    for owner, method in sorted(declared_codes()):
        found = len(re.findall(rf"(?:\b|_){owner}, {method}\)", text))
        if found != 1:
            yield f"{owner}, {method}) stands {found} times in *_natives.cpp"


def installer():
    """The page on installers shows the program that the demonstration runs, in parts cut at empty lines."""
    page = (project / "docs/installer.md").read_text("utf-8")
    shown = "\n".join(re.findall(r"^```java\n(.*?)^```$", page, re.MULTILINE | re.DOTALL)).splitlines()
    run = (project / "demo/harbour/Setup.java").read_text("utf-8").splitlines()
    yield from difflib.unified_diff(run, shown, "demo/harbour/Setup.java", "docs/installer.md", lineterm="", n=0)


broken = list({rule.__name__: rule for rule in (arrows, namespace, codes, natives, installer)}[sys.argv[1]]())
print(*broken, sep="\n")
sys.exit(bool(broken))
