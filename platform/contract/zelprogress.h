// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

// Receives the progress of long work, and may cancel it. The host implements this class and makes an object current for
// as long as it likes. Working code reports to the current object between steps, and stops when it is told to, leaving
// nothing half done. Everything runs on the GUI thread: an implementation may process events that keep the host alive,
// but none that reach the view or load another drawing.
class ZELPLATFORM_EXPORT zelprogress
{
public:
    // The kinds of work, in the order in which they are done.
    enum Work {
        READING_DRAWING, // from the file to records
        BUILDING_VIEW, // from records to items
    };

    virtual ~zelprogress(); // if this object is current, none is current afterwards
    zelprogress(const zelprogress&) = delete;
    zelprogress& operator=(const zelprogress&) = delete;

    // Returns null if no object is current.
    [[nodiscard]] static zelprogress* current();

    // `progress` is not owned; null makes none current.
    static void setCurrent(zelprogress* progress);

    // Reports to the current object, if any, that this share (0 to 1) of the work is done. Returns false if the work
    // has been cancelled.
    static bool step(Work work, double share);

    // Returns true once a step was answered with false; all later steps return false, too.
    [[nodiscard]] bool isCancelled() const { return m_isCancelled; }

protected:
    zelprogress();

    // Called for every step, thousands of times a second. Returning false cancels the work.
    virtual bool goesOn(Work work, double share) = 0;

private:
    bool m_isCancelled = false;
};
