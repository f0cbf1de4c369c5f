// Numbers, amounts, dates and texts between their forms: what was understood is understood again as it was shown.
#include <cmath>

#include "core/Einstellungen.h"
#include "core/PZ_Koben_Subs.h"
#include "store/Convert.h"
#include "store/IsoDate.h"
#include "store/Numbers.h"
#include "tests/fuzz/Forderung.h"

namespace koben::fuzz {
namespace {

const QString Heute = QStringLiteral("15.07.2026");

bool nurZiffern(QStringView text) {
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

void datum(const QString& text) {
    const QDate date = Datum_aus_Text(text);
    fordere(Ist_Datum(text) == date.isValid(), "a date or not", text);
    fordere(Datum_kurz(text).size() == 8, "short date", text);
    const QString full = Datum_ergaenzen(text, Heute);
    fordere(!date.isValid() || full == Datum_als_Anzeige(date), "a date completed to another", text);
    if (full.isEmpty()) return;
    fordere(Datum_als_Anzeige(Datum_aus_Text(full)) == full && Datum_ergaenzen(full, Heute) == full, "completed", full);
    const QString key = Datum_als_Text(QString(full)), literal = Sql_Datum(QString(full));
    fordere(key.size() == 8 && nurZiffern(key), "sort key", key);
    const auto read = parseDateLiteral(QStringView(literal).mid(1).chopped(1));
    fordere(read && textOf(*read) == full, "literal of the dialect", literal);
    const auto here = parseDateText(full);
    fordere(here && here->date() == Datum_aus_Text(full), "the two readers of dates", full);
}

void isoDatum(const QString& text) {
    for (const auto& date : {parseDateText(text), parseDateLiteral(text)}) {
        if (!date) continue;
        char iso[32];
        const int length = formatIso(*date, iso);
        fordere(parseIso(iso, length) == date, "ISO form", text);
        fordere(parseDateText(textOf(*date)) == date, "German form", text);
        fordere(dateOfSerial(serialOf(*date)) == date, "serial number", text);
        int year = 0, month = 0, day = 0;
        splitDay(date->julianDay, year, month, day);
        fordere(validDate(year, month, day) && julianDay(year, month, day) == date->julianDay, "split", text);
        fordere(date->date() == QDate(year, month, day), "the machine's calendar", text);
    }
    const QByteArray bytes = text.toUtf8();
    if (const auto date = parseIso(bytes.constData(), static_cast<int>(bytes.size())))
        fordere(parseDateText(textOf(*date)) == date, "ISO text", text);
}

void betrag(const QString& text) {
    const Money loose = Betrag_aus_Text(QString(text));
    const auto whole = Betrag_lesen(text);
    for (const Money amount : {loose, whole.value_or(Money{})}) {
        fordere(Betrag_aus_Text(textOf(amount)) == amount, "amount by its beginning", text);
        fordere(Betrag_lesen(textOf(amount)) == amount, "amount as a whole", text);
        fordere(moneyOfDigits(Betrag_als_Punkttext(amount).toLatin1()).has_value() ||
                    std::abs(amount.tenThousandths / 10000) > 922337203685470,
                "amount with a point", text);
        for (const int width : {0, 4, 10, 30})
            fordere(Betrag_formatieren(width, amount).size() == width, "width of an amount", text);
    }
}

void zahl(const QString& text) {
    for (const int decimals : {0, 2, 4}) {
        const QString shown = Zahl_formatieren(QString(text), decimals);
        const QString digits = shown.startsWith(u'-') ? shown.mid(1) : shown;
        const QStringView whole = QStringView(digits).chopped(decimals > 0 ? decimals + 1 : 0);
        fordere(nurZiffern(whole) && (decimals == 0 || digits[whole.size()] == u','), "a number shown", shown);
        fordere(Zahl_formatieren(QString(shown), decimals) == shown, "shown twice", text + u'\n' + shown);
    }
    const float single = Zahl_aus_Text(QString(text));
    fordere(std::isfinite(single) && std::isfinite(Wert(text)), "a number beyond all", text);
    QByteArray ascii;
    const qsizetype length = scanNumber(text, ascii);
    fordere(length >= 0 && length <= text.size() && (length == 0 || !ascii.isEmpty()), "scanned", text);
    const auto value = wholeNumber(text);
    fordere(!value || std::isfinite(*value), "a number beyond all", text);
    if (value && std::abs(*value) > 1e-300) {
        const auto again = wholeNumber(textOf(*value));
        fordere(again && std::abs(*again - *value) <= std::abs(*value) * 1e-14, "a number as text", text);
    }
}

/// A text taken into a type and back stays what it became.
void typ(const QString& text, Type type) {
    try {
        const Value value = convert(Value(text), type);
        const Value shown = convert(value, Type::Text);
        const Value again = convert(shown, type);
        fordere(convert(again, Type::Text) == shown, "a text of a type", text + u'\n' + shown.toText());
        if (type != Type::Single && type != Type::Double)
            fordere(again == value, "a value of a type", text + u'\n' + shown.toText());
    } catch (const ConversionError& error) {
        fordere(error.what.size() > 10 && error.what.front().isUpper(), "no sentence", error.what);
    }
}

void texte(const QByteArray& bytes, const QString& text) {
    fordere(nachWindows1252(ausWindows1252(bytes)) == bytes, "Windows-1252", text);
    fordere(!Hochkomma_ersetzen(text).contains(u'\''), "an apostrophe left", text);
    for (const int width : {0, 1, 8})
        fordere(Text_links(text, width).size() == width && Text_rechts(text, width).size() == width, "width", text);
    const QString year = Jahr_ergaenzen(text, Heute);
    fordere(Jahr_ergaenzen(year, Heute) == year || year.isEmpty(), "a year completed", text);
}

}  // namespace
}  // namespace koben::fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace koben::fuzz;
    using koben::Type;
    const QByteArray bytes = roh(data, size).left(400);
    const QString text = QString::fromUtf8(bytes);
    datum(text);
    isoDatum(text);
    betrag(text);
    zahl(text);
    texte(bytes, text);
    for (const Type type :
         {Type::Bool, Type::Short, Type::Long, Type::Single, Type::Double, Type::Currency, Type::Date, Type::Text})
        typ(text, type);
    return 0;
}
