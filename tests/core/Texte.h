#pragma once
// Readable texts in failing tests.
#include <QDate>
#include <QString>
#include <QStringList>
#include <ostream>

#include "core/Variablen.h"

inline void PrintTo(const QString& text, std::ostream* out) { *out << '"' << text.toStdString() << '"'; }
inline void PrintTo(const QDate& date, std::ostream* out) { *out << date.toString(Qt::ISODate).toStdString(); }

namespace koben {

/// The cells of a row "TEXT|EXPECTED|..." of a table of cases; "" for those that are left out.
struct Row {
    Row(const char* row) : cells(QString::fromUtf8(row).split(u'|')) {}  // NOLINT: written as a text
    QString operator[](qsizetype i) const { return cells.value(i, ""); }
    QStringList cells;
};

/// An amount from ten-thousandths.
inline Money amount(qint64 tenThousandths) { return Money{tenThousandths}; }

}  // namespace koben
