#pragma once
#include "forms/Form.h"
#include "forms/Koben.h"
#include "order/Bestellung.h"

namespace koben {

/// The order as it will stand on paper, with its sums: to look at, to print, to keep as PDF. Nothing is sent.
class HV_Bestellschein final : public Form {
public:
    explicit HV_Bestellschein(Koben& koben);

    Label Label1{*this, "Label1", "Besteller"};
    Label besteller{*this, "besteller"};
    Label Label2{*this, "Label2", "Empfänger"};
    Label empfänger{*this, "empfänger"};
    Grid gridli{*this, "gridli"};  ///< the positions
    ControlArray<Label> bez{*this, "bez", {"", "", ""}};
    ControlArray<Label> summe{*this, "summe", {"", "", ""}};
    Label bemerkung{*this, "bemerkung"};
    Label hinweis{*this, "hinweis",
                  "KOBEN verschickt nichts. Bitte drucken Sie den Bestellschein oder heben Sie ihn als PDF auf, und "
                  "schicken Sie ihn unterschrieben selbst ab."};
    Label Label3{*this, "Label3", "Drucker:"};
    ComboBox komdrucker{*this, "komdrucker"};
    Button hilfe{*this, "hilfe", "&Hilfe"};
    Button pdf{*this, "pdf", "Als &PDF..."};
    Button ok{*this, "ok", "&Drucken"};
    Button cmdschließen{*this, "cmdschließen", "&Schließen"};

    /// The sheets as they would be printed now.
    Drawing druckbild() const;

private:
    void Load() override;
    void showOrder();
    void print(const QString& printer);

    Bestellung m_order;
};

}  // namespace koben
