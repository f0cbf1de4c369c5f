#include "store/jet/JetText.h"

#include <cstdint>

namespace koben::oldfile {

namespace {

// What the bytes from 80 to 9F are.
constexpr uint16_t upper[32] = {0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
                                0x2039, 0x0152, 0x8D,   0x017D, 0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
                                0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

void append(std::string& text, uint32_t c) {
    const auto tail = [&](int shift) { text += static_cast<char>(0x80 | ((c >> shift) & 0x3F)); };
    if (c < 0x80) {
        text += static_cast<char>(c == 0 ? ' ' : c);
    } else if (c < 0x800) {
        text += static_cast<char>(0xC0 | c >> 6), tail(0);
    } else if (c < 0x10000) {
        text += static_cast<char>(0xE0 | c >> 12), tail(6), tail(0);
    } else {
        text += static_cast<char>(0xF0 | c >> 18), tail(12), tail(6), tail(0);
    }
}

class Pairs {
public:
    void add(uint32_t unit) {
        const bool low = unit >= 0xDC00 && unit < 0xE000;
        if (m_high != 0) append(m_text, low ? 0x10000 + ((m_high - 0xD800) << 10) + (unit - 0xDC00) : 0xFFFD);
        const bool joined = m_high != 0 && low;
        m_high = unit >= 0xD800 && unit < 0xDC00 ? unit : 0;
        if (m_high == 0 && !joined) append(m_text, low ? 0xFFFD : unit);
    }
    std::string finish() {
        if (m_high != 0) append(m_text, 0xFFFD);
        return std::move(m_text);
    }

private:
    std::string m_text;
    uint32_t m_high = 0;
};

uint32_t byteAt(std::string_view bytes, size_t at) { return static_cast<uint8_t>(bytes[at]); }

}  // namespace

std::string fromCodePage(std::string_view bytes) {
    std::string text;
    for (size_t i = 0; i < bytes.size(); ++i) {
        const uint32_t c = byteAt(bytes, i);
        append(text, c >= 0x80 && c < 0xA0 ? upper[c - 0x80] : c);
    }
    return text;
}

std::string fromUcs2(std::string_view bytes) {
    Pairs text;
    const bool mixed = bytes.size() >= 2 && byteAt(bytes, 0) == 0xFF && byteAt(bytes, 1) == 0xFE;
    bool single = mixed;
    for (size_t i = mixed ? 2 : 0; i < bytes.size();) {
        if (mixed && byteAt(bytes, i) == 0) {
            single = !single;
            ++i;
        } else if (single) {
            text.add(byteAt(bytes, i++));
        } else if (i + 1 < bytes.size()) {
            text.add(byteAt(bytes, i) | byteAt(bytes, i + 1) << 8);
            i += 2;
        } else {
            break;
        }
    }
    return text.finish();
}

std::string folded(std::string_view utf8) {
    std::string text(utf8);
    for (size_t i = 0; i < text.size(); ++i) {
        const uint32_t c = byteAt(text, i);
        const bool letter = c >= 'A' && c <= 'Z';
        const bool umlaut = i > 0 && byteAt(text, i - 1) == 0xC3 && c >= 0x80 && c <= 0x9E && c != 0x97;
        if (letter || umlaut) text[i] = static_cast<char>(c + 0x20);
    }
    return text;
}

}  // namespace koben::oldfile
