// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QPixmap>
#include <QWidget>

class QLabel;

namespace mirn::zelchip {

// The meanings of the colours of marked elements, as a row of swatches for the status bar, and of what else is on the
// drawing at present. If there is no room for the words, only the swatches are shown, with the words in their tooltips.
class Legend final : public QWidget
{
    Q_OBJECT
public:
    explicit Legend(QWidget* parent);

    struct Entry
    {
        QPixmap picture;
        QString word;
        QString tip; // a sentence
    };
    // Replaces the entries in front of the lasting ones.
    void setPassingEntries(const QList<Entry>& entries);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

Q_SIGNALS:
    // The size hints have changed.
    void resized();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void add(QWidget* row, const Entry& entry);
    void measure();
    [[nodiscard]] QList<QLabel*> words() const;
    void showWords();

    QWidget* m_passing = nullptr; // the row in front; these are children
    QWidget* const m_lasting;
    QSize m_fullSize;
    QSize m_swatchesSize;
};

} // namespace mirn::zelchip
