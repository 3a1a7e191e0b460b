// SPDX-License-Identifier: MIT
#include "benchmarks/subjects/layoutviewer.h"

#include "benchmarks/subjects/chipwindow.h"
#include "platform/contract/zelgraphicrecords.h"

#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>
#include <QStandardPaths>

#include <cstdio>

namespace zelbench {

namespace {

constexpr int LongestRun = 600'000; // milliseconds

QString viewerProgram()
{
    return QStandardPaths::findExecutable(QStringLiteral("klayout"));
}

QByteArray color(unsigned int rgb)
{
    return QByteArray::number(rgb & 0xffffffU, 16).rightJustified(6, '0');
}

QByteArray point(double x, double y)
{
    return ' ' + QByteArray::number(x, 'f', 3) + ' ' + QByteArray::number(y, 'f', 3);
}

// Returns one line in the format of layoutviewer.py; empty for an unknown kind.
QByteArray lineOf(const zel_SingleGraphItem& record)
{
    if (const auto* rect = dynamic_cast<const zel_Rect*>(&record)) {
        const QByteArray border = rect->strokeWidth > 0 ? color(rect->strokeColor) : QByteArray("-");
        return "R " + color(rect->fillColor) + ' ' + border + point(rect->x, rect->y)
            + point(rect->x + rect->width, rect->y + rect->height);
    }
    if (const auto* line = dynamic_cast<const zel_Line*>(&record))
        return "L " + color(line->strokeColor) + " -" + point(line->x1, line->y1) + point(line->x2, line->y2);
    if (const auto* text = dynamic_cast<const zel_Text*>(&record))
        return "T " + color(text->fillColor) + " -" + point(text->x, text->y) + ' ' + QByteArray::number(text->fontSize)
            + ' ' + text->text.c_str();
    QByteArray corners;
    if (const auto* polygon = dynamic_cast<const zel_Polygon*>(&record)) {
        for (const zel_Point& corner : polygon->points)
            corners += point(corner.x, corner.y);
        return "P " + color(polygon->fillColor) + " -" + corners;
    }
    return {};
}

bool writeShapes(const std::vector<zel_SingleGraphItem*>& records, const QString& fileName)
{
    QFile file(fileName);
    bool isWritten = file.open(QIODevice::WriteOnly);
    for (const zel_SingleGraphItem* record : records) {
        const QByteArray line = lineOf(*record);
        if (!line.isEmpty())
            isWritten = isWritten && file.write(line + '\n') > 0;
    }
    return isWritten && file.flush();
}

RepaintTimes timesIn(const QByteArray& output)
{
    RepaintTimes times;
    const QList<QByteArray> lines = output.split('\n');
    for (const QByteArray& line : lines) {
        const auto lastBlank = line.lastIndexOf(' ');
        if (line.startsWith("at "))
            times[line.left(lastBlank).toStdString()] = line.mid(lastBlank + 1).toDouble();
    }
    return times;
}

} // namespace

bool hasLayoutViewer()
{
    return !viewerProgram().isEmpty();
}

std::optional<RepaintTimes> repaintTimesOfLayoutViewer(
    const std::vector<zel_SingleGraphItem*>& records, const QString& folder, QString* error)
{
    const QString shapes = folder + QStringLiteral("/shapes.txt");
    if (!writeShapes(records, shapes)) {
        *error = QStringLiteral("%1 cannot be written").arg(shapes);
        return std::nullopt;
    }
    QProcess viewer;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("KLAYOUT_HOME"), folder); // without the user's own settings
    viewer.setProcessEnvironment(environment);
    viewer.start(viewerProgram(),
        {QStringLiteral("-zz"), QStringLiteral("-nc"), QStringLiteral("-r"), QStringLiteral(ZELBENCH_LAYOUT_SCRIPT),
            QStringLiteral("-rd"), QStringLiteral("shapes=") + shapes, QStringLiteral("-rd"),
            QStringLiteral("width=%1").arg(ChipWindow::Width), QStringLiteral("-rd"),
            QStringLiteral("height=%1").arg(ChipWindow::Height)});
    const bool isDone = viewer.waitForFinished(LongestRun) && viewer.exitCode() == 0;
    const RepaintTimes times = timesIn(viewer.readAllStandardOutput());
    QFile::remove(shapes);
    if (isDone && times.size() == 3)
        return times;
    *error = QStringLiteral("klayout: %1").arg(QString::fromLocal8Bit(viewer.readAllStandardError()).trimmed());
    return std::nullopt;
}

} // namespace zelbench
