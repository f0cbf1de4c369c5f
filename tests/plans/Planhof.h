#pragma once
// A farm with the forms of this folder, and rows for its tables.
#include "plans/PB_Arbeitsplan.h"
#include "plans/PV_Arbeitsplandaten.h"
#include "plans/PV_Arbeitsplandaten_Eingabe.h"
#include "tests/support/Hof.h"

namespace koben {

class Planhof : public Hof {
public:
    Planhof() {
        catalogue.add<PV_Arbeitsplandaten>("PV_Arbeitsplandaten");
        catalogue.add<PV_Arbeitsplandaten_Eingabe>("PV_Arbeitsplandaten_Eingabe");
        catalogue.add<PB_Arbeitsplan>("PB_Arbeitsplan");
    }
    /// Adds a row: texts as they are, dd.mm.yyyy as dates, "" as Null, `Kennung` as a number.
    void add(const QString& table, const std::map<QString, QString>& fields) {
        Recordset rows = db.open("select * from " + table + " where ID = 0");
        rows.addNew();
        for (const auto& [name, text] : fields) {
            const QDate date = Datum_aus_Text(text);
            rows.set(name, text.isEmpty()      ? Value()
                           : date.isValid()    ? Value(date)
                           : name == "Kennung" ? Value(text.toInt())
                                               : Value(text));
        }
        rows.update();
    }
};

}  // namespace koben
