#include "core/Einstellungen.h"

#include <QDir>
#include <QFile>
#include <algorithm>
#include <tuple>

#include "core/Konfig.h"
#include "core/PZ_Koben_Subs.h"
#include "store/Files.h"

namespace koben {
namespace {

constexpr int kopfZeilen = 101 + 11;

/// The characters of the bytes 0x80 to 0x9F; bytes without a meaning stand for themselves.
constexpr char16_t hohe[32] = {0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
                               0x2039, 0x0152, 0x8D,   0x017D, 0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
                               0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

char alsByte(char16_t c) {
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) return static_cast<char>(c);
    const auto* hit = std::find(std::begin(hohe), std::end(hohe), c);
    return hit == std::end(hohe) ? '?' : static_cast<char>(0x80 + (hit - hohe));
}

QString dateiname(const Variablen& v) { return v.Datenordner + QStringLiteral("Einstellungen.ko2"); }
QString entwurf(const Variablen& v) { return dateiname(v) + QStringLiteral(".koben-entwurf"); }

/// Whether a draft of an earlier version may be called so: behind the file's name six letters by chance. What reads as
/// a word ("backup", "Archiv") is a user's copy, unless there is nothing in it.
bool isOldDraft(const QFileInfo& file, const Variablen& v) {
    const QString letters = file.fileName().mid(QFileInfo(dateiname(v)).fileName().size() + 1);
    const auto isAscii = [](QChar c) { return c.isLetter() && c.unicode() < 128; };
    if (letters.size() != 6 || !std::all_of(letters.begin(), letters.end(), isAscii)) return false;
    const QString rest = letters.mid(1);
    return file.size() == 0 || (rest != rest.toLower() && letters != letters.toUpper());
}

/// The lines of a text file; a last one without a line break counts, with or without carriage returns.
QStringList zeilen(const QByteArray& bytes) {
    QStringList lines = ausWindows1252(bytes).split(u'\n');
    if (lines.last().isEmpty()) lines.removeLast();
    for (QString& line : lines) {
        if (line.endsWith(u'\r')) line.chop(1);
    }
    return lines;
}

/// Fills the arrays up to the first line that is missing or not what it should be.
void uebernehme(const QStringList& lines, Variablen& v) {
    qsizetype at = 0;
    for (qint16& number : v.Konfig_Zahl) {
        bool ok = false;
        const qint16 value = at < lines.size() ? lines[at].trimmed().toShort(&ok) : qint16{0};
        if (!ok) return;
        number = value;
        ++at;
    }
    for (Money& amount : v.Konfig_Betrag) {
        const auto value = at < lines.size() ? Betrag_lesen(lines[at].trimmed()) : std::nullopt;
        if (!value) return;
        amount = *value;
        ++at;
    }
    for (QString& text : v.Konfig_Text) {
        if (at == lines.size()) return;
        text = lines[at++];
    }
}

/// A text must not break its line.
QString einzeilig(QString text) {
    text.replace(Crlf, QStringLiteral(" "));
    return text.replace(u'\r', u' ').replace(u'\n', u' ');
}

QString inhalt(const Variablen& v) {
    QStringList lines;
    lines.reserve(kopfZeilen + static_cast<int>(v.Konfig_Text.size()));
    for (const qint16 number : v.Konfig_Zahl) {
        lines += (number < 0 ? QString() : QStringLiteral(" ")) + QString::number(number) + u' ';
    }
    for (const Money amount : v.Konfig_Betrag) lines += Betrag_formatieren(10, amount).trimmed();
    for (const QString& text : v.Konfig_Text) lines += einzeilig(text);
    return lines.join(Crlf) + Crlf;
}

}  // namespace

void Einstellungen_vorgeben(Variablen& v, int currentYear) {
    v.Konfig_Zahl.fill(0);
    v.Konfig_Betrag.fill({});
    v.Konfig_Text.fill({});
    const std::pair<int, int> defaults[] = {{Zahl::TageBelegungFerkelung, 116},
                                            {Zahl::TageFerkelungAbsetzung, 30},
                                            {Zahl::TageAbsetzungBelegung, 6},
                                            {Zahl::TageFerkelungBelegung, 36},
                                            {Zahl::TageBelegungKontrolle, 22},
                                            {Zahl::TageGeburtBelegung, 365},
                                            {Zahl::ToleranzTage, 14},
                                            {Zahl::SicherungTage, 14},
                                            {Zahl::Geburtsgewicht, 1000},
                                            {Zahl::StatistikJahrVon, 2005},
                                            {Zahl::StatistikJahrBis, currentYear},
                                            {Zahl::StatistikWurfVon, 1},
                                            {Zahl::StatistikWurfBis, 10},
                                            {Zahl::BerichtZeilen, 60},
                                            {Zahl::BerichtDatum, 1}};
    for (const auto& [slot, value] : defaults) v.Konfig_Zahl[static_cast<size_t>(slot)] = static_cast<qint16>(value);
}

void Einstellungen_laden(Variablen& v) {
    QFile file(dateiname(v));
    Einstellungen_uebernehmen(file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray(), v);
}

void Einstellungen_uebernehmen(const QByteArray& bytes, Variablen& v) {
    uebernehme(zeilen(bytes), v);
    QString& separator = v.Konfig_Text[Text::Trenner];
    if (separator.trimmed().isEmpty()) separator = QStringLiteral(" | ");
}

int Einstellungen_schadhafte_Zeile(const QByteArray& bytes) {
    const QStringList lines = zeilen(bytes);
    const auto numbers = static_cast<qsizetype>(std::tuple_size_v<decltype(Variablen::Konfig_Zahl)>);
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QString text = lines[i].trimmed();
        bool good = std::none_of(lines[i].begin(), lines[i].end(), [](QChar c) { return c < u' ' && c != u'\t'; });
        if (i < numbers)
            text.toShort(&good);
        else if (i < kopfZeilen)
            good = Betrag_lesen(text).has_value();
        if (!good) return static_cast<int>(i) + 1;
    }
    const bool whole =
        lines.size() >= kopfZeilen + static_cast<qsizetype>(std::tuple_size_v<decltype(Variablen::Konfig_Text)>);
    return whole || bytes.endsWith('\n') ? 0 : static_cast<int>(std::max<qsizetype>(lines.size(), 1));
}

