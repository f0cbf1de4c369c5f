#pragma once
// The words of a line of the quick entry, as a farmer writes them: quotes, blanks within a day, days with and without a
// date.
#include <QDate>
#include <QStringList>
#include <optional>
#include <vector>

namespace koben {

struct Schnellwort {
    QString text;
    bool quoted = false;  ///< a text, whatever it looks like
};

/// Words by blanks, tabs and semicolons; quotes hold blanks together, also behind a "=". A comma or colon at the end of
/// a word goes, a day in pieces ("16. 7. 2026") and a name with its value ("kosten = 3") are one word, dashes and
/// apostrophes are the plain ones.
std::vector<Schnellwort> Schnellworte(const QString& line);

/// Of the grammar's data, which stand side by side with blanks between.
QStringList listed(const char* words);

bool sameWord(QStringView a, QStringView b);
bool isDigits(QStringView text);
/// A number or what was meant for one: "12,50", "1/2", "31.4."
bool looksNumeric(const QString& word);

/// The day of a word that can be nothing else: heute, gestern, Montag, 16.7., 2026-07-16; invalid for others. A day of
/// the week is the latest one. `heute` as dd.mm.yyyy.
QDate plainDay(const QString& word, const QString& heute);
/// The same, and short days of the week, and bare numbers as the date fields have them: what "am" says of a word.
QDate dayOf(const QString& word, const QString& heute);
QDate dayOfDigits(const QString& digits, const QString& heute);

}  // namespace koben
