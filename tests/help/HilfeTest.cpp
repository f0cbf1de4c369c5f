// The help text file, the search, the shipped text against the program, and the window's file troubles.
#include <QSet>

#include "app/Katalog.h"
#include "help/PH_Hilfe.h"
#include "tests/support/Fakes.h"

namespace koben {
namespace {

/// "NAME|GROUP|TEXT|LINKS" of each chapter, line feeds as "/".
QStringList rendered(const Hilfedatei& help) {
    QStringList all;
    for (const Kapitel& each : help.chapters()) {
        QStringList links;
        for (const Kapitel::Link& link : each.links)
            links += each.text().mid(link.place, link.length) + u'>' + link.target;
        all += QStringList{each.name, each.group, each.text().replace(u'\n', u'/'), links.join(u',')}.join(u'|');
    }
    return all;
}

TEST(Hilfedatei, Kapitel) {
    const std::pair<const char*, QStringList> cases[] = {
        {"Vorspann\n# Gruppe\n#a# Eins\nText\ngeht weiter\n\n\nNeu\n#ende#\nzwischen",
         {"a|Gruppe|Eins//Text geht weiter//Neu|"}},
        {"#a# Eins\nx\n#b# Zwei\ny", {"a||Eins//x|", "b||Zwei//y|"}},  // end marks are lost
        {"#a# Eins\n#ende#\n#a# Noch einmal\n#ende#", {"a||Eins|"}},
        {"#a# Eins\n== Kopf\nFeld: Art\nErklärt\nweiter\n- Punkt\nweiter\n1. Schritt\n#ende#",
         {"a||Eins//Kopf/Art/Erklärt weiter/- Punkt weiter/1. Schritt|"}},
        {"#a# Eins\n- [b]\nSiehe [b], [b|dort] und [OK].\n#ende#\n#b# Zwei\n#ende#",
         {"a||Eins//- „Zwei“ Siehe „Zwei“, dort und [OK].|Zwei>b,Zwei>b,dort>b", "b||Zwei|"}},
        {"#a# Eins\n- [b]\n\n[a]\n#ende#\n#b# Zwei\n#ende#", {"a||Eins//- Zwei//Eins|Zwei>b,Eins>a", "b||Zwei|"}},
        {"#ende#\n# nur\n## nichts", {}},
    };
    for (const auto& [text, expected] : cases) EXPECT_EQ(rendered(Hilfedatei(QString::fromUtf8(text))), expected);
}

TEST(Hilfesuche, FindetWoerter) {
    const Hilfedatei help(
        QStringLiteral("#a# Eber\nSau und Eber, Sau und Ferkel\n#ende#\n#b# Sau\nund Eber im Stall\n#ende#"));
    const std::pair<const char*, const char*> cases[] = {
        {"sau und", "a@6+7@20+7"},
        {"SAU", "b@0+3 a@6+3@20+3"},
        {"stall  eber", "b@9+4@17+5"},
        {"Sau Sauen", ""},
        {"u", ""},
        {"Ferkel Ferk", "a@28+6"},
    };
    for (const auto& [typed, expected] : cases) {
        QStringList found;
        for (const Fund& fund : Hilfe_durchsuchen(help, QString::fromUtf8(typed))) {
            found += help.chapters()[static_cast<size_t>(fund.chapter)].name;
            for (const auto& [place, length] : fund.places)
                found.last() += QStringLiteral("@%1+%2").arg(place).arg(length);
        }
        EXPECT_EQ(found.join(u' '), QString::fromUtf8(expected)) << typed;
    }
}

/// Every form and every entry of the help menu has its chapter, every link leads somewhere.
TEST(Hilfetext, IstVollstaendig) {
    QString trouble;
    const auto help = Hilfedatei::read(QStringLiteral(KOBEN_SOURCE_DIR "/hilfe/HILFEKOBEN.HLP"), trouble);
    ASSERT_EQ(trouble, QString());
    const QStringList topics{"hilfestartmenue", "hilfewiemacheich",  "hilfewieanfangen", "hilfebestand",
                             "hilfeeingabe",    "hilfeauswertungen", "hilfeverwaltung",  "H_Hilfeoptionen"};
    for (const QString& name : formNames() + topics) EXPECT_GE(help.find(name), 0) << name.toStdString();
    QSet<QString> titles;
    for (const Kapitel& each : help.chapters()) {
        EXPECT_FALSE(titles.contains(each.title)) << each.title.toStdString();
        titles.insert(each.title);
        EXPECT_FALSE(each.text().contains(u'[')) << each.name.toStdString();
        EXPECT_GT(each.text().size(), 150) << each.name.toStdString();
        EXPECT_FALSE(each.group.isEmpty()) << each.name.toStdString();
    }
}

TEST(Hilfefenster, SagtWasMitDerDateiIst) {
    const std::pair<std::optional<QByteArray>, const char*> cases[] = {
        {std::nullopt, "weil die Datei fehlt"},
        {QByteArray("\0\x01\xff zerst\xf6rt", 12), "weil die Datei beschädigt ist"},
        {QByteArray("#PH_Hilfe# Gr\xfc\xdf\x65\r\n\x02Text\r\n"), nullptr}};  // of the code page, cut off
    for (const auto& [bytes, told] : cases) {
        TestRun run;
        run.catalogue.add<PH_Hilfe>("PH_Hilfe");
        if (bytes) {
            QFile file(run.path("HILFEKOBEN.HLP"));
            ASSERT_TRUE(file.open(QIODevice::WriteOnly));
            file.write(*bytes);
        }
        QString text;
        run.screens.workIn<PH_Hilfe>([&](PH_Hilfe& form) { text = form.t.text(); });
        run.koben.open("PH_Hilfe");
        EXPECT_EQ(text, told ? QString() : "Grüße" + Crlf + Crlf + "Text");
        EXPECT_EQ(run.screens.log.join(u'|').contains(QString::fromUtf8(told ? told : "!")), told != nullptr);
    }
}

}  // namespace
}  // namespace koben
