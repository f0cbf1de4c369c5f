#pragma once
// The spans of time that figures speak of. Days are Julian.
#include <QString>
#include <vector>

namespace koben {

/// From `von` to `bis`, both counted; empty where it ends before it begins.
struct Zeitraum {
    qint32 von = 0, bis = -1;
    bool contains(qint32 day) const { return von <= day && day <= bis; }
    int days() const { return bis < von ? 0 : bis - von + 1; }
    bool operator==(const Zeitraum&) const = default;
};

enum class Takt { Woche, Monat };

/// The week (Monday to Sunday) or the calendar month of a day.
Zeitraum um(Takt pace, qint32 day);
/// As a point of a series is called: the ISO week "2026-W53", the month "2026-12".
QString Taktname(Takt pace, qint32 day);
/// The weeks or months of a period, in order; the first and the last are cut where the period begins and ends.
std::vector<Zeitraum> aufteilen(Takt pace, Zeitraum period);

/// Twelve months that end with the last day of a month that has ended by `heute`: the latest `count` of them, each a
/// month behind the one before, oldest first.
std::vector<Zeitraum> rollende_Jahre(qint32 heute, int count);
/// The latest `count` weeks that have ended by `heute`, oldest first.
std::vector<Zeitraum> beendete_Wochen(qint32 heute, int count);

/// The day of a text "dd.mm.yyyy" such as the shared `Heute`; 0 where it is none.
qint32 Tag_aus_Text(const QString& date);
/// "dd.mm.yyyy"; "" for 0.
QString Tag_als_Text(qint32 day);
/// "01.01.2026 bis 31.12.2026"
QString Zeitraumtext(Zeitraum period);

}  // namespace koben
