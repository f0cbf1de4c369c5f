#include "output/PA_Zwischenliste.h"

#include <algorithm>
#include <cmath>

#include "core/Konfig.h"
#include "core/PZ_Koben_Subs.h"
#include "forms/Liste.h"
#include "output/Bericht_html.h"
#include "output/Tabelle_xlsx.h"
#include "output/Textliste.h"
#include "output/Uebergabe.h"

namespace koben {
namespace {

constexpr int schmalsteSpalte = 27;  // pixels at 96 dpi; 400 twips

/// Width that a text takes in the list, in pixels at 96 dpi, a little generous.
int textbreite(const QString& text) {
    double width = 16;  // the cell's margins
    for (const QChar c : text) {
        if (QStringView(u"mwMW@%").contains(c))
            width += 12;
        else if (c.isUpper())
            width += 9.5;
        else if (c.isLetterOrNumber())
            width += 7.5;
        else
            width += 5;
    }
    return static_cast<int>(std::ceil(width));
}

}  // namespace

PA_Zwischenliste::PA_Zwischenliste(Koben& koben_)
    : Form(koben_, QStringLiteral("PA_Zwischenliste"), QStringLiteral("Daten listen")), m_zahlen(koben_.Konfig_Zahl) {
    helpTopic = name();
    cancelButton = &cmdschließen;
    connectHandlers();
}

void PA_Zwischenliste::connectHandlers() {
    comtext.onClick = popzeile[0].onClick = [this] { comtext_Click(); };
    comexcel.onClick = popzeile[1].onClick = [this] { comexcel_Click(); };
    for (int i : {0, 1}) roexplorer[i].onClick = popzeile[2 + i].onClick = [this, i] { roexplorer_Click(i); };
    cmdschließen.onClick = popzeile[5].onClick = [this] { close(); };
    hilfe.onClick = [this] { koben.open(QStringLiteral("PH_Hilfe")); };
}

void PA_Zwischenliste::Load() {
    Liste_uebernehmen(koben, gridli);
    erkenneDatumsspalten();
    if (m_zahlen[Zahl::ListenDarstellung] == 1) roexplorer_Click(0);
    if (m_zahlen[Zahl::ListenDarstellung] == 2) comtext_Click();
    if (m_zahlen[Zahl::OptimaleSpaltenbreite] == 1) passeSpaltenbreitenAn();
}

void PA_Zwischenliste::erkenneDatumsspalten() {
    if (gridli.rowCount() == 0) return;
    for (int c = 1; c <= gridli.columnCount(); ++c)
        if (gridli.value(1, c).isDate() || Ist_Datum(gridli.cell(1, c))) gridli.column(c).sort = Sort::Date;
    gridli.columnsChanged();
}

void PA_Zwischenliste::passeSpaltenbreitenAn() {
    for (int c = 1; c <= gridli.columnCount(); ++c) {
        Column& column = gridli.column(c);
        int width = textbreite(column.caption.isEmpty() ? column.title : column.caption);
        for (int row = 1; row <= gridli.rowCount(); ++row) width = std::max(width, textbreite(gridli.cell(row, c)));
        column.width = std::max(width, schmalsteSpalte);
    }
    gridli.columnsChanged();
}

bool PA_Zwischenliste::listeLeer() {
    if (gridli.rowCount() > 0) return false;
    koben.message(QStringLiteral("Es sind keine Daten in der Liste."));
    return true;
}

void PA_Zwischenliste::meldeSchreibfehler(const QString& path) {
    koben.message(QStringLiteral("Die Datei %1 konnte nicht geschrieben werden. Bitte prüfen Sie, ob im Datenordner "
                                 "genügend Platz und das Schreiben erlaubt ist.")
                      .arg(path));
}

/// Today's date where the settings want it in the heads, otherwise "".
QString PA_Zwischenliste::kopfDatum() const { return m_zahlen[Zahl::BerichtDatum] == 1 ? koben.Heute : QString(); }

/// Works on the list while the user sees how far it is. False where she cancelled.
bool PA_Zwischenliste::arbeiten(const QString& what, const std::function<void(Progress&)>& work) {
    const WaitCursor wait(koben);
    Progress progress(koben, what, 2 * static_cast<qint64>(gridli.rowCount()));
    work(progress);
    return !progress.cancelled();
}

void PA_Zwischenliste::comtext_Click() {
    if (listeLeer()) return;
    QString& separator = koben.Konfig_Text[Text::Listentrenner];
    if (separator.isEmpty()) separator = QStringLiteral(" | ");
    QString list;
    const bool whole = arbeiten(QStringLiteral("Die Textliste wird erstellt ..."), [&](Progress& progress) {
        list = Textliste(gridli, {.trenner = separator,
                                  .datum = kopfDatum(),
                                  .kopf = koben.Konfig_Text[Text::Berichtskopf],
                                  .progress = &progress});
    });
    if (whole) Text_uebergeben(koben, list);
}

void PA_Zwischenliste::comexcel_Click() {
    if (listeLeer()) return;
    const QString path = Tabellendatei(koben.Datenordner);
    bool written = false;
    const bool whole = arbeiten(QStringLiteral("Die Tabelle wird geschrieben ..."), [&](Progress& progress) {
        written = Tabelle_schreiben(
            gridli, path, {.datum = kopfDatum(), .kopf = koben.Konfig_Text[Text::Berichtskopf], .progress = &progress});
    });
    if (!whole) return;
    if (!written)
        meldeSchreibfehler(path);
    else if (!koben.platform.open(path))
        koben.message(QStringLiteral("Excel konnte nicht geöffnet werden!"));
}

/// Both buttons show the report in the system's browser: there is no other one to be had any more.
void PA_Zwischenliste::roexplorer_Click(int) {
    const auto head = [this](int page, int pages) {
        if (m_zahlen[Zahl::BerichtSeiten] != 1 || pages < 2) return QString();
        return QStringLiteral("Seite %1 von %2").arg(page).arg(pages);
    };
    const auto foot = [this](int page, int pages) {
        if (m_zahlen[Zahl::BerichtAnzahl] != 1 || page != pages) return QString();
        return QStringLiteral("Anzahl Datensätze: %1").arg(gridli.rowCount());
    };
    QString text = kopfDatum();
    if (!text.isEmpty()) text += QStringLiteral("   ");
    text += koben.Konfig_Text[Text::Berichtskopf];
    bool written = false;
    const bool whole = arbeiten(QStringLiteral("Der Bericht wird geschrieben ..."), [&](Progress& progress) {
        written = Bericht_schreiben(gridli,
                                    {.kopf = text,
                                     .zeilenJeSeite = m_zahlen[Zahl::BerichtZeilen],
                                     .seitenkopf = head,
                                     .seitenfuss = foot,
                                     .progress = &progress},
                                    koben.Datenordner);
    });
    if (!whole) return;
    const QString path = koben.Datenordner + QStringLiteral("report.htm");
    if (!written)
        meldeSchreibfehler(path);
    else if (!koben.platform.open(path))
        koben.message(QStringLiteral("Der Bericht konnte nicht angezeigt werden. Er liegt in der Datei %1.").arg(path));
}

}  // namespace koben
