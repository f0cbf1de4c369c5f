// Random herds: rounds of changes by the program and by other SQLite tools. After each the engine, which derives what
// its change log names, is held against the naive walk over a copy of the file. KOBEN_ROBUST_RUNS makes it long.
#include <sqlite3.h>

#include <random>

#include "core/Einstellungen.h"
#include "core/PZ_Koben_Subs.h"
#include "core/Zyklusdaten.h"
#include "tests/core/Hof.h"
#include "tests/core/NaiverZyklus.h"

namespace koben {
namespace {

// Statements with places to fill: T table of bookings, D day, K animal, I booking, N number of a boar, Z piglets,
// J result of a check, A kind, S status asked or not, F a derived field. Everything happens within few days, with
// holes and stray rows.
const char* const Own[] = {
    "insert into Belegung(Datum, Ebernr, Kennung) values ({D}, {N}, {K})",
    "insert into Belegung(Datum, Ebernr, Kennung) values ({D}, {N}, {K})",
    "insert into Trächtigkeit(Datum, Trächtig, Kennung) values ({D}, {J}, {K})",
    "insert into Trächtigkeit(Datum, Trächtig, Kennung) values ({D}, {J}, {K})",
    "insert into Ferkelung(Datum, Ferkel_Gesamt, Ferkel_Lebendig, Kennung) values ({D}, {Z}, {Z}, {K})",
    "insert into Absetzung(Datum, Kennung) values ({D}, {K})",
    "insert into Sauen(Art, Nummer, Statusabfrage, Abgangsdatum, Status, {F}, Anz_Belegungen, Anz_Ferkelungen) values "
    "({A}, {N}, {S}, Null, 'x', {D}, {Z}, {Z})",
    "update Sauen set Nummer = {N} where ID = {K}",
    "update Sauen set Art = {A} where ID = {K}",
    "update Sauen set Abgangsdatum = {D}, Statusabfrage = {S} where ID = {K}",
    "update Sauen set Abgangsdatum = Null where ID = {K}",
    "update Sauen set {F} = {D}, Anz_Ferkel_Lebend = {Z}, Status = 'B' where ID = {K}",
    "update Belegung set Ebernr = {N} where Kennung = {K}",
    "update {T} set Kennung = {K} where ID = {I}",
    "update {T} set Datum = {D} where ID = {I}",
    "update Ferkelung set Ferkel_Gesamt = {Z} where ID = {I}",
    "update Trächtigkeit set Trächtig = {J} where ID = {I}",
    "delete from {T} where ID = {I}",
    "delete from {T} where Kennung = {K}",
    "delete from Sauen where ID = {K}"};

// What another tool may do besides. It leaves alone the texts that have a sort key.
const char* const Foreign[] = {
    "INSERT INTO {T}(Datum, Kennung) VALUES ({D}, {K})",
    "INSERT OR REPLACE INTO {T}(ID, Datum, Kennung) VALUES ({I}, {D}, {K})",
    "INSERT OR REPLACE INTO Belegung(ID, Datum, Kennung, Ebernr) VALUES ({I}, {D}, {K}, {N})",
    "INSERT OR REPLACE INTO Sauen(ID, Status, {F}) VALUES ({K}, 'S', {D})",
    "INSERT OR IGNORE INTO Sauen(ID, Anz_Belegungen) VALUES ({K}, {Z})",
    "INSERT OR IGNORE INTO Belegung(ID, Datum, Kennung, Ebernr) VALUES ({I}, {D}, {K}, {N})",
    "UPDATE OR IGNORE {T} SET ID = {I} WHERE ID = {I}",
    "UPDATE OR REPLACE {T} SET ID = {I} WHERE ID = {I}",
    "UPDATE OR REPLACE Belegung SET ID = {I}, Ebernr = {N}, Kennung = {K} WHERE ID = {I}",
    "UPDATE OR REPLACE Sauen SET ID = {K} WHERE ID = {K}",
    "UPDATE Sauen SET {F} = {D}, Status = {J}, Anz_Ferkelungen = {Z} WHERE ID = {K}",
    "UPDATE Belegung SET Kennung = {K}, Ebernr = {N} WHERE ID = {I}",
    "UPDATE OR IGNORE Trächtigkeit SET ID = {I} + 1000 WHERE ID = {I}",
    "DELETE FROM {T} WHERE Kennung = {K} OR ID = {I}",
    "DELETE FROM Sauen WHERE ID = {K}"};
const char* const Rare[] = {"DROP TRIGGER IF EXISTS koben_log_werte_Belegung_u",
                            "DROP TRIGGER IF EXISTS koben_log_status_Sauen_i",
                            "DROP TRIGGER IF EXISTS koben_log_deckungen_d", "VACUUM", "REINDEX"};

QStringList rowsOf(const Database& db) {
    const Table table = db.table("select * from Sauen order by ID");
    QStringList rows;
    for (int row = 0; row < table.rowCount(); ++row) {
        QString text;
        for (int c = 0; c < table.columnCount(); ++c)
            if (!table.isNull(row, c)) text += table.field(c).name + u'=' + table.text(row, c) + u' ';
        rows += text;
    }
    return rows;
}

QStringList cellsOf(const Tierstand& animal) {
    const Zykluswerte& w = animal.werte;
    QStringList cells{QString::number(animal.tier)};
    for (const qint64 number : {w.belegungen, w.ferkelungen, w.gesamt, w.lebend})
        cells += number == NoNumber ? QString() : QString::number(number);
    for (const qint32 day : {w.lBelegung, w.lFerkelung, w.lTraechtigkeit, w.lAbsetzung, w.nBelegung, w.nFerkelung})
        cells += Datum_als_Anzeige(day == 0 ? QDate() : QDate::fromJulianDay(day));
    return cells += kode(animal.status);
}

class RandomHerd {
public:
    explicit RandomHerd(unsigned seed) : m_random(seed) { Einstellungen_vorgeben(v, 2026); }

