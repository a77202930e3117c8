# What scripts/play-scene --check does: looks at the program's windows from outside, as a person would.
# shellcheck shell=bash

# before_deadline COMMAND...: tries until it succeeds; fails when it never does.
before_deadline() {
    local end=$((SECONDS + patience))
    until "$@"; do
        [ "$SECONDS" -lt "$end" ] || return 1
        sleep 0.1
    done
}

fail() {
    failures=$((failures + 1))
    echo "FAILED: $*"
    import -window root "$shots/failed-$failures.png"
}

# windows_of_type TYPE: the program's visible windows of that type, NORMAL for the main window, UTILITY for a popup.
windows_of_type() {
    local window
    for window in $(xdotool search --onlyvisible --pid "$program" 2>/dev/null); do
        xprop -id "$window" _NET_WM_WINDOW_TYPE 2>/dev/null | grep -q "= _NET_WM_WINDOW_TYPE_$1\b" && echo "$window"
    done
    return 0
}

find_main() {
    main=$(windows_of_type NORMAL | head -n 1)
    [ -n "$main" ]
}

find_popup() {
    popup=$(windows_of_type UTILITY | head -n 1)
    [ -n "$popup" ]
}

find_message() {
    message=$(windows_of_type NORMAL | grep -vx "$main" | head -n 1)
    [ -n "$message" ]
}

message_is_gone() {
    ! find_message
}

popup_is_gone() {
    ! find_popup
}

# The icons in the tray, and its own hidden helper window.
tray_windows() {
    xwininfo -tree -id "$tray" | grep -c '^ \{5\}0x'
}

tray_has() {
    [ "$(tray_windows)" -eq "$1" ]
}

# click X Y: at that many percent of the main window's width and height.
click() {
    local WIDTH HEIGHT
    eval "$(xdotool getwindowgeometry --shell "$main" | grep -E '^(WIDTH|HEIGHT)=')"
    xdotool mousemove --window "$main" $((WIDTH * $1 / 100)) $((HEIGHT * $2 / 100)) click 1
}

# Nothing is marked in a picture: a click below the rows, then one into the last caller's bar, which shows no cursor.
unmark() {
    click 50 80
    click 50 18
}

# turn_pages KEY...: the tabs follow the keys only while something below them has the focus.
turn_pages() {
    click 50 80
    xdotool key "$@"
}

# All that can be marked and copied where the click went: a page's text, or the rows of the grid, the newest first.
copied_text() {
    click 50 80
    xdotool key ctrl+a ctrl+c
    timeout 2 xclip -selection clipboard -out 2>/dev/null || true
}

newest_row_has() {
    row=$(copied_text | head -n 1)
    [[ $row == *"$1"* ]]
}

page_has() {
    [[ $(copied_text) == *"$1"* ]]
}

log_has_twice() {
    [ "$(grep -cF "$1" "$data/Runlog.txt")" -eq 2 ]
}

shot() {
    import -window "$1" "$shots/$2.png"
}

# The standing that the popup's colours tell: the greatest of the areas of pure red, black and green.
standing_of_popup() {
    import -window "$popup" png:- | convert png:- -format '%c' histogram:info:- | sort -rn |
        sed -n -E 's/.*#FF0000(FF)?\b.*/VIP/p; s/.*#000000(FF)?\b.*/black-listed/p; s/.*#00FF00(FF)?\b.*/ordinary/p' |
        head -n 1
}

popup_stands_as() {
    find_popup && standing=$(standing_of_popup) && [ "$standing" = "$1" ]
}

# A plain desktop, so that pictures of two windows do not stand on black.
color_desktop() {
    convert -size 64x64 xc:'#8a97a8' png:- | display -window root png:- 2>/dev/null || true
}

# step_shows_call TEXT STANDING [PICTURE]: a new row with that text, and a popup of that standing or "none".
step_shows_call() {
    before_deadline newest_row_has "$1" || fail "no grid row shows $1; the newest is: $row"
    unmark
    row="grid row \"$(tr -s '\t' ' ' <<<"$row")\""
    if [ "$2" = none ]; then
        patience=2 before_deadline find_popup && fail "a popup showed"
        echo "    -> $row, no popup"
    elif standing= && before_deadline popup_stands_as "$2"; then
        echo "    -> $row, popup: $standing"
        photograph_popup "$3"
    else
        fail "no popup shows the caller as $2${standing:+, but as $standing}"
    fi
}

