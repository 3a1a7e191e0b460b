// SPDX-License-Identifier: MIT

// Reads the input as XML. What the quick reader accepts, the thorough one has to accept with the same tags, texts and
// lines.

#include "platform/svg/xml/xmlhandler.h"
#include "platform/svg/xml/xmlreading.h"
#include "tests/svg/memorysource.h"

#include <cstdlib>
#include <optional>

namespace {

// Writes down what it is told.
class Recorder final : public mirn::zelsvg::XmlHandler
{
public:
    void setReader(const mirn::zelsvg::TagReader* reader) { m_reader = reader; }
    [[nodiscard]] const std::string& events() const { return m_events; }

    void startTag(
        const mirn::zelsvg::XmlName& name, const mirn::zelsvg::XmlAttribute* attributes, std::size_t count) override
    {
        addPlace('<');
        m_events.append(name.text());
        for (std::size_t i = 0; i < count; ++i)
            m_events.append(" ").append(attributes[i].name.text()).append("=").append(attributes[i].value).append("\n");
    }

    void endTag() override { addPlace('>'); }

    // Readers may cut a line's text into pieces as they like.
    void text(std::string_view text) override
    {
        if (!m_isInLine)
            addPlace('"');
        m_events.append(text);
        m_isInLine = text != "\n";
    }

    [[nodiscard]] bool isFinished() const override { return false; }

private:
    void addPlace(char kind)
    {
        m_events.append(std::to_string(m_reader->position().line)) += kind;
        m_isInLine = false;
    }

    const mirn::zelsvg::TagReader* m_reader = nullptr;
    std::string m_events;
    bool m_isInLine = false; // of a text
};

// The tags and texts that a reader tells of; none where it does not accept the input.
[[nodiscard]] std::optional<std::string> eventsOf(
    mirn::zelsvg::XmlReading reading, std::string_view bytes, std::size_t blockSize)
{
    Recorder recorder;
    mirn::zelsvg::Diagnostics diagnostics("input");
    const mirn::zelsvg::Limits limits;
    MemorySource source(bytes, blockSize);
    const auto reader = makeTagReader(reading, recorder, diagnostics, limits);
    recorder.setReader(reader.get());
    return reader->read(source) && !diagnostics.hasFailed() ? std::optional(recorder.events()) : std::nullopt;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const std::size_t whole = size + 1;
    for (std::size_t blockSize : {whole, 1 + size % 61}) {
        const auto quick = eventsOf(mirn::zelsvg::XmlReading::Quick, bytes, blockSize);
        if (quick && eventsOf(mirn::zelsvg::XmlReading::Thorough, bytes, whole) != quick)
            std::abort();
    }
    return 0;
}
