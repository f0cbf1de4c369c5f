#pragma once
// The floor: the same results by hand-written SQLite statements on a copy of the file, with indexes made for them.
#include <sqlite3.h>

#include <QDate>
#include <QString>
#include <memory>
#include <string>
#include <vector>

namespace koben {

/// An open file, read and written through SQLite alone.
class Datei {
public:
    explicit Datei(const QString& path);
    ~Datei() { sqlite3_close(m_file); }
    Datei(const Datei&) = delete;
    Datei& operator=(const Datei&) = delete;

    void ausfuehren(const std::string& sql);
    /// Several statements as one transaction.
    void buchen(const std::vector<std::string>& statements);
    /// Runs one statement for each value of its parameter.
    void jede(const std::string& sql, const std::vector<qint64>& values);
    /// Runs one statement for each row of texts, which are its parameters.
    void jede(const std::string& sql, const std::vector<std::vector<std::string>>& rows);
    /// Reads all rows into one block of memory, each value as it lies in the file. The number of rows.
    qint64 lesen(const std::string& sql);
    /// The whole numbers of the first column.
    std::vector<qint64> zahlen(const std::string& sql);

private:
    using Statement = std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)>;
    Statement vorbereiten(const std::string& sql);
    void schritt(sqlite3_stmt* statement);
    [[noreturn]] void scheitern(const std::string& sql) const;
    sqlite3* m_file = nullptr;
};

/// Gives the copy the floor's indexes, and takes away the triggers by which the program follows changes.
void Boden_anlegen(const QString& path);

namespace boden {

/// The herd list: all shown fields of the animals that meet the condition, "" for all.
std::string liste(const std::string& where);
inline const std::string bestand = "Abgangsdatum IS NULL";
/// The animals in stock, by their own index.
std::string Bestandsliste();
/// Counters, latest and next days of one animal.
std::string ableiten(qint64 id);
/// The same for all sows, with so many days from a farrowing to the next service.
std::string alle_ableiten(int tageFerkelungBelegung);
/// The status of the sows in stock that meet the condition; animals that left keep "".
std::string status(const std::string& where);
std::string iso(QDate date);
/// The different values of an indexed field, found by leaps.
std::string verschiedene(const std::string& table, const std::string& field);

}  // namespace boden
}  // namespace koben
