// The takeover of a whole farm from a file of the old engine.
#include <QDir>
#include <QFile>

#include "bench/Floor.h"
#include "bench/Program.h"
#include "tests/support/OldFileWriter.h"

namespace koben {
namespace {

const QString OldFolder = QStringLiteral(KOBEN_BENCH_CACHE "/koben1");

/// The present farm as the predecessor's database; made once.
void writeOldFarm(const Database& db) {
    const QString path = OldFolder + QStringLiteral("/koben.mdb");
    QDir().mkpath(OldFolder);
    OldFileWriter old(4);
    old.program();
    for (const QString& name : db.tables()) {
        const std::vector<Field> fields = db.fields(name);
        Statement rows = db.prepare(QStringLiteral("select * from ") + name);
        rows.bind({});
        while (rows.next()) {
            OldFileWriter::Fields cells;
            for (size_t i = 0; i < fields.size(); ++i)
                if (const int column = static_cast<int>(i); !rows.isNull(column))
                    cells.append({fields[i].name, rows.value(column)});
            old.row(name, cells);
        }
    }
    const auto write = [](const QString& to, const QByteArray& bytes) {
        QFile file(to);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            throw std::runtime_error("cannot write the old farm");
    };
    write(path, old.bytes());
    write(OldFolder + QStringLiteral("/koben.exe"), "x");
}

qint64 bookings(const Database& db) {
    return db.table(QStringLiteral("select count(*) as n from Belegung")).integer(0, 0);
}

Row takeOver() {
    return {QStringLiteral("takeover, the whole farm"), seldom,
            [made = false](Program& p, Stopwatch& watch) mutable {
                Database db = p.koben().connect();
                if (!std::exchange(made, true)) writeOldFarm(db);
                p.open("PO_Update", [&](Form& form) {
                    auto& folder = control<TextBox>(form, "pfad");
                    folder.type(OldFolder);
                    folder.leave();
                    watch.measure([&] { control<Button>(form, "start").click(); });
                });
                return bookings(db);
            },
            [](SqliteFile& file, Stopwatch& watch) {
                const std::string source = KOBEN_BENCH_CACHE "/quelle.mdb";
                QFile::remove(QString::fromStdString(source));
                file.execute("VACUUM INTO '" + source + "'");
                file.execute("ATTACH '" + source + "' AS quelle");
                watch.measure([&] {
                    file.execute("BEGIN IMMEDIATE");
                    for (const std::string& table : file.texts("SELECT name FROM koben_tables ORDER BY position")) {
                        file.execute("DELETE FROM main.\"" + table + "\"");
                        file.execute("INSERT INTO main.\"" + table + "\" SELECT * FROM quelle.\"" + table + "\"");
                    }
                    file.execute("COMMIT");
                });
                file.execute("DETACH quelle");
                return file.numbers("SELECT count(*) FROM Belegung").front();
            },
            Start::EachTime};
}

}  // namespace

std::vector<Row> Rows_Altdaten(const Sample&) { return {takeOver()}; }

}  // namespace koben
