// SPDX-License-Identifier: MIT
#include "platform/contract/zelprogress.h"

namespace {

zelprogress*& currentProgress()
{
    static zelprogress* progress = nullptr;
    return progress;
}

} // namespace

zelprogress::zelprogress() = default;

zelprogress::~zelprogress()
{
    if (currentProgress() == this)
        currentProgress() = nullptr;
}

zelprogress* zelprogress::current()
{
    return currentProgress();
}

void zelprogress::setCurrent(zelprogress* progress)
{
    currentProgress() = progress;
}

bool zelprogress::step(Work work, double share)
{
    zelprogress* progress = current();
    if (!progress)
        return true;
    progress->m_isCancelled = progress->m_isCancelled || !progress->goesOn(work, share);
    return !progress->m_isCancelled;
}
