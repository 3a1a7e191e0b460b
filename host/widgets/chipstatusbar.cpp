// SPDX-License-Identifier: MIT
#include "host/widgets/chipstatusbar.h"

#include "host/look/palettes.h"
#include "host/widgets/elidedlabel.h"
#include "host/widgets/legend.h"

#include <QFrame>
#include <QLocale>
#include <QMessageBox>
#include <QToolButton>

#include <cmath>

namespace mirn::zelchip {

namespace {

const char StyleSheet[] = R"(
QStatusBar { border-top: 1px solid palette(mid); }
QStatusBar::item { border: none; }
QLabel { padding: 2px 0; }
QToolButton { border: none; padding: 2px 8px; color: %1; }
)";

const char Amber[] = "#9a5b00"; // of the warnings
const char DarkAmber[] = "#f0b357"; // of the warnings, in a dark window
const char ErrorRed[] = "#b3261e";
const char DarkErrorRed[] = "#ff8a80"; // in a dark window

constexpr int SignificantDigits = 3;
constexpr int LargestPrecision = 9; // digits after the decimal point
constexpr int ListedWarnings = 20; // with more, a message box could be taller than the screen

// Formats with three significant digits, no exponent and no trailing zeros.
QString plainNumber(double value)
{
    const int magnitude = value == 0 ? 0 : static_cast<int>(std::floor(std::log10(qAbs(value))));
    QString text = QString::number(value, 'f', qBound(0, SignificantDigits - 1 - magnitude, LargestPrecision));
    if (!text.contains(QLatin1Char('.')))
        return text;
    while (text.endsWith(QLatin1Char('0')))
        text.chop(1);
    return text.endsWith(QLatin1Char('.')) ? text.chopped(1) : text;
}

QString coordinateText(double value)
{
    const QString text = QString::number(value, 'f', 1);
    return text == QLatin1String("-0.0") ? QStringLiteral("0.0") : text;
}

} // namespace

QString positionText(const QPointF& position)
{
    return QStringLiteral("%1, %2").arg(coordinateText(position.x()), coordinateText(position.y()));
}

QString magnificationText(double factor)
{
    return ChipStatusBar::tr("%1x").arg(plainNumber(factor));
}

ChipStatusBar::ChipStatusBar(QWidget* parent)
    : QStatusBar(parent)
    , m_element(new ElidedLabel(this))
    , m_warningButton(new QToolButton(this))
    , m_problemButton(new QToolButton(this))
    , m_legend(new Legend(this))
{
    setStyleSheet(QString::fromLatin1(StyleSheet).arg(QLatin1String(isDark(palette()) ? DarkAmber : Amber)));
    setSizeGripEnabled(false);
    m_element->setObjectName(QStringLiteral("element"));
    // While there is a message, Qt hides the parts that are not permanent and paints the message there, without dots at
    // the end of one that is too long. This part is permanent and shows the message itself.
    addPermanentWidget(m_element, 1);
    connect(this, &QStatusBar::messageChanged, this, &ChipStatusBar::showFirstPart);
    m_warningButton->setObjectName(QStringLiteral("warnings"));
    m_warningButton->setToolTip(tr("What is drawn differently or not at all"));
    m_warningButton->hide();
    connect(m_warningButton, &QToolButton::clicked, this, &ChipStatusBar::showWarnings);
    addPermanentWidget(m_warningButton);
    m_problemButton->setObjectName(QStringLiteral("problems"));
    m_problemButton->setFocusPolicy(Qt::NoFocus); // the menu opens the list without a mouse
    m_problemButton->hide();
    connect(m_problemButton, &QToolButton::clicked, this, &ChipStatusBar::problemsRequested);
    addPermanentWidget(m_problemButton);
    addPermanentWidget(m_legend);
    connect(m_legend, &Legend::resized, this, &ChipStatusBar::showFirstPart);
    m_place = addSegment(QStringLiteral("position"), tr("Q8 > row 88, column 88"));
    m_place->setToolTip(tr("Click to switch between the site and drawing units"));
    connect(m_place, &ElidedLabel::clicked, this, [this] {
        m_areUnitsShown = !m_areUnitsShown;
        showPlace();
    });
    m_magnification = addSegment(QStringLiteral("magnification"), magnificationText(-0.00888));
}

