#include "store/Value.h"

#include <cmath>

#include "store/IsoDate.h"
#include "store/Numbers.h"

namespace koben {
namespace {

template <typename... Fs>
struct Overloaded : Fs... {
    using Fs::operator()...;
};
template <typename... Fs>
Overloaded(Fs...) -> Overloaded<Fs...>;

double leadingNumber(const QString& text) {
    QByteArray ascii;
    return scanNumber(text, ascii) > 0 ? ascii.toDouble() : 0.0;
}

qint64 wholeOf(double value) {
    const double whole = roundHalfEven(value);
    if (whole >= 9.2e18) return std::numeric_limits<qint64>::max();
    if (whole <= -9.2e18) return std::numeric_limits<qint64>::min();
    return std::isnan(whole) ? 0 : static_cast<qint64>(whole);
}

}  // namespace

QString Value::toText() const {
    return std::visit(Overloaded{[](std::monostate) { return QString(); },
                                 [](bool v) { return v ? QStringLiteral("-1") : QStringLiteral("0"); },
                                 [](const QString& v) { return v; }, [](qint32 v) { return QString::number(v); },
                                 [](qint64 v) { return QString::number(v); }, [](auto v) { return textOf(v); }},
                      m_value);
}

double Value::toDouble() const {
    return std::visit(Overloaded{[](std::monostate) { return 0.0; }, [](bool v) { return v ? -1.0 : 0.0; },
                                 [](const QString& v) { return leadingNumber(v); },
                                 [](Money v) { return static_cast<double>(v.tenThousandths) / 10000.0; },
                                 [](DateTime v) { return serialOf(v); }, [](auto v) { return static_cast<double>(v); }},
                      m_value);
}

qint64 Value::toInt() const {
    if (const auto* v = std::get_if<qint64>(&m_value)) return *v;
    if (const auto* v = std::get_if<Money>(&m_value)) return divideHalfEven(v->tenThousandths, 10000);
    return wholeOf(toDouble());
}

Money Value::toMoney() const {
    if (const auto* v = std::get_if<Money>(&m_value)) return *v;
    if (const auto* v = std::get_if<QString>(&m_value)) {
        QByteArray ascii;
        return scanNumber(*v, ascii) > 0 ? moneyOfDigits(ascii).value_or(Money{}) : Money{};
    }
    if (const auto* v = std::get_if<float>(&m_value))
        return moneyOfDigits(QByteArray::number(*v, 'g', 7)).value_or(Money{});
    return moneyOf(toDouble()).value_or(Money{});
}

QDate Value::toDate() const {
    const auto* v = std::get_if<DateTime>(&m_value);
    return v != nullptr ? v->date() : QDate();
}

}  // namespace koben
