// SPDX-License-Identifier: MIT
#include "host/look/theme.h"

#include "host/look/icons.h"
#include "host/look/palettes.h"

#include <QApplication>
#include <QFont>
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

    QIcon standardIcon(StandardPixmap name, const QStyleOption* option, const QWidget* widget) const override
    {
        const QIcon icon = QProxyStyle::standardIcon(name, option, widget);
        const bool isOfDock = name == SP_TitleBarCloseButton || name == SP_TitleBarNormalButton;
        return isOfDock ? fittingIcon(icon, QApplication::palette()) : icon;
    }
};

} // namespace

void applyTheme()
{
    const bool isDesktopDark = isDark(QApplication::palette()); // without a desktop, Qt's own is light
    QApplication::setStyle(new PlainFusion); // owned by the application
    QApplication::setPalette(isDesktopDark ? darkPalette() : lightPalette());
    if (QGuiApplication::platformName() != QLatin1String("offscreen"))
        return;
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(OffscreenFontPixels);
    QApplication::setFont(font);
}

} // namespace mirn::zelchip
