# SPDX-License-Identifier: MIT
# awk -v language=cpp -f examples.awk TEXT: prints the text's examples in a language; C++ ones each with the line at which
# it stands.
$0 == "```" language {
    if (language == "cpp")
        printf "// from line %d\n", FNR + 1
    isExample = 1
    next
}
/^```/ { isExample = 0 }
isExample
