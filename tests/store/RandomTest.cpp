#include <QDateTime>
#include <algorithm>
#include <optional>
#include <random>

#include "store/Collation.h"
#include "tests/store/StoreTest.h"

// Random statements, run by the engine and by a naive evaluator over the same rows.
namespace koben {
namespace {

using Truth = std::optional<bool>;

struct Row {
    Value number, money, text, date;
};

class RandomTest : public StoreTest {
protected:
    int pick(int n) { return static_cast<int>(m_random() % static_cast<unsigned>(n)); }

    Value anyOf(int column) {
        static const char* const kTexts[] = {"", "a", "A ", "ä", "Ä", "ab", "ß", "ss", "S", "b-", "10", "9"};
        if (column == 0) return pick(9) - 4;
        if (column == 1) return Money{(pick(9) - 4) * 2500};
        if (column == 2) return QString::fromUtf8(kTexts[pick(12)]);
        return QDate(2024, 1 + pick(3), 1 + pick(2));
    }
    static QString sqlOf(const Value& v) {
        if (v.isText()) return u'\'' + v.toText() + u'\'';
        if (v.isDate()) return v.toDate().toString(QStringLiteral("'#'M/d/yyyy'#'"));
        return v.toText().replace(u',', u'.');
    }
    static const Value& cell(const Row& row, int column) {
        const Value* const cells[] = {&row.number, &row.money, &row.text, &row.date};
        return *cells[column];
    }
    static int order(const Value& a, const Value& b) {
        if (a.isText()) return compareTexts(a.toText(), b.toText());
        return a.toDouble() < b.toDouble() ? -1 : a.toDouble() > b.toDouble() ? 1 : 0;
    }

    using Test = std::function<Truth(const Row&)>;

    std::pair<QString, Test> comparison() {
        static const char* const kNames[] = {"Zahl", "Betrag", "Wort", "Tag"};
        static const char* const kSigns[] = {"=", "<>", "<", "<=", ">", ">="};
        const int column = pick(4);
        const QString name = QString::fromLatin1(kNames[column]);
        if (pick(6) == 0) {
            const bool negated = pick(2) == 0;
            return {name + (negated ? " is not null" : " is null"),
                    [=](const Row& r) { return Truth(cell(r, column).isNull() != negated); }};
        }
        const Value value = anyOf(column);
        const int sign = pick(6);
        return {name + ' ' + kSigns[sign] + ' ' + sqlOf(value), [=](const Row& r) -> Truth {
                    if (cell(r, column).isNull()) return {};
                    const int c = order(cell(r, column), value);
                    return sign == 0   ? c == 0
                           : sign == 1 ? c != 0
                           : sign == 2 ? c < 0
                           : sign == 3 ? c <= 0
                           : sign == 4 ? c > 0
                                       : c >= 0;
                }};
    }

    std::pair<QString, Test> condition(int depth) {
        const int kind = depth == 0 ? 3 : pick(4);
        if (kind == 3) return comparison();
        const auto [textA, a] = condition(depth - 1);
        if (kind == 2) {
            return {"not (" + textA + ")", [a = a](const Row& r) {
                        const Truth t = a(r);
                        return t ? Truth(!*t) : t;
                    }};
        }
        const auto [textB, b] = condition(depth - 1);
        const bool all = kind == 0;
        return {"(" + textA + (all ? " and " : " or ") + textB + ")", [a = a, b = b, all](const Row& r) -> Truth {
                    const Truth x = a(r), y = b(r);
                    if ((x && *x != all) || (y && *y != all)) return !all;
                    return x && y ? Truth(all) : Truth();
                }};
    }

    std::mt19937 m_random{20260715};
};

TEST_F(RandomTest, ConditionsAndOrder) {
    run({"create table T(Zahl LONG, Betrag CURRENCY, Wort TEXT (5), Tag DATETIME, ID COUNTER)",
         "create index wort on T(Wort)", "create index zahl on T(Zahl)"});
    std::vector<Row> rows;
    Statement add = db.prepare("insert into T (Zahl, Betrag, Wort, Tag) values (?, ?, ?, ?)");
    {
        Transaction t(db);
        for (int i = 0; i < 60; ++i) {
            Row row{anyOf(0), anyOf(1), anyOf(2), anyOf(3)};
            for (Value* v : {&row.number, &row.money, &row.text, &row.date})
                if (pick(5) == 0) *v = Value();
            rows.push_back(row);
            add.run({row.number, row.money, row.text, row.date});
        }
        t.commit();
    }
    for (int i = 0; i < 400; ++i) {
        const auto [text, test] = condition(3);
        std::vector<int> expected;
        for (size_t r = 0; r < rows.size(); ++r)
            if (test(rows[r]).value_or(false)) expected.push_back(static_cast<int>(r));
        std::stable_sort(expected.begin(), expected.end(), [&rows](int a, int b) {
            const Value &x = rows[static_cast<size_t>(a)].text, &y = rows[static_cast<size_t>(b)].text;
            return x.isNull() || y.isNull() ? x.isNull() && !y.isNull() : order(x, y) < 0;
        });
        QStringList ids;
        for (const int r : expected) ids << QString::number(r + 1);
        ASSERT_EQ(rendered(db.table("select ID from T where " + text + " order by Wort")),
                  ids.join(QStringLiteral("; ")))
            << text.toStdString();
    }
}

}  // namespace
}  // namespace koben
