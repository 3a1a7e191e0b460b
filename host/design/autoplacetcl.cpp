// SPDX-License-Identifier: MIT
#include "host/design/autoplacetcl.h"

#include "engine/referenceengine.h"
#include "host/design/designeditor.h"
#include "host/tcl/tclinterpreter.h"

#include <chrono>
#include <cmath>
#include <optional>
#include <utility>

namespace mirn::zelchip {

namespace {

using zelengine::PlacementAnswer;
using zelengine::PlacementSearch;

const QString AutoResourceOption = QStringLiteral("-rsc");
const QString SecondsOption = QStringLiteral("-seconds");
const QString PartialFlag = QStringLiteral("-partial");

constexpr double MostSeconds = 86400;

// Returns nothing for what is no time.
std::optional<std::chrono::milliseconds> timeOf(const QString& seconds)
{
    bool isNumber = false;
    const double value = seconds.toDouble(&isNumber);
    if (!isNumber || !(value > 0) || value > MostSeconds)
        return std::nullopt;
    return std::chrono::milliseconds(static_cast<int>(std::ceil(value * 1000)));
}

QString wordOf(PlacementAnswer::Kind kind)
{
    if (kind == PlacementAnswer::Kind::Placed)
        return QStringLiteral("placed");
    return kind == PlacementAnswer::Kind::Impossible ? QStringLiteral("impossible") : QStringLiteral("partial");
}

QString pathsOf(const zelengine::Design& design, const std::vector<int>& resources)
{
    QStringList paths;
    for (int resource : resources)
        paths.append(design.resource(resource).path);
    return TclInterpreter::list(paths);
}

// Returns a dictionary. `placed` is what the command has placed, `missing` what it has left without a site.
TclResult dictionaryOf(const PlacementAnswer& answer, const zelengine::Design& design)
{
    QStringList placed;
    for (const zelengine::Placement& placement : answer.placements)
        placed += QStringList{design.resource(placement.resource).path, QString::number(placement.site)};
    return TclResult::value(
        TclInterpreter::list({QStringLiteral("answer"), wordOf(answer.kind), QStringLiteral("placed"),
            TclInterpreter::list(placed), QStringLiteral("missing"), pathsOf(design, answer.missing),
            QStringLiteral("conflict"), pathsOf(design, answer.conflict), QStringLiteral("reason"), answer.sentence}));
}

// Without this a command that takes long would stop the window.
PlacementSearch::Limits limitsFor(TclInterpreter& interpreter)
{
    PlacementSearch::Limits limits;
    limits.isCancelled = [&interpreter] { return !interpreter.stayResponsive(); };
    return limits;
}

// The unplaced resources that the command means, or one sentence that says why it means none.
struct Meant
{
    std::vector<int> resources;
    QString error;
};

Meant meantBy(const Arguments& arguments, const PlacementSearch& search, const zelengine::Design& design)
{
    if (!arguments.has(AutoResourceOption))
        return {search.unplaced(), {}};
    std::vector<int> tops;
    for (const QString& name : arguments.texts(AutoResourceOption)) {
        tops.push_back(design.find(name));
        if (tops.back() < 0)
            return {{}, QStringLiteral("there is no resource \"%1\"").arg(name)};
    }
    return {search.unplacedBelow(tops), {}};
}

TclResult placeRest(
    TclInterpreter& interpreter, DesignEditor& editor, const PositionSource& positions, const Arguments& arguments)
{
    PlacementSearch::Limits limits = limitsFor(interpreter);
    if (arguments.has(SecondsOption)) {
        const auto time = timeOf(arguments.text(SecondsOption));
        if (!time)
            return TclResult::error(QStringLiteral("expected a number of seconds up to %1 but got \"%2\"")
                                        .arg(QString::number(MostSeconds), arguments.text(SecondsOption)));
        limits.time = *time;
    }
    const zelengine::ReferenceEngine& engine = editor.engine();
    const PlacementSearch search(
        engine.device(), engine.design(), engine.settings(), positions ? positions() : PlacementSearch::Position());
    const Meant meant = meantBy(arguments, search, engine.design());
    if (!meant.error.isEmpty())
        return TclResult::error(meant.error);
    PlacementAnswer answer = search.run(meant.resources, limits);
    if (answer.kind == PlacementAnswer::Kind::Cancelled)
        return TclResult::error(answer.sentence);
    if (answer.kind != PlacementAnswer::Kind::Placed && !arguments.has(PartialFlag)) {
        answer.placements.clear();
        answer.missing = meant.resources;
    }
    answer.placements = PlacementSearch::ofUnplaced(engine.design(), answer.placements);
    const zelengine::Refusal refusal = editor.move(DesignEditor::tr("Place the rest"), answer.placements);
    return refusal.isEmpty() ? dictionaryOf(answer, engine.design()) : TclResult::error(refusal.sentence());
}

} // namespace

CommandHandler autoPlaceHandler(TclInterpreter& interpreter, DesignEditor& editor, PositionSource positions)
{
    return [&interpreter, &editor, positions = std::move(positions)](
               const Arguments& arguments) { return placeRest(interpreter, editor, positions, arguments); };
}

} // namespace mirn::zelchip
