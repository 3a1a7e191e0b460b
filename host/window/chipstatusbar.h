// SPDX-License-Identifier: MIT
#pragma once

#include <QPointF>
#include <QStatusBar>
#include <QStringList>

class QLabel;
class QToolButton;

namespace mirn::zelchip {

// The main window's status bar: what the pointer is on, the parser's warnings if there are any, the pointer's position
// and the scale. Messages cover the first part for a while.
class ChipStatusBar final : public QStatusBar
{
    Q_OBJECT
public:
    explicit ChipStatusBar(QWidget* parent);

    // Shown while the pointer is on no element: what is open.
    void setSummary(const QString& summary);

    // Empty for none.
    void setWarnings(const QStringList& warnings);

public Q_SLOTS:
    void showPointer(const QPointF& position, const QString& element);
    void clearPointer();
    void showScale(double factor, double scale);

private:
    QLabel* addSegment(const QString& name, const QString& widestText);
    void showWarnings();

    QString m_summary;
    QStringList m_warnings;
    QLabel* m_element; // this and the following: children of the status bar
    QToolButton* m_warningButton;
    QLabel* m_position;
    QLabel* m_scale;
};

// "12.3, -4.0": scene units with one decimal.
[[nodiscard]] QString positionText(const QPointF& position);

// "2.4x  scale 1.5": the factor of the view's transform and the value that layer ranges are compared with.
[[nodiscard]] QString scaleText(double factor, double scale);

} // namespace mirn::zelchip
