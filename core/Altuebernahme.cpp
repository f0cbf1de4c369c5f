// The way of an old herd into the database.
#include <QHash>
#include <QSet>
#include <algorithm>

#include "core/Aktionsnamen.h"
#include "core/Altbestand.h"
#include "core/Altfelder.h"
#include "core/Wurfnummern.h"
#include "store/ChangeLog.h"
#include "store/OldRowWriter.h"
#include "store/Schema.h"

namespace koben {
namespace {

const QString Key = QStringLiteral("ID"), Link = QStringLiteral("Kennung"), Mother = QStringLiteral("Muttersau");

/// Names of the old file's own may hold blanks.
QString bracketed(const QString& name) { return u'[' + name + u']'; }
QStringList bracketed(QStringList names) {
    for (QString& name : names) name = bracketed(name);
    return names;
}

/// What both ways share: the file, how far it has come, emptying, rows that are copied as they are.
class Uebernahme {
protected:
    Uebernahme(const Database& db, const QString& path, const QStringList& tables, const TakeoverProgress& go)
        : m_db(db), m_go(go), m_file(path, tables, [this] { return m_go(m_percent); }), m_silence(db) {
        const auto& found = m_file.tables();
        if (std::none_of(found.begin(), found.end(),
                         [](const OldTable& t) { return t.columnOf(u"Nummer") >= 0 && isAnimals(t); }))
            throw DatabaseError(DatabaseError::Kind::NotADatabase,
                                QStringLiteral("In der alten Datenbank %1 fehlt die Tabelle Sauen, oder sie ist nicht "
                                               "lesbar. Es wurde nichts übernommen. Bitte nehmen Sie eine andere Kopie "
                                               "der Datei.")
                                    .arg(path));
    }

    static bool isAnimals(const OldTable& table) { return alttabelle(table.name) == Alttabellen; }

    bool step() {
        constexpr qint64 between = 64, reading = 2;  // every row is read once and written once
        if (++m_steps % between != 0) return true;
        const qint64 all = std::max<qint64>(m_file.rowsTold() * reading, 1);
        m_percent = static_cast<int>(std::min<qint64>(m_steps * 99 / all, 99));
        return m_go(m_percent);
    }

    /// Row by row for the animals, so that whoever shows them hears of it.
    bool empty() {
        dropHelpers(m_silence.connection());
        for (const Alttabelle& table : Alttabellen) {
            if (!m_go(m_percent)) return false;
            m_db.execute(QStringLiteral("delete from ") + QString::fromUtf8(table.name) +
                         (&table == Alttabellen ? QStringLiteral(" where ID is not null") : QString()));
        }
        return true;
    }
    bool addHelpersAgain() {
        return addHelpers(m_silence.connection(), [this] { return m_go(m_percent); });
    }

    /// Rows of an old table on their way into the table of its name.
    class Rows {
    public:
        Rows(Uebernahme& all, const OldTable& table, const QStringList& without, const QStringList& further = {})
            : m_fields(all.m_db, table, without),
              m_slow(all.m_db, bracketed(table.name), bracketed(m_fields.names() + further)),
              m_quick(all.m_silence.connection(), bracketed(table.name), bracketed(m_fields.names() + further), table,
                      m_fields.places()) {}

        Altfelder& fields() { return m_fields; }
        void write(const OldRow& row, const std::vector<Value>& further = {}) {
            if (!m_quick.insert(row, further)) write(m_fields.values(row), further);
        }
        /// The values of the fields, looked at.
        void write(std::vector<Value> values, const std::vector<Value>& further) {
            m_fields.requireFit(values);
            values.insert(values.end(), further.begin(), further.end());
            m_slow.insert(std::move(values));
        }

    private:
        Altfelder m_fields;
        RowWriter m_slow;
        OldRowWriter m_quick;
    };

