#include "store/PageCheck.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <cmath>

#include "store/DatabaseError.h"

namespace koben {

namespace {

constexpr int Every = 100'000;  // instructions of SQLite's machine, a few milliseconds

/// How far a check has come. Where it takes longer than expected the rest is told in ever smaller steps: a bar that
/// stands at its end looks like a program that hangs.
int checked(qint64 instructions, qint64 pages, int from) {
    constexpr double perPage = 1200;  // instructions, as measured on large herds
    constexpr double sure = 0.9;
    double share = static_cast<double>(instructions) / (perPage * static_cast<double>(std::max<qint64>(pages, 1)));
    if (share > sure) share = 1 - (1 - sure) * std::exp((sure - share) / (1 - sure));
    return from + static_cast<int>(share * (100 - from));
}

}  // namespace

Watched::Watched(sqlite3* file, const FileProgress& go, std::function<int(qint64 instructions)> percent)
    : m_file(file), m_go(go), m_percent(std::move(percent)) {
    if (m_go) sqlite3_progress_handler(m_file, Every, &Watched::look, this);
}

Watched::~Watched() { sqlite3_progress_handler(m_file, 0, nullptr, nullptr); }

int Watched::look(void* self) {
    auto* work = static_cast<Watched*>(self);
    work->m_done += Every;
    return work->m_go(std::min(work->m_percent(work->m_done), 100)) ? 0 : 1;
}

bool finish(sqlite3* file, sqlite3_stmt* statement, const QString& text) {
    const int code = sqlite3_step(statement) & 0xFF;
    if (code != SQLITE_DONE && code != SQLITE_ROW && code != SQLITE_INTERRUPT) throwSqlite(file, text);
    return code != SQLITE_INTERRUPT;
}

std::optional<QString> checkPages(sqlite3* file, Check check, const FileProgress& go, int from) {
    const QString text =
        check == Check::Quick ? QStringLiteral("PRAGMA quick_check(1)") : QStringLiteral("PRAGMA integrity_check(1)");
    const qint64 pages = number(file, "PRAGMA page_count");
    const StatementHandle statement = prepare(file, text.toStdString());
    const Watched watched(file, go, [&](qint64 done) { return checked(done, pages, from); });
    if (!finish(file, statement.get(), text)) return std::nullopt;
    const QString found = columnValue(statement.get(), 0, Type::Text).toText();
    return found == u"ok" ? QString() : found;
}

void requireWhole(const QString& path) {
    sqlite3* raw = nullptr;
    const int code = sqlite3_open_v2(path.toUtf8().constData(), &raw, SQLITE_OPEN_READONLY, nullptr);
    const FileHandle file(raw);
    if (code != SQLITE_OK) throwSqlite(raw, QString());
    const qint64 size = number(raw, "PRAGMA page_count") * number(raw, "PRAGMA page_size");
    const QString found = size == QFileInfo(path).size()
                              ? checkPages(raw, Check::Full, {}).value_or(QString())
                              : QStringLiteral("%1 bytes instead of %2").arg(QFileInfo(path).size()).arg(size);
    if (QFileInfo(path + QStringLiteral("-wal")).size() == 0 && found.isEmpty()) return;
    const QString problem = QStringLiteral(
                                "Die Datei %1 kam nicht ganz auf den Datenträger. Es wurde nichts verändert. Bitte "
                                "prüfen Sie Platz und Verbindung des Datenträgers, und versuchen Sie es dann erneut.")
                                .arg(QDir::toNativeSeparators(path));
    throw DatabaseError(DatabaseError::Kind::Io, problem, problem + QStringLiteral(" (%1)").arg(found));
}

}  // namespace koben
