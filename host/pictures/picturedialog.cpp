// SPDX-License-Identifier: MIT
#include "host/pictures/picturedialog.h"

#include "graphics/zelgraphicsview.h"
#include "host/pictures/pictureexport.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>

namespace mirn::zelchip {

namespace {

constexpr double MostInBox = 100000;
constexpr int NoteLines = 2;

QString asNote(const QString& text)
{
    return text.isEmpty() ? text : text.left(1).toUpper() + text.mid(1) + QLatin1Char('.');
}

} // namespace

PictureDialog::PictureDialog(const PictureRequest& request, const zelchipview::ZelGraphicsView& view, QWidget* parent)
    : QDialog(parent)
    , m_view(view)
    , m_format(new QComboBox(this))
    , m_part(new QComboBox(this))
    , m_overlays(new QCheckBox(tr("&Connections, candidates, names and locks, as shown now"), this))
    , m_width(new QDoubleSpinBox(this))
    , m_height(new QDoubleSpinBox(this))
    , m_note(new QLabel(this))
{
    setWindowTitle(tr("Export Picture"));
    m_format->addItems(
        {tr("PDF, on a page of its size"), tr("SVG, for web pages and drawing programs"), tr("PNG, in pixels")});
    m_part->addItems({tr("The whole drawing"), tr("The visible part")});
    addRows();
    show(request);
    connect(m_format, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &PictureDialog::showUsualSize);
    for (QDoubleSpinBox* box : {m_width, m_height})
        connect(box, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this, &PictureDialog::check);
}

void PictureDialog::addRows()
{
    auto* size = new QHBoxLayout;
    for (QDoubleSpinBox* box : {m_width, m_height}) {
        box->setRange(1, MostInBox);
        size->addWidget(box, 1);
    }
    size->insertWidget(1, new QLabel(QStringLiteral("\u00d7"), this));
    m_width->setAccessibleName(tr("Width"));
    m_height->setAccessibleName(tr("Height"));
    m_note->setWordWrap(true);
    m_note->setMinimumHeight(NoteLines * m_note->fontMetrics().lineSpacing());
    m_note->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setText(tr("&Export..."));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* rows = new QFormLayout(this);
    rows->addRow(tr("&Format:"), m_format);
    rows->addRow(tr("&Part:"), m_part);
    rows->addRow(tr("&Size:"), size);
    qobject_cast<QLabel*>(rows->labelForField(size))->setBuddy(m_width);
    rows->addRow(tr("With:"), m_overlays);
    rows->addRow(QString(), m_note);
    rows->addRow(buttons);
}

void PictureDialog::show(const PictureRequest& request)
{
    m_format->setCurrentIndex(static_cast<int>(request.format));
    m_part->setCurrentIndex(static_cast<int>(request.part));
    m_overlays->setChecked(request.hasOverlays);
    showUsualSize();
    if (!request.size.isEmpty()) {
        m_width->setValue(request.size.width());
        m_height->setValue(request.size.height());
    }
}

void PictureDialog::showUsualSize()
{
    const bool isPage = format() == PictureRequest::Format::Pdf;
    const QSizeF usual = usualSize(m_view, format());
    const std::pair<QDoubleSpinBox*, double> sides[] = {{m_width, usual.width()}, {m_height, usual.height()}};
    for (const auto& [box, side] : sides) {
        const QSignalBlocker blocker(box);
        box->setDecimals(isPage ? 1 : 0);
        box->setSuffix(isPage ? tr(" mm") : tr(" pixels"));
        box->setValue(side);
    }
    m_usualSize = QSizeF(m_width->value(), m_height->value());
    check();
}

void PictureDialog::check()
{
    const QString error = request().sizeError();
    m_note->setText(
        error.isEmpty() ? tr("A larger picture of the whole drawing shows more of its details.") : asNote(error));
    findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->setEnabled(error.isEmpty());
}

PictureRequest::Format PictureDialog::format() const
{
    return static_cast<PictureRequest::Format>(m_format->currentIndex());
}

PictureRequest PictureDialog::request() const
{
    PictureRequest request;
    request.format = format();
    request.part = static_cast<PictureRequest::Part>(m_part->currentIndex());
    request.hasOverlays = m_overlays->isChecked();
    const QSizeF size(m_width->value(), m_height->value());
    if (size != m_usualSize)
        request.size = size;
    return request;
}

QString chooseExportFile(QWidget* parent, const QString& folder, PictureRequest::Format format)
{
    const QString suffix = PictureRequest::suffixes().at(static_cast<int>(format));
    QFileDialog dialog(parent, PictureDialog::tr("Export Picture"), folder);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setNameFilters({PictureDialog::tr("%1 pictures (*.%2)").arg(suffix.toUpper(), suffix)});
    dialog.setDefaultSuffix(suffix);
    dialog.selectFile(QStringLiteral("floorplan.") + suffix);
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

} // namespace mirn::zelchip
