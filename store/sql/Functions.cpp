#include "store/sql/Functions.h"

#include <array>
#include <cmath>

#include "store/Convert.h"
#include "store/IsoDate.h"
#include "store/Numbers.h"
#include "store/sql/FunctionsDate.h"

namespace koben::sql {
namespace {

using Args = std::span<const Value>;

constexpr qint64 kLongestText = 1000000;  // of space() and string()
constexpr qsizetype kMostDecimals = 15;   // of format()

QString text(const Value& v) { return v.toText(); }

Value whole(qint64 n) { return n == static_cast<qint32>(n) ? Value(static_cast<qint32>(n)) : Value(n); }

[[noreturn]] void wrongArgument(const char* function) {
    throw ConversionError{DatabaseError::Kind::Type,
                          QStringLiteral("Ungültiges Argument der Funktion %1").arg(QString::fromLatin1(function))};
}

qint64 length(const Value& v, const char* function) {
    const qint64 n = v.toInt();
    if (n < 0) wrongArgument(function);
    return std::min(n, kLongestText);
}

Value len(Args a) { return static_cast<int>(text(a[0]).size()); }
Value left(Args a) { return text(a[0]).left(length(a[1], "left")); }
Value right(Args a) { return text(a[0]).right(length(a[1], "right")); }
Value mid(Args a) {
    if (a[1].toInt() < 1) wrongArgument("mid");
    return text(a[0]).mid(length(a[1], "mid") - 1, a.size() > 2 ? length(a[2], "mid") : -1);
}
QString cutBlanks(QString s, bool front, bool back) {
    while (back && s.endsWith(u' ')) s.chop(1);
    qsizetype from = 0;
    while (front && from < s.size() && s[from] == u' ') ++from;
    return s.mid(from);
}
Value trim(Args a) { return cutBlanks(text(a[0]), true, true); }
Value ltrim(Args a) { return cutBlanks(text(a[0]), true, false); }
Value rtrim(Args a) { return cutBlanks(text(a[0]), false, true); }
Value ucase(Args a) {
    QString s = text(a[0]);
    for (QChar& c : s) c = c.toUpper();  // a letter stays one letter: ß
    return s;
}
Value lcase(Args a) { return text(a[0]).toLower(); }
Value val(Args a) {
    QString s = text(a[0]);
    if (const auto comma = s.indexOf(u','); comma >= 0) s.truncate(comma);
    QByteArray ascii;
    return scanNumber(s, ascii) > 0 ? ascii.toDouble() : 0.0;
}
Value str(Args a) {
    const QString s = text(a[0]).replace(u',', u'.');
    return s.startsWith(u'-') ? s : u' ' + s;
}
template <Type type>
Value to(Args a) {
    return convert(a[0], type);
}
double down(double x) { return std::floor(x); }
double cut(double x) { return std::trunc(x); }
template <double (*round)(double)>
Value rounded(Args a) {
    if (const auto* money = std::get_if<Money>(&a[0].variant())) {
        const qint64 rest = money->tenThousandths % 10000;
        qint64 result = money->tenThousandths - rest;
        if (round == down && rest < 0 && __builtin_sub_overflow(result, 10000, &result)) wrongArgument("int");
        return Money{result};
    }
    if (std::holds_alternative<double>(a[0].variant())) return round(a[0].toDouble());
    if (std::holds_alternative<float>(a[0].variant())) return static_cast<float>(round(a[0].toDouble()));
    return whole(a[0].toInt());
}
/// The lowest whole number has no positive one: the highest stands for it.
qint64 size(qint64 n) { return n < 0 ? -std::max(n, -std::numeric_limits<qint64>::max()) : n; }
Value absolute(Args a) {
    if (const auto* money = std::get_if<Money>(&a[0].variant())) return Money{size(money->tenThousandths)};
    if (std::holds_alternative<double>(a[0].variant())) return std::abs(a[0].toDouble());
    if (const auto* single = std::get_if<float>(&a[0].variant())) return std::abs(*single);
    return whole(size(a[0].toInt()));
}
/// Half to even, as the digits are written: 2.675 at two places is 2.68.
Value roundTo(Args a) {
    const qint64 places = a.size() > 1 ? a[1].toInt() : 0;
    if (places < 0) wrongArgument("round");
    if (const auto* money = std::get_if<Money>(&a[0].variant())) {
        qint64 unit = 1;
        for (qint64 i = places; i < 4; ++i) unit *= 10;
        qint64 result = 0;
        if (__builtin_mul_overflow(divideHalfEven(money->tenThousandths, unit), unit, &result)) wrongArgument("round");
        return Money{result};
    }
    const bool single = std::holds_alternative<float>(a[0].variant());
    if (!single && !std::holds_alternative<double>(a[0].variant())) return whole(a[0].toInt());
    const double unit = std::pow(10.0, static_cast<double>(std::min<qint64>(places, 15)));
    const double scaled = a[0].toDouble() * unit;
    const double result = std::abs(scaled) < 1e15 ? roundHalfEven(scaled) / unit : a[0].toDouble();
    return single ? Value(static_cast<float>(result)) : Value(result);
}
Value sgn(Args a) {
    const double d = a[0].toDouble();
    return d > 0 ? 1 : d < 0 ? -1 : 0;
}
Value squareRoot(Args a) {
    if (a[0].toDouble() < 0) wrongArgument("sqr");
    return std::sqrt(a[0].toDouble());
}
Value instr(Args a) {
    const bool from = a.size() > 2;
    const qint64 start = from ? a[0].toInt() : 1;
    if (start < 1) wrongArgument("instr");
    const QString in = text(a[from ? 1 : 0]);
    if (start > in.size()) return 0;
    return static_cast<int>(in.indexOf(text(a[from ? 2 : 1]), start - 1, Qt::CaseInsensitive)) + 1;
}
Value replace(Args a) {
    const QString what = text(a[1]);
    return what.isEmpty() ? a[0] : Value(text(a[0]).replace(what, text(a[2]), Qt::CaseInsensitive));
}
// Number patterns: the 0 and # behind the point count the decimals; a 0 stays, a # falls away where it is 0.
QString formatNumber(const Value& value, const QString& pattern) {
    const auto first = pattern.indexOf(u'0') < 0 ? pattern.indexOf(u'#') : pattern.indexOf(u'0');
    if (first < 0) return value.toText();
    const auto point = pattern.indexOf(u'.');
    const QString decimals = point < 0 ? QString() : pattern.mid(point + 1);
    const auto most = static_cast<int>(std::min<qsizetype>(decimals.count(u'0') + decimals.count(u'#'), kMostDecimals));
    const auto least = std::min<qsizetype>(decimals.count(u'0'), kMostDecimals);
    const bool percent = pattern.endsWith(u'%');
    const double d = value.toDouble() * (percent ? 100 : 1);
    const double unit = std::pow(10.0, most);
    const double away = std::abs(d) < 1e12 ? std::copysign(std::floor(std::abs(d) * unit + 0.5 + 1e-9) / unit, d) : d;
    QString result = QString::number(away, 'f', most);
    if (most > 0)
        while (result.endsWith(u'0') && result.size() - result.indexOf(u'.') - 1 > least) result.chop(1);
    if (result.endsWith(u'.')) result.chop(1);
    result.replace(u'.', u',');
    return percent ? result + u'%' : result;
}
Value format(Args a) {
    if (a.size() == 1) return a[0].toText();
    if (const auto* date = std::get_if<DateTime>(&a[0].variant())) return formatDate(*date, text(a[1]));
    return a[0].isText() ? a[0] : Value(formatNumber(a[0], text(a[1])));
}
Value chr(Args a) { return QString(QChar(static_cast<char16_t>(a[0].toInt()))); }
Value asc(Args a) {
    if (text(a[0]).isEmpty()) wrongArgument("asc");
    return static_cast<int>(text(a[0])[0].unicode());
}
Value space(Args a) { return QString(length(a[0], "space"), u' '); }
Value repeated(Args a) {
    const QString s = text(a[1]);
    return s.isEmpty() ? Value(QString()) : Value(QString(length(a[0], "string"), s[0]));
}
Value isNumeric(Args a) { return a[0].isText() ? wholeNumber(text(a[0])).has_value() : !a[0].isDate(); }
Value isDate(Args a) { return a[0].isDate() || (a[0].isText() && parseDateText(text(a[0])).has_value()); }

Value intDivide(Args a) {
    const qint64 n = a[0].toInt(), by = a[1].toInt();
    if (by == -1) return whole(n < 0 ? size(n) : -n);  // the lowest number by -1 traps the machine
    return by == 0 ? Value() : whole(n / by);
}
Value modulo(Args a) {
    const qint64 by = a[1].toInt();
    return by == 0 ? Value() : whole(by == -1 ? 0 : a[0].toInt() % by);
}
Value power(Args a) {
    const double result = std::pow(a[0].toDouble(), a[1].toDouble());
    return std::isfinite(result) ? Value(result) : Value();
}
Value moneyProduct(Args a) {
    const auto product =
        static_cast<long double>(a[0].toMoney().tenThousandths) * a[1].toMoney().tenThousandths / 10000.0L;
    if (std::abs(product) > 9.2e18L) wrongArgument("*");
    return Money{static_cast<qint64>(std::nearbyint(product))};
}

using enum Function::Rule;
constexpr std::array kFunctions = {
    Function{u"sum", 1, 1, "?", Type::Null, Aggregate, nullptr},
    Function{u"count", 1, 1, "?", Type::Long, Aggregate, nullptr},
    Function{u"max", 1, 1, "?", Type::Null, Aggregate, nullptr},
    Function{u"min", 1, 1, "?", Type::Null, Aggregate, nullptr},
    Function{u"avg", 1, 1, "?", Type::Null, Aggregate, nullptr},
    Function{u"first", 1, 1, "?", Type::Null, Aggregate, nullptr},
    Function{u"last", 1, 1, "?", Type::Null, Aggregate, nullptr},
    Function{u"iif", 3, 3, "?", Type::Null, Special, nullptr},
    Function{u"nz", 1, 2, "?", Type::Null, Special, nullptr},
    Function{u"isnull", 1, 1, "?", Type::Bool, Special, nullptr},
    Function{u"datediff", 3, 3, "tdd", Type::Long, Fixed, dateDiff},
    Function{u"dateadd", 3, 3, "tid", Type::Date, Fixed, dateAdd},
    Function{u"datepart", 2, 2, "td", Type::Short, Fixed, datePart},
    Function{u"dateserial", 3, 3, "i", Type::Date, Fixed, dateSerial},
    Function{u"datevalue", 1, 1, "d", Type::Date, Fixed, [](Args a) { return Value(a[0].toDate()); }},
    Function{u"year", 1, 1, "d", Type::Short, Fixed, yearOf},
    Function{u"month", 1, 1, "d", Type::Short, Fixed, monthOf},
    Function{u"day", 1, 1, "d", Type::Short, Fixed, dayOf},
    Function{u"weekday", 1, 2, "di", Type::Short, Fixed, weekdayOf},
    Function{u"hour", 1, 1, "d", Type::Short, Fixed, hourOf},
    Function{u"minute", 1, 1, "d", Type::Short, Fixed, minuteOf},
    Function{u"second", 1, 1, "d", Type::Short, Fixed, secondOf},
    Function{u"len", 1, 1, "t", Type::Long, Fixed, len},
    Function{u"left", 2, 2, "ti", Type::Text, Fixed, left},
    Function{u"right", 2, 2, "ti", Type::Text, Fixed, right},
    Function{u"mid", 2, 3, "ti", Type::Text, Fixed, mid},
    Function{u"trim", 1, 1, "t", Type::Text, Fixed, trim},
    Function{u"ltrim", 1, 1, "t", Type::Text, Fixed, ltrim},
    Function{u"rtrim", 1, 1, "t", Type::Text, Fixed, rtrim},
    Function{u"ucase", 1, 1, "t", Type::Text, Fixed, ucase},
    Function{u"lcase", 1, 1, "t", Type::Text, Fixed, lcase},
    Function{u"val", 1, 1, "t", Type::Double, Fixed, val},
    Function{u"str", 1, 1, "?", Type::Text, Fixed, str},
    Function{u"cstr", 1, 1, "?", Type::Text, Fixed, to<Type::Text>},
    Function{u"clng", 1, 1, "?", Type::Long, Fixed, to<Type::Long>},
    Function{u"cint", 1, 1, "?", Type::Short, Fixed, to<Type::Short>},
    Function{u"cdbl", 1, 1, "?", Type::Double, Fixed, to<Type::Double>},
    Function{u"csng", 1, 1, "?", Type::Single, Fixed, to<Type::Single>},
    Function{u"ccur", 1, 1, "?", Type::Currency, Fixed, to<Type::Currency>},
    Function{u"cdate", 1, 1, "?", Type::Date, Fixed, to<Type::Date>},
    Function{u"cbool", 1, 1, "?", Type::Bool, Fixed, to<Type::Bool>},
    Function{u"int", 1, 1, "?", Type::Null, AsFirst, rounded<down>},
    Function{u"fix", 1, 1, "?", Type::Null, AsFirst, rounded<cut>},
    Function{u"abs", 1, 1, "?", Type::Null, AsFirst, absolute},
    Function{u"round", 1, 2, "?i", Type::Null, AsFirst, roundTo},
    Function{u"sgn", 1, 1, "n", Type::Short, Fixed, sgn},
    Function{u"sqr", 1, 1, "n", Type::Double, Fixed, squareRoot},
    Function{u"instr", 2, 3, "?t", Type::Long, Fixed, instr},
    Function{u"replace", 3, 3, "t", Type::Text, Fixed, replace},
    Function{u"format", 1, 2, "?t", Type::Text, Fixed, format},
    Function{u"chr", 1, 1, "i", Type::Text, Fixed, chr},
    Function{u"asc", 1, 1, "t", Type::Long, Fixed, asc},
    Function{u"space", 1, 1, "i", Type::Text, Fixed, space},
    Function{u"string", 2, 2, "it", Type::Text, Fixed, repeated},
    Function{u"isnumeric", 1, 1, "?", Type::Bool, Fixed, isNumeric},
    Function{u"isdate", 1, 1, "?", Type::Bool, Fixed, isDate},
    Function{u"intdivide_", 2, 2, "n", Type::Long, Fixed, intDivide},
    Function{u"modulo_", 2, 2, "n", Type::Long, Fixed, modulo},
    Function{u"power_", 2, 2, "n", Type::Double, Fixed, power},
    Function{u"moneyproduct_", 2, 2, "?", Type::Currency, Fixed, moneyProduct},
};

}  // namespace

const Function kIntDivide = *findFunction(u"intdivide_");
const Function kModulo = *findFunction(u"modulo_");
const Function kPower = *findFunction(u"power_");
const Function kMoneyProduct = *findFunction(u"moneyproduct_");

const Function* findFunction(QStringView name) {
    for (const Function& f : kFunctions)
        if (name.compare(QStringView(f.name), Qt::CaseInsensitive) == 0) return &f;
    return nullptr;
}

std::span<const Function> functions() { return kFunctions; }

char typeLetter(Type type) {
    switch (type) {
        case Type::Null:
            return '-';
        case Type::Bool:
            return 'b';
        case Type::Short:
            return 's';
        case Type::Long:
            return 'l';
        case Type::Single:
            return 'f';
        case Type::Double:
            return 'n';
        case Type::Currency:
            return 'c';
        case Type::Date:
            return 'd';
        case Type::Text:
            return 't';
    }
    return '-';
}

Type typeOfLetter(char letter) {
    for (const Type t :
         {Type::Bool, Type::Short, Type::Long, Type::Single, Type::Double, Type::Currency, Type::Date, Type::Text})
        if (typeLetter(t) == letter) return t;
    return Type::Null;
}

}  // namespace koben::sql
