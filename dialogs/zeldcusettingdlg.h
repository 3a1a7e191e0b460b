// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <QDialog>
#include <QString>

#include <memory>

class QComboBox;

namespace mirn::zelchipview {

// The settings dialog of one dual-channel unit: both receive channels and the transmit PLL. It offers the values that
// the engine offers, keeps both channels in step for values that apply to both, and on "Ok" writes the changes through
// the controller.
//
// exec() returns DCUDLGSUCCESS (0) if the dialog is confirmed and 1 if it is cancelled: the reverse of QDialog's own
// codes.
class ZELCHIPGUI_EXPORT ZELDCUSettingDlg : public QDialog
{
    Q_OBJECT
public:
    // `id` is the element id of the site. The constructor asks the engine for the values.
    ZELDCUSettingDlg(QWidget* parent, int id);
    ~ZELDCUSettingDlg() override;

public Q_SLOTS:
    // Writes the values that differ from those in force and closes with DCUDLGSUCCESS.
    void accept() override;

    // Closes with 1.
    void reject() override;

    // If `text` is a value that applies to both channels, selects it for both.
    void syncValues(const QString& text);

private:
    void init();
    void fill(const QString& key, const QVector<QString>& values);
    void addCoupledValues(const QVector<QString>& values);
    [[nodiscard]] QComboBox* boxOf(const QString& key) const;
    void fitFonts();

    struct Q_DECL_HIDDEN Parts;
    const std::unique_ptr<Parts> m_parts;
};

} // namespace mirn::zelchipview
