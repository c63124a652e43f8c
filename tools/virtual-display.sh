# Sourced by ./run: a desktop that nobody sees, with a window manager, a compositor and one window.
# Each part runs in a session of its own, so that Ctrl-C reaches the program first.

virtual_folder=""
virtual_processes=()

# start_virtual_display: sets DISPLAY once all parts are ready; says which one could not start.
start_virtual_display() {
    virtual_folder=$(mktemp -d)
    mkfifo "$virtual_folder/display" "$virtual_folder/openbox"

    setsid Xvfb -displayfd 3 -screen 0 1920x1080x24 -noreset -nolisten tcp \
        3>"$virtual_folder/display" >"$virtual_folder/log" 2>&1 &
    virtual_processes+=($!)
    local number
    read -r number <"$virtual_folder/display" || fail_virtual_display "the X server"
    export DISPLAY=":$number"
    hsetroot -solid '#2f4f6f' >>"$virtual_folder/log" 2>&1 || fail_virtual_display "the background"

    setsid openbox --startup "sh -c 'echo ready >\"$virtual_folder/openbox\"'" \
        >>"$virtual_folder/log" 2>&1 3>&- &
    virtual_processes+=($!)
    wait_for_line "$virtual_folder/openbox" $! || fail_virtual_display "the window manager"

    setsid picom --config /dev/null --backend xrender --daemon \
        --write-pid-path "$virtual_folder/picom" >>"$virtual_folder/log" 2>&1 ||
        fail_virtual_display "the compositor"
    virtual_processes+=("$(cat "$virtual_folder/picom")")

    setsid xmessage -name desk -title "A window below" -geometry 900x500+510+290 \
        "This is another program's window, for drawing over." >>"$virtual_folder/log" 2>&1 &
    virtual_processes+=($!)
    wait_for_client $! || fail_virtual_display "the window below"
}

# wait_for_client PID: blocks until the window manager has a window, or the process has ended.
wait_for_client() {
    local line watcher
    exec 4< <(exec xprop -root -spy _NET_CLIENT_LIST)
    watcher=$!
    until [[ ${line:-} == *0x* ]]; do
        line=""
        read -r -t 1 line <&4 || kill -0 "$1" 2>/dev/null || return 1
    done
    kill "$watcher"
    exec 4<&-
}

# wait_for_line FIFO PID: blocks until a line comes, or the process has ended without one.
wait_for_line() {
    local line
    exec 4<>"$1"
    until read -r -t 1 line <&4; do
        kill -0 "$2" 2>/dev/null || return 1
    done
    exec 4>&-
}

fail_virtual_display() {
    echo "A virtual display was needed, but $1 did not start:" >&2
    cat "$virtual_folder/log" >&2
    exit 1
}

stop_virtual_display() {
    local index
    for ((index = ${#virtual_processes[@]} - 1; index >= 0; --index)); do
        kill "${virtual_processes[index]}" 2>/dev/null || true
    done
    wait
    virtual_processes=()
    if [[ -n $virtual_folder ]]; then
        rm -rf "$virtual_folder"
        virtual_folder=""
    fi
}
