// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

// How far long work has come, and whether anybody still waits for it. The host implements this and makes one current
// for as long as it likes; whoever works reports to the current one between steps and stops when it is told to, leaving
// nothing half done. Everything runs on the GUI thread: an implementation may let events be handled that keep the host
// alive, but none that reach the view or load another drawing.
class ZELPLATFORM_EXPORT zelprogress
{
public:
    // What takes long, in the order in which it is done.
    enum Work {
        READING_DRAWING, // from the file to records
        BUILDING_VIEW, // from records to items
    };

    virtual ~zelprogress(); // of the current one leaves none current
    zelprogress(const zelprogress&) = delete;
    zelprogress& operator=(const zelprogress&) = delete;

    // Null when nobody wants to know.
    [[nodiscard]] static zelprogress* current();

    // Not owned; null for none.
    static void setCurrent(zelprogress* progress);

    // To the current one, if any: this share of the work, from 0 to 1, is done. Gives false when it has been cancelled.
    static bool step(Work work, double share);

    // True from the first step on that was answered so. All later steps are told the same.
    [[nodiscard]] bool isCancelled() const { return m_isCancelled; }

protected:
    zelprogress();

    // Called for every step, thousands of times a second. False cancels the work.
    virtual bool goesOn(Work work, double share) = 0;

private:
    bool m_isCancelled = false;
};
