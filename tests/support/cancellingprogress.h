// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelprogress.h"

#include <vector>

namespace zeltest {

// The current progress while it exists. Cancels one kind of work at the first step that has come so far.
class CancellingProgress final : public zelprogress
{
public:
    explicit CancellingProgress(Work work, double share)
        : m_work(work)
        , m_share(share)
    {
        setCurrent(this);
    }

    [[nodiscard]] const std::vector<double>& shares(Work work) const { return m_shares[work]; }

private:
    bool goesOn(Work work, double share) override
    {
        m_shares[work].push_back(share);
        return work != m_work || share < m_share;
    }

    const Work m_work;
    const double m_share;
    std::vector<double> m_shares[2];
};

} // namespace zeltest
