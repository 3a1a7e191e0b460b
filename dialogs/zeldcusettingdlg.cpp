// SPDX-License-Identifier: MIT
#include "dialogs/zeldcusettingdlg.h"

#include "dialogs/settingscontroller.h"
#include "graphics/zelconstants.h"
#include "ui_dcuSettingDlg.h"

#include <QComboBox>
#include <QFontMetrics>
#include <QLabel>
#include <QMap>
#include <QPointer>
#include <QPushButton>
#include <QSet>
#include <QStringList>
#include <QStyle>
#include <QStyleOptionComboBox>

#include <algorithm>

namespace mirn::zelchipview {

namespace {

constexpr int Cancelled = 1;

// The pixels that the style leaves free beside a combo box's text, on both sides together.
constexpr int BoxTextMargins = 4;

// The smallest letter width, in per cent, before the letters are made smaller instead.
constexpr int NarrowestStretch = 75;
constexpr int StretchStep = 5;
constexpr int SmallestPixelSize = 8;

// Shrinks the font until a line of it is no higher than `height` pixels.
QFont lowered(QFont font, int height)
{
    font.setPixelSize(QFontInfo(font).pixelSize());
    while (font.pixelSize() > SmallestPixelSize && QFontMetrics(font).height() > height)
        font.setPixelSize(font.pixelSize() - 1);
    return font;
}

// Narrows, then shrinks the font until the widest of the texts fits into `width` pixels.
QFont narrowed(QFont font, const QStringList& texts, int width)
{
    const auto isTooWide = [&](const QString& text) { return QFontMetrics(font).horizontalAdvance(text) > width; };
    const auto fits = [&] { return std::none_of(texts.begin(), texts.end(), isTooWide); };
    for (int stretch = 100 - StretchStep; stretch >= NarrowestStretch && !fits(); stretch -= StretchStep)
        font.setStretch(stretch);
    while (font.pixelSize() > SmallestPixelSize && !fits())
        font.setPixelSize(font.pixelSize() - 1);
    return font;
}

// Returns the width that a combo box has for its text beside the arrow, in pixels.
int textWidth(const QComboBox* box)
{
    QStyleOptionComboBox option;
    option.initFrom(box);
    return box->style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, box).width()
        - BoxTextMargins;
}

void chooseText(QComboBox* box, const QString& text)
{
    const int index = box->findData(text, Qt::DisplayRole, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (index >= 0)
        box->setCurrentIndex(index);
}

} // namespace

struct ZELDCUSettingDlg::Parts
{
    explicit Parts(int elementId)
        : id(elementId)
        , controller(SettingsController::current())
        , controllerObject(controller.asObject())
    { }

