#include "ui/Drop.h"

#include <QTimer>

#include "exchange/S_Importtabelle.h"
#include "forms/Form.h"
#include "forms/Koben.h"
#include "ui/Application.h"

namespace koben::ui {

namespace {

MenuEntry* importEntry(const Form& form) {
    auto* entry = dynamic_cast<MenuEntry*>(form.find(u"O_ImportExcelCSV"));
    return entry && entry->reachable() ? entry : nullptr;
}

}  // namespace

bool takesFile(const Form& form) { return dynamic_cast<const S_Importtabelle*>(&form) || importEntry(form); }

void dropFile(Form& form, const QString& path) {
    Koben& koben = form.koben;
    const auto show = [&koben, path] {
        if (auto* import = dynamic_cast<S_Importtabelle*>(koben.front())) guarded([&] { import->DateiZeigen(path); });
    };
    if (dynamic_cast<S_Importtabelle*>(&form)) return show();
    MenuEntry* entry = importEntry(form);
    if (!entry) return;
    QTimer::singleShot(0, show);  // runs once the import screen is in front
    guarded([&] { entry->click(); });
}

}  // namespace koben::ui
