// SPDX-License-Identifier: MIT
#pragma once

#include "engine/chipdata.h"
#include "engine/model/design.h"
#include "engine/model/device.h"
#include "engine/project.h"
#include "engine/resourcetree.h"
#include "engine/rules/connections.h"
#include "engine/rules/designcheck.h"
#include "engine/rules/lockrules.h"
#include "engine/rules/placementrules.h"
#include "engine/rules/settingstore.h"
#include "platform/contract/zelchipengine.h"
#include "platform/contract/zelplanengine.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace mirn::zelengine {

// The engine that makes the chip view work out of the box: device and design come from files, placements from commands.
// The host owns it. It is a facade: the classes of its members hold the logic.
class ReferenceEngine final : public zelchipengine, public zelplanengine
{
public:
    // Opens a project folder. Returns null, with a message in *error, on failure; *warnings receives what was ignored.
    // Neither pointer may be null.
    [[nodiscard]] static std::unique_ptr<ReferenceEngine> open(
        const QString& projectDirectory, QString* error, QStringList* warnings);

    // Returns an engine for a drawing without device and design: nothing can be placed.
    [[nodiscard]] static std::unique_ptr<ReferenceEngine> forDrawing(const QString& drawingFile);

    // Returns an engine for the same project and device with a state of the same design and no changed settings.
    [[nodiscard]] std::unique_ptr<ReferenceEngine> copyWith(Design design) const;

    ~ReferenceEngine() override;

    // Sets the filter file that chip() names, for a host whose device has none.
    void setFilterFile(const QString& fileName);

    [[nodiscard]] const Project& project() const { return m_project; }
    [[nodiscard]] const Device& device() const { return m_device; }
    [[nodiscard]] const Design& design() const { return m_design; }
    [[nodiscard]] PlacementRules rules() const { return {m_device, m_design}; }
    // What is wrong with the present state, and what is still to be done. Valid until the next change.
    [[nodiscard]] const std::vector<Problem>& problems() const;

    // Goes back to a state that design() returned earlier.
    void setDesign(Design design);

    // Change the design, by resource name.
    Refusal place(const QString& resource, int site);
    Refusal reset(const QString& resource);
    Refusal remove(const QString& resource);
    Refusal restore(const QString& resource); // undoes a removal; only fixed placements come back
    // What would be locked or unlocked: the resource and everything below it.
    [[nodiscard]] LockProposal proposeLock(const QString& resource) const;
    [[nodiscard]] LockProposal proposeUnlock(const QString& resource) const;
    // Sets or takes off the locks of placed resources without asking the rules.
    void setLocked(const std::vector<int>& resources, bool isLocked);
    // Sets placements of an earlier or later state without asking the rules.
    void setSites(const std::vector<Placement>& placements);

    // A parameter of a resource with its value, or one sentence that says why there is none.
    struct Configuration
    {
        int resource = -1;
        QString key;
        QString value;
        Refusal refusal;

        [[nodiscard]] bool isAllowed() const { return refusal.isEmpty(); }
    };
    [[nodiscard]] Configuration configuration(const QString& resource, const QString& key) const; // the value in force
    // Checks a change without making it; returns the value in its canonical spelling.
    [[nodiscard]] Configuration proposeConfiguration(
        const QString& resource, const QString& key, const QString& value) const;
    Refusal configure(const QString& resource, const QString& key, const QString& value);
    // Sets the function that carries out the changes that are requested in the engine's own dialog; it returns what
    // configure() would. Without one the engine makes them itself.
    using ParameterWriter = std::function<Refusal(const QString& resource, const QString& key, const QString& value)>;
    void setParameterWriter(ParameterWriter writer) { m_parameterWriter = std::move(writer); }
    // Sets a parameter to a value that proposeConfiguration() returned or that was in force earlier.
    void setParameter(int resource, const QString& key, const QString& value);