    /// All rows, with these values in the place of their own. False where it was given up.
    bool copy(const OldTable& table, const FieldValues& fixed = {}) {
        QStringList without;
        std::vector<Value> further;
        for (const auto& [field, value] : fixed) without += field, further.push_back(value);
        Rows rows(*this, table, without, without);
        const QStringList names = rows.fields().names();
        const QString numbers = keyOf(table);
        const auto field = std::find_if(names.begin(), names.end(), [&](const QString& name) {
            return name.compare(numbers, Qt::CaseInsensitive) == 0;
        });
        const qsizetype key = field == names.end() ? -1 : field - names.begin();
        QSet<qint64> taken;
        OldLosses ignored;
        std::vector<std::vector<Value>> again;  // rows whose number another row has; they get free ones at the end
        while (m_file.nextRow()) {
            if (!step() || !step()) return false;
            const OldRow& row = m_file.row();
            const Value number =
                key < 0 ? Value() : row.value(rows.fields().places()[static_cast<size_t>(key)], ignored);
            const qsizetype before = taken.size();
            if (!number.isNull()) taken.insert(number.toInt());
            if (number.isNull() || taken.size() > before) {
                if (!names.isEmpty()) rows.write(row, further);
                continue;
            }
            if (isAnimals(table)) refuseDoubled(number);
            again.push_back(rows.fields().values(row));
            again.back()[static_cast<size_t>(key)] = Value();
        }
        for (std::vector<Value>& values : again) rows.write(std::move(values), further);
        if (!again.empty())
            m_result.hinweise += table.name + QStringLiteral(": ") +
                                 counted(static_cast<qint64>(again.size()), "doppelte Nummer", "doppelte Nummern") +
                                 QStringLiteral(" neu vergeben");
        note(table, rows.fields());
        return true;
    }

    /// The field that numbers the rows, "" for none.
    static QString keyOf(const OldTable& table) {
        if (table.counter >= 0) return table.fields[static_cast<size_t>(table.counter)].name;
        return alttabelle(table.name) ? Key : QString();
    }

    /// Whose bookings are whose could not be told.
    [[noreturn]] static void refuseDoubled(const Value& number) {
        throw DatabaseError(DatabaseError::Kind::NotADatabase,
                            QStringLiteral("In der alten Datenbank gibt es die ID %1 in der Tabelle Sauen mehrfach. Zu "
                                           "welchem Tier die Buchungen gehören, ist deshalb nicht sicher, und es wurde "
                                           "nichts übernommen. Bitte nehmen Sie eine andere Kopie der Datei.")
                                .arg(number.toText()));
    }

    void note(const OldTable& table, Altfelder& fields) {
        fields.losses().rows = m_file.rowsLost();
        if (!table.readable || fields.losses().rows > 0 || fields.losses().values > 0) m_result.ganz = false;
        const QString lost = table.readable ? lossText(fields.losses()) : QStringLiteral("nicht lesbar");
        if (!lost.isEmpty()) m_result.hinweise += QStringLiteral("%1: %2").arg(table.name, lost);
        if (!fields.homeless().isEmpty())
            m_result.hinweise += QStringLiteral("%1: ohne Platz in KOBEN 2.0 ist %2")
                                     .arg(table.name, fields.homeless().join(QStringLiteral(", ")));
    }

    /// Nothing is derived: the next derivation knows no settings that it was made by, and walks the herd.
    void settle() const {
        for (const auto purpose : {ChangeLog::Purpose::Values, ChangeLog::Purpose::Status})
            ChangeLog(m_db, purpose).settle(QString());
    }

    Database m_db;
    TakeoverProgress m_go;
    int m_percent = 0;
    OldFile m_file;
    Altuebernahme m_result;

private:
    ChangeLog::Silence m_silence;
    qint64 m_steps = 0;
};

/// From the predecessor: the animals come first and get their IDs; a table of bookings is kept as bytes until its last
/// row is read, put in the order of the animals, and written.
class AusKoben1 : Uebernahme {
public:
    AusKoben1(const Action& action, const QString& path, const TakeoverProgress& go)
        : Uebernahme(action.database(), path, alttabellen(), go) {}

    std::optional<Altuebernahme> run() {
        if (!empty()) return std::nullopt;
        while (const OldTable* table = m_file.nextTable())
            if (!take(*table)) return std::nullopt;
        if (!addHelpersAgain() || !numberLitters()) return std::nullopt;  // by the helpers
        settle();
        return std::move(m_result);
    }

private:
    struct Animal {
        qint64 id;  ///< the new one
        Value number;
        bool litters = false;
    };
    /// A booking among the bytes of its table.
    struct Place {
        qint32 animal;
        qint32 size;
        qsizetype at;
    };

