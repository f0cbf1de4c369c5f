#include "exchange/Sockets.h"

#include <algorithm>

namespace koben::net {

namespace {

constexpr Address of(unsigned a, unsigned b) { return a << 24U | b << 16U; }

bool within(Address address, Address network, int bits) { return (address ^ network) >> (32 - bits) == 0; }

/// Cards of the cables and waves of a house before those that programs make up.
int rank(const Place& place) {
    static const char* const madeUp[] = {"docker", "veth",   "virbr",      "br-", "vEthernet",
                                         "vmnet",  "VMware", "VirtualBox", "tun", "tap"};
    const auto is = [&](const char* name) { return place.card.rfind(name, 0) == 0; };
    return std::any_of(std::begin(madeUp), std::end(madeUp), is) ? 2 : within(place.address, of(169, 254), 16) ? 1 : 0;
}

}  // namespace

bool isLoopback(Address address) { return within(address, of(127, 0), 8); }

bool isLocal(Address address) {
    return isLoopback(address) || within(address, of(10, 0), 8) || within(address, of(172, 16), 12) ||
           within(address, of(192, 168), 16) || within(address, of(169, 254), 16);
}

std::string textOf(Address address) {
    std::string text;
    for (int shift = 24; shift >= 0; shift -= 8)
        text += std::to_string(address >> static_cast<unsigned>(shift) & 0xffU) + (shift > 0 ? "." : "");
    return text;
}

std::vector<Place> ownPlaces() {
    std::vector<Place> places = readPlaces();
    std::erase_if(places, [](const Place& place) { return !isLocal(place.address) || isLoopback(place.address); });
    const Address out = wayOut();
    const auto order = [out](const Place& place) { return place.address == out ? -1 : rank(place); };
    std::stable_sort(places.begin(), places.end(), [&](const Place& a, const Place& b) { return order(a) < order(b); });
    return places;
}

}  // namespace koben::net
