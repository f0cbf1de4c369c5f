// The settings file: any bytes are read; what was read, saved and read again is the same, and so is the file.
#include "core/Einstellungen.h"

#include <QTemporaryDir>

#include "core/PZ_Koben_Subs.h"
#include "tests/fuzz/Require.h"

namespace koben::fuzz {
namespace {

struct Ordner {
    QTemporaryDir folder{place()};
    QString file = folder.filePath(QStringLiteral("Einstellungen.ko2"));

    Variablen loadedFrom() const {
        Variablen v;
        v.Datenordner = folder.path() + u'/';
        Einstellungen_vorgeben(v, 2026);
        Einstellungen_laden(v);
        return v;
    }
    QByteArray savedBytes(const Variablen& v) const {
        require(Einstellungen_sichern(v).isEmpty(), "not saved");
        return readFile(file);
    }
};

QString singleLine(QString text) { return text.replace(u'\r', u' '); }

}  // namespace
}  // namespace koben::fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace koben::fuzz;
    static const Ordner folder;
    writeFile(folder.file, raw(data, size));
    const koben::Variablen first = folder.loadedFrom();
    const QByteArray saved = folder.savedBytes(first);
    const koben::Variablen second = folder.loadedFrom();
    require(first.Konfig_Zahl == second.Konfig_Zahl, "numbers");
    for (size_t i = 0; i < first.Konfig_Betrag.size(); ++i) {
        // the file holds ten places, two of them decimals
        const QString text = koben::Betrag_als_Punkttext(first.Konfig_Betrag[i]);
        if (text.size() <= 10) require(koben::Betrag_als_Punkttext(second.Konfig_Betrag[i]) == text, "an amount", text);
    }
    for (size_t i = 0; i < first.Konfig_Text.size(); ++i)
        require(singleLine(first.Konfig_Text[i]) == second.Konfig_Text[i], "a text", first.Konfig_Text[i]);
    require(folder.savedBytes(second) == saved, "the file saved twice", QString::fromLatin1(saved));
    return 0;
}
