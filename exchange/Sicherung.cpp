#include "exchange/Sicherung.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <algorithm>

#include "store/FileExchange.h"
#include "store/Files.h"

namespace koben {

const QString Sicherungsmuster = QStringLiteral("koben20_backup_*.zip");

namespace {

const QString DatabaseName = QStringLiteral("koben2.mdb");

FileProgress inPercent(const ShareDone& go) {
    if (!go) return {};
    return [go](int percent) { return go(percent / 100.0); };
}

[[noreturn]] void unproved(const QString& target, const QString& what) {
    throw DatabaseError(
        DatabaseError::Kind::Io,
        QStringLiteral("Die Datensicherung %1 konnte nicht erstellt werden, weil sie sich nicht so zurücklesen lässt, "
                       "wie sie geschrieben wurde (%2). Eine frühere Datensicherung bleibt unverändert. Bitte prüfen "
                       "Sie den Datenträger und die Datenbank (Optionen / Datenbank prüfen), und versuchen Sie es dann "
                       "erneut.")
            .arg(QFileInfo(target).fileName(), what));
}

/// Reads every file of the fresh archive back, and the database in it as one.
class Prover {
public:
    Prover(Koben& koben, const WorkFolder& work, const QString& target, Proof proof)
        : m_koben(koben), m_back(work.file(QStringLiteral("probe.mdb"))), m_target(target), m_proof(proof) {}

    bool prove(const QString& zip, const std::vector<ZipSource>& files, const ShareDone& go) const {
        try {
            return readBack(zip, files, part(go, 0, 0.4)) &&
                   (m_proof == Proof::Bytes || checkDatabase(part(go, 0.4, 1)));
        } catch (const ZipFault& fault) {
            unproved(m_target, fault.reason);
        } catch (const DatabaseError& error) {
            if (error.kind != DatabaseError::Kind::NotADatabase) throw;
            unproved(m_target, QStringLiteral("die Datenbank darin ist beschädigt"));
        }
    }

private:
    bool readBack(const QString& zip, const std::vector<ZipSource>& files, const ShareDone& go) const {
        const ZipReader reader(zip);
        if (reader.entries().size() != files.size()) unproved(m_target, QStringLiteral("Dateien fehlen"));
        if (const QString reason = Einwand(reader.entries()); !reason.isEmpty()) unproved(m_target, reason);
        for (size_t i = 0; i < files.size(); ++i) {
            if (reader.entries()[i].name != files[i].name) unproved(m_target, QStringLiteral("Dateien fehlen"));
            const bool database = files[i].name == DatabaseName;
            const bool looked = database && m_proof == Proof::Database;
            if (!reader.unpack(i, looked ? m_back : QString(), database ? go : ShareDone())) return false;
        }
        return true;
    }

    bool checkDatabase(const ShareDone& go) const {
        const auto found = m_koben.workspace.check(m_back, Check::Full, inPercent(go));
        if (!found) return false;
        if (!found->isEmpty()) unproved(m_target, QStringLiteral("die Datenbank darin ist beschädigt"));
        if (Workspace::rowCounts(m_back) != Workspace::rowCounts(m_koben.Datenbankpfad))
            unproved(m_target, QStringLiteral("in der Datenbank darin fehlen Daten"));
        return true;
    }

