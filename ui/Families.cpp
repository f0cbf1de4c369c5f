#include "ui/Families.h"

#include <algorithm>

#include "bookings/Buchungseingabe.h"
#include "forms/Stammdaten.h"
#include "ui/LastBookings.h"

namespace koben::ui {

namespace {

const QStringList factCaptions{QStringLiteral("Art"),
                               QStringLiteral("Nummer"),
                               QStringLiteral("Gruppe"),
                               QStringLiteral("Stall"),
                               QStringLiteral("Belegungen"),
                               QStringLiteral("Würfe"),
                               QStringLiteral("Ferkel gesamt"),
                               QStringLiteral("Ferkel lebend"),
                               QStringLiteral("Letzte Belegung"),
                               QStringLiteral("Letzte Ferkelung"),
                               QStringLiteral("Nächste Belegung"),
                               QStringLiteral("Nächste Ferkelung")};

template <class C>
void addAll(std::vector<const Control*>& placed, ControlArray<C>& controls) {
    for (auto& control : controls) placed.push_back(control.get());
}

/// What a booking's screen has beyond the common parts.
std::vector<Control*> extras(Buchungseingabe& form) {
    std::vector<const Control*> placed{&form.tdat, &form.calender, &form.calend, &form.abbrechen};
    addAll(placed, form.bezschwein);
    addAll(placed, form.ok);
    addAll(placed, form.nextschwein);
    for (const auto& line : form.zeilen()) {
        placed.push_back(line.control);
        placed.push_back(line.spin);
        placed.push_back(line.calender);
    }
    return others(form, placed);
}

Piece bookingFamily(Form& form) { return bookingEntry(static_cast<Buchungseingabe&>(form)); }
Piece masterListFamily(Form& form) { return masterList(static_cast<Stammdatenliste&>(form)); }
Piece masterEntryFamily(Form& form) {
    auto& entry = static_cast<Stammdateneingabe&>(form);
    std::vector<const Control*> placed{&entry.beschriftung, &entry.t, &entry.abbrechen};
    addAll(placed, entry.ok);
    return masterEntry(entry, automatic(others(form, placed)));
}

}  // namespace

Piece entryButtons(ControlArray<Button>& ok, Button& cancel) {
    return buttons({button(ok[0]), button(ok[1]), button(ok[2]), button(cancel)});
}

namespace {

Piece bookingInputs(Buchungseingabe& form) {
    std::vector<FieldRow> rows;
    for (const auto& line : form.zeilen())
        rows.push_back(field(line.label, line.calender ? date(static_cast<TextBox&>(*line.control), *line.calender)
                                                       : input(*line.control, line.spin)));
    return group(form.rahmen(), row({fields(rows), spring(), sharedCalendar(form.calend)}));
}

/// The animal above, the buttons below, and what stands between.
Piece bookingFrame(Buchungseingabe& form, std::vector<Piece> pieces) {
    pieces.insert(pieces.begin(), group(QStringLiteral("Aktuelles Schwein"), facts(form.bezschwein, factCaptions)));
    pieces.push_back(bookingNotice(form));
    pieces.push_back(buttons({button(form.nextschwein[0]), button(form.nextschwein[1])},
                             {button(form.ok[0]), button(form.ok[1]), button(form.ok[2]), button(form.abbrechen)}));
    return column(pieces);
}

}  // namespace

Piece bookingEntry(Buchungseingabe& form) {
    std::vector<Piece> inputs{bookingInputs(form)}, beside{lastBookings(form)};
    const auto rest = extras(form);
    // remarks belong to the inputs; buttons find room beside them
    const bool remarks = std::all_of(rest.begin(), rest.end(),
                                     [](const Control* control) { return dynamic_cast<const Label*>(control); });
    if (!rest.empty()) (remarks ? inputs : beside).push_back(automatic(rest));
    inputs.push_back(spring());
    std::vector<Piece> pieces{row({column(inputs), column(beside) * 1}) * 1};
    pieces.push_back(spring());
    return bookingFrame(form, pieces);
}

Piece bookingEntry(Buchungseingabe& form, const Piece& beside) {
    return bookingFrame(form, {row({column({bookingInputs(form), spring()}), beside * 1}) * 1});
}

Piece masterList(Stammdatenliste& form) {
    std::vector<Piece> checks;
    for (auto& box : form.konlist) checks.push_back(check(*box));
    return column({grid(form.li, QStringLiteral("Noch keine Einträge. „Neu“ legt den ersten an.")),
                   group(form.rahmenlist, flow(checks)),
                   buttons({button(form.neu), button(form.ändern), button(form.löschen)},
                           {button(form.listen), button(form.cmdschließen)})});
}

Piece masterEntry(Stammdateneingabe& form, const Piece& inputs) {
    return column({fields({field(form.beschriftung, text(form.t, 30))}), inputs, spring(),
                   entryButtons(form.ok, form.abbrechen)});
}

Arrange familyLayout(Form& form) {
    if (dynamic_cast<Buchungseingabe*>(&form)) return bookingFamily;
    if (dynamic_cast<Stammdatenliste*>(&form)) return masterListFamily;
    if (dynamic_cast<Stammdateneingabe*>(&form)) return masterEntryFamily;
    return nullptr;
}

}  // namespace koben::ui
