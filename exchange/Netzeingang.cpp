#include "exchange/Netzeingang.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace koben {
namespace {

using namespace std::chrono_literals;

constexpr auto Beat = 20ms;     // between two looks at who waits
constexpr auto HeadTime = 8s;   // for the head of a request, however slowly its bytes come
constexpr auto LeaveTime = 1s;  // for the last bytes of one that has its answer
constexpr std::size_t MostVisitors = 256;
constexpr std::size_t MostRecords = 1024;
constexpr int FreeMisses = 5;  // old pages and typing errors cost nothing
constexpr auto FirstPunishment = 250ms, LongestPunishment = 2000ms;
constexpr auto Forgotten = 60s;  // without another wrong code
constexpr int MostReads = 64;    // of one visitor at one look

constexpr std::string_view Refusal =
    "HTTP/1.1 404 Not Found\r\nContent-Length: 0\r\nCache-Control: no-store\r\nConnection: close\r\n\r\n";

/// The first step of the path in a request's first line; empty where that is none.
std::string_view codeIn(std::string_view head) {
    const std::size_t blank = head.find(' ');
    if (blank == std::string_view::npos || head.substr(blank + 1, 1) != "/") return {};
    const std::string_view path = head.substr(blank + 2);
    return path.substr(0, path.find_first_of("/? \r\n"));
}

/// In the same time whatever differs, so that nobody finds the code sign by sign.
bool same(std::string_view given, std::string_view code) {
    unsigned differs = given.size() == code.size() ? 0 : 1;
    for (std::size_t i = 0; i < code.size(); ++i)
        differs |= static_cast<unsigned char>(code[i] ^ (i < given.size() ? given[i] : '\0'));
    return differs == 0;
}

}  // namespace

Netzeingang::Netzeingang(std::string code, Pass pass) : m_code(std::move(code)), m_pass(std::move(pass)) {
    m_thread = std::thread([this] { run(); });
}

void Netzeingang::admit(net::Socket socket) {
    const net::Ends ends = net::endsOf(socket);
    if (!net::isLocal(ends.there) || !net::isLocal(ends.here)) return net::close(socket);
    net::prepare(socket);
    put(socket, ends.there, State::Reading, HeadTime);
}

void Netzeingang::dismiss(net::Socket socket) {
    net::endSending(socket);
    put(socket, 0, State::Leaving, LeaveTime);
}

void Netzeingang::turnAway(net::Socket socket) {
    net::send(socket, Refusal.data(), Refusal.size());
    dismiss(socket);
}

void Netzeingang::stop() {
    {
        const std::lock_guard lock(m_mutex);
        m_stopped = true;
    }
    m_come.notify_all();
    if (m_thread.joinable()) m_thread.join();
}

void Netzeingang::put(net::Socket socket, net::Address from, State state, Clock::duration time) {
    {
        const std::lock_guard lock(m_mutex);
        if (!m_stopped) {
            m_new.push_back({socket, from, state, Clock::now() + time});
            socket = -1;
        }
    }
    if (socket != -1) return net::close(socket);
    m_come.notify_all();
}

void Netzeingang::run() {
    std::vector<Visitor> all;
    while (gather(all)) {
        std::vector<net::Socket> listened;
        for (const Visitor& visitor : all)
            if (visitor.state != State::Punished) listened.push_back(visitor.socket);
        if (listened.empty()) std::this_thread::sleep_for(Beat);
        const std::vector<bool> ready =
            listened.empty() ? std::vector<bool>() : net::readable(listened, static_cast<int>(Beat.count()));
        std::size_t at = 0;
        for (Visitor& visitor : all) step(visitor, visitor.state != State::Punished && ready[at++]);
        std::erase_if(all, [](const Visitor& visitor) { return visitor.state == State::Gone; });
    }
    for (const Visitor& visitor : all) net::close(visitor.socket);
}

/// Takes in who has come, and sleeps while nobody is there. False at the end.
bool Netzeingang::gather(std::vector<Visitor>& all) {
    std::unique_lock lock(m_mutex);
    if (all.empty()) m_come.wait(lock, [this] { return m_stopped || !m_new.empty(); });
    std::move(m_new.begin(), m_new.end(), std::back_inserter(all));
    m_new.clear();
    const bool goesOn = !m_stopped;
    lock.unlock();
    thinOut(all);
    return goesOn;
}