    void byProgram(int count, const char* statement = nullptr) {
        Transaction action(farm.db);
        for (int i = 0; i < count; ++i) work(statement != nullptr ? statement : oneOf(Own));
        action.commit();
    }
    /// Another tool at work while the program has the file open.
    void byOthers(int count) {
        sqlite3* file = nullptr;
        ASSERT_EQ(sqlite3_open(farm.path().toUtf8().constData(), &file), SQLITE_OK);
        m_foreign = true;
        if (dice(3) == 0) sqlite3_exec(file, "PRAGMA recursive_triggers = ON", nullptr, nullptr, nullptr);
        for (int i = 0; i < count; ++i) {
            const QString sql = filled(dice(40) == 0 ? oneOf(Rare) : oneOf(Foreign));
            EXPECT_EQ(sqlite3_exec(file, sql.toUtf8().constData(), nullptr, nullptr, nullptr), SQLITE_OK)
                << sql.toStdString() << ": " << sqlite3_errmsg(file);
            m_history += sql;
        }
        m_foreign = false;
        sqlite3_close(file);
    }
    void round(int count) {
        m_history.clear();
        if (dice(6) == 0) v.Konfig_Zahl[static_cast<size_t>(dice(2))] = static_cast<qint16>(30 + dice(3));
        if (dice(4) != 0) byProgram(count);
        if (dice(2) == 0) byOthers(count);
        if (dice(6) == 0)
            reopened([&] {
                if (dice(2) == 0) otherLog();
            });
        if (dice(6) == 0) farm.workspace.copy(farm.path(), kept());
        if (dice(9) == 0 && QFile::exists(kept())) reopened([&] { farm.workspace.replace(kept(), farm.path()); });
        if (dice(4) == 0) byProgram(count / 2);
        compare();
    }
    void compare() {
        const QString copy = farm.folder() + QStringLiteral("/kopie.mdb");
        farm.workspace.copy(farm.path(), copy);
        const bool values = dice(8) != 0, status = dice(4) != 0;
        const auto run = [&] {
            if (values) Werte_berechnen(farm.db, v);
            if (status) statussetzen(farm.db);
        };
        if (dice(5) == 0) {
            const FailingStatement fault(1 + dice(30));
            try {
                run();
            } catch (const DatabaseError&) {
            }
        }
        run();
        Workspace other;
        const Database naive = other.open(copy);
        if (values) naiveValues(naive, v);
        if (status) naiveStatus(naive);
        const QStringList is = rowsOf(farm.db), should = rowsOf(naive);
        ASSERT_EQ(is.size(), should.size());
        for (qsizetype i = 0; i < is.size(); ++i) ASSERT_EQ(is[i], should[i]) << m_history.join(u'\n').toStdString();
    }
    /// The state as of a day against the walk over a copy without what came later.
    void compareState(qint32 lastDay) {
        const QString copy = farm.folder() + QStringLiteral("/stand.mdb");
        farm.workspace.copy(farm.path(), copy);
        Workspace other;
        Database past = other.open(copy);
        const QString later =
            QStringLiteral(" where %1 > #%2#")
                .arg(QStringLiteral("%1"), QDate::fromJulianDay(lastDay).toString(QStringLiteral("MM/dd/yyyy")));
        for (const char* table : {"Belegung", "Ferkelung", "Absetzung", "Trächtigkeit"})
            past.execute(QStringLiteral("delete from ") + QString::fromUtf8(table) + later.arg(u"Datum"));
        past.execute(QStringLiteral("update Sauen set Abgangsdatum = Null") + later.arg(u"Abgangsdatum"));
        naiveValues(past, v);
        naiveStatus(past);
        const Table should = past.table(
            QStringLiteral("select ID, Anz_Belegungen, Anz_Ferkelungen, Anz_Ferkel_Gesamt, Anz_Ferkel_Lebend, "
                           "L_Belegung, L_Ferkelung, L_Trächtigkeit, L_Absetzung, N_Belegung, N_Ferkelung, Status "
                           "from Sauen order by ID"));
        const std::vector<Tierstand> is = readCycle(farm.db, Zyklusvorgaben(v, lastDay));
        ASSERT_EQ(is.size(), static_cast<size_t>(should.rowCount()));
        for (int row = 0; row < should.rowCount(); ++row) {
            const QStringList cells = cellsOf(is[static_cast<size_t>(row)]);
            for (int c = 0; c < should.columnCount(); ++c)
                ASSERT_EQ(cells[c], should.text(row, c)) << should.field(c).name.toStdString() << " of " << row;
        }
    }
    int dice(int n) { return static_cast<int>(m_random() % static_cast<unsigned>(n)); }

