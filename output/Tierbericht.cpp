#include "output/Tierbericht.h"

#include <map>

namespace koben {

namespace {

const QString CurrentAnimal = QStringLiteral("Aktuelles Schwein");

const std::map<QString, QString> Conditions{
    {"Selektierte Schweine", "Sauen.Selektiert = 'X'"},
    {"Alle Sauen", "Sauen.Art = 'Sau'"},
    {"Alle Eber", "Sauen.Art = 'Eber'"},
    {"Alle Masttiere", "Sauen.Art = 'Mast'"},
    {"Alle Schweine (aktueller Bestand)", "Sauen.Abgangsdatum IS NULL"},
};

}  // namespace

Tierbericht::Tierbericht(Koben& koben_, const QString& name, const QString& caption) : Bericht(koben_, name, caption) {
    gridli.setVisible(false);
    bindButtons(ok, beenden, &hilfe);
}

void Tierbericht::bindAnimals(OptionGroup& choice, int current, int slot) {
    choice.frame = QStringLiteral("Tierauswahl");
    bind(choice, slot);
    Option& option = choice[current];
    bind([this, &option] { showCurrent(option); }, [] {});
    choice.onClick = [this, &option](int) { showCurrent(option); };
    for (int direction = 0; direction < nächster.count(); ++direction)
        nächster[direction].onClick = [this, &option, direction] {
            if (!option.selected()) return;
            koben.Tier_weiterschalten(direction);
            showCurrent(option);
        };
}

qint64 Tierbericht::currentAnimal() const {
    if (!koben.herdList) return 0;
    const Grid& herd = koben.herdList->herd();
    return herd.value(herd.row(), u"ID").toInt();
}

void Tierbericht::showCurrent(Option& option) {
    QStringList words{CurrentAnimal};
    if (option.selected() && currentAnimal() != 0) {
        const Grid& herd = koben.herdList->herd();
        for (const QStringView field : {u"Art", u"Nummer", u"Stallnr"}) words += herd.cell(herd.row(), field);
    }
    option.setCaption(words.join(QStringLiteral(", ")));
}

QString Tierbericht::condition(const QString& caption) const {
    if (caption.startsWith(CurrentAnimal)) return QStringLiteral("Sauen.ID = %1").arg(currentAnimal());
    const auto found = Conditions.find(caption);
    return found == Conditions.end() ? QString() : found->second;
}

}  // namespace koben
