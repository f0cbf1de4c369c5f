#include "tools/herdengenerator/Herde.h"

#include <algorithm>
#include <numeric>

#include "tools/herdengenerator/Texte.h"
#include "tools/herdengenerator/Zufall.h"

namespace koben {
namespace {

/// Chance of leaving after the 1st, 2nd ... litter; together 45 % of the sows are replaced a year.
constexpr double abgangNachWurf[] = {0.11, 0.12, 0.13, 0.16, 0.20, 0.27, 0.36, 0.50, 0.65, 0.85};
constexpr double abferkelrate = 0.84;
constexpr int sauenJeEber = 60;
constexpr int boxen = 60;

int wochentag(int tag) { return tag % 7; }  // of a Julian day: 0 is Monday

/// The day of service: mostly Monday or Tuesday.
int decktag(Zufall& z, int tag) {
    const int heute = wochentag(tag);
    if (heute <= 1 || !z.trifft(0.8)) return tag;
    return heute <= 3 ? tag - (heute - z.zahl(0, 1)) : tag + 7 - heute + z.zahl(0, 1);
}

/// The Thursday nearest to the day.
int absetztag(int tag) { return tag - wochentag(tag) + 3; }

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

    Herde laufen() {
        const int sauen = m_herde.vorgaben.sauen;
        m_eberplaetze.resize(static_cast<size_t>(std::max(2, sauen / sauenJeEber)));
        for (size_t platz = 0; platz < m_eberplaetze.size(); ++platz) eberplatz(platz);
        for (int platz = 0; platz < sauen; ++platz) sauenplatz(platz);
        ordnen();
        umsetzen();
        for (size_t wurf = 0; wurf < m_herde.wuerfe.size(); ++wurf) absetzen(static_cast<int>(wurf));
        nummerieren();
        return std::move(m_herde);
    }

private:
    Zufall zufall(int zweck, int platz) const {
        return Zufall(m_herde.vorgaben.seed * 0x9E3779B97F4A7C15ULL +
                      static_cast<quint64>(zweck) * 0xBF58476D1CE4E5B9ULL + static_cast<quint64>(platz));
    }

    // animals
    int neuesTier(Zufall& z, const char* art, int tag) {
        Tier tier;
        tier.art = art;
        tier.zugang = tag;
        tier.geburt = tag - z.zahl(205, 240);
        tier.boxdatum = tag;
        const bool zukauf = z.trifft(0.7);
        const int lieferant = z.eines(lieferanten);
        if (zukauf) {
            tier.lieferant = QString::fromUtf8(lieferanten[lieferant]);
            tier.einkauf = z.zahl(270, 340) * 100;
        }
        tier.zugangsgrund = zukauf ? QStringLiteral("Zukauf") : QStringLiteral("Eigene Zucht");
        tier.zugangsgewicht = z.zahl(1050, 1350);
        tier.ohrmarke = zukauf ? ohrmarke(kennzeichen[lieferant], 1034500 + lieferant * 7919, z.zahl(1, 99999))
                               : ohrmarke("OS", 1204711, z.zahl(1, 99999));
        m_herde.tiere.push_back(tier);
        return static_cast<int>(m_herde.tiere.size()) - 1;
    }
    Tier& tier(int nr) { return m_herde.tiere[static_cast<size_t>(nr)]; }

    /// Ends the animal's stay; a day behind the end of the books leaves it in stock. The day after which the place is
    /// free.
    int abgang(Zufall& z, int nr, int tag, Grund grund) {
        if (tag > m_ende) return m_ende;
        Tier& t = tier(nr);
        t.abgang = tag;
        t.abgangsgrund = QString::fromUtf8(abgangsgruende[grund]);
        if (grund != Verendet) {
            t.abnehmer = QString::fromUtf8(abnehmer[z.zahl(0, 1) * 4]);
            t.abgangsgewicht = z.zahl(1750, 2600);
            t.verkauf = t.abgangsgewicht * z.zahl(110, 150) / 10;
        }
        return tag;
    }

