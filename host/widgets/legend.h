// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QWidget>

class QLabel;

namespace mirn::zelchip {

// The meanings of the colours of marked elements, as a row of swatches for the status bar. If there is no room for the
// words, only the swatches are shown, with the words in their tooltips.
class Legend final : public QWidget
{
    Q_OBJECT
public:
    explicit Legend(QWidget* parent);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void add(const QColor& fill, const QColor& border, const QString& text, const QString& tip);

    QList<QLabel*> m_words; // children
    QSize m_fullSize;
    QSize m_swatchesSize;
};

} // namespace mirn::zelchip
