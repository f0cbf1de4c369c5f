// Numbers, amounts, dates and texts between their forms: what was understood is understood again as it was shown.
#include <cmath>

#include "core/Einstellungen.h"
#include "core/PZ_Koben_Subs.h"
#include "store/Convert.h"
#include "store/IsoDate.h"
#include "store/Numbers.h"
#include "tests/fuzz/Require.h"

namespace koben::fuzz {
namespace {

const QString Heute = QStringLiteral("15.07.2026");

bool digitsOnly(QStringView text) {
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

void checkDate(const QString& text) {
    const QDate date = Datum_aus_Text(text);
    require(Ist_Datum(text) == date.isValid(), "a date or not", text);
    require(Datum_kurz(text).size() == 8, "short date", text);
    const QString full = Datum_ergaenzen(text, Heute);
    require(!date.isValid() || full == Datum_als_Anzeige(date), "a date completed to another", text);
    if (full.isEmpty()) return;
    require(Datum_als_Anzeige(Datum_aus_Text(full)) == full && Datum_ergaenzen(full, Heute) == full, "completed", full);
    const QString key = Datum_als_Text(QString(full)), literal = Sql_Datum(QString(full));
    require(key.size() == 8 && digitsOnly(key), "sort key", key);
    const auto read = parseDateLiteral(QStringView(literal).mid(1).chopped(1));
    require(read && textOf(*read) == full, "literal of the dialect", literal);
    const auto here = parseDateText(full);
    require(here && here->date() == Datum_aus_Text(full), "the two readers of dates", full);
}

void checkIsoDate(const QString& text) {
    for (const auto& date : {parseDateText(text), parseDateLiteral(text)}) {
        if (!date) continue;
        char iso[32];
        const int length = formatIso(*date, iso);
        require(parseIso(iso, length) == date, "ISO form", text);
        require(parseDateText(textOf(*date)) == date, "German form", text);
        require(dateOfSerial(serialOf(*date)) == date, "serial number", text);
        int year = 0, month = 0, day = 0;
        splitDay(date->julianDay, year, month, day);
        require(validDate(year, month, day) && julianDay(year, month, day) == date->julianDay, "split", text);
        require(date->date() == QDate(year, month, day), "the machine's calendar", text);
    }
    const QByteArray bytes = text.toUtf8();
    if (const auto date = parseIso(bytes.constData(), static_cast<int>(bytes.size())))
        require(parseDateText(textOf(*date)) == date, "ISO text", text);
}

void checkAmount(const QString& text) {
    const Money loose = Betrag_aus_Text(QString(text));
    const auto whole = Betrag_lesen(text);
    for (const Money amount : {loose, whole.value_or(Money{})}) {
        require(Betrag_aus_Text(textOf(amount)) == amount, "amount by its beginning", text);
        require(Betrag_lesen(textOf(amount)) == amount, "amount as a whole", text);
        require(moneyOfDigits(Betrag_als_Punkttext(amount).toLatin1()).has_value() ||
                    std::abs(amount.tenThousandths / 10000) > 922337203685470,
                "amount with a point", text);
        for (const int width : {0, 4, 10, 30})
            require(Betrag_formatieren(width, amount).size() == width, "width of an amount", text);
    }
}

void checkNumber(const QString& text) {
    for (const int decimals : {0, 2, 4}) {
        const QString shown = Zahl_formatieren(QString(text), decimals);
        const QString digits = shown.startsWith(u'-') ? shown.mid(1) : shown;
        const QStringView whole = QStringView(digits).chopped(decimals > 0 ? decimals + 1 : 0);
        require(digitsOnly(whole) && (decimals == 0 || digits[whole.size()] == u','), "a number shown", shown);
        require(Zahl_formatieren(QString(shown), decimals) == shown, "shown twice", text + u'\n' + shown);
    }
    const float single = Zahl_aus_Text(QString(text));
    require(std::isfinite(single) && std::isfinite(Wert(text)), "a number beyond all", text);
    QByteArray ascii;
    const qsizetype length = scanNumber(text, ascii);
    require(length >= 0 && length <= text.size() && (length == 0 || !ascii.isEmpty()), "scanned", text);
    const auto value = wholeNumber(text);
    require(!value || std::isfinite(*value), "a number beyond all", text);
    if (value && std::abs(*value) > 1e-300) {
        const auto again = wholeNumber(textOf(*value));
        require(again && std::abs(*again - *value) <= std::abs(*value) * 1e-14, "a number as text", text);
    }
}

/// A text taken into a type and back stays what it became.
void checkType(const QString& text, Type type) {
    try {
        const Value value = convert(Value(text), type);
        const Value shown = convert(value, Type::Text);
        const Value again = convert(shown, type);
        require(convert(again, Type::Text) == shown, "a text of a type", text + u'\n' + shown.toText());
        if (type != Type::Single && type != Type::Double)
            require(again == value, "a value of a type", text + u'\n' + shown.toText());
    } catch (const ConversionError& error) {
        require(error.what.size() > 10 && error.what.front().isUpper(), "no sentence", error.what);
    }
}

void checkTexts(const QByteArray& bytes, const QString& text) {
    require(nachWindows1252(ausWindows1252(bytes)) == bytes, "Windows-1252", text);
    require(!Hochkomma_ersetzen(text).contains(u'\''), "an apostrophe left", text);
    for (const int width : {0, 1, 8})
        require(Text_links(text, width).size() == width && Text_rechts(text, width).size() == width, "width", text);
    const QString year = Jahr_ergaenzen(text, Heute);
    require(Jahr_ergaenzen(year, Heute) == year || year.isEmpty(), "a year completed", text);
}

}  // namespace
}  // namespace koben::fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace koben::fuzz;
    using koben::Type;
    const QByteArray bytes = raw(data, size).left(400);
    const QString text = QString::fromUtf8(bytes);
    checkDate(text);
    checkIsoDate(text);
    checkAmount(text);
    checkNumber(text);
    checkTexts(bytes, text);
    for (const Type type :
         {Type::Bool, Type::Short, Type::Long, Type::Single, Type::Double, Type::Currency, Type::Date, Type::Text})
        checkType(text, type);
    return 0;
}
