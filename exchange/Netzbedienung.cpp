#include "exchange/Netzbedienung.h"

#include <system_error>

namespace koben {
namespace {

using namespace std::chrono_literals;

constexpr std::size_t MostThreads = 32, MostWaiting = 256;
constexpr auto WholeTime = 60s;  // of one request and its answer, for a telephone at the edge of its network
constexpr auto SharedTime = 4s;  // of the same while others wait

}  // namespace

void Netzbedienung::push(net::Socket socket, std::string begun) {
    const std::lock_guard lock(m_mutex);
    if (m_stopped || m_waiting.size() >= MostWaiting) return net::close(socket);
    if (m_idle <= m_waiting.size() && m_threads.size() < MostThreads) try {
            m_threads.emplace_back([this] { work(); });
        } catch (const std::system_error&) {
            if (m_threads.empty()) return net::close(socket);  // the machine has no thread left
        }
    m_waiting.push_back({socket, std::move(begun)});
    m_come.notify_one();
}

void Netzbedienung::work() {
    std::unique_lock lock(m_mutex);
    for (;;) {
        ++m_idle;
        m_come.wait(lock, [this] { return m_stopped || !m_waiting.empty(); });
        --m_idle;
        if (m_stopped) return;
        Waiting next = std::move(m_waiting.front());
        m_waiting.pop_front();
        lock.unlock();
        m_serve(next.socket, std::move(next.begun));
        lock.lock();
    }
}

void Netzbedienung::stop() {
    {
        const std::lock_guard lock(m_mutex);
        m_stopped = true;
    }
    m_come.notify_all();
    for (std::thread& thread : m_threads) thread.join();
    m_threads.clear();
    for (const Waiting& waiting : m_waiting) net::close(waiting.socket);
    m_waiting.clear();
}

bool Netzbedienung::patient(std::chrono::steady_clock::time_point begin) const {
    if (m_stopped) return false;
    const auto served = std::chrono::steady_clock::now() - begin;
    if (served < SharedTime) return true;
    const std::lock_guard lock(m_mutex);
    return m_waiting.empty() && served < WholeTime;
}

}  // namespace koben
