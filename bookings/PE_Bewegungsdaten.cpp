#include "bookings/PE_Bewegungsdaten.h"

#include "core/Aktionsnamen.h"
#include "core/PZ_Koben_Subs.h"
#include "core/PZ_Koben_Subs_Datenbank.h"

namespace koben {

namespace {

constexpr int LeastWidth = 25;

QString widthsKey(int kind) { return QString::number(kind) + QStringLiteral("bewegungsdaten"); }

}  // namespace

PE_Bewegungsdaten::PE_Bewegungsdaten(Koben& context)
    : Form(context, QStringLiteral("PE_Bewegungsdaten"), QStringLiteral("Eingabe (Bewegungsdaten)")) {
    opti.onClick = [this](int kind) {
        if (kind == koben.Buchungsart_Nr) return;
        koben.Buchungsart_Nr = kind;
        Liste_aufbauen();
    };
    schweinli.onRowChange = [this] { Liste_aufbauen(); };
    kom.fixed = true;
    kom.setHint(QStringLiteral("Auswahl nach Stallnr"));
    kom.onClick = [this] { kom_Click(); };
    nextschwein1[0].onClick = [this] { Tier_wechseln(0); };
    nextschwein1[1].onClick = [this] { Tier_wechseln(1); };
    neu.onClick = [this] { neu_Click(); };
    ändern.onClick = li.onDoubleClick = [this] { ändern_Click(); };
    löschen.onClick = li.onDelete = [this] { löschen_Click(); };
    kopieren.onClick = [this] { kopieren_Click(); };
    comhilfe.onClick = [this] { koben.open(QStringLiteral("PH_Hilfe")); };
    cmdschließen.onClick = [this] { cmdschließen_Click(); };
    li.onResized = [this](int column) {
        li.column(column).width = std::max(li.column(column).width, LeastWidth);
        li.columnsChanged();
        koben.saveWidths(li, widthsKey(koben.Buchungsart_Nr));
    };
    for (int i = 0; i < popzeile.count(); ++i) popzeile[i].onClick = [this, i] { popzeile_Click(i); };
    acceptButton = &neu;
    cancelButton = &cmdschließen;
}

PE_Bewegungsdaten& PE_Bewegungsdaten::behind(const Koben& koben) {
    for (auto form = koben.stack().rbegin(); form != koben.stack().rend(); ++form)
        if (auto* frame = dynamic_cast<PE_Bewegungsdaten*>(*form)) return *frame;
    throw std::logic_error("entry screen without its frame");
}

QString PE_Bewegungsdaten::currentTable() const { return QString::fromUtf8(angaben(currentKind()).table); }

QString PE_Bewegungsdaten::screen() const { return QString::fromUtf8(angaben(currentKind()).screen); }

qint64 PE_Bewegungsdaten::currentAnimal() const { return schweinli.value(schweinli.row(), u"ID").toInt(); }

qint64 PE_Bewegungsdaten::currentBooking() const { return li.value(li.row(), u"ID").toInt(); }

void PE_Bewegungsdaten::Load() {
    opti.select(koben.Buchungsart_Nr);
    m_db = koben.connect();
    if (koben.herdList)
        schweinli.share(
            koben.herdList->herd(),
            {QStringLiteral("Art"), QStringLiteral("Nummer"), QStringLiteral("Gruppe"), QStringLiteral("Stallnr"),
             QStringLiteral("Anz_Belegungen"), QStringLiteral("Anz_Ferkelungen"), QStringLiteral("Anz_Ferkel_Gesamt"),
             QStringLiteral("Anz_Ferkel_Lebend"), QStringLiteral("L_Belegung"), QStringLiteral("L_Ferkelung"),
             QStringLiteral("L_Absetzung"), QStringLiteral("L_Trächtigkeit"), QStringLiteral("N_Belegung"),
             QStringLiteral("N_Ferkelung"), QStringLiteral("Geburtsdatum"), QStringLiteral("ID")});
    if (schweinli.markedCount() == 0)
        schweinli.setRow(std::max(schweinli.row(), 1));
    else if (!schweinli.marked(schweinli.row()))
        schweinli.setRowKeepingMarks(schweinli.markedRows().front());
    const Table stalls = m_db.table(QStringLiteral("select * from Stammdaten_Stallnummer order by Inhalt"));
    QStringList items;
    for (int row = 0; row < stalls.rowCount(); ++row) items.append(stalls.text(row, stalls.columnOf(u"Inhalt")));
    kom.setItems(items);
}

void PE_Bewegungsdaten::Activate() {
    if (schweinli.rowCount() == 0) {
        koben.message(
            QStringLiteral("Es sind noch keine Tiere eingegeben. Bevor Sie Bewegungsdaten verwalten können, müssen "
                           "Tiere eingegeben werden. Das Modul wird deshalb wieder geschlossen."));
        cmdschließen_Click();
    } else {
        Liste_aufbauen();
        if (const qint64 shown = std::exchange(koben.shownBooking, 0))
            if (const int row = li.findText(u"ID", QString::number(shown))) li.setRow(row);
    }
    koben.Uebergabe_Anzahl.clear();
}

void PE_Bewegungsdaten::Liste_aufbauen() {
    const Table bookings = m_db.table(
        QStringLiteral("select * from %1 where Kennung = %2 order by Datum").arg(currentTable()).arg(currentAnimal()));
    li.clear();
    li.bind(bookings);
    for (const QString& key : {QStringLiteral("Kennung"), QStringLiteral("ID")})
        if (const int column = li.columnOf(key)) li.column(column).technical = true;
    koben.restoreWidths(li, widthsKey(koben.Buchungsart_Nr));
    setCaption(QStringLiteral("Bewegungsdaten für das Schwein:  ") + schweinli.cell(schweinli.row(), u"Nummer") +
               QStringLiteral(" / ") + schweinli.cell(schweinli.row(), u"Stallnr"));
    if (li.rowCount() > 0) li.setRow(li.rowCount());
    const bool screenThere = koben.catalogue.has(screen());
    neu.setEnabled(screenThere);
    ändern.setEnabled(screenThere);
    popzeile[0].setEnabled(screenThere);
    popzeile[1].setEnabled(screenThere);
}

void PE_Bewegungsdaten::Zeile_auffrischen(int row) {
    const Table booking =
        m_db.table(QStringLiteral("select * from %1 where ID = %2").arg(currentTable(), li.cell(row, u"ID")));
    if (booking.rowCount() == 0) return;
    for (int column = 1; column <= li.columnCount(); ++column)
        li.setCell(row, column, booking.text(0, booking.columnOf(li.column(column).key)));
}

void PE_Bewegungsdaten::Tier_wechseln(int direction) {
    int row = schweinli.row() + (direction == 0 ? -1 : 1);
    if (row < 1) row = schweinli.rowCount();
    if (row > schweinli.rowCount()) row = 1;
    schweinli.setRow(row);
    Liste_aufbauen();
}

/// Whether the marked animals are of more than one group: sows, boars, all others.
bool PE_Bewegungsdaten::mixedKinds() const {
    bool sow = false, boar = false, other = false;
    for (int row : schweinli.markedRows()) {
        const QString kind = schweinli.cell(row, u"Art");
        (kind == u"Sau" ? sow : kind == u"Eber" ? boar : other) = true;
    }
    return sow + boar + other > 1;
}

void PE_Bewegungsdaten::neu_Click() {
    const int marked = schweinli.markedCount();
    if (marked >= 2 && mixedKinds()) {
        koben.message(QStringLiteral(
            "Sie haben für Sammelbuchungen mehrere Schweine markiert. Für Sammelbuchungen dürfen nur Tiere einer Art "
            "(nur Sauen, nur Eber oder nur Masttiere) ausgewählt werden!. Bitte ändern Sie deshalb Ihre Auswahl "
            "entsprechend ab!"));
        return;
    }
    if (schweinli.cell(schweinli.row(), u"Art") != u"Sau" && currentKind() != Buchungsart::Behandlung)
        koben.message(QStringLiteral(
            "Sie haben zur Zeit kein Schwein der Art 'Sau' ausgewählt. Die gewünschte Aktion macht eigentlich nur bei "
            "Sauen Sinn. Das Modul für die Eingabe wird jetzt trotzdem geöffnet!"));
    koben.Buchungsmodus = QStringLiteral("Neu");
    if (currentKind() == Buchungsart::Verschiebung && marked > 1) {
        koben.message(QStringLiteral("Bei Verschiebungen darf nur ein Schwein markiert sein!"));
        return;
    }
    koben.open(screen());
}

void PE_Bewegungsdaten::ändern_Click() {
    koben.Buchungsmodus = QStringLiteral("Ändern");
    if (schweinli.markedCount() > 1) {
        koben.message(QStringLiteral("Bei Änderungen darf nur ein Schwein markiert sein!"));
        return;
    }
    if (li.row() == 0) {
        koben.message(QStringLiteral("Bitte markieren Sie zuerst den Datensatz, den Sie ändern möchten."));
        return;
    }
    koben.open(screen());
}

QString PE_Bewegungsdaten::bookingName(const QString& done) const {
    return Buchungsname(currentKind(), schweinli.cell(schweinli.row(), u"Nummer"), li.cell(li.row(), u"Datum"), done);
}

void PE_Bewegungsdaten::löschen_Click() {
    if (li.row() == 0) {
        koben.message(QStringLiteral("Bitte markieren Sie zuerst den Datensatz, den Sie löschen möchten."));
        return;
    }
    if (!koben.Loeschen_bestaetigen()) return;
    Action action(m_db, bookingName(QStringLiteral("gelöscht")));
    Buchung_loeschen(action, currentKind(), currentBooking(), currentAnimal());
    action.commit();
    li.removeRow(li.row());
}

void PE_Bewegungsdaten::kopieren_Click() {
    if (li.row() == 0) {
        koben.message(
            QStringLiteral("Bitte markieren Sie zuerst einen Datensatz, der kopiert und unter einem anderen "
                           "Datum wieder eingefügt werden soll!"));
        return;
    }
    const QString answer = koben.screens.input(
        QStringLiteral("Bitte geben Sie an, zu welchem neuen Datum der markierte Datensatz kopiert und eingetragen "
                       "werden soll! Wenn Sie nichts eintragen, wird der Datensatz nicht kopiert.") +
        Crlf + Crlf +
        QStringLiteral("Tipp: Das Datum kann in Kurzschreibweise (2, 4 oder 6-stellig) eingegeben werden."));
    if (answer.isEmpty()) return;
    const QString date = Datum_ergaenzen(answer, koben.Heute);
    if (!Ist_Datum(date)) {
        koben.message(QStringLiteral("Die markierte Buchung wurde nicht kopiert."));
        return;
    }
    Action action(m_db, bookingName(QStringLiteral("auf %1 kopiert").arg(date)));
    Buchung_kopieren(action, currentKind(), currentBooking(), Datum_aus_Text(date), currentAnimal());
    action.commit();
    Liste_aufbauen();
    koben.message(QStringLiteral("Die markierte Buchung wurde auf das Datum ") + date + QStringLiteral(" kopiert."));
}

void PE_Bewegungsdaten::kom_Click() {
    if (!konalt.checked()) schweinli.clearMarks();
    const int stall = schweinli.columnOf(u"Stallnr");
    std::vector<int> marks = schweinli.markedRows();
    for (int row = 1; row <= schweinli.rowCount(); ++row)
        if (schweinli.cell(row, stall) == kom.text()) marks.push_back(row);
    schweinli.mark(marks);
    if (schweinli.markedCount() == 0) {
        koben.yesNo(QStringLiteral("ACHTUNG!!!") + Crlf + Crlf +
                    QStringLiteral("Es wurden keine Tiere im ausgewählten Stall gefunden. Deshalb wird das erste Tier "
                                   "markiert."));
        schweinli.setRow(1);
    }
    Liste_aufbauen();
}

void PE_Bewegungsdaten::cmdschließen_Click() {
    koben.Status_neu_berechnen = 1;
    koben.Liste_neu_laden = 1;
    bool derived = false;
    const bool worked = koben.attempt([&] {
        const WaitCursor wait(koben);
        Progress progress(koben, QStringLiteral("Die Werte der Tiere werden berechnet ..."), 100);
        derived = Werte_berechnen(m_db, koben, [&](int percent) { return progress.step(percent); });
    });
    if (!derived && (worked || !closesUnderived())) return;
    m_db.close();
    close();
}

// A disk that stays full must not hold the user in this window; what is left to derive is noted in the file.
bool PE_Bewegungsdaten::closesUnderived() {
    return koben.yesNo(
        QStringLiteral("Die Buchungen sind gespeichert, aber Zähler, Termine und Status der Tiere sind noch nicht neu "
                       "berechnet.") +
        Crlf + Crlf +
        QStringLiteral("Soll das Fenster trotzdem geschlossen werden? Berechnet wird dann, wenn es das nächste Mal "
                       "geschlossen wird, spätestens beim nächsten Start."));
}

void PE_Bewegungsdaten::popzeile_Click(int index) {
    switch (index) {
        case 0:
            return neu_Click();
        case 1:
            return ändern_Click();
        case 3:
            return löschen_Click();
        case 5:
            return kopieren_Click();
        default:
            return;
    }
}

}  // namespace koben
