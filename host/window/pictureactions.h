// SPDX-License-Identifier: MIT
#pragma once

#include "host/pictures/picturerequest.h"

#include <QObject>

class QWidget;

namespace mirn::zelchipview {
class ZelGraphicsView;
}

namespace mirn::zelchip {

// Exports pictures of the drawing: asks which, and writes them with a progress that can be cancelled. It is a child of
// the window.
class PictureActions final : public QObject
{
    Q_OBJECT
public:
    explicit PictureActions(QWidget* window);

    // Asks for a picture and for a file below the folder, beginning with what was chosen last. The request has no file
    // if the user cancels.
    [[nodiscard]] PictureRequest choose(const zelchipview::ZelGraphicsView& view, const QString& folder);

    // Returns what exportPicture() returns.
    [[nodiscard]] QString write(zelchipview::ZelGraphicsView& view, const PictureRequest& request);

    // Whether the user has cancelled the last one.
    [[nodiscard]] bool isCancelled() const { return m_isCancelled; }

private:
    QWidget* const m_window;
    PictureRequest m_last;
    bool m_isCancelled = false;
};

} // namespace mirn::zelchip
