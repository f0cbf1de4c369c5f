#include <winsock2.h>
// the order counts
#include <iphlpapi.h>
#include <ws2tcpip.h>

#include "exchange/Sockets.h"

namespace koben::net {

namespace {

SOCKET handle(Socket socket) { return static_cast<SOCKET>(socket); }

template <class Call>
Address ask(SOCKET socket, Call call) {
    sockaddr_storage found{};
    int size = sizeof found;
    if (call(socket, reinterpret_cast<sockaddr*>(&found), &size) != 0 || found.ss_family != AF_INET) return 0;
    return ntohl(reinterpret_cast<const sockaddr_in*>(&found)->sin_addr.s_addr);
}

long outcome(int bytes) {
    if (bytes >= 0) return bytes;
    return WSAGetLastError() == WSAEWOULDBLOCK ? NothingNow : Broken;
}

std::string utf8(const wchar_t* text) {
    const int size = WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
    std::string bytes(size > 0 ? static_cast<std::size_t>(size) : 1U, '\0');
    WideCharToMultiByte(CP_UTF8, 0, text, -1, bytes.data(), size, nullptr, nullptr);
    bytes.pop_back();
    return bytes;
}

/// The system's wait for one direction of many connections.
bool wait(std::vector<WSAPOLLFD>& asked, int milliseconds) {
    if (!asked.empty()) return WSAPoll(asked.data(), static_cast<ULONG>(asked.size()), milliseconds) > 0;
    Sleep(static_cast<DWORD>(milliseconds));
    return false;
}

}  // namespace

std::vector<Place> readPlaces() {
    constexpr ULONG without = GAA_FLAG_SKIP_ANYCAST | GAA_FLAG_SKIP_MULTICAST | GAA_FLAG_SKIP_DNS_SERVER;
    std::vector<Place> places;
    std::vector<char> room(32 * 1024);
    const auto list = [&] { return reinterpret_cast<IP_ADAPTER_ADDRESSES*>(room.data()); };
    auto size = static_cast<ULONG>(room.size());
    ULONG result = GetAdaptersAddresses(AF_INET, without, nullptr, list(), &size);
    if (result == ERROR_BUFFER_OVERFLOW) {
        room.resize(size);
        result = GetAdaptersAddresses(AF_INET, without, nullptr, list(), &size);
    }
    if (result != NO_ERROR) return places;
    for (const auto* card = list(); card; card = card->Next) {
        if (card->OperStatus != IfOperStatusUp) continue;
        for (const auto* own = card->FirstUnicastAddress; own; own = own->Next) {
            if (own->Address.lpSockaddr->sa_family != AF_INET) continue;
            const auto* address = reinterpret_cast<const sockaddr_in*>(own->Address.lpSockaddr);
            places.push_back({static_cast<Address>(ntohl(address->sin_addr.s_addr)), utf8(card->FriendlyName),
                              card->IfType == IF_TYPE_IEEE80211});
        }
    }
    return places;
}

Address wayOut() {
    const SOCKET probe = socket(AF_INET, SOCK_DGRAM, 0);
    if (probe == INVALID_SOCKET) return 0;
    sockaddr_in far_{};
    far_.sin_family = AF_INET;
    far_.sin_port = htons(9);
    far_.sin_addr.s_addr = htonl(0xc0000201U);  // 192.0.2.1, which nobody has
    const bool led = connect(probe, reinterpret_cast<const sockaddr*>(&far_), sizeof far_) == 0;
    const Address own = led ? ask(probe, getsockname) : 0;
    closesocket(probe);
    return own;
}

void holdPortAlone(Socket socket) {
    const BOOL on = TRUE;
    setsockopt(handle(socket), SOL_SOCKET, SO_EXCLUSIVEADDRUSE, reinterpret_cast<const char*>(&on), sizeof on);
}

void widenQueue(Socket, int) {}  // of a socket that listens already it cannot be changed here

void prepare(Socket socket) {
    u_long on = 1;
    ioctlsocket(handle(socket), static_cast<long>(FIONBIO), &on);
    SetHandleInformation(reinterpret_cast<HANDLE>(socket), HANDLE_FLAG_INHERIT, 0);
}

Ends endsOf(Socket socket) { return {ask(handle(socket), getsockname), ask(handle(socket), getpeername)}; }

long receive(Socket socket, char* to, std::size_t size) {
    return outcome(recv(handle(socket), to, static_cast<int>(size), 0));
}

long send(Socket socket, const char* from, std::size_t size) {
    return outcome(::send(handle(socket), from, static_cast<int>(size), 0));
}

std::vector<bool> readable(const std::vector<Socket>& sockets, int milliseconds) {
    std::vector<WSAPOLLFD> asked;
    for (const Socket socket : sockets) asked.push_back({handle(socket), POLLRDNORM, 0});
    std::vector<bool> found(sockets.size());
    if (!wait(asked, milliseconds)) return found;
    for (std::size_t i = 0; i < asked.size(); ++i) found[i] = asked[i].revents != 0;
    return found;
}

bool writable(Socket socket, int milliseconds) {
    std::vector<WSAPOLLFD> asked{{handle(socket), POLLWRNORM, 0}};
    return wait(asked, milliseconds);
}

void endSending(Socket socket) { shutdown(handle(socket), SD_SEND); }

void close(Socket socket) { closesocket(handle(socket)); }

KeptSignals::KeptSignals() = default;  // there is no such signal
KeptSignals::~KeptSignals() = default;

}  // namespace koben::net
