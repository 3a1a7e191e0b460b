// SPDX-License-Identifier: MIT
#include "platform/svg/workingimage.h"

#include "platform/svg/limits.h"

#include <cmath>
#include <cstring>
#include <limits>
#include <type_traits>

namespace zelsvg {

static_assert(std::is_trivially_copyable_v<ImageHeader> && std::is_trivially_copyable_v<ImageRecord>);
static_assert(sizeof(ImageHeader) % 8 == 0 && sizeof(ImageRecord) == 96 && sizeof(ImageSpan) == 24);

namespace {

constexpr std::uint32_t FlagBit = 1U << 8;

[[nodiscard]] std::uint64_t hashOfBytes(const void* bytes, std::size_t size)
{
    ContentHash hash;
    hash.add(static_cast<const char*>(bytes), size);
    return hash.value();
}

[[nodiscard]] std::uint64_t headerHash(const ImageHeader& header)
{
    return hashOfBytes(&header, offsetof(ImageHeader, headerHash));
}

// Gathers the sections of an image.
class ImageWriter
{
public:
    explicit ImageWriter(const Drawing& drawing)
        : m_names(drawing.records.names())
        , m_textOffset(drawing.records.names().size())
    { }

    void addRecord(const zel_SingleGraphItem* item);
    void addParameter(const zel_Parameter& parameter);
    void addWarning(const std::string& text) { append(m_warnings, addText(text)); }

    [[nodiscard]] std::string finish(const DrawingKey& key);

private:
    template <typename Value> static void append(std::string& section, const Value& value)
    {
        section.append(reinterpret_cast<const char*>(&value), sizeof value);
    }

    ImageText addText(const std::string& text);
    void addKind(const zel_Line& line, ImageRecord& record);
    void addKind(const zel_Rect& rect, ImageRecord& record);
    void addKind(const zel_Polygon& polygon, ImageRecord& record);
    void addKind(const zel_Text& text, ImageRecord& record);

