// The takeover of a farm from a file of the old engine.
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSet>
#include <cstring>
#include <unordered_map>

#include "bench/Floor.h"
#include "bench/Program.h"
#include "core/Altfelder.h"
#include "store/IsoDate.h"
#include "store/OldFileFormat.h"
#include "tools/altdatei/OldFileWriter.h"

namespace koben {
namespace {

using oldfile::Message;
using Cell = oldfile::Type;

const QString OldFolder = QStringLiteral(KOBEN_BENCH_CACHE "/koben1");
void writeWhole(const QString& to, const QByteArray& bytes) {
    QFile file(to);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        throw std::runtime_error("cannot write the old farm");
}

/// The animals with bookings and as many others as make it 20 a sow of the farm, with all their bookings.
QSet<qint64> chosen(const Database& db) {
    constexpr qsizetype perSow = 20;
    const Table sows = db.table(QStringLiteral("select ID from Sauen where Abgangsdatum IS NULL and Art = 'Sau'"));
    QSet<qint64> ids;
    for (const char* kind : {"= 'Sau' or Art = 'Eber'", "<> 'Sau' and Art <> 'Eber'"}) {
        Statement rows = db.prepare(QStringLiteral("select ID from Sauen where Art ") + QString::fromUtf8(kind));
        for (rows.bind({}); (*kind == '=' || ids.size() < sows.rowCount() * perSow) && rows.next();)
            ids.insert(rows.integer(0));
    }
    return ids;
}

/// They as the predecessor's database; made once.
void writeOldFarm(const Database& db) {
    const QSet<qint64> ids = chosen(db);
    OldFileWriter old(4);
    old.program();
    for (const QString& name : db.tables()) {
        const std::vector<Field> fields = db.fields(name);
        int link = -1;
        for (size_t i = 0; i < fields.size(); ++i)
            if (fields[i].name == (name == u"Sauen" ? u"ID" : u"Kennung")) link = static_cast<int>(i);
        Statement rows = db.prepare(QStringLiteral("select * from ") + name);
        for (rows.bind({}); rows.next();) {
            if (link >= 0 && !ids.contains(rows.integer(link))) continue;
            OldFileWriter::Fields cells;
            for (size_t i = 0; i < fields.size(); ++i)
                if (const int column = static_cast<int>(i); !rows.isNull(column))
                    cells.append({fields[i].name, rows.value(column)});
            old.row(name, cells);
        }
    }
    QDir().mkpath(OldFolder);
    writeWhole(OldFolder + QStringLiteral("/koben.mdb"), old.bytes());
    writeWhole(OldFolder + QStringLiteral("/koben.exe"), "x");
}

/// What koben-altdaten says of the old file, bound as it comes to one insert a table.
class OldRows {
public:
    explicit OldRows(SqliteFile& file) : m_file(file) {
        std::string command = QCoreApplication::applicationDirPath().toStdString() + "/koben-altdaten " +
                              (OldFolder + QStringLiteral("/koben.mdb")).toStdString();
        for (const QString& table : alttabellen()) command += ' ' + table.toStdString();
        m_pipe = popen(command.c_str(), "r");
        char head[sizeof oldfile::Head];
        if (m_pipe == nullptr || std::fread(head, 1, sizeof head - 1, m_pipe) != sizeof head - 1) fail();
    }
    ~OldRows() { pclose(m_pipe); }
    OldRows(const OldRows&) = delete;
    OldRows& operator=(const OldRows&) = delete;

    void take() {
        size_t table = 0;
        for (Message message = next(); message != Message::Done; message = next()) {
            if (message == Message::Failure) fail();
            if (message == Message::Table) learn();
            if (message == Message::Rows) begin(m_tables[table++]);
            if (message == Message::Row) write();
        }
    }

private:
    struct Column {
        std::string name;
        Cell type;
    };
    struct OldTable {
        std::string name;
        std::vector<Column> columns;
    };

    [[noreturn]] static void fail() { throw std::runtime_error("koben-altdaten"); }

    Message next() {
        char head[5];
        if (std::fread(head, 1, sizeof head, m_pipe) != sizeof head) fail();
        quint32 length = 0;
        std::memcpy(&length, head + 1, sizeof length);
        m_bytes.resize(length);
        if (std::fread(m_bytes.data(), 1, length, m_pipe) != length) fail();
        m_at = 0;
        return static_cast<Message>(head[0]);
    }
    template <class Number>
    Number number() {
        Number value{};
        std::memcpy(&value, m_bytes.data() + m_at, sizeof value);
        m_at += sizeof value;
        return value;
    }
    std::string name() {
        const auto length = number<quint8>();
        m_at += length;
        return {m_bytes.data() + m_at - length, length};
    }

    void learn() {
        m_at = 9;  // past its count, its counter and whether it can be read
        OldTable table{name(), {}};
        for (int left = number<quint16>(); left > 0; --left) {
            const auto type = static_cast<Cell>(number<char>());
            m_at += 3;
            table.columns.push_back({name(), type});
        }
        m_tables.push_back(table);
    }

