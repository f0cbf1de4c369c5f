#include "app/Katalog.h"

#include "Formen.h"

namespace koben {

namespace {

Catalogue all() {
    Catalogue forms;
#define ADD(F) forms.add<F>(QStringLiteral(#F));
    KOBEN_FORMS(ADD)
#undef ADD
    return forms;
}

}  // namespace

const Catalogue& katalog() {
    static const Catalogue forms = all();
    return forms;
}

QStringList formNames() {
#define NAME(F) QStringLiteral(#F),
    return {KOBEN_FORMS(NAME)};
#undef NAME
}

}  // namespace koben
