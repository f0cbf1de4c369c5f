#pragma once
#include <QString>

namespace koben {

/// An animal that a line of the quick entry can name, as the herd list has it.
struct Schnelltier {
    qint64 id = 0;
    QString number, art;
    bool gone = false, marked = false;
};

}  // namespace koben
