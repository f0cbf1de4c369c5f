#include "store/JournalRecorder.h"

#include <algorithm>

namespace koben {

using journal::Bytes;
using journal::Reader;

namespace {

/// Of more than this nothing is kept: a takeover of a whole herd, which no one takes back row by row.
constexpr size_t MostBytes = 96U << 20U;

using journal::Animals;
const QString MarkField = QStringLiteral("Selektiert");
const QString OwnerField = QStringLiteral("Kennung");
/// Fields of an animal that are kept with a booking of hers as they were before it: by them the mark on her card is put
/// back, which deriving sets and never takes away.
const char* const Companions[] = {"Aenderung", "L_Belegung", "L_Ferkelung", "L_Absetzung"};

bool isOwn(const QString& name) {
    return name.startsWith(QLatin1String("koben_"), Qt::CaseInsensitive) || name.startsWith(QLatin1String("sqlite_"));
}

}  // namespace

JournalRecorder::JournalRecorder(Connection& connection) : m_connection(connection) {
    // From the beginning: a deletion that was prepared without it would drop all rows unheard.
    sqlite3_preupdate_hook(connection.file(), &JournalRecorder::rowChanges, this);
}

JournalRecorder::~JournalRecorder() {
    if (!m_connection.isClosed()) sqlite3_preupdate_hook(m_connection.file(), nullptr, nullptr);
}

void JournalRecorder::readLayouts() {
    m_sheets.clear();
    m_lastName = nullptr;
    sqlite3* file = m_connection.file();
    const StatementHandle s = prepare(file,
                                      "SELECT m.name, i.cid, i.name, upper(i.type) = 'REAL' FROM sqlite_master AS m "
                                      "JOIN pragma_table_info(m.name) AS i WHERE m.type = 'table' ORDER BY m.name, "
                                      "i.cid");
    while (sqlite3_step(s.get()) == SQLITE_ROW) {
        const QString table = columnValue(s.get(), 0, Type::Text).toText();
        const QString field = columnValue(s.get(), 2, Type::Text).toText();
        if (isOwn(table) || isOwn(field)) continue;
        if (m_sheets.empty() || m_sheets.back()->layout.table != table.toStdString()) {
            m_sheets.push_back(std::make_unique<Sheet>());
            m_sheets.back()->layout.table = table.toStdString();
        }
        JournalLayout& layout = m_sheets.back()->layout;
        if (field == MarkField && layout.table == Animals) layout.mark = static_cast<int>(layout.fields.size());
        if (field == OwnerField) layout.owner = static_cast<int>(layout.fields.size());
        layout.fields.append(field);
        layout.places.push_back(sqlite3_column_int(s.get(), 1));
        layout.reals.push_back(sqlite3_column_int(s.get(), 3) != 0);
    }
    m_schemaNumber = m_connection.schemaNumber();
}

std::vector<std::pair<std::string, qint64>> JournalRecorder::counters() const {
    static const std::string sql = "SELECT name, seq FROM sqlite_sequence";
    std::vector<std::pair<std::string, qint64>> result;
    const Loan loan(m_connection, sql);
    while (sqlite3_step(loan.get()) == SQLITE_ROW)
        result.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(loan.get(), 0)),
                            sqlite3_column_int64(loan.get(), 1));
    return result;
}

void JournalRecorder::begin() {
    discard();
    if (m_sheets.empty() || m_schemaNumber != m_connection.schemaNumber()) readLayouts();
    m_lastName = nullptr;  // SQLite may have read the tables' names anew
    m_counters = counters();
    m_on = m_known = true;
}

void JournalRecorder::discard() {
    m_on = false;
    m_bytes = 0;
    m_owners.clear();
    m_words.clear();
    for (const auto& sheet : m_sheets) sheet->changes.clear();
}

void JournalRecorder::rolledBack() {
    discard();
    for (const auto& sheet : m_sheets) sheet->layout.id = 0;
}

