#include "forms/Zurueck.h"

#include <QSet>

#include "forms/Eingabe.h"

namespace koben {

QString naechsteAktion(Koben& koben, Ruecknahmerichtung richtung) {
    if (!koben.Hauptdatenbank.isOpen()) return {};
    const Ruecknahme journal(koben.Hauptdatenbank, koben);
    const auto entry = richtung == Ruecknahmerichtung::Zurueck ? journal.next() : journal.nextAgain();
    return entry ? journal.subject(*entry) : QString();
}

namespace {

/// An entry under way is written over what was read when it was opened.
QString obstacle(const Koben& koben) {
    if (!koben.notWritable.isEmpty()) return koben.notWritable;
    const Form* front = koben.front();
    if (dynamic_cast<const Eingabe*>(front) == nullptr) return {};
    return QStringLiteral(
               "Solange das Fenster „%1“ offen ist, lässt sich nichts zurücknehmen oder wieder ausführen. Bitte "
               "schließen Sie es zuerst.")
        .arg(front->caption());
}

}  // namespace

Rueckmeldung carryOut(Koben& koben, const Ruecknahme& journal, const Ruecknahme::Plan& plan) {
    const auto work = [&](bool agreed) {
        const WaitCursor wait(koben);
        return journal.carryOut(plan, agreed);
    };
    Rueckmeldung result = work(false);
    if (!result.question.isEmpty() && koben.yesNo(result.question)) result = work(true);
    if (!result.refusal.isEmpty()) koben.message(result.refusal);
    return result;
}

Rueckmeldung zuruecknehmen(Koben& koben, Ruecknahmerichtung richtung) {
    const Rueckmeldung refused{{}, obstacle(koben), {}};
    if (!refused.done()) {
        koben.message(refused.refusal);
        return refused;
    }
    const Ruecknahme journal(koben.connect(), koben);
    const auto plan = [&] {
        const WaitCursor wait(koben);
        return richtung == Ruecknahmerichtung::Zurueck ? journal.backPlan() : journal.againPlan();
    }();
    return carryOut(koben, journal, plan);
}

namespace {

/// The list behind stays on its animal; a frame that shows the same animals has those of the list afterwards.
void readHerdBehind(HerdList& list, Form& front) {
    const auto* shown = dynamic_cast<const Grid*>(front.find(u"schweinli"));
    const Grid& current = shown ? *shown : list.herd();
    const QString animal = current.cell(current.row(), u"ID");
    QSet<QString> marked;
    for (const int row : current.markedRows()) marked.insert(current.cell(row, u"ID"));
    list.datenschweinelesen();
    std::vector<int> rows;
    for (int row = 1; row <= list.herd().rowCount() && !marked.isEmpty(); ++row)
        if (marked.contains(list.herd().cell(row, u"ID"))) rows.push_back(row);
    if (!rows.empty()) list.herd().mark(rows);
    if (const int row = list.herd().findText(u"ID", animal)) list.herd().setRowKeepingMarks(row);
    if (shown) front.Load();
}

}  // namespace

void showAgain(Koben& koben, const Rueckmeldung& done) {
    Form* front = koben.front();
    if (!done.done() || front == nullptr) return;
    koben.Liste_neu_laden = 1;
    const bool listInFront = dynamic_cast<HerdList*>(front) != nullptr;
    if (done.herd && !listInFront && koben.herdList) readHerdBehind(*koben.herdList, *front);
    if (auto* own = dynamic_cast<ReadsAnew*>(front)) own->readAnew();
    front->activateLater();
    front->settle();
}

}  // namespace koben
