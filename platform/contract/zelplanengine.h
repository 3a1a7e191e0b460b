// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <string>
#include <vector>

// A resource on a site, or to be placed on it.
struct zelplacement
{
    std::string resource; // its name
    int site = -1; // element id
};

// Two resources of which one needs the other, or that belong together.
struct zelconnection
{
    // How they belong together.
    enum Kind {
        Feeds, // the first feeds the second
        Together, // parts of one IP or group, or what only should be near
        OneGroup, // they share a bank or another group of sites, and must agree about it
    };

    std::string from; // the one that feeds or supplies, such as a clock source
    std::string to; // the one that is fed
    int fromSite = -1; // element id; -1 if not placed
    int toSite = -1; // the same for the other
    std::string broken; // one sentence for users: what is wrong with the present places; empty if nothing is
    Kind kind = Feeds; // decides colour and words
};

// An element on which resources may be placed, or a part of the device beside them.
struct zelsite
{
    int id = -1; // element id
    std::string name; // of this site
    std::string kind; // for users, as in "PLL"
};

// What an engine may answer besides the questions of the chip view, so that the aids in planning/ can show what decides
// a placement. An engine that derives from it as well as from zelchipengine overrides what it knows; the answers here
// are empty, and an aid without an answer shows nothing. The rules for texts, ids and threads are those of
// zelchipengine.
class ZELPLATFORM_EXPORT zelplanengine
{
public:
    zelplanengine();
    virtual ~zelplanengine();
    zelplanengine(const zelplanengine&) = delete;
    zelplanengine& operator=(const zelplanengine&) = delete;

    // Returns all connections of the design, each once. Where each of many resources is connected to each other, a
    // chain of them is enough.
    [[nodiscard]] virtual std::vector<zelconnection> connections();

    // Returns the connections of one resource to each other, also those to members of an IP or a bank that
    // connections() may leave out. The answer here are those of connections().
    [[nodiscard]] virtual std::vector<zelconnection> connectionsOf(const std::string* rsc);

    // Returns the ids of the elements on which a resource may be placed now.
    [[nodiscard]] virtual std::vector<int> sitesFor(const std::string* rsc);

    // Returns all sites of the device, in the order of its own documents.
    [[nodiscard]] virtual std::vector<zelsite> sites();

    // Returns the ids of the elements that are made for resources such as this one, whether it may be placed there now
    // or not.
    [[nodiscard]] virtual std::vector<int> sitesOfKind(const std::string* rsc);

    // Returns one sentence for users that says why a resource cannot be placed on any element now, whichever it is: it
    // only groups others, or is fixed where it is. Empty otherwise, even if all elements refuse it for reasons of their
    // own.
    [[nodiscard]] virtual std::string refusalToPlace(const std::string* rsc);

    // Returns all placements that the placing of a resource on an element would cause: one, or those of the parts of an
    // IP or a group; none if it may not be placed there.
    [[nodiscard]] virtual std::vector<zelplacement> placementsOf(const std::string* rsc, const std::string* site);

    // Returns whether two placed resources may exchange their sites. If not, *reason becomes one sentence for users
    // that says why, or stays empty if the engine does not know.
    [[nodiscard]] virtual bool maySwap(const std::string* rsc, const std::string* other, std::string* reason);

    // Returns the name of the resource on an element; empty if there is none.
    [[nodiscard]] virtual std::string occupant(const std::string* site);

    // Returns the id of the element on which a resource is placed; -1 if it is not.
    [[nodiscard]] virtual int siteOf(const std::string* rsc);

    // Returns the resources by whose sites a resource is placed: itself, or the parts of an IP or a group without those
    // that are placed apart from it, such as its clocks; none for what cannot be placed. The answer here is the
    // resource itself.
    [[nodiscard]] virtual std::vector<std::string> partsOf(const std::string* rsc);

    // Returns lines for users about a resource: its name and kind, what it is connected to, what is wrong with it.
    // Empty if there is no such resource.
    [[nodiscard]] virtual std::string describe(const std::string* rsc);
};
