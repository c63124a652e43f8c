#!/usr/bin/env bash
# Installs a build into a folder of its own, builds a small host against it, and lets the host open
# and close annotation mode on a virtual display.
#   install_test.sh BUILD_FOLDER
set -euo pipefail
build=$1
tests=$(cd "$(dirname "$0")" && pwd)

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cmake --install "$build" --prefix "$work/prefix" >/dev/null
cmake -G Ninja -S "$tests/host" -B "$work/build" -D CMAKE_PREFIX_PATH="$work/prefix" \
    -D CMAKE_DISABLE_FIND_PACKAGE_Qt6=ON
cmake --build "$work/build"

mkdir "$work/home"
"$tests/../support/with-x-server.sh" desktop \
    env -u QT_QPA_PLATFORM -u XDG_DATA_HOME -u XDG_CONFIG_HOME HOME="$work/home" \
    "$work/build/host" | tee "$work/output"

expect_line() {
    grep -q "$1" "$work/output" || {
        echo "install_test: the host printed no line like: $1" >&2
        exit 1
    }
}
expect_line '^version [0-9]'
expect_line '^sent 8000 0 show 1$'
expect_line '^sent 8000 0 show 0$'

for file in bin/orv-replay bin/orvane-streamer include/OrvAnnotation/AnnotationController.h \
    share/OrvAnnotation/lessons/first-lesson.jsonl share/OrvAnnotation/pictures/pen_black_f_d@2x.png \
    share/OrvAnnotation/remote/index.html share/man/man1/orvane-streamer.1 \
    share/applications/com.orvane.Orvane-Streamer.desktop \
    share/icons/hicolor/scalable/apps/com.orvane.Orvane-Streamer.svg \
    lib/systemd/user/orvane-streamer.service; do
    [[ -e $work/prefix/$file ]] || {
        echo "install_test: $file was not installed" >&2
        exit 1
    }
done

library=$(find "$work/prefix" -name libOrvAnnotation.so)
kind='^[0-9a-f]+ [A-Za-z] (typeinfo for |typeinfo name for |vtable for )?'
api='(AnnotationController|DesktopPlatform|OrvAnnotationDelegate|send[A-Z]|get[A-Z])'
inside=$(nm --dynamic --defined-only --demangle "$library" | grep -E "${kind}orv::" |
    grep -Ev "${kind}orv::$api" || true)
[[ -z $inside ]] || {
    echo "install_test: the library offers what no header of it names:" >&2
    echo "$inside" >&2
    exit 1
}

"$work/prefix/bin/orvane-streamer" --version | grep -q '^Orvane Streamer with OrvAnnotation [0-9]'