    void eberplatz(size_t platz) {
        Zufall z = zufall(1, static_cast<int>(platz));
        for (int tag = m_beginn - z.zahl(0, 200); tag <= m_ende; tag += z.zahl(1, 10)) {
            const int eber = neuesTier(z, "Eber", tag);
            tier(eber).rasse = QString::fromUtf8(eberrassen[z.eines(eberrassen)]);
            m_eberplaetze[platz].push_back(eber);
            tag = abgang(z, eber, tag + z.zahl(450, 900), z.trifft(0.5) ? Alter : Fundament);
            if (tag == m_ende) return;
        }
    }

    void sauenplatz(int platz) {
        Zufall z = zufall(2, platz);
        const int aufbau = std::min(150, (m_ende - m_beginn) / 3);
        for (int tag = m_beginn + z.zahl(0, aufbau); tag < m_ende; tag += z.zahl(1, 12)) tag = lebenslauf(z, tag);
    }

    // the life of a sow
    int lebenslauf(Zufall& z, int zugang) {
        const int sau = neuesTier(z, "Sau", zugang);
        tier(sau).rasse = QString::fromUtf8(rassen[z.eines(rassen)]);
        int belegung = decktag(z, zugang + z.zahl(20, 45));
        for (int wurf = 1;; ++wurf) {
            int ferkelung = 0;
            const int ende = decken(z, sau, belegung, ferkelung);
            if (ferkelung == 0) return ende;
            if (ferkelung > m_ende) return m_ende;
            const int absetzung = ferkeln(z, sau, ferkelung, wurf);
            if (absetzung > m_ende) return m_ende;
            const double chance =
                abgangNachWurf[std::min<size_t>(static_cast<size_t>(wurf), std::size(abgangNachWurf)) - 1];
            if (z.trifft(chance)) return abgang(z, sau, absetzung + z.zahl(1, 9), ausmerzung(z, wurf));
            belegung = z.trifft(0.004) ? absetzung : decktag(z, absetzung + z.zahl(4, 6));
        }
    }

    static Grund ausmerzung(Zufall& z, int wurf) {
        if (wurf >= 6 && z.trifft(0.7)) return Alter;
        constexpr Grund gruende[] = {Fundament, KleineWuerfe, Gesaeuge, Fundament, Verendet};
        return gruende[z.eines(gruende)];
    }

    /// Services until the sow holds; `ferkelung` is the day of the farrowing, or 0 where the sow has left on the day
    /// returned.
    int decken(Zufall& z, int sau, int tag, int& ferkelung) {
        for (int versuch = 1; versuch <= 3; ++versuch) {
            if (tag > m_ende) return m_ende;
            belegen(z, sau, tag);
            const bool tragend = z.trifft(abferkelrate);
            const int umrauschen = tag + rauschzeit(z);
            kontrollieren(z, sau, tag, tragend, umrauschen);
            if (tragend) {
                ferkelung = tag + z.ganzNormal(115, 1.5);
                return ferkelung;
            }
            if (z.trifft(0.03)) return abgang(z, sau, tag + z.zahl(5, 60), Verendet);
            tag = umrauschen;
        }
        return abgang(z, sau, tag + z.zahl(0, 14), z.trifft(0.5) ? Umrauschen : Guest);
    }

    static int rauschzeit(Zufall& z) {
        if (z.trifft(0.6)) return z.ganzNormal(21, 1);
        return z.trifft(0.6) ? z.ganzNormal(42, 2) : z.zahl(55, 95);
    }

    void belegen(Zufall& z, int sau, int tag) {
        Belegung b;
        b.tag = tag;
        b.sau = sau;
        b.eber = eberAm(z, tag);
        b.anzahl = static_cast<quint8>(z.trifft(0.85) ? 2 : z.zahl(1, 3));
        b.station = static_cast<quint8>(b.eber >= 0 ? 2 : z.eines(stationen));
        b.kommentar = static_cast<quint8>(z.eines(kommentare));
        b.bemerkung = static_cast<quint8>(z.eines(bemerkungen));
        m_herde.belegungen.push_back(b);
        if (z.trifft(0.015)) m_herde.belegungen.push_back(b);  // entered twice
        if (z.trifft(0.5)) behandeln(z, sau, tag - z.zahl(0, 3), Ivermectin);
    }