    const TextPool& m_names;
    std::size_t m_textOffset; // of the next text behind the names
    ImageHeader m_header{};
    std::string m_records;
    std::string m_layers;
    std::string m_spans;
    std::string m_points;
    std::string m_warnings;
    std::string m_texts;
};

ImageText ImageWriter::addText(const std::string& text)
{
    const ImageText result{static_cast<std::uint32_t>(m_textOffset), static_cast<std::uint32_t>(text.size())};
    m_texts.append(text).push_back('\0');
    m_textOffset += text.size() + 1;
    return result;
}

void ImageWriter::addRecord(const zel_SingleGraphItem* item)
{
    ImageRecord record{};
    record.id = item->id;
    record.layer = item->layer;
    record.name = static_cast<std::uint32_t>(m_names.offsetOf(item->name));
    record.tooltip = static_cast<std::uint32_t>(m_names.offsetOf(item->tooltip));
    record.kindAndFlag = static_cast<std::uint32_t>(item->kind) | (item->flag ? FlagBit : 0);
    if (item->kind == ZEL_GRAPHIC_LINE)
        addKind(*static_cast<const zel_Line*>(item), record);
    else if (item->kind == ZEL_GRAPHIC_RECT)
        addKind(*static_cast<const zel_Rect*>(item), record);
    else if (item->kind == ZEL_GRAPHIC_POLYGON)
        addKind(*static_cast<const zel_Polygon*>(item), record);
    else
        addKind(*static_cast<const zel_Text*>(item), record);
    append(m_records, record);
}

void ImageWriter::addKind(const zel_Line& line, ImageRecord& record)
{
    ++m_header.lines;
    const double values[] = {line.x1, line.y1, line.x2, line.y2};
    std::memcpy(record.values, values, sizeof values);
    record.strokeColor = line.strokeColor;
    record.strokeWidth = line.strokeWidth;
}

void ImageWriter::addKind(const zel_Rect& rect, ImageRecord& record)
{
    ++m_header.rects;
    const double values[] = {rect.x, rect.y, rect.width, rect.height};
    std::memcpy(record.values, values, sizeof values);
    record.fillColor = rect.fillColor;
    record.strokeColor = rect.strokeColor;
    record.strokeWidth = rect.strokeWidth;
}

void ImageWriter::addKind(const zel_Polygon& polygon, ImageRecord& record)
{
    ++m_header.polygons;
    record.fillColor = polygon.fillColor;
    record.strokeColor = polygon.strokeColor;
    record.strokeWidth = polygon.strokeWidth;
    record.count = static_cast<std::uint32_t>(polygon.points.size());
    m_header.points += record.count;
    m_points.append(reinterpret_cast<const char*>(polygon.points.data()), polygon.points.size() * sizeof(zel_Point));
}

void ImageWriter::addKind(const zel_Text& text, ImageRecord& record)
{
    ++m_header.texts;
    record.values[0] = text.x;
    record.values[1] = text.y;
    record.values[2] = text.fontSize;
    record.fillColor = text.fillColor;
    record.rotation = text.rotation;
    record.text = addText(text.text);
    record.family = addText(text.fontFamily);
    record.count = static_cast<std::uint32_t>(text.spans.size());
    m_header.spans += record.count;
    for (const tspan& span : text.spans)
        append(m_spans, ImageSpan{span.x, span.y, addText(span.text)});
}

void ImageWriter::addParameter(const zel_Parameter& parameter)
{
    m_header.width = parameter.width;
    m_header.height = parameter.height;
    m_header.initialScale = parameter.initialScale;
    m_header.minimumScale = parameter.minimumScale;
    m_header.maximumScale = parameter.maximumScale;
    m_header.scaleStep = parameter.scaleStep;
    m_header.layers = parameter.layerRanges.size();
    for (const auto& [number, range] : parameter.layerRanges)
        append(m_layers, ImageLayer{range.minimum, range.maximum, number});
}

std::string ImageWriter::finish(const DrawingKey& key)
{
    // Offsets have 32 bits.
    if (m_textOffset > std::numeric_limits<std::uint32_t>::max())
        return {};
    std::memcpy(m_header.magic, ImageHeader::Magic, sizeof m_header.magic);
    m_header.version = ImageHeader::Version;
    m_header.recordSize = sizeof(ImageRecord);
    m_header.key = key;
    m_header.warnings = m_warnings.size() / sizeof(ImageText);
    m_header.textBytes = m_textOffset;
    std::string image(reinterpret_cast<const char*>(&m_header), sizeof m_header);
    image.reserve(image.size() + m_records.size() + m_layers.size() + m_spans.size() + m_points.size()
        + m_warnings.size() + m_textOffset);
    for (const std::string* section : {&m_records, &m_layers, &m_spans, &m_points, &m_warnings})
        image.append(*section);
    image.push_back('\0');
    m_names.forEachBlock([&image](std::string_view block) { image.append(block); });
    image.append(m_texts);
    seal(m_header, std::string_view(image).substr(sizeof m_header));
    std::memcpy(image.data(), &m_header, sizeof m_header);
    return image;
}

// Walks over the sections of an image that has passed its hash. Every number is checked all the same: what is read
// here comes from a folder that others write to.
class ImageReader
{
public:
    ImageReader(const ImageHeader& header, std::string_view body, Drawing& drawing)
        : m_header(header)
        , m_body(body)
        , m_drawing(drawing)
    { }

    bool read();

private:
    template <typename Value> const char* takeSection(std::uint64_t count);
    template <typename Value> static Value at(const char* section, std::uint64_t index);

    bool readParameter();
    bool readWarnings(const char* section);
    bool readRecord(const ImageRecord& record);
    bool readPolygon(const ImageRecord& record, zel_Polygon& polygon);
    bool readText(const ImageRecord& record, zel_Text& text);
    bool text(const ImageText& text, std::string& result) const;
    bool setCommon(const ImageRecord& record, zel_SingleGraphItem* item) const;

