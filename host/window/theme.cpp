// SPDX-License-Identifier: MIT
#include "host/window/theme.h"

#include <QApplication>
#include <QFont>
#include <QPalette>
#include <QProxyStyle>

namespace mirn::zelchip {

namespace {

constexpr int OffscreenFontPixels = 12;

// The Fusion style without icons on the buttons of dialogs.
class PlainFusion final : public QProxyStyle
{
public:
    PlainFusion()
        : QProxyStyle(QStringLiteral("Fusion"))
    { }

    int styleHint(
        StyleHint hint, const QStyleOption* option, const QWidget* widget, QStyleHintReturn* data) const override
    {
        return hint == SH_DialogButtonBox_ButtonsHaveIcons ? 0 : QProxyStyle::styleHint(hint, option, widget, data);
    }
};

QPalette palette()
{
    const QColor window(0xf2, 0xf3, 0xf5);
    const QColor ink(0x24, 0x2b, 0x33);
    const QColor faintInk(0x9a, 0xa3, 0xad);
    const QColor accent(0x2f, 0x6d, 0xb0);
    QPalette result(window);
    result.setColor(QPalette::Base, Qt::white);
    result.setColor(QPalette::AlternateBase, QColor(0xf7, 0xf8, 0xfa));
    result.setColor(QPalette::Mid, QColor(0xcd, 0xd2, 0xd8));
    result.setColor(QPalette::Highlight, accent);
    result.setColor(QPalette::HighlightedText, Qt::white);
    result.setColor(QPalette::Link, accent);
    result.setColor(QPalette::ToolTipBase, Qt::white);
    for (QPalette::ColorRole role :
        {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        result.setColor(role, ink);
        result.setColor(QPalette::Disabled, role, faintInk);
    }
    return result;
}

} // namespace

void applyTheme()
{
    QApplication::setStyle(new PlainFusion); // owned by the application
    QApplication::setPalette(palette());
    if (QGuiApplication::platformName() != QLatin1String("offscreen"))
        return;
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(OffscreenFontPixels);
    QApplication::setFont(font);
}

} // namespace mirn::zelchip
