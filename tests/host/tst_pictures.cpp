// SPDX-License-Identifier: MIT
#include "host/pictures/pdfengine.h"
#include "host/pictures/picturedialog.h"
#include "host/pictures/pictureexport.h"
#include "host/pictures/picturepage.h"
#include "tests/host/hostfiles.h"
#include "tests/host/shownwindow.h"
#include "tests/support/testmain.h"

#include <QAction>
#include <QApplication>
#include <QBuffer>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QLinearGradient>
#include <QPainter>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <cerrno>
#include <functional>

using namespace mirn::zelchip;

namespace {

const QByteArray Locked = R"([{"name": "core", "type": "PLL"},
  {"name": "held", "type": "DCUCHANNEL", "site": "U0_CH0", "fixed": true}])";

enum class Trouble { Cancelled, FullDisk };

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

class FullDisk final : public FileLayer
{
    long write(int, const char*, std::size_t) override
    {
        errno = ENOSPC;
        return -1;
    }
};

class Pictures : public ShownWindow
{
public:
    explicit Pictures(const QByteArray& resources = "[]")
        : files(resources)
    {
        show(files.write("small.svg", smallDrawing()));
    }
    ~Pictures() { window.reset(); } // before its files go

    // Exports into a file with this suffix and returns its content.
    QByteArray exported(const QString& suffix, const QString& options = {})
    {
        const QString file = files.path("picture." + suffix);
        run(QString("zel_view export {%1} %2").arg(file, options));
        return contentOf(file);
    }

    [[nodiscard]] QString told() const { return console()->findChild<QPlainTextEdit*>()->toPlainText(); }

    HostFiles files;
};

// All compressed parts of a PDF file, one after the other.
QByteArray inflated(const QByteArray& pdf)
{
    QByteArray all;
    for (auto at = pdf.indexOf("\nstream\n"); at >= 0; at = pdf.indexOf("\nstream\n", at + 1)) {
        const auto begin = at + 8;
        if (!pdf.mid(pdf.lastIndexOf("<<", at), at - pdf.lastIndexOf("<<", at)).contains("/FlateDecode"))
            continue;
        const QByteArray length("\0\0\xff\xff", 4); // what it is in the end does not matter
        all += qUncompress(length + pdf.mid(begin, pdf.indexOf("endstream", begin) - begin));
    }
    return all;
}

using Painting = std::function<void(QPainter& painter)>;

// A page of 96 x 192 pixels.
QByteArray painted(const Painting& paint)
{
    QBuffer file;
    file.open(QIODevice::WriteOnly);
    PdfEngine engine(file, {96, 192}, 96);
    PicturePage page(engine, {96, 192}, 96);
    QPainter painter(&page);
    painter.setBrush(Qt::green);
    paint(painter);
    painter.end();
    return file.data();
}

QPainterPath lineAcross()
{
    QPainterPath path;
    path.lineTo(96, 0);
    return path;
}

QLinearGradient fading()
{
    QLinearGradient gradient(0, 0, 96, 0);
    gradient.setColorAt(0, QColor(0, 0, 255, 255));
    gradient.setColorAt(1, QColor(0, 0, 255, 0));
    return gradient;
}

QImage onePixel()
{
    QImage image(1, 1, QImage::Format_RGB32);
    image.fill(Qt::green);
    return image;
}

} // namespace

