# What the DLL and the cleaner promise to the Windows that loads them, read from their files.

library="$build/corvane_win32.dll"
cleaner="$build/corvane_cleaner.exe"

check_library() {
  check_program DLL "$library"
  check "DLL: exports every native that Java declares, and nothing else" exports_the_natives
  check_program Cleaner "$cleaner"
}

# check_program NAME FILE: what both promise.
check_program() {
  check "$1: imports only Windows' own libraries" imports_only_windows "$2"
  check "$1: imports no function that an older Windows lacks" imports_only_old_functions "$2"
  check "$1: no execution of data, random addresses, a guarded stack" is_hardened "$2"
  check "$1: carries its version" carries_its_version "$2"
  check "$1: stripped, its symbols beside it" is_stripped "$2"
}

objdump() {
  x86_64-w64-mingw32-objdump "$@"
}

# none_match GREP-ARGUMENTS: shows the offending lines of its input, and fails when there are any.
none_match() {
  if grep -E "$@"; then return 1; fi
}

# The libraries that every Windows has at its start.
imports_only_windows() {
  local own='advapi32|imm32|kernel32|msvcrt|ole32|oleaut32|shell32|user32|version'
  [ -n "$(library_names "$1")" ]
  library_names "$1" | none_match -vi "^($own)\.dll$"
}

library_names() {
  objdump -p "$1" | sed -n 's/^\s*DLL Name: //p'
}

# Only what stands in the list: a compiler or its headers may bring in more than the code names.
imports_only_old_functions() {
  [ -n "$(imported_functions "$1")" ]
  if imported_functions "$1" | grep -vxF -f "$project/scripts/lib/imports.txt"; then return 1; fi
}

imported_functions() {
  objdump -p "$1" |
    awk '/DLL Name:/ { names = 1; next } NF < 3 { names = 0 } names && $1 != "vma:" { print $NF }'
}

exports_the_natives() {
  [ -n "$(exported_names)" ]
  diff <(declared_natives) <(exported_names | sort)
}

declared_natives() {
  cat "$build"/java/headers/*.h | grep -oE '\bJava_com_corvane_\w+' | sort
}

exported_names() {
  objdump -p "$library" | awk '/Ordinal\/Name Pointer/ { names = 1; next } !NF { names = 0 }
    names && /\[/ { print $NF }'
}

is_hardened() {
  local flag
  for flag in HIGH_ENTROPY_VA DYNAMIC_BASE NX_COMPAT; do
    objdump -p "$1" | grep "$flag"
  done
  objdump -t "${1%.*}.debug" | grep '\b__stack_chk_fail\b'
  objdump -d "$1" | grep 'int  *\$0x29'
}

carries_its_version() {
  x86_64-w64-mingw32-strings -e l "$1" | grep -A 1 -x ProductVersion |
    grep -x -F "$(project_version)"
}

is_stripped() {
  objdump -h "$1" | none_match '\.debug_'
  objdump -h "$1" | grep '\.gnu_debuglink'
  objdump -h "${1%.*}.debug" | grep '\.debug_info'
}
