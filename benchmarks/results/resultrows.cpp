// SPDX-License-Identifier: MIT
#include "benchmarks/results/resultrows.h"

namespace zelbench {

const std::vector<ResultRow>& resultRows()
{
    static const std::vector<ResultRow> rows = {
        {"QXmlStreamReader, merely reading", "QXmlStreamReader, merely reading", "", ""},
        {"SVG text to records", "SVG text to records", "", "QXmlStreamReader, merely reading"},
        {"records from the working file", "records from the working file", "", "SVG text to records"},
        {"records handed out one by one", "records handed out", "", "SVG text to records"},
        {"records to items", "records to items", "", ""},
        {"open: from loading to the first picture", "open", "", "QXmlStreamReader, merely reading"},
        {"open again, with the working file", "open again", "", "QXmlStreamReader, merely reading"},
        {"first paint", "open", "first paint", "bare QPainter at fit"},
        {"close", "open", "close", ""},
        {"close before the first picture", "records to items", "close at once", ""},
        {"bare QPainter at fit", "bare QPainter at fit", "", ""},
        {"bare QPainter at 4x", "bare QPainter at 4x", "", ""},
        {"bare QPainter at 30x", "bare QPainter at 30x", "", ""},
        {"full repaint at fit", "full repaint at fit", "", "bare QPainter at fit"},
        {"full repaint at 4x", "full repaint at 4x", "", "bare QPainter at 4x"},
        {"full repaint at 30x", "full repaint at 30x", "", "bare QPainter at 30x"},
        {"full repaint at fit, a host holds every attribute", "full repaint, handed out", "", "full repaint at fit"},
        {"KLayout, full repaint at fit", "KLayout", "at fit", "bare QPainter at fit"},
        {"KLayout, full repaint at 4x", "KLayout", "at 4x", "bare QPainter at 4x"},
        {"KLayout, full repaint at 30x", "KLayout", "at 30x", "bare QPainter at 30x"},
        {"pan by 50 pixels at 4x", "pan by 50 pixels at 4x", "", "bare QPainter at 4x"},
        {"the same with the overview map", "pan with the overview map", "", "bare QPainter at 4x"},
        {"overview map, its first picture", "overview map", "", "bare QPainter at fit"},
        {"repaint with nothing changed, at fit", "repaint, nothing changed", "", "bare QPainter at fit"},
        {"items one by one at fit", "items one by one at fit", "", "bare QPainter at fit"},
        {"select one element, at fit", "select one element", "", "items one by one at fit"},
        {"500 probable sites appear, at fit", "highlight 500 sites", "", "items one by one at fit"},
        {"walking all items", "walking all items", "", ""},
        {"refresh with 1000 dynamic values", "refresh 1000 dynamic values", "", "walking all items"},
        {"refresh where 1000 dynamic values change", "change 1000 dynamic values", "", "walking all items"},
        {"click at 4x", "click at 4x", "", ""},
        {"QGraphicsScene::items by shape", "QGraphicsScene::items by shape", "", ""},
        {"rubber band over everything", "rubber band over everything", "", "QGraphicsScene::items by shape"},
        {"drag move at 4x", "drag move at 4x", "", ""},
        {"full repaint at fit, once more", "plain full repaint", "", ""},
        {"the same with the planning aids off", "full repaint, aids off", "", "plain full repaint"},
        {"the same with as many connections shown", "full repaint, all connections", "", "plain full repaint"},
        {"pan to and fro at 4x", "plain pan", "", ""},
        {"the same with as many connections shown", "pan, all connections", "", "plain pan"},
        {"click at 4x, with the painting", "plain click", "", ""},
        {"the same with as many connections shown", "click, all connections", "", "plain click"},
        {"10,000 candidates appear, at fit", "candidates", "", ""},
        {"QTreeWidget with 20,000 rows", "bare QTreeWidget", "", ""},
        {"20,000 resources appear", "fill the tree", "", "bare QTreeWidget"},
        {"refresh of 20,000 resources", "refresh the tree", "", "bare QTreeWidget"},
        {"expandAllTreeItems() with 20,000 rows", "expand all rows", "", ""},
        {"expandIP() of a branch with 20,000 rows", "expand a branch", "", "expand all rows"},
        {"select a row: its element is marked", "select a row", "", "items one by one at fit"},
        {"select all rows: their elements are marked", "select all rows", "", "items one by one at fit"},
        {"click, and the element's row is selected", "click with rows", "", "click at 4x"},
        {"rubber band over everything, with 20,000 rows", "rubber band with rows", "",
            "QGraphicsScene::items by shape"},
        {"select a row after the rubber band", "select a row after a band", "", ""},
        {"setChipEngine() with 10,000 kinds for the filter", "filter menu", "", ""},
        {"QJsonDocument, merely parsing the device file", "QJsonDocument, merely parsing", "", ""},
        {"open a device with so many sites", "open a device", "", "QJsonDocument, merely parsing"},
        {"may a resource be dropped here", "may it be dropped here", "", ""},
        {"probable sites of a supply", "probable sites of a supply", "", ""},
        {"probable sites of an IP", "probable sites of an IP", "", ""},
        {"check of a design with 2,000 placed supplies", "check of a design", "", ""},
        {"10,000 Tcl commands that only write their lines", "10,000 empty commands", "", ""},
        {"10,000 place commands, journal included", "10,000 place commands", "", "10,000 empty commands"},
        {"10,000 reset commands, journal included", "10,000 place commands", "reset", "10,000 empty commands"},
        {"10,000 times undo, journal included", "10,000 place commands", "undo", "10,000 empty commands"},
        {"replay of 10,000 commands from the journal", "10,000 place commands", "replay", "10,000 empty commands"},
    };
    return rows;
}

const std::vector<FactRow>& factRows()
{
    static const std::vector<FactRow> rows = {
        {"elements drawn at fit", "bare QPainter at fit", "drawn"},
        {"elements drawn at 4x", "bare QPainter at 4x", "drawn"},
        {"elements drawn at 30x", "bare QPainter at 30x", "drawn"},
        {"memory per element, bytes", "memory", "bytes"},
        {"paint events until the window rests after opening", "rest", "paints to rest"},
        {"paint events that a full repaint brings about", "full repaint at fit", "further paints"},
        {"paint events while idle for half a second", "rest", "idle paints"},
        {"processor time while idle for half a second, us", "rest", "idle us"},
        {"pixels asked for by a pan of 50 pixels", "pan by 50 pixels at 4x", "pixels"},
        {"pixels asked for by the selection of one element", "select one element", "pixels"},
        {"pixels that differ from bare QPainter at fit", "pictures", "differing at fit"},
        {"pixels that differ from bare QPainter at 4x", "pictures", "differing at 4x"},
        {"pixels that differ from bare QPainter at 30x", "pictures", "differing at 30x"},
        {"pixels that differ from the items at fit", "pictures", "items at fit"},
        {"pixels that differ from the items at 4x", "pictures", "items at 4x"},
        {"pixels that differ from the items at 30x", "pictures", "items at 30x"},
        {"the same at fit with many states", "pictures", "states at fit"},
        {"the same at 4x with many states", "pictures", "states at 4x"},
        {"the same at 30x with many states", "pictures", "states at 30x"},
    };
    return rows;
}

} // namespace zelbench
