#pragma once
// The animals that the beginning of a line names: "123", "40-43,45", "40 bis 43", "Sau 12 und 13", "markierte".
#include <QStringList>
#include <functional>

#include "core/Schnelltier.h"
#include "core/Schnellworte.h"

namespace koben {

class Schnelltierwahl {
public:
    explicit Schnelltierwahl(const std::vector<Schnelltier>& herd) : m_herd(herd) {}

    bool isNumber(const QString& word) const;
    /// "Sau", "und": words between numbers.
    static bool saysNothing(const QString& word);
    /// Whether the word can only stand for animals: a number of the herd, a range, a list of them, the marked ones.
    bool names(const QString& word) const;
    /// `sowsOnly`: of sows where there are any, because a range may have boars between.
    void take(const std::vector<Schnellwort>& words, bool sowsOnly);

    const std::vector<Schnelltier>& animals() const { return m_animals; }
    const QStringList& problems() const { return m_problems; }

private:
    using Wanted = std::function<bool(const Schnelltier&)>;
    QStringList joined(const std::vector<Schnellwort>& words) const;
    std::vector<Schnelltier> select(const Wanted& wanted) const;
    void add(const std::vector<Schnelltier>& animals);
    void takeWord(const QString& word);
    void takeRange(const QString& part);
    void takeNumber(const QString& number);
    QString unknown(const QString& number) const;

    const std::vector<Schnelltier>& m_herd;
    bool m_sowsOnly = false;
    std::vector<Schnelltier> m_animals;
    QStringList m_problems;
};

}  // namespace koben
