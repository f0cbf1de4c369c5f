#include "exchange/Importdatei.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStringDecoder>
#include <algorithm>

#include "core/Einstellungen.h"
#include "core/Variablen.h"

namespace koben {
namespace {

constexpr qint64 groessteDatei = 256LL * 1024 * 1024;

bool istZeilenende(QChar c) { return c == u'\n' || c == u'\r'; }

QString gruende(const QString& path, const QString& grund, const QString& abhilfe) {
    return QStringLiteral("Die Datei %1 kann nicht als CSV-Datei eingelesen werden, weil...").arg(path) + Crlf + Crlf +
           QStringLiteral("...") + grund + Crlf + Crlf + abhilfe;
}

/// Why the bytes are no text, as cause and remedy; both "" where they are.
std::pair<QString, QString> keinText(const QByteArray& bytes) {
    if (bytes.isEmpty())
        return {QStringLiteral("sie leer ist."),
                QStringLiteral("Bitte speichern Sie die Tabelle noch einmal als CSV-Datei.")};
    const bool utf16 = bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF");
    if (utf16)
        return {QStringLiteral("sie als \"Unicode-Text\" (UTF-16) gespeichert ist."),
                QStringLiteral("Bitte speichern Sie die Tabelle im Format \"CSV (Trennzeichen-getrennt)\".")};
    if (bytes.contains('\0'))
        return {
            QStringLiteral("sie keine Textdatei ist, zum Beispiel eine Arbeitsmappe oder eine Datenbank."),
            QStringLiteral("Bitte öffnen Sie die Datei in dem Programm, mit dem sie erstellt wurde, und speichern Sie "
                           "sie dort im Format \"CSV (Trennzeichen-getrennt)\".")};
    return {};
}

QString entschluesselt(QByteArray bytes) {
    if (bytes.endsWith('\x1A')) bytes.chop(1);  // the end mark of old programs
    QStringDecoder utf8(QStringDecoder::Utf8, QStringConverter::Flag::Stateless);
    const QString text = utf8.decode(bytes);  // drops a mark at the begin
    return utf8.hasError() ? ausWindows1252(bytes) : text;
}

/// Reads the bytes; otherwise the reason why not.
QString rohdaten(const QString& path, QByteArray& bytes) {
    const QFileInfo info(path);
    if (!info.exists()) return QStringLiteral("sie nicht vorhanden ist.");
    if (!info.isFile()) return QStringLiteral("sie keine gewöhnliche Datei ist.");
    if (info.size() > groessteDatei) return QStringLiteral("sie größer als 256 MB ist.");
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return QStringLiteral("sie nicht zum Lesen geöffnet werden kann.");
    bytes = file.readAll();
    if (file.error() != QFileDevice::NoError) return QStringLiteral("beim Lesen ein Fehler aufgetreten ist.");
    return {};
}

/// A field in quotation marks at the begin of `rest`: its text and where the line goes on; -1 where it is none.
qsizetype feldInMarken(QStringView rest, QChar trenner, QString& feld) {
    if (!rest.startsWith(u'"')) return -1;
    feld.clear();
    for (qsizetype i = 1; i < rest.size(); ++i) {
        if (rest[i] != u'"') {
            feld += rest[i];
        } else if (i + 1 < rest.size() && rest[i + 1] == u'"') {
            feld += rest[i++];
        } else {
            while (++i < rest.size() && rest[i] == u' ') continue;
            return i == rest.size() || rest[i] == trenner ? i : -1;
        }
    }
    return -1;
}

/// C0, C1, and the two separators that break lines.
bool isControl(QChar c) {
    return c < u' ' || (c >= QChar(0x7f) && c < QChar(0xa0)) || c == QChar::LineSeparator ||
           c == QChar::ParagraphSeparator;
}

/// Makes each run of control characters one blank; false where there is none.
bool replaceControls(QString& field) {
    if (std::none_of(field.cbegin(), field.cend(), isControl)) return false;
    static const QRegularExpression controls(QStringLiteral("[\\p{Cc}\\x{2028}\\x{2029}]+"));
    field.replace(controls, QStringLiteral(" "));
    return true;
}

}  // namespace

QStringList CSV_trennen(QStringView zeile, QChar trenner) {
    QStringList felder;
    qsizetype at = 0;
    for (;;) {
        QString feld;
        const qsizetype length = feldInMarken(zeile.mid(at), trenner, feld);
        qsizetype end = at + length;
        if (length < 0) {
            end = zeile.indexOf(trenner, at);
            if (end < 0) end = zeile.size();
            feld = zeile.mid(at, end - at).toString();
        }
        felder.append(feld);
        if (end >= zeile.size()) break;
        at = end + 1;
    }
    for (int i = 1; i < Importdatei::spalten; ++i) felder.append(QString());
    return felder;
}

Importdatei Importdatei::lesen(const QString& path, QChar trenner) {
    Importdatei datei;
    datei.m_trenner = trenner;
    const QString name = QDir::toNativeSeparators(path);
    QByteArray bytes;
    if (const QString grund = rohdaten(path, bytes); !grund.isEmpty()) {
        datei.m_fehler = gruende(name, grund, QStringLiteral("Bitte prüfen Sie, ob die Datei die richtige ist."));
        return datei;
    }
    if (const auto [grund, abhilfe] = keinText(bytes); !grund.isEmpty()) {
        datei.m_fehler = gruende(name, grund, abhilfe);
        return datei;
    }
    datei.m_text = entschluesselt(std::move(bytes));
    if (const QString grund = datei.pruefen(); !grund.isEmpty()) {
        datei.m_fehler = gruende(name, grund,
                                 QStringLiteral("Bitte speichern Sie die Tabelle so, dass in der ersten Zeile die "
                                                "Überschriften stehen und die Spalten mit Semikolon ; getrennt sind."));
        datei.m_text.clear();
    }
    datei.zurueck();
    return datei;
}

QString Importdatei::pruefen() const {
    qsizetype at = 0;
    const QStringView kopfzeile = zeile(at);
    if (kopfzeile.contains(m_trenner)) return {};
    if (kopfzeile.contains(u'\t'))
        return QStringLiteral("die Spalten in der ersten Zeile mit Tabulator und nicht mit Semikolon getrennt sind.");
    if (kopfzeile.contains(u','))
        return QStringLiteral("die Spalten in der ersten Zeile mit Komma und nicht mit Semikolon getrennt sind.");
    return QStringLiteral("in der ersten Zeile kein Semikolon steht.");
}

QString Importdatei::Trennzeichen(const QString& path) {
    Importdatei datei;
    QByteArray bytes;
    if (!rohdaten(path, bytes).isEmpty() || !keinText(bytes).first.isEmpty()) return {};
    datei.m_text = entschluesselt(std::move(bytes));
    qsizetype at = 0;
    const QString kopfzeile = datei.zeile(at).toString();
    QString found;
    for (const QChar trenner : {u';', u'\t', u','})
        if (kopfzeile.contains(trenner)) found += trenner;
    std::stable_sort(found.begin(), found.end(),
                     [&](QChar a, QChar b) { return kopfzeile.count(a) > kopfzeile.count(b); });
    return found;
}

QStringView Importdatei::zeile(qsizetype& at) const {
    const qsizetype begin = at;
    while (at < m_text.size() && !istZeilenende(m_text[at])) ++at;
    const QStringView line = QStringView(m_text).mid(begin, at - begin);
    if (at < m_text.size()) at += m_text[at] == u'\r' && at + 1 < m_text.size() && m_text[at + 1] == u'\n' ? 2 : 1;
    return line;
}

QString Importdatei::vorschau(int limit) const {
    QString text;
    for (qsizetype at = 0; at < m_text.size() && text.size() < limit;) text.append(zeile(at)).append(Crlf);
    return text;
}

QStringList Importdatei::kopf() const {
    qsizetype at = 0;
    QStringList heads = CSV_trennen(zeile(at), m_trenner).first(spalten);
    for (QString& head : heads) replaceControls(head);
    return heads;
}

void Importdatei::zurueck() {
    m_at = 0;
    m_line = 1;
    m_controls = false;
    zeile(m_at);
}

bool Importdatei::naechste(QStringList& felder) {
    while (m_at < m_text.size()) {
        const QStringView line = zeile(m_at);
        ++m_line;
        if (line.trimmed().isEmpty()) continue;
        felder = CSV_trennen(line, m_trenner);
        for (QString& field : felder) m_controls |= replaceControls(field);
        return true;
    }
    return false;
}

}  // namespace koben
