// SPDX-License-Identifier: MIT
#include "platform/svg/workingfile/workingimage.h"

#include "platform/svg/base/limits.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <limits>
#include <type_traits>

namespace mirn::zelsvg {

static_assert(std::is_trivially_copyable_v<ImageHeader> && sizeof(ImageHeader) % alignof(PackedRecord) == 0);

namespace {

constexpr std::uint64_t LargestFile = std::uint64_t(1) << 40;

// records; they stay in the processor's cache between hashing and checking
constexpr std::size_t CheckedAtOnce = 1024;

template <typename Entry> [[nodiscard]] std::string_view bytesOf(const Entry* entries, std::size_t count)
{
    static_assert(std::is_trivially_copyable_v<Entry>);
    return std::string_view(reinterpret_cast<const char*>(entries), count * sizeof(Entry));
}

[[nodiscard]] std::uint64_t hashOfBytes(std::string_view bytes)
{
    ContentHash hash;
    hash.add(bytes.data(), bytes.size());
    return hash.value();
}

[[nodiscard]] std::uint64_t headerHash(const ImageHeader& header)
{
    return hashOfBytes({reinterpret_cast<const char*>(&header), offsetof(ImageHeader, headerHash)});
}

// The part of an image after the header.
class ImageBody
{
public:
    explicit ImageBody(const Drawing& drawing);

    void fillIn(ImageHeader& header) const;
    [[nodiscard]] std::uint64_t textBytes() const { return m_drawing.records.texts().size() + m_warningTexts.size(); }

    // Calls write(bytes) until it returns false.
    template <typename Write> bool forEachPiece(Write write) const;

private:
    const Drawing& m_drawing;
    std::vector<ImageLayer> m_layers;
    std::vector<ImageText> m_warnings;
    std::string m_warningTexts; // follow the texts of the records
};

ImageBody::ImageBody(const Drawing& drawing)
    : m_drawing(drawing)
{
    for (const auto& [number, range] : drawing.parameter.layerRanges)
        m_layers.push_back({range.minimum, range.maximum, number});
    for (const std::string& warning : drawing.warnings) {
        m_warnings.push_back({static_cast<std::uint32_t>(textBytes()), static_cast<std::uint32_t>(warning.size())});
        m_warningTexts.append(warning).push_back('\0');
    }
}

void ImageBody::fillIn(ImageHeader& header) const
{
    const zel_Parameter& parameter = m_drawing.parameter;
    header.width = parameter.width;
    header.height = parameter.height;
    header.initialScale = parameter.initialScale;
    header.minimumScale = parameter.minimumScale;
    header.maximumScale = parameter.maximumScale;
    header.scaleStep = parameter.scaleStep;
    const RecordStore& records = m_drawing.records;
    header.records = records.size();
    header.points = records.points().size();
    header.looks = records.looks().size();
    header.spans = records.spans().size();
    header.layers = m_layers.size();
    header.warnings = m_warnings.size();
    header.textBytes = textBytes();
}

template <typename Write> bool ImageBody::forEachPiece(Write write) const
{
    bool goesOn = true;
    const auto section = [&](const auto& entries) {
        entries.forEachRun(0, entries.size(),
            [&](const auto* run, std::size_t count) { goesOn = goesOn && write(bytesOf(run, count)); });
    };
    const RecordStore& records = m_drawing.records;
    section(records.records());
    section(records.points());
    section(records.looks());
    section(records.spans());
    goesOn = goesOn && write(bytesOf(m_layers.data(), m_layers.size()))
        && write(bytesOf(m_warnings.data(), m_warnings.size()));
    records.texts().forEachPiece([&](std::string_view bytes) { goesOn = goesOn && write(bytes); });
    return goesOn && write(m_warningTexts);
}

// Reads the sections of an image. The hashes detect damage; all numbers are checked as well, because the file is in a
// folder to which others can write.
class ImageReader
{
public:
    ImageReader(const ImageHeader& header, const char* image);

