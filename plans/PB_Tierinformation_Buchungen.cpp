#include "plans/PB_Tierinformation_Buchungen.h"

#include <algorithm>

#include "core/Konfig.h"
#include "core/PZ_Koben_Subs.h"

namespace koben {

namespace {

enum Bookings { AllBookings, Period, LatestOnly };

/// Where the picked fields of the tables are kept.
constexpr std::array FieldSlots{1, 2, 12, 13, 14, 18, 20, 21};

}  // namespace

PB_Tierinformation_Buchungen::PB_Tierinformation_Buchungen(Koben& koben_)
    : Tierbericht(koben_, "PB_Tierinformation_Buchungen", "Bewegungsdaten (Buchungen) listen") {
    optibuch.frame = QStringLiteral("Buchungsauswahl der Bewegungsdaten");
    bindAnimals(optitieraus, 0, Zahl::BuchungsberichtTiere);
    bind(optibuch, Zahl::BuchungsberichtAuswahl);
    bindFlags({&kontier[0], &kontier[1], &kontier[2], &kontier[3]}, Zahl::BuchungsberichtTierfelder);
    bindFlags({&tierleer, &konereignis, &kontiergruppe}, Zahl::BuchungsberichtForm);
    for (int i = 0; i < li.count(); ++i) {
        li[i].setHint(bez[i].text());
        bindMarks(li[i], FieldSlots[static_cast<size_t>(i)]);
    }
    for (int i = 0; i < alletier.count(); ++i)
        alletier[i].onClick = [this, i] {
            for (auto& list : li) markAll(*list, i == 0);
        };
    for (int i = 0; i < tdat.count(); ++i) bindDate(tdat[i], calender[i], calend);
    tdat[0].setHint("Datum von");
    tdat[1].setHint("bis");
    ok.onClick = [this] { ok_Click(); };
}

/// Ticks kept together in one slot, a bit each.
void PB_Tierinformation_Buchungen::bindFlags(std::vector<CheckBox*> boxes, int slot) {
    qint16& kept = koben.Konfig_Zahl.at(static_cast<size_t>(slot));
    bind(
        [boxes, &kept] {
            for (size_t i = 0; i < boxes.size(); ++i) boxes[i]->setChecked((kept >> i) & 1);
        },
        [boxes, &kept] {
            int bits = 0;
            for (size_t i = 0; i < boxes.size(); ++i)
                if (boxes[i]->checked()) bits |= 1 << i;
            kept = static_cast<qint16>(bits);
        });
}

void PB_Tierinformation_Buchungen::fillChoices() {
    for (size_t table = 0; table < Buchungstabellen.size(); ++table) {
        QStringList names;
        for (const Field& field : m_db.fields(QString::fromUtf8(Buchungstabellen[table])))
            if (field.name != u"Kennung" && field.name != u"ID") names += field.name;
        li[static_cast<int>(table)].setItems(names);
    }
}

bool PB_Tierinformation_Buchungen::anyField() const {
    for (int i = 0; i < li.count(); ++i)
        if (li[i].markedCount() > 0) return true;
    return false;
}

/// Otherwise the user is told what is missing.
bool PB_Tierinformation_Buchungen::choicesStand() {
    QStringList lines;
    if (!konereignis.checked() && !anyField())
        lines += "...keine zu listenden Datenfelder (Buchungen) ausgewählt sind.";
    if (optibuch.selected() == Period) {
        if (Datum_als_Text(QString(tdat[0].text())) > Datum_als_Text(QString(tdat[1].text())))
            lines += "...das 'Datum von' größer ist als das 'Datum bis'.";
        if (!Ist_Datum(tdat[0].text()) || !Ist_Datum(tdat[1].text()))
            lines += "...das Datum von...bis eingegeben werden muß.";
    }
    if (lines.isEmpty()) return true;
    koben.message("Die Daten können nicht gelistet werden, weil..." + Crlf + Crlf + lines.join(Crlf));
    return false;
}

Buchungswahl PB_Tierinformation_Buchungen::choice() {
    Buchungswahl wanted{.animals = condition(optitieraus[std::max(optitieraus.selected(), 0)].caption()),
                        .columns = {},
                        .fields = {},
                        .from = {},
                        .to = {},
                        .latestOnly = optibuch.selected() == LatestOnly,
                        .emptyRows = tierleer.checked(),
                        .byAnimal = kontiergruppe.checked()};
    for (size_t i = 0; i < wanted.columns.size(); ++i) wanted.columns[i] = kontier[static_cast<int>(i)].checked();
    for (size_t i = 0; i < wanted.fields.size(); ++i) wanted.fields[i] = marked(li[static_cast<int>(i)]);
    if (optibuch.selected() == Period) wanted.from = tdat[0].text(), wanted.to = tdat[1].text();
    return wanted;
}

void PB_Tierinformation_Buchungen::ok_Click() {
    tickAllIfNone(kontier);
    if (!choicesStand()) return;
    gridli.clear();
    const Buchungswahl wanted = choice();
    bool whole = false;
    const bool done = run("Die Buchungen werden gelistet ...", Buchungsschritte, &meter, [&](Progress& progress) {
        whole = konereignis.checked() ? Ereignisse_auflisten(gridli, m_db, wanted, progress)
                                      : Buchungen_auflisten(gridli, m_db, wanted, progress);
    });
    if (!done || !whole) return;
    Liste_ausgeben(koben, gridli, "Es wurden lt. den aktuellen Einstellungen keine Daten gefunden!");
}

}  // namespace koben
