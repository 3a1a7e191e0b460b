# SPDX-License-Identifier: MIT
"""Times how long KLayout takes to paint a drawing. Run by zelbench --peer as

    klayout -zz -r layoutviewer.py -rd shapes=FILE -rd width=1600 -rd height=1000

FILE has a line for each shape, in scene units: kind, fill colour, border colour or "-", then R x1 y1 x2 y2, L x1 y1 x2 y2,
P x y x y ... or T x y size text. Prints the least seconds of a repaint for each zoom, one per line: "at fit 0.061".
The calling thread paints alone, and without antialiasing, which KLayout does not have.
"""
import time

import pya

DBU = 0.001  # scene units
REPAINTS = 15
ZOOMS = (("at fit", 1.0), ("at 4x", 4.0), ("at 30x", 30.0))


def read_shapes(view, path):
    """Fills the view with one layer for each look, so that the colours are those of the drawing."""
    layout = pya.Layout()
    layout.dbu = DBU
    layers = {}
    top = layout.create_cell("TOP")
    with open(path, encoding="latin-1") as file:
        for line in file:
            kind, fill, border, *rest = line.split()
            look = (kind, fill, border)
            if look not in layers:
                layers[look] = layout.layer(len(layers) + 1, 0)
            shapes = top.shapes(layers[look])
            if kind == "T":
                x, y, size = map(float, rest[:3])
                shapes.insert(pya.DText(rest[3], pya.DTrans(x, -y), size, 0))
                continue
            numbers = list(map(float, rest))
            points = [pya.DPoint(x, -y) for x, y in zip(numbers[::2], numbers[1::2])]
            if kind == "R":
                shapes.insert(pya.DBox(*points))
            elif kind == "L":
                shapes.insert(pya.DEdge(*points))
            else:
                shapes.insert(pya.DPolygon(points))
    view.show_layout(layout, False)
    view.clear_layers()
    for (kind, fill, border), index in layers.items():
        properties = pya.LayerProperties()
        properties.source_layer = layout.get_info(index).layer
        properties.source_datatype = 0
        properties.fill_color = int(fill, 16)
        properties.frame_color = int(fill if border == "-" else border, 16)
        properties.dither_pattern = 0  # solid
        properties.width = 1
        properties.visible = True
        view.insert_layer(view.end_layers(), properties)
    view.update_content()


def repaint(view, box, width, height):
    view.zoom_box(box)
    start = time.process_time()
    view.get_pixels(width, height)
    return time.process_time() - start


def check_picture(view, width, height):
    """Raises an error if nothing was painted, because nothing was measured then."""
    pixels = view.get_pixels(width, height)
    seen = {pixels.pixel(x, y) for x in range(0, width, 7) for y in range(0, height, 7)}
    if len(seen) < 3:
        raise RuntimeError("nothing was painted")


def main():
    view = pya.LayoutView()
    for name, value in (("drawing-workers", "0"), ("text-visible", "true"), ("background-color", "#ffffff"),
                        ("grid-visible", "false"), ("apply-text-trans", "true")):
        view.set_config(name, value)
    read_shapes(view, shapes)
    view.max_hier()
    drawing = view.active_cellview().cell.dbbox()
    size = pya.DVector(int(width), int(height)) * (drawing.height() / int(height))
    for name, factor in ZOOMS:
        times = []
        for number in range(REPAINTS + 1):
            # The box differs a little each time, so that nothing of the last picture can be reused.
            half = size * (0.5 / factor * (1 + 1e-6 * number))
            box = pya.DBox(drawing.center() - half, drawing.center() + half)
            times.append(repaint(view, box, int(width), int(height)))
        check_picture(view, int(width), int(height))
        print("%s %.6f" % (name, min(times[1:])))
        if "picture" in globals():
            view.save_image("%s-%s.png" % (picture, name.replace(" ", "-")), int(width), int(height))


main()
