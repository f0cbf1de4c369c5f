#include "app/Katalog.h"

#include "Formen.h"

namespace koben {

const Catalogue& katalog() {
    static const Catalogue forms = katalogOhne({});
    return forms;
}

Catalogue katalogOhne(const QStringList& names) {
    Catalogue forms;
#define ADD(F) \
    if (!names.contains(QStringLiteral(#F))) forms.add<F>(QStringLiteral(#F));
    KOBEN_FORMS(ADD)
#undef ADD
    return forms;
}

QStringList formNames() {
#define NAME(F) QStringLiteral(#F),
    return {KOBEN_FORMS(NAME)};
#undef NAME
}

}  // namespace koben
