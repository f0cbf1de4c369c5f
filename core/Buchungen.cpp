#include "core/Buchungen.h"

#include <algorithm>

#include "core/PZ_Koben_Subs_Datenbank.h"

namespace koben {
namespace {

constexpr qint64 MostInBooking = 32767;  // that the field of a count holds

const QString Kennung = QStringLiteral("Kennung");

QString text(const char* utf8) { return QString::fromUtf8(utf8); }

bool given(const QStringList& fields, const FieldValues& fixed, const QString& field) {
    return fields.contains(field, Qt::CaseInsensitive) ||
           std::any_of(fixed.begin(), fixed.end(),
                       [&](const auto& pair) { return pair.first.compare(field, Qt::CaseInsensitive) == 0; });
}

/// The fixed values of a new booking: those given, then the kind's defaults for fields that nobody gives.
FieldValues withDefaults(Buchungsart art, const QStringList& fields, const FieldValues& fixed) {
    FieldValues all = fixed;
    const auto add = [&](const char* names, const Value& value) {
        for (const QString& field : text(names).split(u' ', Qt::SkipEmptyParts))
            if (!given(fields, fixed, field)) all.emplace_back(field, value);
    };
    add(angaben(art).texts, QString());
    add(angaben(art).amounts, 0);
    return all;
}

}  // namespace

Buchungen::Buchungen(const Action& action, Buchungsart art, const QStringList& fields, const FieldValues& fixed)
    : m_action(action),
      m_art(art),
      m_new(action.database(), text(angaben(art).table), fields + QStringList(Kennung),
            withDefaults(art, fields, fixed)),
      m_changed(action.database(), text(angaben(art).table), fields + QStringList(Kennung), fixed) {}

void Buchungen::book(qint64 animal, std::vector<Value> values) {
    values.emplace_back(animal);
    m_new.insert(std::move(values));
    follow(animal);
}

void Buchungen::change(qint64 id, qint64 animal, std::vector<Value> values) {
    values.emplace_back(animal);
    if (!m_changed.update(id, std::move(values)))
        throw DatabaseError(DatabaseError::Kind::State,
                            QStringLiteral("Die Buchung, die geändert werden soll, gibt es nicht mehr. Bitte "
                                           "schließen Sie das Eingabefenster und öffnen Sie es neu."));
    follow(animal);
}

void Buchungen::follow(qint64 animal) {
    if (angaben(m_art).litters) {
        if (!m_litters) m_litters.emplace(m_action.database());
        m_litters->number(animal);
    }
    if (!angaben(m_art).cycle || m_noted) return;
    Werte_vormerken(m_action.database());
    m_noted = true;
}

void Verschiebung_gegenbuchen(const Action& action, FieldValues booking, qint64 partner, const QString& number) {
    const Artangaben& kind = angaben(Buchungsart::Verschiebung);
    for (auto& [field, value] : booking) {
        if (field == text(kind.taken)) value = -value.toDouble();
        if (field == text(kind.partner)) value = number;
    }
    Buchungen(action, Buchungsart::Verschiebung, {}, booking).book(partner);
}

Buchungen Absetzverluste(const Action& action, QDate day, double count, const QString& reason) {
    return {
        action,
        Buchungsart::Verluste,
        {QStringLiteral("Muttersau")},
        {{QStringLiteral("Datum"), day}, {QStringLiteral("Anzahl_Ferkel"), count}, {QStringLiteral("Grund"), reason}}};
}

/// The comment is not worded as in the question that offers the booking: registers of farms already hold it so.
void Eigenverkauf_buchen(const Action& action, QDate day, qint64 count) {
    Buchungen sales(action, Buchungsart::Ferkelverkauf, {QStringLiteral("Anzahl_Verkauf")},
                    {{QStringLiteral("Datum"), day},
                     {QStringLiteral("Kunde"), QStringLiteral("Eigenbetrieb")},
                     {QStringLiteral("Kommentar"), QStringLiteral("In Mast gebucht")}});
    for (qint64 left = count; left > 0; left -= MostInBooking) sales.book(0, {std::min(left, MostInBooking)});
}

namespace {

void followRemoval(const Action& action, qint64 animal) {
    if (animal == 0) return;
    Wurfnummern(action.database()).number(animal);
    Werte_vormerken(action.database());
}

}  // namespace

void Buchung_loeschen(const Action& action, Buchungsart art, qint64 id, qint64 animal) {
    action.database().prepare(QStringLiteral("delete from %1 where ID = ?").arg(text(angaben(art).table))).run({id});
    followRemoval(action, animal);
}

void Buchung_kopieren(const Action& action, Buchungsart art, qint64 id, QDate day, qint64 animal) {
    const QString sql = QStringLiteral("select * from %1 where ID = %2").arg(text(angaben(art).table)).arg(id);
    Recordset from = action.database().open(sql), to = action.database().open(sql);
    to.addNew();
    for (int i = 0; i < from.fieldCount(); ++i) {
        const QString& field = from.field(i).name;
        if (field != u"ID") to.set(i, field == text(angaben(art).date) ? Value(day) : from.value(i));
    }
    to.update();
    followRemoval(action, animal);
}

qint64 Buchungen_loeschen(const Action& action, qint64 animal) {
    qint64 count = 0;
    for (const Artangaben& kind : Buchungsarten)
        count += action.database()
                     .prepare(QStringLiteral("delete from %1 where Kennung = ?").arg(text(kind.table)))
                     .run({animal});
    return count;
}

qint64 Buchungen_zaehlen(const Database& db, qint64 animal) {
    qint64 count = 0;
    for (const Artangaben& kind : Buchungsarten)
        count +=
            db.table(
                  QStringLiteral("select count(*) as n from %1 where Kennung = %2").arg(text(kind.table)).arg(animal))
                .integer(0, 0);
    return count;
}

}  // namespace koben