    const ImageHeader& m_header;
    std::string_view m_body;
    Drawing& m_drawing;
    const char* m_layers = nullptr;
    const char* m_spans = nullptr;
    const char* m_points = nullptr;
    const char* m_texts = nullptr;
    std::uint64_t m_nextSpan = 0;
    std::uint64_t m_nextPoint = 0;
    std::uint64_t m_counts[4] = {}; // of the records still to come, by kind
};

// The section's bytes are within the body: readHeader() has compared the sizes.
template <typename Value> const char* ImageReader::takeSection(std::uint64_t count)
{
    const char* section = m_body.data();
    m_body.remove_prefix(static_cast<std::size_t>(count) * sizeof(Value));
    return section;
}

template <typename Value> Value ImageReader::at(const char* section, std::uint64_t index)
{
    Value value;
    std::memcpy(&value, section + index * sizeof(Value), sizeof value);
    return value;
}

bool ImageReader::read()
{
    const char* records = takeSection<ImageRecord>(m_header.records());
    m_layers = takeSection<ImageLayer>(m_header.layers);
    m_spans = takeSection<ImageSpan>(m_header.spans);
    m_points = takeSection<zel_Point>(m_header.points);
    const char* warnings = takeSection<ImageText>(m_header.warnings);
    if (m_body.size() != m_header.textBytes || m_body.empty() || m_body.front() != '\0' || m_body.back() != '\0')
        return false;
    char* texts = m_drawing.records.names().restore(m_body.size());
    std::memcpy(texts, m_body.data(), m_body.size());
    m_texts = texts;
    const std::uint64_t counts[] = {m_header.lines, m_header.rects, m_header.polygons, m_header.texts};
    std::memcpy(m_counts, counts, sizeof counts);
    m_drawing.records.reserve(m_header.lines, m_header.rects, m_header.polygons, m_header.texts);
    for (std::uint64_t i = 0; i < m_header.records(); ++i) {
        if (!readRecord(at<ImageRecord>(records, i)))
            return false;
    }
    return readParameter() && readWarnings(warnings);
}

bool ImageReader::readRecord(const ImageRecord& record)
{
    const std::uint32_t kind = record.kindAndFlag & ~FlagBit;
    if (kind > ZEL_GRAPHIC_TEXT || m_counts[kind]-- == 0)
        return false;
    const double* v = record.values;
    switch (kind) {
    case ZEL_GRAPHIC_LINE: {
        zel_Line* line = m_drawing.records.addLine();
        line->x1 = v[0];
        line->y1 = v[1];
        line->x2 = v[2];
        line->y2 = v[3];
        line->strokeColor = record.strokeColor;
        line->strokeWidth = record.strokeWidth;
        return setCommon(record, line);
    }
    case ZEL_GRAPHIC_RECT: {
        zel_Rect* rect = m_drawing.records.addRect();
        rect->x = v[0];
        rect->y = v[1];
        rect->width = v[2];
        rect->height = v[3];
        rect->fillColor = record.fillColor;
        rect->strokeColor = record.strokeColor;
        rect->strokeWidth = record.strokeWidth;
        return setCommon(record, rect);
    }
    case ZEL_GRAPHIC_POLYGON:
        return readPolygon(record, *m_drawing.records.addPolygon());
    default:
        return readText(record, *m_drawing.records.addText());
    }
}

bool ImageReader::setCommon(const ImageRecord& record, zel_SingleGraphItem* item) const
{
    if (record.name >= m_header.textBytes || record.tooltip >= m_header.textBytes)
        return false;
    item->id = record.id;
    item->layer = record.layer;
    item->name = m_texts + record.name;
    item->tooltip = m_texts + record.tooltip;
    item->flag = (record.kindAndFlag & FlagBit) != 0;
    return true;
}

bool ImageReader::readPolygon(const ImageRecord& record, zel_Polygon& polygon)
{
    if (record.count > m_header.points - m_nextPoint)
        return false;
    polygon.points.resize(record.count);
    if (record.count > 0)
        std::memcpy(
            polygon.points.data(), m_points + m_nextPoint * sizeof(zel_Point), record.count * sizeof(zel_Point));
    m_nextPoint += record.count;
    polygon.fillColor = record.fillColor;
    polygon.strokeColor = record.strokeColor;
    polygon.strokeWidth = record.strokeWidth;
    return setCommon(record, &polygon);
}

bool ImageReader::readText(const ImageRecord& record, zel_Text& item)
{
    item.x = record.values[0];
    item.y = record.values[1];
    item.fontSize = record.values[2];
    item.fillColor = record.fillColor;
    item.rotation = record.rotation;
    if (record.count > m_header.spans - m_nextSpan || !text(record.text, item.text)
        || !text(record.family, item.fontFamily))
        return false;
    item.spans.resize(record.count);
    for (tspan& span : item.spans) {
        const auto image = at<ImageSpan>(m_spans, m_nextSpan++);
        span.x = image.x;
        span.y = image.y;
        if (!text(image.text, span.text))
            return false;
    }
    return setCommon(record, &item);
}

bool ImageReader::text(const ImageText& text, std::string& result) const
{
    if (text.offset > m_header.textBytes || text.length > m_header.textBytes - text.offset)
        return false;
    result.assign(m_texts + text.offset, text.length);
    return true;
}

bool ImageReader::readParameter()
{
    zel_Parameter& parameter = m_drawing.parameter;
    parameter.width = m_header.width;
    parameter.height = m_header.height;
    parameter.initialScale = m_header.initialScale;
    parameter.minimumScale = m_header.minimumScale;
    parameter.maximumScale = m_header.maximumScale;
    parameter.scaleStep = m_header.scaleStep;
    for (std::uint64_t i = 0; i < m_header.layers; ++i) {
        const auto layer = at<ImageLayer>(m_layers, i);
        parameter.layerRanges[static_cast<int>(layer.number)] = {layer.minimum, layer.maximum};
    }
    return parameter.layerRanges.size() == m_header.layers;
}

bool ImageReader::readWarnings(const char* section)
{
    m_drawing.warnings.resize(static_cast<std::size_t>(m_header.warnings));
    for (std::uint64_t i = 0; i < m_header.warnings; ++i) {
        if (!text(at<ImageText>(section, i), m_drawing.warnings[static_cast<std::size_t>(i)]))
            return false;
    }
    return true;
}

[[nodiscard]] bool isPositive(double value)
{
    return value > 0.0 && value <= LargestNumber;
}

} // namespace

std::string makeImage(const DrawingKey& key, const Drawing& drawing)
{
    ImageWriter writer(drawing);
    for (const zel_SingleGraphItem* item : drawing.records.items())
        writer.addRecord(item);
    writer.addParameter(drawing.parameter);
    for (const std::string& warning : drawing.warnings)
        writer.addWarning(warning);
    return writer.finish(key);
}

void seal(ImageHeader& header, std::string_view body)
{
    header.bodyHash = hashOfBytes(body.data(), body.size());
    header.headerHash = headerHash(header);
}

bool readHeader(std::string_view image, std::uint64_t fileSize, ImageHeader& header)
{
    if (image.size() < sizeof header)
        return false;
    std::memcpy(&header, image.data(), sizeof header);
    if (std::memcmp(header.magic, ImageHeader::Magic, sizeof header.magic) != 0
        || header.version != ImageHeader::Version || header.recordSize != sizeof(ImageRecord)
        || header.headerHash != headerHash(header))
        return false;
    // No count above the number of bytes, so that the products below cannot overflow.
    for (std::uint64_t count : {header.lines, header.rects, header.polygons, header.texts, header.layers, header.spans,
             header.points, header.warnings, header.textBytes}) {
        if (count > fileSize)
            return false;
    }
    const std::uint64_t size = sizeof header + header.records() * sizeof(ImageRecord)
        + header.layers * sizeof(ImageLayer) + header.spans * sizeof(ImageSpan) + header.points * sizeof(zel_Point)
        + header.warnings * sizeof(ImageText) + header.textBytes;
    return size == fileSize && fileSize < (std::uint64_t(1) << 40) && isPositive(header.width)
        && isPositive(header.height) && isPositive(header.initialScale) && isPositive(header.minimumScale)
        && isPositive(header.maximumScale) && isPositive(header.scaleStep);
}

bool readBody(const ImageHeader& header, std::string_view body, Drawing& drawing)
{
    return hashOfBytes(body.data(), body.size()) == header.bodyHash && ImageReader(header, body, drawing).read();
}

} // namespace zelsvg