QString Einstellungen_sichern(const Variablen& v) {
    if (writeFileThrough(entwurf(v), dateiname(v), nachWindows1252(inhalt(v))).isEmpty()) return {};
    return QStringLiteral(
               "Die Einstellungen konnten nicht in die Datei %1 geschrieben werden (Datenträger voll oder "
               "schreibgeschützt?). Die bisherige Datei bleibt unverändert. Bitte schaffen Sie Platz oder prüfen Sie, "
               "ob "
               "Sie im Datenordner schreiben dürfen.")
        .arg(QDir::toNativeSeparators(dateiname(v)));
}

void Einstellungen_aufraeumen(const Variablen& v) {
    QFile::remove(entwurf(v));
    const QFileInfo settings(dateiname(v));
    const QStringList named{settings.fileName() + QStringLiteral(".??????")};
    for (const QFileInfo& file :
         settings.dir().entryInfoList(named, QDir::Files | QDir::NoSymLinks | QDir::CaseSensitive))
        if (isOldDraft(file, v)) QFile::remove(file.filePath());
}

QByteArray nachWindows1252(const QString& text) {
    QByteArray bytes;
    bytes.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i].isLowSurrogate() && i > 0 && text[i - 1].isHighSurrogate()) continue;  // its "?" stands already
        bytes.append(alsByte(text[i].unicode()));
    }
    return bytes;
}

QString ausWindows1252(const QByteArray& bytes) {
    QString text(bytes.size(), Qt::Uninitialized);
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        const auto byte = static_cast<uchar>(bytes[i]);
        text[i] = QChar(byte >= 0x80 && byte < 0xA0 ? hohe[byte - 0x80] : char16_t{byte});
    }
    return text;
}

bool Textdatei_schreiben(const QString& path, const QString& text) {
    QByteArray bytes = nachWindows1252(text);
    if (bytes.contains('\n')) bytes.replace("\r\n", "\n").replace("\n", "\r\n");  // lone line feeds become whole breaks
    return writeFile(path, bytes).isEmpty();
}

}  // namespace koben
