// The shared variables by their names, for scripts and tests.
#include "core/Variablen.h"

#include <limits>

#include "core/PZ_Koben_Subs.h"

namespace koben {
namespace {

struct TextVariable {
    const char* name;
    QString Variablen::*member;
};
struct NumberVariable {
    const char* name;
    int Variablen::*member;
};

constexpr TextVariable texts[] = {
    {"Datenordner", &Variablen::Datenordner},           {"Programmordner", &Variablen::Programmordner},
    {"Datenbankpfad", &Variablen::Datenbankpfad},       {"Heute", &Variablen::Heute},
    {"Buchungsmodus", &Variablen::Buchungsmodus},       {"Uebergabe_Marke", &Variablen::Uebergabe_Marke},
    {"Uebergabe_Anzahl", &Variablen::Uebergabe_Anzahl}, {"Ausgabedatei", &Variablen::Ausgabedatei},
};

constexpr NumberVariable numbers[] = {
    {"Status_neu_berechnen", &Variablen::Status_neu_berechnen},
    {"Liste_neu_laden", &Variablen::Liste_neu_laden},
    {"Start_erledigt", &Variablen::Start_erledigt},
    {"Buchungsart_Nr", &Variablen::Buchungsart_Nr},
};

bool same(QStringView a, const char* b) { return a.compare(QLatin1String(b), Qt::CaseInsensitive) == 0; }

/// Name and index of "Konfig_Zahl(62)"; index -1 where there is none.
struct Access {
    QString name;
    int index = -1;
};

Access parsed(const QString& text) {
    const QString name = text.trimmed();
    const qsizetype open = name.indexOf(u'(');
    if (open < 0 || !name.endsWith(u')')) return {name, -1};
    bool ok = false;
    const int index = QStringView(name).mid(open + 1, name.size() - open - 2).trimmed().toInt(&ok);
    return {name.left(open).trimmed(), ok ? index : -1};
}

/// The member of an array that an access names, or null.
template <typename Array>
auto member(Array& array, const char* name, const Access& access) -> decltype(&array[0]) {
    const bool hit = same(access.name, name) && access.index >= 0 && static_cast<size_t>(access.index) < array.size();
    return hit ? &array[static_cast<size_t>(access.index)] : nullptr;
}

/// A signed 16-bit number, as all numbers of the shared variables are.
std::optional<qint16> shortNumber(const QString& text) {
    bool ok = false;
    const qint16 value = text.trimmed().toShort(&ok);
    return ok ? std::optional(value) : std::nullopt;
}

bool setNumber(const QString& text, auto& target) {
    const auto number = shortNumber(text);
    if (number) target = *number;
    return number.has_value();
}

}  // namespace

std::optional<QString> Variablen::read(const QString& name) const {
    const Access access = parsed(name);
    if (const qint16* number = member(Konfig_Zahl, "Konfig_Zahl", access)) return QString::number(*number);
    if (const Money* amount = member(Konfig_Betrag, "Konfig_Betrag", access)) return Value(*amount).toText();
    if (const QString* text = member(Konfig_Text, "Konfig_Text", access)) return *text;
    if (access.index >= 0) return std::nullopt;
    if (same(access.name, "Crlf")) return Crlf;
    for (const auto& entry : texts) {
        if (same(access.name, entry.name)) return this->*entry.member;
    }
    for (const auto& entry : numbers) {
        if (same(access.name, entry.name)) return QString::number(this->*entry.member);
    }
    return std::nullopt;
}

bool Variablen::set(const QString& name, const QString& value) {
    const Access access = parsed(name);
    if (qint16* number = member(Konfig_Zahl, "Konfig_Zahl", access)) return setNumber(value, *number);
    if (Money* amount = member(Konfig_Betrag, "Konfig_Betrag", access)) {
        const auto parsed = Betrag_lesen(value);
        if (parsed) *amount = *parsed;
        return parsed.has_value();
    }
    if (QString* text = member(Konfig_Text, "Konfig_Text", access)) return *text = value, true;
    if (access.index >= 0) return false;
    if (same(access.name, "Heute")) {
        const QDate date = Datum_aus_Text(value);
        if (date.isValid()) Heute = Datum_als_Anzeige(date);
        return date.isValid();
    }
    for (const auto& entry : texts) {
        if (same(access.name, entry.name)) return this->*entry.member = value, true;
    }
    for (const auto& entry : numbers) {
        if (same(access.name, entry.name)) return setNumber(value, this->*entry.member);
    }
    return false;
}

}  // namespace koben
