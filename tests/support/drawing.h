// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/svgparser.h"

#include <deque>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

namespace zeltest {

// A drawing made of records, without a file: what a test hands in instead of the parser's.
class Drawing
{
public:
    Drawing()
    {
        setSize(200, 100);
        parameter.layerRanges = {{0, {0.0, 100.0}}};
    }

    zel_Rect& addRect(int id, double x, double y, double width, double height, unsigned int fill = 0x808080)
    {
        zel_Rect& rect = add<zel_Rect>(id);
        std::tie(rect.x, rect.y, rect.width, rect.height) = std::tie(x, y, width, height);
        rect.fillColor = fill;
        return rect;
    }

    zel_Line& addLine(int id, double x1, double y1, double x2, double y2, double width = 0.0)
    {
        zel_Line& line = add<zel_Line>(id);
        std::tie(line.x1, line.y1, line.x2, line.y2) = std::tie(x1, y1, x2, y2);
        line.strokeWidth = width;
        return line;
    }

    zel_Polygon& addPolygon(int id, std::vector<zel_Point> points, unsigned int fill = 0x808080)
    {
        zel_Polygon& polygon = add<zel_Polygon>(id);
        polygon.points = std::move(points);
        polygon.fillColor = fill;
        return polygon;
    }

    zel_Text& addText(int id, const std::string& text, double x, double y, double fontSize)
    {
        zel_Text& record = add<zel_Text>(id);
        record.text = text;
        record.x = x;
        record.y = y;
        record.fontSize = fontSize;
        record.fontFamily = "DejaVu Sans";
        return record;
    }

    void setSize(double width, double height)
    {
        parameter.width = width;
        parameter.height = height;
    }

    // A record of no known kind.
    void addUnknown(int kind)
    {
        storage.push_back(std::make_unique<zel_SingleGraphItem>(kind));
        records.push_back(storage.back().get());
    }

    // Makes this the drawing that every parser made from now on "reads". The drawing must outlive them.
    void install(bool loadResult = true)
    {
        SVGParser::setFactory([this, loadResult] { return std::make_unique<Parser>(*this, loadResult); });
    }

    zel_Parameter parameter;
    std::vector<zel_SingleGraphItem*> records;

private:
    class Parser final : public SVGParser
    {
    public:
        Parser(const Drawing& drawing, bool loadResult)
            : m_drawing(drawing)
            , m_loadResult(loadResult)
        { }
        bool loadSVGElements(const std::string&, const std::string&) override { return m_loadResult; }
        zel_Parameter getSVGParameter() const override { return m_drawing.parameter; }
        const std::vector<zel_SingleGraphItem*>& getGraphicItems() const override { return m_drawing.records; }
        Access keptGraphicItems() const override
        {
            return [records = m_drawing.records](std::size_t index, const Visitor& visit) { visit(*records[index]); };
        }

    private:
        const Drawing& m_drawing;
        const bool m_loadResult;
    };

    template <typename Record> Record& add(int id)
    {
        auto record = std::make_unique<Record>();
        Record& reference = *record;
        reference.id = id;
        storage.push_back(std::move(record));
        records.push_back(&reference);
        return reference;
    }

    std::deque<std::unique_ptr<zel_SingleGraphItem>> storage;
};

} // namespace zeltest
