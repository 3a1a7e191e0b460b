#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Makes the pictures of docs/guide.md anew, from the steps in pictures.txt; needs no display. A step that does not work
# is named and left out, and the status is 1 then.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/../../cmake/commands.sh"

# picture NAME SCRIPT: the window on the device of the last chapter, after a script.
picture()
{
    echo "$2" > "$tables/script.tcl"
    "$root/build/dev/bin/zelchip" --fresh --script "$tables/script.tcl" --snapshot "$root/docs/guide/$1.png" \
        --size 1100x760 "$tables/mydevice"
}

install_packages "${build_packages[@]}"
build dev guidepictures
build dev zelchip
status=0
"$root/build/dev/tests/guidepictures" "$root/docs/guide/pictures.txt" "$root/docs/guide" || status=1

tables=$(mktemp -d)
trap 'rm -r "$tables"' EXIT
awk -v columns=16 -v rows=14 -f "$root/docs/guide/tables.awk" > "$tables/sites.csv"
for table in resources connections; do
    awk -v what=$table -f "$root/docs/guide/tables.awk" > "$tables/$table.csv"
done
"$root/build/dev/bin/zelchip" import -o "$tables/mydevice" --sites "$tables/sites.csv" \
    --resources "$tables/resources.csv" --connections "$tables/connections.csv"
export QT_QPA_PLATFORM=offscreen
picture owndevice "zel_view zoom CLB_X4Y0 CLB_X7Y3"
picture ownplan "zel_tree expand; zel_resource place -auto; zel_view connections all; zel_view zoom CLB_X2Y0 CLB_X7Y4"
exit $status
