#include "tools/herdengenerator/Herde.h"

#include <algorithm>
#include <numeric>

#include "tools/herdengenerator/Random.h"
#include "tools/herdengenerator/Words.h"

namespace koben {
namespace {

/// Chance of leaving after the 1st, 2nd ... litter; together 45 % of the sows are replaced a year.
constexpr double abgangNachWurf[] = {0.11, 0.12, 0.13, 0.16, 0.20, 0.27, 0.36, 0.50, 0.65, 0.85};
constexpr double abferkelrate = 0.84;
constexpr int sauenJeEber = 60;
constexpr int boxen = 60;

int weekday(int tag) { return tag % 7; }  // of a Julian day: 0 is Monday

/// The day of service: mostly Monday or Tuesday.
int decktag(Random& z, int tag) {
    const int today = weekday(tag);
    if (today <= 1 || !z.hits(0.8)) return tag;
    return today <= 3 ? tag - (today - z.between(0, 1)) : tag + 7 - today + z.between(0, 1);
}

/// The Thursday nearest to the day.
int absetztag(int tag) { return tag - weekday(tag) + 3; }

QString ohrmarke(const char* kreis, int betrieb, int nummer) {
    return QStringLiteral("DE %1 %2 %3")
        .arg(QString::fromUtf8(kreis))
        .arg(betrieb, 7, 10, QChar(u'0'))
        .arg(nummer, 5, 10, QChar(u'0'));
}

class Betrieb {
public:
    explicit Betrieb(const Vorgaben& vorgaben)
        : m_ende(static_cast<int>(vorgaben.ende.toJulianDay())),
          m_beginn(static_cast<int>(vorgaben.ende.addYears(-vorgaben.jahre).toJulianDay())) {
        m_herde.vorgaben = vorgaben;
    }

    Herde run() {
        const int sauen = m_herde.vorgaben.sauen;
        m_eberplaetze.resize(static_cast<size_t>(std::max(2, sauen / sauenJeEber)));
        for (size_t place = 0; place < m_eberplaetze.size(); ++place) eberplatz(place);
        for (int place = 0; place < sauen; ++place) sauenplatz(place);
        putInOrder();
        umsetzen();
        for (size_t wurf = 0; wurf < m_herde.wuerfe.size(); ++wurf) absetzen(static_cast<int>(wurf));
        giveNumbers();
        return std::move(m_herde);
    }

private:
    Random random(int purpose, int place) const {
        return Random(m_herde.vorgaben.seed * 0x9E3779B97F4A7C15ULL +
                      static_cast<quint64>(purpose) * 0xBF58476D1CE4E5B9ULL + static_cast<quint64>(place));
    }

    // animals
    int neuesTier(Random& z, const char* art, int tag) {
        Tier tier;
        tier.art = art;
        tier.zugang = tag;
        tier.geburt = tag - z.between(205, 240);
        tier.boxdatum = tag;
        const bool zukauf = z.hits(0.7);
        const int lieferant = z.oneOf(lieferanten);
        if (zukauf) {
            tier.lieferant = QString::fromUtf8(lieferanten[lieferant]);
            tier.einkauf = z.between(270, 340) * 100;
        }
        tier.zugangsgrund = zukauf ? QStringLiteral("Zukauf") : QStringLiteral("Eigene Zucht");
        tier.zugangsgewicht = z.between(1050, 1350);
        tier.ohrmarke = zukauf ? ohrmarke(kennzeichen[lieferant], 1034500 + lieferant * 7919, z.between(1, 99999))
                               : ohrmarke("OS", 1204711, z.between(1, 99999));
        m_herde.tiere.push_back(tier);
        return static_cast<int>(m_herde.tiere.size()) - 1;
    }
    Tier& tier(int nr) { return m_herde.tiere[static_cast<size_t>(nr)]; }

