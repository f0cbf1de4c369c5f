// The order on paper: addresses, a table of positions that goes on over the sheets, sums, and room to sign.
#include "order/Bestellung.h"

namespace koben {

namespace {

const QString Face = QStringLiteral("Liberation Sans");
constexpr double Width = 183, Height = 265;  // millimetres within the margins, upright
constexpr double Row = 5;                    // from line to line
constexpr double Points = 10;

/// A column of the table: from its left end, and whether its texts stand at the right.
struct TableColumn {
    const char* title;
    double left, width;
    bool right;
};
const TableColumn Columns[] = {{"Pos.", 0, 10, true},    {"Nummer", 13, 27, false},   {"Artikel", 41, 68, false},
                               {"Menge", 109, 14, true}, {"Einheit", 125, 18, false}, {"Preis", 143, 18, true},
                               {"Betrag", 162, 20, true}};
constexpr int NameColumn = 2;
constexpr qsizetype NameLetters = 34, WideLetters = 90;  // that fit the column of names, and the whole width

/// Breaks between words, and where a word alone is too long within it.
QStringList broken(const QString& text, qsizetype most) {
    QStringList lines;
    for (const QString& paragraph : text.split(u'\n')) {
        QString line;
        for (QString word : paragraph.split(u' ', Qt::SkipEmptyParts)) {
            if (!line.isEmpty() && line.size() + 1 + word.size() > most) lines.append(std::exchange(line, {}));
            for (; word.size() > most; word = word.mid(most)) lines.append(word.left(most));
            line += (line.isEmpty() ? QString() : QStringLiteral(" ")) + word;
        }
        lines.append(line);
    }
    return lines;
}

class Writer {
public:
    explicit Writer(PrintJob& job) : m_job(job) {}

    void write(const Bestellung& order) {
        addresses(order);
        positions(order);
        sums(order);
        remark(order.bemerkung);
        signature();
    }

private:
    void text(double left, double width, const QString& words, bool right = false, bool bold = false,
              double points = Points) {
        m_job.place(PlacedText{{left, m_y, width, Row}, right ? 1.0 : 0.0, {words, {Face, points, bold}}});
    }
    void line(double from = 0, double to = Width) { m_job.place(StraightLine{{from, m_y}, {to, m_y}}); }

    /// Room for so much on the sheet, or the next one, where the table's head stands again.
    bool turn(double needed) {
        if (m_y + needed <= Height) return false;
        m_job.newPage();
        m_y = 0;
        return true;
    }

    void addresses(const Bestellung& order) {
        QStringList sender = order.kunde.anschrift();
        const std::pair<const char*, Kunde::Angabe> more[] = {
            {"Telefon: ", Kunde::Telefon}, {"E-Mail: ", Kunde::Email}, {"Kundennummer: ", Kunde::Nummer}};
        for (const auto& [caption, angabe] : more)
            if (!order.kunde[angabe].isEmpty()) sender.append(QString::fromUtf8(caption) + order.kunde[angabe]);
        for (const QString& words : sender) text(100, Width - 100, words), m_y += Row;
        m_y = 33;  // where a window of an envelope shows it
        for (const QString& words : order.empfaenger) text(5, 80, words), m_y += Row;
        m_y = 68;
        text(100, Width - 100, order.datum, true);
        m_y = 76;
        text(0, Width, QStringLiteral("Bestellung"), false, true, 16);
        m_y += 12;
    }

    void head() {
        m_job.place(Rectangle{{0, m_y, Width, Row + 2}, 0, 230});
        m_y += 1;
        for (const TableColumn& column : Columns)
            text(column.left, column.width, QString::fromUtf8(column.title), column.right, true);
        m_y += Row + 2;
    }

    void positions(const Bestellung& order) {
        head();
        int number = 0;
        for (const Position& position : order.positionen) {
            const QStringList name = broken(position.artikel.name, NameLetters);
            const double height = Row * static_cast<double>(name.size()) + 1;
            if (turn(height)) head();
            const QString cells[] = {
                QString::number(++number),       position.artikel.nummer,  name.first(),
                QString::number(position.menge), position.artikel.einheit, Betragstext(position.artikel.preis),
                Betragstext(position.summe())};
            for (size_t i = 0; i < std::size(Columns); ++i)
                text(Columns[i].left, Columns[i].width, cells[i], Columns[i].right);
            for (qsizetype i = 1; i < name.size(); ++i) {
                m_y += Row;
                text(Columns[NameColumn].left, Columns[NameColumn].width, name[i]);
            }
            m_y += Row + 1;
        }
        line();
        m_y += 2;
    }

    void sums(const Bestellung& order) {
        const auto lines = order.summen();
        turn(Row * static_cast<double>(lines.size()) + 4);
        for (const auto& [caption, amount] : lines) {
            const bool last = &amount == &lines.back().second;
            text(80, 80, caption, true, last);
            text(Columns[6].left, Columns[6].width, Betragstext(amount), true, last);
            m_y += Row + 1;
        }
        line(80);
        m_y += 8;
    }

    void remark(const QString& words) {
        if (words.trimmed().isEmpty()) return;
        for (const QString& each : broken(words, WideLetters)) {
            turn(Row);
            text(0, Width, each);
            m_y += Row;
        }
        m_y += 4;
    }

    void signature() {
        turn(30);
        m_y += 22;
        line(0, 80);
        line(100, Width);
        m_y += 1;
        text(0, 80, QStringLiteral("Ort, Datum"), false, false, 8);
        text(100, Width - 100, QStringLiteral("Unterschrift"), false, false, 8);
    }

    PrintJob& m_job;
    double m_y = 0;
};

}  // namespace

void Bestellung_drucken(const Bestellung& order, PrintJob& job) {
    job.setSheet({.title = QStringLiteral("Bestellung"), .date = order.datum});
    Writer(job).write(order);
}

}  // namespace koben
