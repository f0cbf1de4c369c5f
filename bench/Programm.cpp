#include "bench/Programm.h"

#include "app/Katalog.h"
#include "core/Konfig.h"

namespace koben {

qint64 anschauen(const Grid& grid) {
    constexpr int zeilenImFenster = 40;
    const int first = std::max(1, std::min(grid.row(), grid.rowCount() - zeilenImFenster + 1));
    qint64 zeichen = 0;
    for (int row = first; row < first + zeilenImFenster && row <= grid.rowCount(); ++row)
        for (int column = 1; column <= grid.columnCount(); ++column) zeichen += grid.cell(row, column).size();
    return zeichen;
}

void Programm::lauf(const std::function<void()>& work) {
    m_start.los();
    Koben koben(m_screens, m_platform, katalog());
    m_koben = &koben;
    const auto form = katalog().make(QStringLiteral("PA_Koben"), koben);
    wenn("PA_Koben", [&](Form&) { work(); });
    koben.run(*form);
    m_screens.ablauf.clear();
    m_koben = nullptr;
}

void Programm::wenn(const char* form, const std::function<void(Form&)>& work) {
    m_screens.ablauf[QString::fromUtf8(form)] = work;
}

void Programm::oeffnen(const char* form, const std::function<void(Form&)>& work) {
    wenn(form, work);
    koben().open(QString::fromUtf8(form));
    haupt().settle();
}

void Programm::Liste_zeigen() {
    koben().Konfig_Zahl[Zahl::ListeSortRichtung] = 0;
    koben().herdList->datenschweinelesen();
}

void Programm::zeigen(int verkauft) {
    if (auto& option = steuer<Option>(haupt(), "optiverkauft", verkauft); !option.selected()) option.click();
}

void Programm::waehlen(qint64 id) {
    Grid& list = liste();
    const int column = list.columnOf(u"ID");
    for (int row = 1; row <= list.rowCount(); ++row)
        if (list.integer(row, column) == id) return list.choose(row);
    throw std::runtime_error("an animal of the trial is not in the list");
}

}  // namespace koben
