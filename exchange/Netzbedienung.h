#pragma once
// The threads that serve connections of the house's network which have shown the code: few, made as they are needed,
// and none is held for long while others wait.
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "exchange/Sockets.h"

namespace koben {

class Netzbedienung {
public:
    /// Answers one connection in a thread of its own, and hands it on or closes it. Throws nothing.
    using Serve = std::function<void(net::Socket, std::string begun)>;
    explicit Netzbedienung(Serve serve) : m_serve(std::move(serve)) {}
    ~Netzbedienung() { stop(); }
    Netzbedienung(const Netzbedienung&) = delete;
    Netzbedienung& operator=(const Netzbedienung&) = delete;

    /// A connection that waits its turn; where too many do it is closed.
    void push(net::Socket socket, std::string begun);
    /// Returns when no thread runs any more. Connections that still wait are closed.
    void stop();

    /// Whether a connection that has been served since `begin` may go on: not at the end, not for ever, and not for
    /// long while others wait.
    bool patient(std::chrono::steady_clock::time_point begin) const;
    bool stopped() const { return m_stopped; }

private:
    struct Waiting {
        net::Socket socket;
        std::string begun;
    };
    void work();

    const Serve m_serve;
    mutable std::mutex m_mutex;
    std::condition_variable m_come;
    std::deque<Waiting> m_waiting;
    std::vector<std::thread> m_threads;
    std::size_t m_idle = 0;
    std::atomic<bool> m_stopped = false;
};

}  // namespace koben
