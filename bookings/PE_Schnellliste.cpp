#include "bookings/PE_Schnellliste.h"

#include <QFile>
#include <algorithm>

#include "core/Aktionsnamen.h"
#include "core/PZ_Koben_Subs.h"
#include "core/Textdatei.h"
#include "forms/Schnellbuchung.h"
#include "store/Action.h"

namespace koben {

namespace {

constexpr qint64 LargestFile = 1'000'000;
const QString Good = QStringLiteral("gut"), Wrong = QStringLiteral("falsch"), Head = QStringLiteral("Tag");

}  // namespace

PE_Schnellliste::PE_Schnellliste(Koben& context)
    : Form(context, QStringLiteral("PE_Schnellliste"), QStringLiteral("Viele Buchungen als Text")) {
    t.multiLine = true;
    t.enterIsTab = t.marksAllOnFocus = false;
    t.setHint(QStringLiteral("Buchungen, je Zeile eine"));
    t.onChange = [this] { prüfen(); };
    li.addColumn({.key = QStringLiteral("Zeile"), .title = QStringLiteral("Zeile"), .width = 50});
    li.addColumn({.key = QStringLiteral("Text"), .title = QStringLiteral("Text"), .width = 200});
    li.addColumn({.key = QStringLiteral("Urteil"), .title = QStringLiteral("Urteil"), .width = 60});
    li.addColumn({.key = QStringLiteral("Buchung"), .title = QStringLiteral("Buchung"), .width = 640});
    einfügen.onClick = [this] { einfügen_Click(); };
    datei.onClick = [this] { datei_Click(); };
    ok[0].onClick = [this] { Als_eine_Aktion(); };
    ok[1].onClick = [this] { Zeile_fuer_Zeile(); };
    comhilfe.onClick = [this] { koben.open(QStringLiteral("PH_Hilfe")); };
    abbrechen.onClick = [this] { close(); };
    acceptButton = &ok[0];
    cancelButton = &abbrechen;
}

void PE_Schnellliste::Load() {
    m_db = koben.connect();
    Herde_lesen();
    prüfen();
    t.setFocus();
}

void PE_Schnellliste::Herde_lesen() {
    m_herd = koben.herdList ? Schnelltiere(koben.herdList->herd()) : std::vector<Schnelltier>();
    m_read.clear();
}

void PE_Schnellliste::einfügen_Click() {
    const QString text = koben.platform.pasted();
    if (text.trimmed().isEmpty())
        return koben.message(
            QStringLiteral("In der Zwischenablage steht kein Text. Kopieren Sie die Zeilen zuerst in dem Programm, in "
                           "dem sie stehen."));
    t.edited(text);
}

void PE_Schnellliste::datei_Click() {
    const QString path = koben.screens.openFile(QStringLiteral("Textdateien|*.txt;*.csv|Alle Dateien|*.*"));
    if (path.isEmpty()) return;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > LargestFile)
        return koben.message(QStringLiteral("Die Datei %1 kann nicht gelesen werden, oder sie ist zu groß für eine "
                                            "Liste von Buchungen. Bitte wählen Sie eine Textdatei.")
                                 .arg(path));
    t.edited(textOfAnyEditor(file.readAll()));
}

const Schnellzeile& PE_Schnellliste::deuten(const QString& line, QDate day) {
    const QString key = line + u'\n' + day.toString(Qt::ISODate);
    auto read = m_read.find(key);
    if (read == m_read.end()) read = m_read.insert(key, Schnellzeile_lesen(line, m_herd, koben.Heute, day));
    return *read;
}

qint64 PE_Schnellliste::Buchungen() const {
    return std::count_if(m_lines.begin(), m_lines.end(), [](const Zeile& line) { return !line.head.isValid(); });
}

