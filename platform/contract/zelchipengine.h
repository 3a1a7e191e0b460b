// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <list>
#include <map>
#include <string>
#include <vector>

class zelchipdata;
struct zeltreeviewcell;

// What getResourceType() answers.
enum zel_resource_type {
    ZEL_RESOURCE_UNKNOWN = -1,
    ZEL_RESOURCE_IP = 0,
    ZEL_RESOURCE_DCUCHANNEL = 1,
    ZEL_RESOURCE_EXTREF = 2,
    ZEL_RESOURCE_PLL = 3,
    ZEL_RESOURCE_UVCCIO = 4,
    ZEL_RESOURCE_ZEL = 5, // the design itself
};

// Everything the chip view knows of device and design it asks this object, which the host implements and owns; it must
// outlive the window. All calls come on the GUI thread, are synchronous and must not throw.
//
// Texts are 8-bit (ISO 8859-1) and cross by pointer; no argument pointer is null and none may be kept. A resource name
// is the slash-separated path of its tree row, beginning with the root's name ("top/ip1/ch0"). Element ids travel as
// decimal text. Pointers and references that are handed out stay the engine's and must stay valid until the next call
// that changes the engine (setDynamicDialogValue(), config(), refresh(), or a command that the host ran).
class ZELPLATFORM_EXPORT zelchipengine
{
public:
    zelchipengine();
    virtual ~zelchipengine();
    zelchipengine(const zelchipengine&) = delete;
    zelchipengine& operator=(const zelchipengine&) = delete;

    // The device data; null when no device is open.
    [[nodiscard]] virtual zelchipdata* chip() = 0;

    // The root cell of the resource tree; its name is the first component of every resource name, its children are the
    // top-level rows. Null when no design is open.
    [[nodiscard]] virtual zeltreeviewcell* tree() = 0;

    // The titles of the tree's columns, by column number. Asked once per controller.
    [[nodiscard]] virtual const std::map<int, std::string>& headers() = 0;

    // The rows of the usage table: the row's label, then its cells.
    [[nodiscard]] virtual std::vector<std::vector<std::string>> getResources() = 0;

    // The column titles of the usage table, without the label's. Asked once per controller.
    [[nodiscard]] virtual std::vector<std::string> getResourceHeader() = 0;

    // One line about a resource ("2 of 3 placed"); empty when there is nothing to say or no such resource.
    [[nodiscard]] virtual std::string getResourceSummary(const std::string* name) = 0;

    // A zel_resource_type, for a resource name or for an element id in decimal.
    [[nodiscard]] virtual int getResourceType(const std::string* name) = 0;

    // True when resource *rsc may be placed on element *site.
    [[nodiscard]] virtual bool canDrop(const std::string* rsc, const std::string* site) = 0;

    // Appends to `items` the ids of the elements on which resource *rsc could go while the pointer rests on *site.
    // Called at most once per rest of the pointer; the result is not used.
    virtual bool showProbPlaceItem(const std::string* rsc, const std::string* site, std::list<std::string>& items) = 0;

    // Opens the engine's own configuration of a resource. Non-zero when something changed; the views are then
    // refreshed.
    virtual int config(const std::string* name) = 0;

    // Whether a double click on the element opens a settings dialog.
    [[nodiscard]] virtual bool hasDynamicDialog(const std::string* id) = 0;

    // The values offered per setting key, the one in force first; null when the element has none. `type` is 1 (DCU
    // settings).
    [[nodiscard]] virtual const std::map<std::string, std::vector<std::string>>* getDynamicDialogValues(
        const std::string* id, unsigned int type)
        = 0;

    // Stores one changed value. Non-zero for success; the component does not look at it.
    virtual int setDynamicDialogValue(
        const std::string* id, unsigned int type, const std::string* key, const std::string* value)
        = 0;

    // The views are about to reload: bring the data up to date. `kind` is 0 tree, 1 drawing, 2 table, 3 all; other
    // values are passed through from the host.
    virtual void refresh(int kind) = 0;
};