// Adds a permanent part after a separator line. Its width is fixed, so that nothing moves when its text changes.
ElidedLabel* ChipStatusBar::addSegment(const QString& name, const QString& widestText)
{
    auto* label = new ElidedLabel(this);
    label->setObjectName(name);
    label->setAlignment(Qt::AlignCenter);
    label->ensurePolished();
    label->setFixedWidth(label->widthOf(widestText));
    label->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
    auto* line = new QFrame(this);
    line->setFrameStyle(QFrame::VLine | QFrame::Plain);
    line->setForegroundRole(QPalette::Mid);
    addPermanentWidget(line);
    addPermanentWidget(label);
    return label;
}

// A message replaces the element. If the text is too long, the legend yields: first its words, then, for a message, all
// of it.
void ChipStatusBar::showFirstPart()
{
    const QString message = currentMessage();
    m_element->setText(!message.isEmpty() ? message : m_elementText.isEmpty() ? m_summary : m_elementText);
    const int together = m_element->width() + (m_legend->isHidden() ? 0 : m_legend->width());
    const int room = together - m_element->widthOf(m_element->text());
    const bool hasWords = room >= m_legend->sizeHint().width();
    m_legend->setMaximumWidth(hasWords ? QWIDGETSIZE_MAX : m_legend->minimumSizeHint().width());
    m_legend->setVisible(message.isEmpty() || room >= m_legend->minimumSizeHint().width());
}

void ChipStatusBar::showPlace()
{
    m_place->setText(m_site.isEmpty() || m_areUnitsShown ? m_positionText : m_site);
}

void ChipStatusBar::resizeEvent(QResizeEvent* event)
{
    QStatusBar::resizeEvent(event);
    showFirstPart();
}

void ChipStatusBar::setSummary(const QString& summary)
{
    m_summary = summary;
    clearPointer();
}

void ChipStatusBar::setWarnings(const QStringList& warnings)
{
    m_warnings = warnings;
    m_warningButton->setText(warnings.size() == 1 ? tr("1 warning") : tr("%1 warnings").arg(warnings.size()));
    m_warningButton->setVisible(!warnings.isEmpty());
}

void ChipStatusBar::setProblems(int errors, int warnings)
{
    const int count = errors + warnings;
    m_problemButton->setText(count == 1 ? tr("1 problem") : tr("%1 problems").arg(locale().toString(count)));
    const QString errorText = errors == 1 ? tr("1 error") : tr("%1 errors").arg(locale().toString(errors));
    const QString warningText = warnings == 1 ? tr("1 warning") : tr("%1 warnings").arg(locale().toString(warnings));
    m_problemButton->setToolTip(tr("%1, %2; a click lists them").arg(errorText, warningText));
    const QString red = QLatin1String(isDark(palette()) ? DarkErrorRed : ErrorRed);
    m_problemButton->setStyleSheet(errors > 0 ? QStringLiteral("color: %1").arg(red) : QString());
    m_problemButton->setVisible(count > 0);
}

void ChipStatusBar::showWarnings()
{
    auto* box = new QMessageBox(QMessageBox::Warning, tr("Warnings"),
        m_warnings.mid(0, ListedWarnings).join(QLatin1Char('\n')), QMessageBox::Close, window());
    if (m_warnings.size() > ListedWarnings)
        box->setInformativeText(tr("and %1 more").arg(m_warnings.size() - ListedWarnings));
    box->setTextFormat(Qt::PlainText);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
}

void ChipStatusBar::showPointer(const QPointF& position, const QString& element, const QString& site)
{
    m_elementText = element;
    m_site = site;
    m_positionText = positionText(position);
    showFirstPart();
    showPlace();
}

void ChipStatusBar::clearPointer()
{
    m_elementText.clear();
    m_site.clear();
    m_positionText.clear();
    showFirstPart();
    showPlace();
}

void ChipStatusBar::showMagnification(double factor)
{
    m_magnification->setText(magnificationText(factor));
}

} // namespace mirn::zelchip
