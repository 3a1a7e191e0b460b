// SPDX-License-Identifier: MIT
#include "planning/siteframe.h"

#include <QAccessibleWidget>
#include <QPainter>

namespace mirn::zelchipview {

namespace {

constexpr int DarkWidth = 3; // pixels; between a light line on each side, so that it can be seen on every colour
constexpr int LightWidth = 1;
constexpr int FrameWidth = DarkWidth + 2 * LightWidth;
constexpr int SmallestInside = 6; // pixels; a tiny site is surrounded at a distance

class SiteFrameInterface final : public QAccessibleWidget
{
public:
    explicit SiteFrameInterface(SiteFrame* frame)
        : QAccessibleWidget(frame, QAccessible::ListItem)
        , m_frame(frame)
    { }

    [[nodiscard]] QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.focusable = true;
        // The focus is in the view, which is the viewport's parent.
        state.focused = m_frame->isVisible() && m_frame->parentWidget()->parentWidget()->hasFocus();
        return state;
    }

    [[nodiscard]] QStringList actionNames() const override { return {pressAction()}; }

    void doAction(const QString& name) override
    {
        if (name == pressAction())
            Q_EMIT m_frame->pressed();
    }

private:
    SiteFrame* const m_frame;
};

QAccessibleInterface* newSiteFrameInterface(const QString&, QObject* object)
{
    auto* frame = qobject_cast<SiteFrame*>(object);
    return frame ? new SiteFrameInterface(frame) : nullptr; // owned by Qt's cache
}

} // namespace

SiteFrame::SiteFrame(QWidget* viewport)
    : QWidget(viewport)
{
    static const bool isInstalled = [] {
        QAccessible::installFactory(newSiteFrameInterface);
        return true;
    }();
    Q_UNUSED(isInstalled)
    setObjectName(QStringLiteral("siteFrame"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_OpaquePaintEvent);
    hide();
}

void SiteFrame::surround(const QRect& area)
{
    const int missingWidth = qMax(0, SmallestInside - area.width());
    const int missingHeight = qMax(0, SmallestInside - area.height());
    const QRect inside
        = area.adjusted(-(missingWidth + 1) / 2, -(missingHeight + 1) / 2, missingWidth / 2, missingHeight / 2);
    const QRect outside = inside.adjusted(-FrameWidth, -FrameWidth, FrameWidth, FrameWidth);
    if (outside.size() != size())
        setMask(QRegion(QRect(QPoint(), outside.size())) - inside.translated(-outside.topLeft()));
    if (outside != geometry())
        setGeometry(outside);
    show();
}

void SiteFrame::announce()
{
    QAccessibleEvent focus(this, QAccessible::Focus);
    QAccessible::updateAccessibility(&focus);
}

void SiteFrame::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), Qt::white);
    QRegion dark(rect().adjusted(LightWidth, LightWidth, -LightWidth, -LightWidth));
    dark -= rect().adjusted(
        LightWidth + DarkWidth, LightWidth + DarkWidth, -LightWidth - DarkWidth, -LightWidth - DarkWidth);
    for (const QRect& part : dark)
        painter.fillRect(part, Qt::black);
}

} // namespace mirn::zelchipview
