// SPDX-License-Identifier: MIT
#include "benchmarks/benchmarks.h"
#include "benchmarks/results/measure.h"
#include "benchmarks/results/pairs.h"
#include "benchmarks/subjects/chipwindow.h"
#include "benchmarks/subjects/device.h"
#include "chipview/zelchipgui.h"
#include "platform/contract/svgparser.h"

#include <QFile>
#include <QXmlStreamReader>

#include <optional>

namespace zelbench {

namespace {

constexpr int LoadsOfTurn = 50;

double secondsOfXmlOnly(benchmark::State& state, const Device& device)
{
    int elements = 0;
    const double seconds = secondsOf([&] {
        QFile file(QFile::decodeName(device.drawingFile().c_str()));
        if (!file.open(QIODevice::ReadOnly))
            return;
        QXmlStreamReader reader(file.readAll());
        while (!reader.atEnd())
            elements += reader.readNext() == QXmlStreamReader::StartElement ? 1 : 0;
    });
    if (elements < device.elements())
        state.SkipWithError("the drawing was not read");
    return seconds;
}

void readXmlOnly(benchmark::State& state, const Device& device)
{
    for (auto _ : state)
        state.SetIterationTime(secondsOfXmlOnly(state, device));
}

// Parses without a working file if `workingFile` is empty, otherwise loads from that file.
double secondsOfParser(benchmark::State& state, const Device& device, const std::string& workingFile)
{
    const std::unique_ptr<SVGParser> parser = SVGParser::create();
    bool isLoaded = false;
    const double seconds = secondsOf([&] { isLoaded = parser->loadSVGElements(device.drawingFile(), workingFile); });
    if (!isLoaded)
        state.SkipWithError(parser->errorString().c_str());
    else if (parser->isLoadedFromWorkingFile() == workingFile.empty())
        state.SkipWithError("the working file was not used as expected");
    return seconds;
}

void parse(benchmark::State& state, const Device& device)
{
    const auto read = [&] { return secondsOfXmlOnly(state, device); };
    const auto parseOnce = [&] { return secondsOfParser(state, device, {}); };
    measureInTurns(state, {read, 1, {}, {}}, {parseOnce, 1, {}, {}});
}

void parseAgain(benchmark::State& state, const Device& device)
{
    SVGParser::create()->loadSVGElements(device.drawingFile(), device.workingFile());
    const auto parseOnce = [&] { return secondsOfParser(state, device, {}); };
    const auto load = [&] { return secondsOfParser(state, device, device.workingFile()); };
    measureInTurns(state, {parseOnce, 1, {}, {}}, {load, LoadsOfTurn, {}, {}});
}

// The parser stores records packed; this is the cost of visiting all of them.
void handOut(benchmark::State& state, const SVGParser& parser)
{
    for (auto _ : state) {
        long long sum = 0;
        state.SetIterationTime(secondsOf([&] {
            parser.visitGraphicItems([&sum](const zel_SingleGraphItem& item) {
                sum += item.id;
                return true;
            });
        }));
        benchmark::DoNotOptimize(sum);
    }
}

// Returns the records of another parser, so that loading is only the work after parsing.
class ParsedAlready final : public SVGParser
{
public:
    explicit ParsedAlready(const SVGParser& parsed)
        : m_parsed(parsed)
    { }
    bool loadSVGElements(const std::string&, const std::string&) override { return true; }
    zel_Parameter getSVGParameter() const override { return m_parsed.getSVGParameter(); }
    const std::vector<zel_SingleGraphItem*>& getGraphicItems() const override { return m_parsed.getGraphicItems(); }

private:
    const SVGParser& m_parsed;
};

void buildScene(benchmark::State& state, Device& device)
{
    device.closeWindow();
    const SVGParser& parsed = device.parsed();
    SVGParser::setFactory([&parsed] { return std::make_unique<ParsedAlready>(parsed); });
    double closing = 0.0;
    for (auto _ : state) {
        std::optional<ChipWindow> window(std::in_place, device.drawingFile(), device.folder());
        state.SetIterationTime(secondsOf([&window] { window->load(); }));
        closing += secondsOf([&window] { window.reset(); });
    }
    state.counters["close at once"] = benchmark::Counter(closing, benchmark::Counter::kAvgIterations);
    SVGParser::setFactory(nullptr);
}

enum class Opening { First, Again };

// Measures from the start of loading to the first picture of the whole drawing, in a window that exists already.
void open(benchmark::State& state, Device& device, Opening opening)
{
    device.closeWindow();
    double firstPaint = 0.0;
    double closing = 0.0;
    for (auto _ : state) {
        if (opening == Opening::First)
            device.removeWorkingFile();
        std::optional<ChipWindow> window(std::in_place, device.drawingFile(), device.folder());
        bool isLoaded = false;
        const double loading = secondsOf([&] { isLoaded = window->load(); });
        const double painting = secondsOf([&] {
            window->show(1.0);
            window->repaint();
        });
        if (!isLoaded)
            state.SkipWithError("the drawing was not loaded");
        state.SetIterationTime(loading + painting);
        firstPaint += painting;
        window->settle();
        closing += secondsOf([&window] { window.reset(); });
    }
    state.counters["first paint"] = benchmark::Counter(firstPaint, benchmark::Counter::kAvgIterations);
    state.counters["close"] = benchmark::Counter(closing, benchmark::Counter::kAvgIterations);
}

} // namespace

void addLoadingBenchmarks(int elements)
{
    add("QXmlStreamReader, merely reading", elements,
        [=](benchmark::State& state) { readXmlOnly(state, Device::ofSize(elements)); });
    addPairs("SVG text to records", elements, [=](benchmark::State& state) { parse(state, Device::ofSize(elements)); });
    addPairs("records from the working file", elements,
        [=](benchmark::State& state) { parseAgain(state, Device::ofSize(elements)); });
    add("records handed out", elements,
        [=](benchmark::State& state) { handOut(state, Device::ofSize(elements).parsed()); });
    add("records to items", elements, [=](benchmark::State& state) {
        buildScene(state, Device::ofSize(elements));
    })->Repetitions(FewRepetitions);
    add("open", elements, [=](benchmark::State& state) {
        open(state, Device::ofSize(elements), Opening::First);
    })->Repetitions(FewRepetitions);
    add("open again", elements, [=](benchmark::State& state) {
        open(state, Device::ofSize(elements), Opening::Again);
    })->Repetitions(FewRepetitions);
}

} // namespace zelbench
