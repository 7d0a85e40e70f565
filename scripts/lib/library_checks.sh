# What the DLL promises to the Windows that loads it, read from the file.

library="$build/corvane_win32.dll"

check_library() {
  check "DLL: imports only Windows' own libraries" imports_only_windows
  check "DLL: imports no function that an older Windows lacks" imports_only_old_functions
  check "DLL: exports every native that Java declares, and nothing else" exports_the_natives
  check "DLL: no execution of data, random addresses" is_hardened
  check "DLL: carries its version" carries_its_version
  check "DLL: stripped, its symbols beside it" is_stripped
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
  [ -n "$(library_names)" ]
  library_names | none_match -vi "^($own)\.dll$"
}

library_names() {
  objdump -p "$library" | sed -n 's/^\s*DLL Name: //p'
}

# Only what stands in the list: a compiler or its headers may bring in more than the code names.
imports_only_old_functions() {
  [ -n "$(imported_functions)" ]
  if imported_functions | grep -vxF -f "$project/scripts/lib/imports.txt"; then return 1; fi
}

imported_functions() {
  objdump -p "$library" |
    awk '/DLL Name:/ { names = 1; next } NF < 3 { names = 0 } names && $1 != "vma:" { print $3 }'
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
    names { print $NF }'
}

is_hardened() {
  local flag
  for flag in HIGH_ENTROPY_VA DYNAMIC_BASE NX_COMPAT; do
    objdump -p "$library" | grep "$flag"
  done
}

carries_its_version() {
  x86_64-w64-mingw32-strings -e l "$library" | grep -A 1 -x ProductVersion |
    grep -x -F "$(project_version)"
}

is_stripped() {
  objdump -h "$library" | none_match '\.debug_'
  objdump -h "$library" | grep '\.gnu_debuglink'
  objdump -h "$build/corvane_win32.debug" | grep '\.debug_info'
}