    /// Ends the animal's stay; a day behind the end of the books leaves it in stock. The day after which the place is
    /// free.
    int abgang(Random& z, int nr, int tag, Grund grund) {
        if (tag > m_ende) return m_ende;
        Tier& t = tier(nr);
        t.abgang = tag;
        t.abgangsgrund = QString::fromUtf8(abgangsgruende[grund]);
        if (grund != Verendet) {
            t.abnehmer = QString::fromUtf8(abnehmer[z.between(0, 1) * 4]);
            t.abgangsgewicht = z.between(1750, 2600);
            t.verkauf = t.abgangsgewicht * z.between(110, 150) / 10;
        }
        return tag;
    }

    void eberplatz(size_t place) {
        Random z = random(1, static_cast<int>(place));
        for (int tag = m_beginn - z.between(0, 200); tag <= m_ende; tag += z.between(1, 10)) {
            const int eber = neuesTier(z, "Eber", tag);
            tier(eber).rasse = QString::fromUtf8(eberrassen[z.oneOf(eberrassen)]);
            m_eberplaetze[place].push_back(eber);
            tag = abgang(z, eber, tag + z.between(450, 900), z.hits(0.5) ? Alter : Fundament);
            if (tag == m_ende) return;
        }
    }

    void sauenplatz(int place) {
        Random z = random(2, place);
        const int aufbau = std::min(150, (m_ende - m_beginn) / 3);
        for (int tag = m_beginn + z.between(0, aufbau); tag < m_ende; tag += z.between(1, 12)) tag = lebenslauf(z, tag);
    }

    // the life of a sow
    int lebenslauf(Random& z, int zugang) {
        const int sau = neuesTier(z, "Sau", zugang);
        tier(sau).rasse = QString::fromUtf8(rassen[z.oneOf(rassen)]);
        int belegung = decktag(z, zugang + z.between(20, 45));
        for (int wurf = 1;; ++wurf) {
            int ferkelung = 0;
            const int ende = decken(z, sau, belegung, ferkelung);
            if (ferkelung == 0) return ende;
            if (ferkelung > m_ende) return m_ende;
            const int absetzung = ferkeln(z, sau, ferkelung, wurf);
            if (absetzung > m_ende) return m_ende;
            const double chance =
                abgangNachWurf[std::min<size_t>(static_cast<size_t>(wurf), std::size(abgangNachWurf)) - 1];
            if (z.hits(chance)) return abgang(z, sau, absetzung + z.between(1, 9), ausmerzung(z, wurf));
            belegung = z.hits(0.004) ? absetzung : decktag(z, absetzung + z.between(4, 6));
        }
    }

    static Grund ausmerzung(Random& z, int wurf) {
        if (wurf >= 6 && z.hits(0.7)) return Alter;
        constexpr Grund gruende[] = {Fundament, KleineWuerfe, Gesaeuge, Fundament, Verendet};
        return gruende[z.oneOf(gruende)];
    }

    /// Services until the sow holds; `ferkelung` is the day of the farrowing, or 0 where the sow has left on the day
    /// returned.
    int decken(Random& z, int sau, int tag, int& ferkelung) {
        for (int versuch = 1; versuch <= 3; ++versuch) {
            if (tag > m_ende) return m_ende;
            belegen(z, sau, tag);
            const bool tragend = z.hits(abferkelrate);
            const int umrauschen = tag + rauschzeit(z);
            kontrollieren(z, sau, tag, tragend, umrauschen);
            if (tragend) {
                ferkelung = tag + z.wholeNormal(115, 1.5);
                return ferkelung;
            }
            if (z.hits(0.03)) return abgang(z, sau, tag + z.between(5, 60), Verendet);
            tag = umrauschen;
        }
        return abgang(z, sau, tag + z.between(0, 14), z.hits(0.5) ? Umrauschen : Guest);
    }

    static int rauschzeit(Random& z) {
        if (z.hits(0.6)) return z.wholeNormal(21, 1);
        return z.hits(0.6) ? z.wholeNormal(42, 2) : z.between(55, 95);
    }

