#include "stock/PB_Bestandsregister.h"

#include "core/Konfig.h"
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

PB_Bestandsregister::PB_Bestandsregister(Koben& koben_)
    : Bericht(koben_, "PB_Bestandsregister", "Bestandsregister nach") {
    Label1.setText(QString::fromUtf8(Notice));
    for (int i = 0; i < tdat.count(); ++i) {
        tdat[i].setHint(bez[i].text());
        bindDate(tdat[i], calender[i], calend);
    }
    bindText(tdat[0], Text::RegisterVon);
    for (int i = 0; i < t.count(); ++i) {
        t[i].setHint(bez[tdat.count() + i].text());
        bindText(t[i], Text::RegisterBetrieb + i);
    }
    bind(kon, Zahl::RegisterFerkel);
    bind(konadd, Zahl::RegisterAddieren);
    gridli.setVisible(false);
    ok.onClick = [this] { ok_Click(); };
    bindButtons(ok, beenden, &hilfe);
}

void PB_Bestandsregister::Load() {
    Bericht::Load();
    tdat[1].setText(koben.Heute);
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
    const bool whole =
        run("Das Bestandsregister wird erstellt ...", Registerschritte, nullptr, [&](Progress& progress) {
            const auto movements =
                Bestandsbewegungen_lesen(m_db, head.period, kon.checked(), konadd.checked(), progress);
            if (progress.cancelled()) return;
            show(movements);
            text = Bestandsregister_schreiben(head, movements);
        });
    if (!whole) return;
    Text_uebergeben(koben, text);
}

void PB_Bestandsregister::show(const std::vector<Bestandsbewegung>& movements) {
    gridli.clear();
    gridli.addColumn({.key = "datum", .title = "Datum", .sort = Sort::Date});
    for (const char* title : {"dazu", "weg", "art", "Saunr", "Ohrmarke", "Name", "Bemerkung"})
        gridli.addColumn({.key = QString::fromUtf8(title).toLower(), .title = QString::fromUtf8(title)});
    for (const Bestandsbewegung& m : movements)
        gridli.addRow({m.day, m.in, m.out, m.kind, m.number, m.earTag, m.partner, m.remark});
}

}  // namespace koben
