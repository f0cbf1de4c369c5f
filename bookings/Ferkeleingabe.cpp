#include "bookings/Ferkeleingabe.h"

#include "core/Aktionsnamen.h"
#include "core/PZ_Koben_Subs.h"

namespace koben {

void Ferkeleingabe::Load() {
    const auto& open = koben.stack();
    if (open.size() > 1) m_list = dynamic_cast<Ferkelliste*>(open[open.size() - 2]);
    if (!m_list) return close();
    Bewegungseingabe::Load();
}

bool Ferkeleingabe::agreed() {
    const auto chosen = sow();
    m_sow = chosen.value_or(0);
    return chosen.has_value();
}

QString Ferkeleingabe::actionName() const {
    const QString number = Hochkomma_ersetzen(mother());
    return adding() ? Buchungsname(kind, number, tdat.text())
                    : Buchungsname(kind, number, tdat.text(), QStringLiteral("geändert"));
}

void Ferkeleingabe::write(const Action& action) {
    Buchungen bookings(action, kind, {}, values());
    if (adding())
        bookings.book(m_sow);
    else
        bookings.change(m_list->currentRow(), m_sow);
    finish(action);
}

void Ferkeleingabe::refresh() {
    if (!adding()) m_list->Zeile_auffrischen();
}

}  // namespace koben
