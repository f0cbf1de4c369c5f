// The list of articles with all that may be wrong in it, and the sums of an order to the cent.
#include <gtest/gtest.h>

#include "order/Bestellung.h"

inline void PrintTo(const QString& text, std::ostream* out) { *out << '"' << text.toStdString() << '"'; }

namespace koben {
namespace {

TEST(Preisliste, NenntZeileUndGrund) {
    const std::pair<QString, const char*> cases[] = {
        {"A;Karte;Stück;4,80", ""},
        {" A ; Karte ; Stück ; 4.8 ", ""},
        {"A;Karte;Stück", "Zeile 2: 3 Angaben statt vier"},
        {"A;Karte;Stück;1;2", "Zeile 2: 5 Angaben statt vier"},
        {";Karte;Stück;1", "Zeile 2: die Nummer fehlt"},
        {"A;;Stück;1", "Zeile 2: der Artikel fehlt"},
        {"A;Karte;Stück;x", "Zeile 2: der Preis „x“ ist kein Betrag"},
        {"A;Karte;Stück;-1", "Zeile 2: der Preis ist kleiner als 0"},
        {"A;Karte;Stück;1,005", "Zeile 2: der Preis „1,005“ hat mehr als zwei Stellen"},
        {"A;Karte;Stück;100000", "Zeile 2: der Preis ist zu hoch"},
        {"A;" + QString(61, u'x') + ";Stück;1", "Zeile 2: der Artikel ist länger als 60 Zeichen"},
        {"0;Noch einmal;Stück;1", "Zeile 2: die Nummer 0 steht schon weiter oben"},
        {"Umsatzsteuer: viel", "Zeile 2: „viel“ ist kein Steuersatz"},
        {"Umsatzsteuer: 101", "Zeile 2: „101“ ist kein Steuersatz"},
        {"Karte", "Zeile 2: die Zeile ist weder ein Artikel"},
        {"# Karte", ""},
    };
    for (const auto& [line, fault] : cases) {
        const Preisliste list(QStringLiteral("0;Block;Stück;1\n") + line + u'\n');
        const QString told = list.faults.join(u'|');
        EXPECT_TRUE(*fault ? told.startsWith(QString::fromUtf8(fault)) : told.isEmpty())
            << line.toStdString() << ": " << told.toStdString();
        EXPECT_EQ(list.artikel.front().name, "Block") << "one bad line leaves the others";
    }
}

TEST(Preisliste, DieMitgelieferteIstHeil) {
    QString trouble;
    const auto list = Preisliste::read(QStringLiteral(KOBEN_SOURCE_DIR "/order/artikel.txt"), trouble);
    EXPECT_EQ(trouble + list.faults.join(u'|'), QString());
    EXPECT_FALSE(list.empfaenger.isEmpty());
    QString missing;
    Preisliste::read(QStringLiteral("/nirgends/artikel.txt"), missing);
    EXPECT_TRUE(missing.contains("fehlt"));
}

/// Net, tax and total: no float, half a cent goes up, and the largest order fits.
TEST(Bestellung, SummenAufDenCent) {
    const struct {
        const char* price;
        int count;
        std::optional<int> rate;
        const char* sums;
    } cases[] = {{"0,10", 3, 1900, "0,30 0,06 0,36"},
                 {"0,50", 1, 100, "0,50 0,01 0,51"},
                 {"0,49", 1, 100, "0,49 0,00 0,49"},
                 {"24,50", 7, std::nullopt, "171,50"},
                 {"19,99", 100, 750, "1999,00 149,93 2148,93"},
                 {"99999,99", 9999, 1900, "999899900,01 189980981,00 1189880881,01"}};
    for (const auto& each : cases) {
        const Preisliste list(QStringLiteral("A;Karte;Stück;") + QString::fromUtf8(each.price));
        Bestellung order;
        order.positionen = {{list.artikel.front(), each.count}};
        order.steuersatz = each.rate;
        QStringList sums;
        for (const auto& [caption, amount] : order.summen()) sums.append(Betragstext(amount));
        EXPECT_EQ(sums.join(u' '), QString::fromUtf8(each.sums)) << each.price;
    }
}

/// Many positions go on over the sheets under the head of the table, and nothing stands below the sheet's end.
TEST(Bestellung, LangeBestellungenGehenWeiter) {
    Bestellung order;
    for (int i = 0; i < 120; ++i)
        order.positionen.push_back({{QString::number(i), QString(60, u'x'), QStringLiteral("Stück"), {10'000}}, 1});
    DrawingRecorder job(false);
    Bestellung_drucken(order, job);
    job.end();
    ASSERT_GT(job.drawing.pages.size(), 4u);
    int heads = 0;
    double lowest = 0;
    for (const DrawPage& page : job.drawing.pages)
        for (const DrawItem& item : page.items)
            if (const auto* text = std::get_if<PlacedText>(&item)) {
                heads += text->piece.text == u"Pos.";
                lowest = std::max(lowest, text->box.bottom());
            }
    EXPECT_GE(heads, 5);
    EXPECT_LE(lowest, 273.0);
}

}  // namespace
}  // namespace koben
