#pragma once
#include "forms/Form.h"
#include "forms/Koben.h"

namespace koben {

/// Where a figure of a list comes from: its sentence, its parts, and the bookings or animals behind it.
class PA_Erklärung final : public Form {
public:
    explicit PA_Erklärung(Koben& koben);

    Label satz{*this, "satz"};
    /// Numerator, denominator and value, as far as there are any.
    ControlArray<Label> bez{*this, "bez", {"", "", ""}};
    ControlArray<Label> wert{*this, "wert", {"", "", ""}};
    Grid gridli{*this, "gridli"};
    Button ok{*this, "ok", "&Listen"};
    Button beenden{*this, "beenden", "&Schließen"};

private:
    void Load() override;
};

}  // namespace koben
