// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QString>

// The values that the parts of the component share.
namespace mirn::zelchipview {

// Keys of item data: of graphic items (their load number) and of tree items.
enum ItemDataKey {
    ZEL_GRAPHIC_ITEM_Attribute_KEY = 1, // int: the load number of a graphic item
    DRAGABLE = 33, // bool: the row may be dragged onto the chip
    RESOURCENAME = 34, // QString: the slash-separated path of the row
    RESET = 35, // bool: the row has a placement to reset
};

// What exec() of a confirmed DCU settings dialog returns: the reverse of QDialog's own codes.
constexpr int DCUDLGSUCCESS = 0;

// Borders and fills of marked elements.
inline const QColor FILTERCOLOR{255, 0, 0, 255};
inline const QColor FILTER_FILL_COLOR{96, 98, 159, 255};
inline const QColor SELECTED_COLOR{255, 0, 0, 255};
inline const QColor SELECTED_FILL_COLOR{96, 159, 98, 255};
inline const QColor RECT_BORDER_COLOR{255, 255, 255, 0};
inline const QColor HIGHLIGHT_COLOR{255, 0, 255, 255};

// Marks a dynamic value that the engine does not give, which is not the same as an empty one.
inline const QString ZEL_DYNAMIC_EMPTY_STRING = QStringLiteral("EMPTYDYNAMICSTRING");

// The engine's keys of the DCU settings: receive channels, both together, transmit PLL.
inline const QString DYNAMIC_DLG_CH0 = QStringLiteral("CH0");
inline const QString DYNAMIC_DLG_CH1 = QStringLiteral("CH1");
inline const QString DYNAMIC_DLG_CH0_CH1 = QStringLiteral("CH0:CH1");
inline const QString DYNAMIC_DLG_TXPLL = QStringLiteral("TXPLL");

// The kinds of settings dialogs.
enum Enum_Dynamic_Dialog_Type : unsigned int {
    DYNAMIC_DIALOG_DCU = 1, // the only kind acted on
};

// What a refresh reloads.
enum Enum_ChipView_Refresh_Type : int {
    REFRESH_TREE = 0, // the resource tree
    REFRESH_GRAPHIC = 1, // colours and tooltips of the drawing
    REFRESH_TABLE = 2, // the usage table
    REFRESH_ALL = 3, // these three, in this order
};

// Keys of the tool actions; the first three are the mouse modes.
enum ZelChipViewActionId : int {
    ACTION_SELECT = 1, // a click or a band selects
    ACTION_ZOOM = 2, // a band is zoomed to
    ACTION_PAN = 3, // a drag moves the drawing
    ACTION_FILTER = 4, // opens the filter menu
};

} // namespace mirn::zelchipview