    int eberAm(Zufall& z, int tag) {
        if (z.trifft(0.6)) return -1 - z.eines(stationseber);
        const auto& platz = m_eberplaetze[static_cast<size_t>(z.zahl(0, static_cast<int>(m_eberplaetze.size()) - 1))];
        for (const int eber : platz)
            if (tier(eber).zugang <= tag && (tier(eber).abgang == 0 || tier(eber).abgang > tag)) return eber;
        return -1 - z.eines(stationseber);
    }

    void kontrollieren(Zufall& z, int sau, int belegung, bool tragend, int umrauschen) {
        if (z.trifft(0.08)) return;  // forgotten
        const int tag = z.trifft(0.003) ? belegung : belegung + z.zahl(20, 28);
        if (tag > m_ende || (!tragend && tag >= umrauschen)) return;
        Kontrolle k;
        k.tag = tag;
        k.sau = sau;
        k.traechtig = tragend || z.trifft(0.15);
        k.kommentar = static_cast<quint8>(z.eines(kommentare));
        m_herde.kontrollen.push_back(k);
    }

    /// Farrowing and what follows up to the weaning, whose day is returned.
    int ferkeln(Zufall& z, int sau, int tag, int nummer) {
        Wurf w;
        w.tag = tag;
        w.sau = sau;
        w.nummer = static_cast<qint16>(nummer);
        const int mittelwert = 15 - std::max(0, nummer - 5);
        w.lebend = static_cast<qint16>(std::clamp(z.ganzNormal(mittelwert, 3.5), 0, 26));
        w.tot = static_cast<qint16>(std::max(0, z.ganzNormal(1.1, 1.0)));
        w.gewicht = static_cast<qint16>(z.zahl(11, 17));
        w.bemerkung = static_cast<quint8>(z.eines(bemerkungen));
        w.imJahr = 1;
        if (!m_herde.wuerfe.empty()) {
            const Wurf& vorher = m_herde.wuerfe.back();
            const bool gleichesJahr = QDate::fromJulianDay(vorher.tag).year() == QDate::fromJulianDay(tag).year();
            if (vorher.sau == sau && gleichesJahr) w.imJahr = static_cast<qint16>(vorher.imJahr + 1);
        }
        const int absetzung = absetztag(tag + z.ganzNormal(27, 3));
        verlieren(z, w, absetzung);
        w.absetzung = absetzung > m_ende ? 0 : absetzung;
        w.absetzungFehlt = z.trifft(0.003);
        w.absetzgewicht = static_cast<qint16>(z.zahl(65, 92));
        m_herde.wuerfe.push_back(w);
        geburtsbehandlungen(z, sau, tag, absetzung);
        return absetzung;
    }

    void verlieren(Zufall& z, Wurf& w, int absetzung) {
        int uebrig = std::min<int>(z.zahl(2, 4), w.lebend);
        while (uebrig > 0) {
            Verlust v;
            v.tag = w.tag + (z.trifft(0.7) ? z.zahl(0, 4) : z.zahl(5, std::max(5, absetzung - w.tag - 1)));
            v.sau = w.sau;
            v.anzahl = static_cast<quint8>(uebrig > 1 && z.trifft(0.1) ? 2 : 1);
            v.grund = static_cast<quint8>(z.trifft(0.5) ? 0 : z.eines(verlustgruende));
            uebrig -= v.anzahl;
            if (v.tag > m_ende) continue;
            w.verluste = static_cast<qint16>(w.verluste + v.anzahl);
            m_herde.verluste.push_back(v);
        }
    }

    void geburtsbehandlungen(Zufall& z, int sau, int ferkelung, int absetzung) {
        if (z.trifft(0.9)) behandeln(z, sau, ferkelung + 3, Eisen);
        if (z.trifft(0.15)) behandeln(z, sau, ferkelung + z.zahl(0, 2), Meloxicam);
        if (z.trifft(0.2)) behandeln(z, sau, ferkelung, Oxytocin);
        if (z.trifft(0.07)) behandeln(z, sau, ferkelung + z.zahl(1, 20), Amoxicillin);
        if (z.trifft(0.95)) behandeln(z, sau, absetzung - z.zahl(5, 12), Parvo);
    }

    void behandeln(Zufall& z, int sau, int tag, MittelNr nr) {
        if (tag > m_ende) return;
        Behandlung b;
        b.tag = tag;
        b.sau = sau;
        b.mittel = static_cast<quint8>(nr);
        b.tierarzt = static_cast<quint8>(z.eines(tieraerzte));
        b.beleg = z.zahl(1000, 99999);
        m_herde.behandlungen.push_back(b);
    }

