# Holds the includes between folders against the arrows that docs/architecture.md lists:
#   awk -v root=. -f check_includes.awk docs/architecture.md file...
# A line of the list reads "room: room room"; a room may only include rooms listed above it, so the
# list has no circle. The rest of the arguments are the sources, as paths below the root.

function fault(text) { print text; faults++ }

function folder(path) { return match(path, /\/[^\/]*$/) ? substr(path, 1, RSTART - 1) : "." }

function exists(path,   ignored, result) {
    result = (getline ignored < (root "/" path)) >= 0
    close(root "/" path)
    return result
}

# Where the included file lives, or nothing when it is not ours.
function includedPath(name, quoted, from) {
    if (quoted) {
        if (name ~ /\.\./) { fault(FILENAME ": " name " goes up; write it from the root"); return "" }
        return exists(from "/" name) ? from "/" name : ""
    }
    if (exists("lib/" name)) return "lib/" name
    if (exists("testkit/" name)) return "testkit/" name
    return exists(name) ? name : ""
}

FNR == 1 && FILENAME ~ /architecture\.md$/ { reading = 1 }
FNR == 1 && FILENAME !~ /architecture\.md$/ { reading = 0; path = FILENAME; sub("^" root "/", "", path) }

reading && /^```/ { inside = ($0 == "```rooms"); next }
reading && inside {
    split($0, sides, ":")
    room = sides[1]
    count = split(sides[2], below, " ")
    for (i = 1; i <= count; i++) {
        if (!(below[i] in known)) fault("docs/architecture.md: " room " stands above " below[i] ", which is not listed before it")
        allowed[room, below[i]] = 1
    }
    known[room] = 1
    rooms++
}
reading { next }

match($0, /^#include [<"][^>"]*[>"]/) {
    quoted = substr($0, 10, 1) == "\""
    name = substr($0, 11, RLENGTH - 11)
    from = folder(path)
    target = includedPath(name, quoted, from)
    if (target == "") next
    to = folder(target)
    if (!(from in known)) { if (!(from in told)) fault(from " is not in the list of docs/architecture.md"); told[from] = 1; next }
    if (to == from && from !~ /^extensions/ && quoted != (path ~ /\.cpp$/)) fault(path ": sources include siblings as \"name.h\", headers by their whole path: " name)
    used[from, to] = 1
    if (to != from && !((from, to) in allowed)) fault(path ": includes " target ", and the arrow from " from " to " to " is not allowed")
}

END {
    for (arrow in allowed) if (!(arrow in used)) { split(arrow, ends, SUBSEP); fault("docs/architecture.md: no file of " ends[1] " includes one of " ends[2]) }
    if (!rooms) fault("docs/architecture.md lists no rooms")
    exit faults > 0
}
