// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/files.h"

#include <QDir>
#include <QTemporaryDir>

inline constexpr char SmallDevice[] = R"({
  "name": "Small",
  "drawing": "small.svg",
  "filter": "filter.txt",
  "kinds": [
    {"name": "UNIT", "title": "Unit", "accepts": ["IP"]},
    {"name": "CHANNEL", "title": "Channel", "accepts": ["DCUCHANNEL"], "occupiedFill": "#a690d2"},
    {"name": "TXPLL", "title": "Transmit PLL", "accepts": ["PLL"]},
    {"name": "PLL", "title": "PLL", "accepts": ["PLL"]},
    {"name": "REF", "title": "Reference", "accepts": ["EXTREF"]},
    {"name": "SUPPLY", "title": "Supply", "accepts": ["UVCCIO"]},
    {"name": "PAD", "title": "Pad"}
  ],
  "sites": [
    {"id": 10, "name": "U0", "kind": "UNIT", "group": "U0", "neighbours": ["U1"], "settings": {
      "CH0": {"value": "SLOW", "choices": ["SLOW", "FAST"]},
      "CH1": {"value": "SLOW", "choices": ["SLOW", "FAST"]},
      "CH0:CH1": {"choices": ["OFF"]}}},
    {"id": 11, "name": "U0_CH0", "kind": "CHANNEL", "group": "U0", "attributes": {"lane": "0"},
      "disabledBy": {"CH0": ["OFF"]}},
    {"id": 12, "name": "U0_CH1", "kind": "CHANNEL", "group": "U0"},
    {"id": 13, "name": "U0_PLL", "kind": "TXPLL", "group": "U0", "reaches": ["U0"]},
    {"id": 20, "name": "U1", "kind": "UNIT", "group": "U1", "neighbours": ["U0"]},
    {"id": 21, "name": "U1_CH0", "kind": "CHANNEL", "group": "U1"},
    {"id": 22, "name": "U1_CH1", "kind": "CHANNEL", "group": "U1"},
    {"id": 30, "name": "U2", "kind": "UNIT", "group": "U2", "settings": {
      "A": {"value": "SLOW", "choices": ["SLOW", "FAST"]},
      "B": {"value": "SLOW", "choices": ["SLOW", "OFF"]},
      "C": {"value": "OFF", "choices": ["OFF", "FAST"]},
      "A:B": {"choices": ["TWIN"]},
      "B:C": {"choices": ["OFF", "PAIR"]}}},
    {"id": 31, "name": "U2_CH0", "kind": "CHANNEL", "group": "U2"},
    {"id": 32, "name": "U2_CH1", "kind": "CHANNEL", "group": "U2"},
    {"id": 33, "name": "U3", "kind": "UNIT"},
    {"id": 40, "name": "REF_L", "kind": "REF", "reaches": ["U0", "U1"]},
    {"id": 41, "name": "REF_R", "kind": "REF", "reaches": ["U2"]},
    {"id": 50, "name": "PLL_CORE", "kind": "PLL"},
    {"id": 51, "name": "PLL_EDGE", "kind": "PLL", "reaches": ["U0", "U1"]},
    {"id": 60, "name": "V0_1", "kind": "SUPPLY", "group": "BANK0"},
    {"id": 61, "name": "V0_2", "kind": "SUPPLY", "group": "BANK0"},
    {"id": 62, "name": "V1_1", "kind": "SUPPLY", "group": "BANK1"},
    {"id": 63, "name": "V1_2", "kind": "SUPPLY", "group": "BANK1"},
    {"id": 70, "name": "P1", "kind": "PAD", "group": "BANK0"}
  ]
}
)";

inline constexpr char SmallProject[] = R"({
  "name": "Test",
  "flow": "Floorplanning",
  "device": "device.json",
  "design": "design.json",
  "implementations": [{"name": "one"}, {"name": "two", "directory": "other/../deux"}],
  "defaultImplementation": "two"
}
)";

// The design file with these resources, a JSON array.
inline QByteArray designWith(const QByteArray& resources)
{
    return "{\"name\": \"top\", \"resources\":\n" + resources + "\n}\n";
}

// A project in a temporary folder. It begins as the smallest one that has everything: two neighbouring units of two
// channels and a transmit PLL each, a third unit apart, one without channels, two reference clocks, two banks of two
// supplies, and a design of these resources. Tests replace what they are about.
class ProjectFolder
{
public:
    explicit ProjectFolder(const QByteArray& resources = "[]")
        : m_folder(QDir::tempPath() + "/zel project \u00e4\u00f6-XXXXXX")
    {
        write("project.json", SmallProject);
        write("device.json", SmallDevice);
        write("design.json", designWith(resources));
    }

    void write(const QString& fileName, const QByteArray& content)
    {
        zeltest::writeFile(m_folder.filePath(fileName), content);
    }

    [[nodiscard]] QString path() const { return m_folder.path(); }

    // A message without the folder's path in front of the file name.
    [[nodiscard]] QString withoutPath(const QString& message) const
    {
        return QString(message).remove(QDir::toNativeSeparators(m_folder.path() + '/'));
    }

private:
    QTemporaryDir m_folder;
};
