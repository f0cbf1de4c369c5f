#include "core/ErrorLog.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QStringList>

#include "store/Files.h"

namespace koben {

namespace {

constexpr qsizetype MostLines = 200;
constexpr qsizetype LongestLine = 1000;

QString masked(QString text, const QString& pattern, const QString& by) {
    return text.replace(QRegularExpression(pattern), by);
}

/// A quotation mark too many leaves it open what is a text: everything behind the first one goes.
QString withoutTexts(QString text, QChar mark) {
    if (text.count(mark) % 2 != 0) return text.left(text.indexOf(mark)) + u'?';
    return masked(text, QStringLiteral("%1[^%1]*%1").arg(mark), mark + QStringLiteral("?") + mark);
}

}  // namespace

ErrorLog::ErrorLog(const QString& folder) : m_path(folder + QStringLiteral("Fehlerprotokoll.txt")) {}

void ErrorLog::write(const QDateTime& when, const QString& detail) const {
    QFile file(m_path);
    QStringList lines;
    if (file.open(QIODevice::ReadOnly)) lines = QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
    file.close();
    lines += when.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss ")) + withoutValues(detail).left(LongestLine);
    QDir().mkpath(QFileInfo(m_path).path());
    writeFile(m_path, lines.mid(std::max<qsizetype>(lines.size() - MostLines, 0)).join(u'\n').toUtf8() + '\n');
}

QString withoutValues(const QString& detail) {
    QString text = withoutTexts(withoutTexts(detail.simplified(), u'\''), u'"');
    text = masked(text, QStringLiteral("#[^#]*#"), QStringLiteral("#?#"));
    // a number that does not belong to a name, a version or the number of an error or place
    return masked(text, QStringLiteral("(?<!SQLite )(?<!Zeichen )(?<![\\w.])\\d[\\d.,:]*"), QStringLiteral("?"));
}

}  // namespace koben