void JournalRecorder::need(const QString& table, const QString& word) {
    if (!m_on) return;
    std::pair<std::string, std::string> needed(table.toStdString(), word.toStdString());
    if (std::find(m_words.begin(), m_words.end(), needed) == m_words.end()) m_words.push_back(std::move(needed));
}

void JournalRecorder::lost() {
    if (!m_on) return;
    m_known = false;
    m_owners.clear();
    for (const auto& sheet : m_sheets) std::unordered_map<qint64, Change>().swap(sheet->changes);
}

void JournalRecorder::begins(const sql::Plan& plan) {
    if (!m_on || plan.updated == nullptr) return;
    for (const auto& sheet : m_sheets)
        if (sheet->layout.fields.size() == qsizetype(plan.updated->columns.size()) &&
            QString::fromStdString(sheet->layout.table) == plan.updated->name)
            m_expected = sheet.get();
    m_columns = &plan.sets;
}

JournalRecorder::Sheet* JournalRecorder::sheetOf(const char* table) {
    if (table == m_lastName) return m_lastSheet;
    const auto found =
        std::find_if(m_sheets.begin(), m_sheets.end(), [&](const auto& sheet) { return sheet->layout.table == table; });
    m_lastName = table;
    m_lastSheet = found == m_sheets.end() ? nullptr : found->get();
    return m_lastSheet;
}

void JournalRecorder::rowChanges(void* self, sqlite3*, int what, const char*, const char* table, sqlite3_int64 before,
                                 sqlite3_int64 after) {
    auto& recorder = *static_cast<JournalRecorder*>(self);
    if (!recorder.m_on || !recorder.m_known) return;
    Sheet* sheet = recorder.sheetOf(table);
    if (sheet == nullptr) return;
    if (what == SQLITE_UPDATE && before == after) return recorder.changed(*sheet, after);
    if (what != SQLITE_INSERT) recorder.deleted(*sheet, before);
    if (what != SQLITE_DELETE) recorder.inserted(*sheet, after);
    if (recorder.m_bytes > MostBytes) recorder.lost();
}

sqlite3_value* JournalRecorder::before(const Sheet& sheet, size_t field) const {
    sqlite3_value* value = nullptr;
    sqlite3_preupdate_old(m_connection.file(), sheet.layout.places[field], &value);
    return value;
}

sqlite3_value* JournalRecorder::after(const Sheet& sheet, size_t field) const {
    sqlite3_value* value = nullptr;
    sqlite3_preupdate_new(m_connection.file(), sheet.layout.places[field], &value);
    return value;
}

Bytes JournalRecorder::whole(const Sheet& sheet, bool old) const {
    Bytes result;
    for (size_t i = 0; i < sheet.layout.places.size(); ++i)
        journal::putValue(result, old ? before(sheet, i) : after(sheet, i), sheet.layout.reals[i]);
    return result;
}

void JournalRecorder::noteOwner(const Sheet& sheet, bool old) {
    if (sheet.layout.owner < 0) return;
    const auto field = static_cast<size_t>(sheet.layout.owner);
    if (const qint64 owner = sqlite3_value_int64(old ? before(sheet, field) : after(sheet, field)); owner != 0)
        m_owners.insert(owner);
}

void JournalRecorder::inserted(Sheet& sheet, qint64 row) {
    noteOwner(sheet, false);
    Change& change = sheet.changes.try_emplace(row, Change{Kind::Inserted, {}, {}}).first->second;
    change.after = whole(sheet, false);
    m_bytes += change.after.size();
    if (change.kind == Kind::Inserted) return;
    // deleted before, within the same action: now only what differs
    Bytes before, after;
    Reader was(change.before), is(change.after);
    for (size_t i = 0; i < sheet.layout.places.size(); ++i) {
        const std::string_view a = was.rawValue(), b = is.rawValue();
        if (a == b) continue;
        journal::putNumber(before, i);
        before.append(a);
        journal::putNumber(after, i);
        after.append(b);
    }
    change = {Kind::Changed, std::move(before), std::move(after)};
}

