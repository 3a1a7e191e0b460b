// SPDX-License-Identifier: MIT
#include "graphics/elements/dynamiclook.h"

#include "graphics/elements/graphicitemdynamicattribute.h"
#include "graphics/zelconstants.h"
#include "graphics/zelgraphicitemattribute.h"

#include <cctype>
#include <limits>

namespace mirn::zelchipview {

namespace {

unsigned int fillColorOf(ZELGraphicItemAttribute& attribute)
{
    const void* fill = attribute.getAttribute(ATTR_FILL_COLOR);
    return fill ? *static_cast<const unsigned int*>(fill) : 0U;
}

// Returns the colour of a text like "#a0b0c0", or 0 if what follows the first character is no hexadecimal number.
unsigned int rgbOf(const QString& text)
{
    constexpr int UsualLength = 7;
    unsigned int rgb = 0;
    bool isUsual = text.size() == UsualLength;
    for (int i = 1; isUsual && i < UsualLength; ++i) {
        const QChar digit = text[i];
        isUsual = digit.unicode() < 128 && std::isxdigit(digit.unicode());
        rgb = 16 * rgb + (digit.isDigit() ? digit.unicode() - u'0' : (digit.unicode() | 0x20) - u'a' + 10);
    }
    return isUsual ? rgb : text.mid(1).toUInt(nullptr, 16);
}

} // namespace

std::optional<int> elementIdOf(const QString& key)
{
    const bool isNegative = key.startsWith(QLatin1Char('-'));
    const auto first = isNegative ? 1 : 0;
    constexpr int MostDigits = 10;
    if (key.size() == first || key.size() > first + MostDigits)
        return std::nullopt;
    qint64 id = 0;
    for (int i = first; i < static_cast<int>(key.size()); ++i) {
        const int digit = key[i].unicode() - u'0';
        if (digit < 0 || digit > 9 || (id == 0 && i > first))
            return std::nullopt;
        id = 10 * id + digit;
    }
    if (isNegative)
        id = -id;
    const bool isId = id >= std::numeric_limits<int>::min() && id <= std::numeric_limits<int>::max();
    return isId && !(isNegative && id == 0) ? std::optional<int>(static_cast<int>(id)) : std::nullopt;
}

bool applyDynamicValues(ZELGraphicItemAttribute& attribute, const GraphicItemDynamicAttribute& values)
{
    const unsigned int previousFill = fillColorOf(attribute);
    if (values.fill == ZEL_DYNAMIC_EMPTY_STRING)
        attribute.setToDefaultValue(ATTR_FILL_COLOR);
    else
        attribute.setFillColor(rgbOf(values.fill));
    const bool isFillNew = fillColorOf(attribute) != previousFill;
    if (values.popup != ZEL_DYNAMIC_EMPTY_STRING) {
        if (attribute.toolTip == values.popup)
            return isFillNew;
        attribute.toolTip = values.popup;
        return true;
    }
    const QString previousToolTip = attribute.toolTip;
    attribute.setToDefaultValue(ATTR_TOOLTIP);
    return isFillNew || attribute.toolTip != previousToolTip;
}

} // namespace mirn::zelchipview
