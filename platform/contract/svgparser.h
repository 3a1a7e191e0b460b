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
// parser and stay valid until the next loadSVGElements() or the parser's end. Never reads another file than the two it
// is given, never throws, and uses bounded memory on hostile input. docs/formats.md describes the drawing.
class ZELPLATFORM_EXPORT SVGParser
{
public:
    SVGParser();
    virtual ~SVGParser();
    SVGParser(const SVGParser&) = delete;
    SVGParser& operator=(const SVGParser&) = delete;

    // Reads `drawingFile`. `workingPath` names a scratch file in which the parser keeps a binary image of the records,
    // so that the next load of the same drawing skips the parsing; an empty, stale, damaged or unwritable one is never
    // an error. Both are file names in the encoding of the file system. On an error gives false, keeps the records read
    // so far and has a message in errorString(). Reports to the current zelprogress; when that cancels, gives false
    // without any records.
    virtual bool loadSVGElements(const std::string& drawingFile, const std::string& workingPath);

    // Size, zoom limits and layers of the drawing; the defaults before the first load.
    [[nodiscard]] virtual zel_Parameter getSVGParameter() const;

    // In paint order: later ones are above earlier ones. The first call makes an object for every record; there are
    // none when memory does not suffice.
    [[nodiscard]] virtual const std::vector<zel_SingleGraphItem*>& getGraphicItems() const;

    // The same ones, each handed to `visit` for the time of the call, until that gives false: with a million of them
    // this takes a tenth of the memory. What an item's name and tooltip point at stays valid.
    //
    // A parser that reads drawings of its own need not override these two. One that lets this class read and changes
    // the items in getGraphicItems() has to override all three.
    using Visitor = std::function<bool(const zel_SingleGraphItem& item)>;
    [[nodiscard]] virtual std::size_t graphicItemCount() const;
    virtual void visitGraphicItems(const Visitor& visit) const;

    // "FILE:LINE:COLUMN: what was found and what was expected" (UTF-8) after a failed load, else empty. Line and column
    // count from 1; where the file cannot be read at all there are none.
    [[nodiscard]] virtual std::string errorString() const;

    // What the drawing uses and this parser does not draw, one text per kind (UTF-8).
    [[nodiscard]] virtual std::vector<std::string> warnings() const;

    // True when the last load took its records from the working file.
    [[nodiscard]] bool isLoadedFromWorkingFile() const;

    // What create() makes; a null function restores the default, an SVGParser. Lets a host or a test hand in records
    // of its own.
    using Factory = std::function<std::unique_ptr<SVGParser>()>;
    static void setFactory(Factory factory);
    [[nodiscard]] static std::unique_ptr<SVGParser> create();

private:
    std::unique_ptr<SVGParserPrivate> d;
};
