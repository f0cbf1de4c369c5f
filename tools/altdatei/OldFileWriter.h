#pragma once
// Makes database files of the old engine, Jet 3 and 4, as far as a reader of rows looks: no indexes, one page a
// definition.
#include <QHash>
#include <QStringEncoder>
#include <QtEndian>
#include <array>
#include <cstring>
#include <numeric>

#include "store/Schema.h"

namespace koben {

class OldFileWriter {
public:
    enum class Fate { Lives, Deleted, Moved };  // a moved row lies on another page than its place
    struct Content : Value {
        using Value::Value;
        Content(const Value& value) : Value(value) {}
        Content(const char* text) : Value(QString::fromUtf8(text)) {}
    };
    using Fields = QList<std::pair<QString, Content>>;

    explicit OldFileWriter(int version) : m_jet4(version == 4), m_size(m_jet4 ? 4096 : 2048) {
        for (int i = 0; i < 3; ++i) newPage();  // head, map of all pages, definition of the catalogue
        table("MSysObjects", "Id LONG, ParentId LONG, Name TEXT (64), Type SHORT, Flags LONG, LvProp OLE", 2);
    }

    /// Fields as the dialect writes them, and BYTE, OLE; SHORT has two bytes, LONG four.
    void table(const QString& name, const QString& fields, int page = 0) {
        Table& table = m_tables[name];
        table.page = page > 0 ? page : newPage();
        table.map = newPage();
        for (const QString& field : fields.split(", ")) {
            static const QHash<QString, std::pair<int, int>> types = {
                {"YESNO", {1, 0}},    {"BYTE", {2, 1}},     {"SHORT", {3, 2}},  {"LONG", {4, 4}},
                {"COUNTER", {4, 4}},  {"CURRENCY", {5, 8}}, {"SINGLE", {6, 4}}, {"DOUBLE", {7, 8}},
                {"DATETIME", {8, 8}}, {"TEXT", {10, -1}},   {"OLE", {11, -1}},  {"MEMO", {12, -1}}};
            const QString type = field.section(' ', 1, 1);
            const auto [code, width] = types.value(type);
            Column column{field.section(' ', 0, 0), code, width, 0, type == "COUNTER"};
            column.place = width < 0 ? table.texts++ : std::exchange(table.fixed, table.fixed + width);
            if (code == 10) column.size = field.section('(', 1).section(')', 0, 0).toInt() * (m_jet4 ? 2 : 1);
            table.columns.append(column);
        }
        m_order += name;
        row("MSysObjects", {{"Id", table.page}, {"Name", name}, {"Type", 1}, {"Flags", page > 0 ? INT_MIN : 0}});
    }
    /// The program's own tables; what it calls INTEGER has two bytes in the predecessor's files.
    void program(const QString& integer = "LONG") {
        for (const QString& statement : schemaStatements())
            if (statement.startsWith("create table "))
                table(statement.section(' ', 2).section('(', 0, 0),
                      statement.section('(', 1).chopped(1).replace(" INTEGER", ' ' + integer));
    }

    /// Other fields are Null; a counter counts unless it is given. A date may be a Value of a double, as it lies in the
    /// file.
    void row(const QString& name, const Fields& fields, Fate fate = Fate::Lives) {
        Table& table = m_tables[name];
        QHash<QString, Value> values;
        for (const auto& [field, value] : fields) values.insert(field, value);
        for (const Column& column : table.columns)
            if (column.counter) {
                if (!values.contains(column.name)) values.insert(column.name, table.counter + 1);
                table.counter = std::max(table.counter, static_cast<int>(values[column.name].toInt()));
            }
        const QByteArray bytes = encoded(table, values);
        table.rows += fate != Fate::Deleted;
        if (fate != Fate::Moved) return void(put(table, table.last, bytes, fate == Fate::Lives ? 0 : 0xC000));
        const quint32 target = put(table, table.elsewhere, bytes, 0x8000);
        put(table, table.last, number(target, 4), 0x4000);
    }

