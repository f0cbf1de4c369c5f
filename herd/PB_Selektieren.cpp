#include "herd/PB_Selektieren.h"

#include <algorithm>
#include <map>

#include "core/Aktionsnamen.h"
#include "core/Konfig.h"
#include "core/PZ_Koben_Subs.h"

namespace koben {

namespace {

constexpr int Unselect = 0;  // the rule that only clears
constexpr int ByKind = 2;
constexpr int HighestCount = 20;  // that the boxes offer; others can be typed
constexpr double MostCount = 1e9;

}  // namespace

PB_Selektieren::PB_Selektieren(Koben& context) : Form(context, "PB_Selektieren", "Schweine selektieren") {
    for (int i = 0; i < entselekt.count(); ++i) {
        entselekt[i].onClick = [this, i] { entselekt_Click(i); };
        if (ComboBox* input = inputOf(i)) input->setHint(entselekt[i].caption());
    }
    QStringList counts;
    for (int i = 1; i <= HighestCount; ++i) counts += QString::number(i);
    kom[0].setItems({"Sau", "Eber", "Mast"});
    for (int i : {3, 4}) {
        kom[i].setItems(counts);
        kom[i].onKeyPress = Nur_Ziffern;
    }
    abbv.onClick = [this] { abbv_Click(); };
    helpTopic = name();
    cancelButton = &abbv;
}

ComboBox* PB_Selektieren::inputOf(int rule) {
    static const std::map<int, int> inputs{{2, 0}, {3, 1}, {4, 2}, {5, 3}, {6, 4}, {10, 5}};
    const auto found = inputs.find(rule);
    return found == inputs.end() ? nullptr : &kom[found->second];
}

void PB_Selektieren::Load() {
    m_db = koben.connect();
    kom[1].setItems(valuesOf("Gruppe"));
    kom[2].setItems(valuesOf("Rasse"));
    kom[5].setItems(valuesOf("Stallnr"));
    kon.setChecked(koben.Konfig_Zahl[Zahl::SelektionLoeschen] == 1);
}

QStringList PB_Selektieren::valuesOf(const char* field) const {
    const Table rows = m_db.table(QStringLiteral("select distinct %1 from Sauen").arg(QString::fromUtf8(field)));
    QStringList values;
    for (int row = 0; row < rows.rowCount(); ++row) values += Hochkomma_ersetzen(rows.text(row, 0));
    values.removeAll(QString());
    return values;
}

/// An empty input stands for animals without a value.
QString PB_Selektieren::equals(const char* field, int input) const {
    const QString wanted = Hochkomma_ersetzen(kom[input].text());
    const QString text = QStringLiteral(" and (trim(%1) = '%2'%3)");
    return text.arg(QString::fromUtf8(field), wanted,
                    wanted.isEmpty() ? QStringLiteral(" or %1 IS NULL").arg(QString::fromUtf8(field)) : QString());
}

QString PB_Selektieren::atLeast(const char* field, int input) const {
    return QStringLiteral(" and nz(%1, 0) >= %2")
        .arg(QString::fromUtf8(field))
        .arg(static_cast<qint64>(std::min(Wert(kom[input].text()), MostCount)));
}

/// What a rule asks of an animal in stock beyond being there, as text behind the where.
QString PB_Selektieren::condition(int rule) const {
    switch (rule) {
        case 2:
            return equals("Art", 0);
        case 3:
            return equals("Gruppe", 1);
        case 4:
            return equals("Rasse", 2);
        case 5:
            return atLeast("Anz_Belegungen", 3);
        case 6:
            return atLeast("Anz_Ferkelungen", 4);
        case 7:
            return QStringLiteral(" and Mechanische_Amme = 'J'");
        case 8:
            return QStringLiteral(" and L_Belegung IS NOT NULL and (L_Ferkelung IS NULL or L_Ferkelung < L_Belegung)");
        case 9:
            return QStringLiteral(" and L_Ferkelung IS NOT NULL and (L_Belegung IS NULL or L_Ferkelung > L_Belegung)");
        case 10:
            return equals("Stallnr", 5);
        default:
            return {};
    }
}

void PB_Selektieren::entselekt_Click(int rule) {
    const WaitCursor wait(koben);
    Action action(m_db, QStringLiteral("Selektion aufgehoben"));
    if (rule == Unselect || kon.checked())  // the other rows, most of a large farm, have it already
        m_db.execute(QStringLiteral("update Sauen set Selektiert = '' where Selektiert IS NULL or Selektiert <> ''"));
    if (rule != Unselect) {
        const int count = m_db.execute(QStringLiteral("update Sauen set Selektiert = 'X' where Abgangsdatum IS NULL") +
                                       condition(rule));
        action.setName(countedAnimals(count, rule == ByKind ? kom[0].text() : QString()) +
                       QStringLiteral(" selektiert"));
    }
    action.commit();
    koben.Liste_neu_laden = 1;
    if (koben.herdList) koben.herdList->datenschweinelesen();
}

void PB_Selektieren::abbv_Click() {
    koben.Konfig_Zahl[Zahl::SelektionLoeschen] = kon.checked() ? 1 : 0;
    m_db.close();
    close();
}

}  // namespace koben
