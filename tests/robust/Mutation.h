#pragma once
// Damage to files: seeded, so that a variant can be played again by its number.
#include <QByteArrayList>
#include <cctype>
#include <random>

namespace koben::robust {

/// Flips bits, overwrites, cuts out, doubles and truncates pieces; puts in words and pieces of other files, also in the
/// place of a word that stands there.
class Mutation {
public:
    explicit Mutation(unsigned number) : m_random(number * 2654435761U + 1) {}

    qsizetype below(qsizetype limit) {
        return limit < 1 ? 0 : static_cast<qsizetype>(m_random() % static_cast<unsigned>(limit));
    }

    QByteArray of(QByteArray bytes, const QByteArrayList& words = {}, const QByteArray& other = {}) {
        for (qsizetype hits = 1 + below(4); hits > 0; --hits) hit(bytes, words, other);
        return bytes;
    }

private:
    void hit(QByteArray& bytes, const QByteArrayList& words, const QByteArray& other) {
        const qsizetype at = below(bytes.size()), length = 1 + below(std::min<qsizetype>(bytes.size() - at, 64));
        switch (below(words.isEmpty() ? 6 : 12)) {
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
            case 6:
                bytes.replace(at, length, other.mid(below(other.size()), 1 + below(64)));
                return;
            case 7:
            case 8:
                bytes.insert(at, words[below(words.size())]);
                return;
            default:
                replaceWord(bytes, at, words[below(words.size())]);
        }
    }

    static bool inWord(char c) { return std::isalnum(static_cast<unsigned char>(c)) || c < 0 || c == '_'; }

    static void replaceWord(QByteArray& bytes, qsizetype at, const QByteArray& word) {
        qsizetype from = at, to = at;
        while (from > 0 && inWord(bytes[from - 1])) --from;
        while (to < bytes.size() && inWord(bytes[to])) ++to;
        bytes.replace(from, to - from, word);
    }

    std::mt19937 m_random;
};

}  // namespace koben::robust