QString PE_Schnellliste::Urteil(const Zeile& line) const {
    if (line.head.isValid())
        return QStringLiteral("Der Tag der Zeilen darunter: ") + Datum_als_Anzeige(line.head) + u'.';
    if (line.read.grammar)
        return QStringLiteral("Das fragt nach der Schreibweise und bucht nichts. Löschen Sie die Zeile.");
    if (const auto why = m_refused.find(line.text); why != m_refused.end())
        return QStringLiteral("Nicht gebucht. ") + *why;
    const auto first = std::find_if(m_lines.begin(), m_lines.end(), [&](const Zeile& l) {
        return !l.head.isValid() && l.text == line.text && l.read.day == line.read.day;
    });
    const QString twice = first != m_lines.end() && first->number != line.number
                              ? QStringLiteral(" Dieselbe Zeile steht schon in Zeile %1.").arg(first->number)
                              : QString();
    return line.read.sentence() + twice;
}

void PE_Schnellliste::prüfen() {
    m_lines.clear();
    int number = 0;
    QDate day;
    for (const QString& line : t.text().split(u'\n')) {
        ++number;
        const QString text = line.simplified();
        if (text.isEmpty()) continue;
        const QDate head = Schnelltag_lesen(text, koben.Heute);
        if (head.isValid()) day = head;
        m_lines.push_back({number, text, head, head.isValid() ? Schnellzeile() : deuten(text, day)});
    }
    const auto booking = [](const Zeile& line) { return !line.head.isValid() && line.read.ready(); };
    const auto good = std::count_if(m_lines.begin(), m_lines.end(), booking);
    li.clearRows();
    for (const Zeile& line : m_lines)
        li.addRow({QString::number(line.number), line.text,
                   line.head.isValid() ? Head
                   : booking(line)     ? Good
                                       : Wrong,
                   Urteil(line)});
    const qint64 all = Buchungen();
    urteil.setText(all == 0 ? QStringLiteral("Noch keine Zeilen.")
                            : QStringLiteral("%1, davon %2 zu buchen.").arg(counted(all, "Zeile", "Zeilen")).arg(good));
    ok[0].setEnabled(all > 0 && good == all);
    ok[1].setEnabled(good > 0);
}

/// Every line or none: the forms' own actions join this one.
void PE_Schnellliste::Als_eine_Aktion() {
    Action action(m_db, QStringLiteral("Liste von Buchungen, ") + counted(Buchungen(), "Zeile", "Zeilen"));
    for (const Zeile& line : m_lines) {
        if (line.head.isValid()) continue;
        const Schnellergebnis result = Schnell_buchen(koben, line.read);
        if (result.booked) continue;
        m_refused.insert(line.text, result.reason);
        koben.message(QStringLiteral("Es wurde nichts gebucht, weil Zeile %1 abgelehnt wurde: %2")
                          .arg(line.number)
                          .arg(line.text) +
                      Crlf + Crlf + result.reason);
        return prüfen();
    }
    action.commit();
    koben.message(counted(Buchungen(), "Zeile wurde", "Zeilen wurden") + QStringLiteral(" gebucht."));
    close();
}

/// What was booked goes from the text; the herd is read anew for what follows, as it is between two bookings by hand.
void PE_Schnellliste::Zeile_fuer_Zeile() {
    QStringList left;
    qint64 booked = 0, refused = 0;
    QString head;
    m_refused.clear();
    for (const Zeile& line : m_lines) {
        if (line.head.isValid()) {
            head = line.text;
            continue;
        }
        const Schnellergebnis result = line.read.ready() ? Schnell_buchen(koben, line.read) : Schnellergebnis();
        if (!result.booked) {
            if (!head.isEmpty()) left.append(std::exchange(head, {}));
            left.append(line.text);
            ++refused;
            if (!result.reason.isEmpty()) m_refused.insert(line.text, result.reason);
            continue;
        }
        ++booked;
        if (koben.herdList) koben.herdList->datenschweinelesen();
    }
    Herde_lesen();
    t.setText(left.join(Crlf));
    prüfen();
    const QString done = counted(booked, "Zeile wurde", "Zeilen wurden") + QStringLiteral(" gebucht.");
    if (left.isEmpty()) {
        koben.message(done);
        return close();
    }
    koben.message(done + u' ' + counted(refused, "Zeile steht", "Zeilen stehen") +
                  QStringLiteral(" noch da, mit dem Grund dahinter."));
}

}  // namespace koben
