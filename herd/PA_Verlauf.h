#pragma once
// The journal of actions: what was done when, found by word, day or animal, and taken back, also out of order.
#include <set>

#include "core/Ruecknahme.h"
#include "forms/Form.h"
#include "forms/Koben.h"

namespace koben {

class PA_Verlauf final : public Form {
public:
    explicit PA_Verlauf(Koben& koben);

    ControlArray<Label> bez{*this, "bez", {"Suchen:", "Aufbewahren (Jahre):", "Höchstens (MB):"}};
    TextBox suche{*this, "suche"};
    Grid li{*this, "li", true};
    /// Years and megabytes that are kept.
    ControlArray<TextBox> tz{*this, "tz", 2};
    Label umfang{*this, "umfang"};
    Button ruecknahme{*this, "ruecknahme", "&Zurücknehmen"};
    Button hilfe{*this, "hilfe", "&Hilfe"};
    Button beenden{*this, "beenden", "&Schließen"};

private:
    using Entry = Journal::Entry;

    void Load() override;
    void Activate() override;
    void ruecknahme_Click();
    void keepingChanged();

    void show();
    void showSize();
    QString windowCaption(const QString& form);
    bool meets(const Entry& entry, const QString& word);
    const std::set<qint64>& ofAnimal(const QString& number);
    std::vector<qint64> chosen() const;
    bool agreedWith(const Ruecknahme& journal, const Ruecknahme::Plan& plan) const;

    Database m_db;
    std::vector<Entry> m_entries;
    QHash<QString, QString> m_captions;
    QHash<QString, std::set<qint64>> m_animals;  ///< entries by a number that was searched for
};

}  // namespace koben
