// The table of layouts. A form that is not listed is arranged automatically.
#include <QHash>

#include "ui/Families.h"
#include "ui/Layout.h"

// clang-format off
#define LAYOUTS(X) \
    X(PA_Erklärung) \
    X(PA_Koben) \
    X(PA_Textausgabe) \
    X(PA_Zwischenliste) \
    X(PB_Arbeitsplan) \
    X(PB_Bestand) \
    X(PB_Bestandsregister) \
    X(PB_Neues_Schwein) \
    X(PB_Sauenkarte) \
    X(PB_Selektieren) \
    X(PB_Statistiken) \
    X(PB_Statusplan) \
    X(PB_Tierinformation_Buchungen) \
    X(PB_Tierinformation_Schweine) \
    X(PB_Verkauf_Ferkel) \
    X(PB_Verkauf_Ferkel_Eingabe) \
    X(PB_Verkauf_Schweine) \
    X(PB_Verluste_Ferkel) \
    X(PB_Verluste_Ferkel_Eingabe) \
    X(PB_Wartezeiten) \
    X(PE_Bewegungsdaten) \
    X(PE_Bewegungsdaten_Ferkelverkauf) \
    X(PE_Bewegungsdaten_Verluste) \
    X(PO_Einstellungen) \
    X(PV_Arbeitsplandaten_Eingabe) \
    X(PV_Bestandsdaten_Eingabe) \
    X(PV_Medizin_Eingabe) \
    X(PV_Stichworte) \
    X(PV_Termine_Eingabe) \
    X(S_Importtabelle)
// clang-format on

namespace koben::ui {

#define DECLARE(F) Piece layout_##F(Form& form);
LAYOUTS(DECLARE)
#undef DECLARE

namespace {

const QHash<QString, Arrange>& table() {
#define ENTRY(F) {QStringLiteral(#F), &layout_##F},
    static const QHash<QString, Arrange> layouts{LAYOUTS(ENTRY)};
#undef ENTRY
    return layouts;
}

}  // namespace

Arrange layoutOf(Form& form) {
    if (const Arrange own = table().value(form.name(), nullptr)) return own;
    return familyLayout(form);
}

QStringList laidOutForms() { return table().keys(); }

}  // namespace koben::ui
