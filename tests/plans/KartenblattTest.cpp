// The designed sow card: what it is made of, the choice of facts, the QR code as a drawing, and that nothing is
// written.
#include "plans/PB_Sauenkarte_gezeichnet.h"

#include "output/QrCode.h"
#include "tests/plans/Planhof.h"

namespace koben {
namespace {

using Karten = PB_Sauenkarte_gezeichnet;

class Kartenblatthof : public testing::Test {
protected:
    Kartenblatthof() { hof.catalogue.add<Karten>("PB_Sauenkarte_gezeichnet"); }
    void open(std::function<void(Karten&)> script) { hof.in<Karten>("PB_Sauenkarte_gezeichnet", std::move(script)); }
    void booking(const QString& table, int sow, const QString& day, std::map<QString, QString> more) {
        more["Kennung"] = QString::number(sow);
        more["Datum"] = day;
        hof.add(table, more);
    }
    Planhof hof;
};

QStringList texts(const Drawing& drawing) {
    QStringList all;
    for (const DrawPage& page : drawing.pages)
        for (const DrawItem& item : page.items)
            if (const auto* text = std::get_if<PlacedText>(&item))
                all += (text->tone == Tone::Warning ? "!" : "") + text->piece.text;
    return all;
}

TEST_F(Kartenblatthof, HasTheLittersOfTheSowAndOfTheHerd) {
    hof.tier("7", "Sau", "Infos = 'lahm', Status = 'S', L_Belegung = #03/01/2026#");
    hof.tier("8");
    booking("Ferkelung", 1, "01.06.2025", {{"LNr", "1"}, {"Ferkel_Lebendig", "12"}, {"Bemerkung", "Hilfe"}});
    booking("Ferkelung", 1, "01.11.2025", {{"LNr", "2"}, {"Ferkel_Lebendig", "14"}, {"Ferkel_Tot", "1"}});
    booking("Absetzung", 1, "01.07.2025", {{"Anzahl_Ferkel", "6"}});
    booking("Absetzung", 1, "01.11.2025", {{"Anzahl_Ferkel", "5"}, {"Bemerkung", "klein"}});
    booking("Ferkelung", 2, "01.06.2025", {{"LNr", "1"}, {"Ferkel_Lebendig", "9"}});
    booking("Ferkelung", 2, "01.06.2022", {{"LNr", "1"}, {"Ferkel_Lebendig", "1"}});  // too long ago
    booking("Belegung", 1, "01.03.2026", {{"Ebernr", "E9"}});
    const Kartenblaetter cards(hof.db, hof.koben.Heute, {1}, [] { return true; });
    const Kartenblatt& card = cards.of(1);
    QStringList told;
    for (const auto& litter : card.wuerfe)
        told +=
            QStringLiteral("%1:%2/%3/%4").arg(litter.nummer).arg(litter.lebend).arg(litter.tot).arg(litter.abgesetzt);
    for (const auto& remark : card.bemerkungen) told += remark.was + '=' + remark.text;
    for (const char* fact : {"zustand", "eber", "lebend", "abgesetzt"})
        told += card.fakten.value(QString::fromUtf8(fact));
    EXPECT_EQ(told, (QStringList{"1:12/0/11", "2:14/1/-1", "=lahm", "Absetzung=klein", "Ferkelung=Hilfe", "Säugend",
                                 "E9", "13,0", "11,0"}));
    EXPECT_EQ(cards.herd(), (Herdenkurve{{1, 10.5}, {2, 14}}));
}

TEST_F(Kartenblatthof, DrawsInRedAndTwoToAPageAndWritesNothing) {
    for (int sow = 1; sow <= 3; ++sow) hof.tier(QString::number(sow), "Sau", "Infos = 'rot', Aenderung = 'X'");
    const QString before = hof.everything();
    open([&](Karten& form) {
        play(form, "alletier(0); optigröße(1)");
        DrawingRecorder cards(false);
        form.look(cards, form.datali.markedRows());
        EXPECT_EQ(cards.drawing.pages.size(), 2U);
        EXPECT_EQ(texts(cards.drawing).count("!rot"), 3);
        play(form, "alletier(1); ok");
        form.beenden.click();
    });
    EXPECT_TRUE(hof.says({"! Bitte markieren Sie zuerst die Sauen*"}));
    EXPECT_EQ(hof.everything(), before);
}

/// A card stays within its box whatever is told on it.
TEST_F(Kartenblatthof, StaysWithinItsBox) {
    Kartenblatt card{.nummer = "DE 09 123456789", .fakten = {}, .wuerfe = {}, .bemerkungen = {}};
    for (int i = 1; i <= 14; ++i) {
        card.wuerfe.push_back({.nummer = i, .tag = QDate(2020, 1, 1).addDays(150 * i), .lebend = 25});
        card.bemerkungen.push_back({QDate(2024, 1, i), "Verschiebung", QString(90, u'w')});
    }
    QStringList all;
    for (const Kartenfeld& field : Kartenfelder()) all += QString::fromUtf8(field.id);
    for (const auto& [size, box] :
         {std::pair(Kartengroesse::A4, QRectF(0, 0, 183, 273)), std::pair(Kartengroesse::A5, QRectF(0, 141, 183, 132))})
        for (const DrawItem& item : drawKartenblatt(card, {{1, 12.0}, {9, 13.0}}, all, size, box)) {
            const auto* text = std::get_if<PlacedText>(&item);
            const auto* drawn = std::get_if<Rectangle>(&item);
            if (text) {
                EXPECT_TRUE(box.adjusted(-1, -1, 1, 1).contains(text->box)) << text->piece.text.toStdString();
            }
            if (drawn) {
                EXPECT_TRUE(box.contains(drawn->box));
            }
        }
}

TEST_F(Kartenblatthof, KeepsFactsAndTheirOrder) {
    const auto shown = [](const ListBox& list) { return list.items().mid(0, 3).join(u'|'); };
    open([&](Karten& form) {
        EXPECT_EQ(shown(form.lifelder), "Stall|Gruppe|Zustand");
        form.lifelder.choose(2);
        play(form, "verschieben(0); verschieben(0); verschieben(0)");
        form.lifelder.choose(1);
        play(form, "entfernen");
        form.livorrat.choose(0);
        play(form, "aufnehmen; optigröße(1)");
        EXPECT_EQ(form.lifelder.items().last(), "Stall");
        form.closeBox();
    });
    open([&](Karten& form) {
        EXPECT_EQ(shown(form.lifelder), "Zustand|Gruppe|Letzte Belegung");
        EXPECT_EQ(form.optigröße.selected(), 1);
        while (form.lifelder.current() >= 0 || !form.lifelder.items().isEmpty()) {
            form.lifelder.choose(0);
            form.entfernen.click();
        }
        form.closeBox();
    });
    open([&](Karten& form) { EXPECT_EQ(form.lifelder.items(), QStringList()); });
}

/// The three finder patterns and the timing between them stand in any code; the drawing has each dark module once.
TEST(QrCode, IsDrawnModuleByModule) {
    for (const QString text : {"1", "DE 09 1234567890", "Ä-17"}) {
        const QrCode code = qrCode(text);
        ASSERT_GE(code.size, 21);
        for (int i = 0; i < 7; ++i) {
            EXPECT_TRUE(code.dark(0, i) && code.dark(i, 0) && code.dark(0, code.size - 1 - i) &&
                        code.dark(code.size - 1 - i, 0));
            EXPECT_FALSE(code.dark(7, i) || code.dark(i, code.size - 8));
        }
        for (int i = 8; i < code.size - 8; ++i) EXPECT_EQ(code.dark(6, i), i % 2 == 0);
        double area = 0;
        for (const DrawItem& item : drawQrCode(code, {10, 20, code.size + 8.0, code.size + 8.0})) {
            const QRectF box = std::get<Rectangle>(item).box;
            EXPECT_TRUE(QRectF(14, 24, code.size, code.size).contains(box));
            area += box.width() * box.height();
        }
        EXPECT_NEAR(area, static_cast<double>(std::count(code.modules.begin(), code.modules.end(), true)), 0.01);
    }
    EXPECT_NE(qrCode("1").modules, qrCode("2").modules);
    EXPECT_EQ(qrCode("").size, 0);
    EXPECT_EQ(qrCode(QString(5000, u'x')).size, 0);
}

}  // namespace
}  // namespace koben