    void belegen(Random& z, int sau, int tag) {
        Belegung b;
        b.tag = tag;
        b.sau = sau;
        b.eber = eberAm(z, tag);
        b.anzahl = static_cast<quint8>(z.hits(0.85) ? 2 : z.between(1, 3));
        b.station = static_cast<quint8>(b.eber >= 0 ? 2 : z.oneOf(stationen));
        b.kommentar = static_cast<quint8>(z.oneOf(kommentare));
        b.bemerkung = static_cast<quint8>(z.oneOf(bemerkungen));
        m_herde.belegungen.push_back(b);
        if (z.hits(0.015)) m_herde.belegungen.push_back(b);  // entered twice
        if (z.hits(0.5)) behandeln(z, sau, tag - z.between(0, 3), Ivermectin);
    }

    int eberAm(Random& z, int tag) {
        if (z.hits(0.6)) return -1 - z.oneOf(stationseber);
        const auto& place =
            m_eberplaetze[static_cast<size_t>(z.between(0, static_cast<int>(m_eberplaetze.size()) - 1))];
        for (const int eber : place)
            if (tier(eber).zugang <= tag && (tier(eber).abgang == 0 || tier(eber).abgang > tag)) return eber;
        return -1 - z.oneOf(stationseber);
    }

    void kontrollieren(Random& z, int sau, int belegung, bool tragend, int umrauschen) {
        if (z.hits(0.08)) return;  // forgotten
        const int tag = z.hits(0.003) ? belegung : belegung + z.between(20, 28);
        if (tag > m_ende || (!tragend && tag >= umrauschen)) return;
        Kontrolle k;
        k.tag = tag;
        k.sau = sau;
        k.traechtig = tragend || z.hits(0.15);
        k.kommentar = static_cast<quint8>(z.oneOf(kommentare));
        m_herde.kontrollen.push_back(k);
    }

    /// Farrowing and what follows up to the weaning, whose day is returned.
    int ferkeln(Random& z, int sau, int tag, int nummer) {
        Wurfbuchung w;
        w.tag = tag;
        w.sau = sau;
        w.nummer = static_cast<qint16>(nummer);
        const int mittelwert = 15 - std::max(0, nummer - 5);
        w.lebend = static_cast<qint16>(std::clamp(z.wholeNormal(mittelwert, 3.5), 0, 26));
        w.tot = static_cast<qint16>(std::max(0, z.wholeNormal(1.1, 1.0)));
        w.gewicht = static_cast<qint16>(z.between(11, 17));
        w.bemerkung = static_cast<quint8>(z.oneOf(bemerkungen));
        w.imJahr = 1;
        if (!m_herde.wuerfe.empty()) {
            const Wurfbuchung& vorher = m_herde.wuerfe.back();
            const bool gleichesJahr = QDate::fromJulianDay(vorher.tag).year() == QDate::fromJulianDay(tag).year();
            if (vorher.sau == sau && gleichesJahr) w.imJahr = static_cast<qint16>(vorher.imJahr + 1);
        }
        const int absetzung = absetztag(tag + z.wholeNormal(27, 3));
        verlieren(z, w, absetzung);
        w.absetzung = absetzung > m_ende ? 0 : absetzung;
        w.absetzungFehlt = z.hits(0.003);
        w.absetzgewicht = static_cast<qint16>(z.between(65, 92));
        m_herde.wuerfe.push_back(w);
        geburtsbehandlungen(z, sau, tag, absetzung);
        return absetzung;
    }

    void verlieren(Random& z, Wurfbuchung& w, int absetzung) {
        int left = std::min<int>(z.between(2, 4), w.lebend);
        while (left > 0) {
            Verlust v;
            v.tag = w.tag + (z.hits(0.7) ? z.between(0, 4) : z.between(5, std::max(5, absetzung - w.tag - 1)));
            v.sau = w.sau;
            v.anzahl = static_cast<quint8>(left > 1 && z.hits(0.1) ? 2 : 1);
            v.grund = static_cast<quint8>(z.hits(0.5) ? 0 : z.oneOf(verlustgruende));
            left -= v.anzahl;
            if (v.tag > m_ende) continue;
            w.verluste = static_cast<qint16>(w.verluste + v.anzahl);
            m_herde.verluste.push_back(v);
        }
    }