void JournalRecorder::deleted(Sheet& sheet, qint64 row) {
    noteOwner(sheet, true);
    const auto [at, fresh] = sheet.changes.try_emplace(row, Change{Kind::Deleted, {}, {}});
    Change& change = at->second;
    if (!fresh && change.kind == Kind::Inserted) {
        sheet.changes.erase(at);
        return;
    }
    Bytes before = whole(sheet, true);
    if (!fresh) {  // changed before: as it was then
        std::vector<std::string_view> values(sheet.layout.places.size());
        Reader now(before);
        for (auto& value : values) value = now.rawValue();
        for (Reader was(change.before); !was.atEnd();) {
            const size_t field = was.number();
            values[field] = was.rawValue();
        }
        Bytes patched;
        for (const auto& value : values) patched.append(value);
        before = std::move(patched);
    }
    change = {Kind::Deleted, std::move(before), {}};
    m_bytes += change.before.size();
}

void JournalRecorder::compare(const Sheet& sheet, size_t field, Change& change, bool always) const {
    sqlite3_value* was = before(sheet, field);
    sqlite3_value* is = after(sheet, field);
    if (!always && journal::sameValues(was, is)) return;
    journal::putNumber(change.before, field);
    journal::putValue(change.before, was, sheet.layout.reals[field]);
    journal::putNumber(change.after, field);
    journal::putValue(change.after, is, sheet.layout.reals[field]);
}

void JournalRecorder::changed(Sheet& sheet, qint64 row) {
    if (const auto known = sheet.changes.find(row); known != sheet.changes.end()) {
        noteOwner(sheet, false);
        if (known->second.kind == Kind::Inserted)
            known->second.after = whole(sheet, false);
        else
            extend(sheet, known->second);
        return;
    }
    Change change{Kind::Changed, {}, {}};
    if (m_expected == &sheet && sqlite3_preupdate_depth(m_connection.file()) == 0)
        for (const int column : *m_columns)
            compare(sheet, static_cast<size_t>(column), change, column == sheet.layout.mark);
    else
        for (size_t i = 0; i < sheet.layout.places.size(); ++i) compare(sheet, i, change);
    if (change.after.empty()) return;
    noteOwner(sheet, true);
    noteOwner(sheet, false);
    m_bytes += change.before.size() + change.after.size();
    sheet.changes.emplace(row, std::move(change));
    if (m_bytes > MostBytes) lost();
}

/// A row that changes once more: fields that were not among the changed ones join them.
void JournalRecorder::extend(const Sheet& sheet, Change& change) {
    std::vector<bool> known(sheet.layout.places.size());
    for (Reader was(change.before); !was.atEnd(); was.rawValue()) known[was.number()] = true;
    change.after.clear();
    for (size_t i = 0; i < sheet.layout.places.size(); ++i) {
        if (!known[i]) {
            if (journal::sameValues(before(sheet, i), after(sheet, i))) continue;
            journal::putNumber(change.before, i);
            journal::putValue(change.before, before(sheet, i), sheet.layout.reals[i]);
        }
    }
    for (Reader was(change.before); !was.atEnd(); was.rawValue()) {
        const size_t field = was.number();
        journal::putNumber(change.after, field);
        journal::putValue(change.after, after(sheet, field), sheet.layout.reals[field]);
    }
}

void JournalRecorder::writeLayout(JournalLayout& layout) {
    if (layout.id != 0) return;
    sqlite3* file = m_connection.file();
    const QString table = QString::fromStdString(layout.table), fields = layout.fields.join(u'\n');
    const StatementHandle look =
        prepare(file, "SELECT id FROM koben_verlauf_felder WHERE tabelle = ?1 AND felder = ?2");
    bindValue(look.get(), 1, table);
    bindValue(look.get(), 2, fields);
    if (sqlite3_step(look.get()) == SQLITE_ROW) {
        layout.id = sqlite3_column_int64(look.get(), 0);
        return;
    }
    const StatementHandle add = prepare(file, "INSERT INTO koben_verlauf_felder(tabelle, felder) VALUES (?1, ?2)");
    bindValue(add.get(), 1, table);
    bindValue(add.get(), 2, fields);
    m_connection.aboutToWrite(QStringLiteral("insert into koben_verlauf_felder"));
    if (sqlite3_step(add.get()) != SQLITE_DONE) throwSqlite(file, table);
    layout.id = sqlite3_last_insert_rowid(file);
}

