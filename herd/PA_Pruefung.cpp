#include "herd/PA_Pruefung.h"

#include "core/ErrorLog.h"
#include "core/PZ_Koben_Subs.h"
#include "forms/RunState.h"
#include "herd/PA_Koben_Funde.h"
#include "output/Uebergabe.h"

namespace koben {

namespace {

const QString Noted = QStringLiteral("Kenntnis");  // "merkmal dd.mm.yyyy"

}  // namespace

std::optional<QString> Seiten_pruefen(Koben& koben, Check check) {
    Progress progress(koben, QStringLiteral("Die Datenbank wird geprüft ..."), 100);
    std::optional<QString> found;
    try {
        found = koben.workspace.check(koben.Datenbankpfad, check, [&](int percent) { return progress.step(percent); });
    } catch (const DatabaseError& error) {
        if (error.kind != DatabaseError::Kind::NotADatabase) throw;
        found = error.detail();  // so damaged that it cannot even be looked at
    }
    if (!found || found->isEmpty()) return found;
    ErrorLog(koben.platform.userFolder()).write(koben.platform.now(), *found);
    const QString copy = Neueste_Kopie(koben.Datenordner);
    return QStringLiteral(
               "Die Datenbank ist beschädigt; Daten darin können fehlen oder falsch sein. Bitte geben Sie "
               "nichts mehr ein, und holen Sie eine Datensicherung zurück%1.")
        .arg(copy.isEmpty() ? QString() : QStringLiteral(" (die neueste Kopie ist %1)").arg(copy));
}

std::optional<Pruefbefund> Verlauf_pruefen(Koben& koben, const Database& db, const CycleProgress& go) {
    auto rows = Verlauf_pruefen(db, go);
    const QString noted = RunState(koben.platform, koben.Datenordner).get(Noted);
    if (!rows || rows->art != Pruefbefund::Art::Fremd || rows->merkmal != noted.section(u' ', 0, 0)) return rows;
    rows->art = Pruefbefund::Art::InOrdnung;
    rows->satz += QStringLiteral(" Zur Kenntnis genommen am %1.").arg(noted.section(u' ', 1));
    return rows;
}

PA_Prüfung::PA_Prüfung(Koben& context)
    : Form(context, QStringLiteral("PA_Prüfung"), QStringLiteral("Datenbank prüfen")) {
    t.multiLine = t.readOnly = true;
    t.enterIsTab = t.marksAllOnFocus = false;
    t.setHint(QStringLiteral("Was geprüft wurde"));
    ok.onClick = [this] { ok_Click(); };
    reparieren.onClick = [this] { reparieren_Click(); };
    kenntnis.onClick = [this] { kenntnis_Click(); };
    kenntnis.setHint(QStringLiteral("Was ein anderes Programm geändert hat, nicht mehr melden"));
    listen.onClick = [this] { listen_Click(); };
    hilfe.onClick = [this] { koben.open(QStringLiteral("PH_Hilfe")); };
    beenden.onClick = [this] { close(); };
    acceptButton = &ok;
    cancelButton = &beenden;
    helpTopic = name();
}

void PA_Prüfung::Load() {
    m_db = koben.connect();
    reparieren.setEnabled(false);
    kenntnis.setVisible(false);
}

void PA_Prüfung::FirstShown() { ok_Click(); }

void PA_Prüfung::ok_Click() {
    m_findings.clear();
    const auto pages = Seiten_pruefen(koben, Check::Full);
    const bool sound = pages && pages->isEmpty();
    show(pages.value_or(QString()), sound && checkData());
}

/// False where it was given up.
bool PA_Prüfung::checkData() {
    Progress progress(koben, QStringLiteral("Die Daten werden geprüft ..."), 100);
    auto found = Daten_pruefen(m_db, koben, [&](int percent) { return progress.step(percent / 2); });
    auto rows = found ? Verlauf_pruefen(koben, m_db, [&](int percent) { return progress.step(50 + percent / 2); })
                      : std::nullopt;
    if (!rows) return false;
    m_findings = std::move(*found);
    m_findings.push_back(std::move(*rows));
    return true;
}

/// `pages`: what is wrong with the file. `whole`: everything was looked at.
void PA_Prüfung::show(const QString& pages, bool whole) {
    const bool damaged = !pages.isEmpty();
    QStringList lines;
    if (damaged || whole)
        lines += QStringLiteral("Seiten der Datei: ") + (damaged ? pages : QStringLiteral("Alle sind unversehrt."));
    int wrong = 0;
    for (const Pruefbefund& each : m_findings) {
        lines += each.was + QStringLiteral(": ") + each.satz;
        for (const QString& line : each.zeilen) lines += QStringLiteral("   ") + line;
        wrong += each.art == Pruefbefund::Art::Abgeleitet || each.art == Pruefbefund::Art::OhneTier ||
                 each.art == Pruefbefund::Art::Wuerfe;
    }
    const bool mends = wrong > 0, foreign = enthaelt(m_findings, Pruefbefund::Art::Fremd);
    t.setText(lines.join(Crlf));
    Label1.setText(damaged   ? QStringLiteral("Die Datenbank ist beschädigt.")
                   : !whole  ? QStringLiteral("Die Prüfung wurde abgebrochen.")
                   : mends   ? QStringLiteral("Die Datei ist unversehrt, aber nicht alles darin passt zusammen. "
                                                "[Reparieren] bringt es in Ordnung.")
                   : foreign ? QStringLiteral("Die Datenbank ist in Ordnung. Ein anderes Programm hat darin etwas "
                                              "geändert: Bitte sehen Sie nach, ob das so gewollt ist.")
                   : enthaelt(m_findings, Pruefbefund::Art::Hinweis)
                       ? QStringLiteral("Die Datenbank ist in Ordnung. Zu einigen Eingaben gibt es einen Hinweis.")
                       : QStringLiteral("Die Datenbank wurde geprüft. Sie ist in Ordnung."));
    reparieren.setEnabled(mends);
    kenntnis.setVisible(foreign);
    listen.setEnabled(!lines.isEmpty());
}

/// One action for all of it. Bookings go only where the user wants it.
void PA_Prüfung::reparieren_Click() {
    const bool orphans =
        enthaelt(m_findings, Pruefbefund::Art::OhneTier) &&
        koben.yesNo(QStringLiteral("Sollen die Buchungen, deren Tier es nicht mehr gibt, gelöscht werden?"), true);
    const bool litters = enthaelt(m_findings, Pruefbefund::Art::Wuerfe);
    if (!orphans && !litters && !enthaelt(m_findings, Pruefbefund::Art::Abgeleitet)) return;
    {
        const WaitCursor wait(koben);
        Progress progress(koben, QStringLiteral("Die Datenbank wird repariert ..."), 100);
        Action action(m_db, QStringLiteral("Datenbank repariert"));
        const qint64 removed = orphans ? Buchungen_ohne_Tier_loeschen(action) : 0;
        if (removed > 0)
            action.setName(QStringLiteral("Datenbank repariert, %1 Buchungen ohne Tier gelöscht").arg(removed));
        if (litters) Wuerfe_neu_nummerieren(action);
        if (!Neu_ableiten(action, koben, [&](int percent) { return progress.step(percent); })) return;
        action.commit();
    }
    koben.Liste_neu_laden = 1;
    ok_Click();
}

void PA_Prüfung::kenntnis_Click() {
    for (Pruefbefund& each : m_findings) {
        if (each.art != Pruefbefund::Art::Fremd) continue;
        RunState(koben.platform, koben.Datenordner).set(Noted, each.merkmal + u' ' + koben.Heute);
    }
    ok_Click();
}

void PA_Prüfung::listen_Click() {
    Text_uebergeben(koben,
                    QStringLiteral("Prüfung der Datenbank vom ") + koben.Heute + Crlf + Crlf + Label1.text() + Crlf +
                        Crlf + t.text() + Crlf,
                    QStringLiteral("LISTE.TXT"));
}

}  // namespace koben