    void geburtsbehandlungen(Random& z, int sau, int ferkelung, int absetzung) {
        if (z.hits(0.9)) behandeln(z, sau, ferkelung + 3, Eisen);
        if (z.hits(0.15)) behandeln(z, sau, ferkelung + z.between(0, 2), Meloxicam);
        if (z.hits(0.2)) behandeln(z, sau, ferkelung, Oxytocin);
        if (z.hits(0.07)) behandeln(z, sau, ferkelung + z.between(1, 20), Amoxicillin);
        if (z.hits(0.95)) behandeln(z, sau, absetzung - z.between(5, 12), Parvo);
    }

    void behandeln(Random& z, int sau, int tag, MittelNr nr) {
        if (tag > m_ende) return;
        Behandlung b;
        b.tag = tag;
        b.sau = sau;
        b.mittel = static_cast<quint8>(nr);
        b.tierarzt = static_cast<quint8>(z.oneOf(tieraerzte));
        b.beleg = z.between(1000, 99999);
        m_herde.behandlungen.push_back(b);
    }

    // the whole farm
    /// Brings animals into the order of arrival and everything that points to them with it.
    void putInOrder() {
        std::vector<int> order(m_herde.tiere.size());
        std::iota(order.begin(), order.end(), 0);
        std::stable_sort(order.begin(), order.end(), [&](int a, int b) { return tier(a).zugang < tier(b).zugang; });
        std::vector<int> fresh(order.size());
        std::vector<Tier> tiere;
        tiere.reserve(order.size());
        for (const int old : order) {
            fresh[static_cast<size_t>(old)] = static_cast<int>(tiere.size());
            tiere.push_back(std::move(tier(old)));
        }
        m_herde.tiere = std::move(tiere);
        const auto repoint = [&](auto& buchungen) {
            for (auto& b : buchungen) b.sau = fresh[static_cast<size_t>(b.sau)];
            std::stable_sort(buchungen.begin(), buchungen.end(),
                             [](const auto& a, const auto& b) { return a.tag < b.tag; });
        };
        for (Belegung& b : m_herde.belegungen)
            if (b.eber >= 0) b.eber = fresh[static_cast<size_t>(b.eber)];
        repoint(m_herde.belegungen);
        repoint(m_herde.kontrollen);
        repoint(m_herde.wuerfe);
        repoint(m_herde.verluste);
        repoint(m_herde.behandlungen);
    }

    /// Large litters give piglets to small ones of the same days. The books show the move at both sows.
    void umsetzen() {
        Random z = random(3, 0);
        auto& wuerfe = m_herde.wuerfe;
        for (size_t i = 0; i < wuerfe.size(); ++i) {
            const int ueber = wuerfe[i].lebend - wuerfe[i].abgegeben - 16;
            if (ueber <= 0 || !z.hits(0.8)) continue;
            for (size_t k = i + 1; k < wuerfe.size() && wuerfe[k].tag <= wuerfe[i].tag + 2; ++k) {
                const int frei = 14 - (wuerfe[k].lebend - wuerfe[k].abgegeben);
                if (frei <= 0 || wuerfe[k].sau == wuerfe[i].sau || wuerfe[k].tag > m_ende - 1) continue;
                verschieben(wuerfe[i], wuerfe[k], std::min(ueber, frei));
                break;
            }
        }
    }