    // the whole farm
    /// Brings animals into the order of arrival and everything that points to them with it.
    void ordnen() {
        std::vector<int> folge(m_herde.tiere.size());
        std::iota(folge.begin(), folge.end(), 0);
        std::stable_sort(folge.begin(), folge.end(), [&](int a, int b) { return tier(a).zugang < tier(b).zugang; });
        std::vector<int> neu(folge.size());
        std::vector<Tier> tiere;
        tiere.reserve(folge.size());
        for (const int alt : folge) {
            neu[static_cast<size_t>(alt)] = static_cast<int>(tiere.size());
            tiere.push_back(std::move(tier(alt)));
        }
        m_herde.tiere = std::move(tiere);
        const auto umstellen = [&](auto& buchungen) {
            for (auto& b : buchungen) b.sau = neu[static_cast<size_t>(b.sau)];
            std::stable_sort(buchungen.begin(), buchungen.end(),
                             [](const auto& a, const auto& b) { return a.tag < b.tag; });
        };
        for (Belegung& b : m_herde.belegungen)
            if (b.eber >= 0) b.eber = neu[static_cast<size_t>(b.eber)];
        umstellen(m_herde.belegungen);
        umstellen(m_herde.kontrollen);
        umstellen(m_herde.wuerfe);
        umstellen(m_herde.verluste);
        umstellen(m_herde.behandlungen);
    }

    /// Large litters give piglets to small ones of the same days. The books show the move at both sows.
    void umsetzen() {
        Zufall z = zufall(3, 0);
        auto& wuerfe = m_herde.wuerfe;
        for (size_t i = 0; i < wuerfe.size(); ++i) {
            const int ueber = wuerfe[i].lebend - wuerfe[i].abgegeben - 16;
            if (ueber <= 0 || !z.trifft(0.8)) continue;
            for (size_t k = i + 1; k < wuerfe.size() && wuerfe[k].tag <= wuerfe[i].tag + 2; ++k) {
                const int frei = 14 - (wuerfe[k].lebend - wuerfe[k].abgegeben);
                if (frei <= 0 || wuerfe[k].sau == wuerfe[i].sau || wuerfe[k].tag > m_ende - 1) continue;
                verschieben(wuerfe[i], wuerfe[k], std::min(ueber, frei));
                break;
            }
        }
    }

