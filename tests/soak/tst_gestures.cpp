// SPDX-License-Identifier: MIT
//
// Random gestures in the program's window:
//
//   tst_gestures                            some seconds, always the same gestures
//   tst_gestures --replay FILE              carries out the gestures of a file, a line each
//
// and by the environment:
//
//   ZEL_SOAK_MINUTES    how long; the gestures are others each time
//   ZEL_SOAK_GESTURES   or how many
//   ZEL_SOAK_SEED       the first seed
//
// Gestures are carried out by a program of their own, so that a crash is a failure as any other. A failure prints the
// seed and the shortest sequence found that leads to it, for --replay, and the status is 1. Built with
// AddressSanitizer, each round of gestures must leave no leak; built without, the memory in use must stay level.
#include "tests/soak/gesturewindow.h"
#include "tests/support/shortened.h"
#include "tests/support/testmain.h"

#include <QApplication>
#include <QFile>
#include <QPixmapCache>
#include <QProcess>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTemporaryFile>

#include <algorithm>
#include <cstdio>
#include <vector>

#include <malloc.h>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

namespace {

constexpr int RoundLength = 250; // gestures from one new project to the next
constexpr int RunLength = 20'000; // gestures of one program
constexpr int ShortForm = 12'000; // milliseconds
constexpr int TimeToShorten = 180'000; // milliseconds
constexpr int Grace = 120'000; // milliseconds that a program may take longer than it was told, before it hangs
const QByteArray Step = "at ";
const QByteArray Fault = "fault: ";

// The first rounds fill caches of fonts, styles and pixmaps. After them the memory in use at the ends of rounds varied
// by less than 0.3 MB in 20,000 gestures; a window that leaks is 5 MB.
constexpr std::size_t RoundsToWarmUp = 10;
constexpr double MostGrowth = 1.0; // MB

QString firstWarning; // NOLINT: a message handler has no other place

void keepWarning(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    // The offscreen platform says of some window operations that it does not have them.
    if (type == QtDebugMsg || type == QtInfoMsg || text.startsWith("This plugin does not support"))
        return;
    if (firstWarning.isEmpty())
        firstWarning = text;
    if (type == QtFatalMsg)
        std::fprintf(stderr, "%s\n", qPrintable(text));
}

[[maybe_unused]] double middle(std::vector<double> numbers)
{
    const auto half = numbers.begin() + numbers.size() / 2;
    std::nth_element(numbers.begin(), half, numbers.end());
    return *half;
}

// Judges the memory in use at the rounds' ends, the first half of them against the second.
QString growth(const std::vector<double>& memory)
{
#ifdef __SANITIZE_ADDRESS__
    Q_UNUSED(memory);
#else
    if (memory.size() < 3 * RoundsToWarmUp)
        return {};
    const auto begin = memory.cbegin() + RoundsToWarmUp;
    const auto half = begin + (memory.cend() - begin) / 2;
    const double before = middle({begin, half});
    const double after = middle({half, memory.cend()});
    std::printf("memory in use %.2f MB, later %.2f MB\n", before, after);
    if (after - before <= MostGrowth)
        return {};
    std::printf("by round:");
    for (const double megabytes : memory)
        std::printf(" %.2f", megabytes);
    std::printf("\n");
    return "the memory in use grows";
#endif
    return {};
}

QString leak()
{
#ifdef __SANITIZE_ADDRESS__
    if (__lsan_do_recoverable_leak_check() != 0)
        return "memory is lost";
#endif
    return {};
}

int replay(const QByteArrayList& gestures, int milliseconds)
{
    GestureWindow window;
    std::vector<double> memory;
    QElapsedTimer clock;
    clock.start();
    QString fault; // the first
    const auto note = [&fault](const auto& judge) { fault = fault.isEmpty() ? judge() : fault; };
    const auto end = [&window] { return window.end(); };
    for (int done = 0; done < gestures.size() && fault.isEmpty(); ++done) {
        const bool isBegin = gestures[done].startsWith("begin ");
        if (isBegin && milliseconds > 0 && clock.elapsed() > milliseconds)
            break;
        if (isBegin && done > 0) {
            note(end);
            note(leak);
            QPixmapCache::clear(); // where Qt's style keeps what it painted for each size of a widget, up to 10 MB
            memory.push_back(static_cast<double>(mallinfo2().uordblks) / (1 << 20));
        }
        std::printf("%s%d\n", Step.constData(), done + 1);
        std::fflush(stdout);
        note([&] { return window.perform(gestures[done]); });
        note([] { return firstWarning.isEmpty() ? QString() : "warning: " + firstWarning; });
    }
    note(end);
    note(leak);
    note([&] { return growth(memory); });
    if (!fault.isEmpty())
        std::printf("%s%s\n", Fault.constData(), qPrintable(fault));
    return fault.isEmpty() ? 0 : 1;
}

int replayFile(const QStringList& arguments)
{
    QFile file(arguments.value(2));
    if (!file.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "cannot read %s\n", qPrintable(file.fileName()));
        return 2;
    }
    QApplication::setQuitOnLastWindowClosed(false);
    zeltest::pinLook();
    QApplication::setCursorFlashTime(0); // what blinks makes no two pictures the same
    return replay(file.readAll().trimmed().split('\n'), arguments.value(3).toInt());
}

