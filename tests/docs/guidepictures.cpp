// SPDX-License-Identifier: MIT
#include "host/look/theme.h"
#include "tests/host/shownwindow.h"
#include "tests/program/sampleproject.h"
#include "tests/support/events.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QHash>
#include <QImage>
#include <QMenu>
#include <QPainter>
#include <QPlainTextEdit>
#include <QStandardPaths>
#include <QTextStream>
#include <QVector>

#include <algorithm>
#include <cstdlib>
#include <functional>

using mirn::zelchipview::ZELChipViewDatabase;

namespace {

constexpr int WindowWidth = 1520; // so that the names of the blocks are shown
constexpr int WindowHeight = 920;
constexpr int PictureWidth = 1200; // pixels
constexpr int MostColors = 256;
constexpr int LeastDistance = 12; // of two colours, in steps of their three channels together
constexpr double HeaderUnits = 48; // from the middle of a unit up to its name
constexpr int WaitMilliseconds = 900; // until what comes after a while is there, such as the sites that light up

bool areAlike(QRgb left, QRgb right)
{
    return std::abs(qRed(left) - qRed(right)) + std::abs(qGreen(left) - qGreen(right))
        + std::abs(qBlue(left) - qBlue(right))
        < LeastDistance;
}

// Reduces a picture to colours that differ, the most frequent first, which makes its file small.
QImage withFewColors(const QImage& image)
{
    QHash<QRgb, int> counts;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            ++counts[image.pixel(x, y)];
    }
    QList<QRgb> found = counts.keys();
    std::sort(found.begin(), found.end(),
        [&counts](QRgb left, QRgb right) { return qMakePair(counts[right], right) < qMakePair(counts[left], left); });
    QVector<QRgb> colors;
    for (QRgb color : found) {
        const auto isLike = [color](QRgb other) { return areAlike(color, other); };
        if (colors.size() < MostColors && std::none_of(colors.begin(), colors.end(), isLike))
            colors.append(color);
    }
    return image.convertToFormat(QImage::Format_Indexed8, colors, Qt::ThresholdDither);
}

// Makes the pictures of the guide: goes through a file of steps in the window of the program. A step is a Tcl command,
// or begins with two dashes and does what a hand would do. What does not work is said and left out.
class GuidePictures
{
public:
    GuidePictures(const QString& steps, QString folder)
        : m_steps(steps)
        , m_folder(std::move(folder))
    {
        m_shown.show(m_project.path(), QSize(WindowWidth, WindowHeight));
        m_shown.run("zel_view fit");
    }

    ~GuidePictures() { m_shown.window.reset(); } // before its project goes

    // Returns the number of steps that did not work.
    int make()
    {
        QFile file(m_steps);
        if (!file.open(QIODevice::ReadOnly))
            say("cannot be read");
        for (m_line = 1; !file.atEnd(); ++m_line) {
            const QString step = QString::fromUtf8(file.readLine()).trimmed();
            if (step.startsWith("--"))
                gesture(step.mid(2).section(' ', 0, 0), step.section(' ', 1));
            else if (!step.isEmpty() && !step.startsWith('#'))
                command(step);
        }
        return m_failures;
    }

private:
    void say(const QString& problem)
    {
        ++m_failures;
        QTextStream(stderr) << m_steps << ':' << m_line << ": " << problem << '\n';
    }

    // Returns the result. Commands that the guide does not show to its readers leave nothing in the console.
    QString command(const QString& script)
    {
        auto* output = m_shown.console()->findChild<QPlainTextEdit*>("consoleOutput");
        output->clear();
        m_shown.run("if {[catch {" + script + "} answer]} {set answer \"ERROR $answer\"}; set answer");
        const QString answer = output->toPlainText().section('\n', -1);
        output->clear();
        if (answer.startsWith("ERROR "))
            say(answer.mid(6));
        return answer;
    }

    void gesture(const QString& name, const QString& rest)
    {
        const QString first = rest.section(' ', 0, 0);
        const QString second = rest.section(' ', 1);
        if (name == "picture")
            picture(first);
        else if (name == "action")
            choose(second.isEmpty() ? rest : second, second.isEmpty() ? QString() : first);
        else if (name == "drag")
            dragRow(first, second.section(' ', 0, 0), second.section(' ', 1));
        else if (name == "move")
            moveByHand(first, second.section(' ', 0, 0), second.section(' ', 1));
        else if (name == "settings")
            whileItLasts([&] { QTest::mouseDClick(viewport(), Qt::LeftButton, {}, placeOf(first)); }, second);
        else
            say("no such gesture");
    }