    Hof farm;
    Variablen v;

private:
    template <size_t n>
    const char* oneOf(const char* const (&list)[n]) {
        return list[static_cast<size_t>(dice(int{n}))];
    }
    QString kept() const { return farm.folder() + QStringLiteral("/kept.mdb"); }
    void reopened(const std::function<void()>& meanwhile) {
        farm.db.close();
        farm.workspace.closeAll();
        meanwhile();
        farm.db = farm.workspace.open(farm.path());
        m_history += QStringLiteral("(neu geöffnet)");
    }
    /// A log whose table was made otherwise, as by another version.
    void otherLog() {
        sqlite3* file = nullptr;
        ASSERT_EQ(sqlite3_open(farm.path().toUtf8().constData(), &file), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(file, "ALTER TABLE koben_log_status ADD COLUMN seit TEXT", nullptr, nullptr, nullptr),
                  SQLITE_OK);
        sqlite3_close(file);
    }
    QString word(QChar place) {
        static const QHash<QChar, QStringList> choices = {
            {u'T', {"Belegung", "Ferkelung", "Absetzung", "Trächtigkeit"}},
            {u'N', {"'E1'", "'e1'", "'E1 '", "'E2'", "'Ä'", "'A'", "''", "Null"}},
            {u'A', {"'Sau'", "'Sau'", "'Sau'", "'Eber'", "'Mast'", "Null"}},
            {u'Z', {"12", "0", "7", "Null"}},
            {u'J', {"'J'", "'N'", "''", "Null"}},
            {u'S', {"Null", "''", "'N'", "'J'"}},
            {u'F', {"L_Belegung", "L_Ferkelung", "L_Trächtigkeit", "L_Absetzung", "N_Belegung", "N_Ferkelung"}},
            {u'K', {"99999", "1", "0", "Null"}}};  // of nobody, the last two not by another tool
        const QStringList words = choices[place];
        switch (place.unicode()) {
            case u'D':
                if (dice(20) == 0) return QStringLiteral("Null");
                return (m_foreign ? QStringLiteral("'2026-01-%1'") : QStringLiteral("#1/%1/2026#"))
                    .arg(1 + dice(28), 2, 10, QChar(u'0'));
            case u'I':
                return QString::number(1 + dice(40));
            case u'K':
                if (dice(30) == 0) return words[dice(m_foreign ? 2 : 4)];
                return QString::number(1 + dice(50));
            default:
                return words[dice(static_cast<int>(words.size()))];
        }
    }
    QString filled(const char* statement) {
        QString text = QString::fromUtf8(statement);
        for (qsizetype at = 0; (at = text.indexOf(u'{', at)) >= 0;) text.replace(at, 3, word(text[at + 1]));
        return text;
    }
    void work(const char* statement) {
        m_history += filled(statement);
        farm.sql(m_history.last());
    }

