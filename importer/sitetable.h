// SPDX-License-Identifier: MIT
#pragma once

#include "importer/tablereader.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace mirn::zelimporter {

// Texts that are kept once; each has a number, in the order of their first appearance.
class TextNumbers
{
public:
    [[nodiscard]] int find(std::string_view text) const; // -1 if there is no such text
    int add(std::string_view text); // returns the number, a new one or that of an equal text
    [[nodiscard]] const std::string& text(int number) const { return m_texts[static_cast<std::size_t>(number)]; }
    [[nodiscard]] int size() const { return static_cast<int>(m_texts.size()); }

private:
    std::deque<std::string> m_texts; // a deque never moves them
    std::unordered_map<std::string_view, int> m_numbers;
};

// The sites of a device as a table describes them. Coordinates are those of the table. A site's number is its place in
// the table, from 0.
class SiteTable
{
public:
    static constexpr int None = -1;

    struct Site
    {
        double x = 0; // of the corner with the smallest coordinates
        double y = 0;
        double width = 0;
        double height = 0;
        int kind = None; // number in kinds()
        int parent = None; // number of a site
        int level = 0; // how many sites it lies in, or what the table says
        int group = None; // number in groups()
        int tooltip = None; // number in tooltips()
    };

    // What the columns mean and how coordinates count.
    struct Options
    {
        QStringList columns; // "role=name of the column", for columns that are not named like their role
        char separator = 0; // 0: found out from the header
        bool isUpwards = false; // whether y grows upwards, as in a chip, and not downwards, as in a drawing
    };

    // Reads the table. Returns an empty text for success, else one sentence that says where the fault is and what was
    // expected.
    [[nodiscard]] QString read(const QString& fileName, const Options& options, TableReader::Progress progress);

    [[nodiscard]] const std::vector<Site>& sites() const { return m_sites; }
    [[nodiscard]] const TextNumbers& names() const { return m_names; } // by the number of the site
    [[nodiscard]] const TextNumbers& kinds() const { return m_kinds; }
    [[nodiscard]] const TextNumbers& groups() const { return m_groups; }
    [[nodiscard]] const TextNumbers& tooltips() const { return m_tooltips; }

    // The columns without another meaning, and the value of each site in them.
    [[nodiscard]] const std::vector<std::string>& attributeNames() const { return m_attributeNames; }
    [[nodiscard]] const std::string& attribute(int site, int attribute) const;

    [[nodiscard]] int levels() const { return m_levels; } // one more than the highest level

    // One sentence each: what was read in another way than it was written.
    [[nodiscard]] const QStringList& warnings() const { return m_warnings; }

private:
    class Reading;

    std::vector<Site> m_sites;
    TextNumbers m_names;
    TextNumbers m_kinds;
    TextNumbers m_groups;
    TextNumbers m_tooltips;
    std::vector<std::string> m_attributeNames;
    TextNumbers m_values;
    std::vector<int> m_attributes; // numbers in m_values, row by row
    int m_levels = 0;
    QStringList m_warnings;
};

} // namespace mirn::zelimporter
