#pragma once
// The texts of the old engine as UTF-8.
#include <string>
#include <string_view>

namespace koben::oldfile {

/// Code page 1252; its five bytes without a sign become control characters, as on the machines of its time.
std::string fromCodePage(std::string_view bytes);
/// Two bytes a character, or "compressed": FF FE, then one byte a character, where 0 changes between one and two.
std::string fromUcs2(std::string_view bytes);
/// The same text for a comparison that takes no account of case, umlauts included.
std::string folded(std::string_view utf8);

}  // namespace koben::oldfile