    /// Another count of rows than there are.
    void claimRows(const QString& name, int rows) { m_tables[name].rows = rows; }

    QByteArray bytes() const {
        OldFileWriter whole = *this;
        whole.writeHead();
        for (const QString& name : m_order) {
            whole.writeMap(whole.m_tables[name]);
            whole.writeDefinition(whole.m_tables[name]);
        }
        QByteArray all;
        all.reserve(static_cast<qsizetype>(whole.m_pages.size()) * m_size);
        for (const QByteArray& page : whole.m_pages) all += page;
        return all;
    }

private:
    struct Column {
        QString name;
        int type, width, size;
        bool counter;
        int place = 0;  // of the fixed part, or among the texts
    };
    struct Table {
        QList<Column> columns;
        QList<int> pages;
        int page = 0, map = 0, last = 0, elsewhere = 0, rows = 0, counter = 0, fixed = 0, texts = 0;
    };

    int newPage() {
        m_pages.emplace_back(m_size, '\0');
        return static_cast<int>(m_pages.size()) - 1;
    }
    static QByteArray number(quint64 value, int bytes) {
        return QByteArray(reinterpret_cast<const char*>(&value), bytes);
    }
    void set(int page, int at, quint64 value, int bytes) {
        std::memcpy(m_pages[static_cast<size_t>(page)].data() + at, &value, static_cast<size_t>(bytes));
    }
    int get(int page, int at) const {
        return qFromLittleEndian<quint16>(m_pages[static_cast<size_t>(page)].constData() + at);
    }

    /// Puts a row on the page, or on a new one of the table where that is full; where it lies.
    quint32 put(Table& table, int& page, const QByteArray& bytes, int flags) {
        const int count = m_jet4 ? 12 : 8;
        const auto free = [&] {
            const int rows = get(page, count);
            return (rows == 0 ? m_size : get(page, count + rows * 2) & 0x1FFF) - (count + 4 + rows * 2);
        };
        if (page == 0 || free() < bytes.size() || get(page, count) > 250) {
            page = newPage();
            table.pages.append(page);
            set(page, 0, 0x0101, 2);
            set(page, 4, static_cast<quint64>(table.page), 4);
        }
        const int rows = get(page, count);
        const int at = (rows == 0 ? m_size : get(page, count + rows * 2) & 0x1FFF) - static_cast<int>(bytes.size());
        m_pages[static_cast<size_t>(page)].replace(at, bytes.size(), bytes);
        set(page, count + 2 + rows * 2, static_cast<quint64>(at | flags), 2);
        set(page, count, static_cast<quint64>(rows + 1), 2);
        return static_cast<quint32>(page) << 8 | static_cast<quint32>(rows);
    }

    QByteArray text(const QString& value) const {
        if (!m_jet4) return QStringEncoder("windows-1252").encode(value);
        const QByteArray plain(reinterpret_cast<const char*>(value.utf16()), value.size() * 2);
        QByteArray mixed("\xFF\xFE");
        bool single = true;
        for (const QChar c : value) {
            if (c.unicode() % 256 == 0) return plain;
            if (single != (c.unicode() < 256)) mixed += '\0', single = !single;
            mixed += number(c.unicode(), single ? 1 : 2);
        }
        return mixed.size() < plain.size() ? mixed : plain;
    }
    /// In the row, on one page, or on a chain of pages.
    QByteArray memo(const QString& value) {
        const QByteArray bytes = text(value);
        const auto length = static_cast<quint64>(bytes.size());
        Table lval;
        lval.page = 0x4C41564C;  // "LVAL"
        const int most = m_size - 20;
        if (bytes.size() <= 60) return number(length | 0x80000000, 4) + QByteArray(8, '\0') + bytes;
        if (bytes.size() <= most)
            return number(length | 0x40000000, 4) + number(put(lval, m_memos, bytes, 0), 4) + QByteArray(4, '\0');
        quint32 next = 0;
        for (qsizetype from = (bytes.size() - 1) / most * most; from >= 0; from -= most)
            next = put(lval, m_memos, number(next, 4) + bytes.mid(from, most), 0);
        return number(length, 4) + number(next, 4) + QByteArray(4, '\0');
    }

