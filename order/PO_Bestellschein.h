#pragma once
#include "forms/Eingabe.h"
#include "order/Bestellung.h"

namespace koben {

/// An order for the maker's articles: who orders, and how much of what. The sheet itself: HV_Bestellschein.
class PO_Bestellschein final : public Form {
public:
    explicit PO_Bestellschein(Koben& koben);
    bool onlyToday() const override { return true; }

    Frame rahmen{*this, "rahmen", "Besteller"};
    ControlArray<Label> bez{*this,
                            "bez",
                            {"Kundennummer:", "Betrieb:", "Name:", "Straße und Hausnummer:", "PLZ:", "Ort:", "Telefon:",
                             "E-Mail:", "Bemerkung:", "Menge des gewählten Artikels:"}};
    ControlArray<TextBox> t{*this, "t", 9};  ///< the customer's data, in the order of Kunde; 8 the remark
    Grid li{*this, "li"};                    ///< the articles; the quantities can be typed there too
    TextBox tz{*this, "tz"};                 ///< the quantity of the current article
    SpinButton UpDown{*this, "UpDown"};
    Label bezsumme{*this, "bezsumme"};
    Label hinweis{*this, "hinweis"};  ///< what of the list of articles could not be read
    Button hilfe{*this, "hilfe", "&Hilfe"};
    Button leeren{*this, "leeren", "&Mengen löschen"};
    Button ok{*this, "ok", "&Bestellschein"};
    Button cmdschließen{*this, "cmdschließen", "&Schließen"};

    /// The order as it stands.
    Bestellung bestellung() const;
    /// It is on paper or in a file: closing needs no question.
    void notePrinted() { m_open = false; }

private:
    void Load() override;
    void showCustomer();
    void fillList();
    void showQuantity();
    void setQuantity(int row, int quantity);
    void step(int by);
    void tell();
    void leeren_Click();
    void ok_Click();
    void cmdschließen_Click();
    void check(Findings& found);
    bool keepCustomer();
    const Artikel& artikel(int row) const;

    Preisliste m_preise;
    std::vector<int> m_mengen;  // by article
    bool m_open = false;        // quantities that are on no paper yet
};

}  // namespace koben
