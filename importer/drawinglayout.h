// SPDX-License-Identifier: MIT
#pragma once

#include "importer/importedsites.h"
#include "importer/importoptions.h"

#include <vector>

namespace mirn::zelimporter {

// Where sites are in the drawing, and from which magnification on each level of them is shown. Magnifications are
// pixels for a drawing unit; they count in the view's steps, of which step 0 is a magnification of 1.
class DrawingLayout
{
public:
    DrawingLayout(const ImportedSites& sites, const ImportOptions& options);

    static constexpr int Always = -1000; // the step of what is always shown

    struct Area // in drawing units, y downwards
    {
        double x;
        double y;
        double width;
        double height;
    };

    struct Level
    {
        double side = 0; // of a typical site, its shorter one
        int firstStep = Always; // from which its sites are shown
        double border = 0; // how thick; 0 for none, because the sites are too small at first
        double gap = 0; // by which sites without a border are smaller on each side
    };

    [[nodiscard]] double width() const { return m_body.width + 2 * m_margin; }
    [[nodiscard]] double height() const { return m_body.height + m_margin + m_top; }
    [[nodiscard]] const Area& body() const { return m_body; } // what all sites cover
    [[nodiscard]] double margin() const { return m_margin; }
    [[nodiscard]] double titleSize() const { return m_titleSize; } // of the letters
    [[nodiscard]] double scale() const { return m_scale; } // drawing units for one of the coordinates
    [[nodiscard]] const Level& level(int number) const { return m_levels[static_cast<std::size_t>(number)]; }
    // Whether the second level is hidden at first, so that the sites that hold it need a look of their own meanwhile.
    [[nodiscard]] bool hasLids() const { return m_levels.size() > 1 && m_levels[1].firstStep != Always; }
    // The number of a layer of the drawing; that of a level of sites is one more than the level's.
    [[nodiscard]] int lidLayer() const { return static_cast<int>(m_levels.size()) + 1; }
    // The step at which a window of usual size shows the whole drawing.
    [[nodiscard]] int fitStep() const { return m_fitStep; }
    [[nodiscard]] Area areaOf(const ImportedSites::Site& site) const;
    // How many sites have no width or no height; they are drawn larger than they are.
    [[nodiscard]] int flatSites() const { return m_flatSites; }

    // The lowest step at which this length, in drawing units, has so many pixels.
    [[nodiscard]] static int stepFor(double length, double pixels);
    // The scale value of a step, as the drawing file names it.
    [[nodiscard]] static double scaleValue(int step);
    [[nodiscard]] static double magnification(int step);

private:
    void measure(const ImportedSites& sites);
    void chooseScale(double extent, double given);
    void arrange();
    void arrangeLevels();

    std::vector<Level> m_levels; // the sides are those of the table until the scale is known
    double m_left = 0; // of the coordinates: the smallest
    double m_upper = 0; // the smallest, or with y upwards the largest
    double m_lower = 0;
    double m_right = 0;
    bool m_isUpwards;
    double m_scale = 1;
    double m_least = 0; // a drawn side is at least as long
    Area m_body{};
    double m_margin = 0;
    double m_top = 0; // the margin above, where the title is
    double m_titleSize = 0;
    int m_fitStep = 0;
    int m_flatSites = 0;
};

} // namespace mirn::zelimporter
