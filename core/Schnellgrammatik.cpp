// The grammar of the quick entry as data: the eight kinds with their letters, words and fields.
#include "core/Schnellzeile.h"

namespace koben {

const std::vector<Schnellart>& Schnellarten() {
    using F = Schnellfeld;
    const auto cost = [](const char* control) {
        return F{control, "Kosten", F::Number, F::Aside, 20, "", "", "", "€ euro"};
    };
    const auto comment = [](const char* control) { return F{control, "Kommentar", F::Text}; };
    const auto remark = [](const char* control) { return F{control, "Bemerkung", F::Text}; };
    static const std::vector<Schnellart> kinds{
        {Buchungsart::Belegung,
         "b",
         "belegung besamung belegt besamt",
         "123 b Hektor",
         {{"kom(0)", "Eber", F::Text, F::Digits, 15, "", "", "mit von"},
          {"tz(0)", "Deckanzahl", F::Count, 0, 20, "", "", "", "x mal"},
          {"kom(1)", "Belegungsart", F::Choice, 0, 20, "K N", "K"},
          {"kom(2)", "Station", F::Text},
          cost("tz(1)"),
          comment("kom(3)"),
          remark("kom(4)")},
         "kb=Belegungsart=K gedeckt=Belegungsart=N"},
        {Buchungsart::Trächtigkeit,
         "t",
         "trächtigkeit traechtigkeit tragend kontrolle",
         "123 t j",
         {{"kom(0)", "trächtig", F::Choice, 0, 20, "J N", "J"}, cost("tz"), comment("kom(1)"), remark("kom(2)")},
         "leer=trächtig=N nichttragend=trächtig=N umgerauscht=trächtig=N"},
        {Buchungsart::Ferkelung,
         "f",
         "ferkelung geferkelt abgeferkelt wurf",
         "123 f 14/1 gestern",
         {{"tz(0)", "Ferkel gesamt", F::Count, F::Needed, 20, "", "", "gesamt ferkel geboren"},
          {"tz(1)", "lebend", F::Count, F::Derived, 20, "", "", "lebende lebendig"},
          {"tz(2)", "tot", F::Count, 0, 20, "", "", "tote totgeboren"},
          {"tz(3)", "Gewicht je Stück", F::Number, F::Aside, 20, "", "", "gewicht", "kg"},
          cost("tz(4)"),
          comment("kom(0)"),
          remark("kom(1)")}},
        {Buchungsart::Absetzung,
         "a",
         "absetzung absetzen abgesetzt",
         "40-43 a 12 16.7.",
         {{"tz(0)", "Ferkel", F::Count, 0, 20, "", "", "", "stück st"},
          {"tz(1)", "Gewicht je Stück", F::Number, 0, 20, "", "", "gewicht", "kg"},
          comment("kom(0)"),
          remark("kom(1)"),
          {"tz(2)", "als Verlust", F::Count, F::Aside, 20, "", "", "verlust verluste"},
          {"kom(3)", "Grund", F::Text},
          {"kom(2)", "Box", F::Text, 0, 20, "", "", "bucht stall"},
          {"kom(4)", "Gruppe", F::Text}}},
        {Buchungsart::Verschiebung,
         "s",
         "verschiebung versetzen verschoben umsetzen versetzt umgesetzt",
         "123 s 3 77",
         {{"tz", "Ferkel", F::Count, F::Needed | F::Negative, 20, "", "", "", "stück st"},
          {"kom(0)", "zu Sau", F::Text, F::Needed | F::Digits, 15, "", "", "zu an nach sau"},
          comment("kom(1)"),
          remark("kom(2)")}},
        {Buchungsart::Verluste,
         "v",
         "verluste verendet gestorben tot",
         "123 v 2 erdrückt",
         {{"tz(0)", "Ferkel", F::Count, 0, 20, "", "1", "", "stück st"},
          {"kom(0)", "Grund", F::Text, 0, 20, "", "", "wegen"},
          cost("tz(1)"),
          comment("kom(1)"),
          remark("kom(2)")}},
        {Buchungsart::Ferkelverkauf,
         "k",
         "ferkelverkauf verkauf verkauft",
         "123 k 10 48,50",
         {{"tz(0)", "Ferkel", F::Count, 0, 20, "", "1", "", "stück st"},
          {"tz(1)", "Preis je Stück", F::Number, 0, 20, "", "", "preis à je zu", "€ euro"},
          {"tz(2)", "Einnahmen", F::Number},
          {"tz(3)", "Gewicht je Stück", F::Number, 0, 20, "", "", "gewicht", "kg"},
          {"tz(4)", "Gesamtgewicht", F::Number},
          {"kom(0)", "Kunde", F::Text, 0, 20, "", "", "an"},
          comment("kom(1)")}},
        {Buchungsart::Behandlung,
         "h",
         "behandlung behandelt medizin impfung geimpft impfen gespritzt",
         "markierte h Eisen",
         {{"kom(6)", "Behandlungsart", F::Text, F::Needed},
          {"kom(0)", "Medikament", F::Text},
          {"tz(0)", "Menge", F::Number},
          {"kom(1)", "Einheit", F::Choice, 0, 20, "l ml kg g mg St"},
          {"kom(2)", "Verabreichungsart", F::Text},
          {"tz(1)", "Wartezeit", F::Count, F::Aside},
          {"tdat(1)", "Wartezeit bis", F::Day},
          {"kom(3)", "Tierarzt", F::Text},
          {"t", "Beleg", F::Text},
          cost("tz(2)"),
          comment("kom(4)"),
          remark("kom(5)")}}};
    return kinds;
}

const Schnellart& schnellart(Buchungsart kind) { return Schnellarten()[static_cast<size_t>(kind)]; }

QString Schnellgrammatik() {
    QStringList lines{
        QStringLiteral("TIERE ART ANGABEN TAG. Tiere: 123, 40-43, 12,15,18 oder markierte. Tag: heute, "
                       "gestern, Montag, 16.7., am 3; ohne Angabe heute.")};
    for (const Schnellart& art : Schnellarten()) {
        QStringList fields;
        for (const Schnellfeld& field : art.fields)
            if (!(field.flags & Schnellfeld::Derived)) fields.append(QString::fromUtf8(field.name));
        lines.append(QStringLiteral("%1 %2: %3. Beispiel: %4")
                         .arg(QString::fromUtf8(art.letter), QString::fromUtf8(angaben(art.kind).noun),
                              fields.join(QStringLiteral(", ")), QString::fromUtf8(art.example)));
    }
    lines.append(QStringLiteral(
        "FELD=WERT oder FELD WERT nennt ein Feld, - lässt eines aus, \"...\" hält Wörter zusammen. Kosten mit "
        "Komma: 12,50."));
    return lines.join(QStringLiteral("\n"));
}

}  // namespace koben
