#include "exchange/Stallseite.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUuid>

#include "core/Arbeitsplan.h"
#include "core/Buchungen.h"
#include "core/Einstellungen.h"
#include "core/Konfig.h"
#include "core/PZ_Koben_Subs.h"
#include "store/Files.h"

namespace koben {

const QString Stallseite = QStringLiteral("KOBEN-Stall.html");

namespace {

constexpr int PlanTage = 14;

const QByteArray FarmBegins = "<script type=\"text/plain\" id=\"betrieb\">";
const QByteArray FileBegins = "<script type=\"text/plain\" id=\"datei\">";
const QByteArray BlockEnds = "</script>";

/// As the exchange file has it, so that the page finds the animal's number again.
QString asInFile(const QString& text) {
    return ausWindows1252(nachWindows1252(Hochkomma_ersetzen(withoutControls(text))));
}

QString isoDay(qint64 day) { return QDate::fromJulianDay(day).toString(Qt::ISODate); }

/// The kind of booking by which work is done; of work that none ends, a treatment.
QString kindOf(const Arbeit& work) {
    for (const auto kind :
         {Buchungsart::Belegung, Buchungsart::Trächtigkeit, Buchungsart::Ferkelung, Buchungsart::Absetzung})
        if (work.doneLater == QStringLiteral("L_") + QString::fromUtf8(angaben(kind).table))
            return QString::fromUtf8(angaben(kind).table);
    return QStringLiteral("Behandlung");
}

class Betriebsblock {
public:
    Betriebsblock(Koben& koben, const Database& db, const Exportauswahl& choice)
        : m_koben(koben), m_db(db), m_choice(choice), m_today(Datum_aus_Text(koben.Heute)) {}

    QByteArray json(const QString& mark) {
        plan();
        const QJsonObject farm{{"id", mark},
                               {"name", m_koben.Konfig_Text[Text::Berichtskopf].trimmed()},
                               {"made", m_koben.platform.now().toMSecsSinceEpoch()},
                               {"planUntil", m_today.addDays(PlanTage - 1).toString(Qt::ISODate)},
                               {"works", m_works},
                               {"plan", m_plan},
                               {"medicines", medicines()},
                               {"spans", spans()}};
        return QJsonDocument(farm).toJson(QJsonDocument::Compact);
    }

private:
    void plan() {
        const Table options = m_db.table(QStringLiteral("select * from Arbeitsplanoptionen"));
        QStringList names;
        for (int row = 0; row < options.rowCount(); ++row)
            names.append(Hochkomma_ersetzen(options.text(row, options.columnOf(u"Arbeitsart"))));
        const std::vector<Arbeit> works = Arbeiten_lesen(options, names);
        for (const Arbeit& work : works) m_works.append(QJsonArray{work.name, kindOf(work), work.ends()});
        const auto today = static_cast<qint32>(m_today.toJulianDay());
        const Tagesarbeit open = computeTagesarbeit(m_db, works, today);
        addRows(open.animals, open.overdue);
        const Planzeitraum period{today, today + PlanTage - 1};
        const Table animals = Tiere_lesen(m_db, works, period, {.sowsOnly = m_choice.nurSauen});
        addRows(animals, Arbeitsplan_berechnen(animals, works, period, {}, [](int) { return true; }));
    }

    void addRows(const Table& animals, const std::vector<Faelligkeit>& rows) {
        if (rows.empty()) return;
        const int number = animals.columnOf(u"Nummer"), kind = animals.columnOf(u"Art"),
                  pen = animals.columnOf(u"Stallnr");
        for (const Faelligkeit& row : rows)
            if (!m_choice.nurSauen || animals.text(row.animal, kind) == u"Sau")
                m_plan.append(QJsonArray{row.work, isoDay(row.from), isoDay(row.to),
                                         asInFile(animals.text(row.animal, number)),
                                         asInFile(animals.text(row.animal, pen))});
    }

    QJsonArray medicines() const {
        const Table rows = m_db.table(
            QStringLiteral("select Medikament, Behandlungsart, Menge, Einheit, Verabreichungsart, Wartezeit_Tage, "
                           "Kosten_je_Gabe from Medikamente order by Medikament"));
        QJsonArray list;
        for (int row = 0; row < rows.rowCount(); ++row) {
            QJsonArray medicine;
            for (int column = 0; column < 7; ++column) medicine.append(asInFile(rows.text(row, column)));
            list.append(medicine);
        }
        return list;
    }

