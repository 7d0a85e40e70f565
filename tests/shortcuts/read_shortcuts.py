"""Reads the shortcuts that the Java tests made: read_shortcuts.py PARSER FOLDER

PARSER is the folder of the package LnkParse3. FOLDER has one folder for each code page of the tests,
named as Python names code pages. Beside each shortcut NAME.lnk, NAME.txt has what it must hold, a line
each: target, arguments, working directory, icon; the icon is the first one of its file. What was read
is deleted, so that no run passes on the files of an earlier one.
"""

import pathlib
import shutil
import sys

sys.path.insert(0, sys.argv[1])
import LnkParse3  # noqa: E402 (found where the command says)


def fields(shortcut):
    with shortcut.open("rb") as file:
        link = LnkParse3.lnk_file(file, cp=shortcut.parent.name).get_json()
    names = ("command_line_arguments", "working_directory", "icon_location")
    texts = [link["link_info"].get("local_base_path", ""), *(link["data"].get(name, "") for name in names)]
    return [*texts, link["header"]["icon_index"]]


def differs(shortcut):
    found, wanted = fields(shortcut), [*shortcut.with_suffix(".txt").read_text("utf-8").split("\n"), 0]
    if found != wanted:
        print(f"{shortcut}\n  holds     {found}\n  and not   {wanted}")
    return found != wanted


shortcuts = sorted(pathlib.Path(sys.argv[2]).glob("*/*.lnk"))
code_pages = {shortcut.parent.name for shortcut in shortcuts}
print(f"{len(shortcuts)} shortcuts in the code pages {sorted(code_pages)}")
wrong = any([differs(shortcut) for shortcut in shortcuts]) or code_pages != {"cp1252", "cp932"}
shutil.rmtree(sys.argv[2])
sys.exit(wrong)
