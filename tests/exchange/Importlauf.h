#pragma once
// A run with an empty database and the import worked as a user's hand would.
#include "core/PZ_Koben_Subs_Datenbank.h"
#include "exchange/S_Importtabelle.h"
#include "tests/support/Fakes.h"

namespace koben {

class Importlauf : public TestRun {
public:
    Importlauf() {
        EXPECT_TRUE(QFile::copy(leereDatenbank(), koben.Datenbankpfad));
        db = koben.connect();
    }

    QString datei(const QByteArray& bytes, const QString& name = QStringLiteral("herde.csv")) const {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        return file.fileName();
    }

    /// Opens the form, the file in it, assigns what `zuordnen` says and starts the import with these answers.
    void importieren(const QString& path, std::deque<bool> answers,
                     const std::function<void(S_Importtabelle&)>& zuordnen = {}) {
        S_Importtabelle form(koben);
        screens.inputs = {path};
        screens.answers = std::move(answers);
        screens.work([&](Form&) {
            form.comöffnen.click();
            if (zuordnen) zuordnen(form);
            form.ok.click();
        });
        koben.run(form);
        EXPECT_TRUE(screens.answers.empty()) << "a question was not asked";
        EXPECT_EQ(screens.waiting, 0);
    }

    /// Rows of a statement: cells joined by "|", rows by a blank and ";".
    QString zeilen(const QString& sql) const {
        const Table table = db.table(sql);
        QStringList rows;
        for (int row = 0; row < table.rowCount(); ++row) {
            QStringList cells;
            for (int c = 0; c < table.columnCount(); ++c)
                cells += table.isNull(row, c) ? QStringLiteral("-") : table.text(row, c);
            rows += cells.join(u'|');
        }
        return rows.join(QStringLiteral("; "));
    }
    QString nummern() const { return zeilen(QStringLiteral("select Nummer from Sauen order by ID")); }
    qint64 anzahl() const { return db.table("select count(*) as n from Sauen").integer(0, 0); }

    /// What the user read, without the information before the preview and without the form's coming and going.
    QStringList meldungen() {
        QStringList found;
        for (const QString& line : screens.takeLog())
            if (line.startsWith(u'!') || line.startsWith("? ")) found += line;
        if (!found.isEmpty() && found.first().startsWith("! Es werden jetzt einige Zeilen")) found.removeFirst();
        return found;
    }

    Database db;

private:
    /// Made once: its thirty statements are not what is tried here.
    static QString leereDatenbank() {
        static const QTemporaryDir folder;
        const QString path = folder.filePath("leer.mdb");
        if (!QFile::exists(path)) {
            Workspace workspace;
            Datenbank_anlegen(workspace, path);
        }
        return path;
    }
};

}  // namespace koben
