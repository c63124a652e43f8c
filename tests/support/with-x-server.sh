#!/usr/bin/env bash
# Runs a command on an X server of its own and takes everything down again.
#
#   with-x-server.sh desktop COMMAND [ARGUMENT...]   with a window manager and a compositor
#   with-x-server.sh bare COMMAND [ARGUMENT...]      with nothing but the server
#   with-x-server.sh plain COMMAND [ARGUMENT...]     with a server that has no redirected windows and
#                                                    no shared memory
#
# The screen is 1920x1080x24. Ends with the command's exit code. On a desktop,
# ORV_TEST_COMPOSITOR_PID names the compositor's process, and ORV_TEST_SCREEN_MEMORY the shared
# memory with the screen's pixels.
set -euo pipefail

ready_seconds=30
kind=${1:-}
if [[ $# -lt 2 || ! $kind =~ ^(desktop|bare|plain)$ ]]; then
    echo "usage: $0 desktop|bare|plain COMMAND [ARGUMENT...]" >&2
    exit 2
fi
shift

folder=$(mktemp -d)
started=()

stop() {
    local pid
    for pid in "${started[@]}"; do
        kill "$pid" 2>/dev/null || true
        wait "$pid" 2>/dev/null || true
    done
    rm -rf "$folder"
}
trap stop EXIT
trap 'exit 130' INT TERM

fail() {
    echo "$0: $1" >&2
    cat "$folder"/*.log >&2 || true
    exit 1
}

# Waits for one line on a pipe that some program writes when it is ready.
await() {
    local line
    read -r -t "$ready_seconds" line <>"$folder/$1.pipe" || fail "$1 did not get ready"
    echo "$line"
}

unset WAYLAND_DISPLAY SESSION_MANAGER DBUS_SESSION_BUS_ADDRESS XAUTHORITY

server_options=(-noreset -nolisten tcp)
if [[ $kind == plain ]]; then
    server_options+=(-extension Composite -extension MIT-SHM)
fi
if [[ $kind == desktop ]]; then
    server_options+=(-shmem)
fi
mkfifo "$folder/Xvfb.pipe"
Xvfb -displayfd 3 -screen 0 1920x1080x24 "${server_options[@]}" \
    3<>"$folder/Xvfb.pipe" >"$folder/Xvfb.log" 2>&1 &
started=("$!")
DISPLAY=":$(await Xvfb)"
export DISPLAY

if [[ $kind == desktop ]]; then
    ORV_TEST_SCREEN_MEMORY=$(sed -n 's/^screen 0 shmid //p' "$folder/Xvfb.log")
    export ORV_TEST_SCREEN_MEMORY
    mkfifo "$folder/openbox.pipe"
    openbox --config-file /etc/xdg/openbox/rc.xml \
        --startup "sh -c 'echo ready >\"$folder/openbox.pipe\"'" >"$folder/openbox.log" 2>&1 &
    started=("$!" "${started[@]}")
    await openbox >/dev/null

    # It goes to the background when it has begun to compose.
    picom --config /dev/null --backend xrender --no-fading-openclose -b \
        --write-pid-path "$folder/picom.pid" >"$folder/picom.log" 2>&1 ||
        fail "picom did not get ready"
    read -r ORV_TEST_COMPOSITOR_PID <"$folder/picom.pid"
    export ORV_TEST_COMPOSITOR_PID
    started=("$ORV_TEST_COMPOSITOR_PID" "${started[@]}")
fi

status=0
"$@" || status=$?
exit "$status"
