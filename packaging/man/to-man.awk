# Makes a page of the manual from a page of Markdown, as far as this repository writes it: headings, paragraphs, lists,
# tables, indented examples, code, emphasis and links. Variables: title ("NORDKEEP 1"), date, version, name (the line of
# section NAME; empty where the page has one), options (a file that stands in for the line @OPTIONS@).

function inline(text) {
    gsub(/\\\|/, "\001", text)
    gsub(/\\/, "\\e", text)
    gsub(/\001/, "|", text)
    gsub(/-/, "\\-", text)
    gsub(/'/, "\\(aq", text)
    gsub(/\^/, "\\(ha", text)
    gsub(/~/, "\\(ti", text)
    while (match(text, /\[[^][]*\]\([^()]*\)/)) {
        link = substr(text, RSTART, RLENGTH)
        label = substr(link, 2, index(link, "](") - 2)
        text = substr(text, 1, RSTART - 1) label substr(text, RSTART + RLENGTH)
    }
    text = marked(text, "`", "\\fB")
    text = marked(text, "**", "\\fB")
    text = marked(text, "*", "\\fI")
    gsub(/\002/, "*", text)
    if (text ~ /^[.]/) text = "\\&" text
    return text
}

# Pairs of a mark become a font and back.
function marked(text, mark, font,   begin, end, out, part) {
    out = ""
    while ((begin = index(text, mark)) > 0) {
        end = index(substr(text, begin + length(mark)), mark)
        if (end < 2) break
        part = substr(text, begin + length(mark), end - 1)
        if (mark == "`") gsub(/\*/, "\002", part)
        if (mark == "`" && length(part) > 24) gsub(/[|;,]/, "&\\:", part)  # a line may break there
        out = out substr(text, 1, begin - 1) font part "\\fR"
        text = substr(text, begin + 2 * length(mark) + end - 1)
    }
    return out text
}

function leave(next_mode) {
    if (mode == "code" && next_mode != "code") print ".fi\n.RE"
    mode = next_mode
}

# One row of a table is one entry: its first cell, or its key, and what is told of it.
function row(line,   count, i, text) {
    gsub(/\\\|/, "\001", line)
    count = split(line, cell, /[ \t]*\|[ \t]*/)
    for (i = 1; i <= count; ++i) gsub(/\001/, "\\|", cell[i])
    if (mode != "table") {
        leave("table")
        delete heading
        for (i = 2; i < count; ++i) heading[i] = cell[i]
        return
    }
    if (line ~ /^\|[-|: ]*$/) return
    print ".TP"
    if (heading[2] == "Section" && heading[3] == "Key") {
        print inline(cell[3] " [" cell[2] "]")
        text = cell[count - 1] ". Default: " cell[4] "."
        if (heading[5] == "Whose") text = text " Whose: " cell[5] "."
        print inline(text)
        return
    }
    print inline(cell[2])
    text = cell[3]
    for (i = 4; i < count; ++i) if (cell[i] != "") text = text "; " cell[i]
    print text == "" ? "\\&" : inline(text)
}

function line_of_page(line) {
    if (line ~ /^# /) {
        if (name == "") return
        print ".SH NAME\n" name "\n.SH DESCRIPTION"
        mode = "text"
    } else if (line ~ /^### /) {
        leave("text"); print ".SS " inline(substr(line, 5))
    } else if (line ~ /^## /) {
        leave("text"); print ".SH " inline(toupper(substr(line, 4)))
    } else if (line ~ /^\|/) {
        row(line)
    } else if (line ~ /^    / && mode != "list") {
        if (mode != "code") print ".RS 4\n.nf"
        leave("code")
        sub(/^    /, "", line)
        gsub(/\\/, "\\e", line); gsub(/-/, "\\-", line); gsub(/'/, "\\(aq", line); gsub(/`/, "\\(ga", line)
        gsub(/\^/, "\\(ha", line); gsub(/~/, "\\(ti", line)
        print (line ~ /^[.]/ ? "\\&" line : line)
    } else if (line ~ /^[-*] /) {
        leave("list"); print ".IP \\(bu 2\n" inline(substr(line, 3))
    } else if (line ~ /^[0-9]+\. /) {
        leave("list")
        print ".IP " substr(line, 1, index(line, " ") - 1) " 4\n" inline(substr(line, index(line, " ") + 1))
    } else if (line == "") {
        if (mode == "code") { blank = 1; return }
        leave("gap")
    } else {
        if (mode != "text" && mode != "list") { leave("text"); print ".PP" }
        sub(/^ +/, "", line)
        print inline(line)
    }
}

BEGIN {
    print ".TH " title " \"" date "\" \"Nordkeep " version "\" \"Nordkeep\"\n.nh\n.ad l"
}
/^```/ { next }
$0 == "@OPTIONS@" {
    while ((getline option < options) > 0) line_of_page(option)
    next
}
{ line_of_page($0) }