    std::mt19937 m_random;
    bool m_foreign = false;
    QStringList m_history;  ///< of the round
};

/// KOBEN_ROBUST_RUNS, or `usual` where the environment does not name it.
int runs(int usual) {
    const int wanted = qEnvironmentVariableIntValue("KOBEN_ROBUST_RUNS");
    return wanted > 0 ? wanted : usual;
}

TEST(ZyklusZufall, WasChangedIsDerivedAsByAWholeWalk) {
    for (int seed = 1; seed <= runs(3) && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        RandomHerd herd(static_cast<unsigned>(seed));
        herd.byProgram(40, Own[6]);
        herd.byProgram(200);
        herd.compare();
        for (int round = 0; round < runs(12) && !testing::Test::HasFailure(); ++round) {
            SCOPED_TRACE(testing::Message() << "round " << round);
            herd.round(round % 3 == 0 ? 40 : 4);
        }
    }
}

TEST(ZyklusZufall, TheStateOfADayIsThatWithoutWhatCameLater) {
    const qint32 january = static_cast<qint32>(QDate(2026, 1, 1).toJulianDay());
    for (int seed = 1; seed <= runs(4) && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        RandomHerd herd(static_cast<unsigned>(seed));
        herd.byProgram(40, Own[6]);
        herd.byProgram(300);
        herd.byOthers(20);
        const QStringList before = rowsOf(herd.farm.db);
        for (const qint32 day : {january - 1, january + herd.dice(28), january + herd.dice(28), january + 400})
            herd.compareState(day);
        EXPECT_EQ(rowsOf(herd.farm.db), before);
    }
}

/// More animals with changes than are derived one by one.
TEST(ZyklusZufall, SoAreVeryManyChanges) {
    RandomHerd herd(99);
    herd.byProgram(33, Own[6]);
    for (int i = 0; i < 6; ++i)
        herd.farm.sql("insert into Sauen(Art, Nummer, L_Belegung) select Art, Nummer, L_Belegung from Sauen");
    Werte_berechnen(herd.farm.db, herd.v);
    statussetzen(herd.farm.db);
    herd.byProgram(200);
    herd.farm.sql("insert into Ferkelung(Datum, Ferkel_Gesamt, Kennung) select #1/5/2026#, 9, ID from Sauen");
    herd.farm.sql("update Sauen set Abgangsdatum = #1/9/2026#, L_Absetzung = #1/9/2026# where ID > 700");
    herd.compare();
    herd.farm.sql("delete from Ferkelung where Kennung < 40");
    herd.compare();
}

/// What the change log holds: what is noted, on which basis it was settled, the services of each boar.
QStringList logOf(const QString& path) {
    sqlite3* file = nullptr;
    sqlite3_stmt* rows = nullptr;
    sqlite3_open(path.toUtf8().constData(), &file);
    sqlite3_prepare_v2(
        file,
        "SELECT zweck || ':' || ifnull(basis, '-') || offen FROM koben_log_stand UNION ALL SELECT 'w' || "
        "id FROM koben_log_werte UNION ALL SELECT 's' || id FROM koben_log_status UNION ALL SELECT "
        "ebernr || '=' || anzahl FROM koben_log_deckungen ORDER BY 1",
        -1, &rows, nullptr);
    QStringList lines;
    while (sqlite3_step(rows) == SQLITE_ROW)
        lines += QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(rows, 0)));
    sqlite3_finalize(rows);
    sqlite3_close(file);
    return lines;
}