class TestPictures : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void refuses_data()
    {
        const Rows<QString, QString> row;
        row("a format that there is not", "no.doc", "no.doc: the file's suffix decides the format");
        row("no suffix", "none", "none: the file's suffix");
        row("a part that there is not", "no.svg -part half",
            "'half' is no part of the drawing; it is whole or visible");
        row("overlays that are no switch", "no.svg -overlays 2", "'2' is neither 0 nor 1");
        row("one side", "no.png -size 300", "'300' is no size");
        row("no sides", "no.png -size 0x0", "'0x0' is no size");
        row("half a pixel", "no.png -size 10.5x10", "1 to 32767 whole pixels");
        row("a side too long for PNG", "no.png -size 32768x1", "1 to 32767 whole pixels");
        row("too much memory", "no.png -size 30000x30000", "900 million pixels would need 3.6 GB of memory");
        row("a page too small", "no.pdf -size 9x100", "10 to 5000 mm");
        row("a side too long for SVG", "no.svg -size 100001x1", "1 to 100000 pixels");
        row("a folder that there is not", "/nowhere/no.pdf", "/nowhere/no.pdf: the picture cannot be written: No such");
        row("a second file", "no.pdf no.svg", "wrong # args: should be \"zel_view export FILE");
    }

    void refuses()
    {
        const auto [arguments, error] = row<QString, QString>();
        Pictures shown;
        shown.run("zel_view export " + arguments);
        QVERIFY2(shown.told().contains(error), qPrintable(shown.told()));
        QVERIFY(!QFile::exists(arguments.section(' ', 0, 0)));
    }

    void pngIsWhatTheWindowShows_data()
    {
        const Rows<QString, QString> row; // before, options
        row("the whole drawing", "zel_view names 0", "-overlays 0");
        row("the whole drawing while a part is shown", "zel_view names 0; zel_view fit", "-part whole -overlays 0");
        row("the visible part", "zel_view names 0; zel_view zoom U0_CH0", "-part visible -overlays 0");
        row("a selection, and what is over it", "zel_view select U0_CH0; zel_view fit", "-overlays 1");
    }

    void pngIsWhatTheWindowShows()
    {
        const auto [before, options] = row<QString, QString>();
        Pictures shown(Locked);
        shown.show(shown.files.project.path(), {700, 500});
        shown.run(before);
        QWidget* viewport = shown.view()->viewport();
        QImage screen(viewport->size(), QImage::Format_RGB32);
        viewport->render(&screen, {}, {}, QWidget::DrawWindowBackground);
        if (options.contains("whole"))
            shown.run("zel_view zoom U0_CH0; zel_view in");
        const QString size = QString(" -size %1x%2").arg(screen.width()).arg(screen.height());
        QCOMPARE(QImage::fromData(shown.exported("png", options + size)).convertToFormat(screen.format()), screen);
    }

    void textsAreTexts()
    {
        Pictures shown;
        const QByteArray svg = shown.exported("svg", "-size 400x300");
        QVERIFY2(svg.contains(">CH0 rx</text>") && svg.contains("viewBox=\"0 0 400 300\""), svg);
        const QByteArray pdf = shown.exported("pdf", "-size 100x50");
        QVERIFY(pdf.startsWith("%PDF-") && pdf.contains("/Type3") && pdf.contains("/ToUnicode"));
        QVERIFY(pdf.contains(QRegularExpression("MediaBox \\[0(\\.0+)? 0(\\.0+)? 283").match(pdf).captured().toUtf8()));
        const QByteArray page = inflated(pdf);
        QVERIFY2(page.contains(">] TJ") && page.contains("<00> <0043>\n<01> <0048>"), page);
    }

    void pdfHas_data()
    {
        const Rows<Painting, QByteArray> row; // on a page of 96 x 192 pixels, which is 72 x 144 points
        row(
            "a rectangle, upright", [](QPainter& on) { on.fillRect(QRect(8, 16, 32, 8), Qt::red); },
            "1 0 0 rg\n\n6 126 24 6 re\nf\n");
        row(
            "a rectangle, turned",
            [](QPainter& on) {
                on.rotate(90);
                on.fillRect(QRect(8, -16, 32, 8), Qt::red);
            },
            "12 138 m\n12 114 l\n6 114 l\n6 138 l\n12 138 l\nh\nf\n");
        row(
            "a curve with both", [](QPainter& on) { on.drawEllipse(8, 8, 16, 16); }, " c\nh\nB*\n");
        row(
            "a cosmetic pen, enlarged",
            [](QPainter& on) {
                on.setPen(QPen(Qt::blue, 0));
                on.scale(8, 8);
                on.drawLine(1, 1, 2, 1);
            },
            "0.75 w\n2 J\n2 j\n[] 0 d\n/B255 gs\n0 0 1 RG\n\n6 138 m\n12 138 l\nS\n");
        row(
            "dashes", [](QPainter& on) { on.strokePath(lineAcross(), QPen(Qt::blue, 4, Qt::DashLine, Qt::FlatCap)); },
            "3 w\n0 J\n2 j\n[12 6 ] 0 d");
        row(
            "a translucent colour", [](QPainter& on) { on.fillRect(0, 0, 8, 8, QColor(0, 0, 255, 51)); }, "/A51 gs\n");
        row(
            "how opaque that is", [](QPainter& on) { on.fillRect(0, 0, 8, 8, QColor(0, 0, 255, 51)); },
            "/A51 << /ca 0.2 >>");
        row(
            "a gradient that fades", [](QPainter& on) { on.strokePath(lineAcross(), QPen(fading(), 1)); },
            "q\n0.75 w\n2 J\n2 j\n[] 0 d\n/B255 gs\n/M4 gs\n/Pattern CS /P3 SCN\n\n0 144 m\n72 144 l\nS\nQ\n");
        row(
            "how the gradient fades", [](QPainter& on) { on.strokePath(lineAcross(), QPen(fading(), 1)); },
            "/Coords [0 144 72 144 ]\n/Function << /FunctionType 3 /Domain [0 1] /Functions [<< /FunctionType 2 "
            "/Domain "
            "[0 1] /N 1 /C0 [1 ] /C1 [0 ] >>");
        row(
            "letters that one character makes many",
            [](QPainter& on) { on.drawText(8, 16, QString::fromUtf8("\xf0\x9d\x90\x80")); },
            "/ActualText <feffd835dc00> >> BDC");
        row(
            "pixels", [](QPainter& on) { on.drawImage(QRect(0, 0, 8, 8), onePixel()); },
            "q\n6 0 0 6 0 138 cm\nBI /CS /RGB /BPC 8 /F /AHx /W\n1 /H\n1 ID\n00ff00\n> EI Q\n");
    }

    void pdfHas()
    {
        const auto [paint, operators] = row<Painting, QByteArray>();
        const QByteArray pdf = painted(paint);
        const QByteArray all = pdf + inflated(pdf);
        QVERIFY2(all.contains(operators), inflated(pdf));
    }

    // A page that were kept until its end would need as much memory as it has shapes.
    void pdfIsWrittenWhileItIsPainted()
    {
        QBuffer file;
        file.open(QIODevice::WriteOnly);
        PdfEngine engine(file, {96, 192}, 96);
        PicturePage page(engine, {96, 192}, 96);
        QPainter painter(&page);
        for (int i = 0; i < 100000; ++i)
            painter.drawPoint(QPointF(i * 7919 % 9600 / 100.0, i * 6101 % 19200 / 100.0));
        const qint64 early = file.size();
        painter.end();
        QVERIFY2(early > file.size() * 0.8, qPrintable(QString("%1 of %2 bytes").arg(early).arg(file.size())));
    }

    void oldFileStays_data()
    {
        const Rows<Trouble, QString> row;
        for (const QString& suffix : PictureRequest::suffixes()) {
            row(qPrintable(suffix + ", cancelled"), Trouble::Cancelled, suffix);
            row(qPrintable(suffix + ", full disk"), Trouble::FullDisk, suffix);
        }
    }

    void oldFileStays()
    {
        const auto [trouble, suffix] = row<Trouble, QString>();
        Pictures shown;
        const QTemporaryDir folder;
        const QString file = zeltest::writeFile(folder.filePath("old." + suffix), "old");
        PictureRequest request;
        QCOMPARE(request.setFile(file), QString());
        FullDisk full;
        const bool isCancelled = trouble == Trouble::Cancelled;
        const QString error = exportPicture(
            *shown.view(), request, [&](double) { return !isCancelled; }, isCancelled ? FileLayer::system() : full);
        QVERIFY2(error.contains(isCancelled ? "was cancelled" : "No space left"), qPrintable(error));
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList("old." + suffix));
        QCOMPARE(contentOf(file), QByteArray("old"));
    }

    void dialogAsks()
    {
        Pictures shown;
        QTimer::singleShot(0, shown.window.get(), [&shown] {
            auto* dialog = qobject_cast<PictureDialog*>(QApplication::activeModalWidget());
            dialog->findChild<QComboBox*>()->setCurrentIndex(static_cast<int>(PictureRequest::Format::Png));
            QTimer::singleShot(0, shown.window.get(), [&shown] {
                auto* chooser = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
                chooser->findChild<QLineEdit*>("fileNameEdit")->setText(shown.files.path("chosen"));
                QMetaObject::invokeMethod(chooser, "accept");
            });
            dialog->accept();
        });
        for (QAction* action : shown.window->findChildren<QAction*>()) {
            if (action->text() == "&Export Picture...")
                action->trigger();
        }
        QCOMPARE(QImage(shown.files.path("chosen.png")).size(), shown.view()->viewport()->size());
    }
};

ZEL_TEST_MAIN(TestPictures)
#include "tst_pictures.moc"