    void verschieben(Wurf& von, Wurf& zu, int anzahl) {
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
    struct Los {
        bool mast = false;
        quint8 kunde = 0;
        int gewicht = 0, preis = 0, verkauf = 0;
    };
    static Los losen(Zufall& z, const Wurf& w) {
        Los los;
        los.mast = z.trifft(0.3);
        los.kunde = static_cast<quint8>(los.mast ? z.zahl(0, 1) * 4 : z.zahl(2, 5));
        los.gewicht = los.mast ? z.zahl(1130, 1270) : z.zahl(260, 320);
        los.preis = los.mast ? los.gewicht * z.zahl(140, 190) / 10 : z.zahl(4500, 8500);
        const int alter = los.mast ? z.ganzNormal(178, 7) : std::max(z.ganzNormal(70, 3), w.absetzung - w.tag + 5);
        los.verkauf = w.tag + alter;
        return los;
    }

    Ferkel ferkel(Zufall& z, const Wurf& w, const Los& los) const {
        Ferkel f;
        f.mast = los.mast && m_ende >= w.tag + 75;
        const bool verendet = z.trifft(0.025);
        f.grund = verendet ? Verendet : los.mast ? Mastverkauf : Ferkelverkaeufe;
        f.abgang = verendet ? z.zahl(w.absetzung, los.verkauf) : los.verkauf + (los.mast ? z.zahl(0, 2) * 7 : 0);
        f.kunde = los.kunde;
        f.abgangsgewicht = static_cast<quint16>(verendet ? 0 : los.gewicht + z.zahl(-15, 15));
        f.erloes = verendet ? 0 : los.preis;
        if (f.abgang > m_ende) f.abgang = 0;
        return f;
    }

    /// The weaned piglets of a litter: sold at about 70 days, or fattened.
    void absetzen(int nr) {
        Wurf& w = m_herde.wuerfe[static_cast<size_t>(nr)];
        if (w.absetzung == 0) return;
        w.abgesetzt = static_cast<qint16>(std::max(0, w.lebend - w.verluste - w.abgegeben));
        Zufall z = zufall(4, nr);
        const Los los = losen(z, w);
        const bool einzeln = z.zahl(1, 100) <= m_herde.vorgaben.ferkelAnteil;
        const int box = w.absetzung / 7 % boxen;
        int verkauft = 0;
        for (int i = 1; i <= w.abgesetzt; ++i) {
            Ferkel f = ferkel(z, w, los);
            verkauft += f.abgang > 0 && f.grund != Verendet;
            if (!einzeln) continue;
            f.wurf = nr;
            f.imWurf = static_cast<quint8>(i);
            f.box = static_cast<quint8>(box);
            f.boxnummer = ++m_boxzaehler[box];
            m_herde.ferkel.push_back(f);
        }
        if (!los.mast && verkauft > 0) verkaufen(w, verkauft, los);
    }

    void verkaufen(const Wurf& w, int anzahl, const Los& los) {
        Verkauf v;
        v.tag = los.verkauf;
        v.sau = w.sau;
        v.anzahl = static_cast<quint8>(anzahl);
        v.kunde = los.kunde;
        v.preis = los.preis;
        v.gewicht = los.gewicht;
        m_herde.verkaeufe.push_back(v);
    }

    /// Numbers in order of arrival; one in a hundred has a name or a number of its own making.
    void nummerieren() {
        Zufall z = zufall(5, 0);
        int sau = 1000, eber = 100;
        for (Tier& t : m_herde.tiere) {
            const bool istSau = t.art[0] == 'S';
            benennen(z, t, istSau, istSau ? ++sau : ++eber);
        }
        const auto nachTagen = [](const auto& a, const auto& b) { return a.tag < b.tag; };
        std::stable_sort(m_herde.verkaeufe.begin(), m_herde.verkaeufe.end(), nachTagen);
        std::stable_sort(m_herde.verschiebungen.begin(), m_herde.verschiebungen.end(), nachTagen);
        // the day of weaning is the day of arrival
        const auto zugang = [&](const Ferkel& f) { return m_herde.wuerfe[static_cast<size_t>(f.wurf)].absetzung; };
        std::stable_sort(m_herde.ferkel.begin(), m_herde.ferkel.end(),
                         [&](const Ferkel& a, const Ferkel& b) { return zugang(a) < zugang(b); });
    }

    static void benennen(Zufall& z, Tier& t, bool istSau, int nr) {
        t.nummer = istSau ? QString::number(nr) : QStringLiteral("E%1").arg(nr);
        if (istSau && z.trifft(0.01)) {
            const QString eigene[] = {QStringLiteral("A%1").arg(nr), QStringLiteral("%1/%2").arg(nr).arg(z.zahl(1, 9)),
                                      QString::fromUtf8(namen[z.eines(namen)])};
            t.nummer = eigene[z.zahl(0, 2)];
        }
        t.taetowierung = z.trifft(0.6) ? QStringLiteral("T%1").arg(nr) : QString();
        t.gruppe = istSau ? QStringLiteral("Zuchtsau") : QStringLiteral("Zuchteber");
        t.stallnr = istSau ? QStringLiteral("W%1").arg(1 + nr % 24, 2, 10, QChar(u'0'))
                           : QStringLiteral("EB%1").arg(1 + nr % 6);
        if (z.trifft(0.01)) t.statusabfrage = QStringLiteral("N");
        if (z.trifft(0.03)) t.infos = QStringLiteral("Großrahmig, ruhig, \"gute Mutter\"");
    }

    const int m_ende, m_beginn;
    Herde m_herde;
    std::vector<std::vector<int>> m_eberplaetze;
    int m_boxzaehler[boxen] = {};
};

}  // namespace

Tier Herde::alsTier(const Ferkel& f) const {
    const Wurf& wurf = wuerfe[static_cast<size_t>(f.wurf)];
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

Herde Herde_erzeugen(const Vorgaben& vorgaben) { return Betrieb(vorgaben).laufen(); }

}  // namespace koben
