// The quick entry at the foot of the herd list, and what a scanner has read.
#include <QSet>

#include "core/Konfig.h"
#include "forms/Schnellbuchung.h"
#include "herd/PA_Koben.h"

namespace koben {

Schnellzeile PA_Koben::Schnellzeile_deuten() const {
    return Schnellzeile_lesen(schnell.text(), Schnelltiere(datali), koben.Heute);
}

/// Refused or not understood, the line stays where it is, with the reason.
void PA_Koben::schnell_Enter() {
    const Schnellzeile line = Schnellzeile_deuten();
    schnellsatz.setText(line.sentence());
    if (!line.ready() || koben.nurAnsehen_melden()) return schnell.setFocus();
    if (!koben.notWritable.isEmpty()) return koben.message(koben.notWritable);
    std::vector<qint64> marked;
    if (datali.markedCount() > 1)
        for (const int row : datali.markedRows()) marked.push_back(datali.value(row, u"ID").toInt());
    const Schnellergebnis result = Schnell_buchen(koben, line);
    settle();
    Tiere_zeigen(marked, line.animals.front().id);
    if (result.booked) schnell.setText({});
    schnellsatz.setText(result.booked ? QStringLiteral("Gebucht: %1.").arg(koben.lastAction)
                                      : QStringLiteral("Nicht gebucht. ") + result.reason);
    schnell.setFocus();
}

void PA_Koben::Tiere_zeigen(const std::vector<qint64>& marked, qint64 current) {
    const QSet<qint64> wanted(marked.begin(), marked.end());
    const int id = datali.columnOf(u"ID");
    std::vector<int> rows;
    int found = 0;
    for (int row = 1; row <= datali.rowCount(); ++row) {
        const qint64 animal = datali.integer(row, id);
        if (animal == current) found = row;
        if (wanted.contains(animal)) rows.push_back(row);
    }
    if (found > 0) datali.setRow(found);
    if (rows.size() > 1) datali.mark(rows);
    Menue_Zustand_setzen();
}

namespace {

/// Ear tags and transponders are written with blanks and points here and there.
QString bare(const QString& code) {
    QString kept;
    for (const QChar c : code)
        if (c.isLetterOrNumber()) kept += c.toUpper();
    return kept;
}

/// A transponder stands as a word in the animal's notes; shorter words are no such numbers.
constexpr int LeastTransponder = 10;

bool notesHave(const QString& notes, const QString& code) {
    if (code.size() < LeastTransponder || !notes.contains(code.back(), Qt::CaseInsensitive)) return false;
    for (const QString& line : notes.split(u'\n'))
        if (bare(line).contains(code)) return true;
    return false;
}

}  // namespace

/// The row of a number, else of an ear tag or tattoo, else of a transponder in the notes; 0 for none.
int PA_Koben::Kennzeichen_suchen(const QString& scanned) const {
    if (const int row = datali.findText(u"Nummer", scanned.trimmed())) return row;
    const QString code = bare(scanned);
    if (code.isEmpty()) return 0;
    for (const auto* key : {u"Nummer", u"Ohrmarke", u"Tätowierung"}) {
        const int column = datali.columnOf(QString::fromUtf16(key));
        for (int row = 1; row <= datali.rowCount(); ++row)
            if (bare(datali.cell(row, column)) == code) return row;
    }
    const int notes = datali.columnOf(u"Infos");
    for (int row = 1; row <= datali.rowCount(); ++row)
        if (notesHave(datali.cell(row, notes), code)) return row;
    return 0;
}

bool PA_Koben::Scan(const QString& scanned) {
    const int row = Kennzeichen_suchen(scanned);
    if (koben.Konfig_Zahl[Zahl::TonAus] == 0) row > 0 ? koben.screens.tone(2000, 60) : koben.screens.tone(400, 300);
    schnellsatz.setText(row > 0 ? QString()
                                : QStringLiteral("Gelesen: „%1“. So heißt in der Liste keine Nummer, keine Ohrmarke "
                                                 "und kein Transponder.")
                                      .arg(scanned.trimmed()));
    if (row == 0) return false;
    act([&] {
        datali.setRow(row);
        Menue_Zustand_setzen();
        koben.open(QStringLiteral("PE_Bewegungsdaten"));
    });
    return true;
}

}  // namespace koben
