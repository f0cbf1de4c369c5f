#include "store/Journal.h"

#include <algorithm>

#include "store/Collation.h"
#include "store/IsoDate.h"
#include "store/JournalRecorder.h"

// koben_verlauf        an entry a row: its time, kind (0 action, 1 taken back, 2 carried out again), name, form, number
//                      of rows; zurueck: by which entry it was taken back; ziel: the entries that it concerns, parted
//                      by commas; zaehler: counters before and after; bereiche: what it touched; daten: the rows
// koben_verlauf_felder the fields of a table, to which the entries refer
// koben_verlauf_stand  how long, in years, and how much, in megabytes, is kept
namespace koben {

using journal::Bytes;
using journal::Reader;
using journal::Runs;

struct Journal::Reach {
    Runs animals;
    std::map<QString, Runs> rows;  ///< by table

    bool meets(const Reach& other) const {
        if (animals.meets(other.animals)) return true;
        return std::any_of(rows.begin(), rows.end(), [&](const auto& pair) {
            const auto same = other.rows.find(pair.first);
            return same != other.rows.end() && same->second.meets(pair.second);
        });
    }
};

struct Journal::Seen {
    qint64 number = 0;
    Kind kind = Kind::Action;
    Reach reach = {};
};

namespace {

struct TableText {
    const char* name;
    const char* sql;
};
constexpr TableText tables[] = {
    {"koben_verlauf",
     "CREATE TABLE koben_verlauf(nr INTEGER PRIMARY KEY, zeit TEXT NOT NULL, art INTEGER NOT NULL, name TEXT NOT NULL, "
     "fenster TEXT NOT NULL, zeilen INTEGER NOT NULL, zurueck INTEGER, ziel TEXT NOT NULL, zaehler BLOB, bereiche "
     "BLOB, "
     "daten BLOB)"},
    {"koben_verlauf_felder",
     "CREATE TABLE koben_verlauf_felder(id INTEGER PRIMARY KEY, tabelle TEXT NOT NULL, felder TEXT NOT NULL)"},
    {"koben_verlauf_stand", "CREATE TABLE koben_verlauf_stand(jahre INTEGER NOT NULL, megabyte INTEGER NOT NULL)"}};

void run(Connection& connection, const char* sql, const std::vector<Value>& values) {
    const StatementHandle s = prepare(connection.file(), sql);
    for (size_t i = 0; i < values.size(); ++i) bindValue(s.get(), static_cast<int>(i) + 1, values[i]);
    connection.aboutToWrite(QString::fromLatin1(sql));
    if (sqlite3_step(s.get()) != SQLITE_DONE) throwSqlite(connection.file(), QString::fromLatin1(sql));
}

void bindBytes(sqlite3_stmt* s, int place, const Bytes& bytes) {
    if (bytes.empty())
        sqlite3_bind_null(s, place);
    else
        sqlite3_bind_blob64(s, place, bytes.data(), bytes.size(), SQLITE_STATIC);
}

QString joined(const std::vector<qint64>& numbers) {
    QStringList texts;
    for (const qint64 number : numbers) texts.append(QString::number(number));
    return texts.join(u',');
}

std::vector<qint64> numbersIn(const QString& text) {
    std::vector<qint64> result;
    for (const QString& part : text.split(u',', Qt::SkipEmptyParts)) result.push_back(part.toLongLong());
    return result;
}

std::vector<qint64> concerned(Connection& connection, qint64 number) {
    const StatementHandle s = prepare(connection.file(), "SELECT ziel FROM koben_verlauf WHERE nr = ?1");
    bindValue(s.get(), 1, number);
    return sqlite3_step(s.get()) == SQLITE_ROW ? numbersIn(columnValue(s.get(), 0, Type::Text).toText())
                                               : std::vector<qint64>();
}

/// An entry counts no more, or again; what it took back then counts again, or no more.
void setTakenBack(Connection& connection, qint64 number, qint64 by) {
    run(connection, "UPDATE koben_verlauf SET zurueck = nullif(?1, 0) WHERE nr = ?2", {by, number});
    for (const qint64 other : concerned(connection, number)) setTakenBack(connection, other, by == 0 ? number : 0);
}

qint64 insert(Connection& connection, const QString& name, Journal::Kind kind, const std::vector<qint64>& of,
              const JournalRecord& record) {
    static const std::string sql =
        "INSERT INTO koben_verlauf(zeit, art, name, fenster, zeilen, ziel, zaehler, bereiche, daten) VALUES (?1, ?2, "
        "?3, ?4, ?5, ?6, ?7, ?8, ?9)";
    const QDateTime now = connection.now();
    DateTime time = DateTime::of(now.date());
    time.second = now.time().msecsSinceStartOfDay() / 1000;
    const Loan loan(connection, sql);
    const std::vector<Value> values = {time,      static_cast<int>(kind), name, connection.window(), record.rows,
                                       joined(of)};
    int place = 0;
    for (const Value& value : values) bindValue(loan.get(), ++place, value);
    bindBytes(loan.get(), ++place, record.counters);
    bindBytes(loan.get(), ++place, record.reach);
    static const Bytes none;
    bindBytes(loan.get(), ++place, record.known ? record.data : none);  // bound where it stands
    const QString text = QStringLiteral("insert into koben_verlauf");
    connection.aboutToWrite(text);
    connection.step(loan.get(), text);
    return sqlite3_last_insert_rowid(connection.file());
}

}  // namespace

const RowChange::Cell* RowChange::cell(QStringView field) const {
    const auto found =
        std::find_if(cells.begin(), cells.end(), [&](const Cell& c) { return fields->at(c.field) == field; });
    return found == cells.end() ? nullptr : &*found;
}

void Journal::addTables(Connection& connection) {
    sqlite3* file = connection.file();
    if (number(file,
               "SELECT count(*) FROM sqlite_master WHERE type = 'table' AND name IN ('koben_verlauf', "
               "'koben_verlauf_felder', 'koben_verlauf_stand')") == static_cast<qint64>(std::size(tables)))
        return;
    for (const TableText& t : tables)
        if (number(file, std::string("SELECT count(*) FROM sqlite_master WHERE name = '") + t.name + "'") == 0)
            connection.writeNative(t.sql, QString::fromLatin1(t.name));
}

void Journal::note(Connection& connection, const QString& name, Kind kind, const std::vector<qint64>& of) {
    JournalRecorder* recorder = JournalRecorder::of(connection);
    if (recorder == nullptr || !recorder->recording()) return;
    const JournalRecord record = recorder->finish();
    if (kind == Kind::Action && record.known && record.rows == 0) return;
    const qint64 own = insert(connection, name, kind, of, record);
    for (const qint64 other : of) setTakenBack(connection, other, own);
}

void Journal::need(const Database& database, const QString& table, const QString& word) {
    if (JournalRecorder* recorder = JournalRecorder::of(*database.m_connection)) recorder->need(table, word);
}

QString Journal::nameField(const QString& table) { return journal::nameField(table); }

void Journal::setOn(bool on) const { listen(*m_connection, on); }

void Journal::listen(Connection& connection, bool on) {
    connection.setListener(nullptr);
    if (on) connection.setListener(std::make_unique<JournalRecorder>(connection));
}

// ------------------------------------------------------------------------------------------------------------- reading

std::vector<Journal::Entry> Journal::select(const std::string& condition, qint64 most) const {
    std::vector<Entry> result;
    const StatementHandle s = prepare(
        m_connection->file(),
        "SELECT nr, zeit, art, name, fenster, zeilen, zurueck, ziel, daten IS NOT NULL FROM koben_verlauf WHERE " +
            condition + " ORDER BY nr DESC LIMIT " + std::to_string(most));
    const auto text = [&](int column) { return columnValue(s.get(), column, Type::Text).toText(); };
    while (sqlite3_step(s.get()) == SQLITE_ROW) {
        Entry& e = result.emplace_back();
        e.number = sqlite3_column_int64(s.get(), 0);
        e.time =
            parseIso(reinterpret_cast<const char*>(sqlite3_column_text(s.get(), 1)), sqlite3_column_bytes(s.get(), 1))
                .value_or(DateTime());
        e.kind = static_cast<Kind>(sqlite3_column_int(s.get(), 2));
        e.name = text(3);
        e.window = text(4);
        e.rows = sqlite3_column_int64(s.get(), 5);
        e.takenBackBy = sqlite3_column_int64(s.get(), 6);
        e.of = numbersIn(text(7));
        e.known = sqlite3_column_int(s.get(), 8) != 0;
    }
    return result;
}

std::vector<Journal::Entry> Journal::entries(qint64 most) const { return select("1", most); }

std::optional<Journal::Entry> Journal::entry(qint64 number) const {
    const auto found = select("nr = " + std::to_string(number), 1);
    return found.empty() ? std::nullopt : std::optional(found.front());
}

std::optional<Journal::Entry> Journal::newest(Kind kind) const {
    const auto found = select("zurueck IS NULL AND art = " + std::to_string(static_cast<int>(kind)), 1);
    return found.empty() ? std::nullopt : std::optional(found.front());
}

bool Journal::anyBehind(Kind kind, qint64 number) const {
    return !select("art = " + std::to_string(static_cast<int>(kind)) + " AND nr > " + std::to_string(number), 1)
                .empty();
}

std::optional<Journal::Entry> Journal::unknownBehind(qint64 number) const {
    const auto found = select("zurueck IS NULL AND art = 0 AND daten IS NULL AND nr > " + std::to_string(number), 1);
    return found.empty() ? std::nullopt : std::optional(found.front());
}

const Journal::Layout& Journal::layout(qint64 id) const {
    Layout& known = m_layouts[id];
    if (!known.table.isEmpty()) return known;
    const StatementHandle s =
        prepare(m_connection->file(), "SELECT tabelle, felder FROM koben_verlauf_felder WHERE id = ?1");
    bindValue(s.get(), 1, id);
    if (sqlite3_step(s.get()) != SQLITE_ROW)
        throw DatabaseError(DatabaseError::Kind::State,
                            QStringLiteral("Ein Eintrag im Verlauf nennt eine Tabelle, die es nicht mehr gibt."));
    known.table = columnValue(s.get(), 0, Type::Text).toText();
    known.fields = columnValue(s.get(), 1, Type::Text).toText().split(u'\n');
    return known;
}

std::string Journal::blob(const char* field, qint64 number) const {
    const StatementHandle s =
        prepare(m_connection->file(), std::string("SELECT ") + field + " FROM koben_verlauf WHERE nr = ?1");
    bindValue(s.get(), 1, number);
    if (sqlite3_step(s.get()) != SQLITE_ROW) return {};
    return {static_cast<const char*>(sqlite3_column_blob(s.get(), 0)),
            static_cast<size_t>(sqlite3_column_bytes(s.get(), 0))};
}

std::vector<Journal::Seen> Journal::reaches(const std::string& condition) const {
    std::vector<Seen> result;
    const StatementHandle s = prepare(
        m_connection->file(), "SELECT nr, art, bereiche FROM koben_verlauf WHERE " + condition + " ORDER BY nr");
    while (sqlite3_step(s.get()) == SQLITE_ROW) {
        const auto bytes = std::string_view(static_cast<const char*>(sqlite3_column_blob(s.get(), 2)),
                                            static_cast<size_t>(sqlite3_column_bytes(s.get(), 2)));
        Seen& seen = result.emplace_back();
        seen.number = sqlite3_column_int64(s.get(), 0);
        seen.kind = static_cast<Kind>(sqlite3_column_int(s.get(), 1));
        if (bytes.empty()) continue;
        Reader in(bytes);
        seen.reach.animals = Runs::read(in);
        while (!in.atEnd()) {
            const auto id = static_cast<qint64>(in.number());
            seen.reach.rows[layout(id).table] = Runs::read(in);
        }
    }
    return result;
}

/// The entries behind a number that count, but for those that carry out again; some before it may be among them.
const std::vector<Journal::Seen>& Journal::counting(qint64 behind) const {
    if (!m_counting || behind < m_countingBehind || m_writes != m_connection->writes()) {
        m_counting = std::make_shared<std::vector<Seen>>(
            reaches("zurueck IS NULL AND art IN (0, 1) AND nr > " + std::to_string(behind)));
        m_countingBehind = behind;
        m_writes = m_connection->writes();
    }
    return *m_counting;
}

std::vector<qint64> Journal::later(qint64 number, bool reversals) const {
    const auto own = reaches("nr = " + std::to_string(number));
    std::vector<qint64> result;
    if (own.empty()) return result;
    for (const Seen& seen : counting(number))
        if (seen.number > number && (reversals || seen.kind == Kind::Action) && seen.reach.meets(own.front().reach))
            result.push_back(seen.number);
    return result;
}

std::vector<qint64> Journal::touching(const QString& table, qint64 row, qint64 behind) const {
    std::vector<qint64> result;
    for (const Seen& seen : counting(behind)) {
        if (seen.number <= behind || seen.kind != Kind::Action) continue;
        if (const auto rows = seen.reach.rows.find(table); rows != seen.reach.rows.end() && rows->second.contains(row))
            result.push_back(seen.number);
    }
    return result;
}

qint64 Journal::lastToTouch(const QString& table, qint64 row, qint64 behind) const {
    const std::vector<qint64> all = touching(table, row, behind);
    return all.empty() ? 0 : *std::max_element(all.begin(), all.end());
}

qint64 Journal::lastToName(const QString& table, qint64 row, const QString& field, const Value& name,
                           qint64 behind) const {
    qint64 result = 0;
    for (const qint64 number : touching(table, row, behind))
        read(number, [&](const RowChange& change) {
            if (*change.table != table || change.row != row) return true;
            const RowChange::Cell* cell = change.kind == RowChange::Kind::Deleted ? nullptr : change.cell(field);
            if (cell && equalTexts(cell->after.toText(), name.toText())) result = std::max(result, number);
            return false;
        });
    return result;
}

std::vector<qint64> Journal::actionsBehind(qint64 number) const {
    std::vector<qint64> result;
    for (const Seen& seen : counting(number))
        if (seen.number > number && seen.kind == Kind::Action) result.push_back(seen.number);
    std::sort(result.begin(), result.end());
    return result;
}

std::vector<qint64> Journal::ofAnimals(const std::vector<qint64>& ids, qint64 first) const {
    const Runs wanted = Runs::of(ids);
    std::vector<qint64> result;
    for (const Seen& seen : reaches("nr >= " + std::to_string(first)))
        if (seen.reach.animals.meets(wanted)) result.push_back(seen.number);
    return result;
}

std::vector<qint64> Journal::ofAnimal(qint64 id) const {
    struct Part {
        std::optional<RowChange::Kind> row;  // what the entry did to the animal's own row
        qint64 life = 0;                     // the action that made the animal, 0 for one that was there before
    };
    std::map<qint64, Part> parts;
    qint64 life = 0;
    const auto comesBack = [&](const Entry& by) {
        const bool redo = by.kind == Kind::Redo;
        for (const qint64 of : by.of)
            for (const qint64 deed : redo ? concerned(*m_connection, of) : std::vector<qint64>{of})
                if (const auto known = parts.find(deed); known != parts.end())
                    if (known->second.row == (redo ? RowChange::Kind::Inserted : RowChange::Kind::Deleted))
                        life = known->second.life;
    };
    for (const qint64 number : ofAnimals({id})) {
        Part part;
        read(number, [&](const RowChange& row) {
            if (row.row == id && *row.table == QLatin1String(journal::Animals)) part.row = row.kind;
            return !part.row;
        });
        if (part.row == RowChange::Kind::Inserted) {
            const auto by = entry(number);
            if (by->kind == Kind::Action)
                life = number;
            else
                comesBack(*by);
        }
        part.life = life;
        parts.emplace(number, part);
    }
    std::vector<qint64> result;
    for (const auto& [number, part] : parts)
        if (part.life == life) result.push_back(number);
    return result;
}

std::vector<Journal::Entry> Journal::entriesFrom(qint64 first) const {
    auto result = select("nr >= " + std::to_string(first), -1);
    std::reverse(result.begin(), result.end());
    return result;
}

namespace {

/// With what the entries behind took back, or carried out again.
qint64 withTargets(qint64 first, const std::vector<Journal::Entry>& reversals) {
    for (bool lower = true; lower;) {
        lower = false;
        for (const Journal::Entry& e : reversals)
            for (const qint64 other : e.of)
                if (e.number >= first && other < first) first = other, lower = true;
    }
    return first;
}

}  // namespace

qint64 Journal::origin(qint64 number) const { return withTargets(number, select("art <> 0", -1)); }

namespace {

void readCells(Reader& in, RowChange& row) {
    row.cells.clear();
    const auto fields = static_cast<quint64>(row.fields->size());
    const bool some = row.kind == RowChange::Kind::Changed;
    const quint64 count = some ? in.number() : fields;
    for (quint64 i = 0; i < count; ++i) {
        RowChange::Cell& cell = row.cells.emplace_back();
        cell.field = static_cast<int>(some ? std::min(in.number(), fields - 1) : i);
        if (row.kind != RowChange::Kind::Inserted) cell.before = in.value();
        if (row.kind != RowChange::Kind::Deleted) cell.after = in.value();
    }
}

}  // namespace

namespace {

void readBeside(Reader& in, const std::function<QString(qint64)>& tableOf, Journal::Beside& beside) {
    static const QStringList fields = {QStringLiteral("Aenderung"), QStringLiteral("L_Belegung"),
                                       QStringLiteral("L_Ferkelung"), QStringLiteral("L_Absetzung")};
    const auto text = [&in] {
        const std::string_view utf8 = in.text();
        return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
    };
    for (quint64 left = in.number(); left > 0; --left) {
        auto& animal = beside.animals[in.signedNumber()];
        for (const QString& field : fields) animal[field] = in.value();
    }
    if (in.atEnd()) return;  // an older entry
    for (quint64 left = in.number(); left > 0; --left) {
        Journal::Word& word = beside.words.emplace_back();
        word.table = text();
        word.text = text();
    }
    for (quint64 left = in.number(); left > 0; --left) {
        const QString table = tableOf(static_cast<qint64>(in.number()));
        beside.doubles.emplace(table, in.signedNumber());
    }
}

}  // namespace

void Journal::read(qint64 number, const std::function<bool(const RowChange& row)>& on, Beside* beside) const {
    const Bytes bytes = journal::unpacked(blob("daten", number));
    if (bytes.empty()) return;
    Reader in(bytes);
    for (quint64 sheets = in.number(); sheets > 0; --sheets) {
        const Layout& table = layout(static_cast<qint64>(in.number()));
        RowChange row;
        row.table = &table.table;
        row.fields = &table.fields;
        for (quint64 rows = in.number(); rows > 0; --rows) {
            row.row += in.signedNumber();
            row.kind = static_cast<RowChange::Kind>(in.byte());
            readCells(in, row);
            if (!on(row)) return;
        }
    }
    if (beside)
        readBeside(
            in, [this](qint64 id) { return layout(id).table; }, *beside);
}

// ------------------------------------------------------------------------------------------------------------- keeping

qint64 Journal::bytes() const {
    return number(m_connection->file(),
                  "SELECT ifnull(sum(80 + length(name) + ifnull(length(daten), 0) + ifnull(length(bereiche), 0)), 0) "
                  "FROM koben_verlauf");
}

Journal::Keeping Journal::keeping() const {
    Keeping result;
    const StatementHandle s = prepare(m_connection->file(), "SELECT jahre, megabyte FROM koben_verlauf_stand");
    if (sqlite3_step(s.get()) == SQLITE_ROW) result = {sqlite3_column_int(s.get(), 0), sqlite3_column_int(s.get(), 1)};
    return result;
}

void Journal::keep(const Keeping& keeping) const {
    Transaction transaction{Database(m_connection)};
    run(*m_connection, "DELETE FROM koben_verlauf_stand", {});
    run(*m_connection, "INSERT INTO koben_verlauf_stand VALUES (?1, ?2)", {keeping.years, keeping.megabytes});
    transaction.commit();
}

namespace {

constexpr qint64 Megabyte = 1 << 20;

/// The lowest number that stays, by age and by what may be taken up.
qint64 firstKept(sqlite3* file, const Journal::Keeping& keeping, QDate today) {
    const QString oldest = today.addYears(-keeping.years).toString(Qt::ISODate);
    const StatementHandle s =
        prepare(file,
                "SELECT nr, zeit, 80 + length(name) + ifnull(length(daten), 0) + ifnull(length(bereiche), 0) FROM "
                "koben_verlauf ORDER BY nr DESC");
    qint64 first = std::numeric_limits<qint64>::max(), left = keeping.megabytes * Megabyte;
    while (sqlite3_step(s.get()) == SQLITE_ROW) {
        left -= sqlite3_column_int64(s.get(), 2);
        if (left < 0 || columnValue(s.get(), 1, Type::Text).toText() < oldest) break;
        first = sqlite3_column_int64(s.get(), 0);
    }
    return first;
}

}  // namespace

void Journal::trim(QDate today) const {
    const qint64 first = withTargets(firstKept(m_connection->file(), keeping(), today), select("art <> 0", -1));
    if (number(m_connection->file(), "SELECT count(*) FROM koben_verlauf WHERE nr < " + std::to_string(first)) == 0)
        return;
    run(*m_connection, "DELETE FROM koben_verlauf WHERE nr < ?1", {first});
}

}  // namespace koben
