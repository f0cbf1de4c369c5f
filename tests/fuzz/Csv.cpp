// Tables to import: any bytes are read to their end or refused in German; the same rows come from a table that holds
// every field in quotation marks.
#include <QTemporaryDir>

#include "exchange/Importdatei.h"
#include "tests/fuzz/Require.h"

namespace koben::fuzz {
namespace {

constexpr int Vorschau = 100;

QList<QStringList> linesFrom(Importdatei& file) {
    QList<QStringList> rows;
    file.zurueck();
    for (QStringList fields; file.naechste(fields);) rows.append(fields);
    return rows;
}

QByteArray tokensOf(const QStringList& fields) {
    QStringList quoted;
    for (QString field : fields) quoted += u'"' + field.replace(u'"', QStringLiteral("\"\"")) + u'"';
    return quoted.join(u';').toUtf8() + "\r\n";
}

void checkInput(Importdatei& file, const QString& path) {
    const QList<QStringList> rows = linesFrom(file);
    require(linesFrom(file) == rows, "read twice");
    QByteArray quoted = "\xef\xbb\xbf" + tokensOf(file.kopf());
    for (const QStringList& fields : rows) {
        require(fields.size() >= Importdatei::spalten, "too few fields");
        for (const QString& field : fields) require(!field.contains(u'\n') && !field.contains(u'\r'), "a line break");
        quoted += tokensOf(fields);
    }
    writeFile(path, quoted);
    Importdatei again = Importdatei::lesen(path);
    require(again.fehler().isEmpty() && again.kopf() == file.kopf(), "heads in quotation marks", again.fehler());
    const QList<QStringList> same = linesFrom(again);
    require(same.size() == rows.size(), "lines in quotation marks");
    for (qsizetype i = 0; i < rows.size(); ++i)
        require(same[i].first(rows[i].size()) == rows[i], "fields in quotation marks", rows[i].join(u'|'));
}

}  // namespace
}  // namespace koben::fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace koben;
    using namespace koben::fuzz;
    static const QTemporaryDir folder(place());
    const QString path = folder.filePath(QStringLiteral("t.csv"));
    writeFile(path, raw(data, size));
    Importdatei file = Importdatei::lesen(path);
    require(file.kopf().size() == Importdatei::spalten, "heads");
    const QString why = file.fehler();
    if (why.isEmpty()) {
        checkInput(file, path);
    } else {
        QStringList fields;
        require(why.startsWith(QStringLiteral("Die Datei ")) && why.endsWith(u'.'), "no sentence", why);
        require(!file.naechste(fields) && file.vorschau(Vorschau).isEmpty(), "lines of a refused file", why);
    }
    return 0;
}
