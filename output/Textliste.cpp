#include "output/Textliste.h"

#include <algorithm>
#include <numeric>

#include "core/Variablen.h"

namespace koben {
namespace {

/// Lays texts out in columns of fixed width.
class Spaltensatz {
public:
    Spaltensatz(const Grid& grid, const QString& separator, Progress* progress)
        : m_grid(grid),
          m_separator(separator),
          m_count(std::min(grid.columnCount(), hoechsteSpalte)),
          m_widths(Spaltenbreiten(grid, m_count, progress)) {}
    /// Otherwise the user cancelled while the columns were measured.
    bool measured() const { return static_cast<int>(m_widths.size()) == m_count; }

    QString titles() const {
        return line([this](int c) { return m_grid.column(c).title; });
    }
    QString row(int row) const {
        return line([this, row](int c) { return m_grid.cell(row, c); });
    }
    QString dashes() const {
        const qsizetype texts = std::accumulate(m_widths.begin(), m_widths.end(), qsizetype{0});
        return QString(std::max<qsizetype>(texts + (m_count - 1) * m_separator.size(), 0), u'-');
    }

private:
    template <class TextOf>
    QString line(TextOf textOf) const {
        QString out;
        for (int c = 1; c <= m_count; ++c) {
            const QString text = einzeilig(textOf(c));
            const qsizetype width = m_widths[static_cast<size_t>(c - 1)];
            out += m_grid.column(c).align == Align::Left ? text.leftJustified(width) : text.rightJustified(width);
            if (c < m_count) out += m_separator;
        }
        return out;
    }

    const Grid& m_grid;
    const QString m_separator;
    const int m_count;
    std::vector<qsizetype> m_widths;
};

}  // namespace

QString Textliste(const Grid& grid, const Textlistenform& form) {
    QString out;
    if (!form.datum.isEmpty()) out += QStringLiteral("Datum: ") + form.datum + Crlf;
    if (!form.kopf.isEmpty()) out += form.kopf + Crlf;
    if (!out.isEmpty()) out += Crlf;

    const Spaltensatz columns(grid, form.trenner, form.progress);
    if (!columns.measured()) return {};
    const QString dashes = columns.dashes() + Crlf;
    out += columns.titles() + Crlf + dashes;
    for (const auto& [kind, row] : Listenzeilen(grid)) {
        if (!advance(form.progress)) return {};
        switch (kind) {
            case Zeilenart::Daten:
                out += columns.row(row) + Crlf;
                break;
            case Zeilenart::Strich:
                out += dashes;
                break;
            case Zeilenart::Block:
                out += Crlf + Crlf;
                break;
        }
    }
    return out;
}

}  // namespace koben
