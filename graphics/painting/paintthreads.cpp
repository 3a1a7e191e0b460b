// SPDX-License-Identifier: MIT
#include "graphics/painting/paintthreads.h"

#include <system_error>

namespace mirn::zelchipview {

PaintThreads::PaintThreads(int helpers)
{
    try {
        for (int n = 0; n < helpers; ++n)
            m_helpers.emplace_back([this] { help(); });
    } catch (const std::system_error&) {
        // Those that there are, and the calling thread, do all of the work.
    }
}

PaintThreads::~PaintThreads()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isOver = true;
    }
    m_begun.notify_all();
    for (std::thread& helper : m_helpers)
        helper.join();
}

void PaintThreads::run(int count, const std::function<void(int)>& work)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    m_work = &work;
    m_next = 0;
    m_count = count;
    m_begun.notify_all();
    workOff(lock);
    m_done.wait(lock, [this] { return m_running == 0; });
}

void PaintThreads::help()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    while (!m_isOver) {
        workOff(lock);
        m_begun.wait(lock, [this] { return m_isOver || m_next < m_count; });
    }
}

void PaintThreads::workOff(std::unique_lock<std::mutex>& lock)
{
    while (m_next < m_count) {
        const int number = m_next++;
        ++m_running;
        lock.unlock();
        (*m_work)(number);
        lock.lock();
        --m_running;
    }
    if (m_running == 0)
        m_done.notify_all();
}

} // namespace mirn::zelchipview
