#include "OptionTable.h"

namespace sim {

const char helpNotes[] = R"(
In every text {n} is the running number of the datagram, {n:4} the same with zeros in front.

A line of a scene file holds a time in seconds (12.5 from the start, or +3 after the line before) and the options of
one datagram; a line that begins with # is a comment:
    0    --say "An unknown caller" --number 2125550199
    +5   --message "Lunch is here" --to ALL

Of a run log those lines are sent that hold a datagram of a known kind, each call once though it is logged twice;
SHUTDOWNALL is left out. Of any other file each line that is not empty is one datagram.

Examples:
    calldesk-sim --number 2125550123 --name "Ada Park" --match 1 --vip
    calldesk-sim --number 5550100 --line 总机前台 --code-page 936
    calldesk-sim --number "555{n:4}" --count 200000 --rate 20000
    calldesk-sim --number "555{n:5}" --burst 10000
    calldesk-sim --replay Runlog.txt --rate 2
    calldesk-sim --listen --seconds 60
    calldesk-sim --message "Back at three" --to ALL
    calldesk-sim --shutdown

Exit status: 0 done, 1 a file or the network failed or nobody listens on the port, 2 wrong use.
)";

} // namespace sim
