// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/zelviewlayer.h"

#include <QFont>
#include <QRectF>
#include <QSizeF>
#include <QString>

#include <vector>

class zelchipengine;

namespace mirn::zelchipview {

class ZelGraphicsScene;

// Writes the name of its resource on every occupied site that has room for it: the last two components of the path, or
// the last one. A name is never cut. Where the drawing has texts of its own on the site, the name keeps off them, on a
// plate in the site's colour, or is left out. The engine has to be a zelplanengine, else there are no names; it is
// asked once after each refresh().
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
        int site; // element id
        QRectF area; // of the site, in scene coordinates
        QString texts[2]; // the longer one first
        double widths[2]; // pixels
    };

    void collect(ZelGraphicsScene& scene);
    void measure(const QFont& font);
    [[nodiscard]] bool hasRoomForAny(double scale) const;
    void paintName(QPainter& painter, ZelGraphicsScene& scene, const Name& name, const QRectF& site) const;

    zelchipengine& m_engine;
    std::vector<Name> m_names;
    bool m_areCollected = false;
    QFont m_font; // that the widths are measured in
    double m_height = 0; // of a name, in pixels
    double m_narrowest = 0; // of all names, in pixels
    QSizeF m_largest; // width and height of the widest and the highest site, in scene units
};

} // namespace mirn::zelchipview
