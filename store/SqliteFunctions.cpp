#include "store/SqliteFunctions.h"

#include <array>

#include "store/Collation.h"
#include "store/CollationUtf8.h"
#include "store/Numbers.h"

namespace koben {
namespace {

constexpr int kMaxArguments = 8;

std::string_view view(sqlite3_value* value) {
    const char* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
    return {text, static_cast<size_t>(sqlite3_value_bytes(value))};
}

QString text(sqlite3_value* value) {
    const std::string_view utf8 = view(value);
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

bool anyNull(int count, sqlite3_value** values) {
    for (int i = 0; i < count; ++i)
        if (sqlite3_value_type(values[i]) == SQLITE_NULL) return true;
    return false;
}

SqliteFunctions& owner(sqlite3_context* context) { return *static_cast<SqliteFunctions*>(sqlite3_user_data(context)); }

/// The functions of the dialect: argument types as letters, then the arguments.
void dialectFunction(sqlite3_context* context, int count, sqlite3_value** values) {
    if (anyNull(count, values)) return;
    const auto& call = *static_cast<SqliteFunctions::Call*>(sqlite3_user_data(context));
    const char* letters = reinterpret_cast<const char*>(sqlite3_value_text(values[0]));
    std::array<Value, kMaxArguments> arguments;
    const auto n = static_cast<size_t>(count - 1);
    for (size_t i = 0; i < n; ++i) arguments[i] = argumentValue(values[i + 1], sql::typeOfLetter(letters[i]));
    call.owner->guard(context, [&] { resultValue(context, call.function->run(std::span(arguments.data(), n))); });
}

void like(sqlite3_context* context, int count, sqlite3_value** values) {
    if (anyNull(count, values)) return;
    auto* pattern = static_cast<QString*>(sqlite3_get_auxdata(context, 1));
    if (pattern == nullptr) {
        auto* fresh = new QString(text(values[1]));
        sqlite3_set_auxdata(context, 1, fresh, [](void* p) { delete static_cast<QString*>(p); });
        pattern = static_cast<QString*>(sqlite3_get_auxdata(context, 1));
        if (pattern == nullptr) return sqlite3_result_int(context, likeText(text(values[0]), text(values[1])) ? 1 : 0);
    }
    sqlite3_result_int(context, likeText(text(values[0]), *pattern) ? 1 : 0);
}

void key(sqlite3_context* context, int count, sqlite3_value** values) {
    if (anyNull(count, values)) return;
    const QByteArray bytes = sortKey(view(values[0]));
    sqlite3_result_blob(context, bytes.constData(), static_cast<int>(bytes.size()), SQLITE_TRANSIENT);
}

/// cast(from letter, to letter, value)
void cast(sqlite3_context* context, int count, sqlite3_value** values) {
    if (anyNull(count, values)) return;
    const Type from = sql::typeOfLetter(*view(values[0]).data());
    const Type to = sql::typeOfLetter(*view(values[1]).data());
    owner(context).guard(context, [&] { resultValue(context, convert(argumentValue(values[2], from), to)); });
}

/// assign(from letter, value, to letter, size, field name)
void assignment(sqlite3_context* context, int count, sqlite3_value** values) {
    if (anyNull(count, values)) return;
    const Type from = sql::typeOfLetter(*view(values[0]).data());
    const Type to = sql::typeOfLetter(*view(values[2]).data());
    const bool sureToFit = from == Type::Text && to == Type::Text && sqlite3_value_type(values[1]) == SQLITE_TEXT &&
                           sqlite3_value_bytes(values[1]) <= sqlite3_value_int(values[3]);
    if (sureToFit) return sqlite3_result_value(context, values[1]);
    owner(context).guard(context, [&] {
        resultValue(context, assign(argumentValue(values[1], from), to, sqlite3_value_int(values[3]), text(values[4])));
    });
}

void counter(sqlite3_context* context, int, sqlite3_value** values) {
    owner(context).guard(context, [&] {
        if (sqlite3_value_type(values[0]) != SQLITE_NULL && sqlite3_value_int64(values[0]) == 0)
            throw ConversionError{DatabaseError::Kind::Constraint, QStringLiteral("Ein Zählerfeld kann nicht 0 sein")};
        sqlite3_result_value(context, values[0]);
    });
}

void concat(sqlite3_context* context, int, sqlite3_value** values) {
    const bool first = sqlite3_value_type(values[0]) != SQLITE_NULL,
               second = sqlite3_value_type(values[1]) != SQLITE_NULL;
    if (!first && !second) return;
    std::string result(first ? view(values[0]) : std::string_view());
    if (second) result += view(values[1]);
    sqlite3_result_text(context, result.data(), static_cast<int>(result.size()), SQLITE_TRANSIENT);
}

/// moneyavg(sum, count)
void moneyAverage(sqlite3_context* context, int count, sqlite3_value** values) {
    if (anyNull(count, values) || sqlite3_value_int64(values[1]) == 0) return;
    sqlite3_result_int64(context, divideHalfEven(sqlite3_value_int64(values[0]), sqlite3_value_int64(values[1])));
}

struct Kept {
    sqlite3_value* value;
    bool any;
};

template <bool last>
void keepStep(sqlite3_context* context, int, sqlite3_value** values) {
    auto* kept = static_cast<Kept*>(sqlite3_aggregate_context(context, sizeof(Kept)));
    if (kept == nullptr || (kept->any && !last)) return;
    sqlite3_value_free(kept->value);
    kept->value = sqlite3_value_dup(values[0]);
    kept->any = true;
}

void keepFinal(sqlite3_context* context) {
    auto* kept = static_cast<Kept*>(sqlite3_aggregate_context(context, 0));
    if (kept == nullptr || kept->value == nullptr) return sqlite3_result_null(context);
    sqlite3_result_value(context, kept->value);
    sqlite3_value_free(kept->value);
    kept->value = nullptr;
}

int collate(void*, int lengthA, const void* a, int lengthB, const void* b) {
    return compareTexts(std::string_view(static_cast<const char*>(a), static_cast<size_t>(lengthA)),
                        std::string_view(static_cast<const char*>(b), static_cast<size_t>(lengthB)));
}

constexpr int kPure = SQLITE_UTF8 | SQLITE_DETERMINISTIC;

}  // namespace

SqliteFunctions::SqliteFunctions(sqlite3* file) {
    const auto scalar = [&](const char* name, int count, auto* function) {
        sqlite3_create_function_v2(file, name, count, kPure, this, function, nullptr, nullptr, nullptr);
    };
    sqlite3_create_collation_v2(file, "KOBEN", SQLITE_UTF8, nullptr, collate, nullptr);
    scalar("koben_like", 2, like);
    scalar("koben_key", 1, key);
    scalar("koben_cast", 3, cast);
    scalar("koben_assign", 5, assignment);
    scalar("koben_counter", 1, counter);
    scalar("koben_concat", 2, concat);
    scalar("koben_moneyavg", 2, moneyAverage);
    sqlite3_create_function_v2(file, "koben_first", 1, kPure, nullptr, nullptr, keepStep<false>, keepFinal, nullptr);
    sqlite3_create_function_v2(file, "koben_last", 1, kPure, nullptr, nullptr, keepStep<true>, keepFinal, nullptr);
    m_calls.reserve(sql::functions().size());
    for (const sql::Function& f : sql::functions()) {
        if (f.run == nullptr) continue;
        Call& call = m_calls.emplace_back(Call{this, &f});
        const std::string name = "koben_" + QStringView(f.name).toUtf8().toStdString();
        sqlite3_create_function_v2(file, name.c_str(), -1, kPure, &call, dialectFunction, nullptr, nullptr, nullptr);
    }
}

}  // namespace koben
