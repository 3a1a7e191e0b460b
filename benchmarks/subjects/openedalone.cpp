// SPDX-License-Identifier: MIT
#include "benchmarks/subjects/openedalone.h"

#include "benchmarks/subjects/chipwindow.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>

#include <malloc.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>

namespace zelbench {

namespace {

constexpr char Option[] = "--opened-alone";

// Returns a figure of this process's memory in bytes.
double bytesOf(const char* name)
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.compare(0, std::strlen(name), name) == 0)
            return std::strtod(line.c_str() + std::strlen(name) + 1, nullptr) * 1024; // in kilobytes
    }
    return 0.0;
}

// Returns the resident bytes, after freed memory has been returned to the system.
double residentBytes()
{
    malloc_trim(0);
    return bytesOf("VmRSS");
}

void forgetPeak()
{
    std::ofstream("/proc/self/clear_refs") << "5";
}

} // namespace

std::optional<MemoryOfDrawing> memoryOpenedAlone(const std::string& drawingFile, const std::string& folder)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QCoreApplication::applicationFilePath(),
        {QLatin1String(Option), QFile::decodeName(drawingFile.c_str()), QFile::decodeName(folder.c_str())});
    if (!process.waitForFinished(-1) || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        return std::nullopt;
    const QList<QByteArray> figures = process.readAllStandardOutput().split(' ');
    return MemoryOfDrawing{figures.value(0).toDouble(), figures.value(1).toDouble()};
}

std::optional<int> answerOpenedAlone(int argc, char** argv)
{
    if (argc != 4 || std::strcmp(argv[1], Option) != 0)
        return std::nullopt;
    ChipWindow window(argv[2], argv[3]);
    window.show(1.0);
    window.repaint();
    const double before = residentBytes();
    forgetPeak();
    if (!window.load())
        return EXIT_FAILURE;
    window.show(1.0);
    window.repaint();
    window.settle();
    const double most = bytesOf("VmHWM");
    std::printf("%.0f %.0f", residentBytes() - before, most - before);
    return EXIT_SUCCESS;
}

} // namespace zelbench