/// Where there are too many, whoever has the most connections loses the oldest of them.
void Netzeingang::thinOut(std::vector<Visitor>& all) {
    while (all.size() > MostVisitors) {
        std::map<net::Address, std::size_t> counts;
        for (const Visitor& visitor : all) ++counts[visitor.from];
        const auto most = std::max_element(counts.begin(), counts.end(),
                                           [](const auto& a, const auto& b) { return a.second < b.second; });
        const auto oldest =
            std::find_if(all.begin(), all.end(), [&](const Visitor& visitor) { return visitor.from == most->first; });
        net::close(oldest->socket);
        all.erase(oldest);
    }
}

void Netzeingang::step(Visitor& visitor, bool ready) {
    if (ready && visitor.state == State::Reading) read(visitor);
    if (ready && visitor.state == State::Leaving) drain(visitor);
    if (visitor.state == State::Gone || Clock::now() < visitor.until) return;
    if (visitor.state == State::Punished) return refuse(visitor);
    net::close(visitor.socket);
    visitor.state = State::Gone;
}

void Netzeingang::read(Visitor& visitor) {
    std::array<char, 4096> buffer;
    while (visitor.head.size() < MostHead) {
        const long come = net::receive(visitor.socket, buffer.data(), buffer.size());
        if (come == net::NothingNow) break;
        if (come <= 0) {
            net::close(visitor.socket);
            visitor.state = State::Gone;
            return;
        }
        visitor.head.append(buffer.data(), static_cast<std::size_t>(come));
        if (visitor.head.find("\r\n\r\n") != std::string::npos) break;
    }
    judge(visitor);
}

/// By the first line, as soon as it is there; who knows the code goes on once the head is whole.
void Netzeingang::judge(Visitor& visitor) {
    if (visitor.head.empty()) return;
    if (visitor.head[0] < 'A' || visitor.head[0] > 'Z') return refuse(visitor);  // a browser tries encryption first
    const bool full = visitor.head.size() >= MostHead;
    if (!full && visitor.head.find('\n') == std::string::npos) return;
    if (!same(codeIn(visitor.head), m_code)) {
        visitor.state = State::Punished;
        visitor.until = Clock::now() + punishment(visitor.from);
        visitor.head = {};
    } else if (visitor.head.find("\r\n\r\n") != std::string::npos) {
        visitor.state = State::Gone;
        m_pass(visitor.socket, std::move(visitor.head));
    } else if (full) {
        refuse(visitor);
    }
}

/// How long a wrong code waits for its answer. The right one never waits: nobody locks out another by guessing.
Netzeingang::Clock::duration Netzeingang::punishment(net::Address from) {
    if (m_records.size() >= MostRecords) m_records.clear();
    Record& record = m_records[from];
    const auto now = Clock::now();
    if (now - record.latest > Forgotten) record.misses = 0;
    record.latest = now;
    const int beyond = ++record.misses - FreeMisses;
    if (beyond <= 0) return 0ms;
    return std::min<Clock::duration>(FirstPunishment * (1 << std::min(beyond - 1, 8)), LongestPunishment);
}

void Netzeingang::refuse(Visitor& visitor) {
    net::send(visitor.socket, Refusal.data(), Refusal.size());
    leave(visitor);
}

void Netzeingang::leave(Visitor& visitor) {
    net::endSending(visitor.socket);
    visitor.state = State::Leaving;
    visitor.until = Clock::now() + LeaveTime;
}

/// What comes now nobody wants; closing before it is read would take the answer away from the one who still sends.
void Netzeingang::drain(Visitor& visitor) {
    std::array<char, 16384> nothing;
    long come = 1;
    for (int i = 0; come > 0 && i < MostReads; ++i) come = net::receive(visitor.socket, nothing.data(), nothing.size());
    if (come > 0 || come == net::NothingNow) return;
    net::close(visitor.socket);
    visitor.state = State::Gone;
}

}  // namespace koben
