#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# checkreference.sh SOURCE_TREE OUTPUT_DIRECTORY: makes the API reference; fails where something public has no comment.
set -euo pipefail
cd "$1"
mkdir -p "$2"
{
    cat docs/Doxyfile
    echo "OUTPUT_DIRECTORY = \"$2\""
} | doxygen -
