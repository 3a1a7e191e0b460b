// SPDX-License-Identifier: MIT
#include "host/window/pictureactions.h"

#include "host/pictures/picturedialog.h"
#include "host/pictures/pictureexport.h"
#include "host/pictures/pictureprogress.h"

#include <QWidget>

namespace mirn::zelchip {

PictureActions::PictureActions(QWidget* window)
    : QObject(window)
    , m_window(window)
{ }

PictureRequest PictureActions::choose(const zelchipview::ZelGraphicsView& view, const QString& folder)
{
    PictureDialog dialog(m_last, view, m_window);
    if (dialog.exec() != QDialog::Accepted)
        return {};
    m_last = dialog.request();
    PictureRequest request = m_last;
    request.file = chooseExportFile(m_window, folder, request.format);
    return request;
}

// In the file dialog, the user may have chosen the suffix of another format.
QString PictureActions::write(zelchipview::ZelGraphicsView& view, const PictureRequest& request)
{
    m_isCancelled = false;
    PictureRequest right = request;
    const QString error = right.setFile(request.file);
    if (!error.isEmpty())
        return error;
    if (right.format != request.format)
        right.size = QSizeF();
    PictureProgress progress(right.file, m_window);
    const QString problem = exportPicture(view, right, [&progress](double share) { return progress.goesOn(share); });
    m_isCancelled = progress.isCancelled();
    return problem;
}

} // namespace mirn::zelchip
