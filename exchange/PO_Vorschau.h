#pragma once
// What the device's file holds, before anything is written: each booking with its verdict, to take or to leave; then
// the import of what is taken.
#include <optional>

#include "exchange/Widersprueche.h"
#include "forms/Koben.h"

namespace koben {

class PO_Vorschau final : public Form {
public:
    explicit PO_Vorschau(Koben& koben);
    bool onlyToday() const override { return true; }

    Label Label1{*this, "Label1",
                 "Was in der Datei vom Gerät steht. Geschrieben wird erst mit „Einlesen“, und nur, wo „ja“ steht."};
    CheckBox koneindatum{*this, "koneindatum", "Je Maßnahme, Tag und Tier nur eine Buchung zulassen"};
    Grid li{*this, "li", true};
    Label summe{*this, "summe"};
    Button übernehmen{*this, "übernehmen", "Ü&bernehmen"};
    Button auslassen{*this, "auslassen", "&Auslassen"};
    Button gleiche{*this, "gleiche", "&Gleiches Urteil markieren"};
    Button zuordnen{*this, "zuordnen", "&Nummer zuordnen ..."};
    Button listen{*this, "listen", "&Listen"};
    Button ok{*this, "ok", "&Einlesen"};
    Button hilfe{*this, "hilfe", "&Hilfe"};
    Button cmdschließen{*this, "cmdschließen", "&Schließen"};

private:
    /// What a row of the list says, the gravest first. Ohne: no day or no animal.
    enum class Urteil { Widerspruch, Unbekannt, Neu, Doppelt, Ohne };

    void Load() override;
    void FirstShown() override;
    void judge();  ///< the whole file, then what the user wants of it
    void heed();   ///< what the user wants
    void show();
    void showVerdicts();
    std::vector<size_t> sorted() const;
    Urteil urteil(size_t booking) const;
    QString unknownNumber(size_t booking) const;
    QString grund(size_t booking) const;
    QString tier(size_t booking) const;
    bool taken(size_t booking) const { return m_plan.entries[booking].urteil == Geraeteurteil::Neu; }
    size_t bookingOf(int row) const;
    std::vector<size_t> chosen() const;
    void wish(bool take);
    void gleiche_Click();
    void zuordnen_Click();
    void ok_Click();

    Database m_db;
    std::optional<Geraetedatei> m_file;
    std::optional<Widersprueche> m_contradictions;
    Geraeteplan m_whole, m_plan;     ///< without wishes, and with them
    QStringList m_unknown;           ///< numbers of the file
    std::vector<QString> m_reasons;  ///< of a contradiction, by booking
    std::vector<Geraetewunsch> m_wishes;
};

}  // namespace koben