// The outcome of a list of gestures that a program of its own carried out.
struct Outcome
{
    QByteArray fault; // empty: none
    QByteArray output; // what the program said
    int done = 0; // gestures, the one with the fault among them
};

// Runs this program on the gestures, for so many milliseconds at most.
Outcome runApart(const QByteArrayList& gestures, int milliseconds)
{
    QTemporaryFile list;
    if (!list.open() || list.write(gestures.join('\n')) < 0 || !list.flush())
        return {"cannot write the list of gestures", {}, 0};
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(
        QCoreApplication::applicationFilePath(), {"--replay", list.fileName(), QString::number(milliseconds)});
    const bool hasEnded = process.waitForFinished(milliseconds + Grace);
    process.kill();
    process.waitForFinished();
    Outcome outcome;
    for (const QByteArray& line : process.readAll().split('\n')) {
        if (line.startsWith(Step))
            outcome.done = line.mid(Step.size()).toInt();
        else
            outcome.output += line + '\n';
        if (line.startsWith(Fault))
            outcome.fault = line.mid(Fault.size());
    }
    if (!hasEnded)
        outcome.fault = "hangs";
    else if (outcome.fault.isEmpty() && (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0))
        outcome.fault = "ends with " + QByteArray::number(process.exitCode());
    return outcome;
}

QString withoutElements(const QByteArray& fault)
{
    static const QRegularExpression ids("[{0-9].*");
    return QString::fromUtf8(fault).remove(ids);
}

int soak()
{
    const double minutes = qEnvironmentVariable("ZEL_SOAK_MINUTES").toDouble();
    const int count = qEnvironmentVariableIntValue("ZEL_SOAK_GESTURES");
    unsigned seed = minutes > 0 ? QRandomGenerator::global()->generate() : 1;
    if (qEnvironmentVariableIsSet("ZEL_SOAK_SEED"))
        seed = qEnvironmentVariable("ZEL_SOAK_SEED").toUInt();
    const qint64 most = minutes > 0 ? static_cast<qint64>(minutes * 60'000) : count > 0 ? 24 * 3'600'000 : ShortForm;
    QElapsedTimer clock;
    clock.start();
    for (int total = 0; clock.elapsed() < most && (count <= 0 || total < count); ++seed) {
        const int length = count > 0 ? std::min(RunLength, count - total) : RunLength;
        const QByteArrayList gestures = GestureWindow::randomGestures(seed, length, RoundLength);
        const Outcome outcome = runApart(gestures, static_cast<int>(most - clock.elapsed()));
        total += outcome.done;
        std::printf("seed %u: %d gestures %s\n", seed, outcome.done, outcome.output.trimmed().constData());
        std::fflush(stdout);
        if (outcome.fault.isEmpty())
            continue;
        // A shorter sequence may meet another fault, or the same one with other elements.
        const auto goesWrong = [&outcome](const QByteArrayList& fewer) {
            return !fewer.isEmpty() && fewer.first().startsWith("begin ")
                && withoutElements(runApart(fewer, TimeToShorten).fault) == withoutElements(outcome.fault);
        };
        // The gestures in the last window are mostly enough.
        const QByteArrayList done = gestures.mid(0, outcome.done);
        const QByteArrayList last = done.mid((outcome.done - 1) / RoundLength * RoundLength);
        const QByteArrayList shortest = zeltest::shortened(goesWrong(last) ? last : done, goesWrong, TimeToShorten);
        std::printf(
            "%s\nThe shortest sequence found:\n%s\n", outcome.fault.constData(), shortest.join('\n').constData());
        return 1;
    }
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    if (argc > 1 && qstrcmp(argv[1], "--replay") == 0) {
        qInstallMessageHandler(keepWarning);
        const QApplication application(argc, argv);
        firstWarning.clear(); // of what the machine lacks
        return replayFile(QApplication::arguments());
    }
    const QCoreApplication application(argc, argv);
    return soak();
}
