#pragma once
#include <QDate>
#include <random>

#include "store/Database.h"
#include "tests/figures/NaiveKennzahlen.h"

namespace koben {

inline qint32 day(int y, int m, int d) { return static_cast<qint32>(QDate(y, m, d).toJulianDay()); }
inline const qint32 Today = day(2021, 1, 20);

/// A herd with most of what books hold: whole cycles, then anything on any day.
class Zufallsherde {
public:
    explicit Zufallsherde(unsigned seed) : m_bits(seed) {
        for (int i = between(0, 14); i > 0; --i) m_herd.push_back(animal());
    }
    const std::vector<naiv::Tier>& herd() const { return m_herd; }

    void write(const Database& db) const {
        Transaction all(db);
        qint64 id = 0;
        for (const naiv::Tier& t : m_herd) {
            ++id;
            put(db, "Sauen", "Art, Nummer, Zugangsdatum, Abgangsdatum",
                {Value(t.sau ? u"Sau" : u"Eber"), QString::number(id), date(t.zugang), date(t.abgang)});
            for (const auto& z : t.belegung) put(db, "Belegung", "Datum, Kennung", {date(z.tag), id});
            for (const auto& z : t.nein) put(db, "Trächtigkeit", "Datum, Kennung, Trächtig", {date(z.tag), id, u"N"});
            if (!t.nein.empty()) put(db, "Trächtigkeit", "Datum, Kennung, Trächtig", {date(Today), id, u"J"});
            for (const auto& z : t.ferkelung)
                put(db, "Ferkelung", "Datum, Kennung, Ferkel_Gesamt, Ferkel_Lebendig, Ferkel_Tot",
                    {date(z.tag), id, count(z.a), count(z.b), count(z.c)});
            for (const auto& z : t.absetzung)
                put(db, "Absetzung", "Datum, Kennung, Anzahl_Ferkel", {date(z.tag), id, count(z.a)});
            for (const auto& z : t.verluste)
                put(db, "Verluste", "Datum, Kennung, Anzahl_Ferkel", {date(z.tag), id, count(z.a)});
        }
        all.commit();
    }
    int between(int from, int to) { return from + static_cast<int>(m_bits() % static_cast<unsigned>(to - from + 1)); }

private:
    static Value date(int tag) { return tag == 0 ? Value() : Value(DateTime{tag, 0}); }
    static Value count(int n) { return n == 0 ? Value() : Value(n); }  // Null counts as 0
    static void put(const Database& db, const char* table, const char* fields, const std::vector<Value>& values) {
        const QStringList marks(static_cast<qsizetype>(values.size()), "?");
        db.prepare(QString("insert into %1 (%2) values (%3)")
                       .arg(QString::fromUtf8(table), QString::fromUtf8(fields), marks.join(u',')))
            .run(values);
    }
    bool hits(int percent) { return between(1, 100) <= percent; }
    int anyDay() { return hits(5) ? 0 : between(day(2018, 6, 1), Today + 30); }
    naiv::Zeile litter(int tag) {
        const int alive = between(0, 16), dead = between(0, 3);
        return {tag, alive + dead, alive, dead};
    }

    naiv::Tier animal() {
        naiv::Tier t;
        t.sau = hits(90);
        int d = between(day(2018, 6, 1), day(2020, 10, 1));
        if (hits(80)) t.zugang = d - between(0, 60);
        for (int cycles = hits(10) ? 0 : between(1, 7); cycles > 0; --cycles) cycle(t, d);
        if (hits(40)) t.abgang = hits(80) ? d + between(0, 80) : anyDay();
        if (hits(40)) mess(t);
        return t;
    }
    void cycle(naiv::Tier& t, int& d) {
        t.belegung.push_back({d});
        if (hits(30)) t.belegung.push_back({d + between(0, 4)});
        if (hits(25)) {
            if (hits(50)) t.nein.push_back({d + between(0, 30)});
            d += between(4, 60);
            return;
        }
        if (hits(5)) t.nein.push_back({d + between(20, 90)});
        d += between(103, 127);
        t.ferkelung.push_back(litter(d));
        if (hits(10)) t.ferkelung.push_back(litter(d));  // the rest was written apart
        if (hits(50)) t.verluste.push_back({d + between(0, 20), between(0, 3)});
        const int weanings = hits(12) ? 0 : between(1, 2);
        for (int i = 0; i < weanings; ++i)
            t.absetzung.push_back({d += between(i ? 0 : 18, i ? 9 : 35), between(0, 14)});
        d += between(0, hits(10) ? 90 : 8);
    }
    void mess(naiv::Tier& t) {
        for (int i = between(0, 4); i > 0; --i) t.belegung.push_back({anyDay()});
        for (int i = between(0, 2); i > 0; --i) t.nein.push_back({anyDay()});
        for (int i = between(0, 2); i > 0; --i) t.ferkelung.push_back(litter(anyDay()));
        for (int i = between(0, 2); i > 0; --i) t.absetzung.push_back({anyDay(), between(0, 12)});
    }

    std::mt19937 m_bits;
    std::vector<naiv::Tier> m_herd;
};

}  // namespace koben
