#!/usr/bin/env bash
# One entry point for setting up, building, running and testing Tavrel on Debian 12.
#   ./build.sh run    install what is missing, build Release, open the editor on the bundled sample
#   ./build.sh test   install what is missing, build Debug with ASan+UBSan, run every test
#   ./build.sh deps   only install the missing Debian packages
#   ./build.sh build  install what is missing and build Release without running anything
#   ./build.sh format check that the C++ sources are formatted (clang-format)
#   ./build.sh screenshot [PNG]     the editor on the sample under Xvfb, photographed
#   ./build.sh verify-clean [ROOT]  both commands above in a fresh debootstrap root (as root)
set -euo pipefail

here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
jobs="${TAVREL_JOBS:-2}"

packages=(
    # Building.
    g++ cmake ninja-build pkg-config ccache
    qt6-base-dev qt6-base-dev-tools qt6-5compat-dev qt6-multimedia-dev libqt6opengl6-dev libgl-dev
    libluabind-dev liblua5.2-dev libuchardet-dev libboost-dev
    # Inflates the PNG sprites of SFF files in one call, much quicker than zlib's streaming inflate.
    libdeflate-dev
    # Tests, benchmarks, the format check and the fuzz targets.
    libbenchmark-dev clang clang-format libclang-rt-14-dev
    # Running. Qt Multimedia 6.4 plays sounds through GStreamer by default; without these plugins its
    # player can't be made (the editor then tries FFmpeg, and says so when neither works):
    #   gstreamer1.0-plugins-base  audioconvert, audioresample, volume, decodebin and the video
    #                              converters that Qt's player builds even for sound
    #   gstreamer1.0-plugins-good  wavparse (WAV files) and autoaudiosink, which picks the output
    #   gstreamer1.0-alsa          alsasink, the output where no sound server runs
    #   gstreamer1.0-pulseaudio    pulsesink, the output of desktops with PulseAudio or PipeWire
    gstreamer1.0-plugins-base gstreamer1.0-plugins-good gstreamer1.0-alsa gstreamer1.0-pulseaudio
    # Fonts for the window and the code editor, and one that holds Chinese and Japanese, which many
    # users' comments and names are written in.
    fontconfig fonts-dejavu-core fonts-wqy-microhei
)

# Only for looking at the window as a user sees it (./build.sh screenshot).
look_packages=(xvfb xdotool imagemagick)
# The end-to-end test drives the real window on a virtual X server by keys.
test_packages=(xvfb xdotool)

as_root() {
    if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi
}

install_missing() {
    local missing=()
    local wanted=("${packages[@]}" "$@")
    for package in "${wanted[@]}"; do
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
    # The tracked sources; without git (a copied tree), every source outside the build folders.
    files=$(cd "$here" && git ls-files '*.cpp' '*.h' 2>/dev/null ||
        find . -path ./build -prune -o \( -name '*.cpp' -o -name '*.h' \) -print)
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

build_release() {
    install_missing
    cmake -S "$here" -B "$here/build/release" -G Ninja -DCMAKE_BUILD_TYPE=Release -DTAVREL_BUILD_TESTS=OFF
    cmake --build "$here/build/release" -j "$jobs"
}

# The editor on the sample under a virtual display, photographed after it settles: how a user sees it.
screenshot() {
    local out="${1:-$here/build/screenshot.png}"
    install_missing "${look_packages[@]}"
    build_release
    local display=":${TAVREL_DISPLAY:-97}"
    Xvfb "$display" -screen 0 1280x800x24 >/dev/null 2>&1 &
    local xvfb=$!
    sleep 1
    DISPLAY="$display" "$here/build/release/bin/tavrel" "$here/build/release/bin/samples/Roan/Roan.def" &
    local editor=$!
    sleep "${TAVREL_SETTLE_SECONDS:-6}"
    DISPLAY="$display" import -window root "$out"
    kill "$editor" 2>/dev/null || true
    wait "$editor" 2>/dev/null || true
    kill "$xvfb" 2>/dev/null || true
    echo "Screenshot: $out"
}

# Proves the two README commands on a fresh Debian 12: a minimal root made by debootstrap, this
# repository and ../shared copied in side by side at the root's top, then ".ci/run" and "./build.sh run"
# inside it (the editor runs offscreen and must still be running after 30 seconds).
verify_clean() {
    local root="${1:-$here/build/cleanroot}"
    local name
    name="$(basename "$here")"
    install_missing debootstrap
    if [ ! -x "$root/bin/bash" ]; then
        as_root debootstrap --variant=minbase bookworm "$root" http://deb.debian.org/debian
    fi
    # A fresh tree each time, as a new user's clone would be; ccache inside the root keeps a second run
    # quick.
    as_root rm -rf "${root:?}/$name" "${root:?}/shared"
    as_root mkdir -p "$root/$name"
    (cd "$here" && git ls-files -z --cached --others --exclude-standard | tar --null -T - -cf -) |
        as_root tar -xf - -C "$root/$name"
    if [ -d "$here/../shared" ]; then (cd "$here/.." && tar -cf - shared) | as_root tar -xf - -C "$root"; fi
    as_root cp /etc/resolv.conf "$root/etc/resolv.conf"
    for fs in proc sys dev dev/pts; do
        mountpoint -q "$root/$fs" || as_root mount --bind "/$fs" "$root/$fs"
    done
    local status=0
    as_root chroot "$root" env -i HOME=/ PATH="$PATH" TERM=dumb TAVREL_TREE="/$name" bash -c '
        set -e
        cd "$TAVREL_TREE"
        bash .ci/run
        ./build.sh build
        set +e
        # Without the close question, so that the end of the time closes the editor in order.
        config="$(mktemp -d)"
        echo "<configuration><config name=\"confirm_close\" value=\"false\"/></configuration>" \
            >"$config/config.xml"
        TAVREL_CONFIG_DIR="$config" QT_QPA_PLATFORM=offscreen timeout -k 10 30 ./build.sh run
        status=$?
        [ "$status" -eq 124 ] && echo "Clean root: the editor was still running after 30 seconds." && exit 0
        echo "Clean root: the editor ended with status $status"; exit 1' || status=$?
    for fs in dev/pts dev sys proc; do as_root umount "$root/$fs" || true; done
    return $status
}

case "${1:-}" in
deps)
    install_missing
    ;;
build)
    build_release
    ;;
run)
    build_release
    # The build generates the sample character beside the executables.
    exec "$here/build/release/bin/tavrel" "$here/build/release/bin/samples/Roan/Roan.def"
    ;;
screenshot)
    screenshot "${2:-}"
    ;;
verify-clean)
    verify_clean "${2:-}"
    ;;
test)
    install_missing "${test_packages[@]}"
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
    sed -n '2,10p' "$0" | sed 's/^# \{0,1\}//'
    exit 2
    ;;
esac
