// SPDX-License-Identifier: MIT
#include "host/window/searchthread.h"

#include <utility>

namespace mirn::zelchip {

SearchThread::SearchThread(
    std::unique_ptr<const zelengine::PlacementSearch> search, std::vector<int> resources, QObject* parent)
    : QThread(parent)
    , m_search(std::move(search))
    , m_resources(std::move(resources))
{ }

SearchThread::~SearchThread()
{
    cancel();
    wait();
}

void SearchThread::run()
{
    zelengine::PlacementSearch::Limits limits;
    limits.isCancelled = [this] { return m_isCancelled.load(); };
    limits.progress = [this](int placed, int) { m_placed = placed; };
    m_answer = m_search->run(m_resources, limits);
}

} // namespace mirn::zelchip
