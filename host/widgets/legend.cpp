// SPDX-License-Identifier: MIT
#include "host/widgets/legend.h"

#include "graphics/zelconstants.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>

#include <utility>

namespace mirn::zelchip {

namespace {

constexpr int SwatchSize = 11; // device-independent pixels

// Colours of free and occupied sites of the sample: an occupied site has the darker shade of its kind's colour.
const QColor FreeSite(0xc9, 0xbc, 0xe0);
const QColor OccupiedSite(0xa6, 0x90, 0xd2);
const QColor ConflictingSite(0xff, 0x4a, 0x2e);

QPixmap swatch(const QColor& fill, const QColor& border, qreal ratio)
{
    QPixmap pixmap(QSize(SwatchSize, SwatchSize) * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(fill);
    QPainter painter(&pixmap);
    painter.setPen(border);
    painter.drawRect(QRectF(0, 0, SwatchSize - 1, SwatchSize - 1));
    return pixmap;
}

} // namespace

Legend::Legend(QWidget* parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("legend"));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(8, 0, 8, 0);
    row->setSpacing(4);
    add(zelchipview::SELECTED_FILL_COLOR, zelchipview::SELECTED_COLOR, tr("selected"), tr("Selected elements"));
    add(zelchipview::HIGHLIGHT_COLOR, zelchipview::HIGHLIGHT_COLOR, tr("probable"),
        tr("Sites that take the dragged resource"));
    add(zelchipview::FILTER_FILL_COLOR, zelchipview::FILTERCOLOR, tr("filtered"),
        tr("Elements of the kinds that are ticked in the filter"));
    add(OccupiedSite, FreeSite, tr("occupied"), tr("Occupied sites: a darker shade of their kind's colour"));
    add(ConflictingSite, ConflictingSite, tr("conflicting"), tr("Occupied sites that a setting puts out of use"));
    row->addStretch();
    m_fullSize = row->sizeHint();
    for (QLabel* words : std::as_const(m_words))
        words->hide();
    m_swatchesSize = row->minimumSize();
}

void Legend::add(const QColor& fill, const QColor& border, const QString& text, const QString& tip)
{
    auto* row = static_cast<QHBoxLayout*>(layout());
    auto* picture = new QLabel(this);
    picture->setPixmap(swatch(fill, border, devicePixelRatioF()));
    auto* words = new QLabel(text, this);
    for (QLabel* part : {picture, words}) {
        part->setToolTip(tip);
        part->setContentsMargins(0, 0, 0, 0);
        part->setStyleSheet(QStringLiteral("padding: 0px; margin: 0px;"));
    }
    row->addWidget(picture);
    row->addWidget(words);
    row->addSpacing(6);
    m_words.append(words);
}

QSize Legend::sizeHint() const
{
    return m_fullSize;
}

QSize Legend::minimumSizeHint() const
{
    return m_swatchesSize;
}

void Legend::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    for (QLabel* words : std::as_const(m_words))
        words->setVisible(width() >= m_fullSize.width());
}

} // namespace mirn::zelchip