    static QByteArray fixed(const Column& column, const Value& value) {
        if (column.type == 5) return number(static_cast<quint64>(value.toMoney().tenThousandths), 8);
        if (column.type == 6) {
            const auto single = static_cast<float>(value.toDouble());
            return QByteArray(reinterpret_cast<const char*>(&single), 4);
        }
        if (column.type == 7 || column.type == 8) {
            const double real = value.toDouble();
            return QByteArray(reinterpret_cast<const char*>(&real), 8);
        }
        return number(static_cast<quint64>(value.toInt()), column.width);
    }

    QByteArray encoded(const Table& table, const QHash<QString, Value>& values) {
        const int wide = m_jet4 ? 2 : 1;
        QByteArray fixedPart(table.fixed, '\0'), mask((table.columns.size() + 7) / 8, '\0');
        QList<QByteArray> texts(table.texts);
        for (qsizetype i = 0; i < table.columns.size(); ++i) {
            const Column& column = table.columns[i];
            const Value value = values.value(column.name);
            const bool there = column.type == 1 ? value.toInt() != 0 : !value.isNull();
            if (!there) continue;
            mask[i / 8] = static_cast<char>(mask[i / 8] | 1 << i % 8);
            if (column.width > 0) fixedPart.replace(column.place, column.width, fixed(column, value));
            if (column.type == 10) texts[column.place] = text(value.toText());
            if (column.type == 12) texts[column.place] = memo(value.toText());
        }
        QByteArray bytes = number(static_cast<quint64>(table.columns.size()), wide) + fixedPart;
        if (table.texts == 0) return bytes + mask;
        QList<qsizetype> offsets;
        for (const QByteArray& part : texts) offsets += bytes.size(), bytes += part;
        offsets += bytes.size();
        const qsizetype whole = bytes.size() + offsets.size() * wide + wide + mask.size();
        for (qsizetype i = offsets.size() - 1; i >= 0; --i) bytes += number(static_cast<quint64>(offsets[i]), wide);
        if (!m_jet4) {  // offsets have one byte: which field is the first beyond 256, 512 ...
            qsizetype jumps = 0;
            while ((whole + jumps - 1) / 256 > jumps) ++jumps;
            for (qsizetype jump = jumps; jump >= 1; --jump) {
                const auto first =
                    std::find_if(offsets.begin(), offsets.end(), [&](qsizetype o) { return o >= 256 * jump; });
                bytes += first == offsets.end() ? '\xFF' : static_cast<char>(first - offsets.begin());
            }
        }
        return bytes + number(static_cast<quint64>(table.texts), wide) + mask;
    }

    void writeHead() {
        QByteArray& head = m_pages[0];
        head.replace(0, 21, QByteArray("\0\1\0\0Standard Jet DB\0", 20) + (m_jet4 ? '\1' : '\0'));
        set(0, m_jet4 ? 0x6E : 0x3A, 0x409, 2);
        set(0, 0x3C, 1252, 2);
        // the part from 18h is hidden by RC4 with a key that everybody knows
        constexpr std::array<quint8, 4> key = {0xC7, 0xDA, 0x39, 0x6B};
        std::array<quint8, 256> s{};
        std::iota(s.begin(), s.end(), quint8{0});
        for (size_t i = 0, j = 0; i < 256; ++i) std::swap(s[i], s[j = (j + s[i] + key[i % 4]) % 256]);
        quint8 j = 0;
        for (int n = 1; n <= (m_jet4 ? 128 : 126); ++n) {
            const auto i = static_cast<quint8>(n);
            j = static_cast<quint8>(j + s[i]);
            std::swap(s[i], s[j]);
            head[0x17 + n] = static_cast<char>(head[0x17 + n] ^ s[static_cast<quint8>(s[i] + s[j])]);
        }
    }

