// SPDX-License-Identifier: MIT
#include "host/widgets/legend.h"

#include "graphics/zelconstants.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>

namespace mirn::zelchip {

namespace {

const QString WordsName = QStringLiteral("words");
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

QWidget* newRow(QWidget* legend)
{
    auto* row = new QWidget(legend);
    auto* entries = new QHBoxLayout(row); // owned by the row
    entries->setContentsMargins(0, 0, 0, 0);
    entries->setSpacing(4);
    return row;
}

} // namespace

Legend::Legend(QWidget* parent)
    : QWidget(parent)
    , m_lasting(newRow(this))
{
    setObjectName(QStringLiteral("legend"));
    auto* rows = new QHBoxLayout(this);
    rows->setContentsMargins(8, 0, 8, 0);
    rows->setSpacing(0);
    rows->addWidget(m_lasting);
    rows->addStretch();
    const auto addSwatch = [this](const QColor& fill, const QColor& border, const QString& word, const QString& tip) {
        add(m_lasting, {swatch(fill, border, devicePixelRatioF()), word, tip});
    };
    addSwatch(zelchipview::SELECTED_FILL_COLOR, zelchipview::SELECTED_COLOR, tr("selected"), tr("Selected elements"));
    addSwatch(zelchipview::HIGHLIGHT_COLOR, zelchipview::HIGHLIGHT_COLOR, tr("probable"),
        tr("Sites that take the dragged resource"));
    addSwatch(zelchipview::FILTER_FILL_COLOR, zelchipview::FILTERCOLOR, tr("filtered"),
        tr("Elements of the kinds that are ticked in the filter"));
    addSwatch(OccupiedSite, FreeSite, tr("occupied"), tr("Occupied sites: a darker shade of their kind's colour"));
    addSwatch(ConflictingSite, ConflictingSite, tr("conflicting"), tr("Occupied sites that a setting puts out of use"));
    measure();
}

void Legend::setPassingEntries(const QList<Entry>& entries)
{
    delete m_passing;
    m_passing = entries.isEmpty() ? nullptr : newRow(this);
    for (const Entry& entry : entries)
        add(m_passing, entry);
    if (m_passing) {
        static_cast<QHBoxLayout*>(layout())->insertWidget(0, m_passing);
        m_passing->show();
    }
    measure();
    showWords();
    updateGeometry();
    Q_EMIT resized();
}

void Legend::add(QWidget* row, const Entry& entry)
{
    auto* picture = new QLabel(row);
    picture->setPixmap(entry.picture);
    auto* words = new QLabel(entry.word, row);
    words->setObjectName(WordsName);
    for (QLabel* part : {picture, words}) {
        part->setToolTip(entry.tip);
        part->setContentsMargins(0, 0, 0, 0);
        part->setStyleSheet(QStringLiteral("padding: 0px; margin: 0px;"));
        row->layout()->addWidget(part);
    }
    static_cast<QHBoxLayout*>(row->layout())->addSpacing(6);
}

QList<QLabel*> Legend::words() const
{
    return findChildren<QLabel*>(WordsName);
}

void Legend::measure()
{
    const QList<QLabel*> all = words();
    const auto sizeWith = [&](bool areShown) {
        for (QLabel* word : all)
            word->setVisible(areShown);
        for (QWidget* row : {m_passing, m_lasting}) {
            if (row)
                row->layout()->invalidate();
        }
        layout()->invalidate();
        return areShown ? layout()->sizeHint() : layout()->minimumSize();
    };
    m_fullSize = sizeWith(true);
    m_swatchesSize = sizeWith(false);
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
    showWords();
}

void Legend::showWords()
{
    const QList<QLabel*> all = words();
    for (QLabel* word : all)
        word->setVisible(width() >= m_fullSize.width());
}

} // namespace mirn::zelchip