    bool take(const OldTable& table) {
        const Alttabelle* known = alttabelle(table.name);
        if (known == Alttabellen) return takeAnimals(table);
        if (known->buchung) return takeBookings(table);
        FieldValues fixed;
        if (table.name.compare(QStringLiteral("Bestandsoptionen"), Qt::CaseInsensitive) == 0)
            fixed = {{QStringLiteral("Tierart"), QStringLiteral("Alle")}};
        m_result.tabellen += QString::fromUtf8(known->name);
        return copy(table, fixed);
    }

    bool takeAnimals(const OldTable& table) {
        Rows rows(*this, table, {Key});
        const int id = table.columnOf(Key), number = table.columnOf(u"Nummer"), stall = table.columnOf(u"Stallnr");
        OldLosses again;
        while (m_file.nextRow()) {
            if (!step() || !step()) return false;
            const OldRow& row = m_file.row();
            if (!rows.fields().names().isEmpty()) rows.write(row);
            const Value old = id < 0 ? Value() : row.value(id, again);
            if (!old.isNull()) m_places.insert(old.toInt(), static_cast<qint32>(m_animals.size()));
            m_animals.push_back({0, row.value(number, again)});
            m_result.tierzeilen += m_animals.back().number.toText() + QStringLiteral(" / ") +
                                   (stall < 0 ? QString() : row.value(stall, again).toText());
        }
        note(table, rows.fields());
        m_result.tiere = static_cast<qint64>(m_animals.size());
        Statement ids = m_db.prepare(QStringLiteral("select ID from Sauen order by ID"));
        ids.bind({});
        for (Animal& animal : m_animals)
            if (ids.next()) animal.id = ids.integer(0);
        return true;
    }

    bool takeBookings(const OldTable& table) {
        QByteArray bytes;
        std::vector<Place> places;
        const auto farm = static_cast<qint32>(m_animals.size());  // behind all animals
        const bool trade = table.name.compare(QStringLiteral("Ferkelverkauf"), Qt::CaseInsensitive) == 0;
        const int link = table.columnOf(Link);
        if (link < 0) {
            m_result.ganz = false;
            m_result.hinweise +=
                table.name + QStringLiteral(": ohne das Feld Kennung gehört keine Buchung zu einem Tier");
        }
        OldLosses ignored;
        while (link >= 0 && m_file.nextRow()) {
            if (!step()) return false;
            const Value old = m_file.row().value(link, ignored);
            if (old.isNull()) continue;
            const QByteArrayView row = m_file.row().bytes();
            const auto keep = [&](qint32 animal) {
                places.push_back({animal, static_cast<qint32>(row.size()), bytes.size()});
            };
            const qsizetype before = static_cast<qsizetype>(places.size());
            for (auto it = m_places.constFind(old.toInt()); it != m_places.constEnd() && it.key() == old.toInt(); ++it)
                keep(it.value());
            if (trade && old.toInt() == 0) keep(farm);
            if (before < static_cast<qsizetype>(places.size())) bytes.append(row);
        }
        std::stable_sort(places.begin(), places.end(),
                         [](const Place& a, const Place& b) { return a.animal < b.animal; });
        return writeBookings(table, bytes, places);
    }

    bool writeBookings(const OldTable& table, const QByteArray& bytes, const std::vector<Place>& places) {
        const Alttabelle* known = alttabelle(table.name);
        const bool loss = known->name == std::string_view("Verluste"),
                   litter = known->name == std::string_view("Ferkelung");
        Rows rows(*this, table, loss ? QStringList{Key, Link, Mother} : QStringList{Key, Link},
                  loss ? QStringList{Link, Mother} : QStringList{Link});
        OldRow row(table);
        for (const Place& place : places) {
            if (!step()) return false;
            row.take(QByteArrayView(bytes).sliced(place.at, place.size));
            const bool farm = static_cast<size_t>(place.animal) >= m_animals.size();
            std::vector<Value> further{farm ? qint64{0} : m_animals[static_cast<size_t>(place.animal)].id};
            if (loss) further.push_back(m_animals[static_cast<size_t>(place.animal)].number);
            rows.write(row, further);
            if (litter) m_animals[static_cast<size_t>(place.animal)].litters = true;
        }
        m_result.buchungen += static_cast<qint64>(places.size());
        note(table, rows.fields());
        return true;
    }

