#include "tests/core/NaiverZyklus.h"

#include "core/PZ_Koben_Subs.h"

namespace koben {
namespace {

/// First field of the first row.
Value firstOf(const Database& db, const QString& sql) {
    const Recordset rows = db.open(sql);
    return rows.recordCount() == 0 ? Value::null() : rows.value(0);
}

int countOf(const Database& db, const QString& sql) {
    Recordset rows = db.open(sql);
    if (rows.recordCount() == 0) return 0;
    rows.moveLast();
    return rows.recordCount();
}

Value plus(const Value& date, int days) { return date.isNull() ? Value::null() : Value(date.toDate().addDays(days)); }

QString keyOf(const Value& date) { return Datum_als_Text(Hochkomma_ersetzen(date)); }

void farrowings(const Database& db, Recordset& sow, const QString& id, const Variablen& v) {
    sow.set(u"Anz_Ferkelungen", countOf(db, QStringLiteral("select Kennung from Ferkelung where Kennung = ") + id));
    const Recordset sums =
        db.open(QStringLiteral("select sum(Ferkel_Gesamt) as xsumme, sum(Ferkel_Lebendig) as xsumme1, "
                               "max(Datum) as xdatum from Ferkelung where Kennung = ") +
                id);
    sow.set(u"Anz_Ferkel_Gesamt", sums.value(u"xsumme"));
    sow.set(u"Anz_Ferkel_Lebend", sums.value(u"xsumme1"));
    sow.set(u"L_Ferkelung", sums.value(u"xdatum"));
    sow.set(u"N_Belegung", plus(sums.value(u"xdatum"), v.Konfig_Zahl[1]));
}

void services(const Database& db, Recordset& sow, const QString& id, const Variablen& v) {
    QString text;
    if (Hochkomma_ersetzen(sow.value(u"Art")) == u"Eber") {
        text = QStringLiteral("select Kennung from Belegung where Ebernr = '") + sow.value(u"Nummer").toText() + u'\'';
    } else {
        text = QStringLiteral("select Kennung from Belegung where Kennung = ") + id;
        const QString farrowing = Hochkomma_ersetzen(sow.value(u"L_Ferkelung"));
        if (Ist_Datum(farrowing)) text += QStringLiteral(" and datum >= ") + Sql_Datum(QString(farrowing));
    }
    sow.set(u"Anz_Belegungen", countOf(db, text));
    const Value latest = firstOf(db, QStringLiteral("select max(Datum) as xdatum from Belegung where Kennung = ") + id);
    sow.set(u"L_Belegung", latest);
    sow.set(u"N_Ferkelung", plus(latest, v.Konfig_Zahl[0]));
}

bool differs(const Value& before, const Value& now) { return !before.isNull() && !now.isNull() && !(before == now); }

void deriveAnimal(const Database& db, Recordset& sow, const Variablen& v) {
    const QString id = sow.value(u"ID").toText();
    const Value service = sow.value(u"L_Belegung"), farrowing = sow.value(u"L_Ferkelung"),
                weaning = sow.value(u"L_Absetzung");
    sow.edit();
    farrowings(db, sow, id, v);
    services(db, sow, id, v);
    sow.set(u"L_Trächtigkeit",
            firstOf(db, QStringLiteral(
                            "select max(Datum) as xdatum from Trächtigkeit where Trächtig = 'J' and Kennung = ") +
                            id));
    sow.set(u"L_Absetzung",
            firstOf(db, QStringLiteral("select max(Datum) as xdatum from Absetzung where Kennung = ") + id));
    if (differs(service, sow.value(u"L_Belegung")) || differs(farrowing, sow.value(u"L_Ferkelung")) ||
        differs(weaning, sow.value(u"L_Absetzung")))
        sow.set(u"Aenderung", u"X");
    if (!sow.value(u"L_Belegung").isNull() && !sow.value(u"L_Ferkelung").isNull()) {
        const bool served = keyOf(sow.value(u"L_Belegung")) > keyOf(sow.value(u"L_Ferkelung"));
        sow.set(served ? u"N_Belegung" : u"N_Ferkelung", Value::null());
    }
    sow.update();
}

QString status(const Database& db, const Recordset& sow) {
    if (!Hochkomma_ersetzen(sow.value(u"Abgangsdatum")).isEmpty()) return QStringLiteral("");
    if (Hochkomma_ersetzen(sow.value(u"Art")) != u"Sau") return QStringLiteral("");
    if (Hochkomma_ersetzen(sow.value(u"Statusabfrage")) == u"N") return QStringLiteral("");
    const QString service = keyOf(sow.value(u"L_Belegung")), farrowing = keyOf(sow.value(u"L_Ferkelung")),
                  weaning = keyOf(sow.value(u"L_Absetzung"));
    QString text = QStringLiteral("");
    if (service > farrowing) {
        text = QStringLiteral("B");
        const Recordset check =
            db.open(QStringLiteral("select top 1 * from Trächtigkeit where Kennung = %1 order by Datum DESC")
                        .arg(sow.value(u"ID").toText()));
        if (check.recordCount() != 0 && keyOf(check.value(u"Datum")) > service)
            text += check.value(u"Trächtig").toText() == u"N" ? QStringLiteral("_NTG") : QStringLiteral("_T");
    }
    if (farrowing > service && farrowing > weaning) return QStringLiteral("S");
    if (!service.isEmpty() && !weaning.isEmpty() && weaning > service) return QStringLiteral("G");
    return text;
}

}  // namespace

void naiveValues(const Database& db, const Variablen& v) {
    Transaction action(db);
    for (Recordset sow = db.open("select * from Sauen"); !sow.eof(); sow.moveNext()) deriveAnimal(db, sow, v);
    action.commit();
}

void naiveStatus(const Database& db) {
    Transaction action(db);
    for (Recordset sow = db.open("select * from sauen"); !sow.eof(); sow.moveNext()) {
        sow.edit();
        sow.set(u"Status", status(db, sow));
        sow.update();
    }
    action.commit();
}

}  // namespace koben
