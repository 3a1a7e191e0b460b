// SPDX-License-Identifier: MIT
#pragma once

#include <QPointF>
#include <QStatusBar>
#include <QStringList>

class QLabel;
class QToolButton;

namespace mirn::zelchip {

// The main window's status bar and its child: the element under the pointer, the parser's warnings if there are any,
// the pointer's position and the magnification. Messages cover the first part for some seconds.
class ChipStatusBar final : public QStatusBar
{
    Q_OBJECT
public:
    explicit ChipStatusBar(QWidget* parent);

    // Sets the text about the open project that is shown while the pointer is on no element.
    void setSummary(const QString& summary);

    // An empty list hides the warnings.
    void setWarnings(const QStringList& warnings);

public Q_SLOTS:
    void showPointer(const QPointF& position, const QString& element);
    void clearPointer();
    void showMagnification(double factor);

private:
    QLabel* addSegment(const QString& name, const QString& widestText);
    void showWarnings();

    QString m_summary;
    QStringList m_warnings;
    QLabel* m_element; // these are children of the status bar
    QToolButton* m_warningButton;
    QLabel* m_position;
    QLabel* m_magnification;
};

// Formats scene units with one decimal, as in "12.3, -4.0".
[[nodiscard]] QString positionText(const QPointF& position);

// Formats the factor of the view's transform, as in "2.4x".
[[nodiscard]] QString magnificationText(double factor);

} // namespace mirn::zelchip