    void verschieben(Wurfbuchung& von, Wurfbuchung& zu, int anzahl) {
        von.abgegeben = static_cast<qint16>(von.abgegeben + anzahl);
        zu.abgegeben = static_cast<qint16>(zu.abgegeben - anzahl);
        Verschiebung v;
        v.tag = zu.tag + 1;
        v.sau = von.sau;
        v.zu = zu.sau;
        v.anzahl = static_cast<qint8>(anzahl);
        m_herde.verschiebungen.push_back(v);
        std::swap(v.sau, v.zu);
        v.anzahl = static_cast<qint8>(-anzahl);
        m_herde.verschiebungen.push_back(v);
    }

    /// What becomes of the piglets of a litter together.
    struct Lot {
        bool mast = false;
        quint8 kunde = 0;
        int gewicht = 0, preis = 0, verkauf = 0;
    };
    static Lot draw(Random& z, const Wurfbuchung& w) {
        Lot lot;
        lot.mast = z.hits(0.3);
        lot.kunde = static_cast<quint8>(lot.mast ? z.between(0, 1) * 4 : z.between(2, 5));
        lot.gewicht = lot.mast ? z.between(1130, 1270) : z.between(260, 320);
        lot.preis = lot.mast ? lot.gewicht * z.between(140, 190) / 10 : z.between(4500, 8500);
        const int alter = lot.mast ? z.wholeNormal(178, 7) : std::max(z.wholeNormal(70, 3), w.absetzung - w.tag + 5);
        lot.verkauf = w.tag + alter;
        return lot;
    }

    Ferkel ferkel(Random& z, const Wurfbuchung& w, const Lot& lot) const {
        Ferkel f;
        f.mast = lot.mast && m_ende >= w.tag + 75;
        const bool verendet = z.hits(0.025);
        f.grund = verendet ? Verendet : lot.mast ? Mastverkauf : Ferkelverkaeufe;
        f.abgang = verendet ? z.between(w.absetzung, lot.verkauf) : lot.verkauf + (lot.mast ? z.between(0, 2) * 7 : 0);
        f.kunde = lot.kunde;
        f.abgangsgewicht = static_cast<quint16>(verendet ? 0 : lot.gewicht + z.between(-15, 15));
        f.erloes = verendet ? 0 : lot.preis;
        if (f.abgang > m_ende) f.abgang = 0;
        return f;
    }

    /// The weaned piglets of a litter: sold at about 70 days, or fattened.
    void absetzen(int nr) {
        Wurfbuchung& w = m_herde.wuerfe[static_cast<size_t>(nr)];
        if (w.absetzung == 0) return;
        w.abgesetzt = static_cast<qint16>(std::max(0, w.lebend - w.verluste - w.abgegeben));
        Random z = random(4, nr);
        const Lot lot = draw(z, w);
        const bool einzeln = z.between(1, 100) <= m_herde.vorgaben.ferkelAnteil;
        const int box = w.absetzung / 7 % boxen;
        int verkauft = 0;
        for (int i = 1; i <= w.abgesetzt; ++i) {
            Ferkel f = ferkel(z, w, lot);
            verkauft += f.abgang > 0 && f.grund != Verendet;
            if (!einzeln) continue;
            f.wurf = nr;
            f.imWurf = static_cast<quint8>(i);
            f.box = static_cast<quint8>(box);
            f.boxnummer = ++m_boxzaehler[box];
            m_herde.ferkel.push_back(f);
        }
        if (!lot.mast && verkauft > 0) verkaufen(w, verkauft, lot);
    }

    void verkaufen(const Wurfbuchung& w, int anzahl, const Lot& lot) {
        Verkauf v;
        v.tag = lot.verkauf;
        v.sau = w.sau;
        v.anzahl = static_cast<quint8>(anzahl);
        v.kunde = lot.kunde;
        v.preis = lot.preis;
        v.gewicht = lot.gewicht;
        m_herde.verkaeufe.push_back(v);
    }