    [[nodiscard]] const SettingStore& settings() const { return m_settings; }
    Refusal setSetting(int site, const QString& key, const QString& value);
    // Sets the function that carries out the changes that the chip view requests through setDynamicDialogValue(), so
    // that they can be journalled and undone; it returns what setSetting() would. Without one the engine makes them
    // itself.
    using SettingWriter = std::function<Refusal(int site, const QString& key, const QString& value)>;
    void setSettingWriter(SettingWriter writer) { m_settingWriter = std::move(writer); }
    // Goes to a value that settings().changes() had for a site or that settings().propose() returned.
    void setSettingChanges(int carrier, const SiteSettingChanges& changes);

    [[nodiscard]] zelchipdata* chip() override;
    [[nodiscard]] zeltreeviewcell* tree() override;
    [[nodiscard]] const std::map<int, std::string>& headers() override;
    [[nodiscard]] std::vector<std::vector<std::string>> getResources() override;
    [[nodiscard]] std::vector<std::string> getResourceHeader() override;
    [[nodiscard]] std::string getResourceSummary(const std::string* name) override;
    [[nodiscard]] int getResourceType(const std::string* name) override;
    [[nodiscard]] bool canDrop(const std::string* rsc, const std::string* site) override;
    [[nodiscard]] std::string refusalReason(const std::string* rsc, const std::string* site) override;
    bool showProbPlaceItem(const std::string* rsc, const std::string* site, std::list<std::string>& items) override;
    // Opens a dialog, or a message that there is nothing to configure. Returns 1 if something changed, else 0.
    int config(const std::string* name) override;
    [[nodiscard]] bool hasDynamicDialog(const std::string* id) override;
    [[nodiscard]] const std::map<std::string, std::vector<std::string>>* getDynamicDialogValues(
        const std::string* id, unsigned int type) override;
    int setDynamicDialogValue(
        const std::string* id, unsigned int type, const std::string* key, const std::string* value) override;
    void refresh(int kind) override;

    [[nodiscard]] std::vector<zelconnection> connections() override;
    [[nodiscard]] std::vector<zelconnection> connectionsOf(const std::string* rsc) override;
    [[nodiscard]] std::vector<int> sitesFor(const std::string* rsc) override;
    [[nodiscard]] std::vector<zelsite> sites() override;
    [[nodiscard]] std::vector<int> sitesOfKind(const std::string* rsc) override;
    [[nodiscard]] std::string refusalToPlace(const std::string* rsc) override;
    [[nodiscard]] std::vector<zelplacement> placementsOf(const std::string* rsc, const std::string* site) override;
    [[nodiscard]] bool maySwap(const std::string* rsc, const std::string* other, std::string* reason) override;
    [[nodiscard]] std::string occupant(const std::string* site) override;
    [[nodiscard]] int siteOf(const std::string* rsc) override;
    [[nodiscard]] std::vector<std::string> partsOf(const std::string* rsc) override;
    [[nodiscard]] std::string describe(const std::string* rsc) override;

private:
    ReferenceEngine(Project project, Device device, Design design);
    Refusal apply(const Proposal& proposal);
    Refusal write(const QString& resource, const QString& key, const QString& value);
    void update();
    [[nodiscard]] const std::vector<Connection>& keptConnections();
    void changed();
    [[nodiscard]] std::vector<zelconnection> withNames(const std::vector<Connection>& found) const;

    Project m_project;
    Device m_device; // before the design, which points to its types
    Design m_design;
    SettingStore m_settings;
    SettingWriter m_settingWriter;
    ParameterWriter m_parameterWriter;
    ChipData m_chip;
    ResourceTree m_tree;
    bool m_isChanged = true; // whether the design or the settings changed since the last update()
    mutable std::optional<std::vector<Problem>> m_problems; // of the present state, once they were asked for
    std::optional<std::vector<Connection>> m_connections; // of the present design, once they were asked for
    std::map<std::string, std::vector<std::string>> m_offers;
};

} // namespace mirn::zelengine
