#include "bench/Programm.h"

#include <stdexcept>

#include "app/Katalog.h"
#include "bench/Stille.h"
#include "forms/Grid.h"

namespace koben {
namespace {

constexpr int zeilenImFenster = 40;

template <class C>
C& steuer(Form& form, const char* name, int index = -1) {
    auto* control = dynamic_cast<C*>(form.find(QString::fromUtf8(name), index));
    if (!control) throw std::runtime_error(form.name().toStdString() + " has no control " + name);
    return *control;
}

/// What a window asks of a grid to paint it: the cells in sight.
qint64 anschauen(const Grid& grid) {
    qint64 zeichen = 0;
    for (int row = 1; row <= std::min(grid.rowCount(), zeilenImFenster); ++row)
        for (int column = 1; column <= grid.columnCount(); ++column) zeichen += grid.cell(row, column).size();
    return zeichen;
}

class Lauf {
public:
    Lauf(const QString& ordner, QDate heute, const Vorlage& vorlage) : m_vorlage(vorlage), m_platform(ordner, heute) {}

    Messung messen() {
        for (int i = 0; i <= m_vorlage.wiederholungen; ++i) starten(i > 0);
        m_screens.ablauf[QStringLiteral("PA_Koben")] = [this](Form& haupt) {
            Liste_laden(haupt);
            suchen(haupt);
            buchen(haupt);
            planen();
            mast(haupt);
        };
        mitHauptform([](Form&, double) {});
        return m_messung;
    }

private:
    void mitHauptform(const std::function<void(Form&, double)>& nachStart) {
        const Uhr uhr;
        Koben koben(m_screens, m_platform, katalog());
        m_koben = &koben;
        const auto form = katalog().make(QStringLiteral("PA_Koben"), koben);
        const auto danach = m_screens.ablauf[QStringLiteral("PA_Koben")];
        m_screens.ablauf[QStringLiteral("PA_Koben")] = [&](Form& haupt) {
            nachStart(haupt, uhr.ms());
            if (danach) danach(haupt);
        };
        koben.run(*form);
        m_screens.ablauf[QStringLiteral("PA_Koben")] = danach;
        m_koben = nullptr;
    }

    void starten(bool zaehlt) {
        const Uhr uhr;
        mitHauptform([&](Form& haupt, double) {
            const Grid& liste = steuer<Grid>(haupt, "datali");
            anschauen(liste);
            if (zaehlt) m_messung.eintragen(Arbeit::Start, uhr.ms(), liste.rowCount());
        });
    }

    void Liste_laden(Form& haupt) {
        const Grid& liste = steuer<Grid>(haupt, "datali");
        for (int i = 0; i <= m_vorlage.wiederholungen; ++i) {
            const Uhr uhr;
            m_koben->herdList->datenschweinelesen();
            anschauen(liste);
            if (i > 0) m_messung.eintragen(Arbeit::Liste, uhr.ms(), liste.rowCount());
        }
    }

    void suchen(Form& haupt) {
        TextBox& feld = steuer<TextBox>(haupt, "t");
        const Grid& liste = steuer<Grid>(haupt, "datali");
        for (int i = 0; i < m_vorlage.wiederholungen; ++i) {
            feld.edited(QString());
            for (int zeichen = 1; zeichen <= m_vorlage.nummer.size(); ++zeichen) {
                const Uhr uhr;
                feld.edited(m_vorlage.nummer.left(zeichen));
                m_messung.eintragen(Arbeit::Suche, uhr.ms(), liste.row() > 0);
            }
        }
    }

    /// Each round opens the frame, books two services (the first warms up) and closes it again.
    void buchen(Form& haupt) {
        m_screens.ablauf[QStringLiteral("PE_Bewegungsdaten_Belegung")] = [&](Form& eingabe) {
            for (const bool zaehlt : {false, true}) {
                steuer<ComboBox>(eingabe, "kom", 0).setText(QStringLiteral("Pi 4711"));
                const Uhr uhr;
                steuer<Button>(eingabe, "ok", 2).click();
                if (zaehlt) m_messung.eintragen(Arbeit::Belegung, uhr.ms(), 1);
            }
            steuer<Button>(eingabe, "abbrechen").click();
        };
        Grid& liste = steuer<Grid>(haupt, "datali");
        for (int i = 0; i <= m_vorlage.wiederholungen; ++i) {
            liste.choose(liste.findText(u"ID", QString::number(m_vorlage.sau)));
            double geschlossen = 0;
            m_screens.ablauf[QStringLiteral("PE_Bewegungsdaten")] = [&](Form& rahmen) {
                steuer<Button>(rahmen, "neu").click();
                rahmen.settle();
                const Uhr uhr;
                steuer<Button>(rahmen, "cmdschließen").click();
                geschlossen = uhr.ms();
            };
            m_koben->Buchungsart_Nr = 0;
            m_koben->open(QStringLiteral("PE_Bewegungsdaten"));
            const Uhr uhr;
            haupt.settle();  // status and list
            anschauen(liste);
            if (i > 0) m_messung.eintragen(Arbeit::Schliessen, geschlossen + uhr.ms(), liste.rowCount());
        }
    }

    void planen() {
        for (int i = 0; i <= m_vorlage.wiederholungen; ++i) {
            m_screens.ablauf[QStringLiteral("PB_Arbeitsplan")] = [&](Form& plan) {
                steuer<Button>(plan, "woche", 3).click();
                const Uhr uhr;
                steuer<Button>(plan, "ok", 0).click();
                const Grid& grid = steuer<Grid>(plan, "gridli");
                if (i > 0) m_messung.eintragen(Arbeit::Arbeitsplan, uhr.ms(), grid.rowCount());
            };
            m_koben->open(QStringLiteral("PB_Arbeitsplan"));
        }
    }

    /// All piglets are marked and led as fattening pigs from now on; the list is loaded anew.
    void mast(Form& haupt) {
        Grid& liste = steuer<Grid>(haupt, "datali");
        const Database& db = m_koben->Hauptdatenbank;
        const qint64 last = db.table(QStringLiteral("select max(ID) as m from Sauen")).integer(0, 0);
        const QString ferkel =
            QStringLiteral("update Sauen set Art = 'Ferkel', Abgangsdatum = NULL where ID > %1").arg(last - MastFerkel);
        for (int i = 0; i <= m_vorlage.wiederholungen; ++i) {
            Database(db).execute(ferkel);
            m_koben->herdList->datenschweinelesen();
            std::vector<int> rows;
            for (int row = 1; row <= liste.rowCount(); ++row)
                if (liste.integer(row, liste.columnOf(u"ID")) > last - MastFerkel) rows.push_back(row);
            liste.mark(rows);
            const Uhr uhr;
            steuer<MenuEntry>(haupt, "XB_Markierte_Ferkel_in_Mast").click();
            anschauen(liste);
            if (i > 0) m_messung.eintragen(Arbeit::Mast, uhr.ms(), liste.rowCount());
        }
    }

    const Vorlage m_vorlage;
    StilleScreens m_screens;
    StillePlatform m_platform;
    Koben* m_koben = nullptr;
    Messung m_messung;
};

}  // namespace

Messung Programm_messen(const QString& ordner, QDate heute, const Vorlage& vorlage) {
    return Lauf(ordner, heute, vorlage).messen();
}

}  // namespace koben
