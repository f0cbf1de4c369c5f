#pragma once
// A text file with separated columns from a spreadsheet or another database, read whole and checked before anything
// else is done with it.
#include <QString>
#include <QStringList>

namespace koben {

/// Lines and fields of a CSV file. The code page (UTF-8 with or without mark, else Windows-1252) and the line ends
/// (CR LF, LF, CR) are recognised. A text in quotation marks may hold semicolons; doubled marks stand for one.
class Importdatei {
public:
    static constexpr int spalten = 13;  ///< columns that are taken

    /// Reads the file, whose columns are separated by `trenner`. Where it cannot be taken for a CSV file, fehler() says
    /// why and there are no lines.
    static Importdatei lesen(const QString& path, QChar trenner = u';');
    /// The separators that its first line may be meant to have, the likeliest first; empty where it has none.
    static QString Trennzeichen(const QString& path);

    /// "" or the reason (German, for the user): problem, cause, remedy.
    const QString& fehler() const { return m_fehler; }
    /// The first lines as they stand, until `limit` characters are reached.
    QString vorschau(int limit) const;
    /// The heads: exactly `spalten` fields, "" where the file has fewer.
    QStringList kopf() const;

    /// Goes back before the first line of data.
    void zurueck();
    /// Next line of data as at least `spalten` fields; false behind the last. Lines without any content are passed
    /// over. Control characters in a field have become blanks.
    bool naechste(QStringList& felder);
    /// Where the line that naechste() gave stands in the file, counted from 1 with the heads.
    int line() const { return m_line; }
    /// Whether the lines given so far had control characters.
    bool controlsReplaced() const { return m_controls; }

private:
    QStringView zeile(qsizetype& at) const;
    QString pruefen() const;

    QString m_text;
    QChar m_trenner = u';';
    qsizetype m_at = 0;
    int m_line = 0;
    bool m_controls = false;
    QString m_fehler;
};

/// Splits a line at its separators, with `Importdatei::spalten` - 1 empty fields behind.
QStringList CSV_trennen(QStringView zeile, QChar trenner = u';');

}  // namespace koben