    /// Numbers in order of arrival; one in a hundred has a name or a number of its own making.
    void giveNumbers() {
        Random z = random(5, 0);
        int sau = 1000, eber = 100;
        for (Tier& t : m_herde.tiere) {
            const bool istSau = t.art[0] == 'S';
            nameAnimal(z, t, istSau, istSau ? ++sau : ++eber);
        }
        const auto byDay = [](const auto& a, const auto& b) { return a.tag < b.tag; };
        std::stable_sort(m_herde.verkaeufe.begin(), m_herde.verkaeufe.end(), byDay);
        std::stable_sort(m_herde.verschiebungen.begin(), m_herde.verschiebungen.end(), byDay);
        // the day of weaning is the day of arrival
        const auto zugang = [&](const Ferkel& f) { return m_herde.wuerfe[static_cast<size_t>(f.wurf)].absetzung; };
        std::stable_sort(m_herde.ferkel.begin(), m_herde.ferkel.end(),
                         [&](const Ferkel& a, const Ferkel& b) { return zugang(a) < zugang(b); });
    }

    static void nameAnimal(Random& z, Tier& t, bool istSau, int nr) {
        t.nummer = istSau ? QString::number(nr) : QStringLiteral("E%1").arg(nr);
        if (istSau && z.hits(0.01)) {
            const QString ownMaking[] = {QStringLiteral("A%1").arg(nr),
                                         QStringLiteral("%1/%2").arg(nr).arg(z.between(1, 9)),
                                         QString::fromUtf8(namen[z.oneOf(namen)])};
            t.nummer = ownMaking[z.between(0, 2)];
        }
        t.taetowierung = z.hits(0.6) ? QStringLiteral("T%1").arg(nr) : QString();
        t.gruppe = istSau ? QStringLiteral("Zuchtsau") : QStringLiteral("Zuchteber");
        t.stallnr = istSau ? QStringLiteral("W%1").arg(1 + nr % 24, 2, 10, QChar(u'0'))
                           : QStringLiteral("EB%1").arg(1 + nr % 6);
        if (z.hits(0.01)) t.statusabfrage = QStringLiteral("N");
        if (z.hits(0.03)) t.infos = QStringLiteral("Großrahmig, ruhig, \"gute Mutter\"");
    }

    const int m_ende, m_beginn;
    Herde m_herde;
    std::vector<std::vector<int>> m_eberplaetze;
    int m_boxzaehler[boxen] = {};
};

}  // namespace

Tier Herde::alsTier(const Ferkel& f) const {
    const Wurfbuchung& wurf = wuerfe[static_cast<size_t>(f.wurf)];
    const Tier& mutter = tiere[static_cast<size_t>(wurf.sau)];
    Tier t;
    t.art = f.mast ? "Mast" : "Ferkel";
    const QString box = QStringLiteral("%1%2").arg(QChar(f.mast ? u'M' : u'F')).arg(f.box + 1, 2, 10, QChar(u'0'));
    t.nummer = QStringLiteral("F%1-%2").arg(f.box + 1, 2, 10, QChar(u'0')).arg(f.boxnummer);
    t.gruppe = f.mast ? QStringLiteral("Mastschwein") : QStringLiteral("Läufer");
    t.stallnr = box;
    t.taetowierung = QStringLiteral("%1-%2").arg(mutter.nummer).arg(f.imWurf);
    t.rasse = mutter.rasse;
    t.zugangsgrund = QStringLiteral("Eigene Zucht");
    t.geburt = wurf.tag;
    t.zugang = t.boxdatum = wurf.absetzung;
    t.zugangsgewicht = wurf.absetzgewicht;
    t.abgang = f.abgang;
    if (f.abgang > 0) {
        t.abgangsgrund = QString::fromUtf8(abgangsgruende[f.grund]);
        if (f.grund != Verendet) t.abnehmer = QString::fromUtf8(abnehmer[f.kunde]);
        t.abgangsgewicht = f.abgangsgewicht;
        t.verkauf = f.erloes;
    }
    return t;
}

Herde makeHerde(const Vorgaben& vorgaben) { return Betrieb(vorgaben).run(); }

}  // namespace koben
