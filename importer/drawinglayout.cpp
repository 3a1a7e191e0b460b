// SPDX-License-Identifier: MIT
#include "importer/drawinglayout.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace mirn::zelimporter {

namespace {

constexpr double Step = 0.25; // of the view: one zooms by 1.25
constexpr double WindowWidth = 1150; // pixels of the drawing's part of a window of 1600 x 1000
constexpr double WindowHeight = 800;
constexpr double PixelsToShow = 4; // of the shorter side of a typical site, from which its level is shown
constexpr double PixelsForBorder = 8; // the same, from which a border of a pixel is thin
constexpr double BorderShare = 0.02; // of the side
constexpr double GapShare = 0.04;
constexpr double SmallestExtent = 1000; // drawing units; letters have fifths of a unit
constexpr double LargestExtent = 60000;
constexpr double SuitableSide = 8; // drawing units of a site of the deepest level
constexpr double SmallestSuitableSide = 4;
constexpr double LeastShare = 1e-5; // of the extent, which is the shortest side drawn
constexpr double MarginShare = 0.03;
constexpr double TitlePixels = 15;

// Returns the number of 1, 2, 5, 10, 20, ... that is nearest.
double roundNumber(double number)
{
    const double power = std::pow(10.0, std::floor(std::log10(number)));
    constexpr std::array<double, 4> Candidates{1, 2, 5, 10};
    const auto distance = [number, power](double candidate) { return std::abs(std::log(candidate * power / number)); };
    return power * *std::min_element(Candidates.begin(), Candidates.end(), [&distance](double a, double b) {
        return distance(a) < distance(b);
    });
}

double middleOf(std::vector<float>& numbers)
{
    if (numbers.empty())
        return 0;
    const auto middle = numbers.begin() + static_cast<std::ptrdiff_t>(numbers.size() / 2);
    std::nth_element(numbers.begin(), middle, numbers.end());
    return *middle;
}

} // namespace

DrawingLayout::DrawingLayout(const ImportedSites& sites, const ImportOptions& options)
    : m_levels(static_cast<std::size_t>(sites.levels))
    , m_isUpwards(options.y == VerticalAxis::Up)
{
    measure(sites);
    chooseScale(std::max(m_right - m_left, m_lower - m_upper), options.unitScale);
    arrange();
    arrangeLevels();
}

void DrawingLayout::measure(const ImportedSites& sites)
{
    std::vector<std::vector<float>> sides(m_levels.size());
    bool isFirst = true;
    for (const ImportedSites::Site& site : sites.sites) {
        m_left = isFirst ? site.x : std::min(m_left, site.x);
        m_upper = isFirst ? site.y : std::min(m_upper, site.y);
        m_right = isFirst ? site.x + site.width : std::max(m_right, site.x + site.width);
        m_lower = isFirst ? site.y + site.height : std::max(m_lower, site.y + site.height);
        isFirst = false;
        const double side = std::min(site.width, site.height);
        if (side > 0)
            sides[static_cast<std::size_t>(site.level)].push_back(static_cast<float>(side));
        else
            ++m_flatSites;
    }
    for (std::size_t i = 0; i < m_levels.size(); ++i)
        m_levels[i].side = middleOf(sides[i]);
}

// The deepest level decides: its letters must not be too small for the view, which knows fifths of a unit.
void DrawingLayout::chooseScale(double extent, double given)
{
    double side = 0;
    for (const Level& level : m_levels)
        side = level.side > 0 ? level.side : side;
    extent = extent > 0 ? extent : 1;
    side = side > 0 ? side : extent;
    const bool isSuitable = extent >= SmallestExtent && extent <= LargestExtent && side >= SmallestSuitableSide;
    const double wanted = std::min(std::max(SuitableSide / side, SmallestExtent / extent), LargestExtent / extent);
    m_scale = given > 0 ? given : isSuitable ? 1 : roundNumber(wanted);
    m_least = extent * m_scale * LeastShare;
    for (Level& level : m_levels)
        level.side = level.side > 0 ? level.side * m_scale : extent * m_scale / 100;
}

void DrawingLayout::arrange()
{
    m_body.width = std::max((m_right - m_left) * m_scale, m_least);
    m_body.height = std::max((m_lower - m_upper) * m_scale, m_least);
    m_margin = MarginShare * std::max(m_body.width, m_body.height);
    const double fit
        = std::min(WindowWidth / (m_body.width + 2 * m_margin), WindowHeight / (m_body.height + 3 * m_margin));
    m_fitStep = static_cast<int>(std::floor(std::log(fit) / std::log1p(Step)));
    m_titleSize = TitlePixels / fit;
    m_top = m_margin + 2 * m_titleSize;
    m_body.x = m_margin;
    m_body.y = m_top;
}

// What lies in a site is never shown before it.
void DrawingLayout::arrangeLevels()
{
    int step = Always;
    for (std::size_t i = 0; i < m_levels.size(); ++i) {
        Level& level = m_levels[i];
        const int own = stepFor(level.side, PixelsToShow);
        if (i > 0 && own > m_fitStep)
            step = std::max(step, own);
        level.firstStep = step;
        const double pixels = level.side * magnification(std::max(step, m_fitStep));
        level.border = pixels < PixelsForBorder ? 0 : level.side * BorderShare;
        level.gap = level.border > 0 ? 0 : level.side * GapShare;
    }
}

DrawingLayout::Area DrawingLayout::areaOf(const ImportedSites::Site& site) const
{
    const Level& level = m_levels[static_cast<std::size_t>(site.level)];
    const double top = m_isUpwards ? m_lower - site.y - site.height : site.y - m_upper;
    Area area{
        m_body.x + (site.x - m_left) * m_scale, m_body.y + top * m_scale, site.width * m_scale, site.height * m_scale};
    const auto widen = [&](double& begin, double& length) {
        const double least = length > 0 ? m_least : std::max(m_least, level.side / 2);
        if (length < least)
            begin -= (least - length) / 2;
        length = std::max(length, least);
        const double gap = std::min(level.gap, length * GapShare);
        begin += gap;
        length -= 2 * gap;
    };
    widen(area.x, area.width);
    widen(area.y, area.height);
    return area;
}

int DrawingLayout::stepFor(double length, double pixels)
{
    constexpr double Most = 500;
    return static_cast<int>(std::ceil(std::clamp(std::log(pixels / length) / std::log1p(Step), -Most, Most)));
}

double DrawingLayout::scaleValue(int step)
{
    return 1 + Step * step;
}

double DrawingLayout::magnification(int step)
{
    return std::pow(1 + Step, step);
}

} // namespace mirn::zelimporter
