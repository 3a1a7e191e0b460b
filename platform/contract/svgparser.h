// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"
#include "platform/contract/zelgraphicrecords.h"
#include "platform/contract/zelparameter.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

class SVGParserPrivate;

// Reads a chip drawing (SVG) into graphic primitive records. The records, their texts and the parameter belong to the
// parser and stay valid until the next loadSVGElements() or the parser's destruction. The parser reads no files but the
// two that it is given, never throws, and uses bounded memory on hostile input. docs/formats.md describes the drawing.
class ZELPLATFORM_EXPORT SVGParser
{
public:
    SVGParser();
    virtual ~SVGParser();
    SVGParser(const SVGParser&) = delete;
    SVGParser& operator=(const SVGParser&) = delete;

    // Reads `drawingFile`. `workingPath` names a scratch file in which the parser keeps a binary image of the records,
    // so that the next load of the same drawing skips the parsing; an empty, stale, damaged or unwritable one is never
    // an error. Both are file names in the encoding of the file system.
    //
    // On an error, returns false, keeps the records read so far and sets errorString(). Progress goes to the current
    // zelprogress; if that cancels, returns false and has no records.
    virtual bool loadSVGElements(const std::string& drawingFile, const std::string& workingPath);

    // Returns the size, zoom limits and layers of the drawing, or the defaults before the first load.
    [[nodiscard]] virtual zel_Parameter getSVGParameter() const;

    // Returns the records in paint order: later ones lie above earlier ones. The first call creates an object for every
    // record; the list is empty if there is not enough memory for that.
    [[nodiscard]] virtual const std::vector<zel_SingleGraphItem*>& getGraphicItems() const;

    // visitGraphicItems() passes the same records to `visit`, one after the other, until that returns false. A record
    // is valid only during its call, but the texts that its name and tooltip point to stay valid. With a million
    // records this takes a tenth of the memory of getGraphicItems().
    //
    // A parser that reads drawings of its own need not override these two. A parser that lets this class read and then
    // changes the records in getGraphicItems() must override all three, and keptGraphicItems().
    using Visitor = std::function<bool(const zel_SingleGraphItem& item)>;
    [[nodiscard]] virtual std::size_t graphicItemCount() const;
    virtual void visitGraphicItems(const Visitor& visit) const;

    // Returns a function that passes one of these records to `visit`, by its index from 0 in paint order. It keeps the
    // records, so it may be called after a later load and after the parser's end. It is empty if this class has read
    // no records; a view then takes all records at once.
    using Access = std::function<void(std::size_t index, const Visitor& visit)>;
    [[nodiscard]] virtual Access keptGraphicItems() const;

    // Returns "FILE:LINE:COLUMN: what was found and what was expected" (UTF-8) after a failed load, otherwise an empty
    // text. Line and column count from 1; they are missing if the file cannot be read at all.
    [[nodiscard]] virtual std::string errorString() const;

    // Returns what the drawing uses and this parser does not draw, one text (UTF-8) for each kind.
    [[nodiscard]] virtual std::vector<std::string> warnings() const;

    // Returns true if the last load took its records from the working file.
    [[nodiscard]] bool isLoadedFromWorkingFile() const;

    // The factory makes the parsers that create() returns; a null function restores the default, an SVGParser. It lets
    // a host or a test supply records of its own.
    using Factory = std::function<std::unique_ptr<SVGParser>()>;
    static void setFactory(Factory factory);
    [[nodiscard]] static std::unique_ptr<SVGParser> create();

private:
    std::unique_ptr<SVGParserPrivate> d;
};
