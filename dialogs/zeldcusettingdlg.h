// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <QDialog>
#include <QString>

#include <memory>

class QComboBox;

namespace mirn::zelchipview {

// The settings of one dual-channel unit: both receive channels and the transmit PLL. Offers what the engine offers,
// keeps the channels in step for values that go for both, and on "Ok" writes what was changed through the controller.
//
// exec() gives DCUDLGSUCCESS (0) when confirmed and 1 when cancelled: the reverse of QDialog's own codes.
class ZELCHIPGUI_EXPORT ZELDCUSettingDlg : public QDialog
{
    Q_OBJECT
public:
    // Of the site with this element id. Asks the engine for the values at once.
    ZELDCUSettingDlg(QWidget* parent, int id);
    ~ZELDCUSettingDlg() override;

public Q_SLOTS:
    // Writes the values that differ from those in force and closes with DCUDLGSUCCESS.
    void accept() override;

    // Closes with 1.
    void reject() override;

    // Choosing a value that goes for both channels in one of them chooses it in the other.
    void syncValues(const QString& text);

private:
    void init();
    void fill(const QString& key, const QVector<QString>& values);
    void addCoupledValues(const QVector<QString>& values);
    [[nodiscard]] QComboBox* boxOf(const QString& key) const;
    void keepLegible();

    struct Q_DECL_HIDDEN Parts;
    const std::unique_ptr<Parts> m_parts;
};

} // namespace mirn::zelchipview
