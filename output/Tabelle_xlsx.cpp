#include "output/Tabelle_xlsx.h"

#include <xlsxwriter.h>

#include <QDir>
#include <QFile>
#include <algorithm>
#include <charconv>
#include <vector>

#include "output/Textliste.h"
#include "store/Files.h"

namespace koben {
namespace {

constexpr qsizetype longestCell = 32767;  // characters that a cell of the format holds
constexpr int zahlenformat = 4;           // the format's own number for "#,##0.00"
constexpr qsizetype longestColumn = 100;  // characters; wider ones are cut on the screen, not in the file

/// An optional sign, digits with at most one point among or around them.
bool isNumeric(QStringView text) {
    if (text.startsWith(u'-') || text.startsWith(u'+')) text = text.mid(1);
    const auto digits = std::count_if(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
    return digits > 0 && digits + text.count(u'.') == text.size() && text.count(u'.') <= 1;
}

/// A workbook on its way to the disk; without finish() nothing is left of it.
class Workbook {
public:
    explicit Workbook(const QString& path) : m_file(path.toUtf8()), m_temporary(QDir::tempPath().toUtf8()) {
        lxw_workbook_options options = {};
        options.tmpdir = m_temporary.data();
        options.constant_memory = LXW_TRUE;  // rows go to the disk one by one, in order
        m_book = workbook_new_opt(m_file.constData(), &options);
        m_sheet = m_book ? workbook_add_worksheet(m_book, "Liste") : nullptr;
    }
    ~Workbook() {
        if (m_book) workbook_close(m_book), QFile::remove(QString::fromUtf8(m_file));
    }
    Workbook(const Workbook&) = delete;
    Workbook& operator=(const Workbook&) = delete;

    bool isOpen() const { return m_sheet != nullptr; }
    lxw_worksheet* sheet() const { return m_sheet; }
    lxw_format* format(bool bold, bool number) {
        lxw_format* format = workbook_add_format(m_book);
        if (bold) format_set_bold(format);
        if (number) format_set_align(format, LXW_ALIGN_RIGHT), format_set_num_format_index(format, zahlenformat);
        return format;
    }
    void text(lxw_row_t row, int column, const QString& text, lxw_format* format = nullptr) {
        if (text.isEmpty()) return;
        check(worksheet_write_string(m_sheet, row, static_cast<lxw_col_t>(column), text.left(longestCell).toUtf8(),
                                     format));
    }
    void number(lxw_row_t row, int column, double number, lxw_format* format) {
        check(worksheet_write_number(m_sheet, row, static_cast<lxw_col_t>(column), number, format));
    }
    void check(lxw_error error) { m_failed = m_failed || error != LXW_NO_ERROR; }
    /// Closes the file and gives it its name; false where anything went wrong, and then the old file stands.
    bool finish(const QString& path) {
        check(workbook_close(std::exchange(m_book, nullptr)));
        const QString draft = QString::fromUtf8(m_file);
        if (!m_failed && replaceFile(draft, path, false).isEmpty()) return true;
        QFile::remove(draft);
        return false;
    }

private:
    QByteArray m_file, m_temporary;  // the library wants names in UTF-8 on every system
    lxw_workbook* m_book = nullptr;
    lxw_worksheet* m_sheet = nullptr;
    bool m_failed = false;
};

/// One column: its formats, and the width that its content asks for.
struct Spalte {
    lxw_format* titel;
    lxw_format* zelle;
    qsizetype breite;
};

std::vector<Spalte> spalten(Workbook& book, const Grid& grid, Progress* progress) {
    lxw_format* bold = book.format(true, false);
    lxw_format* boldNumber = book.format(true, true);
    lxw_format* number = book.format(false, true);
    std::vector<Spalte> columns;
    for (qsizetype width : Spaltenbreiten(grid, grid.columnCount(), progress)) {
        const int c = static_cast<int>(columns.size()) + 1;
        const bool right = grid.column(c).align == Align::Right && c <= hoechsteSpalte;
        if (right) width += 3;  // the format may add decimals
        columns.push_back({right ? boldNumber : bold, right ? number : nullptr, std::min(width, longestColumn)});
    }
    return columns;
}

/// The lines above the table; the number of rows that they take.
lxw_row_t schreibeKopf(Workbook& book, const Tabellenform& form) {
    lxw_row_t row = 0;
    if (!form.datum.isEmpty()) book.text(row++, 0, form.datum);
    if (!form.kopf.isEmpty()) book.text(row++, 0, form.kopf);
    return row == 0 ? 0 : row + 1;
}

}  // namespace

std::optional<double> Tabellenzahl(const QString& cell) {
    if (cell.contains(u'.')) return {};
    QString text = cell.trimmed();
    const auto comma = text.indexOf(u',');
    if (comma >= 0) text[comma] = u'.';
    if (!isNumeric(text)) return {};
    // Rounded to single precision, then written as the shortest decimal of it: 1,1 is 1.1 and not 1.10000002384.
    const float value = static_cast<float>(text.toDouble());
    char shortest[64];
    const auto end = std::to_chars(std::begin(shortest), std::end(shortest), value).ptr;
    return QByteArray(shortest, end - shortest).toDouble();
}

bool Tabelle_schreiben(const Grid& grid, const QString& path, const Tabellenform& form) {
    Workbook book(path + QStringLiteral(".neu"));
    if (!book.isOpen()) return false;
    const auto columns = spalten(book, grid, form.progress);
    if (static_cast<int>(columns.size()) < grid.columnCount()) return false;
    for (size_t c = 0; c < columns.size(); ++c) {
        const auto column = static_cast<lxw_col_t>(c);
        const double width = static_cast<double>(columns[c].breite) + 1.5;
        book.check(worksheet_set_column(book.sheet(), column, column, width, columns[c].zelle));
    }
    lxw_row_t line = schreibeKopf(book, form);
    for (int c = 1; c <= grid.columnCount(); ++c)
        book.text(line, c - 1, grid.column(c).title, columns[static_cast<size_t>(c - 1)].titel);
    for (int row = 1; row <= grid.rowCount(); ++row) {
        ++line;
        if (!advance(form.progress)) return false;
        for (int c = 1; c <= grid.columnCount(); ++c) {
            const QString cell = grid.cell(row, c);
            lxw_format* format = columns[static_cast<size_t>(c - 1)].zelle;
            const bool date = grid.value(row, c).isDate();
            if (const auto number = date ? std::nullopt : Tabellenzahl(cell))
                book.number(line, c - 1, *number, format);
            else
                book.text(line, c - 1, cell, format);
        }
    }
    return book.finish(path);
}

QString Tabellendatei(const QString& folder) {
    QString name;
    for (int number = 1; number < 100; ++number) {
        name = number == 1 ? QStringLiteral("liste.xlsx") : QStringLiteral("liste-%1.xlsx").arg(number);
        const bool held = QFile::exists(folder + QStringLiteral(".~lock.%1#").arg(name)) ||
                          QFile::exists(folder + QStringLiteral("~$") + name);
        if (!held) break;
    }
    return folder + name;
}

}  // namespace koben
