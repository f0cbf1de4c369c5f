#include "core/Textdatei.h"

#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

#include "core/Einstellungen.h"

namespace koben {

QString textOfAnyEditor(const QByteArray& bytes) {
    QStringDecoder utf8(QStringDecoder::Utf8, QStringConverter::Flag::Stateless);
    QString text = utf8.decode(bytes);
    if (utf8.hasError()) text = ausWindows1252(bytes);
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
    for (QChar& c : text)
        if (c != u'\n' && c.category() == QChar::Other_Control) c = u' ';
    return text;
}

QString readShippedText(const QString& path, qint64 largest, QString& trouble) {
    QFile file(path);
    trouble = !QFileInfo(path).isFile() ? QStringLiteral("weil die Datei fehlt.")
              : file.size() > largest || !file.open(QIODevice::ReadOnly)
                  ? QStringLiteral("weil sich die Datei nicht lesen lässt.")
                  : QString();
    return trouble.isEmpty() ? textOfAnyEditor(file.readAll()) : QString();
}

}  // namespace koben
