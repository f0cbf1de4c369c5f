// The animal's screen: what it shows, and what its buttons do. Rules and saving: PB_Neues_Schwein_Speichern.cpp.
#include "herd/PB_Neues_Schwein.h"

#include <QFile>
#include <algorithm>

#include "core/Einstellungen.h"
#include "core/Konfig.h"
#include "core/PZ_Koben_Subs.h"

namespace koben {

namespace {

const char* const Facts[] = {"Anz_Belegungen", "Anz_Ferkelungen", "Anz_Ferkel_Gesamt", "Anz_Ferkel_Lebend",
                             "L_Belegung",     "L_Ferkelung",     "N_Belegung",        "N_Ferkelung",
                             "L_Trächtigkeit", "L_Absetzung"};

const QString MaskFile = QStringLiteral("PB_Neues_Schwein.ko1");
constexpr int LongestNumber = 15;
constexpr int BoarLabel = 20;  // "Besamungsart:"

}  // namespace

PB_Neues_Schwein::PB_Neues_Schwein(Koben& context)
    : Eingabe(context, "PB_Neues_Schwein", "Schweine (Sauen/Eber/Masttiere) eingeben / ändern") {
    bindFields();
    kom[0].onClick = kom[0].onLostFocus = [this] { kom0_Click(); };
    for (auto& field : tdat) field->onGotFocus = [this] { calend.setVisible(false); };
    ok.onClick = [this] { save(0); };
    oknächster[0].onClick = [this] { save(2); };
    oknächster[1].onClick = [this] { save(1); };
    standard.onClick = [this] { standard_Click(); };
    comlebenslauf.setHint("Was das Tier erlebt hat, der Reihe nach");
    comlebenslauf.onClick = [this] { comlebenslauf_Click(); };
    comhilfe.onClick = [this] { koben.open("PH_Hilfe"); };
    cmdabbrechen.onClick = [this] { cancel(); };
    helpTopic = name();
    acceptButton = &ok;
    cancelButton = &cmdabbrechen;
}

void PB_Neues_Schwein::bindFields() {
    const auto keyword = [](const char* table) {
        const QString name = QString::fromUtf8(table);
        return Source{.sql = "select * from " + name, .keywords = name};
    };
    shareCalendar(calend);
    choice(bez[0].text(), kom[0], {}, {"Sau", "Eber", "Mast", "Ferkel"});
    freeText(bez[1].text(), t[0], "Nummer", LongestNumber);
    freeText(bez[5].text(), t[1], "Ohrmarke", 20);
    freeText(bez[6].text(), t[2], "Tätowierung", 20);
    freeText(bez[9].text(), t[3], "Infos", 100);
    freeText(bez[2].text(), kom[1], "Gruppe", 20, keyword("Stammdaten_Gruppe"));
    freeText(bez[3].text(), kom[2], "Stallnr", 10, keyword("Stammdaten_Stallnummer"));
    freeText(bez[8].text(), kom[3], "Rasse", 20, keyword("Stammdaten_Rasse"));
    freeText(bez[13].text(), kom[5], "Zugangsgrund", 20, keyword("Stammdaten_Zugangsgrund"));
    freeText(bez[14].text(), kom[6], "Lieferant", 20, keyword("Stammdaten_Kunde"));
    freeText(bez[18].text(), kom[7], "Abgangsgrund", 20, keyword("Stammdaten_Abgangsgrund"));
    freeText(bez[19].text(), kom[8], "Abnehmer", 20, keyword("Stammdaten_Kunde"));
    choice(bez[BoarLabel].text(), kom[4], {}, {"N", "K"});
    static const std::pair<int, const char*> dates[] = {
        {7, "Geburtsdatum"}, {10, "Zugangsdatum"}, {15, "Abgangsdatum"}, {4, "BoxDatum"}};  // label, of tdat
    for (int i = 0; i < tdat.count(); ++i) {
        const QString& label = bez[dates[i].first].text();
        date(label, tdat[i], calender[i], dates[i].second);
        calender[i].setHint("Kalender " + label.chopped(1));
    }
    weight(bez[11].text(), tz[0], "Zugangsgewicht_kg");
    amount(bez[12].text(), tz[1], "Einkaufspreis");
    weight(bez[16].text(), tz[2], "Abgangsgewicht_kg");
    amount(bez[17].text(), tz[3], "Verkaufspreis");
    tick(konstatus, "Statusabfrage", "N", {});
    tick(konamme, "Mechanische_Amme", "J", "N");
}

void PB_Neues_Schwein::Load() {
    Eingabe::Load();
    showAnimal();
}

// ----------------------------------------------------------------------------------------------------------- showing

qint64 PB_Neues_Schwein::currentId() const {
    if (adding() || !koben.herdList) return 0;
    const Grid& herd = koben.herdList->herd();
    return herd.value(herd.row(), u"ID").toInt();
}

QString PB_Neues_Schwein::stored(const QString& column) const { return Hochkomma_ersetzen(m_row->value(column)); }

void PB_Neues_Schwein::showAnimal() {
    calend.setVisible(false);
    if (adding())
        showNew();
    else
        showChanged();
    comlebenslauf.setVisible(!adding());
    kom0_Click();
    t[0].setFocus();
}

void PB_Neues_Schwein::showNew() {
    showPresets();
    for (int list : {0, 4}) kom[list].setText({});
    for (auto& fact : bezinfo) fact->setText({});
    if (koben.Konfig_Zahl[Zahl::NummerErhoehen] != 0) t[0].setText(followingNumber());
    showMask();
}

/// One more than the number entered last; "" where that is no plain number.
QString PB_Neues_Schwein::followingNumber() const {
    const Recordset last = m_db.open("select top 1 Nummer from Sauen order by ID DESC");
    const QString number = last.recordCount() == 0 ? QString() : Hochkomma_ersetzen(last.value(0));
    const bool digits = std::all_of(number.begin(), number.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
    if (number.isEmpty() || !digits) return {};
    const QString next = QString::number(number.toLongLong() + 1);
    return next.size() > LongestNumber ? QString() : next;
}

void PB_Neues_Schwein::showChanged() {
    m_row = m_db.open(QStringLiteral("select * from Sauen where ID = %1").arg(currentId()));
    if (m_row->recordCount() == 0) {
        koben.message("Das Tier, das geändert werden soll, gibt es nicht mehr.");
        return cancel();
    }
    showStored();
    kom[0].setText({});
    for (const QString& kind : kom[0].items())
        if (kind.compare(stored("Art"), Qt::CaseInsensitive) == 0) kom[0].setText(kind);
    kom[4].setCurrent(stored("Belegungsart") == u"N" ? 0 : 1);
    for (int i = 0; i < bezinfo.count(); ++i) bezinfo[i].setText(stored(QString::fromUtf8(Facts[i])));
}

/// A sow has litters to inform about and may be a nurse, a boar has a kind of service.
void PB_Neues_Schwein::kom0_Click() {
    const bool sow = kom[0].text() == u"Sau", boar = kom[0].text() == u"Eber";
    konamme.setVisible(sow);
    rahmen[0].setVisible(sow);
    for (int i = 0; i < bezinfo.count(); ++i) {
        bezinfo[i].setVisible(sow);
        bez[BoarLabel + 1 + i].setVisible(sow);
    }
    bez[BoarLabel].setVisible(boar);
    kom[4].setVisible(boar);
}

void PB_Neues_Schwein::calendarOpens(const TextBox& field) {
    const QString day = Datum_ergaenzen(field.text(), koben.Heute);
    calend.setDate(Datum_aus_Text(day.isEmpty() ? koben.Heute : day));
}

/// The window walks through the herd list, which this one hangs on: the list stands on its animal again afterwards.
void PB_Neues_Schwein::comlebenslauf_Click() {
    const int row = koben.herdList ? koben.herdList->herd().row() : 0;
    koben.open("PB_Lebenslauf");
    if (!closed() && row > 0 && koben.herdList->herd().row() != row) koben.herdList->herd().setRow(row);
}

// -------------------------------------------------------------------------------------------------------------- mask

/// The fields of the standard mask in the order of its lines.
std::vector<TextBox*> PB_Neues_Schwein::maskFields() {
    return {&kom[0], &kom[1], &kom[2], &t[1],    &t[2],  &kom[3], &kom[4],  &kom[5], &kom[6],
            &kom[7], &kom[8], &t[3],   &tdat[1], &tz[0], &tz[1],  &tdat[2], &tz[2],  &tz[3]};
}

/// Fills the mask's values in; a short file fills what it has.
void PB_Neues_Schwein::showMask() {
    QFile file(koben.Datenordner + MaskFile);
    if (!file.open(QIODevice::ReadOnly)) return;
    QStringList lines = ausWindows1252(file.readAll()).split(u'\n');
    if (lines.last().isEmpty()) lines.removeLast();  // what stands behind the last line break
    const auto fields = maskFields();
    for (size_t i = 0; i < fields.size() && i < static_cast<size_t>(lines.size()); ++i) {
        QString value = lines[static_cast<qsizetype>(i)];
        if (value.endsWith(u'\r')) value.chop(1);
        if (fields[i]->maxLength > 0) value.truncate(fields[i]->maxLength);
        if (auto* list = dynamic_cast<ComboBox*>(fields[i]))
            list->setText(value);
        else
            fields[i]->setText(value);
    }
}

void PB_Neues_Schwein::standard_Click() {
    QString text;
    for (const TextBox* field : maskFields()) text += field->text() + Crlf;
    if (!Textdatei_schreiben(koben.Datenordner + MaskFile, text))
        return koben.message(
            "Die Standardwerte konnten nicht gesichert werden. Bitte prüfen Sie, ob auf dem Datenträger noch Platz "
            "ist und ob Sie im Datenordner schreiben dürfen. Die bisherigen Standardwerte bleiben erhalten.");
    koben.message(
        "Die Standardwerte wurden gesichert und werden ab sofort bei jeder Schwein-Neueingabe als Standardwerte "
        "vorgegeben.");
}

}  // namespace koben
