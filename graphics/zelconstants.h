// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QString>

// Constants that the parts of the component and its hosts share.
namespace mirn::zelchipview {

// Keys of item data: the first is for graphic items, the others are data roles of tree items.
enum ItemDataKey {
    ZEL_GRAPHIC_ITEM_Attribute_KEY = 1, // int: the load number of a graphic item
    DRAGABLE = 33, // bool: the row may be dragged onto the chip
    RESOURCENAME = 34, // QString: the slash-separated path of the row
    RESET = 35, // bool: the row has a placement to reset
};

// The value that exec() returns for a confirmed DCU settings dialog; it is the reverse of QDialog's own codes.
constexpr int DCUDLGSUCCESS = 0;

// Border and fill colours of marked elements. RECT_BORDER_COLOR, which is transparent, is for rects without a border.
inline const QColor FILTERCOLOR{255, 0, 0, 255};
inline const QColor FILTER_FILL_COLOR{96, 98, 159, 255};
inline const QColor SELECTED_COLOR{255, 0, 0, 255};
inline const QColor SELECTED_FILL_COLOR{96, 159, 98, 255};
inline const QColor RECT_BORDER_COLOR{255, 255, 255, 0};
inline const QColor HIGHLIGHT_COLOR{255, 0, 255, 255};

// Stands for a dynamic value that the engine does not set; an empty text is a value of its own.
inline const QString ZEL_DYNAMIC_EMPTY_STRING = QStringLiteral("EMPTYDYNAMICSTRING");

// The engine's keys of the DCU settings: receive channels, both together, transmit PLL.
inline const QString DYNAMIC_DLG_CH0 = QStringLiteral("CH0");
inline const QString DYNAMIC_DLG_CH1 = QStringLiteral("CH1");
inline const QString DYNAMIC_DLG_CH0_CH1 = QStringLiteral("CH0:CH1");
inline const QString DYNAMIC_DLG_TXPLL = QStringLiteral("TXPLL");

// The kinds of settings dialogs that the engine may describe.
enum Enum_Dynamic_Dialog_Type : unsigned int {
    DYNAMIC_DIALOG_DCU = 1, // the only kind acted on
};

// The parts of the view that a refresh reloads.
enum Enum_ChipView_Refresh_Type : int {
    REFRESH_TREE = 0, // the resource tree
    REFRESH_GRAPHIC = 1, // colours and tooltips of the drawing
    REFRESH_TABLE = 2, // the usage table
    REFRESH_ALL = 3, // all three, in this order
};

// The ids of the tool actions; the first three are the mouse modes.
enum ZelChipViewActionId : int {
    ACTION_SELECT = 1, // a click or a band selects
    ACTION_ZOOM = 2, // zooms to a band
    ACTION_PAN = 3, // a drag moves the drawing
    ACTION_FILTER = 4, // opens the filter menu
};

} // namespace mirn::zelchipview
