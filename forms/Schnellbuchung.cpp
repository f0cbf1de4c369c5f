#include "forms/Schnellbuchung.h"

#include <QHash>
#include <algorithm>

#include "core/PZ_Koben_Subs.h"

namespace koben {

std::vector<Schnelltier> Schnelltiere(const Grid& herd) {
    const int id = herd.columnOf(u"ID"), number = herd.columnOf(u"Nummer"), kind = herd.columnOf(u"Art"),
              gone = herd.columnOf(u"Abgangsdatum");
    std::vector<Schnelltier> animals;
    animals.reserve(static_cast<size_t>(herd.rowCount()));
    for (int row = 1; row <= herd.rowCount(); ++row)
        animals.push_back({herd.integer(row, id), herd.cell(row, number), herd.cell(row, kind),
                           gone > 0 && !herd.value(row, gone).isNull(), herd.marked(row)});
    return animals;
}

namespace {

/// The hand that works the forms of one line.
class Worker {
public:
    Worker(Koben& koben, const Schnellzeile& line) : m_koben(koben), m_line(line) {}

    Schnellergebnis book() {
        struct Set {
            Koben& koben;
            explicit Set(Worker& worker) : koben(worker.m_koben) {
                koben.worker = [&worker](Form& form) { worker.work(form); };
            }
            ~Set() { koben.worker = nullptr; }
        };
        m_koben.said.clear();
        const Set set(*this);
        m_koben.open(QStringLiteral("PE_Bewegungsdaten"));
        if (!m_result.booked && m_result.reason.isEmpty())
            m_result.reason =
                m_refusal.isEmpty()
                    ? QStringLiteral(
                          "Das Eingabefenster lässt sich nicht öffnen. Bitte buchen Sie im Fenster (Menü Eingabe).")
                    : m_refusal;
        return m_result;
    }

private:
    void work(Form& form) {
        const bool frame = form.find(u"schweinli") != nullptr;
        frame ? workFrame(form) : workEntry(form);
        if (!frame) m_refusal = m_koben.said.simplified();
        if (!form.closed()) form.act([&form] { form.closeBox(); });
        form.close();
    }

    template <class C>
    C* control(Form& form, const QString& address) const {
        const auto bracket = address.indexOf(u'(');
        const int index = bracket < 0 ? -1 : address.mid(bracket + 1).chopped(1).toInt();
        return dynamic_cast<C*>(form.find(QStringView(address).left(bracket < 0 ? address.size() : bracket), index));
    }

    void workFrame(Form& frame) {
        auto* animals = control<Grid>(frame, QStringLiteral("schweinli"));
        auto* kind = control<Option>(frame, QStringLiteral("opti(%1)").arg(static_cast<int>(*m_line.kind)));
        auto* add = control<Button>(frame, QStringLiteral("neu"));
        const std::vector<int> rows = rowsOf(*animals);
        if (!kind || !add || rows.size() != m_line.animals.size()) {
            m_result.reason = QStringLiteral(
                "Nicht alle Tiere stehen noch in der Liste. Lesen Sie sie mit F5 neu, und buchen Sie noch einmal.");
            return;
        }
        animals->choose(rows.front());
        if (rows.size() > 1) animals->mark(rows);
        kind->click();
        if (add->enabled()) add->click();
        if (m_refusal.isEmpty()) m_refusal = m_koben.said.simplified();
    }

    std::vector<int> rowsOf(const Grid& animals) const {
        QHash<qint64, int> places;
        const int id = animals.columnOf(u"ID");
        for (int row = 1; row <= animals.rowCount(); ++row) places.insert(animals.integer(row, id), row);
        std::vector<int> rows;
        for (const Schnelltier& animal : m_line.animals)
            if (const int row = places.value(animal.id)) rows.push_back(row);
        return rows;
    }

    void workEntry(Form& entry) {
        if (!fill(entry, QStringLiteral("tdat(0)"), Datum_als_Anzeige(m_line.day))) return;
        for (const auto& [field, text] : m_line.values)
            if (!fill(entry, QString::fromUtf8(field->control), text)) return;
        auto* ok = control<Button>(entry, QStringLiteral("ok(0)"));
        if (!ok || !ok->enabled()) return;
        ok->click();
        m_result.booked = entry.closed();
    }

    /// As typed and left; of fixed entries the one is chosen.
    bool fill(Form& entry, const QString& address, const QString& text) {
        auto* box = control<TextBox>(entry, address);
        if (!box || !box->visible() || !box->enabled()) {
            m_result.reason =
                QStringLiteral(
                    "Das Feld für „%1“ lässt sich nicht ausfüllen. Bitte buchen Sie das im Fenster (Menü Eingabe).")
                    .arg(text);
            return false;
        }
        box->enter();
        auto* list = dynamic_cast<ComboBox*>(box);
        if (list && list->fixed)
            list->choose(static_cast<int>(list->items().indexOf(text)));
        else
            box->type(text);
        box->leave();
        return true;
    }

    Koben& m_koben;
    const Schnellzeile& m_line;
    Schnellergebnis m_result;
    QString m_refusal;
};

}  // namespace

Schnellergebnis Schnell_buchen(Koben& koben, const Schnellzeile& line) { return Worker(koben, line).book(); }

}  // namespace koben
