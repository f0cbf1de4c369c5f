// Tables to import: any bytes are read to their end or refused in German; the same rows come from a table that holds
// every field in quotation marks.
#include <QTemporaryDir>

#include "exchange/Importdatei.h"
#include "tests/fuzz/Forderung.h"

namespace koben::fuzz {
namespace {

constexpr int Vorschau = 100;

QList<QStringList> zeilen(Importdatei& file) {
    QList<QStringList> rows;
    file.zurueck();
    for (QStringList fields; file.naechste(fields);) rows.append(fields);
    return rows;
}

QByteArray inMarken(const QStringList& fields) {
    QStringList quoted;
    for (QString field : fields) quoted += u'"' + field.replace(u'"', QStringLiteral("\"\"")) + u'"';
    return quoted.join(u';').toUtf8() + "\r\n";
}

void pruefe(Importdatei& file, const QString& path) {
    const QList<QStringList> rows = zeilen(file);
    fordere(zeilen(file) == rows, "read twice");
    QByteArray quoted = "\xef\xbb\xbf" + inMarken(file.kopf());
    for (const QStringList& fields : rows) {
        fordere(fields.size() >= Importdatei::spalten, "too few fields");
        for (const QString& field : fields) fordere(!field.contains(u'\n') && !field.contains(u'\r'), "a line break");
        quoted += inMarken(fields);
    }
    schreibe(path, quoted);
    Importdatei again = Importdatei::lesen(path);
    fordere(again.fehler().isEmpty() && again.kopf() == file.kopf(), "heads in quotation marks", again.fehler());
    const QList<QStringList> same = zeilen(again);
    fordere(same.size() == rows.size(), "lines in quotation marks");
    for (qsizetype i = 0; i < rows.size(); ++i)
        fordere(same[i].first(rows[i].size()) == rows[i], "fields in quotation marks", rows[i].join(u'|'));
}

}  // namespace
}  // namespace koben::fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace koben;
    using namespace koben::fuzz;
    static const QTemporaryDir folder(platz());
    const QString path = folder.filePath(QStringLiteral("t.csv"));
    schreibe(path, roh(data, size));
    Importdatei file = Importdatei::lesen(path);
    fordere(file.kopf().size() == Importdatei::spalten, "heads");
    const QString why = file.fehler();
    if (why.isEmpty()) {
        pruefe(file, path);
    } else {
        QStringList fields;
        fordere(why.startsWith(QStringLiteral("Die Datei ")) && why.endsWith(u'.'), "no sentence", why);
        fordere(!file.naechste(fields) && file.vorschau(Vorschau).isEmpty(), "lines of a refused file", why);
    }
    return 0;
}
