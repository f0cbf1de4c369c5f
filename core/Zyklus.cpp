#include "core/Zyklus.h"

#include <QHash>
#include <algorithm>

#include "core/Konfig.h"

namespace koben {
namespace {

/// The animals that bookings name, found by ID.
class Herde {
public:
    Zykluswerte& operator[](qint64 id) {
        if (m_last < m_animals.size() && m_animals[m_last].tier == id) return m_animals[m_last].werte;
        const auto place = m_places.constFind(id);
        m_last = place == m_places.cend() ? m_animals.size() : *place;
        if (place == m_places.cend()) {
            m_places.insert(id, m_last);
            m_animals.push_back({id, {}});
        }
        return m_animals[m_last].werte;
    }
    std::vector<Tierwerte> take() { return std::move(m_animals); }
    std::vector<Tierwerte>& animals() { return m_animals; }

private:
    std::vector<Tierwerte> m_animals;
    QHash<qint64, size_t> m_places;
    size_t m_last = 0;  ///< bookings of one animal often come together
};

void add(qint64& sum, qint64 number) {
    if (number != NoNumber) sum = (sum == NoNumber ? 0 : sum) + number;
}

void addFarrowings(const Zyklusbuchungen& bookings, Herde& herd) {
    for (const auto& farrowing : bookings.ferkelungen) {
        Zykluswerte& values = herd[farrowing.tier];
        values.ferkelungen += farrowing.wuerfe;
        add(values.gesamt, farrowing.gesamt);
        add(values.lebend, farrowing.lebend);
        values.lFerkelung = std::max(values.lFerkelung, farrowing.tag);
    }
}

/// Needs the latest farrowings: a sow's count starts again with each, its own day included.
void addServices(const Zyklusbuchungen& bookings, Herde& herd) {
    for (const auto& service : bookings.belegungen) {
        Zykluswerte& values = herd[service.tier];
        values.lBelegung = std::max(values.lBelegung, service.tag);
        if (values.lFerkelung == 0 || service.tag >= values.lFerkelung) ++values.belegungen;
    }
}

/// Only one next date stays: a farrowing after a newer service, a service after a newer or same-day farrowing.
void setNext(Zykluswerte& values, const Zyklusvorgaben& vorgaben) {
    if (values.lFerkelung != 0) values.nBelegung = values.lFerkelung + vorgaben.tageFerkelungBelegung;
    if (values.lBelegung != 0) values.nFerkelung = values.lBelegung + vorgaben.tageBelegungFerkelung;
    if (values.lFerkelung == 0 || values.lBelegung == 0) return;
    (values.lBelegung > values.lFerkelung ? values.nBelegung : values.nFerkelung) = 0;
}

const QString kodes[] = {QStringLiteral(""),      QStringLiteral("B"), QStringLiteral("B_T"),
                         QStringLiteral("B_NTG"), QStringLiteral("S"), QStringLiteral("G")};

}  // namespace

Zyklusvorgaben::Zyklusvorgaben(const Variablen& v, qint32 last)
    : tageBelegungFerkelung(v.Konfig_Zahl[Zahl::TageBelegungFerkelung]),
      tageFerkelungBelegung(v.Konfig_Zahl[Zahl::TageFerkelungBelegung]),
      lastDay(last) {}

QString Zyklusvorgaben::basis() const {
    return QStringLiteral("%1 %2").arg(tageBelegungFerkelung).arg(tageFerkelungBelegung);
}

std::vector<Tierwerte> derive(const Zyklusbuchungen& bookings, const Zyklusvorgaben& vorgaben) {
    Herde herd;
    addFarrowings(bookings, herd);
    addServices(bookings, herd);
    for (const auto& check : bookings.kontrollen) {
        if (!check.positiv) continue;
        qint32& latest = herd[check.tier].lTraechtigkeit;
        latest = std::max(latest, check.tag);
    }
    for (const auto& weaning : bookings.absetzungen) {
        qint32& latest = herd[weaning.tier].lAbsetzung;
        latest = std::max(latest, weaning.tag);
    }
    for (const auto& boar : bookings.eber) herd[boar.tier].belegungen = boar.deckungen;
    for (Tierwerte& animal : herd.animals()) setNext(animal.werte, vorgaben);
    std::vector<Tierwerte> result = herd.take();
    std::sort(result.begin(), result.end(), [](const auto& a, const auto& b) { return a.tier < b.tier; });
    return result;
}

QString kode(Zyklusstatus status) { return status < Zyklusstatus::Ohne ? QString() : kodes[static_cast<int>(status)]; }

Zyklusstatus statusOf(const QString& code) {
    const auto* hit = std::find(std::begin(kodes), std::end(kodes), code);
    return hit == std::end(kodes) ? Zyklusstatus::Unknown : static_cast<Zyklusstatus>(hit - kodes);
}

QString Statuswort(Zyklusstatus status) {
    static constexpr const char* words[] = {"", "Belegt", "Tragend", "Nicht tragend", "Säugend", "Güst"};
    return status < Zyklusstatus::Ohne ? QString() : QString::fromUtf8(words[static_cast<int>(status)]);
}

void Statuslage::take(const Zyklusbuchungen::Kontrolle& check) {
    const bool later = check.tag > kontrolle.tag;
    const bool sameDayFirst = check.tag == kontrolle.tag && (kontrolle.id == 0 || check.id <= kontrolle.id);
    if (later || sameDayFirst) kontrolle = check;
}

/// The order of the tests decides the ties.
Zyklusstatus status(const Statuslage& sow) {
    if (!sow.zaehlt) return Zyklusstatus::Ohne;
    if (sow.ferkelung > sow.belegung && sow.ferkelung > sow.absetzung) return Zyklusstatus::Saeugend;
    if (sow.belegung != 0 && sow.absetzung > sow.belegung) return Zyklusstatus::Guest;
    if (sow.belegung <= sow.ferkelung) return Zyklusstatus::Ohne;
    if (sow.kontrolle.tag <= sow.belegung) return Zyklusstatus::Belegt;
    return sow.kontrolle.negativ ? Zyklusstatus::NichtTragend : Zyklusstatus::Tragend;
}

}  // namespace koben