    const int id;
    SettingsController& controller;
    const QPointer<QObject> controllerObject; // null once the controller is gone
    Ui_dcuSettingDlg form;
    QSet<QString> coupledValues;
    QMap<QString, QString> changedValues; // by setting key
    QMap<QString, QString> currentValues; // by setting key, when the dialog opened
};

ZELDCUSettingDlg::ZELDCUSettingDlg(QWidget* parent, int id)
    : QDialog(parent)
    , m_parts(std::make_unique<Parts>(id))
{
    m_parts->form.setupUi(this);
    connect(m_parts->form.pushButtonOK, &QPushButton::clicked, this, &ZELDCUSettingDlg::accept);
    connect(m_parts->form.pushButtonCancel, &QPushButton::clicked, this, &ZELDCUSettingDlg::reject);
    for (QComboBox* box : {m_parts->form.comboBoxCH0, m_parts->form.comboBoxCH1}) {
        connect(box, qOverload<int>(&QComboBox::currentIndexChanged), this,
            [this, box] { syncValues(box->currentText()); });
    }
    connect(m_parts->controllerObject, &QObject::destroyed, this, &ZELDCUSettingDlg::reject); // nothing left to edit
    init();
    fitFonts();
}

ZELDCUSettingDlg::~ZELDCUSettingDlg() = default;

void ZELDCUSettingDlg::init()
{
    m_parts->changedValues.clear();
    m_parts->currentValues.clear();
    const auto* lists = m_parts->controller.getDynamicValueList(DYNAMIC_DIALOG_DCU, m_parts->id);
    if (lists) {
        for (auto list = lists->cbegin(); list != lists->cend(); ++list)
            fill(list.key(), list.value());
        addCoupledValues(lists->value(DYNAMIC_DLG_CH0_CH1));
    }
    for (QComboBox* box : {m_parts->form.comboBoxCH0, m_parts->form.comboBoxCH1, m_parts->form.comboBoxTXPLL}) {
        if (box->count() == 0)
            box->setDisabled(true);
    }
}

void ZELDCUSettingDlg::fill(const QString& key, const QVector<QString>& values)
{
    if (!values.isEmpty())
        m_parts->currentValues.insert(key, values.first());
    QComboBox* box = boxOf(key);
    if (!box)
        return;
    for (const QString& value : values) {
        if (!value.isEmpty())
            box->insertItem(box->count(), value);
    }
    if (m_parts->currentValues.value(key).isEmpty())
        box->setCurrentIndex(-1);
}

void ZELDCUSettingDlg::addCoupledValues(const QVector<QString>& values)
{
    if (m_parts->currentValues.contains(DYNAMIC_DLG_CH0_CH1)) {
        m_parts->currentValues.insert(DYNAMIC_DLG_CH0, m_parts->currentValues.value(DYNAMIC_DLG_CH0_CH1));
        m_parts->currentValues.insert(DYNAMIC_DLG_CH1, m_parts->currentValues.value(DYNAMIC_DLG_CH0_CH1));
    }
    for (const QString& value : values) {
        for (QComboBox* box : {m_parts->form.comboBoxCH0, m_parts->form.comboBoxCH1})
            box->insertItem(box->count(), value);
        m_parts->coupledValues.insert(value);
    }
}

QComboBox* ZELDCUSettingDlg::boxOf(const QString& key) const
{
    if (key == DYNAMIC_DLG_TXPLL)
        return m_parts->form.comboBoxTXPLL;
    if (key == DYNAMIC_DLG_CH0)
        return m_parts->form.comboBoxCH0;
    if (key == DYNAMIC_DLG_CH1)
        return m_parts->form.comboBoxCH1;
    return nullptr;
}

void ZELDCUSettingDlg::syncValues(const QString& text)
{
    if (!m_parts->coupledValues.contains(text))
        return;
    chooseText(m_parts->form.comboBoxCH0, text);
    chooseText(m_parts->form.comboBoxCH1, text);
}

void ZELDCUSettingDlg::accept()
{
    for (const QString& key : {DYNAMIC_DLG_CH0, DYNAMIC_DLG_CH1, DYNAMIC_DLG_TXPLL}) {
        const auto current = m_parts->currentValues.constFind(key);
        const QString chosen = boxOf(key)->currentText();
        if (current != m_parts->currentValues.constEnd() && current.value() != chosen)
            m_parts->changedValues.insert(key, chosen);
    }
    if (m_parts->controllerObject)
        m_parts->controller.setDynamicValue(m_parts->changedValues, m_parts->id, DYNAMIC_DIALOG_DCU);
    done(DCUDLGSUCCESS);
}

void ZELDCUSettingDlg::reject()
{
    done(Cancelled);
}

// The form's geometry is fixed, but the desktop's font and the engine's texts are not.
void ZELDCUSettingDlg::fitFonts()
{
    const QLabel* narrowest = m_parts->form.label_2;
    const QFont basic = lowered(font(), narrowest->height());
    // In a form with a style sheet, the font does not propagate to the children by itself.
    for (QWidget* part : findChildren<QWidget*>())
        part->setFont(basic);

    const QFont labelFont
        = narrowed(basic, {m_parts->form.label_2->text(), m_parts->form.label_3->text()}, narrowest->width());
    for (QLabel* label : {m_parts->form.label, m_parts->form.label_2, m_parts->form.label_3})
        label->setFont(labelFont);
    const auto boxes = {m_parts->form.comboBoxCH0, m_parts->form.comboBoxCH1, m_parts->form.comboBoxTXPLL};
    QStringList values;
    for (const QComboBox* box : boxes) {
        for (int i = 0; i < box->count(); ++i)
            values.append(box->itemText(i));
    }
    const QFont boxFont = narrowed(basic, values, textWidth(m_parts->form.comboBoxCH0));
    for (QComboBox* box : boxes)
        box->setFont(boxFont);
}

} // namespace mirn::zelchipview