    [[nodiscard]] bool isValid();
    [[nodiscard]] const RecordStore::View& view() const { return m_view; }
    bool readParameter(zel_Parameter& parameter) const;
    [[nodiscard]] std::vector<std::string> warnings() const;

private:
    template <typename Entry> const Entry* takeSection(std::uint64_t count);
    [[nodiscard]] bool areValid(const PackedRecord* records, std::size_t count);
    [[nodiscard]] bool isValid(const PackedRecord& record);
    [[nodiscard]] bool isValid(const PackedLook& look) const;
    [[nodiscard]] bool isText(std::uint32_t offset) const { return offset < m_view.textSize; }
    [[nodiscard]] bool isText(std::uint32_t offset, std::uint32_t length) const
    {
        return isText(offset) && length < m_view.textSize - offset;
    }

    const ImageHeader& m_header;
    const char* m_rest;
    RecordStore::View m_view;
    const ImageLayer* m_layers;
    const ImageText* m_warnings;
    std::uint64_t m_nextPoint = 0; // not used by a record yet
    std::uint64_t m_nextSpan = 0;
};

// The sections are within the image, because readHeader() has checked the sizes.
ImageReader::ImageReader(const ImageHeader& header, const char* image)
    : m_header(header)
    , m_rest(image + sizeof header)
{
    m_view.recordCount = static_cast<std::size_t>(header.records);
    m_view.records = takeSection<PackedRecord>(header.records);
    m_view.pointCount = static_cast<std::size_t>(header.points);
    m_view.points = takeSection<zel_Point>(header.points);
    m_view.lookCount = static_cast<std::size_t>(header.looks);
    m_view.looks = takeSection<PackedLook>(header.looks);
    m_view.spanCount = static_cast<std::size_t>(header.spans);
    m_view.spans = takeSection<PackedSpan>(header.spans);
    m_layers = takeSection<ImageLayer>(header.layers);
    m_warnings = takeSection<ImageText>(header.warnings);
    m_view.textSize = static_cast<std::size_t>(header.textBytes);
    m_view.texts = m_rest;
}

template <typename Entry> const Entry* ImageReader::takeSection(std::uint64_t count)
{
    const auto* section = reinterpret_cast<const Entry*>(m_rest);
    m_rest += count * sizeof(Entry);
    return section;
}

bool ImageReader::isValid()
{
    const RecordStore::View& v = m_view;
    if (v.textSize == 0 || v.texts[0] != '\0' || v.texts[v.textSize - 1] != '\0')
        return false;
    const auto isLook = [this](const PackedLook& look) { return isValid(look); };
    const auto isSpan = [this](const PackedSpan& span) { return isText(span.text, span.length); };
    const auto isWarning = [this](const ImageText& text) { return isText(text.offset, text.length); };
    if (!std::all_of(v.looks, v.looks + v.lookCount, isLook) || !std::all_of(v.spans, v.spans + v.spanCount, isSpan)
        || !std::all_of(m_warnings, m_warnings + m_header.warnings, isWarning))
        return false;
    ContentHash hash;
    for (std::size_t i = 0; i < v.recordCount; i += CheckedAtOnce) {
        const std::size_t count = std::min(CheckedAtOnce, v.recordCount - i);
        const std::string_view bytes = bytesOf(v.records + i, count);
        hash.add(bytes.data(), bytes.size());
        if (!areValid(v.records + i, count))
            return false;
    }
    const char* behindRecords = reinterpret_cast<const char*>(v.records + v.recordCount);
    hash.add(behindRecords, static_cast<std::size_t>(v.texts + v.textSize - behindRecords));
    return hash.value() == m_header.bodyHash;
}

// First checks what all records have in common, in a loop without branches; only few records have more.
bool ImageReader::areValid(const PackedRecord* records, std::size_t count)
{
    std::uint32_t lastLook = 0;
    std::uint32_t lastText = 0;
    for (const PackedRecord* record = records; record != records + count; ++record) {
        lastLook = std::max(lastLook, record->look);
        lastText = std::max({lastText, record->name, record->tooltip});
    }
    if (lastLook >= m_view.lookCount || !isText(lastText))
        return false;
    return std::all_of(records, records + count, [this](const PackedRecord& record) { return isValid(record); });
}

// Checks what is specific to the record's kind. Each polygon must use the next points and each text the next spans, so
// that not even a forged file can multiply them.
bool ImageReader::isValid(const PackedRecord& record)
{
    const auto takeNext = [](std::uint64_t first, std::uint64_t count, std::uint64_t& next, std::uint64_t size) {
        const bool isNext = count == 0 || (first == next && count <= size - next);
        next += isNext ? count : 0;
        return isNext;
    };
    switch (m_view.looks[record.look].kind) {
    case ZEL_GRAPHIC_POLYGON:
        return takeNext(record.polygon.first, record.polygon.count, m_nextPoint, m_view.pointCount);
    case ZEL_GRAPHIC_TEXT:
        return isText(record.run.text, record.run.length)
            && takeNext(record.run.firstSpan, record.run.spans, m_nextSpan, m_view.spanCount);
    default:
        return true;
    }
}

bool ImageReader::isValid(const PackedLook& look) const
{
    return look.kind <= ZEL_GRAPHIC_TEXT && isText(look.family);
}

bool ImageReader::readParameter(zel_Parameter& parameter) const
{
    parameter.width = m_header.width;
    parameter.height = m_header.height;
    parameter.initialScale = m_header.initialScale;
    parameter.minimumScale = m_header.minimumScale;
    parameter.maximumScale = m_header.maximumScale;
    parameter.scaleStep = m_header.scaleStep;
    for (const ImageLayer* layer = m_layers; layer != m_layers + m_header.layers; ++layer)
        parameter.layerRanges[static_cast<int>(layer->number)] = {layer->minimum, layer->maximum};
    return parameter.layerRanges.size() == m_header.layers;
}

std::vector<std::string> ImageReader::warnings() const
{
    std::vector<std::string> result;
    for (const ImageText* text = m_warnings; text != m_warnings + m_header.warnings; ++text)
        result.emplace_back(m_view.texts + text->offset, text->length);
    return result;
}

[[nodiscard]] bool isPositive(double value)
{
    return value > 0.0 && value <= LargestNumber;
}

} // namespace

bool writeImage(const DrawingKey& key, const Drawing& drawing, const std::function<bool(std::string_view)>& write)
{
    const ImageBody body(drawing);
    // Offsets have 32 bits.
    if (body.textBytes() > std::numeric_limits<std::uint32_t>::max())
        return false;
    ImageHeader header{};
    std::memcpy(header.magic, ImageHeader::Magic, sizeof header.magic);
    header.version = ImageHeader::Version;
    header.recordSize = sizeof(PackedRecord);
    header.key = key;
    body.fillIn(header);
    ContentHash hash;
    body.forEachPiece([&hash](std::string_view bytes) {
        hash.add(bytes.data(), bytes.size());
        return true;
    });
    header.bodyHash = hash.value();
    header.headerHash = headerHash(header);
    return write(bytesOf(&header, 1)) && body.forEachPiece(write);
}

void seal(ImageHeader& header, std::string_view body)
{
    header.bodyHash = hashOfBytes(body);
    header.headerHash = headerHash(header);
}

bool readHeader(std::string_view image, std::uint64_t fileSize, ImageHeader& header)
{
    if (image.size() < sizeof header || fileSize > LargestFile)
        return false;
    std::memcpy(&header, image.data(), sizeof header);
    if (std::memcmp(header.magic, ImageHeader::Magic, sizeof header.magic) != 0
        || header.version != ImageHeader::Version || header.recordSize != sizeof(PackedRecord)
        || header.headerHash != headerHash(header))
        return false;
    // No count exceeds the number of bytes, so that the products below cannot overflow.
    for (std::uint64_t count :
        {header.records, header.points, header.looks, header.spans, header.layers, header.warnings, header.textBytes}) {
        if (count > fileSize)
            return false;
    }
    const std::uint64_t size = sizeof header + header.records * sizeof(PackedRecord) + header.points * sizeof(zel_Point)
        + header.looks * sizeof(PackedLook) + header.spans * sizeof(PackedSpan) + header.layers * sizeof(ImageLayer)
        + header.warnings * sizeof(ImageText) + header.textBytes;
    return size == fileSize && isPositive(header.width) && isPositive(header.height) && isPositive(header.initialScale)
        && header.minimumScale <= header.maximumScale && std::isfinite(header.minimumScale)
        && std::isfinite(header.maximumScale) && isPositive(header.scaleStep);
}

bool showImage(const ImageHeader& header, std::shared_ptr<const char> image, Drawing& drawing)
{
    ImageReader reader(header, image.get());
    if (!reader.isValid() || !reader.readParameter(drawing.parameter))
        return false;
    drawing.warnings = reader.warnings();
    drawing.records.setView(reader.view(), std::move(image));
    return true;
}

} // namespace mirn::zelsvg
