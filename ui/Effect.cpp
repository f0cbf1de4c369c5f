#include "ui/Effect.h"

#include "bookings/PE_Bewegungsdaten.h"
#include "forms/Form.h"
#include "forms/Koben.h"

namespace koben::ui {

namespace {

/// The next page of an assistant; leaving that of the file takes a file.
bool leadsOn(const Form& form, int step) {
    const auto* pages = dynamic_cast<const Tabs*>(form.find(u"SSTab1"));
    if (!pages) return true;
    constexpr int FilePage = 1;
    const auto* preview = dynamic_cast<const TextBox*>(form.find(u"Text1"));
    if (step > 0 && pages->front() == FilePage && preview && preview->text().isEmpty()) return false;
    const int page = pages->front() + step;
    return page >= 0 && page < pages->captions().size();
}

/// Another animal to go to.
bool severalAnimals(const Form& form) {
    const Grid* animals = form.koben.herdList ? &form.koben.herdList->herd() : nullptr;
    for (const Form* behind : form.koben.stack())
        if (const auto* frame = dynamic_cast<const PE_Bewegungsdaten*>(behind)) animals = &frame->schweinli;
    return !animals || animals->rowCount() > 1;
}

}  // namespace

bool hasEffect(const Button& button) {
    const QString& name = button.name();
    const Form& form = button.form();
    if (name == u"comhilfe" || name == u"hilfe") return form.koben.catalogue.has(QStringLiteral("PH_Hilfe"));
    if (name == u"comnächster2") return leadsOn(form, 1);
    if (name == u"comvorheriger2") return leadsOn(form, -1);
    if (name == u"nextschwein" || name == u"nextschwein1" || name == u"abwaerts") return severalAnimals(form);
    return true;
}

}  // namespace koben::ui
