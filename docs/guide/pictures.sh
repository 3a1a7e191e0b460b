#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Makes the pictures of docs/guide.md anew, from the steps in pictures.txt; needs no display. A step that does not work
# is named and left out, and the status is 1 then.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/../../cmake/commands.sh"

install_packages "${build_packages[@]}"
build dev guidepictures
"$root/build/dev/tests/guidepictures" "$root/docs/guide/pictures.txt" "$root/docs/guide"
