#pragma once
// Few different texts among many rows, each known by a number.
#include <QHash>
#include <QStringList>
#include <functional>

namespace koben {

class Interned {
public:
    /// `tidy` is what a text means, asked once for each different one; texts that mean the same have one number.
    explicit Interned(std::function<QString(const QString&)> tidy) : m_tidy(std::move(tidy)) {}
    int of(const QString& text) {
        const auto known = m_numbers.constFind(text);
        if (known != m_numbers.constEnd()) return *known;
        const QString name = m_tidy(text);
        qsizetype number = m_names.indexOf(name);
        if (number < 0) number = m_names.size(), m_names.append(name);
        return *m_numbers.insert(text, static_cast<int>(number));
    }
    const QStringList& names() const { return m_names; }

private:
    std::function<QString(const QString&)> m_tidy;
    QHash<QString, int> m_numbers;
    QStringList m_names;
};

}  // namespace koben
