#pragma once
// Damage to files: seeded, so that a variant can be played again by its number.
#include <QByteArray>
#include <random>

namespace koben::robust {

/// Flips bits, overwrites, cuts out, doubles and truncates pieces; now and then puts in one of the `words`.
class Mutation {
public:
    explicit Mutation(unsigned number) : m_random(number * 2654435761U + 1) {}

    qsizetype below(qsizetype limit) {
        return limit < 1 ? 0 : static_cast<qsizetype>(m_random() % static_cast<unsigned>(limit));
    }

    QByteArray of(QByteArray bytes, std::initializer_list<const char*> words = {}) {
        for (qsizetype hits = 1 + below(4); hits > 0; --hits) hit(bytes, words);
        return bytes;
    }

private:
    void hit(QByteArray& bytes, std::initializer_list<const char*> words) {
        const qsizetype at = below(bytes.size()), length = 1 + below(std::min<qsizetype>(bytes.size() - at, 64));
        switch (below(words.size() == 0 ? 6 : 8)) {
            case 0:
                return bytes.truncate(at);
            case 1:
                bytes.remove(at, length);
                return;
            case 2:
                bytes.insert(at, bytes.mid(at, length));
                return;
            case 3:
                for (qsizetype i = at; i < std::min(at + length, bytes.size()); ++i) bytes[i] = char(below(256));
                return;
            case 4:
            case 5:
                if (at < bytes.size()) bytes[at] = char(bytes[at] ^ (1 << below(8)));
                return;
            default:
                bytes.insert(at, *(words.begin() + below(static_cast<qsizetype>(words.size()))));
        }
    }

    std::mt19937 m_random;
};

}  // namespace koben::robust
