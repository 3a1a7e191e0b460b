// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <list>
#include <map>
#include <string>
#include <vector>

class zelchipdata;
struct zeltreeviewcell;

// The values that getResourceType() returns.
enum zel_resource_type {
    ZEL_RESOURCE_UNKNOWN = -1,
    ZEL_RESOURCE_IP = 0,
    ZEL_RESOURCE_DCUCHANNEL = 1,
    ZEL_RESOURCE_EXTREF = 2,
    ZEL_RESOURCE_PLL = 3,
    ZEL_RESOURCE_UVCCIO = 4,
    ZEL_RESOURCE_ZEL = 5, // the design itself
};

// The source of everything that the chip view knows of device and design. The host implements it and owns it; it must
// outlive the window. All calls come on the GUI thread, are synchronous and must not throw.
//
// Texts are 8-bit (ISO 8859-1) and are passed by pointer; no argument is a null pointer, and the engine must not keep
// one. A resource name is the slash-separated path of its tree row, beginning with the root's name ("top/ip1/ch0").
// Element ids are passed as decimal text. Returned pointers and references stay the engine's and must stay valid until
// the next call that changes the engine (setDynamicDialogValue(), config(), refresh(), or a command that the host ran).
class ZELPLATFORM_EXPORT zelchipengine
{
public:
    zelchipengine();
    virtual ~zelchipengine();
    zelchipengine(const zelchipengine&) = delete;
    zelchipengine& operator=(const zelchipengine&) = delete;

    // Returns the device data, or null if no device is open.
    [[nodiscard]] virtual zelchipdata* chip() = 0;

    // Returns the root cell of the resource tree, or null if no design is open. The root's name is the first component
    // of every resource name; its children are the top-level rows.
    [[nodiscard]] virtual zeltreeviewcell* tree() = 0;

    // Returns the column titles of the tree, by column number. Called until there are titles, and then never again by
    // the same controller.
    [[nodiscard]] virtual const std::map<int, std::string>& headers() = 0;

    // Returns the rows of the usage table: each row's label, then its cells.
    [[nodiscard]] virtual std::vector<std::vector<std::string>> getResources() = 0;

    // Returns the column titles of the usage table, without one for the label. Called until there are titles, and then
    // never again by the same controller.
    [[nodiscard]] virtual std::vector<std::string> getResourceHeader() = 0;

    // Returns one line about a resource ("2 of 3 placed"), or an empty text if there is nothing to say or no such
    // resource.
    [[nodiscard]] virtual std::string getResourceSummary(const std::string* name) = 0;

    // Returns the zel_resource_type of a resource name or of an element id in decimal.
    [[nodiscard]] virtual int getResourceType(const std::string* name) = 0;

    // Returns true if resource *rsc may be placed on element *site.
    [[nodiscard]] virtual bool canDrop(const std::string* rsc, const std::string* site) = 0;

    // Returns one sentence for users that says why resource *rsc may not be placed on element *site; empty if it may,
    // or if the engine does not say. The view does not ask; aids around it do.
    [[nodiscard]] virtual std::string refusalReason(const std::string* rsc, const std::string* site);

    // Appends to `items` the ids of the elements on which resource *rsc could be placed while the pointer rests on
    // *site. Called at most once per rest of the pointer. The returned value is ignored.
    virtual bool showProbPlaceItem(const std::string* rsc, const std::string* site, std::list<std::string>& items) = 0;

    // Opens the engine's own configuration of a resource. Returns non-zero if something changed; the views are then
    // refreshed.
    virtual int config(const std::string* name) = 0;

    // Returns whether a double click on the element opens a settings dialog.
    [[nodiscard]] virtual bool hasDynamicDialog(const std::string* id) = 0;

    // Returns the offered values by setting key, the current value first, or null if the element has none. `type` is 1
    // (DCU settings).
    [[nodiscard]] virtual const std::map<std::string, std::vector<std::string>>* getDynamicDialogValues(
        const std::string* id, unsigned int type)
        = 0;

    // Stores one changed value. Returns non-zero for success, which the component ignores.
    virtual int setDynamicDialogValue(
        const std::string* id, unsigned int type, const std::string* key, const std::string* value)
        = 0;

    // Called before the views reload: the engine must bring its data up to date. `kind` is 0 (tree), 1 (drawing), 2
    // (table) or 3 (all); other values of the host are passed through.
    virtual void refresh(int kind) = 0;
};
