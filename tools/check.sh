# shellcheck shell=bash disable=SC2154
# The steps of `./dev check`; sourced by ./dev.

golden="$root/tests/golden/golden.txt"

cpu_has_v3() { grep -qw avx2 /proc/cpuinfo && grep -qw fma /proc/cpuinfo; }

# digest_of COMPILER LEVEL FLAG: builds the library and the digest program with these, and
# prints the file that holds its lines. The build goes through the project's own CMake code, so that
# the flags under test are those that the library ships with.
digest_of() {
  local tree="$root/build/digest/$1$2$3"
  cmake -S "$root" -B "$tree" -D CMAKE_CXX_COMPILER="$1" -D CMAKE_BUILD_TYPE=None \
    -D CMAKE_CXX_FLAGS="$2 $3" -D GEOMKIT_BUILD_EXAMPLES=OFF --log-level=WARNING >&2
  cmake --build "$tree" --parallel "$job_count" --target digest >&2
  "$tree/tests/golden/digest" >"$tree/digest.txt"
  echo "$tree/digest.txt"
}

# Every compiler, level and CPU family must print the same lines. The builds for the baseline do not
# choose wider registers at run time, so that their own kernels are run too; the golden lines come
# from a build that does.
check_digests() {
  local compiler level flag flags=(-DGEOMKIT_BASELINE_ONLY) lines reference="" failed=0
  if cpu_has_v3; then flags+=(-march=x86-64-v3); else echo "No x86-64-v3 here: left out"; fi
  for compiler in g++ clang++; do
    for level in -O0 -O3; do
      for flag in "${flags[@]}"; do
        say "Digest of $compiler $level $flag"
        lines="$(digest_of "$compiler" "$level" "$flag")"
        reference="${reference:-$lines}"
        diff -u "$reference" "$lines" || failed=1
      done
    done
  done
  [ $failed -eq 0 ] || fail "builds disagree; the lines above name the function families"
  say "Digest against tests/golden/golden.txt"
  grep -v math-library "$reference" | diff -u "$golden" - ||
    fail "answers have changed. When that is wanted: ./dev check --update, and say so in CHANGELOG.md"
}

# configure_library TREE: the library alone, by clang, with the compile commands that tools read.
configure_library() {
  cmake -S "$root" -B "$1" -D CMAKE_CXX_COMPILER=clang++ -D CMAKE_EXPORT_COMPILE_COMMANDS=ON \
    -D GEOMKIT_BUILD_EXAMPLES=OFF -D GEOMKIT_BUILD_TESTS=OFF --log-level=WARNING
}

check_tidy() {
  say "clang-tidy over the library"
  configure_library "$root/build/library"
  (cd "$root" && git ls-files -z -- 'geomKit/*.cpp' |
    xargs -0 -n 2 -P "$job_count" clang-tidy -p build/library --quiet) \
    2> >(grep -v 'warnings generated' >&2)
}

# Each public header compiled alone, by clang; `./dev test` does it with the default compiler.
check_headers() {
  say "Each header alone, by clang++"
  configure_library "$root/build/library"
  cmake --build "$root/build/library" --parallel "$job_count" --target all_verify_interface_header_sets
}

check_python() {
  say "Types of the Python package and programs"
  run_setup python
  (cd "$root" && git ls-files -z -- '*.py' ':!python/tests' ':!python/bench' |
    xargs -0 mypy --cache-dir build/mypy)
}

# The thread sanitizer sees only what runs concurrently: the tests named after threads.
check_threads() {
  build tsan thread_tests
  (cd "$root" && ctest --preset tsan -R Thread)
}

# From the same seed each time, so that a red run tells of the change rather than of luck; what a
# working copy found before is kept in its build folder and gone on from.
check_fuzz() {
  local fuzzer name seconds=60 fuzzers
  build fuzz
  fuzzers=("$root"/build/fuzz/bin/fuzz_*)
  for fuzzer in "${fuzzers[@]}"; do
    name="$(basename "$fuzzer")"
    say "Fuzzing with $name"
    mkdir -p "$root/build/fuzz/corpus/$name"
    "$fuzzer" -seed=1 -max_total_time=$((seconds / ${#fuzzers[@]})) -verbosity=0 -print_final_stats=1 \
      -artifact_prefix="$root/build/fuzz/" \
      "$root/build/fuzz/corpus/$name" "$root/tests/fuzz/corpus"
  done
}

check_docs() {
  say "Reference and pages"
  run_docs
}

update_records() {
  build release
  say "Writing tests/golden/golden.txt and tests/package/manifest.txt"
  "$root/build/release/tests/golden/digest" | grep -v math-library >"$golden"
  build release update_manifest
}

run_check() {
  local step steps=(digests tidy headers python threads fuzz docs)
  run_setup check
  if [ "${1:-}" = --update ]; then
    update_records
    return
  fi
  if [ $# -gt 0 ]; then steps=("$@"); fi
  for step in "${steps[@]}"; do
    declare -F "check_$step" >/dev/null || fail "unknown step '$step'"
    "check_$step"
  done
  say "check passed"
}
