// SPDX-License-Identifier: MIT
#include "platform/contract/svgparser.h"

#include "platform/svg/reading/drawingreader.h"
#include "platform/svg/reading/gunzipsource.h"
#include "platform/svg/records/recordobjects.h"
#include "platform/svg/workingfile/drawingfile.h"
#include "platform/svg/workingfile/workingfile.h"

#include <new>

// Where the parser begins. DrawingFile and GunzipSource deliver the drawing's bytes, readDrawing() makes records of
// them, and WorkingFile keeps the records for the next load. reading/drawingreader.cpp is the next file to read.

namespace {

SVGParser::Factory& parserFactory()
{
    static SVGParser::Factory factory;
    return factory;
}

} // namespace

class SVGParserPrivate
{
public:
    bool load(const std::string& drawingFile, const std::string& workingPath);

    // Shared with the functions that keptGraphicItems() has returned.
    std::shared_ptr<mirn::zelsvg::Drawing> drawing = std::make_shared<mirn::zelsvg::Drawing>();
    std::unique_ptr<mirn::zelsvg::RecordObjects> objects; // created when first asked for
    std::string error;
    bool isFromWorkingFile = false;
};

bool SVGParserPrivate::load(const std::string& drawingFile, const std::string& workingPath)
{
    mirn::zelsvg::Diagnostics diagnostics(drawingFile);
    mirn::zelsvg::DrawingFile file;
    std::string reason;
    if (file.open(drawingFile, reason)) {
        const mirn::zelsvg::WorkingFile workingFile(workingPath);
        isFromWorkingFile = workingFile.load(file, *drawing);
        if (isFromWorkingFile)
            return true;
        mirn::zelsvg::GunzipSource source(file);
        if (source.rewind())
            mirn::zelsvg::readDrawing(source, diagnostics, mirn::zelsvg::Limits(), *drawing);
        if (file.isCancelled()) {
            *drawing = {};
            error = drawingFile + ": reading it was cancelled";
            return false;
        }
        // If the file changed its size while it was read, its key does not belong to these records.
        if (!diagnostics.hasFailed() && file.isComplete())
            workingFile.save(file.key(), *drawing);
    } else {
        diagnostics.fail(reason);
    }
    error = diagnostics.error();
    return !diagnostics.hasFailed();
}

SVGParser::SVGParser()
    : d(std::make_unique<SVGParserPrivate>())
{ }

SVGParser::~SVGParser() = default;

bool SVGParser::loadSVGElements(const std::string& drawingFile, const std::string& workingPath)
{
    *d = {};
    try {
        return d->load(drawingFile, workingPath);
    } catch (const std::bad_alloc&) {
        *d = {};
        d->error = drawingFile + ": ran out of memory";
    }
    return false;
}

zel_Parameter SVGParser::getSVGParameter() const
{
    return d->drawing->parameter;
}

const std::vector<zel_SingleGraphItem*>& SVGParser::getGraphicItems() const
{
    static const std::vector<zel_SingleGraphItem*> none;
    try {
        if (!d->objects)
            d->objects = std::make_unique<mirn::zelsvg::RecordObjects>(d->drawing->records);
        return d->objects->items();
    } catch (const std::bad_alloc&) {
        return none;
    }
}

std::size_t SVGParser::graphicItemCount() const
{
    const std::size_t count = d->drawing->records.size();
    return count > 0 ? count : getGraphicItems().size();
}

void SVGParser::visitGraphicItems(const Visitor& visit) const
{
    bool goesOn = true;
    if (d->drawing->records.size() == 0) {
        for (const zel_SingleGraphItem* item : getGraphicItems())
            goesOn = goesOn && (!item || visit(*item));
        return;
    }
    mirn::zelsvg::RecordUnpacker unpacker(d->drawing->records);
    d->drawing->records.records().forEach(
        [&](const mirn::zelsvg::PackedRecord& record) { goesOn = goesOn && visit(unpacker.unpacked(record)); });
}

SVGParser::Access SVGParser::keptGraphicItems() const
{
    if (d->drawing->records.size() == 0)
        return {};
    const std::shared_ptr<const mirn::zelsvg::Drawing> drawing = d->drawing;
    const auto unpacker = std::make_shared<mirn::zelsvg::RecordUnpacker>(drawing->records);
    return [drawing, unpacker](std::size_t index, const Visitor& visit) {
        if (index < drawing->records.size())
            visit(unpacker->unpacked(drawing->records.records()[index]));
    };
}

std::string SVGParser::errorString() const
{
    return d->error;
}

std::vector<std::string> SVGParser::warnings() const
{
    return d->drawing->warnings;
}

bool SVGParser::isLoadedFromWorkingFile() const
{
    return d->isFromWorkingFile;
}

void SVGParser::setFactory(Factory factory)
{
    parserFactory() = std::move(factory);
}

std::unique_ptr<SVGParser> SVGParser::create()
{
    return parserFactory() ? parserFactory()() : std::make_unique<SVGParser>();
}
