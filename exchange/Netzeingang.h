#pragma once
// The door of the offer in the house's network: connections wait here, in one thread for all, until they have shown the
// code in the address of their request. Who does not know it learns nothing, meets no other part of the program, and
// holds up nobody: neither by silence, nor by many connections, nor by trying codes.
#include <chrono>
#include <condition_variable>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "exchange/Sockets.h"

namespace koben {

class Netzeingang {
public:
    static constexpr std::size_t MostHead = 8U << 10U;  ///< bytes of a request before its body

    /// `pass` gets the connections that know the code, each with what it has sent so far, its whole head at least. It
    /// comes from the door's thread, keeps nobody waiting, and owns the connection from then on.
    using Pass = std::function<void(net::Socket, std::string begun)>;
    Netzeingang(std::string code, Pass pass);
    ~Netzeingang() { stop(); }
    Netzeingang(const Netzeingang&) = delete;
    Netzeingang& operator=(const Netzeingang&) = delete;

    /// A new connection, which is the door's now. One from outside the house is closed at once.
    void admit(net::Socket socket);
    /// Closes a connection that has its answer, so that the answer still arrives when more came than was read.
    void dismiss(net::Socket socket);
    /// Answers one that had been passed on as if nothing were here.
    void turnAway(net::Socket socket);
    /// Closes all that wait. Nothing is passed on afterwards.
    void stop();

private:
    using Clock = std::chrono::steady_clock;
    enum class State { Reading, Punished, Leaving, Gone };
    struct Visitor {
        net::Socket socket;
        net::Address from;
        State state;
        Clock::time_point until;  ///< the end of its patience, or of its punishment
        std::string head = {};
    };
    struct Record {
        int misses = 0;
        Clock::time_point latest = {};
    };

    void put(net::Socket socket, net::Address from, State state, Clock::duration time);
    void run();
    bool gather(std::vector<Visitor>& all);
    void step(Visitor& visitor, bool ready);
    void read(Visitor& visitor);
    void judge(Visitor& visitor);
    void refuse(Visitor& visitor);
    void drain(Visitor& visitor);
    static void leave(Visitor& visitor);
    static void thinOut(std::vector<Visitor>& all);
    Clock::duration punishment(net::Address from);

    const std::string m_code;
    const Pass m_pass;
    std::mutex m_mutex;
    std::condition_variable m_come;
    std::vector<Visitor> m_new;
    bool m_stopped = false;
    std::map<net::Address, Record> m_records;  // the thread's own
    std::thread m_thread;
};

}  // namespace koben