    QJsonObject spans() const {
        const auto& slot = m_koben.Konfig_Zahl;
        return {{"cycle", slot[Zahl::ZyklusPruefen] == 1},
                {"birth", slot[Zahl::GeburtPruefen] == 1},
                {"tolerance", slot[Zahl::ToleranzTage]},
                {"serviceLitter", slot[Zahl::TageBelegungFerkelung]},
                {"litterService", slot[Zahl::TageFerkelungBelegung]},
                {"litterWeaning", slot[Zahl::TageFerkelungAbsetzung]},
                {"weaningService", slot[Zahl::TageAbsetzungBelegung]},
                {"serviceCheck", slot[Zahl::TageBelegungKontrolle]},
                {"birthService", slot[Zahl::TageGeburtBelegung]}};
    }

    Koben& m_koben;
    const Database& m_db;
    const Exportauswahl& m_choice;
    const QDate m_today;
    QJsonArray m_works, m_plan;
};

/// The content of a file, or nothing with the reason.
QByteArray contentOf(const QString& path, QString& reason) {
    clearFileReason();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        reason = fileReason();
        return {};
    }
    return file.readAll();
}

/// What a page says of its farm; empty where it is none.
QJsonObject farmOf(const QByteArray& page) {
    const qsizetype from = page.indexOf(FarmBegins);
    const qsizetype to = from < 0 ? -1 : page.indexOf(BlockEnds, from);
    if (to < 0) return {};
    const qsizetype content = from + FarmBegins.size();
    return QJsonDocument::fromJson(QByteArray::fromBase64(page.mid(content, to - content))).object();
}

/// The mark that an older page bears, or a new one.
QString markOf(const QByteArray& olderPage) {
    const QString mark = farmOf(olderPage).value(QStringLiteral("id")).toString();
    return mark.isEmpty() ? QUuid::createUuid().toString(QUuid::WithoutBraces) : mark;
}

QString failure(const Koben& koben, const QString& reason) {
    return fileFailure(QStringLiteral("Die Seite für das Telefon, %1, kann nicht geschrieben werden")
                           .arg(koben.Datenordner + Stallseite),
                       reason);
}

/// In base64, which cannot end the block. False where the page has no such block.
bool fill(QByteArray& page, const QByteArray& block, const QByteArray& content) {
    const qsizetype at = page.indexOf(block + BlockEnds);
    if (at < 0) return false;
    page.insert(at + block.size(), content.toBase64());
    return true;
}

}  // namespace

std::optional<QDateTime> barnPageMade(const QString& folder) {
    QString none;
    const QJsonValue made = farmOf(contentOf(folder + Stallseite, none)).value(QStringLiteral("made"));
    if (!made.isDouble()) return std::nullopt;
    return QDateTime::fromMSecsSinceEpoch(made.toInteger());
}

QString composeBarnPage(Koben& koben, const Database& db, const Exportauswahl& choice, const QByteArray& exchangeFile,
                        QByteArray& page) {
    const QString shipped = koben.Programmordner + "Stall.html";
    QString reason, none;
    page = contentOf(shipped, reason);
    if (!reason.isEmpty())
        return failure(koben, QStringLiteral("die Vorlage %1 lässt sich nicht lesen: %2").arg(shipped, reason));
    try {
        const QByteArray older = contentOf(koben.Datenordner + Stallseite, none);
        const QByteArray farm = Betriebsblock(koben, db, choice).json(markOf(older));
        if (!fill(page, FarmBegins, farm) || !fill(page, FileBegins, exchangeFile))
            return failure(koben, QStringLiteral("die Vorlage %1 ist beschädigt").arg(shipped));
    } catch (const DatabaseError& error) {
        return failure(koben, error.message());
    }
    return {};
}

QString keepBarnPage(Koben& koben, const QByteArray& page) {
    const QString path = koben.Datenordner + Stallseite;
    const QString reason = writeFileThrough(path + ".neu", path, page);
    return reason.isEmpty() ? reason : failure(koben, reason);
}

QString writeBarnPage(Koben& koben, const Database& db, const Exportauswahl& choice, const QByteArray& exchangeFile) {
    QByteArray page;
    const QString trouble = composeBarnPage(koben, db, choice, exchangeFile, page);
    return trouble.isEmpty() ? keepBarnPage(koben, page) : trouble;
}

QByteArray servedPage(QByteArray page) {
    static const QByteArray nothing = "default-src 'none';";
    const qsizetype at = page.indexOf(nothing);
    return at < 0 ? page : page.insert(at + nothing.size(), " connect-src 'self';");
}

}  // namespace koben
