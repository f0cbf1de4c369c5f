#pragma once
// The lists of bookings behind figures.
#include "analytics/Kennwert.h"
#include "forms/Erklaerung.h"

namespace koben {

/// A line of a list of bookings: the booking, words about it, and its part in numerator and denominator; a figure that
/// is a plain sum has only the first.
struct Herleitungszeile {
    Value wer;
    qint64 tier = 0;
    qint32 day = 0;
    QString buchung, einzelheit;
    std::optional<double> numerator, denominator;
};

class Herleitung {
public:
    explicit Herleitung(const Database& db) : m_db(db) {}

    /// Adds the bookings of one row of a run, by what they mean in the formula; `mine` tells which are the row's.
    void add(const Formel& formel, Buchungsauszug& bookings, const std::function<bool(const Buchung&)>& mine,
             const Zellenlage& from);
    void add(Herleitungszeile line) { m_lines.push_back(std::move(line)); }
    /// Number of the animal with this ID; "" for one that is not there any more.
    QString nummer(qint64 id);
    /// A line for a booking of an animal.
    Herleitungszeile line(const Buchung& booking, const QString& name);

    /// The whole explanation of a cell, its lines by day and animal.
    Explanation told(const QString& sentence, const Zelle& cell, const QString& shown);

private:
    void addParts(const std::vector<Groesse>& numerator, const std::vector<Groesse>& denominator,
                  Buchungsauszug& bookings, const std::function<bool(const Buchung&)>& mine);
    void addPerYear(Groesse quantity, Buchungsauszug& bookings, const Zellenlage& from);
    void addStock(const Zellenlage& from);
    void addGain(Buchungsauszug& bookings, const std::function<bool(const Buchung&)>& mine, const Zellenlage& from);
    void balance(double stored, size_t first, const Tier& tier);

    const Database m_db;
    std::vector<Herleitungszeile> m_lines;
    QHash<qint64, QString> m_numbers;
};

}  // namespace koben
