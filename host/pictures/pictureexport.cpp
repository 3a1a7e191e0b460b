// SPDX-License-Identifier: MIT
#include "host/pictures/pictureexport.h"

#include "graphics/zelgraphicsview.h"
#include "host/design/replacedfile.h"
#include "host/drawing/drawingfit.h"
#include "host/pictures/pdfengine.h"
#include "host/pictures/picturepage.h"
#include "host/pictures/svgengine.h"
#include "host/tcl/translation.h"

#include <QImageWriter>
#include <QPainter>

namespace mirn::zelchip {

using zelchipview::ZelDrawingPicture;
using zelchipview::ZelGraphicsView;

namespace {

constexpr double MillimetresPerInch = 25.4;

// One export. Its operations return false if no picture came about.
class PictureExport final
{
public:
    PictureExport(
        ZelGraphicsView& view, const PictureRequest& request, const PictureGoesOn& userGoesOn, FileLayer& files)
        : m_view(view)
        , m_request(request)
        , m_goesOn(userGoesOn)
        , m_file(
              request.file, [this] { return goesOn(m_share); }, files)
    {
        m_options.part = request.part;
        m_options.hasLayers = request.hasOverlays;
        m_options.margin = DrawingMargin;
        m_options.size = request.size;
        m_resolution = view.logicalDpiX();
    }

    [[nodiscard]] QString run();

private:
    [[nodiscard]] bool write();
    [[nodiscard]] bool writePdf();
    [[nodiscard]] bool writeSvg();
    [[nodiscard]] bool writePage(QPaintEngine& engine);
    [[nodiscard]] bool writePng();
    [[nodiscard]] bool paintOn(QPaintDevice& device);
    [[nodiscard]] bool goesOn(double share);

    ZelGraphicsView& m_view;
    const PictureRequest& m_request;
    const PictureGoesOn& m_goesOn;
    double m_share = 0;
    bool m_isCancelled = false;
    QString m_error;
    ReplacedFile m_file;
    ZelDrawingPicture::Options m_options;
    int m_resolution; // of what the view's fonts are measured for, so that the picture has them in the same size
};

bool PictureExport::goesOn(double share)
{
    m_share = share;
    if (m_goesOn && !m_goesOn(share))
        m_isCancelled = true;
    return !m_isCancelled && !m_file.hasEnded();
}

QString PictureExport::run()
{
    const bool isWritten = !m_file.hasEnded() && write();
    if (isWritten || m_file.hasEnded())
        m_error = m_file.replace();
    if (m_isCancelled)
        return tr("the export of %1 was cancelled").arg(m_request.file);
    if (!isWritten && m_error.isEmpty())
        m_error = tr("the drawing changed meanwhile");
    return m_error.isEmpty() ? QString() : tr("%1: the picture cannot be written: %2").arg(m_request.file, m_error);
}

bool PictureExport::write()
{
    switch (m_request.format) {
    case PictureRequest::Format::Pdf:
        return writePdf();
    case PictureRequest::Format::Svg:
        return writeSvg();
    case PictureRequest::Format::Png:
        break;
    }
    return writePng();
}

// The end of the painter writes the page, so what is to be in vain must be stopped before it.
bool PictureExport::paintOn(QPaintDevice& device)
{
    QPainter painter(&device);
    const bool isDone
        = ZelDrawingPicture(m_view, m_options).paint(painter, [this](double share) { return goesOn(share); });
    if (isDone)
        m_share = 1;
    else
        m_file.stop();
    painter.end();
    return isDone;
}

bool PictureExport::writePdf()
{
    const QSizeF size = m_request.size.isEmpty() ? usualSize(m_view, m_request.format) : m_request.size;
    m_options.size = size * (m_resolution / MillimetresPerInch);
    PdfEngine engine(m_file, m_options.size, m_resolution);
    return writePage(engine);
}

bool PictureExport::writeSvg()
{
    if (m_options.size.isEmpty())
        m_options.size = usualSize(m_view, m_request.format);
    SvgEngine engine(m_file, m_options.size);
    return writePage(engine);
}

bool PictureExport::writePage(QPaintEngine& engine)
{
    PicturePage page(engine, m_options.size, m_resolution);
    return paintOn(page) && !m_file.hasEnded();
}

bool PictureExport::writePng()
{
    const QImage image = ZelDrawingPicture(m_view, m_options).image();
    if (image.isNull()) {
        m_error = tr("there is too little memory for it");
        return false;
    }
    QImageWriter writer(&m_file, "png");
    m_share = 1;
    if (writer.write(image))
        return !m_file.hasEnded();
    m_error = writer.errorString();
    return false;
}

} // namespace

QSizeF usualSize(const ZelGraphicsView& view, PictureRequest::Format format)
{
    const QSizeF pixels = view.viewport()->size();
    return format == PictureRequest::Format::Pdf ? pixels * (MillimetresPerInch / view.logicalDpiX()) : pixels;
}

QString exportPicture(
    ZelGraphicsView& view, const PictureRequest& request, const PictureGoesOn& goesOn, FileLayer& files)
{
    return PictureExport(view, request, goesOn, files).run();
}

} // namespace mirn::zelchip
