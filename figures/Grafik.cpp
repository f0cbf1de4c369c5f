#include "figures/Grafik.h"

namespace koben {

std::span<const Grafik> Grafiken() {
    static const Grafik plots[] = {
        {"belegungen_woche", "Belegungen je Woche", "Belegungen je Woche und Abferkelungen siebzehn Wochen voraus",
         "Belegungen jeder Kalenderwoche (Belegungen einer Sau an höchstens drei Tagen zählen einmal, am ersten "
         "Tag) gegen das Ziel; erwartet werden Abferkelungen %1 Tage nach der Belegung, wenn die Sau bis dahin "
         "nicht erneut belegt, als nicht tragend untersucht oder abgegangen ist, tatsächlich sind es die "
         "gebuchten Würfe.",
         "In diesem Zeitraum gibt es keine Belegungen und keine Würfe.", Grafik_Belegungen},
        {"wurfverteilung", "Sauen nach Wurfzahl", "Sauen nach Wurfzahl",
         "Die Sauen, die am letzten Tag des Zeitraums im Bestand sind, nach der Zahl ihrer Würfe bis zu diesem Tag.",
         "Am letzten Tag des Zeitraums ist keine Sau im Bestand.", Grafik_Wurfverteilung},
        {"ferkel_wurfnummer", "Ferkel nach Wurfnummer", "Lebend geborene und abgesetzte Ferkel nach Wurfnummer",
         "Lebend geborene Ferkel je Wurf der Würfe, die im Zeitraum gefallen sind, und abgesetzte Ferkel je Wurf "
         "der Würfe, die im Zeitraum zu Ende abgesetzt wurden, nach dem wievielten Wurf der Sau.",
         "In diesem Zeitraum gibt es keine Würfe und keine Absetzungen.", Grafik_FerkelNachWurf},
        {"abgesetzt_rollierend", "Abgesetzt je Sau und Jahr",
         "Abgesetzte Ferkel je Sau und Jahr, zwölf Monate rollierend",
         "Für jeden Monat, der im Zeitraum und bis heute zu Ende ging: abgesetzte Ferkel der zwölf Monate bis "
         "dahin, mal 365, geteilt durch die Produktionstage (Tage der Sauen ab dem Tag nach ihrer ersten Belegung "
         "bis zum Abgang).",
         "In diesem Zeitraum ist kein Monat zu Ende gegangen, bis zu dem es Produktionstage gibt.",
         Grafik_AbgesetztRollierend},
        {"abferkelrate_woche", "Abferkelrate", "Abferkelrate nach Belegwoche",
         "Von den Belegungen jeder Woche, die mehr als 125 Tage zurückliegen, der Anteil, zu dem 105 bis 125 Tage "
         "später ein Wurf gebucht ist; jüngere Wochen sind noch offen und haben keinen Wert.",
         "In diesem Zeitraum gibt es keine Belegungen, die mehr als 125 Tage zurückliegen.", Grafik_Abferkelrate},
        {"umrauschen_tage", "Umrauschen", "Tage von der Belegung bis zum Umrauschen",
         "Belegungen des Zeitraums, die mehr als 46 Tage zurückliegen, nach der Zahl der Tage bis zur nächsten "
         "Belegung derselben Sau ohne Wurf dazwischen (4 bis 46 Tage); hervorgehoben sind ein und zwei Zyklen.",
         "In diesem Zeitraum hat keine Sau umgerauscht.", Grafik_Umrauschen},
        {"nichtproduktive_tage", "Nichtproduktive Tage", "Nichtproduktive Tage nach Art",
         "Produktionstage des Zeitraums, an denen die Sau weder tragend war noch säugte, nach dem, was als "
         "Nächstes kam, mal 365, geteilt durch alle Produktionstage.",
         "In diesem Zeitraum gibt es keine nichtproduktiven Tage.", Grafik_Nichtproduktiv},
        {"verluste", "Ferkelverluste", "Ferkelverluste nach Ursache und Alter",
         "Im Zeitraum gebuchte Ferkelverluste der Sauen, links nach dem Grund (die zehn häufigsten), rechts nach "
         "den Tagen seit dem letzten Wurf der Sau.",
         "In diesem Zeitraum sind keine Ferkelverluste gebucht.", Grafik_Verluste},
        {"bestand_art", "Bestand", "Bestand nach Tierart",
         "Tiere im Bestand am Ende jeden Monats und am letzten Tag des Zeitraums: zugegangen oder ohne "
         "Zugangsdatum, und nicht oder erst danach abgegangen.",
         "In diesem Zeitraum sind keine Tiere im Bestand.", Grafik_Bestand},
        {"eber_vergleich", "Eber", "Eber im Vergleich",
         "Abferkelrate der Belegungen des Zeitraums, die mehr als 125 Tage zurückliegen, und lebend geborene "
         "Ferkel je Wurf aus ihnen, nach dem Eber der ersten Belegung, mit dem Bereich, in dem der wahre Wert mit "
         "95 % Sicherheit liegt; Eber mit weniger als 5 Belegungen stehen zusammen.",
         "In diesem Zeitraum gibt es keine Belegungen mit Eber, die mehr als 125 Tage zurückliegen.", Grafik_Eber},
        {"wurfgroessen", "Wurfgrößen", "Wurfgrößen",
         "Würfe des Zeitraums nach der Zahl der gesamt und der lebend geborenen Ferkel.",
         "In diesem Zeitraum gibt es keine Würfe.", Grafik_Wurfgroessen},
        {"wochentage", "Wochentage", "Wochentage der Belegungen und Abferkelungen",
         "Belegungen des Zeitraums (an höchstens drei Tagen zählen einmal, am ersten Tag) und Würfe des Zeitraums "
         "nach dem Wochentag.",
         "In diesem Zeitraum gibt es keine Belegungen und keine Würfe.", Grafik_Wochentage},
    };
    return plots;
}

const Grafik* grafik(QStringView id) {
    for (const Grafik& plot : Grafiken())
        if (id == QLatin1StringView(plot.id)) return &plot;
    return nullptr;
}

Grafikinhalt Grafik_berechnen(const Grafik& plot, const Grafikauftrag& order) {
    Grafikinhalt content = plot.make(order);
    content.chart.title = QString::fromUtf8(plot.title);
    QString sentence = QString::fromUtf8(plot.satz);
    if (sentence.contains(QStringLiteral("%1"))) sentence = sentence.arg(order.tragezeit);
    content.chart.sentence = sentence + QStringLiteral(" Zeitraum: ") + Zeitraumtext(order.period) + u'.';
    content.chart.empty = QString::fromUtf8(plot.empty);
    content.behind = [behind = std::move(content.behind), table = content.table, title = content.chart.title,
                      general = content.chart.sentence](int row, int column) {
        std::optional<Explanation> told = behind(row, column);
        if (!told) return told;
        const QString& heading = table.columns[static_cast<size_t>(column) - 1].title;
        if (told->sentence.isEmpty()) told->sentence = general;
        told->sentence = title + QStringLiteral(", ") + table.cell(row, 1).toText() + QStringLiteral(", ") + heading +
                         QStringLiteral(". ") + told->sentence;
        return told;
    };
    return content;
}

}  // namespace koben
