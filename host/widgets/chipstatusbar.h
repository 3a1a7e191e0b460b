// SPDX-License-Identifier: MIT
#pragma once

#include <QPointF>
#include <QStatusBar>
#include <QStringList>

class QLabel;
class QToolButton;

namespace mirn::zelchip {

class ElidedLabel;
class Legend;

// The main window's status bar and its child: the element under the pointer, the parser's warnings and the number of
// the design's problems if there are any, the pointer's place and the magnification. Messages replace the first part
// for some seconds; a long one also takes the room of the legend.
class ChipStatusBar final : public QStatusBar
{
    Q_OBJECT
public:
    explicit ChipStatusBar(QWidget* parent);

    // Sets the text about the open project that is shown while the pointer is on no element.
    void setSummary(const QString& summary);

    // An empty list hides the warnings.
    void setWarnings(const QStringList& warnings);

    [[nodiscard]] Legend* legend() const { return m_legend; }

    // Nothing is shown where there are none.
    void setProblems(int errors, int warnings);

Q_SIGNALS:
    // Emitted by a click on the count of problems.
    void problemsRequested();

public Q_SLOTS:
    // `position` is in scene units, `site` is the place in the device's own terms. The bar shows the site if there is
    // one, else the position; a click on it switches to the position and back.
    void showPointer(const QPointF& position, const QString& element, const QString& site);
    void clearPointer();
    void showMagnification(double factor);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    ElidedLabel* addSegment(const QString& name, const QString& widestText);
    void showWarnings();
    void showFirstPart();
    void showPlace();

    QString m_summary;
    QString m_elementText;
    QString m_site;
    QString m_positionText;
    bool m_areUnitsShown = false; // whether the position is shown even where there is a site
    QStringList m_warnings;
    ElidedLabel* m_element; // these are children of the status bar
    QToolButton* m_warningButton;
    QToolButton* m_problemButton;
    Legend* m_legend;
    ElidedLabel* m_place;
    QLabel* m_magnification;
};

// Formats scene units with one decimal, as in "12.3, -4.0".
[[nodiscard]] QString positionText(const QPointF& position);

// Formats the factor of the view's transform, as in "2.4x".
[[nodiscard]] QString magnificationText(double factor);

} // namespace mirn::zelchip
