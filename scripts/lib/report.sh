# The count of what passed and what failed.

passed=0
failed=0
skipped=0

# check TEXT COMMAND...: a line of progress that counts; a failure does not end the script.
check() {
  progress "$@"
  if [ "$status" -eq 0 ]; then
    passed=$((passed + 1))
  else
    failed=$((failed + 1))
  fi
}

# run_tests: all of CTest, its lines shown as they come; what it counts is added.
run_tests() {
  local report="$build/test-report.xml" result=0 counts
  rm -f "$report"
  # All of the output is kept for the count: the summary stands at its end.
  (cd "$project" && ctest --preset mingw --output-junit "$report" --test-output-truncation head \
    --test-output-size-passed 10000000 --test-output-size-failed 10000000) || result=$?
  counts=$(/usr/bin/python3 "$project/scripts/lib/count_cases.py" "$report" || echo "0 1 0")
  add_counts "$counts" "$result"
}

# add_counts "PASSED FAILED SKIPPED" EXIT-CODE: a run that failed without a failed case has one.
add_counts() {
  local more_passed more_failed more_skipped
  read -r more_passed more_failed more_skipped <<<"$1"
  if [ "$2" -ne 0 ] && [ "$more_failed" -eq 0 ]; then more_failed=1; fi
  passed=$((passed + more_passed))
  failed=$((failed + more_failed))
  skipped=$((skipped + more_skipped))
}

# lines_in FOLDER...: of all files there but the list of mutants, which is no test but tests them.
lines_in() {
  (cd "$project" && find "$@" -type f ! -name mutants.txt ! -name '*.pyc' -exec cat {} +) | wc -l
}

# print_share: how much of the code the tests are; a quarter to a third is wanted.
print_share() {
  local tests all
  tests=$(lines_in tests)
  all=$(lines_in src java tests)
  printf '\nTests: %s of %s lines in src, java and tests (%s %%)\n' "$tests" "$all" \
    $((100 * tests / all))
}

# close_report EXIT-CODE: the closing line, and the exit code of the whole. A run that ended early,
# or in which nothing ran, has failed.
close_report() {
  if [ "$failed" -eq 0 ] && { [ "$1" -ne 0 ] || [ "$passed" -eq 0 ]; }; then
    echo "The run ended before its end (exit code $1); that counts as one failure."
    failed=1
  fi
  print_share
  local skips=''
  [ "$skipped" -eq 0 ] || skips=", $skipped skipped"
  printf '\n%s passed, %s failed%s\n' "$passed" "$failed" "$skips"
  [ "$failed" -eq 0 ] || exit 1
}
