// SPDX-License-Identifier: MIT
#pragma once

#include <QPaintDevice>
#include <QPaintEngine>
#include <QSizeF>

namespace mirn::zelchip {

// A paint device whose picture is what an engine writes into a file. One QPainter may draw on it, once.
class PicturePage final : public QPaintDevice
{
public:
    // `size` is in pixels, of which an inch has `resolution`. The engine is not owned.
    PicturePage(QPaintEngine& engine, const QSizeF& size, int resolution);

    // What the engines of such files can do.
    [[nodiscard]] static QPaintEngine::PaintEngineFeatures features();

    [[nodiscard]] QPaintEngine* paintEngine() const override { return &m_engine; }

protected:
    [[nodiscard]] int metric(PaintDeviceMetric which) const override;

private:
    QPaintEngine& m_engine;
    const QSizeF m_size;
    const int m_resolution;
};

} // namespace mirn::zelchip
