#include "exchange/Geraeteimport.h"

#include <map>

#include "core/NeuesTier.h"
#include "core/PZ_Koben_Subs.h"
#include "core/PZ_Koben_Subs_Datenbank.h"

namespace koben {
namespace {

Value& fieldOf(FieldValues& values, QStringView column) {
    for (auto& [name, value] : values)
        if (name == column) return value;
    throw std::logic_error("a booking without " + column.toString().toStdString());
}

/// The list of medicines: a treatment takes from it what its line leaves open, and adds a medicine that it lacks.
class Medikamente {
public:
    explicit Medikamente(const Database& db)
        : m_known(db.prepare(QStringLiteral("select top 1 Behandlungsart, Menge, Einheit, Verabreichungsart, "
                                            "Wartezeit_Tage, Kosten_je_Gabe from Medikamente where Medikament = ?"))),
          m_new(db, QStringLiteral("Medikamente"),
                {"Medikament", "Behandlungsart", "Menge", "Einheit", "Verabreichungsart", "Wartezeit_Tage",
                 "Kosten_je_Gabe"}) {}

    void complete(FieldValues& treatment, const QString& medicine) {
        static const QString columns[] = {"Behandlungsart",    "Menge",          "Einheit",
                                          "Verabreichungsart", "Wartezeit_Tage", "Kosten"};
        m_known.bind({medicine});
        if (!m_known.next()) {
            std::vector<Value> row{fieldOf(treatment, u"Medikament")};
            for (const QString& column : columns) row.push_back(fieldOf(treatment, column));
            m_new.insert(std::move(row));
            return;
        }
        for (int i = 0; i < static_cast<int>(std::size(columns)); ++i) {
            Value& given = fieldOf(treatment, columns[i]);
            if (given.isText() ? given.toText().isEmpty() : given.toDouble() == 0) given = m_known.value(i);
        }
    }

private:
    Statement m_known;
    RowWriter m_new;
};

class Writer {
public:
    Writer(const Action& action, const Geraeteplan& plan)
        : m_db(action.database()),
          m_plan(plan),
          m_lastAnimal(m_db.prepare(QStringLiteral("select max(ID) as n from Sauen"))),
          m_sows(action, {"Nummer"}, {{"Art", QStringLiteral("Sau")}, {"Belegungsart", QStringLiteral("N")}}),
          m_piglets(action, {"Nummer", "Tätowierung", "Stallnr", "Boxdatum", "Zugangsdatum", "Zugangsgewicht_kg"},
                    {{"Art", QStringLiteral("Ferkel")}, {"Zugangsgrund", QStringLiteral("Eigene Zucht")}}),
          m_medicines(m_db) {}

    void run() {
        bool cycle = false;
        for (const Geplant& entry : m_plan.entries) {
            if (entry.urteil != Geraeteurteil::Neu) continue;
            write(entry);
            cycle = cycle || angaben(entry.booking->section->art).cycle;
        }
        if (cycle) Werte_vormerken(m_db);
    }

private:
    void write(const Geplant& entry) {
        FieldValues values = entry.booking->values;
        if (entry.booking->section->art == Buchungsart::Behandlung)
            m_medicines.complete(values, entry.booking->fields[3]);
        insert(entry.booking->section->art, values, entry.animal);
        if (entry.mirrored) mirror(entry, values);
        if (!entry.booking->pen().isEmpty()) wean(entry);
        if (entry.booking->section->art == Buchungsart::Ferkelverkauf)
            Stichwort_eintragen(m_db, fieldOf(values, u"Kunde").toText(), QStringLiteral("Stammdaten_Kunde"));
    }

    void insert(Buchungsart art, const FieldValues& values, Plantier animal) {
        auto writer = m_writers.find(art);
        if (writer == m_writers.end()) {
            QStringList columns;
            for (const auto& [column, value] : values) columns.append(column);
            columns.append(QStringLiteral("Kennung"));
            writer = m_writers.try_emplace(art, m_db, QString::fromUtf8(angaben(art).table), columns).first;
        }
        std::vector<Value> row;
        row.reserve(values.size() + 1);
        for (const auto& [column, value] : values) row.push_back(value);
        row.emplace_back(idOf(animal));
        writer->second.insert(std::move(row));
    }

    /// The same count leaves the partner.
    void mirror(const Geplant& entry, FieldValues values) {
        Value& count = fieldOf(values, u"Anzahl_Ferkel");
        count = -count.toInt();
        fieldOf(values, u"Zu_Saunr") = entry.booking->number().left(entry.booking->section->fields[1].width);
        insert(Buchungsart::Verschiebung, values, entry.partner);
    }

    void wean(const Geplant& entry) {
        const Geraetebuchung& booking = *entry.booking;
        const Value weight = Zahl_aus_Text(QString(booking.fields[3]));
        for (int i = 0; i < booking.piglets; ++i)
            m_piglets.add({m_plan.numbers[entry.firstPiglet + i], booking.number() + u'-' + QString::number(i + 1),
                           booking.pen(), booking.day, booking.day, weight});
        const qint64 last = lastAnimal();
        for (int i = booking.piglets; i > 0; --i) m_ids[-(entry.firstPiglet + i)] = last - booking.piglets + i;
        Stichwort_eintragen(m_db, booking.pen(), QStringLiteral("Stammdaten_Stallnummer"));
    }

    /// A sow that the plan adds comes into the herd with the first booking that names her.
    qint64 idOf(Plantier animal) {
        if (animal >= 0) return animal;
        const auto known = m_ids.find(animal);
        if (known != m_ids.end()) return known->second;
        m_sows.add({m_plan.numbers[-animal - 1]});
        return m_ids[animal] = lastAnimal();
    }

    qint64 lastAnimal() {
        m_lastAnimal.bind({});
        m_lastAnimal.next();
        return m_lastAnimal.integer(0);
    }

    const Database& m_db;
    const Geraeteplan& m_plan;
    Statement m_lastAnimal;
    NeueTiere m_sows, m_piglets;
    Medikamente m_medicines;
    std::map<Buchungsart, RowWriter> m_writers;
    std::map<Plantier, qint64> m_ids;
};

/// A field of the list; a decimal number stands as it was read, with a point.
QString listed(const Geraetebuchung& booking, int position) {
    QString field = booking.fields[position];
    const std::vector<Geraetefeld>& fields = booking.section->fields;
    if (position < 2 || position >= booking.section->penAt()) return field;
    const Geraetewert kind = fields[static_cast<size_t>(position) - 2].kind;
    if (kind == Geraetewert::Weight || kind == Geraetewert::Amount) Zahl_aus_Text(field);
    return field;
}

}  // namespace

void bookDevicePlan(const Action& action, const Geraeteplan& plan) { Writer(action, plan).run(); }

QString Importliste(const Geraeteplan& plan) {
    QString text = QStringLiteral("Inforamtionen zum Datenimport vom Pocket-PC") + Crlf + Crlf +
                   QStringLiteral("Folgende Daten wurden importiert") + Crlf + Crlf +
                   QStringLiteral("Saunummer       Importart  Dateninhalte") + Crlf +
                   QStringLiteral("=======================================") + Crlf;
    for (const Geplant& entry : plan.entries) {
        if (entry.urteil != Geraeteurteil::Neu) continue;
        const Geraetebuchung& booking = *entry.booking;
        text += Text_links(booking.number(), 16) + QString::fromUtf8(booking.section->word);
        for (int i = 1; i <= booking.section->listed; ++i) text += listed(booking, i) + u'\t';
        text += Crlf;
    }
    return text;
}

}  // namespace koben