    /// Every field but the number of the row; texts with a hidden key give that their bytes.
    void begin(const OldTable& table) {
        m_table = &table;
        std::string names, marks;
        m_places.clear();
        int place = 0;
        const auto add = [&](const std::string& field) {
            names += (place++ > 0 ? ", \"" : "\"") + field + '"';
            marks += place > 1 ? ", ?" : "?";
            return place;
        };
        for (const Column& column : table.columns) {
            const bool known = has(table.name, column.name) && column.name != "ID";
            m_places.push_back({known ? add(column.name) : 0, 0});
            if (known && has(table.name, "koben_key_" + column.name))
                m_places.back().second = add("koben_key_" + column.name);
        }
        m_insert = m_file.prepare("INSERT INTO \"" + table.name + "\" (" + names + ") VALUES (" + marks + ')');
    }
    bool has(const std::string& table, const std::string& field) {
        return m_file.numbers("SELECT count(*) FROM pragma_table_xinfo('" + table + "') WHERE name = '" + field + "'")
                   .front() > 0;
    }

    void write() {
        qint64 id = 0;
        bool ours = true;
        for (size_t i = 0; i < m_table->columns.size(); ++i) {
            const auto [place, key] = m_places[i];
            const Column& column = m_table->columns[i];
            const auto state = static_cast<oldfile::State>(number<char>());
            if (state != oldfile::State::Value) {
                if (place > 0) sqlite3_bind_null(m_insert.get(), place);
                continue;
            }
            const quint32 width = oldfile::widthOf(column.type);
            const quint32 length = width > 0 ? width : number<quint32>();
            const char* bytes = m_bytes.data() + m_at;
            m_at += length;
            if (column.name == "ID") std::memcpy(&id, bytes, sizeof(qint32));
            if (column.name == "Kennung") {
                qint32 old = 0;
                std::memcpy(&old, bytes, sizeof old);
                const auto animal = m_animals.find(old);
                ours = animal != m_animals.end();
                sqlite3_bind_int64(m_insert.get(), place, ours ? animal->second : 0);
            } else if (place > 0) {
                bind(place, column.type, bytes, static_cast<int>(length));
                if (key > 0) sqlite3_bind_blob(m_insert.get(), key, bytes, static_cast<int>(length), SQLITE_STATIC);
            }
        }
        if (!ours) return;
        m_file.step(m_insert.get());
        if (m_table->name == "Sauen") m_animals[id] = m_file.lastId();
    }

    void bind(int place, Cell type, const char* bytes, int length) {
        constexpr int zero = 2415019;  // 30.12.1899
        qint64 whole = 0;
        double real = 0;
        switch (type) {
            case Cell::Date:
                std::memcpy(&real, bytes, sizeof real);
                sqlite3_bind_text(m_insert.get(), place, m_day, formatIso({zero + static_cast<qint32>(real), 0}, m_day),
                                  SQLITE_TRANSIENT);
                break;
            case Cell::Double:
                std::memcpy(&real, bytes, sizeof real);
                sqlite3_bind_double(m_insert.get(), place, real);
                break;
            case Cell::Single: {
                float single = 0;
                std::memcpy(&single, bytes, sizeof single);
                sqlite3_bind_double(m_insert.get(), place, static_cast<double>(single));
                break;
            }
            case Cell::Text:
            case Cell::Memo:
                sqlite3_bind_text(m_insert.get(), place, bytes, length, SQLITE_STATIC);
                break;
            default:
                std::memcpy(&whole, bytes, static_cast<size_t>(length));
                sqlite3_bind_int64(m_insert.get(), place, whole);
        }
    }

    SqliteFile& m_file;
    FILE* m_pipe = nullptr;
    std::vector<char> m_bytes;
    size_t m_at = 0;
    std::vector<OldTable> m_tables;
    const OldTable* m_table = nullptr;
    std::vector<std::pair<int, int>> m_places;
    SqliteFile::Statement m_insert{nullptr, sqlite3_finalize};
    std::unordered_map<qint64, qint64> m_animals;
    char m_day[32] = {};
};

/// Everything deleted and written anew, the helper indexes away meanwhile.
void takeOver(SqliteFile& file) {
    const std::string ofIndexes = " FROM sqlite_master WHERE type = 'index' AND name LIKE 'koben%' AND sql NOT NULL";
    const std::vector<std::string> made = file.texts("SELECT sql" + ofIndexes);
    file.execute("BEGIN IMMEDIATE");
    for (const std::string& name : file.texts("SELECT name" + ofIndexes)) file.execute("DROP INDEX \"" + name + '"');
    for (const std::string& table : file.texts("SELECT name FROM koben_tables ORDER BY position"))
        file.execute("DELETE FROM \"" + table + '"');
    OldRows(file).take();
    for (const std::string& sql : made) file.execute(sql);
    file.execute("COMMIT");
}

qint64 bookings(const Database& db) {
    return db.table(QStringLiteral("select count(*) as n from Belegung")).integer(0, 0);
}

Row takeover() {
    return {QStringLiteral("takeover, 20 animals a sow"), seldom,
            [made = false](Program& p, Stopwatch& watch) mutable {
                Database db = p.koben().connect();
                if (!std::exchange(made, true)) writeOldFarm(db);
                p.open("PO_Update", [&](Form& form) {
                    auto& folder = control<TextBox>(form, "pfad");
                    folder.type(OldFolder);
                    folder.leave();
                    watch.measure([&] { control<Button>(form, "start").click(); });
                });
                return bookings(db);
            },
            [](SqliteFile& file, Stopwatch& watch) {
                for (const std::string& own : file.texts("SELECT name FROM sqlite_master WHERE name LIKE 'boden%'"))
                    file.execute("DROP INDEX " + own);  // which the program has not
                watch.measure([&] { takeOver(file); });
                return file.numbers("SELECT count(*) FROM Belegung").front();
            },
            Start::EachTime};
}

}  // namespace

std::vector<Row> Rows_Altdaten(const Sample&) { return {takeover()}; }

}  // namespace koben