void JournalRecorder::putRows(Bytes& out, const Sheet& sheet, const std::vector<qint64>& rows) const {
    journal::putNumber(out, static_cast<quint64>(sheet.layout.id));
    journal::putNumber(out, rows.size());
    qint64 last = 0;
    for (const qint64 row : rows) {
        const Change& change = sheet.changes.at(row);
        journal::putSigned(out, row - last);
        out.push_back(static_cast<char>(change.kind));
        if (change.kind == Kind::Changed) {
            quint64 fields = 0;
            for (Reader is(change.after); !is.atEnd(); is.rawValue(), ++fields) is.number();
            journal::putNumber(out, fields);
            Reader was(change.before), is(change.after);
            while (!was.atEnd()) {
                journal::putNumber(out, was.number());
                is.number();
                out.append(was.rawValue()).append(is.rawValue());
            }
        } else {
            out.append(change.kind == Kind::Inserted ? change.after : change.before);
        }
        last = row;
    }
}

/// Behind the rows: the animals of the bookings, with the fields that are kept of them.
void JournalRecorder::putCompanions(Bytes& out) {
    constexpr size_t most = 2000;
    static const std::string sql = [] {
        std::string fields;
        for (const char* field : Companions) fields += (fields.empty() ? "\"" : ", \"") + std::string(field) + "\"";
        return "SELECT " + fields + " FROM \"" + Animals + "\" WHERE rowid = ?1";
    }();
    const auto animals = std::find_if(m_sheets.begin(), m_sheets.end(),
                                      [](const auto& sheet) { return sheet->layout.table == Animals; });
    const bool there =
        animals != m_sheets.end() && std::all_of(std::begin(Companions), std::end(Companions), [&](const char* field) {
            return (*animals)->layout.fields.contains(QString::fromUtf8(field));
        });
    if (!there || m_owners.size() > most) return journal::putNumber(out, 0);
    Bytes animalsKept;
    quint64 count = 0;
    const Loan loan(m_connection, sql);
    for (const qint64 owner : m_owners) {
        sqlite3_bind_int64(loan.get(), 1, owner);
        if (sqlite3_step(loan.get()) == SQLITE_ROW) {  // else it went with its bookings, and is among the rows
            ++count;
            journal::putSigned(animalsKept, owner);
            for (size_t i = 0; i < std::size(Companions); ++i)
                journal::putValue(animalsKept, sqlite3_column_value(loan.get(), static_cast<int>(i)), false);
        }
        sqlite3_reset(loan.get());
    }
    journal::putNumber(out, count);
    out += animalsKept;
}

void JournalRecorder::putWords(Bytes& out) const {
    journal::putNumber(out, m_words.size());
    for (const auto& [table, word] : m_words) {
        journal::putText(out, table);
        journal::putText(out, word);
    }
}

