# SPDX-License-Identifier: MIT
# What Doxygen reads in place of a header. Comments before and behind declarations become documentation; a comment over
# a paragraph of declarations goes for all of them.

function isComment(line) { return line ~ /^ *\/\/( |$)/ }

function documented(line)
{
    if (line ~ /^}/)
        return line
    if (isComment(line))
        sub(/\/\//, "///", line)
    else
        sub(/ \/\/ /, " ///< ", line)
    return line
}

# One paragraph: lines 1 to n of `lines`.
function flush(    first, i, single)
{
    first = 1
    while (first <= n && isComment(lines[first]))
        ++first
    # A group is made of whole declarations, none of which has a comment or a body of several lines of its own.
    single = first == 1 || first >= n
    for (i = first; i <= n; ++i) {
        if (isComment(lines[i]) || lines[i] ~ /{$|^ *[}{]|:$/)
            single = 1
    }
    for (i = 1; i <= n; ++i) {
        if (i == first && !single)
            print "///@{"
        print documented(lines[i])
    }
    if (!single)
        print "///@}"
    n = 0
}

NR == 1 && /SPDX/ { print ""; next }
/^$/ { flush(); print; next }
{ lines[++n] = $0 }
END { flush() }
