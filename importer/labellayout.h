// SPDX-License-Identifier: MIT
#pragma once

#include "importer/drawinglayout.h"
#include "importer/importedsites.h"

#include <map>
#include <string_view>
#include <utility>
#include <vector>

namespace mirn::zelimporter {

// Which names are written on sites, how large, and at which magnifications. A site is labelled with its name, or with
// its kind where the name does not fit. The name of a site with others in it stands above these if there is room, else
// it makes way for them. A drawing has a limited number of labels: levels with many sites do without.
class LabelLayout
{
public:
    LabelLayout(const ImportedSites& sites, const DrawingLayout& layout);

    struct Label
    {
        std::string_view text; // valid as long as the sites
        double x; // of its middle
        double y;
        double size; // of the letters
        bool isUpright; // whether it reads from the bottom to the top
        int layer;
    };

    struct Room // drawing units
    {
        double width;
        double height;
    };

    // The labels of sites that are of one kind and one level.
    [[nodiscard]] std::vector<Label> labelsOf(const std::vector<int>& group);

    // The steps in which a layer is shown, both included; by the numbers of all layers that labels have.
    struct Range
    {
        int first;
        int last;
    };
    [[nodiscard]] const std::map<int, Range>& layers() const { return m_layers; }

private:
    struct Style // of a group
    {
        double size;
        bool isUpright;
        bool isKind; // whether the sites are labelled with their kind
    };

    [[nodiscard]] Style styleOf(const std::vector<int>& group) const;
    [[nodiscard]] std::string_view textOf(int site, bool isKind) const;
    [[nodiscard]] bool placeAbove(Label& label, int site, const Room& room) const;
    [[nodiscard]] Label labelOn(int site, const Style& style);
    [[nodiscard]] int layerFor(int first, int last);

    const ImportedSites& m_sites;
    const DrawingLayout& m_layout;
    std::vector<float> m_tops; // by site: where the highest of those in it begins; 0 for none
    std::map<std::pair<int, int>, int> m_numbers; // of the layers, by their steps
    std::map<int, Range> m_layers;
    int m_left; // how many labels there may still be
};

} // namespace mirn::zelimporter
