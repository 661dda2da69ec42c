#!/usr/bin/env bash
# One entry point for setting up, building, running and testing Tavrel on Debian 12.
#   ./build.sh run    install what is missing, build Release, open the editor on the bundled sample
#   ./build.sh test   install what is missing, build Debug with ASan+UBSan, run every test
#   ./build.sh deps   only install the missing Debian packages
#   ./build.sh format check that the C++ sources are formatted (clang-format)
set -euo pipefail

here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
jobs="${TAVREL_JOBS:-2}"

packages=(
    g++ cmake ninja-build pkg-config ccache
    qt6-base-dev qt6-base-dev-tools qt6-5compat-dev qt6-multimedia-dev libqt6opengl6-dev libgl-dev
    libluabind-dev liblua5.2-dev libuchardet-dev libboost-dev
    libbenchmark-dev clang clang-format libclang-rt-14-dev
)

as_root() {
    if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi
}

install_missing() {
    local missing=()
    for package in "${packages[@]}"; do
        if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed"; then
            missing+=("$package")
        fi
    done
    if [ "${#missing[@]}" -gt 0 ]; then
        echo "Installing: ${missing[*]}"
        as_root apt-get update -qq
        as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}"
    fi
}

check_format() {
    local files
    files=$(cd "$here" && git ls-files '*.cpp' '*.h' 2>/dev/null || find . -name '*.cpp' -o -name '*.h')
    (cd "$here" && echo "$files" | xargs clang-format --dry-run --Werror)
    echo "Formatting: all sources are clang-formatted."
}

# Every parser of untrusted files has a libFuzzer target; each runs for a short time on its seeds.
run_fuzzers() {
    local targets
    targets=$(cd "$here/tests/fuzz" && ls fuzz_*.cpp 2>/dev/null | sed 's/\.cpp$//' || true)
    if [ -z "$targets" ]; then return 0; fi
    if ! command -v clang++ >/dev/null; then
        echo "Fuzzing: skipped, clang++ is not installed"
        return 0
    fi
    local fuzz="$here/build/fuzz"
    CC=clang CXX=clang++ cmake -S "$here" -B "$fuzz" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
        -DTAVREL_BUILD_FUZZ=ON -DTAVREL_BUILD_TESTS=OFF
    cmake --build "$fuzz" -j "$jobs" --target tavrel_fuzz
    local seconds="${TAVREL_FUZZ_SECONDS:-30}"
    for target in $targets; do
        local corpus
        corpus=$(mktemp -d)
        if [ -d "$here/tests/fuzz/corpus/$target" ]; then cp -r "$here/tests/fuzz/corpus/$target/." "$corpus/"; fi
        echo "Fuzzing $target for ${seconds}s"
        "$fuzz/fuzz/bin/$target" -max_total_time="$seconds" -rss_limit_mb=2048 -timeout=10 \
            -print_final_stats=1 "$corpus" 2>"$fuzz/$target.log" || {
            tail -n 60 "$fuzz/$target.log"
            echo "Fuzzing: $target failed"
            return 1
        }
        tail -n 3 "$fuzz/$target.log"
        rm -rf "$corpus"
    done
}

case "${1:-}" in
deps)
    install_missing
    ;;
run)
    install_missing
    cmake -S "$here" -B "$here/build/release" -G Ninja -DCMAKE_BUILD_TYPE=Release -DTAVREL_BUILD_TESTS=OFF
    cmake --build "$here/build/release" -j "$jobs"
    # The build generates the sample character beside the executables.
    exec "$here/build/release/bin/tavrel" "$here/build/release/bin/samples/Roan/Roan.def"
    ;;
test)
    install_missing
    check_format
    build="$here/build/asan"
    cmake -S "$here" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DTAVREL_SANITIZE=ON -DTAVREL_WERROR=ON \
        -DTAVREL_BUILD_BENCH=ON
    cmake --build "$build" -j "$jobs"
    export QT_QPA_PLATFORM=offscreen
    export ASAN_OPTIONS="detect_leaks=0:abort_on_error=1:${ASAN_OPTIONS:-}"
    export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1:suppressions=$here/tests/ubsan.supp:${UBSAN_OPTIONS:-}"
    run_fuzzers
    ctest --test-dir "$build" --output-on-failure -j "$jobs"
    ;;
format)
    check_format
    ;;
*)
    sed -n '2,7p' "$0" | sed 's/^# \{0,1\}//'
    exit 2
    ;;
esac
