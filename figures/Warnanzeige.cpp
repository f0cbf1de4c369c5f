#include "figures/Warnanzeige.h"

#include "core/Konfig.h"
#include "core/PZ_Koben_Subs.h"

namespace koben {
namespace {

constexpr int Decimals = 2;
constexpr int MostWeeks = 260;  // five years

QString number(double value) { return QString::number(value, 'f', Decimals).replace(u'.', u','); }

QString shortNumber(double value) { return QString::number(value).replace(u'.', u','); }

Value cell(const std::optional<double>& value) { return value ? Value(number(*value)) : Value(); }

/// A setting within its bounds; otherwise the default.
double setting(const Variablen& settings, int slot, double least, double most, double preset) {
    QString text = settings.Konfig_Text.at(static_cast<size_t>(slot)).trimmed();
    bool readable = false;
    const double value = text.replace(u',', u'.').toDouble(&readable);
    return readable && least <= value && value <= most ? value : preset;
}

Column column(const char* title, Sort sort = Sort::Text) {
    const QString name = QString::fromUtf8(title);
    return {
        .key = name.toLower(), .title = name, .align = sort == Sort::Number ? Align::Right : Align::Left, .sort = sort};
}

/// A line for a week of the base or of the span.
void addWeek(Explanation& told, const Warnwoche& week, bool base) {
    Grid::Row cells{Taktname(Takt::Woche, week.woche.von),
                    base ? QStringLiteral("Basis") : QStringLiteral("überwacht")};
    if (week.denominator != 0)
        cells << Value(week.numerator) << Value(week.denominator);
    else
        cells << Value() << Value();
    cells << cell(week.x) << cell(week.z) << (base ? Value() : Value(number(week.c)))
          << (week.alarm ? QStringLiteral("Alarm")
              : week.x   ? QString()
                         : QStringLiteral("übergangen"));
    told.lines.push_back({std::move(cells), 0});
}

}  // namespace

Warnvorgaben Warnvorgaben_lesen(const Variablen& settings) {
    const Warnvorgaben preset;
    Warnvorgaben how;
    how.abzug = setting(settings, Text::WarnAbzug, 0, 10, preset.abzug);
    how.schwelle = setting(settings, Text::WarnAbzug + 1, 0, 100, preset.schwelle);
    how.wochen = static_cast<int>(setting(settings, Text::WarnAbzug + 2, 4, MostWeeks, preset.wochen));
    how.mindestwochen =
        static_cast<int>(setting(settings, Text::WarnMindestwochen, 2, MostWeeks, preset.mindestwochen));
    return how;
}

QStringList Warnvorgaben_als_Text(const Warnvorgaben& how) {
    return {shortNumber(how.abzug), shortNumber(how.schwelle), QString::number(how.wochen),
            QString::number(how.mindestwochen)};
}

QString Warnzustand(const Warnung& watch) {
    if (!watch.possible()) return QStringLiteral("keine Warnung möglich: ") + watch.grund;
    return watch.alarms().empty() ? QStringLiteral("unauffällig") : QStringLiteral("Alarm");
}

QString Warnwochentext(const Warnung& watch) {
    QStringList weeks;
    for (const qint32 monday : watch.alarms()) weeks += Taktname(Takt::Woche, monday);
    return weeks.join(QStringLiteral(", "));
}

std::vector<Column> Warnspalten() {
    return {column("Reihe"),
            column("Zustand"),
            column("Alarmwochen"),
            column("Mittel", Sort::Number),
            column("Streuung", Sort::Number),
            column("Summe", Sort::Number),
            column("Basiswochen", Sort::Number),
            column("Wochen", Sort::Number),
            column("Alarme früher", Sort::Number),
            column("Jahre früher", Sort::Number)};
}

Grid::Row Warnzeile(const Warnung& watch, const Rueckblick& past) {
    qint64 weeks = 0;
    for (const Warnwoche& week : watch.wochen) weeks += week.x ? 1 : 0;
    Grid::Row cells{QString::fromUtf8(warnart(watch.reihe).name), Warnzustand(watch), Warnwochentext(watch)};
    if (watch.possible())
        cells << number(watch.mittel) << number(watch.abweichung) << number(watch.c());
    else
        cells << Value() << Value() << Value();
    cells << Value(watch.basiswochen) << Value(weeks) << Value(past.alarms) << Value(past.possible);
    return cells;
}

Explanation Warnung_herleiten(const Warnung& watch, const Rueckblick& past, const Warnvorgaben& how) {
    const Warnart& kind = warnart(watch.reihe);
    const QStringList texts = Warnvorgaben_als_Text(how);
    Explanation told;
    told.sentence =
        QStringLiteral(
            "%1 (%2): %3 Jede Woche wird mit Mittel und Streuung der Basis verglichen, den %4 Wochen vor den "
            "%4 überwachten. Die Abweichungen zum Schlechteren, je Woche um %5 vermindert, summieren sich; "
            "über %6 schlägt die Warnung an und beginnt neu. Früher hätte sie in %7 gleich langen "
            "Zeiträumen %8-mal angeschlagen.")
            .arg(QString::fromUtf8(kind.name), QString::fromUtf8(kind.einheit), QString::fromUtf8(kind.satz), texts[2],
                 texts[0], texts[1])
            .arg(past.possible)
            .arg(past.alarms);
    if (watch.possible())
        told.sentence += QStringLiteral(" Mittel der Basis %1, Streuung %2, aus %3 Wochen mit Buchungen.")
                             .arg(number(watch.mittel), number(watch.abweichung))
                             .arg(watch.basiswochen);
    else
        told.sentence += QStringLiteral(" Es ist keine Warnung möglich: %1.").arg(watch.grund);
    told.value = watch.possible() ? number(watch.c()) : QString();
    told.columns = {column("Woche"),
                    column("Teil"),
                    column("Ereignisse", Sort::Number),
                    column("von", Sort::Number),
                    column("x", Sort::Number),
                    column("z", Sort::Number),
                    column("Summe", Sort::Number),
                    column("Anmerkung")};
    for (const Warnwoche& week : watch.basis) addWeek(told, week, true);
    for (const Warnwoche& week : watch.wochen) addWeek(told, week, false);
    return told;
}

Explanation Alarmwochen_herleiten(const Sauenbuch& book, const Warnung& watch) {
    const Warnart& kind = warnart(watch.reihe);
    Explanation told;
    told.columns = {column("Nummer"),
                    column("Datum", Sort::Date),
                    column("Woche"),
                    column("Buchung"),
                    column("Einzelheiten"),
                    column("Zähler", Sort::Number),
                    column("Nenner", Sort::Number)};
    qint64 above = 0, below = 0;
    for (const qint32 monday : watch.alarms())
        for (const Warnbeitrag& part : Warnbeitraege(book, watch.reihe, um(Takt::Woche, monday))) {
            told.lines.push_back(
                {{part.sau->nummer, Value(QDate::fromJulianDay(part.tag)), Taktname(Takt::Woche, monday), part.was,
                  part.einzelheit, Value(part.numerator), Value(part.denominator)},
                 part.sau->id});
            above += part.numerator;
            below += part.denominator;
        }
    told.sentence =
        QStringLiteral("%1 (%2): die Buchungen der Wochen, in denen die Warnung anschlug. %3")
            .arg(QString::fromUtf8(kind.name), QString::fromUtf8(kind.einheit), QString::fromUtf8(kind.satz));
    if (told.lines.empty()) return told;
    told.numerator = QString::number(above);
    told.denominator = QString::number(below);
    if (below != 0) told.value = number(static_cast<double>(above * kind.faktor) / static_cast<double>(below));
    return told;
}

}  // namespace koben