photograph_popup() {
    shot "$popup" "$1"
    import -window root "$shots/screen-with-$1.png"
    timeout 5 xdotool windowactivate --sync "$popup" key Escape || true
    before_deadline popup_is_gone || fail "the popup did not close"
}

step_shows_message() {
    if before_deadline find_message; then
        shot "$message" message-received
        timeout 5 xdotool windowactivate --sync "$message" key Escape || true
        before_deadline message_is_gone || fail "the message's window did not close"
    else
        fail "no window shows the message"
    fi
    turn_pages ctrl+Tab ctrl+Tab
    before_deadline page_has "$1" || fail "the page of messages does not show it"
    unmark
    shot "$main" message
    echo "    -> on the page of messages: \"$1\""
    turn_pages ctrl+shift+Tab ctrl+shift+Tab
}

step_shows_nothing() {
    before_deadline log_has_twice "$1" || fail "the run log does not hold it twice"
    echo "    -> nothing but two entries in the run log"
}

check_step() {
    case "$1" in
    "An unknown caller") step_shows_call 2125550188 none ;;
    "An ordinary customer") step_shows_call 5035550106 ordinary popup-ordinary ;;
    "A VIP") step_shows_call 6175550101 VIP popup-vip ;;
    "A black-listed caller") step_shows_call 9735550115 black-listed popup-blacklist ;;
    "A customer whose pop-up flag is off") step_shows_call 2145550129 none ;;
    # Its number stands further left in characters than in columns: it is found by its column.
    "A line with a Chinese name") step_shows_call 总机（前台） ordinary popup-line-chinese && shot "$main" line-chinese ;;
    "A short message") step_shows_message "Lunch is here. The second line is free again." ;;
    "A channel status report") step_shows_nothing "Channel 002: on hook" ;;
    *) fail "nobody has said what this step should show" ;;
    esac
}

photograph_pages() {
    unmark
    shot "$main" main-after-scene
    turn_pages ctrl+Tab
    before_deadline page_has "CHANNELSTATUS" || fail "the page of the run log does not show the last datagram"
    unmark
    shot "$main" run-log
    turn_pages ctrl+shift+Tab
    click 92 8 # the button "Small view"
    before_deadline is_small || fail "the window did not take its small shape"
    shot "$main" small-shape
}

is_small() {
    local HEIGHT
    eval "$(xdotool getwindowgeometry --shell "$main" | grep '^HEIGHT=')"
    [ "$HEIGHT" -lt 300 ]
}

has_ended() {
    ! kill -0 "$program" 2>/dev/null
}

end_program() {
    "$bin/calldesk-sim" --shutdown --quiet
    before_deadline has_ended || fail "SHUTDOWNALL did not end the program"
    local status=0
    wait "$program" || status=$?
    [ "$status" -eq 0 ] || fail "the program ended with status $status"
    local last
    last=$(tail -n 1 "$data/Runlog.txt" | tr -d '\r')
    awk -F '\t' '$1 == "ExitSys" { print $2 }' data/lang/*/*.tsv | grep -qxF "${last#*>  }" ||
        fail "the run log does not end with the end of the program but with: $last"
    before_deadline tray_has "$empty_tray" || fail "something is left in the tray"
    echo "SHUTDOWNALL"
    echo "    -> the program ended, the run log's last line is \"${last#*>  }\", the tray is empty again"
}

find_tray() {
    tray=$(xdotool search --onlyvisible --name '^panel$' 2>/dev/null | head -n 1)
    [ -n "$tray" ]
}

start_tray() {
    trayer --edge top --align right --SetDockType true --widthtype request --height 24 >/dev/null 2>&1 &
    before_deadline find_tray || { echo "no tray started" >&2; exit 1; }
    empty_tray=$(tray_windows)
}

check_scene() {
    local line steps=0
    rm -rf "$shots"
    mkdir -p "$shots" "$trial/runtime"
    chmod 700 "$trial/runtime"
    export XDG_RUNTIME_DIR=$trial/runtime
    color_desktop
    start_tray
    start_program
    before_deadline find_main || { echo "the main window did not show" >&2; exit 1; }
    before_deadline tray_has $((empty_tray + 1)) || fail "the tray has no icon of the program"
    shot "$main" main-empty
    while IFS= read -r line; do
        echo "${line#*>  }"
        check_step "${line#*>  }"
        steps=$((steps + 1))
    done < <(play)
    [ "$steps" -eq "$(grep -c -- --say data/sample/scene.txt)" ] || fail "only $steps steps of the scene were played"
    photograph_pages
    end_program
    trap - EXIT
    echo "Pictures: $shots"
    [ "$failures" -eq 0 ]
}
