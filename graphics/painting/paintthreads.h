// SPDX-License-Identifier: MIT
#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace mirn::zelchipview {

// Threads that help with some work while this object exists. What one thread writes before or during run(), all others
// see after it.
class PaintThreads final
{
public:
    // There may be fewer, or none, if the system has no more.
    explicit PaintThreads(int helpers);
    ~PaintThreads();
    PaintThreads(const PaintThreads&) = delete;
    PaintThreads& operator=(const PaintThreads&) = delete;

    // Calls `work` with each number from 0 to `count` - 1, some of them in the calling thread, and returns when all
    // calls have. They must not throw.
    void run(int count, const std::function<void(int)>& work);

private:
    void help();
    void workOff(std::unique_lock<std::mutex>& lock);

    std::vector<std::thread> m_helpers;
    std::mutex m_mutex; // of all that follows
    std::condition_variable m_begun;
    std::condition_variable m_done;
    const std::function<void(int)>* m_work = nullptr;
    int m_next = 0; // number to call it with
    int m_count = 0;
    int m_running = 0; // calls
    bool m_isOver = false;
};

} // namespace mirn::zelchipview
