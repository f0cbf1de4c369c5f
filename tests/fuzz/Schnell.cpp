// Lines of the quick entry: whatever is typed, what is ready names its animals, its day and the fields that it must,
// each with what its field can hold.
#include "core/PZ_Koben_Subs.h"
#include "core/Schnellzeile.h"
#include "tests/fuzz/Require.h"

namespace koben::fuzz {
namespace {

const QString Heute = QStringLiteral("15.07.2026");

void checkValue(const Schnellfeld& field, const QString& text, const QString& line) {
    require(!text.isEmpty() && (field.kind != Schnellfeld::Text || text.size() <= field.width), "a value", line);
    if (field.kind == Schnellfeld::Choice)
        require(QString::fromUtf8(field.choices).split(u' ').contains(text), "a choice", line);
    if (field.kind == Schnellfeld::Number) require(readAmount(text) == Reading::Fits, "a number", line);
}

void checkLine(const QString& line) {
    static const std::vector<Schnelltier> herd{{1, QStringLiteral("1"), QStringLiteral("Sau")},
                                               {2, QStringLiteral("2"), QStringLiteral("Eber"), false, true},
                                               {3, QStringLiteral("f"), QStringLiteral("Sau"), true}};
    const Schnellzeile read = Schnellzeile_lesen(line, herd, Heute);
    require(read.sentence().isEmpty() == read.empty, "a sentence", line);
    if (!read.ready()) return;
    require(!read.animals.empty() && read.kind && read.day.isValid(), "whole", line);
    for (const auto& [field, text] : read.values) checkValue(*field, text, line);
}

}  // namespace
}  // namespace koben::fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace koben::fuzz;
    for (const QByteArray& line : raw(data, size).split('\n')) checkLine(QString::fromUtf8(line));
    return 0;
}
