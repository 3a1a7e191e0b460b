# SPDX-License-Identifier: MIT
# Prints the C++ examples of a text, each with the line at which it stands.
/^```cpp$/ { printf "// from line %d\n", FNR + 1; isExample = 1; next }
/^```/ { isExample = 0 }
isExample
