#pragma once
// What the systems do differently with connections of the house's own network: bodies in Sockets_posix.cpp and
// Sockets_windows.cpp, and in Sockets.cpp what is the same for both. IPv4 alone, addresses with their first byte
// highest.
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace koben::net {

using Socket = std::intptr_t;
using Address = std::uint32_t;  ///< 0 for none

/// Of this machine, of a private network or a link without a router (10/8, 172.16/12, 192.168/16, 169.254/16), or this
/// machine itself (127/8).
bool isLocal(Address address);
bool isLoopback(Address address);
std::string textOf(Address address);

/// Where others in the house reach this machine.
struct Place {
    Address address = 0;
    std::string card;  ///< the system's name of it, in UTF-8
    bool radio = false;
};
/// Local addresses of the cards that are up, the one that leads out of the house first; loopback is not among them.
std::vector<Place> ownPlaces();
/// The system's list of them, in its order, loopback among them.
std::vector<Place> readPlaces();
/// The own end of the way out of the house, for which nothing is sent; 0 where there is none.
Address wayOut();

/// To be called before a port is bound: nobody else answers on it then.
void holdPortAlone(Socket socket);
/// So many callers may wait until they are answered, where the system lets that be changed.
void widenQueue(Socket listening, int callers);
/// Of a connection: calls return at once, and no program that is started inherits it.
void prepare(Socket socket);

struct Ends {
    Address here = 0, there = 0;
};
Ends endsOf(Socket socket);

// Bytes, or one of these.
constexpr long Ended = 0, NothingNow = -1, Broken = -2;
long receive(Socket socket, char* to, std::size_t size);
long send(Socket socket, const char* from, std::size_t size);
/// Waits so long until one of them has something to read or has ended; which of them.
std::vector<bool> readable(const std::vector<Socket>& sockets, int milliseconds);
bool writable(Socket socket, int milliseconds);
void endSending(Socket socket);
void close(Socket socket);

/// A library may have changed how the process takes a connection that breaks off; puts that back when it goes.
class KeptSignals {
public:
    KeptSignals();
    ~KeptSignals();
    KeptSignals(const KeptSignals&) = delete;
    KeptSignals& operator=(const KeptSignals&) = delete;

private:
    void (*m_pipe)(int) = nullptr;
};

}  // namespace koben::net