    bool numberLitters() {
        Wurfnummern litters(m_db);
        for (const Animal& animal : m_animals) {
            if (!animal.litters) continue;
            if (!step()) return false;
            litters.number(animal.id);
        }
        return true;
    }

    std::vector<Animal> m_animals;
    QMultiHash<qint64, qint32> m_places;  // old ID -> animal; more than one only in a damaged file
};

/// From a genuine koben2.mdb.
class AusKoben2 : Uebernahme {
public:
    AusKoben2(const Database& db, const QString& path, const TakeoverProgress& go) : Uebernahme(db, path, {}, go) {}

    std::optional<Altuebernahme> run() {
        if (!empty()) return std::nullopt;
        QStringList missing = alttabellen();
        while (const OldTable* table = m_file.nextTable()) {
            const qint64 before = m_file.rowsRead();
            missing.removeIf([&](const QString& name) { return name.compare(table->name, Qt::CaseInsensitive) == 0; });
            if (!m_db.tables().contains(table->name, Qt::CaseInsensitive)) continue;
            if (!alttabelle(table->name)) m_db.execute(QStringLiteral("delete from ") + bracketed(table->name));
            if (!copy(*table)) return std::nullopt;
            const Alttabelle* known = alttabelle(table->name);
            if (known == Alttabellen) m_result.tiere = m_file.rowsRead() - before;
            if (known && known->buchung) m_result.buchungen += m_file.rowsRead() - before;
            m_result.tabellen += table->name;
            goOnCounting(*table);
        }
        if (!missing.isEmpty())
            m_result.hinweise += QStringLiteral("in der alten Datenbank fehlt ") + missing.join(QStringLiteral(", "));
        if (!addHelpersAgain()) return std::nullopt;
        settle();
        return std::move(m_result);
    }

private:
    /// The numbers of rows that were deleted in the old file do not come back either.
    void goOnCounting(const OldTable& table) {
        constexpr qint64 most = 2'000'000'000;  // a damaged one would leave no number for the next row
        if (table.counter < 0 || table.lastNumber <= 0 || table.lastNumber > most) return;
        const QString name = table.fields[static_cast<size_t>(table.counter)].name;
        const std::vector<Field> own = m_db.fields(table.name);
        if (std::none_of(own.begin(), own.end(),
                         [&](const Field& field) { return field.name.compare(name, Qt::CaseInsensitive) == 0; }))
            return;
        const Table highest = m_db.table(QStringLiteral("select max([%1]) as h from [%2]").arg(name, table.name));
        if (highest.integer(0, 0) >= table.lastNumber) return;
        m_db.execute(QStringLiteral("insert into [%1] ([%2]) values (%3)").arg(table.name, name).arg(table.lastNumber));
        m_db.execute(QStringLiteral("delete from [%1] where [%2] = %3").arg(table.name, name).arg(table.lastNumber));
    }
};

/// Columns that a start adds to an older file, with what they hold then; see Spalten_nachruesten.
bool isLeftToStart(const OldTable& old, const QString& field) {
    if (alttabelle(old.name) != Alttabellen || old.columnOf(field) >= 0) return false;
    if (field == u"Statusabfrage") return old.columnOf(u"Status") < 0;
    return field == u"Aenderung" || field == u"Status";
}

/// The definition of a further field in the words of the dialect; "" for one that has no place.
QString definition(const OldTable& table, size_t column) {
    static const std::pair<Type, const char*> types[] = {
        {Type::Bool, "YESNO"},    {Type::Short, "SHORT"},       {Type::Long, "LONG"},     {Type::Single, "SINGLE"},
        {Type::Double, "DOUBLE"}, {Type::Currency, "CURRENCY"}, {Type::Date, "DATETIME"}, {Type::Text, "MEMO"}};
    const Field& field = table.fields[column];
    if (field.name.contains(u']') || field.name.startsWith(u"koben_", Qt::CaseInsensitive)) return {};
    const QString name = QStringLiteral("[%1] ").arg(field.name);
    if (static_cast<int>(column) == table.counter && field.type == Type::Long) return name + QStringLiteral("COUNTER");
    if (field.size > 0 && field.size <= 255) return name + QStringLiteral("TEXT (%1)").arg(field.size);
    for (const auto& [type, word] : types)
        if (type == field.type) return name + QString::fromUtf8(word);
    return {};
}

/// A field of the program's own table: wider where the old one is.
QString widened(const QString& own, const OldTable& old) {
    const int column = old.columnOf(own.section(u' ', 0, 0));
    if (column < 0 || !own.contains(QStringLiteral("TEXT ("))) return own;
    const Field& field = old.fields[static_cast<size_t>(column)];
    if (field.type != Type::Text) return own;
    const QString name = own.section(u' ', 0, 0);
    if (field.size == 0 || field.size > 255) return name + QStringLiteral(" MEMO");
    const int size = own.section(u'(', 1).section(u')', 0, 0).toInt();
    return name + QStringLiteral(" TEXT (%1)").arg(std::max(size, field.size));
}

QString ownTable(const QString& statement, const OldTable& old) {
    const qsizetype open = statement.indexOf(u'(');
    QStringList fields, names;
    for (const QString& own : statement.mid(open + 1).chopped(1).split(QStringLiteral(", "))) {
        names += own.section(u' ', 0, 0);
        if (!isLeftToStart(old, names.last())) fields += widened(own, old);
    }
    for (size_t i = 0; i < old.fields.size(); ++i)
        if (!names.contains(old.fields[i].name, Qt::CaseInsensitive))
            if (const QString further = definition(old, i); !further.isEmpty()) fields += further;
    return statement.left(open + 1) + fields.join(QStringLiteral(", ")) + u')';
}

}  // namespace

std::optional<Altuebernahme> takeOverKoben1(const Action& action, const QString& path, const TakeoverProgress& go) {
    return unlessGivenUp(go, [&](const TakeoverProgress& on) { return AusKoben1(action, path, on).run(); });
}

std::optional<Altuebernahme> takeOverKoben2(const Database& db, const QString& path, const TakeoverProgress& go) {
    return unlessGivenUp(go, [&](const TakeoverProgress& on) { return AusKoben2(db, path, on).run(); });
}

namespace {

void makeTables(Database db, const OldFile& file) {
    const auto old = [&](const QString& name) {
        return std::find_if(file.tables().begin(), file.tables().end(),
                            [&](const OldTable& t) { return t.name.compare(name, Qt::CaseInsensitive) == 0; });
    };
    const QString create = QStringLiteral("create table ");
    for (const QString& statement : schemaStatements()) {
        if (statement.startsWith(u"insert")) continue;
        const QString name =
            statement.startsWith(create) ? statement.mid(create.size()).section(u'(', 0, 0) : QString();
        const auto table = old(name);
        db.execute(table == file.tables().end() ? statement : ownTable(statement, *table));
    }
    for (const OldTable& table : file.tables()) {
        if (db.tables().contains(table.name, Qt::CaseInsensitive) || table.name.contains(u']')) continue;
        QStringList fields;
        for (size_t i = 0; i < table.fields.size(); ++i)
            if (const QString field = definition(table, i); !field.isEmpty()) fields += field;
        if (!fields.isEmpty() && !table.name.startsWith(u"koben_", Qt::CaseInsensitive))
            db.execute(QStringLiteral("create table [%1] (%2)").arg(table.name, fields.join(QStringLiteral(", "))));
    }
}

}  // namespace

bool makeTablesOf(const Database& db, const QString& path, const TakeoverProgress& go) {
    const auto made = unlessGivenUp(go, [&](const TakeoverProgress& on) {
        makeTables(db, OldFile(path, {}, [&] { return on(0); }));
        return std::optional(true);
    });
    return made.has_value();
}

}  // namespace koben
