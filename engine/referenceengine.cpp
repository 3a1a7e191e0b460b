// SPDX-License-Identifier: MIT
#include "engine/referenceengine.h"

#include "engine/configuredialog.h"
#include "engine/designreader.h"
#include "engine/devicereader.h"
#include "engine/enginequestion.h"
#include "engine/input/jsonnode.h"
#include "engine/model/resourceparameter.h"
#include "engine/usagetable.h"
#include "platform/contract/zeltext.h"

#include <QFile>
#include <QFileInfo>

#include <utility>

namespace mirn::zelengine {

namespace {

constexpr unsigned int DcuSettings = 1; // the only kind of settings dialog

int codeOf(const ResourceType* type)
{
    return type ? type->code : ZEL_RESOURCE_UNKNOWN;
}

QString noSuchParameter(const QString& resource, const ResourceType* type, const QString& key)
{
    QStringList known;
    for (const ResourceParameter& parameter : parametersOf(type))
        known.append(parameter.key);
    if (known.isEmpty())
        return QStringLiteral("%1 has nothing to configure").arg(resource);
    return QStringLiteral("%1 has no parameter \"%2\", expected %3").arg(resource, key, quotedAlternatives(known));
}

} // namespace

std::unique_ptr<ReferenceEngine> ReferenceEngine::open(
    const QString& projectDirectory, QString* error, QStringList* warnings)
{
    std::optional<Project> project = readProject(projectDirectory, error, warnings);
    if (!project)
        return nullptr;
    std::optional<Device> device = readDevice(project->deviceFile, error, warnings);
    if (!device)
        return nullptr;
    std::optional<Design> design
        = project->designFile.isEmpty() ? Design() : readDesign(project->designFile, *device, error, warnings);
    if (!design)
        return nullptr;
    return std::unique_ptr<ReferenceEngine>(
        new ReferenceEngine(std::move(*project), std::move(*device), std::move(*design))); // private constructor
}

std::unique_ptr<ReferenceEngine> ReferenceEngine::forDrawing(const QString& drawingFile)
{
    const QFileInfo file(drawingFile);
    Project project;
    project.name = file.completeBaseName();
    project.directory = file.absolutePath();
    Device device;
    device.setName(project.name);
    device.setDrawingFile(file.absoluteFilePath());
    return std::unique_ptr<ReferenceEngine>(
        new ReferenceEngine(std::move(project), std::move(device), Design())); // private constructor
}

std::unique_ptr<ReferenceEngine> ReferenceEngine::copyWith(Design design) const
{
    return std::unique_ptr<ReferenceEngine>(
        new ReferenceEngine(m_project, m_device, std::move(design))); // private constructor
}

ReferenceEngine::ReferenceEngine(Project project, Device device, Design design)
    : m_project(std::move(project))
    , m_device(std::move(device))
    , m_design(std::move(design))
    , m_settings(m_device)
    , m_chip(m_device)
{ }

ReferenceEngine::~ReferenceEngine() = default;

void ReferenceEngine::setFilterFile(const QString& fileName)
{
    m_chip.setFilterFile(QFile::encodeName(fileName).toStdString());
}

void ReferenceEngine::setDesign(Design design)
{
    m_design = std::move(design);
    changed();
}

Refusal ReferenceEngine::place(const QString& resource, int site)
{
    const int index = m_design.find(resource);
    return index < 0 ? noSuchResource(resource) : apply(rules().propose(index, site));
}

Refusal ReferenceEngine::reset(const QString& resource)
{
    const int index = m_design.find(resource);
    return index < 0 ? noSuchResource(resource) : apply(rules().proposeReset(index));
}

Refusal ReferenceEngine::remove(const QString& resource)
{
    const int index = m_design.find(resource);
    if (index < 0)
        return noSuchResource(resource);
    m_design.remove(index);
    changed();
    return {};
}

Refusal ReferenceEngine::restore(const QString& resource)
{
    Refusal refusal = rules().refusalToRestore(resource);
    if (!refusal.isEmpty())
        return refusal;
    m_design.restore(m_design.findRemoved(resource));
    changed();
    return {};
}

LockProposal ReferenceEngine::proposeLock(const QString& resource) const
{
    const int index = m_design.find(resource);
    return index < 0 ? LockProposal{{}, noSuchResource(resource)} : lockrules::proposeLock(m_device, m_design, index);
}

LockProposal ReferenceEngine::proposeUnlock(const QString& resource) const
{
    const int index = m_design.find(resource);
    return index < 0 ? LockProposal{{}, noSuchResource(resource)} : lockrules::proposeUnlock(m_device, m_design, index);
}

void ReferenceEngine::setLocked(const std::vector<int>& resources, bool isLocked)
{
    for (int resource : resources)
        m_design.setLocked(resource, isLocked);
    changed();
}

// All parts leave their sites first, because the parts of an IP may swap sites.
void ReferenceEngine::setSites(const std::vector<Placement>& placements)
{
    for (const Placement& placement : placements)
        m_design.setSite(placement.resource, -1);
    for (const Placement& placement : placements)
        m_design.setSite(placement.resource, placement.site);
    changed();
}

Refusal ReferenceEngine::apply(const Proposal& proposal)
{
    if (!proposal.isAllowed())
        return proposal.refusal;
    setSites(proposal.placements);
    return {};
}

ReferenceEngine::Configuration ReferenceEngine::configuration(const QString& resource, const QString& key) const
{
    const int index = m_design.find(resource);
    if (index < 0)
        return {index, key, {}, noSuchResource(resource)};
    const ResourceType* type = m_design.resource(index).type;
    if (!type || !type->parameter(key))
        return {index, key, {}, noSuchParameter(resource, type, key)};
    return {index, key, m_design.parameter(index, key), {}};
}

ReferenceEngine::Configuration ReferenceEngine::proposeConfiguration(
    const QString& resource, const QString& key, const QString& value) const
{
    Configuration result = configuration(resource, key);
    if (!result.isAllowed())
        return result;
    const ResourceParameter& parameter = *m_design.resource(result.resource).type->parameter(key);
    result.value = parameter.accepted(value).value_or(QString());
    if (result.value.isEmpty())
        result.refusal = QStringLiteral("%1 cannot be \"%2\", expected %3").arg(key, value, parameter.expectation());
    return result;
}

Refusal ReferenceEngine::configure(const QString& resource, const QString& key, const QString& value)
{
    const Configuration proposal = proposeConfiguration(resource, key, value);
    if (proposal.isAllowed())
        setParameter(proposal.resource, key, proposal.value);
    return proposal.refusal;
}

void ReferenceEngine::setParameter(int resource, const QString& key, const QString& value)
{
    m_design.setParameter(resource, key, value);
    changed();
}

Refusal ReferenceEngine::setSetting(int site, const QString& key, const QString& value)
{
    const SettingStore::Proposal proposal = m_settings.propose(site, key, value);
    if (proposal.isAllowed())
        setSettingChanges(proposal.carrier, proposal.changes);
    return proposal.refusal;
}

void ReferenceEngine::setSettingChanges(int carrier, const SiteSettingChanges& changes)
{
    m_settings.setChanges(carrier, changes);
    changed();
}

void ReferenceEngine::changed()
{
    m_isChanged = true;
    m_problems.reset();
    m_connections.reset();
}

const std::vector<Problem>& ReferenceEngine::problems() const
{
    if (!m_problems)
        m_problems = DesignCheck(m_device, m_design, m_settings).problems();
    return *m_problems;
}

void ReferenceEngine::update()
{
    if (!m_isChanged)
        return;
    m_isChanged = false;
    m_chip.update(m_device, m_design, m_settings);
    m_tree.rebuild(m_device, m_design);
}

zelchipdata* ReferenceEngine::chip()
{
    update();
    return &m_chip;
}

zeltreeviewcell* ReferenceEngine::tree()
{
    update();
    return m_tree.root();
}

const std::map<int, std::string>& ReferenceEngine::headers()
{
    return ResourceTree::headers();
}

std::vector<std::vector<std::string>> ReferenceEngine::getResources()
{
    return usageRows(m_device, m_design);
}

std::vector<std::string> ReferenceEngine::getResourceHeader()
{
    return usageHeader();
}

std::string ReferenceEngine::getResourceSummary(const std::string* name)
{
    const int index = m_design.find(fromEngineText(*name));
    return index < 0 ? std::string() : ResourceTree::summary(m_design, m_device, index);
}

int ReferenceEngine::getResourceType(const std::string* name)
{
    const QString text = fromEngineText(*name);
    const int index = m_design.find(text);
    if (index >= 0)
        return codeOf(m_design.resource(index).type);
    const Site* site = m_device.site(elementId(*name));
    if (site) {
        const std::vector<const ResourceType*>& accepted = m_device.kindOf(*site).accepts;
        return codeOf(accepted.empty() ? nullptr : accepted.front());
    }
    return !text.isEmpty() && text == m_design.name() ? ZEL_RESOURCE_ZEL : ZEL_RESOURCE_UNKNOWN;
}

bool ReferenceEngine::canDrop(const std::string* rsc, const std::string* site)
{
    const int index = m_design.find(fromEngineText(*rsc));
    return index >= 0 && rules().propose(index, elementId(*site)).isAllowed();
}

std::string ReferenceEngine::refusalReason(const std::string* rsc, const std::string* site)
{
    const QString name = fromEngineText(*rsc);
    const int index = m_design.find(name);
    return toEngineText(index < 0 ? noSuchResource(name) : rules().propose(index, elementId(*site)).refusal.sentence());
}

bool ReferenceEngine::showProbPlaceItem(
    const std::string* rsc, const std::string* /*site*/, std::list<std::string>& items)
{
    for (int id : sitesFor(rsc))
        items.push_back(std::to_string(id));
    return m_design.find(fromEngineText(*rsc)) >= 0;
}

int ReferenceEngine::config(const std::string* name)
{
    const QString resource = fromEngineText(*name);
    const int index = m_design.find(resource);
    const std::vector<ResourceParameter>& parameters
        = parametersOf(index < 0 ? nullptr : m_design.resource(index).type);
    if (parameters.empty()) {
        showConfigureMessage(QStringLiteral("%1 has nothing to configure.").arg(resource));
        return 0;
    }
    ParameterValues values;
    for (const ResourceParameter& parameter : parameters)
        values.insert(parameter.key, m_design.parameter(index, parameter.key));
    const std::optional<ParameterValues> chosen = ConfigureDialog::ask(resource, parameters, values);
    if (!chosen)
        return 0;
    int changed = 0;
    for (const ResourceParameter& parameter : parameters) {
        const QString entered = chosen->value(parameter.key);
        const QString value = parameter.accepted(entered).value_or(entered);
        if (value == values.value(parameter.key))
            continue;
        const Refusal refusal = write(resource, parameter.key, value);
        if (refusal.isEmpty())
            changed = 1;
        else
            showConfigureMessage(refusal.sentence());
    }
    return changed;
}

// The resource is found by its name, because the design may have changed while the dialog was open.
Refusal ReferenceEngine::write(const QString& resource, const QString& key, const QString& value)
{
    return m_parameterWriter ? m_parameterWriter(resource, key, value) : configure(resource, key, value);
}

bool ReferenceEngine::hasDynamicDialog(const std::string* id)
{
    return m_settings.carrier(elementId(*id)) != nullptr;
}

const std::map<std::string, std::vector<std::string>>* ReferenceEngine::getDynamicDialogValues(
    const std::string* id, unsigned int type)
{
    if (type != DcuSettings)
        return nullptr;
    m_offers = m_settings.offers(elementId(*id));
    return m_offers.empty() ? nullptr : &m_offers;
}

int ReferenceEngine::setDynamicDialogValue(
    const std::string* id, unsigned int type, const std::string* key, const std::string* value)
{
    if (type != DcuSettings)
        return 0;
    const int site = elementId(*id);
    const QString keyText = fromEngineText(*key);
    const QString valueText = fromEngineText(*value);
    const Refusal refusal
        = m_settingWriter ? m_settingWriter(site, keyText, valueText) : setSetting(site, keyText, valueText);
    return refusal.isEmpty() ? 1 : 0;
}

// Placements change only through commands, so there is nothing to read again.
void ReferenceEngine::refresh(int /*kind*/)
{
    update();
}

} // namespace mirn::zelengine
