#pragma once
// The file that comes back from the barn device, read whole and checked before anything is done with it: bookings with
// typed values and their lines. Knows no database.
#include <QByteArray>

#include "exchange/Geraeteabschnitte.h"

namespace koben {

/// A booking that was made on the device.
struct Geraetebuchung {
    const Geraeteabschnitt* section;
    int line;            ///< in the file, from 1
    QStringList fields;  ///< before the mark, as the import's list shows them: number without blanks, dd.mm.yyyy
    QDate day;           ///< invalid where the line has none
    FieldValues values;  ///< of a complete one: what its table holds, without the animal
    int piglets = 0;     ///< so many go into the pen

    const QString& number() const { return fields.front(); }
    QString pen() const { return section->pen ? fields[section->penAt()] : QString(); }
    /// Lines without a day, or without the animal that their kind needs, are nobody's booking.
    bool complete() const { return day.isValid() && (section->mother || !number().isEmpty()); }
};

class Geraetedatei {
public:
    /// Reads the bytes of a file. One that is damaged gives no bookings: problem() says where and why.
    static Geraetedatei read(const QByteArray& bytes);

    /// "" or the reason to refuse it, with the line (German, for the user).
    const QString& problem() const { return m_problem; }
    /// In the order of the file.
    const std::vector<Geraetebuchung>& bookings() const { return m_bookings; }
    /// Lines that had come from the program and go back as they are.
    qint64 returned() const { return m_returned; }
    /// All bookings that name one animal name another from now on.
    void renumber(const QString& from, const QString& to);

private:
    std::vector<Geraetebuchung> m_bookings;
    qint64 m_returned = 0;
    QString m_problem;
};

}  // namespace koben
