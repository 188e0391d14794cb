# What Doxygen reads of a header. All that it declares belongs to the topic of its room, and a comment stands for every
# declaration that follows it up to a blank line, another comment or the end of the class.

function depth_change(line) {
    sub(/\/\/.*/, "", line)
    gsub(/"[^"]*"|'[^']*'/, "", line)
    return gsub(/\{/, "", line) - gsub(/\}/, "", line)
}

BEGIN { ends_declaration = 1 }
FNR == 1 {
    room = FILENAME
    sub(/.*zvi\//, "", room)
    if (!sub(/\/[^\/]*$/, "", room))
        room = "export"
    gsub(/\//, "_", room)
}
{
    change = depth_change($0)
    is_comment = $0 ~ /^ *\/\/\//
    if (is_comment) {
        # What it says is no command of Doxygen's, and no comment of C.
        gsub(/\\/, "&&")
        gsub(/\/\*\*\//, "\\&#47;**\\&#47;")
        comment = was_comment ? comment "\n" $0 : $0
        is_first = 1
        depth_of_comment = depth
    } else if ($0 ~ /^ *$/ && depth <= depth_of_comment || depth + change < depth_of_comment)
        comment = ""
    else if (comment != "" && depth == depth_of_comment && ends_declaration && $0 !~ /^ *(\}|#|\/\/)/) {
        if (!is_first && $0 !~ /\/\/\/</)
            print comment
        is_first = 0
    }
    print
    was_comment = is_comment
    depth += change
    ends_declaration = is_comment || $0 ~ /[;}] *(\/\/.*)?$|^ *$|: *$/
    if ($0 ~ /^#pragma once/)
        print "/// @addtogroup room_" room "\n/// @{"
}
END { print "/// @}" }
