// Selection, marking, and what is done to all marked animals at once. Questions come first, then one transaction.
#include <algorithm>
#include <limits>

#include "core/Aktionsnamen.h"
#include "core/PZ_Koben_Subs.h"
#include "core/Umfang.h"
#include "herd/PA_Koben.h"

namespace koben {

namespace {

/// A count as the questions write it, with a blank before it.
QString numberText(qint64 count) { return QStringLiteral(" %1").arg(count); }

constexpr int StallWidth = 10;
constexpr int LongestNumber = 15;
constexpr qint64 MostAtOnce = 2000;  // animals, between two looks at the cancel button

}  // namespace

/// The ids of the marked rows, or of those among them that are of one kind.
std::vector<qint64> PA_Koben::markedAnimals(QStringView art) const {
    const int id = datali.columnOf(u"ID"), kind = datali.columnOf(u"Art");
    std::vector<qint64> ids;
    for (int row : datali.markedRows())
        if (art.isEmpty() || datali.cell(row, kind) == art) ids.push_back(datali.integer(row, id));
    return ids;
}

/// The marked animals for the name of an action: "3 Sauen", of several kinds "3 Tiere".
QString PA_Koben::countedMarks() const {
    const int kind = datali.columnOf(u"Art");
    const std::vector<int> rows = datali.markedRows();
    QString art = rows.empty() ? QString() : datali.cell(rows.front(), kind);
    for (int row : rows)
        if (datali.cell(row, kind) != art) art.clear();
    return countedAnimals(static_cast<qint64>(rows.size()), art);
}

/// Sets one field of these animals, within the caller's transaction. False once the user has cancelled.
bool PA_Koben::setForAll(const std::vector<qint64>& animals, const QString& field, const QString& value) {
    Progress progress(koben, QStringLiteral("Die Tiere werden geändert ..."), static_cast<qint64>(animals.size()));
    Statement update = m_db.prepare(QStringLiteral("update Sauen set %1 = ? where ID >= ? and ID <= ?").arg(field));
    qint64 done = 0;
    for (const auto& [first, last] : consecutive(animals, MostAtOnce)) {
        if (!progress.step(done)) return false;
        update.run({value, first, last});
        done += last - first + 1;
    }
    return progress.step(done);
}

void PA_Koben::Schweine_selektieren() {
    koben.open(QStringLiteral("PB_Selektieren"));
    const int column = datali.columnOf(u"Selektiert");
    qint64 selected = 0;
    for (int row = 1; row <= datali.rowCount(); ++row) selected += datali.cell(row, column) == u"X";
    if (selected > 0 && koben.yesNo(QStringLiteral("Es sind") + numberText(selected) +
                                    QStringLiteral(" Schweine selektiert. Sollen diese auch gleich markiert werden?")))
        Selektierte_markieren();
}

void PA_Koben::Selektierte_markieren() {
    const int column = datali.columnOf(u"Selektiert");
    std::vector<int> rows;
    for (int row = 1; row <= datali.rowCount(); ++row)
        if (datali.cell(row, column) == u"X") rows.push_back(row);
    if (!rows.empty()) datali.setRowKeepingMarks(rows.front());
    datali.mark(rows);
    Menue_Zustand_setzen();
    koben.message(QStringLiteral("Sie können die Schweine auch mit gedrückter STRG-Taste und der Maus markieren."));
}

void PA_Koben::Markierte_selektieren() {
    const WaitCursor wait(koben);
    const std::vector<qint64> animals = markedAnimals();
    koben::Action action(m_db, animals.empty() ? QStringLiteral("Selektion aufgehoben")
                                               : countedMarks() + QStringLiteral(" selektiert"));
    // the other rows, most of a large farm, have it already
    m_db.execute(QStringLiteral("UPDATE Sauen SET Selektiert = '' where Selektiert IS NULL or Selektiert <> ''"));
    if (!setForAll(animals, QStringLiteral("Selektiert"), QStringLiteral("X"))) return;
    action.commit();
    datenschweinelesen();
}

void PA_Koben::Stallnr_neu_zuordnen() {
    const std::vector<qint64> animals = markedAnimals();
    if (animals.empty()) return koben.message(QStringLiteral("Es sind keine Schweine markiert!"));
    if (!koben.yesNo(QStringLiteral("Sollen bei den") + numberText(static_cast<qint64>(animals.size())) +
                     QStringLiteral(" Schweinen neue Stallnummern zugeordnet werden?")))
        return;
    const QString entered =
        koben.screens.input(QStringLiteral("Welche Stallnr soll den markierten Sauen neu zugeordnet werden?"));
    const QString stall = Hochkomma_ersetzen(entered.left(StallWidth));
    if (stall.isEmpty())
        return koben.message(QStringLiteral("Es wurde keine Stall-Nr eingegeben. Die Aktion wird nicht ausgeführt."));
    const WaitCursor wait(koben);
    koben::Action action(m_db, QStringLiteral("Stallnr %1 für ").arg(stall) + countedMarks());
    if (!setForAll(animals, QStringLiteral("Stallnr"), stall)) return;
    action.commit();
    datenschweinelesen();
}

void PA_Koben::Ferkel_in_Mast() {
    const int marked = datali.markedCount();
    if (marked == 0) return koben.message(QStringLiteral("Es sind keine Schweine markiert!"));
    if (!koben.yesNo(QStringLiteral("Sollen die") + numberText(marked) +
                     QStringLiteral(" Ferkel neu als Masttiere verwaltet werden?")))
        return;
    const std::vector<qint64> piglets = markedAnimals(u"Ferkel");
    const bool book =
        !piglets.empty() &&
        koben.yesNo(QStringLiteral("Soll jetzt eine automatische Verkaufsbuchung mit dem Kunden 'Eigenbetrieb' und "
                                   "Kommentar 'In Mast umgebucht' angelegt werden?") +
                    Crlf + Crlf +
                    QStringLiteral("Durch diese Buchung sind die Ferkel künftig auch im Bestandsregister nach VVVO "
                                   "richtig geführt."));
    const WaitCursor wait(koben);
    const auto count = static_cast<qint64>(piglets.size());
    koben::Action action(m_db, countedAnimals(count, QStringLiteral("Ferkel")) + QStringLiteral(" in Mast gebucht"));
    if (!setForAll(piglets, QStringLiteral("Art"), QStringLiteral("Mast"))) return;
    if (book) Eigenverkauf_buchen(action, Datum_aus_Text(koben.Heute), count);
    action.commit();
    koben.Status_neu_berechnen = 1;
    datenschweinelesen();
}

/// Puts zeros before the numbers that are shorter, within the caller's transaction: by one statement for the animals of
/// a part, and by one each for the numbers that are written otherwise before. How many; nothing once the user has
/// cancelled.
std::optional<qint64> PA_Koben::Nummern_verlaengern(int length) {
    Statement part =
        m_db.prepare(QStringLiteral("select top %1 ID, Nummer from Sauen where ID >= ? order by ID").arg(MostAtOnce));
    Statement one = m_db.prepare(QStringLiteral("update Sauen set Nummer = ? where ID = ?"));
    Statement many = m_db.prepare(
        QStringLiteral(
            "update Sauen set Nummer = right('%1' & Nummer, ?) where ID >= ? and ID <= ? and len(Nummer) < ?")
            .arg(QString(LongestNumber, u'0')));
    Progress progress(koben, QStringLiteral("Die Saunummern werden geändert ..."),
                      m_db.table(QStringLiteral("select max(ID) as hoechste from Sauen")).integer(0, 0));
    qint64 changed = 0, next = std::numeric_limits<qint64>::min();
    for (qint64 first = next;; first = next) {
        std::vector<std::pair<QString, qint64>> others;
        bool any = false, plain = false;
        for (part.bind({first}); part.next(); any = true) {
            const qint64 id = part.integer(0);
            const QString stored = part.text(1), number = Hochkomma_ersetzen(stored);
            next = id + 1;
            if (number.size() >= length) continue;
            if (stored == number && !part.isNull(1))
                plain = true;
            else
                others.emplace_back(number.rightJustified(length, u'0'), id);
        }
        if (!any) return changed;
        for (const auto& [number, id] : others) changed += one.run({number, id});
        if (plain) changed += many.run({length, first, next - 1, length});
        if (!progress.step(next - 1)) return std::nullopt;
    }
}

void PA_Koben::Saunummern_verlaengern() {
    if (!koben.yesNo(QStringLiteral(
            "Durch diese Aktion wird die Saunummer auf eine feste Länge geändert. Dadurch lassen sich die Sauen nach "
            "der laufenden Nummer sortieren. Wenn die Saunummer auf eine Länge von 4 Zeichen eingestellt wird, dann "
            "würde z.B. die Saunummer 4 auf 0004 geändert. Aus 22 würde 0022 und aus 134 würde 0134. Möchen Sie jetzt "
            "die Länge der Saunummern anpassen?")))
        return;
    const double length = Wert(koben.screens.input(QStringLiteral(
        "Bitte legen Sie fest, auf welche Länge (1 bis 15) die Saunummern geändert werden soll. Die Zahl sollte nicht "
        "höher sein als ihre längste Stallnummer (meisten 3 bis 4-stellig). Ist eine Saunummer länger, dann wird "
        "nichts verändert.")));
    if (length < 1 || length > LongestNumber) return koben.message(QStringLiteral("Falsche Eingabe!"));
    const WaitCursor wait(koben);
    koben::Action action(m_db, {});
    const auto changed = [&] {
        const ChangeLog::Silence silence(m_db);  // no derived field hangs on a number, and its sort key is written too
        return Nummern_verlaengern(static_cast<int>(length));
    }();
    if (!changed) return;
    action.setName(QStringLiteral("Nummern von %1 auf %2 Zeichen verlängert")
                       .arg(counted(*changed, "Tier", "Tieren"))
                       .arg(static_cast<int>(length)));
    action.commit();
    datenschweinelesen();
}

}  // namespace koben
