// SPDX-License-Identifier: MIT
#pragma once

#include <QMap>
#include <QString>

#include <functional>

namespace mirn::zelimporter {

enum class VerticalAxis {
    Down, // y grows downwards, as on a screen
    Up, // y grows upwards, as on a chip
};

// What is imported, and how the tables are meant.
struct ImportOptions
{
    QString project; // the folder to make
    QString sites; // the tables; only that of the sites is required
    QString resources;
    QString connections;
    QString name; // of the device and the project; empty for the folder's
    QMap<QString, QString> columns; // by "TABLE.ROLE": the column, for one that is not named like its role
    char separator = 0; // 0 for the one that the header shows
    QString unit; // of the coordinates, where no column names one; empty for none
    double unitScale = 0; // drawing units for one unit of the coordinates; 0 for what suits the sites
    VerticalAxis y = VerticalAxis::Down;
    bool replaces = false; // whether a project that is there is replaced
};

// Called with the fraction that is done, 0 to 1. Returns false to end the import.
using ImportProgress = std::function<bool(double fraction)>;

} // namespace mirn::zelimporter
