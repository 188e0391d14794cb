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
function open_topic() {
    print "/// @addtogroup room_" room "\n/// @{\n"
}
{
    change = depth_change($0)
    # The topic is opened within each namespace, for it takes in a namespace as such alone, and around what stands outside.
    if (depth == 0 && !is_global && $0 ~ /^(\/\/\/|class|struct|enum|template|inline|using)/) {
        open_topic()
        is_global = 1
    } else if (depth == 0 && is_global && $0 ~ /^namespace/) {
        print "/// @}"
        is_global = 0
    }
    if (depth == 1 && change == -1 && in_namespace) {
        print "/// @}"
        in_namespace = 0
    }
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
        if (!is_first && $0 !~ /\/\/\/<|~/)
            print comment
        is_first = 0
    }
    print
    was_comment = is_comment
    depth += change
    ends_declaration = is_comment || $0 ~ /[;}] *(\/\/.*)?$|^ *$|: *$/
    if (depth == 1 && change == 1 && $0 ~ /^namespace/) {
        open_topic()
        in_namespace = 1
    }
}
END {
    if (is_global)
        print "/// @}"
}