/// Beyond a thousand changes the log's triggers are stopped meanwhile: values and log are those of a naive walk and of
/// a log made anew, also after a failure on the way, and what comes later is noted.
TEST(ZyklusZufall, TheLogIsRightAfterAPassThatStopsIt) {
    RandomHerd herd(7);
    Hof& farm = herd.farm;
    herd.byProgram(1100, "insert into Sauen(Art, Nummer) values ('Sau', 'S')");
    farm.sql("insert into Belegung(Datum, Ebernr, Kennung) select #1/5/2026#, 'E1', ID from Sauen");
    const QString anew = farm.folder() + QStringLiteral("/neu.mdb");
    const auto derive = [&](const Database& db) { return Werte_berechnen(db, herd.v) && statussetzen(db); };
    for (const qint16 days : {116, 110, 111}) {
        SCOPED_TRACE(days);
        herd.v.Konfig_Zahl[0] = days;
        const QStringList before = logOf(farm.path());
        if (days == 110) {
            const FailingStatement fault(700);
            EXPECT_THROW(derive(farm.db), DatabaseError);
            EXPECT_EQ(logOf(farm.path()), before);
        }
        ASSERT_TRUE(derive(farm.db));
        Workspace other;
        farm.workspace.copy(farm.path(), anew);
        sqlite3* file = nullptr;
        sqlite3_open(anew.toUtf8().constData(), &file);
        sqlite3_exec(file, "DROP TRIGGER koben_log_deckungen_d", nullptr, nullptr, nullptr);
        sqlite3_close(file);
        const Database copy = other.open(anew);
        naiveValues(copy, herd.v);
        naiveStatus(copy);
        EXPECT_EQ(rowsOf(farm.db), rowsOf(copy));
        derive(copy);
        EXPECT_EQ(logOf(farm.path()), logOf(anew));
        farm.sql("update Sauen set L_Belegung = #1/6/2026# where ID = 7");
        EXPECT_TRUE(logOf(farm.path()).contains(u"w7") && logOf(farm.path()).contains(u"s7"));
    }
}

TEST(ZyklusZufall, ASecondRunWritesNothing) {
    RandomHerd herd(4);
    herd.byProgram(30, Own[6]);
    herd.byProgram(150);
    for (const char* table : {"Belegung", "Ferkelung", "Absetzung", "Trächtigkeit"})
        herd.farm.sql(QStringLiteral("delete from %1 where Kennung = 99999 or Kennung = 0 or Kennung not in (select ID "
                                     "from Sauen)")
                          .arg(QString::fromUtf8(table)));
    for (int run = 0; run < 2; ++run) {
        std::optional<NoWrites> guard;
        if (run == 1) guard.emplace();
        Werte_berechnen(herd.farm.db, herd.v);
        statussetzen(herd.farm.db);
    }
}

}  // namespace
}  // namespace koben
