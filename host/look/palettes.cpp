// SPDX-License-Identifier: MIT
#include "host/look/palettes.h"

namespace mirn::zelchip {

namespace {

const QColor Accent(0x2f, 0x6d, 0xb0);
const QColor LightGround(0xfb, 0xfb, 0xfc);
const QColor DimmedGround(0xa9, 0xb0, 0xb8);

void setInk(QPalette& palette, const QColor& ink, const QColor& faintInk)
{
    for (QPalette::ColorRole role :
        {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        palette.setColor(role, ink);
        palette.setColor(QPalette::Disabled, role, faintInk);
    }
    palette.setColor(QPalette::PlaceholderText, faintInk);
}

} // namespace

QPalette lightPalette()
{
    QPalette result(QColor(0xf2, 0xf3, 0xf5));
    result.setColor(QPalette::Base, Qt::white);
    result.setColor(QPalette::AlternateBase, QColor(0xf7, 0xf8, 0xfa));
    result.setColor(QPalette::Mid, QColor(0xcd, 0xd2, 0xd8));
    result.setColor(QPalette::Highlight, Accent);
    result.setColor(QPalette::HighlightedText, Qt::white);
    result.setColor(QPalette::Link, Accent);
    result.setColor(QPalette::ToolTipBase, Qt::white);
    setInk(result, QColor(0x24, 0x2b, 0x33), QColor(0x9a, 0xa3, 0xad));
    return result;
}

QPalette darkPalette()
{
    QPalette result(QColor(0x2b, 0x30, 0x36));
    result.setColor(QPalette::Base, QColor(0x1f, 0x23, 0x28));
    result.setColor(QPalette::AlternateBase, QColor(0x25, 0x29, 0x2f));
    result.setColor(QPalette::Mid, QColor(0x4a, 0x52, 0x5b));
    result.setColor(QPalette::Highlight, Accent);
    result.setColor(QPalette::HighlightedText, Qt::white);
    result.setColor(QPalette::Link, QColor(0x7a, 0xb8, 0xf5));
    result.setColor(QPalette::LinkVisited, QColor(0xb9, 0xa3, 0xf0));
    result.setColor(QPalette::ToolTipBase, QColor(0x3a, 0x41, 0x49));
    setInk(result, QColor(0xe2, 0xe6, 0xea), QColor(0x86, 0x90, 0x9b));
    return result;
}

bool isDark(const QPalette& palette)
{
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

QPalette drawingPalette(const QPalette& window)
{
    QPalette result = isDark(window) ? lightPalette() : window;
    const QColor ground = isDark(window) ? DimmedGround : LightGround;
    result.setColor(QPalette::Window, ground);
    result.setColor(QPalette::Base, ground);
    return result;
}

} // namespace mirn::zelchip
