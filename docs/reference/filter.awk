# Turns the plain comments of the headers into ones that doxygen reads. The headers are written to be read as they are; this
# gives each declaration the comment that stands above its run of lines, and each section a group of its own.

function title_of(line) {
    sub(/^\/\* -+ /, "", line)
    sub(/ *-* *(\*\/)?$/, "", line)
    return line
}
function id_of(title) {
    title = tolower(title)
    gsub(/[^a-z0-9]+/, "_", title)
    return prefix title
}
# The text of a comment, ready for Markdown, where an empty line must stand before what is to keep its columns.
function plain(text,    lines, count, i) {
    count = split(text, lines, "\n")
    text = lines[1]
    for (i = 2; i <= count; ++i)
        text = text (lines[i] ~ /^    / && lines[i - 1] ~ /^ ? ? ?[^ ]/ ? "\n\n" : "\n") lines[i]
    gsub(/\*out/, "`*out`", text)
    gsub(/\*w or \*h/, "`*w` or `*h`", text)
    gsub(/\*first, \*last/, "`*first`, `*last`", text)
    return text
}
function close_group() {
    if (group != "")
        print "/** @} */"
    group = ""
}
function open_group(heading, text) {
    close_group()
    sub(/\..*$/, "", heading)
    group = id_of(heading)
    print "/** @defgroup " group " " heading "\n" plain(text) "*/\n/** @{ */"
}

FNR == 1 {
    file = FILENAME
    sub(/.*\//, "", file)
    prefix = file
    gsub(/[^a-z]/, "_", prefix)
    prefix = prefix "_"
    sections = file ~ /\.h$/
}

# A comment of its own lines. It ends where the marker stands; its text goes to what follows, up to an empty line.
!inside && /^ *\/\*/ && !/clang-format/ {
    inside = 1
    text = ""
    heading = $0 ~ /^\/\* -+ / ? title_of($0) : ""
    rest = $0
    sub(/^ *\/\* ?/, "", rest)
    if (heading != "") {
        rest = ""
        if (index(heading, ": ")) {
            rest = substr(heading, index(heading, ": ") + 2)
            sub(/: .*/, "", heading)
        }
    }
    finished = $0 ~ /\*\/ *$/
    sub(/ *\*\/ *$/, "", rest)
    text = rest "\n"
    if (!finished)
        next
}
inside && !finished {
    line = $0
    finished = line ~ /\*\/ *$/
    sub(/ *\*\/ *$/, "", line)
    sub(/^ *\* ?/, "", line)
    text = text line "\n"
    if (!finished)
        next
}
inside {
    inside = finished = 0
    if (!opened) {
        print "/** @file\n" plain(text) "*/"
        if (file == "vexlor.h")
            print "/** @mainpage libvexlor\n" plain(text) "*/"
        opened = 1
        text = ""
    } else if (heading != "" && sections)
        open_group(heading, text)
    if (heading == "")
        above = text
    else
        above = sections ? text : ""
    next
}

/^ *$/ { above = "" }

# The end of a section's scope: braces that close what the file opened.
/^#ifdef __cplusplus/ && group != "" && ++ends { close_group() }

{
    # In the C header every declaration of a run, and none of the lines that go on with one; elsewhere the next line.
    starts = sections ? !continued && /^(VEXLOR_API|typedef|struct|#define)/ : 1
    if (above !~ /^\n*$/ && starts) {
        print "/** " plain(above) "*/"
        if (!sections || /^(typedef )?struct/)
            above = ""
    }
    if (/^(VEXLOR_API|typedef)/ || continued)
        continued = $0 !~ /[;{]/
    # Words behind a declaration.
    if (match($0, /[;,0-9uf)}] *\/\* .*\*\/ *$/) && !/^ *\/\*/) {
        words = substr($0, RSTART + 1)
        code = substr($0, 1, RSTART)
        sub(/^ *\/\* /, "", words)
        sub(/ *\*\/ *$/, "", words)
        print code " /**< " plain(words) " */"
    } else
        print
}

END { close_group() }
