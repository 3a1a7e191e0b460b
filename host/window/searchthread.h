// SPDX-License-Identifier: MIT
#pragma once

#include "engine/search/placementsearch.h"

#include <QThread>

#include <atomic>
#include <memory>
#include <vector>

namespace mirn::zelchip {

// Searches for places in a thread of its own. Its end cancels the search.
class SearchThread final : public QThread
{
    Q_OBJECT
public:
    // Call start(); finished() says when there is an answer.
    SearchThread(std::unique_ptr<const zelengine::PlacementSearch> search, std::vector<int> resources, QObject* parent);
    ~SearchThread() override;

    void cancel() { m_isCancelled = true; }
    [[nodiscard]] int wanted() const { return static_cast<int>(m_resources.size()); }
    // How many of them have a place at present; it goes up and down.
    [[nodiscard]] int placed() const { return m_placed; }
    // Only after the thread has finished.
    [[nodiscard]] const zelengine::PlacementAnswer& answer() const { return m_answer; }

protected:
    void run() override;

private:
    const std::unique_ptr<const zelengine::PlacementSearch> m_search;
    const std::vector<int> m_resources;
    zelengine::PlacementAnswer m_answer;
    std::atomic<bool> m_isCancelled{false};
    std::atomic<int> m_placed{0};
};

} // namespace mirn::zelchip
