#include "forms/Zurueck.h"

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

Rueckmeldung zuruecknehmen(Koben& koben, Ruecknahmerichtung richtung) {
    Rueckmeldung result{{}, obstacle(koben)};
    if (result.done()) {
        const WaitCursor wait(koben);
        const Ruecknahme journal(koben.connect(), koben);
        result = richtung == Ruecknahmerichtung::Zurueck ? journal.back() : journal.again();
    }
    if (!result.done()) koben.message(result.refusal);
    return result;
}

namespace {

/// A frame shows the animals of the herd list: both have the same ones afterwards, and the frame stays where it is.
void readHerdBehind(HerdList& list, Form& frame) {
    const auto* shown = dynamic_cast<const Grid*>(frame.find(u"schweinli"));
    const QString animal = shown ? shown->cell(shown->row(), u"ID") : QString();
    list.datenschweinelesen();
    if (!shown) return;
    if (const int row = list.herd().findText(u"ID", animal)) list.herd().setRow(row);
    frame.Load();
}

}  // namespace

void showAgain(Koben& koben, const Rueckmeldung& done) {
    Form* front = koben.front();
    if (!done.done() || front == nullptr) return;
    koben.Liste_neu_laden = 1;
    const bool listInFront = dynamic_cast<HerdList*>(front) != nullptr;
    if (done.herd && !listInFront && koben.herdList) readHerdBehind(*koben.herdList, *front);
    front->activateLater();
    front->settle();
}

}  // namespace koben
