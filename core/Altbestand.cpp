// What lies in an old database.
#include "core/Altbestand.h"

#include <QHash>
#include <QSet>
#include <algorithm>

#include "core/Aktionsnamen.h"
#include "core/Altfelder.h"

namespace koben {
namespace {

constexpr qint64 rowsBetweenReports = 64;

/// Gathers what a table holds.
class Sichtung {
public:
    Sichtung(const Database& db, const QString& path, Altversion version, const TakeoverProgress& go)
        : m_db(db),
          m_version(version),
          m_go(go),
          m_file(path, version == Altversion::Koben1 ? alttabellen() : QStringList(),
                 [this] { return m_go(m_percent); }) {}

    std::optional<std::vector<Altfund>> run() {
        while (const OldTable* table = m_file.nextTable())
            if (!look(*table)) return std::nullopt;
        nameMissing();
        return std::move(m_found);
    }

private:
    bool goesOn() {
        const qint64 read = m_file.rowsRead();
        if (read % rowsBetweenReports != 0) return true;
        m_percent = static_cast<int>(std::min<qint64>(read * 100 / std::max<qint64>(m_file.rowsTold(), 1), 100));
        return m_go(m_percent);
    }

    bool look(const OldTable& table) {
        const Alttabelle* known = alttabelle(table.name);
        Altfelder fields(m_db, table,
                         known && known->buchung && m_version == Altversion::Koben1
                             ? QStringList(QStringLiteral("Kennung"))
                             : QStringList());
        Altfund found{known ? QString::fromUtf8(known->was) : QStringLiteral("Tabelle ") + table.name, 0, {}, {}, {}};
        m_hints.clear();
        m_kinds.clear();
        m_homelessRows = m_tooLong = 0;
        const bool animals = known == Alttabellen;
        const int art = table.columnOf(u"Art"), date = table.columnOf(u"Datum"), id = table.columnOf(u"ID"),
                  link = table.columnOf(u"Kennung");
        const bool farm = table.name.compare(QStringLiteral("Ferkelverkauf"), Qt::CaseInsensitive) == 0;
        while (m_file.nextRow()) {
            if (!goesOn()) return false;
            m_tooLong += fields.tooLong(fields.values(m_file.row()));
            ++found.anzahl;
            if (animals) note(art, id);
            if (known && known->buchung) {
                noteLink(link, farm);
                noteDate(found, date);
            }
        }
        fields.losses().rows = m_file.rowsLost();
        hint(table, fields);
        found.hinweis = m_hints.join(QStringLiteral("; "));
        m_seen += table.name.toLower();
        if (animals)
            addKinds(found);
        else
            m_found.push_back(found);
        return true;
    }

    void note(int art, int id) {
        OldLosses losses;
        ++m_kinds[art < 0 ? QString() : m_file.row().value(art, losses).toText().trimmed()];
        if (id >= 0) m_animals.insert(m_file.row().value(id, losses).toInt());
    }

    void noteDate(Altfund& found, int column) const {
        OldLosses losses;
        const QDate day = column < 0 ? QDate() : m_file.row().value(column, losses).toDate();
        if (!day.isValid()) return;
        if (!found.von.isValid() || day < found.von) found.von = day;
        if (!found.bis.isValid() || day > found.bis) found.bis = day;
    }

    /// The predecessor's bookings follow their animal; of those without one only the farm's trade comes along.
    void noteLink(int column, bool farm) {
        if (m_version != Altversion::Koben1) return;
        OldLosses losses;
        const Value link = column < 0 ? Value() : m_file.row().value(column, losses);
        if (link.isNull() || !(m_animals.contains(link.toInt()) || (farm && link.toInt() == 0))) ++m_homelessRows;
    }

    void hint(const OldTable& table, Altfelder& fields) {
        if (!table.readable) m_hints += QStringLiteral("nicht lesbar");
        if (const QString lost = lossText(fields.losses()); !lost.isEmpty()) m_hints += lost;
        if (m_homelessRows > 0)
            m_hints += counted(m_homelessRows, "Buchung gehört zu keinem Tier und kommt nicht mit",
                               "Buchungen gehören zu keinem Tier und kommen nicht mit");
        if (m_tooLong > 0) m_hints += counted(m_tooLong, "Text ist", "Texte sind") + QStringLiteral(" zu lang");
        if (!m_db.tables().contains(table.name, Qt::CaseInsensitive))
            m_hints += QStringLiteral("gehört nicht zu KOBEN und kommt nicht mit");
        else if (!fields.homeless().isEmpty())
            m_hints += QStringLiteral("ohne Platz: ") + fields.homeless().join(QStringLiteral(", "));
    }

    /// The animals a line each kind; what is to be said of the table stands at the first.
    void addKinds(const Altfund& all) {
        static const std::pair<const char*, const char*> kinds[] = {
            {"Sau", "Sauen"}, {"Eber", "Eber"}, {"Mast", "Masttiere"}, {"Ferkel", "Ferkel"}};
        qint64 rest = all.anzahl;
        QString hint = all.hinweis;
        const auto add = [&](const char* was, qint64 count) {
            m_found.push_back({QString::fromUtf8(was), count, {}, {}, std::exchange(hint, QString())});
            rest -= count;
        };
        for (const auto& [kind, was] : kinds) add(was, m_kinds.value(QString::fromUtf8(kind)));
        if (rest > 0) add("Tiere ohne bekannte Art", rest);
    }

    void nameMissing() {
        for (const Alttabelle& table : Alttabellen)
            if (!m_seen.contains(QString::fromUtf8(table.name).toLower()))
                m_found.push_back({QString::fromUtf8(table.was), 0, {}, {}, QStringLiteral("die Tabelle fehlt")});
    }

    const Database& m_db;
    Altversion m_version;
    const TakeoverProgress m_go;
    int m_percent = 0;
    OldFile m_file;
    std::vector<Altfund> m_found;
    QSet<qint64> m_animals;
    QSet<QString> m_seen;
    QHash<QString, qint64> m_kinds;
    QStringList m_hints;
    qint64 m_homelessRows = 0, m_tooLong = 0;
};

}  // namespace

std::optional<std::vector<Altfund>> findAltbestand(const Database& db, const QString& path, Altversion version,
                                                   const TakeoverProgress& go) {
    return unlessGivenUp(go, [&](const TakeoverProgress& on) { return Sichtung(db, path, version, on).run(); });
}

}  // namespace koben
