#pragma once
// The order of texts over raw UTF-8, as SQLite and the tables in memory hold them.
#include <QByteArray>
#include <string_view>

namespace koben {

int compareTexts(std::string_view a, std::string_view b);
QByteArray sortKey(std::string_view text);

}  // namespace koben
