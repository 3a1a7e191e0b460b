// SPDX-License-Identifier: MIT
#include "host/design/designtcl.h"

#include "engine/model/resourceparameter.h"
#include "engine/referenceengine.h"
#include "host/design/designeditor.h"
#include "host/tcl/arguments.h"

#include <algorithm>
#include <limits>

namespace mirn::zelchip {

namespace {

using zelengine::Design;
using zelengine::ReferenceEngine;
using zelengine::Resource;
using zelengine::Site;

const QString ResourceCommand = QStringLiteral("zel_resource");
const QString SettingCommand = QStringLiteral("zel_setting");
const QString ResourceOption = QStringLiteral("-rsc");
const QString IpOption = QStringLiteral("-ip");
const QString IdOption = QStringLiteral("-id");
const QString KeyOption = QStringLiteral("-key");
const QString ValueOption = QStringLiteral("-value");
const QString UnplacedFlag = QStringLiteral("-unplaced");

TclResult resultOf(const zelengine::Refusal& refusal)
{
    return mirn::zelchip::resultOf(refusal.sentence());
}

TclResult noSuchResource(const QString& name)
{
    return TclResult::error(QStringLiteral("there is no resource \"%1\"").arg(name));
}

// For the subcommands "place" and "why", which take a resource and a site.
template <typename Function>
TclResult withResourceAndSite(const QStringList& words, const char* verb, const Function& function)
{
    Arguments arguments(
        words, QStringLiteral("zel_resource %1 -rsc NAME -id N").arg(QLatin1String(verb)), {ResourceOption, IdOption});
    const QString resource = arguments.text(ResourceOption);
    const int site = arguments.number(IdOption);
    arguments.positional(0, 0);
    return arguments.isOk() ? function(resource, site) : arguments.error();
}

template <typename Function>
TclResult withName(const QStringList& words, const char* verb, const QString& option, const Function& function)
{
    Arguments arguments(words, QStringLiteral("zel_resource %1 %2 NAME").arg(QLatin1String(verb), option), {option});
    const QString name = arguments.text(option);
    arguments.positional(0, 0);
    return arguments.isOk() ? function(name) : arguments.error();
}

const char ConfigureUsage[] = "zel_resource configure -ip NAME -key K ?-value V?";

TclResult configure(DesignEditor& editor, const QStringList& words)
{
    Arguments arguments(words, QLatin1String(ConfigureUsage), {IpOption, KeyOption, ValueOption});
    const QString resource = arguments.text(IpOption);
    const QString key = arguments.text(KeyOption);
    const QString value = arguments.text(ValueOption);
    arguments.positional(0, 0);
    return arguments.isOk() ? resultOf(editor.configure(resource, key, value)) : arguments.error();
}

Subcommands changes(DesignEditor& editor)
{
    return {
        {QStringLiteral("configure"), [&](const QStringList& words) { return configure(editor, words); }},
        {QStringLiteral("place"),
            [&](const QStringList& words) {
                return withResourceAndSite(words, "place",
                    [&](const QString& resource, int site) { return resultOf(editor.place(resource, site)); });
            }},
        {QStringLiteral("reset"),
            [&](const QStringList& words) {
                return withName(
                    words, "reset", IpOption, [&](const QString& name) { return resultOf(editor.reset(name)); });
            }},
        {QStringLiteral("remove"),
            [&](const QStringList& words) {
                return withName(
                    words, "remove", IpOption, [&](const QString& name) { return resultOf(editor.remove(name)); });
            }},
        {QStringLiteral("restore"),
            [&](const QStringList& words) {
                return withName(
                    words, "restore", IpOption, [&](const QString& name) { return resultOf(editor.restore(name)); });
            }},
    };
}

TclResult list(const ReferenceEngine& engine, const QStringList& words)
{
    Arguments arguments(words, QStringLiteral("zel_resource list ?-unplaced? ?PATTERN?"), {}, {UnplacedFlag});
    const QStringList pattern = arguments.positional(0, 1);
    if (!arguments.isOk())
        return arguments.error();
    QStringList names;
    for (int index : engine.design().all()) {
        const Resource& resource = engine.design().resource(index);
        const bool isPlaceable = resource.children.empty();
        if (arguments.has(UnplacedFlag) && (!isPlaceable || resource.site >= 0))
            continue;
        if (pattern.isEmpty() || TclInterpreter::matches(resource.path, pattern.first()))
            names.append(resource.path);
    }
    return TclResult::value(TclInterpreter::list(names));
}

// Without -value it returns the value in force; with -value it changes it.
TclResult configureOrTell(DesignEditor& editor, const QStringList& words)
{
    Arguments arguments(words, QLatin1String(ConfigureUsage), {IpOption, KeyOption, ValueOption});
    const QString name = arguments.text(IpOption);
    const QString key = arguments.text(KeyOption);
    arguments.positional(0, 0);
    if (!arguments.isOk() || arguments.has(ValueOption))
        return configure(editor, words);
    const ReferenceEngine::Configuration inForce = editor.engine().configuration(name, key);
    return inForce.isAllowed() ? TclResult::value(inForce.value) : TclResult::error(inForce.refusal.sentence());
}

// Returns a dictionary.
TclResult get(const ReferenceEngine& engine, const QString& name)
{
    const int index = engine.design().find(name);
    if (index < 0)
        return noSuchResource(name);
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
        QStringLiteral("fixed"), QString::number(resource.fixed ? 1 : 0), QStringLiteral("parameters"),
        TclInterpreter::list(parameters), QStringLiteral("children"), TclInterpreter::list(children)};
    return TclResult::value(TclInterpreter::list(facts));
}

TclResult sites(const ReferenceEngine& engine, const QString& name)
{
    const int index = engine.design().find(name);
    if (index < 0)
        return noSuchResource(name);
    QStringList ids;
    for (int id : engine.rules().sitesFor(index))
        ids.append(QString::number(id));
    return TclResult::value(TclInterpreter::list(ids));
}

// Returns an empty value when the resource may be placed there.
TclResult why(const ReferenceEngine& engine, const QString& name, int site)
{
    const int index = engine.design().find(name);
    return index < 0 ? noSuchResource(name) : TclResult::value(engine.rules().propose(index, site).refusal.sentence());
}

Subcommands questions(const ReferenceEngine& engine)
{
    return {
        {QStringLiteral("list"), [&](const QStringList& words) { return list(engine, words); }},
        {QStringLiteral("get"),
            [&](const QStringList& words) {
                return withName(words, "get", IpOption, [&](const QString& name) { return get(engine, name); });
            }},
        {QStringLiteral("sites"),
            [&](const QStringList& words) {
                return withName(
                    words, "sites", ResourceOption, [&](const QString& name) { return sites(engine, name); });
            }},
        {QStringLiteral("why"),
            [&](const QStringList& words) {
                return withResourceAndSite(
                    words, "why", [&](const QString& name, int site) { return why(engine, name, site); });
            }},
    };
}

TclResult setting(DesignEditor& editor, const QStringList& words, bool mayRead)
{
    Arguments arguments(
        words.mid(1), QStringLiteral("zel_setting -id N -key K ?-value V?"), {IdOption, KeyOption, ValueOption});
    const int site = arguments.number(IdOption);
    const QString key = arguments.text(KeyOption);
    arguments.positional(0, 0);
    if (!mayRead)
        (void)arguments.text(ValueOption);
    if (!arguments.isOk())
        return arguments.error();
    if (arguments.has(ValueOption))
        return resultOf(editor.setSetting(site, key, arguments.text(ValueOption)));
    const Site* carrier = editor.engine().settings().carrier(site);
    if (!carrier)
        return TclResult::error(QStringLiteral("element %1 has no settings").arg(site));
    const auto isKey = [&](const zelengine::SiteSetting& known) { return known.key == key; };
    if (std::none_of(carrier->settings.begin(), carrier->settings.end(), isKey))
        return TclResult::error(QStringLiteral("%1 has no setting \"%2\"").arg(carrier->name, key));
    return TclResult::value(editor.engine().settings().value(site, key));
}

template <typename Function> TclInterpreter::Command withoutArguments(const Function& function)
{
    return [function](const QStringList& words) {
        return words.size() == 1 ? resultOf(function())
                                 : TclResult::error(QStringLiteral("wrong # args: should be \"%1\"").arg(words[0]));
    };
}

} // namespace

TclInterpreter::Command changeCommand(DesignEditor& editor)
{
    return [&editor, resource = ensemble(changes(editor))](const QStringList& words) {
        if (words.value(0) == ResourceCommand)
            return resource(words);
        return words.value(0) == SettingCommand
            ? setting(editor, words, false)
            : TclResult::error(QStringLiteral("expected %1 or %2").arg(ResourceCommand, SettingCommand));
    };
}

void addDesignCommands(TclInterpreter& interpreter, DesignEditor& editor)
{
    Subcommands all = changes(editor);
    all.merge(questions(editor.engine()));
    all[QStringLiteral("configure")] = [&](const QStringList& words) { return configureOrTell(editor, words); };
    interpreter.addCommand(ResourceCommand, ensemble(std::move(all)));
    interpreter.addCommand(
        SettingCommand, [&editor](const QStringList& words) { return setting(editor, words, true); });
    interpreter.addCommand(QStringLiteral("undo"), withoutArguments([&editor] { return editor.undo(); }));
    interpreter.addCommand(QStringLiteral("redo"), withoutArguments([&editor] { return editor.redo(); }));
}

} // namespace mirn::zelchip
