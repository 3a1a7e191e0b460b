// SPDX-License-Identifier: MIT
#pragma once

#include "host/pictures/picturerequest.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QLabel;

namespace mirn::zelchipview {
class ZelGraphicsView;
}

namespace mirn::zelchip {

// Asks for the format, the part, the overlays and the size of a picture of the drawing. A size that the picture may not
// have cannot be accepted.
class PictureDialog final : public QDialog
{
    Q_OBJECT
public:
    // Begins with the request. Its size is that of the view unless it has one.
    PictureDialog(const PictureRequest& request, const zelchipview::ZelGraphicsView& view, QWidget* parent);

    // What is chosen, without a file. It has no size where the view's was left.
    [[nodiscard]] PictureRequest request() const;

private:
    void addRows();
    void show(const PictureRequest& request);
    void showUsualSize();
    void check();
    [[nodiscard]] PictureRequest::Format format() const;

    const zelchipview::ZelGraphicsView& m_view;
    QComboBox* const m_format;
    QComboBox* const m_part;
    QCheckBox* const m_overlays;
    QDoubleSpinBox* const m_width;
    QDoubleSpinBox* const m_height;
    QLabel* const m_note;
    QSizeF m_usualSize; // as the boxes show it
};

// Asks for the name of a file below the folder. A name without a suffix gets that of the format before the dialog asks
// whether an existing file is to be replaced. Returns an empty text if the user cancels.
[[nodiscard]] QString chooseExportFile(QWidget* parent, const QString& folder, PictureRequest::Format format);

} // namespace mirn::zelchip
