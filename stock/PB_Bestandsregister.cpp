#include "stock/PB_Bestandsregister.h"

#include "core/PZ_Koben_Subs.h"
#include "output/Uebergabe.h"

namespace koben {

namespace {

const char* const Notice =
    "WICHTIG: Damit die Ferklestände stimmen, sollten Sie zum vor dem Termin, ab dem Sie den Sauenplaner führen, eine "
    "Einkaufsbuchung mit der Restzahl Ferkel machen. Wenn Sie also z.B. den Sauenplaner am dem 01.01.2005 führen und "
    "zu diesem Zeitpunkt bereits 200 Ferkel hatten, dann tragen Sie mit einem Termin vor dem 01.01.2005 (z.B. "
    "31.12.2004) einen Ferkeleinkauf mit 200 Ferkel ein. Wenn Sie Ferkel in Ihren eigenen Bestand übernehmen und die "
    "Ferkel in die Bestandsliste im Hauptmodul aufnehmen, tragen Sie diese auch als Verkauf ein, damit die Abgänge "
    "bei den Ferkeln gebucht sind.";

}  // namespace

PB_Bestandsregister::PB_Bestandsregister(Koben& koben_) : Form(koben_, "PB_Bestandsregister", "Bestandsregister nach") {
    Label1.setText(QString::fromUtf8(Notice));
    for (int i = 0; i < tdat.count(); ++i) {
        tdat[i].setHint(bez[i].text());
        tdat[i].onLostFocus = [this, i] { tdat[i].setText(Datum_ergaenzen(tdat[i].text(), koben.Heute)); };
        calender[i].icon = QStringLiteral("kalender");
        calender[i].setHint(QStringLiteral("Kalender"));
        calender[i].onClick = [this, i] {
            calend.setVisible(!calend.visible() || m_calendarFor != i);
            m_calendarFor = i;
        };
    }
    calend.onPick = [this](QDate date) {
        tdat[m_calendarFor].setText(Datum_als_Anzeige(date));
        calend.setVisible(false);
    };
    for (int i = 0; i < t.count(); ++i) t[i].setHint(bez[tdat.count() + i].text());
    gridli.setVisible(false);
    ok.onClick = [this] { ok_Click(); };
    hilfe.onClick = [this] { koben.open("PH_Hilfe"); };
    beenden.onClick = [this] { beenden_Click(); };
    helpTopic = name();
    acceptButton = &ok;
    cancelButton = &beenden;
}

void PB_Bestandsregister::Load() {
    m_db = koben.connect();
    tdat[0].setText(koben.Konfig_Text[Text::RegisterVon]);
    tdat[1].setText(koben.Heute);
    calend.setDate(Datum_aus_Text(koben.Heute));
    for (int i = 0; i < t.count(); ++i) t[i].setText(koben.Konfig_Text[static_cast<size_t>(Text::RegisterBetrieb + i)]);
    kon.setChecked(koben.Konfig_Zahl[Zahl::RegisterFerkel] == 1);
    konadd.setChecked(koben.Konfig_Zahl[Zahl::RegisterAddieren] == 1);
}

void PB_Bestandsregister::beenden_Click() {
    koben.Konfig_Text[Text::RegisterVon] = tdat[0].text();
    for (int i = 0; i < t.count(); ++i) koben.Konfig_Text[static_cast<size_t>(Text::RegisterBetrieb + i)] = t[i].text();
    koben.Konfig_Zahl[Zahl::RegisterFerkel] = kon.checked() ? 1 : 0;
    koben.Konfig_Zahl[Zahl::RegisterAddieren] = konadd.checked() ? 1 : 0;
    m_db.close();
    close();
}

/// Otherwise the user is told what is wrong with it.
bool PB_Bestandsregister::periodStands() {
    QStringList lines;
    if (!Ist_Datum(tdat[0].text()) || !Ist_Datum(tdat[1].text())) lines += "...der Zeitbereich nicht korrekt ist.";
    if (Datum_als_Text(QString(tdat[0].text())) > Datum_als_Text(QString(tdat[1].text())))
        lines += "...das Datum von kleiner sein muß als das Datum bis.";
    if (lines.isEmpty()) return true;
    koben.message("Die Auswertung kann nicht erstellt werden, weil..." + Crlf + Crlf + lines.join(Crlf));
    return false;
}

void PB_Bestandsregister::ok_Click() {
    if (!periodStands()) return;
    Registerkopf head{.farm = {}, .period = {tdat[0].text(), tdat[1].text()}, .before = {}, .after = {}};
    for (int i = 0; i < t.count(); ++i) head.farm[static_cast<size_t>(i)] = t[i].text();
    head.before = Registerbestand_zaehlen(m_db, head.period.from, kon.checked());
    head.after = Registerbestand_zaehlen(m_db, head.period.to, kon.checked());
    if (kon.checked())
        koben.message(QStringList{"HINWEIS", "",
                                  "Die Anzahl Ferkel wird setzt sich nicht aus dem im Hauptmodul angezeigten Ferkel "
                                  "zusammen, sondern...",
                                  "+ Ferkelungen lebend", "+ Einkäufe", "- Verluste", "- Verkäufe",
                                  "innerhalb der angegebenen Zeiträume."}
                          .join(Crlf));
    QString text;
    {
        const WaitCursor wait(koben);
        const auto movements = Bestandsbewegungen_lesen(m_db, head.period, kon.checked(), konadd.checked());
        show(movements);
        text = Bestandsregister_schreiben(head, movements);
    }
    Text_uebergeben(koben, text);
}

void PB_Bestandsregister::show(const std::vector<Bestandsbewegung>& movements) {
    gridli.clear();
    gridli.addColumn({.key = "datum", .title = "Datum", .sort = Sort::Date});
    for (const char* title : {"dazu", "weg", "art", "Saunr", "Ohrmarke", "Name", "Bemerkung"})
        gridli.addColumn({.key = QString::fromUtf8(title).toLower(), .title = QString::fromUtf8(title)});
    for (const Bestandsbewegung& m : movements)
        gridli.addRow(QStringList{m.day, m.in, m.out, m.kind, m.number, m.earTag, m.partner, m.remark}.join(u'\t'));
}

}  // namespace koben
