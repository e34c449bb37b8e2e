# shellcheck shell=bash disable=SC2154
# Sourced by what runs Windows programs, after common.sh and windows.sh: a Wine session with a prefix and a display of its
# own. The caller's trap on EXIT calls end_wine_session.

wine=$project_dir/tools/windows/wine
wine_log=$project_dir/build/windows/wine.log
display_dir=''
display_server=''
wine_session=''

# One display for all programs: Wine's desktop belongs to the display of whichever is the first.
start_display() {
    local end=$((SECONDS + 20))
    display_dir=$(mktemp -d)
    Xvfb -displayfd 3 -screen 0 1280x1024x24 -fbdir "$display_dir" -nolisten tcp -noreset \
        3>"$display_dir/number" >/dev/null 2>&1 &
    display_server=$!
    until [ -s "$display_dir/number" ]; do
        [ "$SECONDS" -lt "$end" ] || fail_wine "Xvfb doesn't start."
        sleep 0.1
    done
    DISPLAY=:$(cat "$display_dir/number")
    export DISPLAY LETTERLIFT_ACCEPTANCE_DISPLAY=$DISPLAY
    export LETTERLIFT_ACCEPTANCE_FRAME_BUFFER=$display_dir/Xvfb_screen0
}

# The services of the start in which a prefix is made don't know of all services there are, so that they are ended then.
make_prefix() {
    say "Making a Wine prefix"
    "$wine" --server -k 2>/dev/null || true
    rm -rf "$WINEPREFIX"
    "$wine" wineboot --init >"$wine_log" 2>&1 || fail_wine "Wine can't make a prefix, see build/windows/wine.log."
    "$wine" --server -k 2>/dev/null || true
    "$wine" --server -w
}

# Wine ends its services with its last program, and one that is started just then meets two sets of them and waits for
# ever. So the first program stays; it reads from a pipe that ends with this script.
start_wine() {
    local end=$((SECONDS + 60))
    exec {pipe_to_wine}> >(exec "$wine" cmd >"$wine_log" 2>&1)
    printf 'ver\r\n' >&"$pipe_to_wine"
    until grep -q '^Microsoft Windows' "$wine_log"; do
        [ "$SECONDS" -lt "$end" ] || fail_wine "Wine doesn't start, see build/windows/wine.log."
        sleep 0.1
    done
    # Wine 8 would pass for Windows 7, on which Qt 6 doesn't run.
    "$wine" winecfg /v win10
    "$wine" cmd /c ver | grep -q 'Windows 10\.' || fail_wine "Wine isn't Windows 10 to its programs."
}

fail_wine() {
    say "$1"
    exit 1
}

# start_wine_session: with a new prefix in the build folder, in which the stand-in is registered. A prefix of the user's own
# isn't touched.
start_wine_session() {
    export WINEPREFIX=$project_dir/build/windows/wine LC_ALL=C.UTF-8
    start_display
    wine_session=$WINEPREFIX
    make_prefix
    start_wine
    WINEPATH=$(sed -n 's/^LETTERLIFT_WINEPATH:INTERNAL=//p' "$project_dir/build/windows/CMakeCache.txt")
    export WINEPATH
    "$wine" "$project_dir/build/windows/standin/outlook-stand-in.exe" /RegServer
}

# end_wine_session: does nothing if none was started, since without it the prefix may be somebody else's.
end_wine_session() {
    [ -z "$wine_session" ] || WINEPREFIX=$wine_session "$wine" --server -k 2>/dev/null || true
    if [ -n "$display_server" ]; then
        kill "$display_server" 2>/dev/null || true
        wait "$display_server" 2>/dev/null || true
    fi
    [ -z "$display_dir" ] || rm -rf "$display_dir"
}
