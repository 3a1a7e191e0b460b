// SPDX-License-Identifier: MIT
#include "host/design/designtcl.h"

#include "engine/model/device.h"
#include "engine/model/resourceparameter.h"
#include "engine/referenceengine.h"
#include "host/design/designeditor.h"
#include "host/design/elementname.h"
#include "host/design/placementtable.h"
#include "host/tcl/arguments.h"

#include <algorithm>
#include <utility>

namespace mirn::zelchip {

namespace {

using zelengine::Design;
using zelengine::ReferenceEngine;
using zelengine::Resource;
using zelengine::Site;

const QString ResourceCommand = QStringLiteral("zel_resource");
const QString SettingCommand = QStringLiteral("zel_setting");
const QString UndoCommand = QStringLiteral("undo");
const QString RedoCommand = QStringLiteral("redo");
const QString AutoFlag = QStringLiteral("-auto");
const QString FromOption = QStringLiteral("-from");
const QString ResourceOption = QStringLiteral("-rsc");
const QString IpOption = QStringLiteral("-ip");
const QString IdOption = QStringLiteral("-id");
const QString KeyOption = QStringLiteral("-key");
const QString ValueOption = QStringLiteral("-value");
const QString WithOption = QStringLiteral("-with");
const QString UnplacedFlag = QStringLiteral("-unplaced");
const QString LockedFlag = QStringLiteral("-locked");

TclResult resultOf(const zelengine::Refusal& refusal)
{
    return mirn::zelchip::resultOf(refusal.sentence());
}

TclResult noSuchResource(const QString& name)
{
    return TclResult::error(QStringLiteral("there is no resource \"%1\"").arg(name));
}

// Returns the element that -id means. The files of a project name elements by their ids only.
enum class Naming { IdsAndNames, IdsOnly };
NamedElement elementOf(const DesignEditor& editor, const Arguments& arguments, Naming naming = Naming::IdsAndNames)
{
    const QString text = arguments.text(IdOption);
    return naming == Naming::IdsOnly ? NamedElement::fromId(text) : NamedElement::find(editor.engine().device(), text);
}

TclResult place(DesignEditor& editor, const Arguments& arguments, Naming naming)
{
    const NamedElement site = elementOf(editor, arguments, naming);
    return site.error.isEmpty() ? resultOf(editor.place(arguments.text(ResourceOption), site.id))
                                : TclResult::error(site.error);
}

TclResult configure(DesignEditor& editor, const Arguments& arguments)
{
    return arguments.has(ValueOption)
        ? resultOf(editor.configure(arguments.text(IpOption), arguments.text(KeyOption), arguments.text(ValueOption)))
        : arguments.error();
}

Subcommands changes(DesignEditor& editor, Naming naming)
{
    const auto step = [&editor](zelengine::Refusal (DesignEditor::*change)(const QString&)) {
        return [&editor, change](
                   const Arguments& arguments) { return resultOf((editor.*change)(arguments.text(IpOption))); };
    };
    return {
        {QStringLiteral("configure"), [&](const Arguments& arguments) { return configure(editor, arguments); }},
        {QStringLiteral("lock"), step(&DesignEditor::lock)},
        {QStringLiteral("place"),
            [&editor, naming](const Arguments& arguments) { return place(editor, arguments, naming); }},
        {QStringLiteral("reset"), step(&DesignEditor::reset)},
        {QStringLiteral("remove"), step(&DesignEditor::remove)},
        {QStringLiteral("restore"), step(&DesignEditor::restore)},
        {QStringLiteral("unlock"), step(&DesignEditor::unlock)},
    };
}

TclResult list(const ReferenceEngine& engine, const Arguments& arguments)
{
    const QStringList& pattern = arguments.positional();
    QStringList names;
    for (int index : engine.design().all()) {
        const Resource& resource = engine.design().resource(index);
        const bool isPlaceable = resource.children.empty();
        if (arguments.has(UnplacedFlag) && (!isPlaceable || resource.site >= 0))
            continue;
        if (arguments.has(LockedFlag) && !resource.locked)
            continue;
        if (pattern.isEmpty() || TclInterpreter::matches(resource.path, pattern.first()))
            names.append(resource.path);
    }
    return TclResult::value(TclInterpreter::list(names));
}

// Without -value it returns the value in force; with -value it changes it.
TclResult configureOrTell(DesignEditor& editor, const Arguments& arguments)
{
    if (arguments.has(ValueOption))
        return configure(editor, arguments);
    const ReferenceEngine::Configuration inForce
        = editor.engine().configuration(arguments.text(IpOption), arguments.text(KeyOption));
    return inForce.isAllowed() ? TclResult::value(inForce.value) : TclResult::error(inForce.refusal.sentence());
}

// Returns a dictionary.
TclResult get(const ReferenceEngine& engine, int index)
{
    const Resource& resource = engine.design().resource(index);
    const Site* site = engine.device().site(resource.site);
    QStringList children;
    for (int child : resource.children)
        children.append(engine.design().resource(child).path);
    QStringList parameters;
    for (const zelengine::ResourceParameter& parameter : zelengine::parametersOf(resource.type))
        parameters += QStringList{parameter.key, engine.design().parameter(index, parameter.key)};
    const QStringList facts{QStringLiteral("name"), resource.path, QStringLiteral("id"),
        site ? QString::number(site->id) : QString(), QStringLiteral("site"), site ? site->name : QString(),
        QStringLiteral("fixed"), QString::number(resource.fixed ? 1 : 0), QStringLiteral("locked"),
        QString::number(resource.locked ? 1 : 0), QStringLiteral("parameters"), TclInterpreter::list(parameters),
        QStringLiteral("children"), TclInterpreter::list(children)};
    return TclResult::value(TclInterpreter::list(facts));
}

TclResult sites(const ReferenceEngine& engine, int index)
{
    QStringList ids;
    for (int id : engine.rules().sitesFor(index))
        ids.append(QString::number(id));
    return TclResult::value(TclInterpreter::list(ids));
}

// Returns an empty value when the resource may be placed there.
TclResult why(const DesignEditor& editor, int index, const Arguments& arguments)
{
    const NamedElement site = elementOf(editor, arguments);
    return site.error.isEmpty() ? TclResult::value(editor.engine().rules().propose(index, site.id).refusal.sentence())
                                : TclResult::error(site.error);
}

// Calls the function with the index of the resource that an option names.
template <typename Function>
TclResult withResource(const DesignEditor& editor, const QString& name, const Function& function)
{
    const int index = editor.engine().design().find(name);
    return index < 0 ? noSuchResource(name) : function(index);
}

Subcommands questions(const DesignEditor& editor)
{
    const ReferenceEngine& engine = editor.engine();
    return {
        {QStringLiteral("list"), [&](const Arguments& arguments) { return list(engine, arguments); }},
        {QStringLiteral("get"),
            [&](const Arguments& arguments) {
                return withResource(
                    editor, arguments.text(IpOption), [&](int resource) { return get(engine, resource); });
            }},
        {QStringLiteral("sites"),
            [&](const Arguments& arguments) {
                return withResource(
                    editor, arguments.text(ResourceOption), [&](int resource) { return sites(engine, resource); });
            }},
        {QStringLiteral("why"),
            [&](const Arguments& arguments) {
                return withResource(editor, arguments.text(ResourceOption),
                    [&](int resource) { return why(editor, resource, arguments); });
            }},
    };
}

TclResult settingInForce(const DesignEditor& editor, int site, const QString& key)
{
    const Site* carrier = editor.engine().settings().carrier(site);
    if (!carrier)
        return TclResult::error(QStringLiteral("element %1 has no settings").arg(site));
    const auto isKey = [&](const zelengine::SiteSetting& known) { return known.key == key; };
    if (std::none_of(carrier->settings.begin(), carrier->settings.end(), isKey))
        return TclResult::error(QStringLiteral("%1 has no setting \"%2\"").arg(carrier->name, key));
    return TclResult::value(editor.engine().settings().value(site, key));
}

TclResult setSetting(DesignEditor& editor, const Arguments& arguments, Naming naming)
{
    const NamedElement site = elementOf(editor, arguments, naming);
    if (!site.error.isEmpty())
        return TclResult::error(site.error);
    return arguments.has(ValueOption)
        ? resultOf(editor.setSetting(site.id, arguments.text(KeyOption), arguments.text(ValueOption)))
        : arguments.error();
}

TclResult setOrTellSetting(DesignEditor& editor, const Arguments& arguments)
{
    const NamedElement site = elementOf(editor, arguments);
    return arguments.has(ValueOption) || !site.error.isEmpty()
        ? setSetting(editor, arguments, Naming::IdsAndNames)
        : settingInForce(editor, site.id, arguments.text(KeyOption));
}

TclInterpreter::Command historyCommand(
    const QString& name, DesignEditor& editor, zelengine::Refusal (DesignEditor::*step)())
{
    return single(name, [&editor, step](const Arguments&) { return resultOf((editor.*step)()); });
}

} // namespace

TclInterpreter::Command changeCommand(DesignEditor& editor)
{
    const auto resource = ensemble(ResourceCommand, changes(editor, Naming::IdsOnly));
    const auto setting = single(SettingCommand,
        [&editor](const Arguments& arguments) { return setSetting(editor, arguments, Naming::IdsOnly); });
    return [resource, setting](const QStringList& words) {
        if (words.value(0) == ResourceCommand)
            return resource(words);
        return words.value(0) == SettingCommand
            ? setting(words)
            : TclResult::error(QStringLiteral("expected %1 or %2").arg(ResourceCommand, SettingCommand));
    };
}

void addDesignCommands(TclInterpreter& interpreter, DesignEditor& editor, PositionSource positions)
{
    Subcommands all = changes(editor, Naming::IdsAndNames);
    all.merge(questions(editor));
    all[QStringLiteral("swap")] = [&](const Arguments& arguments) {
        return resultOf(editor.swap(arguments.text(ResourceOption), arguments.text(WithOption)));
    };
    all[QStringLiteral("configure")] = [&](const Arguments& arguments) { return configureOrTell(editor, arguments); };
    all[QStringLiteral("place")] = [placeOne = all[QStringLiteral("place")],
                                       placeRest = autoPlaceHandler(interpreter, editor, std::move(positions)),
                                       &editor](const Arguments& arguments) {
        if (arguments.has(FromOption))
            return resultOf(placeFromTable(editor, arguments.text(FromOption)));
        return arguments.has(AutoFlag) ? placeRest(arguments) : placeOne(arguments);
    };
    interpreter.addCommand(ResourceCommand, ensemble(ResourceCommand, std::move(all)));
    interpreter.addCommand(SettingCommand,
        single(SettingCommand, [&editor](const Arguments& arguments) { return setOrTellSetting(editor, arguments); }));
    for (const auto& [name, step] :
        {std::pair(UndoCommand, &DesignEditor::undo), std::pair(RedoCommand, &DesignEditor::redo)})
        interpreter.addCommand(name, historyCommand(name, editor, step));
}

} // namespace mirn::zelchip