/// Rows that gave a name up which another row bears: the action found it doubled, and undoing it doubles nothing.
std::vector<qint64> JournalRecorder::doublesIn(const Sheet& sheet) const {
    std::vector<qint64> result;
    const QString field = journal::nameField(QString::fromStdString(sheet.layout.table));
    const auto place = field.isEmpty() ? -1 : sheet.layout.fields.indexOf(field);
    const sql::TableInfo* table =
        place < 0 ? nullptr : m_connection.catalog()->find(QString::fromStdString(sheet.layout.table));
    if (table == nullptr) return result;
    const sql::ColumnInfo& column = table->columns[static_cast<size_t>(table->columnOf(field))];
    const std::string sql = "SELECT 1 FROM " + table->sqlName + " WHERE " +
                            (column.keyName.empty() ? column.sqlName + " = ?1" : column.keyName + " = koben_key(?1)") +
                            " AND " + table->rowId + " <> ?2";
    const Loan loan(m_connection, sql);
    for (const auto& [row, change] : sheet.changes) {
        if (change.kind == Kind::Inserted) continue;
        Value before;
        const bool whole = change.kind == Kind::Deleted;
        quint64 at = 0;
        for (Reader in(change.before); !in.atEnd(); ++at) {
            const quint64 number = whole ? at : in.number();
            const Value value = in.value();
            if (number == static_cast<quint64>(place)) before = value;
        }
        if (before.toText().isEmpty()) continue;
        bindValue(loan.get(), 1, before);
        bindValue(loan.get(), 2, row);
        if (sqlite3_step(loan.get()) == SQLITE_ROW) result.push_back(row);
        sqlite3_reset(loan.get());
    }
    return result;
}

void JournalRecorder::putDoubles(Bytes& out) const {
    Bytes doubles;
    quint64 count = 0;
    for (const auto& sheet : m_sheets) {
        if (sheet->changes.empty()) continue;
        for (const qint64 row : doublesIn(*sheet)) {
            journal::putNumber(doubles, static_cast<quint64>(sheet->layout.id));
            journal::putSigned(doubles, row);
            ++count;
        }
    }
    journal::putNumber(out, count);
    out += doubles;
}

/// A row that was changed and changed back, or of which a mark was set that it bore.
bool JournalRecorder::unchanged(const Change& change) {
    return change.kind == Kind::Changed && change.before == change.after;
}

JournalRecord JournalRecorder::finish() {
    JournalRecord record;
    record.known = m_known;
    m_on = false;
    Bytes data, reach;
    quint64 sheets = 0;
    std::vector<qint64> owners(m_owners.begin(), m_owners.end());
    for (const auto& sheet : m_sheets) {
        const auto marked = [&](const Change& change) {
            for (Reader was(change.before); !was.atEnd(); was.rawValue())
                if (static_cast<int>(was.number()) == sheet->layout.mark) return true;
            return false;
        };
        std::erase_if(sheet->changes, [&](const auto& item) { return unchanged(item.second) && !marked(item.second); });
        if (sheet->changes.empty()) continue;
        ++sheets;
        writeLayout(sheet->layout);
        std::vector<qint64> rows;
        rows.reserve(sheet->changes.size());
        for (const auto& [row, change] : sheet->changes) rows.push_back(row);
        std::sort(rows.begin(), rows.end());
        record.rows += std::count_if(sheet->changes.begin(), sheet->changes.end(),
                                     [](const auto& item) { return !unchanged(item.second); });
        putRows(data, *sheet, rows);
        journal::putNumber(reach, static_cast<quint64>(sheet->layout.id));
        if (sheet->layout.table == Animals) owners.insert(owners.end(), rows.begin(), rows.end());
        journal::Runs::of(std::move(rows)).put(reach);
    }
    Bytes head;
    journal::putNumber(head, sheets);
    journal::Runs::of(std::move(owners)).put(record.reach);
    record.reach += reach;
    putCompanions(data);
    putWords(data);
    putDoubles(data);
    record.data = journal::packed(head + data);
    const auto now = counters();
    for (const auto& [table, value] : now) {
        const auto was = std::find_if(m_counters.begin(), m_counters.end(),
                                      [&, name = &table](const auto& pair) { return pair.first == *name; });
        const qint64 before = was == m_counters.end() ? 0 : was->second;
        if (before == value) continue;
        journal::putText(record.counters, table);
        journal::putNumber(record.counters, static_cast<quint64>(before));
        journal::putNumber(record.counters, static_cast<quint64>(value));
    }
    discard();
    return record;
}

}  // namespace koben
