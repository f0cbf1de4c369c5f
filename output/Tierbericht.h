#pragma once
// What the reports over chosen animals share: the choice of animals, with the herd list's current one among them.
#include "output/Bericht.h"

namespace koben {

class Tierbericht : public Bericht {
public:
    ControlArray<Button> nächster{*this, "nächster", {"Vorheriges Tier", "Nächstes Tier"}};
    ProgressBar meter{*this, "meter"};
    Grid gridli{*this, "gridli"};
    Button ok{*this, "ok", "&Listen"};
    Button hilfe{*this, "hilfe", "&Hilfe"};
    Button beenden{*this, "beenden", "&Schließen"};

protected:
    Tierbericht(Koben& koben, const QString& name, const QString& caption);

    /// Connects a choice of animals, of which option `current` is the herd list's current one. The arrows move that
    /// one, and the option's caption names it.
    void bindAnimals(OptionGroup& choice, int current, int slot);
    /// ID of the herd list's current animal, 0 without one.
    qint64 currentAnimal() const;
    /// The condition on `Sauen` for an option by its caption; "" for all animals.
    QString condition(const QString& caption) const;

private:
    void showCurrent(Option& option);
};

}  // namespace koben