    QWidget* viewport() const { return m_shown.view()->viewport(); }

    QPoint placeOf(const QString& site)
    {
        const QStringList place = command("zel_view where -id " + site).split(' ');
        return viewport()->mapFromGlobal(QPoint(place.value(0).toInt(), place.value(1).toInt()));
    }

    // The strip with the name of a unit, which its channels do not cover.
    QPoint headOf(const QString& unit)
    {
        return placeOf(unit) - QPoint(0, qRound(HeaderUnits * m_shown.view()->transform().m11()));
    }

    // The file name stands first, because the text of an action has blanks.
    void choose(const QString& text, const QString& pictureName)
    {
        for (QMenu* menu : m_shown.window->findChildren<QMenu*>())
            Q_EMIT menu->aboutToShow(); // some are filled then
        for (QAction* action : m_shown.window->findChildren<QAction*>()) {
            if (action->text().remove('&') == text)
                return whileItLasts([action] { action->trigger(); }, pictureName);
        }
        say("there is no action");
    }

    void dragRow(const QString& resource, const QString& unit, const QString& pictureName)
    {
        m_shown.tree()->setCurrentItem(m_shown.row(resource));
        holdAt(headOf(unit), pictureName);
    }

    void holdAt(QPoint place, const QString& pictureName)
    {
        zeltest::drag<QDragEnterEvent>(viewport(), place);
        zeltest::drag<QDragMoveEvent>(viewport(), place);
        QTest::qWait(WaitMilliseconds);
        picture(pictureName);
        zeltest::leaveDrag(viewport());
        const auto* note = m_shown.window->findChild<QLabel*>("pointerNote");
        while (note->isVisible())
            QTest::qWait(10);
    }

    // A drag that is held needs a screen, so only its events are sent: what is on the first site comes over the second.
    void moveByHand(const QString& from, const QString& to, const QString& pictureName)
    {
        command("zel_view select " + from);
        holdAt(placeOf(to), pictureName);
    }

    // Takes a picture of what an action leads to, whether it returns at once or when its dialog is closed; with a
    // picture, the dialog closes then.
    void whileItLasts(const std::function<void()>& action, const QString& pictureName)
    {
        bool isOver = pictureName.isEmpty();
        QTimer::singleShot(WaitMilliseconds, qApp, [&] {
            if (!pictureName.isEmpty())
                picture(pictureName);
            for (QWidget* window : QApplication::topLevelWidgets()) {
                if (!pictureName.isEmpty() && window != m_shown.window.get() && window->isVisible())
                    QTest::keyClick(window, Qt::Key_Escape);
            }
            isOver = true;
        });
        action();
        while (!isOver)
            QTest::qWait(10);
        QTest::qWait(pictureName.isEmpty() ? WaitMilliseconds : 0);
    }

    // The window, and what stands in front of it. Few colours keep the files small.
    void picture(const QString& name)
    {
        QTest::qWait(50); // for what follows a change
        QWidget* window = m_shown.window.get();
        QImage image = window->grab().toImage();
        QPainter painter(&image);
        for (QWidget* other : QApplication::topLevelWidgets()) {
            if (other == window || !other->isVisible())
                continue;
            const QRect place(window->mapFromGlobal(other->mapToGlobal(QPoint())), other->size());
            painter.drawPixmap(place.topLeft(), other->grab());
            painter.setPen(Qt::gray);
            painter.drawRect(place.adjusted(-1, -1, 0, 0));
        }
        painter.end();
        const QImage small = image.scaledToWidth(PictureWidth, Qt::SmoothTransformation);
        if (!withFewColors(small).save(m_folder + '/' + name + ".png"))
            say("the picture cannot be written");
    }

    const SampleProject m_project;
    const QString m_steps;
    const QString m_folder;
    ShownWindow m_shown;
    int m_line = 0;
    int m_failures = 0;
};

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QStandardPaths::setTestModeEnabled(true);
    const QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() != 3) {
        QTextStream(stderr) << "usage: guidepictures STEPS FOLDER\n";
        return 2;
    }
    mirn::zelchip::applyTheme();
    const int failures = GuidePictures(arguments[1], arguments[2]).make();
    ZELChipViewDatabase::destoryInstance();
    return failures == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
