#include "store/RecordsetImpl.h"

#include "store/Database.h"
#include "store/SnapshotCriteria.h"
#include "store/StatementImpl.h"

namespace koben {

using Kind = DatabaseError::Kind;

RecordsetImpl::RecordsetImpl(std::shared_ptr<Connection> owner, Command text)
    : connection(std::move(owner)), command(std::move(text)) {
    if (live()) {
        fields = command.plan->fields;
        readIds();
    } else {
        snapshot = readTable(*connection, command);
        fields = snapshot->fields;
    }
    original = size();
    if (original > 0) position = 0;
    reach();
}

void RecordsetImpl::readIds() {
    const sql::Plan& plan = *command.plan;
    Loan loan(*connection, plan.idSql);
    connection->bind(loan.get(), command, {});
    TopCut cut(plan.top, plan.idKeys);
    while (connection->step(loan.get(), command.text) && cut.keeps(loan.get()))
        ids.push_back(sqlite3_column_int64(loan.get(), 0));
}

void RecordsetImpl::fail(Kind kind, const QString& what) const {
    throw DatabaseError::ofStatement(kind, what, command.text);
}

void RecordsetImpl::requireOpen() const {
    if (connection == nullptr) fail(Kind::State, QStringLiteral("Die Datensatzgruppe ist geschlossen"));
    connection->file();
}

const Field& RecordsetImpl::field(int index) const {
    if (index < 0 || index >= static_cast<int>(fields.size()))
        fail(Kind::UnknownName, QStringLiteral("Ein Feld Nummer %1 gibt es nicht").arg(index));
    return fields[static_cast<size_t>(index)];
}

int RecordsetImpl::indexOf(QStringView name) const {
    for (size_t i = 0; i < fields.size(); ++i)
        if (name == fields[i].name) return static_cast<int>(i);
    for (size_t i = 0; i < fields.size(); ++i)
        if (sql::sameName(name, fields[i].name)) return static_cast<int>(i);
    fail(Kind::UnknownName, QStringLiteral("Das Feld \"%1\" gibt es in dieser Auswahl nicht").arg(name));
}

const sql::ColumnInfo& RecordsetImpl::column(int index) const {
    return command.plan->table->columns[static_cast<size_t>(columnOf(index))];
}

void RecordsetImpl::reach() {
    if (position >= 0) reached = std::max(reached, std::min(position + 1, original));
}

void RecordsetImpl::land(int from, int step) {
    position = from;
    while (position >= 0 && position < size() && removed(position)) position += step;
    reach();
}

void RecordsetImpl::requireRow() const {
    requireOpen();
    if (position < 0 || position >= size()) fail(Kind::State, QStringLiteral("Kein aktueller Datensatz"));
    if (removed(position)) fail(Kind::State, QStringLiteral("Der Datensatz ist gelöscht"));
}

void RecordsetImpl::fetch() {
    if (m_fetched == position && m_fetchedWrites == connection->writes()) return;
    const sql::Plan& plan = *command.plan;
    m_fetched = -1;
    Loan loan(*connection, plan.rowSql);
    connection->bind(loan.get(), command, {});
    sqlite3_bind_int64(loan.get(), static_cast<int>(plan.slots.size()) + 1, ids[static_cast<size_t>(position)]);
    if (!connection->step(loan.get(), command.text)) fail(Kind::State, QStringLiteral("Der Datensatz ist gelöscht"));
    m_row.resize(fields.size());
    for (size_t i = 0; i < fields.size(); ++i) m_row[i] = columnValue(loan.get(), static_cast<int>(i), fields[i].type);
    m_fetched = position;
    m_fetchedWrites = connection->writes();
}

Value RecordsetImpl::value(int index) {
    requireOpen();
    field(index);
    if (mode != Mode::Browse && columnOf(index) >= 0) {
        for (const auto& [changed, newValue] : m_changes)
            if (changed == columnOf(index)) return newValue;
        if (mode == Mode::Add && column(index).counter) {
            m_changes.emplace_back(columnOf(index), Value(static_cast<qint32>(nextCounter())));
            return m_changes.back().second;
        }
    }
    if (mode == Mode::Add) return {};
    requireRow();
    if (!live()) return (*snapshot->columns)[static_cast<size_t>(index)].value(static_cast<size_t>(position));
    fetch();
    return m_row[static_cast<size_t>(index)];
}

/// The number is taken for good: a row that is given up does not give it back.
qint64 RecordsetImpl::nextCounter() {
    const sql::TableInfo& table = *command.plan->table;
    const std::string name = "'" + QString(table.name).replace(u'\'', QStringLiteral("''")).toStdString() + "'";
    sqlite3* file = connection->file();
    const qint64 next = number(file, "SELECT ifnull(max(seq), 0) + 1 FROM sqlite_sequence WHERE name = " + name);
    const std::string sql = next == 1 && number(file, "SELECT count(*) FROM sqlite_sequence WHERE name = " + name) == 0
                                ? "INSERT INTO sqlite_sequence(name, seq) VALUES (" + name + ", 1)"
                                : "UPDATE sqlite_sequence SET seq = " + std::to_string(next) + " WHERE name = " + name;
    connection->writeNative(sql, QString::fromStdString(sql));
    return next;
}

void RecordsetImpl::dropEdit() {
    mode = Mode::Browse;
    m_changes.clear();
}

void RecordsetImpl::addNew() {
    requireOpen();
    if (!live()) fail(Kind::State, QStringLiteral("Diese Auswahl kann nur gelesen werden"));
    dropEdit();
    mode = Mode::Add;
}

void RecordsetImpl::edit() {
    requireRow();
    if (!live()) fail(Kind::State, QStringLiteral("Diese Auswahl kann nur gelesen werden"));
    fetch();
    dropEdit();
    mode = Mode::Edit;
}

void RecordsetImpl::set(int index, const Value& newValue) {
    requireOpen();
    const Field& f = field(index);
    if (!live() || columnOf(index) < 0)
        fail(Kind::State, QStringLiteral("Das Feld \"%1\" kann nur gelesen werden").arg(f.name));
    if (mode == Mode::Browse)
        fail(Kind::State,
             QStringLiteral("Das Feld \"%1\" kann nur zwischen Bearbeiten oder Neu und Speichern gesetzt werden")
                 .arg(f.name));
    const sql::ColumnInfo& c = column(index);
    if (c.counter && mode == Mode::Edit)
        fail(Kind::Constraint, QStringLiteral("Das Zählerfeld \"%1\" kann nicht geändert werden").arg(f.name));
    Value converted;
    try {
        converted = assign(newValue, c.type, c.size, c.name);
    } catch (const ConversionError& e) {
        fail(e.kind, e.what);
    }
    if (c.counter && (converted.isNull() || converted.toInt() == 0))
        fail(Kind::Constraint, QStringLiteral("Das Zählerfeld \"%1\" kann nicht 0 sein").arg(f.name));
    for (auto& [changed, old] : m_changes) {
        if (changed != columnOf(index)) continue;
        old = std::move(converted);
        return;
    }
    m_changes.emplace_back(columnOf(index), std::move(converted));
}

void RecordsetImpl::write(const std::string& sql, const QString& text, const std::vector<std::pair<int, Value>>& values,
                          bool withId) {
    Loan loan(*connection, sql);
    int place = 0;
    for (const auto& [number, v] : values) {
        bindValue(loan.get(), ++place, v);
        if (!command.plan->table->columns[static_cast<size_t>(number)].keyName.empty())
            bindValue(loan.get(), ++place, v);
    }
    if (withId) sqlite3_bind_int64(loan.get(), ++place, ids[static_cast<size_t>(position)]);
    connection->aboutToWrite(text);
    connection->step(loan.get(), text);
}

void RecordsetImpl::update() {
    requireOpen();
    if (mode == Mode::Browse) fail(Kind::State, QStringLiteral("Speichern ohne Bearbeiten oder Neu"));
    const sql::TableInfo& table = *command.plan->table;
    std::string names, places, sets;
    for (const auto& [number, v] : m_changes) {
        const sql::ColumnInfo& c = table.columns[static_cast<size_t>(number)];
        const bool first = names.empty();
        names += (first ? "" : ", ") + c.sqlName, places += first ? "?" : ", ?",
            sets += (first ? "" : ", ") + c.sqlName + " = ?";
        if (c.keyName.empty()) continue;
        names += ", " + c.keyName, places += ", koben_key(?)", sets += ", " + c.keyName + " = koben_key(?)";
    }
    if (mode == Mode::Add) {
        const std::string sql = "INSERT INTO " + table.sqlName +
                                (names.empty() ? " DEFAULT VALUES" : " (" + names + ") VALUES (" + places + ")");
        write(sql, QString::fromStdString(sql), m_changes, false);
        ids.push_back(sqlite3_last_insert_rowid(connection->file()));
        if (!m_places.isEmpty()) m_places.insert(ids.back(), size() - 1);
    } else if (!m_changes.empty()) {
        requireRow();
        const std::string sql = "UPDATE " + table.sqlName + " SET " + sets + " WHERE " + table.rowId + " = ?";
        write(sql, QString::fromStdString(sql), m_changes, true);
        if (sqlite3_changes(connection->file()) == 0) fail(Kind::State, QStringLiteral("Der Datensatz ist gelöscht"));
    }
    dropEdit();
}

void RecordsetImpl::remove() {
    requireRow();
    if (!live()) fail(Kind::State, QStringLiteral("Diese Auswahl kann nur gelesen werden"));
    dropEdit();
    const sql::TableInfo& table = *command.plan->table;
    const std::string sql = "DELETE FROM " + table.sqlName + " WHERE " + table.rowId + " = ?";
    write(sql, QString::fromStdString(sql), {}, true);
    if (sqlite3_changes(connection->file()) == 0) fail(Kind::State, QStringLiteral("Der Datensatz ist gelöscht"));
    m_places.remove(ids[static_cast<size_t>(position)]);
    ids[static_cast<size_t>(position)] = kRemoved;
    ++gone;
}

int RecordsetImpl::findLive(const QString& criteria) {
    const sql::Plan& plan = *command.plan;
    std::vector<std::pair<QString, int>> aliases;
    QString prefix = plan.table->name;
    for (size_t i = 0; i < fields.size(); ++i) {
        if (plan.columns[i] < 0) continue;
        aliases.emplace_back(fields[i].name, plan.columns[i]);
        if (!sql::sameName(fields[i].name, plan.table->columns[static_cast<size_t>(plan.columns[i])].name))
            prefix += u'\u0002' + fields[i].name + u'\u0003' + QString::number(plan.columns[i]);
    }
    const Command search =
        connection->cached(prefix + u'\u0002', criteria, [&](const sql::Text& text, const sql::Lexed& lexed) {
            return sql::compileCriteria(text, lexed, plan.catalog, *plan.table, aliases);
        });
    if (m_places.isEmpty()) {
        m_places.reserve(static_cast<qsizetype>(ids.size()));
        for (size_t i = 0; i < ids.size(); ++i)
            if (ids[i] != kRemoved) m_places.insert(ids[i], static_cast<int>(i));
    }
    Loan loan(*connection, search.plan->sql);
    connection->bind(loan.get(), search, {});
    int first = size();
    while (connection->step(loan.get(), criteria))
        first = std::min(first, m_places.value(sqlite3_column_int64(loan.get(), 0), size()));
    return first;
}

int RecordsetImpl::findSnapshot(const QString& criteria) {
    return firstMatch(*connection, command.plan->catalog, *snapshot, criteria);
}

void RecordsetImpl::findFirst(const QString& criteria) {
    requireOpen();
    dropEdit();
    const int found = live() ? findLive(criteria) : findSnapshot(criteria);
    noMatch = found >= size();
    if (!noMatch) land(found, 1);
}

int Recordset::recordCount() const {
    const RecordsetImpl& r = *m_impl;
    r.requireOpen();
    return r.reached + (r.size() - r.original) - r.gone;
}

bool Recordset::eof() const {
    m_impl->requireOpen();
    return m_impl->position < 0 ? m_impl->size() - m_impl->gone == 0 : m_impl->position >= m_impl->size();
}

bool Recordset::bof() const {
    m_impl->requireOpen();
    return m_impl->position < 0 || m_impl->size() - m_impl->gone == 0;
}

namespace {

void requireRecords(const RecordsetImpl& r) {
    r.requireOpen();
    if (r.size() - r.gone == 0)
        throw DatabaseError::ofStatement(Kind::State, QStringLiteral("Kein aktueller Datensatz"), r.command.text);
}

}  // namespace

void Recordset::moveFirst() {
    requireRecords(*m_impl);
    m_impl->dropEdit();
    m_impl->land(0, 1);
}

void Recordset::moveLast() {
    requireRecords(*m_impl);
    m_impl->dropEdit();
    m_impl->reached = m_impl->original;
    m_impl->land(m_impl->size() - 1, -1);
}

void Recordset::moveNext() {
    if (eof())
        throw DatabaseError::ofStatement(Kind::State, QStringLiteral("Kein aktueller Datensatz"), m_impl->command.text);
    m_impl->dropEdit();
    m_impl->land(m_impl->position + 1, 1);
}

void Recordset::movePrevious() {
    if (bof())
        throw DatabaseError::ofStatement(Kind::State, QStringLiteral("Kein aktueller Datensatz"), m_impl->command.text);
    m_impl->dropEdit();
    m_impl->land(m_impl->position - 1, -1);
}

void Recordset::findFirst(const QString& criteria) { m_impl->findFirst(criteria); }
bool Recordset::noMatch() const { return m_impl->noMatch; }
void Recordset::addNew() { m_impl->addNew(); }
void Recordset::edit() { m_impl->edit(); }
void Recordset::update() { m_impl->update(); }
void Recordset::cancelUpdate() { m_impl->dropEdit(); }
void Recordset::remove() { m_impl->remove(); }
Value Recordset::value(QStringView name) const { return m_impl->value(m_impl->indexOf(name)); }
Value Recordset::value(int index) const { return m_impl->value(index); }
void Recordset::set(QStringView name, const Value& value) { m_impl->set(m_impl->indexOf(name), value); }
void Recordset::set(int index, const Value& value) { m_impl->set(index, value); }
int Recordset::fieldCount() const { return static_cast<int>(m_impl->fields.size()); }
const Field& Recordset::field(int index) const { return m_impl->field(index); }
void Recordset::close() { m_impl->connection.reset(); }

}  // namespace koben
