# SPDX-License-Identifier: MIT
# Writes the tables of a made-up device, for docs/guide.md and for trying the import:
#     awk -v columns=16 -v rows=14 -f docs/guide/tables.awk > sites.csv
# Tiles in columns of one kind, as on a programmable device, each with sites and these with elements; a tenth of a
# million sites are 80 columns and 86 rows, 2.4 million 480 and 333. With -v flat=1 there are elements only, without
# parents; with -v what=resources and -v what=connections, tables that go with the sites.

function site(name, kind, x, y, width, height, parent, group)
{
    print name "," kind "," x "," y "," width "," height "," parent "," group
}

function logic(tile, x, y, group,    s, e, name)
{
    site(tile, "CLB", x, y, 10, 12, "", group)
    for (s = 0; s < 2; ++s) {
        name = tile "_S" s
        site(name, "SLICE", x + 0.5 + 4.6 * s, y + 1.6, 4.4, 10, tile, group)
        for (e = 0; e < 4; ++e) {
            site(name "_L" e, "LUT", x + 0.8 + 4.6 * s, y + 3 + 2.1 * e, 2, 1.7, name, group)
            site(name "_F" e, "REG", x + 3.1 + 4.6 * s, y + 3 + 2.1 * e, 1.5, 1.7, name, group)
        }
    }
}

function block(tile, kind, part, parts, x, y, width, group,    i)
{
    site(tile, kind, x, y, width, 12, "", group)
    for (i = 0; i < parts; ++i)
        site(tile "_" part i, part, x + 0.6, y + 1.8 + i * 10 / parts, width - 1.2, 10 / parts - 0.4, tile, group)
}

function column(c, x,    r, tile, group, kind)
{
    for (r = 0; r < rows; ++r) {
        tile = "X" c "Y" r
        group = "Q" int(2 * c / columns) int(2 * r / rows)
        if (c == 0 || c == columns - 1)
            block("IO_" tile, "IOB", "PAD", 3, x, r * 12.6, 8, group)
        else if (c % 8 == 3)
            block("BRAM_" tile, "BRAM", "RAM", 2, x, r * 12.6, 14, group)
        else if (c % 8 == 6)
            block("DSP_" tile, "DSP", "MULT", 2, x, r * 12.6, 12, group)
        else if (c == int(columns / 2))
            block("CLK_" tile, "CLOCK", "BUFG", 4, x, r * 12.6, 6, group)
        else if (!flat)
            logic("CLB_" tile, x, r * 12.6, group)
        else
            site("SLICE_" tile, "SLICE", x, r * 12.6, 10, 12, "", group)
    }
}

function widthOf(c)
{
    return c == 0 || c == columns - 1 ? 10 : c % 8 == 3 ? 15 : c % 8 == 6 ? 13 : c == int(columns / 2) ? 7 : 11
}

BEGIN {
    if (what == "resources") {
        print "name,kind,parent,site,fixed"
        print "cpu,,,,"
        for (i = 0; i < 8; ++i) {
            print "ram" i ",RAM,cpu," (i < 4 ? "BRAM_X3Y" i "_RAM0" : "") "," (i == 0)
            print "mult" i ",MULT,cpu," (i < 4 ? "DSP_X6Y" i "_MULT1" : "") ","
        }
    } else if (what == "connections") {
        print "from,to,rule"
        for (i = 0; i < 8; ++i)
            print "cpu/ram" i ",cpu/mult" i "," (i % 2 ? "near" : "")
    } else {
        print "name,kind,x,y,width,height,parent,group"
        x = 0
        for (c = 0; c < columns; ++c) {
            column(c, x)
            x += widthOf(c)
        }
    }
}
