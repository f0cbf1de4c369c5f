#pragma once
// Readable texts in failing tests.
#include <QDate>
#include <QString>
#include <ostream>

#include "core/Variablen.h"

inline void PrintTo(const QString& text, std::ostream* out) { *out << '"' << text.toStdString() << '"'; }
inline void PrintTo(const QDate& date, std::ostream* out) { *out << date.toString(Qt::ISODate).toStdString(); }

namespace koben {

/// An amount from ten-thousandths.
inline Money betrag(qint64 tenThousandths) { return Money{tenThousandths}; }

}  // namespace koben
