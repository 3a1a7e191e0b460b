// SPDX-License-Identifier: MIT
#include "benchmarks/subjects/device.h"

#include "benchmarks/subjects/barepainter.h"
#include "benchmarks/subjects/chipwindow.h"
#include "generator/benchmarkdrawing.h"
#include "platform/contract/svgparser.h"

#include <QFile>

namespace zelbench {

namespace {

std::unique_ptr<Device>& current()
{
    static std::unique_ptr<Device> device;
    return device;
}

void writeFile(const std::string& path, const std::string& bytes)
{
    QFile file(QFile::decodeName(path.c_str()));
    const auto size = static_cast<qint64>(bytes.size());
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes.data(), size) != size)
        qFatal("cannot write %s", path.c_str());
}

} // namespace

Device& Device::ofSize(int elements)
{
    if (!current() || current()->elements() != elements) {
        close();
        current().reset(new Device(elements)); // the constructor is private
    }
    return *current();
}

void Device::close()
{
    current().reset();
}

Device::Device(int elements)
    : m_elements(elements)
{
    std::string filter;
    for (int id = 1; id <= m_elements; id += 13)
        filter += "\"kind\" " + std::to_string(id) + '\n';
    writeFile(folder() + "/filter.txt", filter);
    writeFile(drawingFile(), mirn::zeldevicegenerator::benchmarkDrawing(elements));
}

Device::~Device() = default;

std::string Device::drawingFile() const
{
    return folder() + "/drawing.svg";
}

std::string Device::folder() const
{
    return QFile::encodeName(m_folder.path()).toStdString();
}

std::string Device::workingFile() const
{
    return folder() + "/zelsvg.temp";
}

void Device::removeWorkingFile() const
{
    QFile::remove(QFile::decodeName(workingFile().c_str()));
}

int Device::scatteredId(int n) const
{
    constexpr qint64 Stride = 7919; // a prime, so that all ids come before one repeats; ids count from 1
    return 1 + static_cast<int>(n * Stride % m_elements);
}

const SVGParser& Device::parsed()
{
    if (!m_parsed) {
        m_parsed = SVGParser::create();
        if (!m_parsed->loadSVGElements(drawingFile(), std::string()))
            qFatal("%s", m_parsed->errorString().c_str());
    }
    return *m_parsed;
}

ChipWindow& Device::window()
{
    if (m_hasRows)
        closeWindow();
    if (!m_window) {
        m_window = std::make_unique<ChipWindow>(drawingFile(), folder());
        if (!m_window->load())
            qFatal("the drawing was not loaded");
    }
    return *m_window;
}

void Device::closeWindow()
{
    m_window.reset();
    m_hasRows = false;
}

ChipWindow& Device::windowForRows()
{
    if (m_hasRows)
        return *m_window;
    ChipWindow& empty = window();
    m_hasRows = true;
    return empty;
}

const BarePainter& Device::bare()
{
    if (!m_bare)
        m_bare = std::make_unique<BarePainter>(parsed().getGraphicItems());
    return *m_bare;
}

} // namespace zelbench