    /// Which pages are the table's: bits in the row itself, or on pages of their own where they lie far apart.
    void writeMap(Table& table) {
        const int bits = m_jet4 ? 512 : 1024, perPage = (m_size - 4) * 8;
        const int first = table.pages.isEmpty() ? 0 : table.pages.first(),
                  last = table.pages.isEmpty() ? 0 : table.pages.last();
        QByteArray map(5 + bits / 8, '\0');
        if (last - first < bits) {
            map.replace(1, 4, number(static_cast<quint64>(first), 4));
            for (const int page : table.pages) mark(map.data() + 5, page - first);
        } else {
            map[0] = 1;
            int present = -1, mapPage = 0;
            for (const int page : table.pages) {
                if (page / perPage != present) {
                    present = page / perPage;
                    mapPage = newPage();
                    set(mapPage, 0, 0x0105, 2);
                    map.replace(1 + present * 4, 4, number(static_cast<quint64>(mapPage), 4));
                }
                mark(m_pages[static_cast<size_t>(mapPage)].data() + 4, page % perPage);
            }
        }
        set(table.map, 0, 0x0101, 2);
        Table owner;
        int page = table.map;
        put(owner, page, map, 0);
        put(owner, page, QByteArray(map.size(), '\0'), 0);
    }
    static void mark(char* bits, int n) { bits[n / 8] = static_cast<char>(bits[n / 8] | 1 << n % 8); }

    void writeDefinition(const Table& table) {
        const int at = m_jet4 ? 4 : 0, counts = m_jet4 ? 40 : 20;
        const auto columns = static_cast<quint64>(table.columns.size());
        set(table.page, 0, m_jet4 ? 0x0102 : 0x43560102, 4);
        set(table.page, 12 + at, static_cast<quint64>(table.rows), 4);
        set(table.page, 16 + at, static_cast<quint64>(table.counter), 4);
        set(table.page, counts, 0x4E, 1);
        set(table.page, counts + 1, columns, 2);
        set(table.page, counts + 3, static_cast<quint64>(table.texts), 2);
        set(table.page, counts + 5, columns, 2);
        set(table.page, counts + 15, static_cast<quint64>(table.map) << 8, 4);
        set(table.page, counts + 19, static_cast<quint64>(table.map) << 8 | 1, 4);
        QByteArray entries, names;
        for (qsizetype i = 0; i < table.columns.size(); ++i) {
            const Column& column = table.columns[i];
            const auto n = static_cast<quint64>(i), place = static_cast<quint64>(column.place);
            const int flags = (column.width >= 0 ? 1 : 0) | 2 | (column.counter ? 4 : 0);
            const quint64 size = static_cast<quint64>(column.width > 0 ? column.width : column.size);
            const QByteArray fixedPlace = number(column.width >= 0 ? place : 0, 2),
                             textPlace = number(column.width < 0 ? place : 0, 2);
            entries += static_cast<char>(column.type);
            if (m_jet4) entries += QByteArray(4, '\0');
            entries += number(n, 2) + textPlace + number(n, 2) + number(0x409, 2);
            entries += m_jet4 ? QByteArray(2, '\0') : number(1252, 2) + QByteArray(2, '\0');
            entries += static_cast<char>(flags);
            if (m_jet4) entries += QByteArray(5, '\0');
            entries += fixedPlace + number(size, 2);
            const QByteArray name =
                m_jet4 ? QByteArray(reinterpret_cast<const char*>(column.name.utf16()), column.name.size() * 2)
                       : text(column.name);
            names += number(static_cast<quint64>(name.size()), m_jet4 ? 2 : 1) + name;
        }
        const QByteArray all = entries + names + "\xFF\xFF";
        m_pages[static_cast<size_t>(table.page)].replace(counts + 23, all.size(), all);
        set(table.page, 8, static_cast<quint64>(counts + 23 + all.size()), 4);
    }

    bool m_jet4;
    int m_size, m_memos = 0;
    std::vector<QByteArray> m_pages;
    QHash<QString, Table> m_tables;
    QStringList m_order;
};

}  // namespace koben