    Koben& m_koben;
    const QString m_back, m_target;
    const Proof m_proof;
};

/// "41 Buchungen" less or more; "" where there is no difference.
QString change(qint64 difference, const char* one, const char* many) {
    const qint64 amount = std::abs(difference);
    if (amount == 0) return {};
    return QStringLiteral("%1 %2").arg(amount).arg(QString::fromUtf8(amount == 1 ? one : many));
}

}  // namespace

Sicherungsinhalt Inhalt_zaehlen(const TableCounts& tables) {
    static const QStringList kinds{QStringLiteral("Belegung"),      QStringLiteral("Trächtigkeit"),
                                   QStringLiteral("Ferkelung"),     QStringLiteral("Absetzung"),
                                   QStringLiteral("Verschiebung"),  QStringLiteral("Verluste"),
                                   QStringLiteral("Ferkelverkauf"), QStringLiteral("Behandlung")};
    Sicherungsinhalt found;
    for (const auto& [table, rows] : tables) {
        if (table == u"Sauen") found.animals = rows;
        if (kinds.contains(table)) found.bookings += rows;
    }
    return found;
}

QString Sicherungsname(QDate day) {
    return QStringLiteral("koben20_backup_") + day.toString(QStringLiteral("yyyy_MM_dd")) + QStringLiteral(".zip");
}

QDate Sicherungstag(const QString& path) {
    static const QRegularExpression day(QStringLiteral("(\\d{4})[_-](\\d{2})[_-](\\d{2})"));
    const auto found = day.match(QFileInfo(path).fileName());
    return QDate(found.captured(1).toInt(), found.captured(2).toInt(), found.captured(3).toInt());
}

QStringList Ordnerdateien(const QString& folder) {
    QStringList names = QDir(folder).entryList(QDir::Files, QDir::Name | QDir::IgnoreCase);
    const auto own = [](const QString& name) {
        for (const char* ending : {".lock", "-wal", "-shm", "-journal", ".neu", ".koben-entwurf"})
            if (name.endsWith(QString::fromLatin1(ending), Qt::CaseInsensitive)) return true;
        return false;
    };
    names.erase(std::remove_if(names.begin(), names.end(), own), names.end());
    return names;
}

bool wirdGesichert(const QString& name) {
    static const QStringList excluded{QStringLiteral("DLL"), QStringLiteral("EXE"), QStringLiteral("HLP"),
                                      QStringLiteral("TXT"), QStringLiteral("OCX"), QStringLiteral("VBX"),
                                      QStringLiteral("INI"), QStringLiteral("DOC"), QStringLiteral("ZIP"),
                                      QStringLiteral("PDF")};
    return !excluded.contains(QFileInfo(name).suffix().toUpper());
}

bool Sicherung_erstellen(Koben& koben, const QString& target, Proof proof, const ShareDone& go) {
    constexpr double copied = 0.1, packed = 0.6;
    const WorkFolder work(QFileInfo(target).absolutePath());
    const QString copy = work.file(DatabaseName), draft = work.file(QStringLiteral("sicherung.zip"));
    if (!koben.workspace.copy(koben.Datenbankpfad, copy, inPercent(part(go, 0, copied)), false)) return false;
    std::vector<ZipSource> files;
    for (const QString& name : Ordnerdateien(koben.Datenordner))
        if (wirdGesichert(name)) files.push_back({name == DatabaseName ? copy : koben.Datenordner + name, name});
    if (!writeZip(draft, files, part(go, copied, packed))) return false;
    QFile::remove(copy);
    if (!Prover(koben, work, target, proof).prove(draft, files, part(go, packed, 1))) return false;
    if (const QString reason = replaceFile(draft, target); !reason.isEmpty())
        throw DatabaseError(DatabaseError::Kind::Io,
                            fileFailure(QStringLiteral("Die Datensicherung %1 kann nicht abgelegt werden")
                                            .arg(QDir::toNativeSeparators(target)),
                                        reason));
    return true;
}

Sicherungsinhalt Bestand_jetzt(const Koben& koben) { return Inhalt_zaehlen(Workspace::rowCounts(koben.Datenbankpfad)); }

QString Unterschied(const Sicherungsinhalt& backup, const Sicherungsinhalt& now, const QDate& today) {
    const qint64 days = backup.day.daysTo(today);
    const QString age = days == 0  ? QStringLiteral("von heute")
                        : days > 0 ? change(days, "Tag", "Tage") + QStringLiteral(" älter")
                                   : change(days, "Tag", "Tage") + QStringLiteral(" in der Zukunft");
    QStringList less, more;
    const auto sorted = [&](qint64 difference, const char* one, const char* many) {
        if (difference != 0) (difference < 0 ? less : more).append(change(difference, one, many));
    };
    sorted(backup.bookings - now.bookings, "Buchung", "Buchungen");
    sorted(backup.animals - now.animals, "Tier", "Tiere");
    QStringList told;
    for (const auto& [list, word] : {std::pair{less, " weniger"}, std::pair{more, " mehr"}})
        if (!list.isEmpty()) told += list.join(QStringLiteral(" und ")) + QString::fromUtf8(word);
    return age + QStringLiteral(", ") +
           (told.isEmpty() ? QStringLiteral("so viele Buchungen und Tiere wie jetzt")
                           : told.join(QStringLiteral(", ")) + QStringLiteral(" als jetzt"));
}

std::optional<QString> Datei_uebertragen(const QString& from, const QString& to, const ShareDone& go) {
    constexpr qint64 atOnce = 1 << 18;
    const QString draft = to + QStringLiteral(".neu");
    for (const QFileInfo& left :  // of a program that was killed while it copied
         QFileInfo(to).dir().entryInfoList({Sicherungsmuster + QStringLiteral(".neu")}, QDir::Files))
        QFile::remove(left.filePath());
    QFile in(from), out(draft);
    clearFileReason();
    if (!in.open(QIODevice::ReadOnly) || !out.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered))
        return fileReason();
    QString reason;
    bool on = true;
    while (on && reason.isEmpty() && !in.atEnd()) {
        const QByteArray bytes = in.read(atOnce);
        clearFileReason();
        if (bytes.isEmpty() || out.write(bytes) != bytes.size()) reason = fileReason();
        on = !go || go(static_cast<double>(in.pos()) / static_cast<double>(std::max<qint64>(in.size(), 1)));
    }
    out.close();
    if (on && reason.isEmpty()) reason = replaceFile(draft, to);
    if (!on || !reason.isEmpty()) QFile::remove(draft);
    return on ? std::optional(reason) : std::nullopt;
}

}  // namespace koben
