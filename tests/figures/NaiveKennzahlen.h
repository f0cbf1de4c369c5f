#pragma once
// The figures a second time: sow by sow and day by day from their definitions, with no code of the program. Slow.
#include <QString>
#include <algorithm>
#include <map>
#include <set>
#include <vector>

namespace koben::naiv {

struct Zeile {
    int tag = 0;  // 0: no date
    int a = 0, b = 0, c = 0;
};
struct Tier {
    bool sau = true;
    int zugang = 0, abgang = 0;
    std::vector<Zeile> belegung, nein, ferkelung, absetzung, verluste;
};
struct Zahl {
    double zaehler = 0, nenner = 0;
    long gezaehlt = 0, ausgelassen = 0;
};
struct Wurf {
    int gesamt = 0, lebend = 0, tot = 0, w = 0, abgesetzt = 0, beleg = 0;
};

/// A sow as of `heute`.
struct Sau {
    std::set<int> gruppen, nein;
    std::map<int, Wurf> wuerfe;
    std::map<int, int> absetzungen;
    int zugang, abgang, erste = 0;

    Sau(const Tier& t, int heute) : zugang(t.zugang), abgang(t.abgang) {
        const auto known = [&](const Zeile& z) { return z.tag != 0 && z.tag <= heute; };
        std::set<int> belegt;
        for (const Zeile& z : t.belegung)
            if (known(z)) belegt.insert(z.tag);
        for (const int d : belegt)
            if (gruppen.empty() || d > *gruppen.rbegin() + 3) gruppen.insert(d);
        if (!belegt.empty()) erste = *belegt.begin();
        for (const Zeile& z : t.nein)
            if (known(z)) nein.insert(z.tag);
        for (const Zeile& z : t.ferkelung) {
            if (!known(z)) continue;
            Wurf& w = wuerfe[z.tag];
            w.gesamt += z.a, w.lebend += z.b, w.tot += z.c;
        }
        for (const Zeile& z : t.absetzung)
            if (known(z)) absetzungen[z.tag] += z.a;
        for (auto& [f, w] : wuerfe) {
            const int n = next(f);
            for (const auto& [d, anzahl] : absetzungen)
                if (f < d && (n == 0 || d <= n)) w.w += anzahl, w.abgesetzt = d;
            for (const int g : gruppen)
                if (g < f) w.beleg = 105 <= f - g && f - g <= 125 ? g : 0;
        }
    }
    int next(int f) const {
        const auto at = wuerfe.upper_bound(f);
        return at == wuerfe.end() ? 0 : at->first;
    }
    bool litterBetween(int a, int b) const {
        for (const auto& [f, w] : wuerfe)
            if (a < f && f < b) return true;
        return false;
    }
    /// Days to the next service where that is a return, otherwise 0.
    int returnAfter(int s, int most) const {
        for (const int t : gruppen)
            if (t - s >= 4 && t - s <= most && !litterBetween(s, t)) return t - s;
        return 0;
    }
    bool producing(int d) const { return erste != 0 && erste < d && (abgang == 0 || d <= abgang); }
    bool productive(int d, int bis) const {
        int last = 0;
        for (const int g : gruppen)
            if (g <= bis) last = g;
        bool open = last != 0 && (abgang == 0 || abgang > bis) && last < d && bis - last <= 125;
        for (const auto& [f, w] : wuerfe) {
            if (f > bis) continue;
            if (f > last) open = false;
            if (w.beleg != 0 && w.beleg < d && d <= f) return true;
            const bool weaned = w.abgesetzt != 0 && w.abgesetzt <= bis;
            if (f < d && (weaned ? d <= w.abgesetzt : d - f <= 60)) return true;
        }
        for (const int check : nein)
            if (check > last && check <= bis) open = false;
        return open;
    }
    const char* kind(int d, int bis) const {
        for (int day = d; day <= bis; ++day) {
            if (gruppen.contains(day)) {
                for (const int g : gruppen)
                    if (g < d && !litterBetween(g, d)) return "npt_arten.Belegung bis Umrauschen";
                return "npt_arten.Absetzen bis Belegung";
            }
            if (day == abgang) return "npt_arten.bis Abgang";
        }
        return "npt_arten.offen";
    }
};

using Stand = std::map<QString, Zahl>;

/// What a sow adds to the figures that look at her bookings.
inline void addBookings(Stand& all, const Sau& s, int von, int bis, int heute) {
    const auto in = [&](int d) { return von <= d && d <= bis; };
    const auto add = [&](const char* id, double zaehler, double nenner) {
        all[id].zaehler += zaehler, all[id].nenner += nenner;
    };
    int before = 0;
    for (const auto& [f, w] : s.wuerfe) {
        if (in(f)) {
            add("wuerfe_sau_jahr", 1, 0), add("lebend_wurf", w.lebend, 1), add("tot_prozent", w.tot, w.gesamt);
            if (before != 0) add("zwischenwurfzeit", f - before, 1);
        }
        if (w.abgesetzt != 0 && in(w.abgesetzt))
            add("abgesetzt_wurf", w.w, 1), add("verluste_prozent", w.lebend - w.w, w.lebend);
        for (const int g : s.gruppen) {
            const int n = s.next(f);
            if (w.abgesetzt == 0 || g < w.abgesetzt || (n != 0 && g >= n)) continue;
            if (in(g) && g - w.abgesetzt <= 65) add("absetz_beleg_tage", g - w.abgesetzt, 1);
            if (in(g) && g - w.abgesetzt > 65) ++all["absetz_beleg_tage"].ausgelassen;
            break;
        }
        before = f;
    }
    for (const auto& [d, anzahl] : s.absetzungen)
        if (in(d)) add("abgesetzt_sau_jahr", anzahl, 0);
    if (s.erste != 0 && in(s.erste)) add("remontierung", 1, 0);
    for (const int g : s.gruppen) {
        if (!in(g)) continue;
        bool farrowed = false;
        for (const auto& [f, w] : s.wuerfe) farrowed = farrowed || w.beleg == g;
        if (heute - g > 125)
            add("abferkelrate", farrowed, 1);
        else
            ++all["abferkelrate"].ausgelassen;
        const int days = s.returnAfter(g, 46);
        if (heute - g > 46)
            add("umrauscher", days != 0, 1);
        else
            ++all["umrauscher"].ausgelassen;
        if (days == 0 || heute - g <= 46) continue;
        all[days <= 17   ? "umrauscher.4-17"
            : days <= 24 ? "umrauscher.18-24"
            : days <= 37 ? "umrauscher.25-37"
                         : "umrauscher.38-46"]
            .zaehler += 1;
    }
}

inline Stand compute(const std::vector<Tier>& herd, int von, int bis, int heute) {
    bis = std::min(bis, heute);
    Stand all;
    long days = 0, stock = 0;
    for (const Tier& tier : herd) {
        if (!tier.sau) continue;
        const Sau s(tier, heute);
        addBookings(all, s, von, bis, heute);
        for (int d = von; d <= bis; ++d) {
            if (!s.producing(d)) continue;
            ++days;
            if (s.productive(d, bis)) continue;
            all["npt_sau_jahr"].zaehler += 1;
            all[s.kind(d, bis)].zaehler += 1;
        }
        if (s.zugang > bis || (s.abgang != 0 && s.abgang <= bis)) continue;
        const auto litters =
            std::count_if(s.wuerfe.begin(), s.wuerfe.end(), [&](const auto& w) { return w.first <= bis; });
        all["wuerfe_verteilung." + (litters >= 10 ? QString("10+") : QString::number(litters))].zaehler += 1;
        ++stock;
    }
    for (const char* id : {"wuerfe_sau_jahr", "abgesetzt_sau_jahr", "npt_sau_jahr", "remontierung"})
        all[id].nenner = static_cast<double>(days);
    for (auto& [id, zahl] : all) {
        zahl.gezaehlt = static_cast<long>(zahl.nenner);
        if (id.startsWith("npt_arten")) zahl.gezaehlt = days;
        if (id.startsWith("wuerfe_v")) zahl.gezaehlt = stock;
        if (id.startsWith("umrauscher.")) zahl.gezaehlt = static_cast<long>(all["umrauscher"].nenner);
    }
    return all;
}

}  // namespace koben::naiv
