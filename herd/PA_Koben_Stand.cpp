// The herd as of another day: the list, and all that opens from it, work on a copy of the database as it stood then.
#include <QSet>

#include "core/PZ_Koben_Subs.h"
#include "core/PrivateFolder.h"
#include "core/Tagesstand.h"
#include "herd/PA_Koben.h"

namespace koben {

/// What the run works on when it shows the herd as it is, and how the list stood then.
struct PA_Koben::Heutiges {
    std::unique_ptr<PrivateFolder> copy;
    QString path, today;
    Database database;  // stays open, so that nothing else takes the file meanwhile
    std::array<int, 3> filter;
    std::vector<qint64> marked;
    qint64 current;
    int statusDue;
};

namespace {

std::vector<qint64> idsOf(const Grid& list, const std::vector<int>& rows) {
    const int id = list.columnOf(u"ID");
    std::vector<qint64> ids;
    for (const int row : rows) ids.push_back(list.integer(row, id));
    return ids;
}

/// Why nothing is written while another day is shown, and what to do.
QString refusal(QDate day) {
    return QStringLiteral(
               "Stand vom %1: Hier lässt sich nur ansehen. Zum Eingeben und Ändern gehen Sie bitte in der Herdenliste "
               "mit "
               "[Zurück zu heute] zum heutigen Stand zurück.")
        .arg(Datum_als_Anzeige(day));
}

}  // namespace

void PA_Koben::Stand_erfragen() {
    const QString entered = koben.screens.input(
        QStringLiteral(
            "Von welchem Tag möchten Sie die Herde sehen? Gezeigt wird der Stand am Ende dieses Tages, nur zum "
            "Ansehen. Auch ein kommender Tag ist möglich.") +
            Crlf + Crlf +
            QStringLiteral("Tipp: Das Datum kann in Kurzschreibweise (2, 4 oder 6-stellig) eingegeben werden."),
        koben.Stand.isValid() ? koben.Heute : QString(), QStringLiteral("Stand vom ..."));
    if (!entered.trimmed().isEmpty()) Stand_zeigen(entered);
}

void PA_Koben::Stand_zeigen(const QString& entered) {
    if (entered.trimmed().compare(u"heute", Qt::CaseInsensitive) == 0) return Zu_heute();
    const QString text = Datum_ergaenzen(entered.trimmed(), m_heutiges ? m_heutiges->today : koben.Heute);
    const QDate day = Ist_Datum(text) ? Datum_aus_Text(text) : QDate();
    if (!day.isValid())
        return koben.message(
            QStringLiteral("Der Stand kann nicht gezeigt werden, weil „%1“ kein Datum ist. Bitte geben "
                           "Sie einen Tag wie 03.05.2026 ein.")
                .arg(entered.trimmed()));
    const std::vector<qint64> marked = idsOf(datali, datali.markedRows());
    const qint64 current = datali.row() > 0 ? datali.integer(datali.row(), datali.columnOf(u"ID")) : 0;
    auto folder = std::make_unique<PrivateFolder>(koben.platform.userFolder(), Standordner);
    const auto view = Stand_bilden(day, *folder);
    if (!view) return;
    if (!m_heutiges)
        m_heutiges.reset(new Heutiges{nullptr,
                                      koben.Datenbankpfad,
                                      koben.Heute,
                                      koben.Hauptdatenbank,
                                      {optianzeige.selected(), optiverkauft.selected(), optisauen.selected()},
                                      marked,
                                      current,
                                      koben.Status_neu_berechnen});
    koben.Stand = day;
    koben.notWritable = refusal(day);
    koben.Heute = Datum_als_Anzeige(day);
    koben.Datenbankpfad = folder->file(QStringLiteral("koben2.mdb"));
    verbinden();
    koben.Hauptdatenbank = m_db;
    std::swap(m_heutiges->copy, folder);  // the copy shown so far goes once nothing works on it
    Stand_kennzeichnen();
    if (!Liste_neu_lesen(marked, current)) Zu_heute();
}

/// Nothing where the user has cancelled.
std::optional<Database> PA_Koben::Stand_bilden(QDate day, const PrivateFolder& folder) {
    const WaitCursor wait(koben);
    Progress progress(koben, QStringLiteral("Der Stand vom %1 wird hergestellt ...").arg(Datum_als_Anzeige(day)), 100);
    return koben.workspace.view(
        m_heutiges ? m_heutiges->path : koben.Datenbankpfad, folder.file(QStringLiteral("koben2.mdb")), refusal(day),
        [&](Database& copy, const FileProgress& go) { return Tagesstand_bilden(copy, koben, day, go); },
        [&](int percent) { return progress.step(percent); });
}

void PA_Koben::Zu_heute() {
    if (!m_heutiges) return;
    const auto filter = m_heutiges->filter;
    const auto marked = m_heutiges->marked;
    const qint64 current = m_heutiges->current;
    Stand_verlassen();
    optianzeige.select(filter[0]);
    optiverkauft.select(filter[1]);
    optisauen.select(filter[2]);
    if (!Liste_neu_lesen(marked, current)) datali.clear();  // rows of another day must not stand for today's
}

/// Works on the herd as it is again; the list is not read.
void PA_Koben::Stand_verlassen() {
    if (!m_heutiges) return;
    const auto before = std::move(m_heutiges);
    koben.Stand = {};
    koben.notWritable.clear();
    koben.Heute = before->today;
    koben.Datenbankpfad = before->path;
    koben.Status_neu_berechnen = before->statusDue;
    verbinden();
    koben.Hauptdatenbank = m_db;
    Stand_kennzeichnen();
}

void PA_Koben::Stand_kennzeichnen() {
    const bool other = koben.Stand.isValid();
    standhinweis.setText(other
                             ? koben.Standtext() + QStringLiteral(", nur zum Ansehen: Liste, Berichte und alle Fenster "
                                                                  "zeigen die Herde am Ende dieses Tages.")
                             : QString());
    standhinweis.setVisible(other);
    comheute.setVisible(other);
    allow({"XB_heute"}, other);
    if (captionChanged) captionChanged();
}

/// Reads the list of the other database; the animals that it shows too are marked and current as before. False where it
/// was cancelled.
bool PA_Koben::Liste_neu_lesen(const std::vector<qint64>& marked, qint64 current) {
    Text1.setText({});
    datenschweinelesen();
    if (m_gelesen.isEmpty()) return false;
    Tiere_zeigen(marked, current);
    return true;
}

}  // namespace koben
