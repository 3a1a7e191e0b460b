// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/zelviewlayer.h"

#include <QFont>
#include <QHash>
#include <QRectF>
#include <QString>

#include <vector>

class zelchipengine;

namespace mirn::zelchipview {

class ZelGraphicsScene;
class ZelGraphicsView;

// Writes the name of its resource on every occupied site that has room for it: the last two components of the path, or
// the last one. A name is never cut. Where the drawing has texts of its own on the site, the name keeps off them, on a
// plate in the site's colour, or is left out. The engine has to be a zelplanengine, else there are no names; it is
// asked only for elements in sight that are large enough for a name, once after each refresh().
class ZELCHIPGUI_EXPORT NameLayer final : public ZelViewLayer
{
    Q_OBJECT
public:
    NameLayer(ZelGraphicsView* view, zelchipengine& engine);
    ~NameLayer() override;

    // Call it when placements have changed or the drawing has been loaded again.
    void refresh();

    void paint(QPainter& painter, const QRect& exposed) override;

private:
    struct Name
    {
        QString texts[2]; // the longer one first; empty if the site is free
        double widths[2]; // pixels
    };

    void collect(ZelGraphicsScene& scene);
    void measure();
    [[nodiscard]] const std::vector<int>& sitesIn(ZelGraphicsScene& scene, const QRectF& area, double lowest);
    [[nodiscard]] const Name& nameOf(int site);
    [[nodiscard]] double widthOf(const QString& text);
    void paintName(QPainter& painter, ZelGraphicsScene& scene, int site, const QRectF& area);

    zelchipengine& m_engine;
    std::vector<int> m_sites; // the display list's places of all elements that may be sites, the highest first
    unsigned m_listVersion = 0; // of the display list that they were collected from; 0 if they were not
    std::vector<int> m_found;
    QHash<int, Name> m_names; // by element id: those asked for since the last refresh
    QFont m_font; // that the widths are measured in
    double m_height = 0; // of a name, in pixels
    QHash<QString, double> m_widths; // by text, in pixels
};

} // namespace mirn::zelchipview
