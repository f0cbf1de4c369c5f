#include "bookings/Ferkelbestand.h"

#include <algorithm>
#include <numeric>

#include "core/PZ_Koben_Subs.h"
#include "core/Umfang.h"

namespace koben {

/// Keeps the line beside the list in step with its marks, whoever sets them.
class Ferkelbestand::Summe : public Control::View {
public:
    Summe(Grid& grid, Label& label) : View(grid), m_grid(grid), m_label(label) { changed(Aspect::Marks); }
    void changed(Aspect aspect) override {
        if (aspect != Aspect::Marks && aspect != Aspect::Rows) return;
        m_label.setText(QStringLiteral("%1 von %2 Ferkeln markiert").arg(m_grid.markedCount()).arg(m_grid.rowCount()));
    }

private:
    Grid& m_grid;
    Label& m_label;
};

Ferkelbestand::Ferkelbestand(Grid& gridli, OptionGroup& optiverkauf, Label& summe, TextBox& count, const char* heading)
    : m_gridli(gridli), m_verbleib(optiverkauf), m_anzahl(count), m_summe(std::make_unique<Summe>(gridli, summe)) {
    m_verbleib.frame = QString::fromUtf8(heading);
    m_verbleib.select(static_cast<int>(Verbleib::Unveraendert));
    m_gridli.setHint(QStringLiteral("Ferkel im Bestand"));
    m_gridli.onClick = [this] { gridli_Click(); };
}

Ferkelbestand::~Ferkelbestand() = default;

void Ferkelbestand::laden(const Database& db, const char* order) {
    m_order = QString::fromUtf8(order);
    m_veraltet = true;
    auffrischen(db);
}

void Ferkelbestand::auffrischen(const Database& db) {
    if (!m_veraltet) {
        if (markiert()) m_gridli.clearMarks();
        return;
    }
    m_veraltet = false;
    const Table piglets = db.table(QStringLiteral("select Nummer, Stallnr, Tätowierung, Geburtsdatum, ID from Sauen "
                                                  "where Art = 'Ferkel' and Abgangsdatum IS NULL order by ") +
                                   m_order);
    m_gridli.clear();
    m_gridli.bind(piglets);
    m_gridli.column(m_gridli.columnOf(u"Stallnr")).caption = QStringLiteral("Stall");
    m_gridli.column(m_gridli.columnOf(u"Geburtsdatum")).caption = QStringLiteral("Geboren");
    m_gridli.column(m_gridli.columnOf(u"ID")).technical = true;
    m_gridli.columnsChanged();
}

void Ferkelbestand::der_Anzahl_folgen() {
    m_folgt = true;
    m_anzahl.onChange = [this] { erste_markieren(); };
}

void Ferkelbestand::Anzahl_setzen(const QString& text) {
    if (text == m_anzahl.text()) return;
    m_anzahl.setText(text);
    if (m_folgt) erste_markieren();
}

void Ferkelbestand::erste_markieren() {
    const double wanted = std::clamp(Wert(m_anzahl.text()), 0.0, double(m_gridli.rowCount()));
    std::vector<int> rows(static_cast<size_t>(wanted));
    std::iota(rows.begin(), rows.end(), 1);
    m_gridli.mark(rows);
}

/// Marking counts the piglets and proposes to delete them; taking the last mark away leaves both.
void Ferkelbestand::gridli_Click() {
    const int marked = m_gridli.markedCount();
    if (marked == 0) return;
    m_anzahl.setText(QString::number(marked));
    m_verbleib.select(static_cast<int>(Verbleib::Loeschen));
}

bool Ferkelbestand::Bestand_bestaetigt(Koben& koben) const {
    if (verbleib() != Verbleib::Unveraendert || !markiert()) return true;
    return koben.yesNo(
        QStringLiteral("HINWEIS!!!") + Crlf + Crlf +
        QStringLiteral("In der aktuellen Einstellung werden die ausgewählten Ferkel trotz des Verkaufs weiter in Ihrem "
                       "Bestand geführt. In der Auswahl 'Aufgund des Ferkelverkaufs...' können Sie einstellen, ob bzw. "
                       "wie die Ferkel aus dem Bestand ausgebucht werden. Soll die Buchung jetzt trotzdem ausgeführt "
                       "werden?"));
}

std::vector<qint64> Ferkelbestand::markierte() const {
    const int column = m_gridli.columnOf(u"ID");
    std::vector<qint64> ids;
    for (int row : m_gridli.markedRows()) ids.push_back(m_gridli.integer(row, column));
    return ids;
}

bool Ferkelbestand::ausbuchen(const Database& db, const Abgang& fields) {
    if (verbleib() == Verbleib::Unveraendert || !markiert()) return false;
    const bool retire = verbleib() == Verbleib::Abgang;
    QStringList set;
    std::vector<Value> values;
    for (const auto& [field, value] : fields) {
        if (!retire) break;
        set.append(QString::fromUtf8(field) + QStringLiteral(" = ?"));
        values.push_back(value);
    }
    Statement statement = db.prepare((retire ? QStringLiteral("update Sauen set ") + set.join(QStringLiteral(", "))
                                             : QStringLiteral("delete from Sauen")) +
                                     QStringLiteral(" where ID >= ? and ID <= ?"));
    int touched = 0;
    // piglets come into the stock by the litter or the lorry, so a whole pen is one run and costs one statement
    for (const auto& [first, last] : consecutive(markierte())) {
        std::vector<Value> run = values;
        run.emplace_back(first);
        run.emplace_back(last);
        touched += statement.run(run);
    }
    m_veraltet = true;
    return retire && touched > 0;
}

}  // namespace koben
