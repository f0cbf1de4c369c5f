// The animal's screen: what it shows, and what its buttons do. Rules and saving: PB_Neues_Schwein_Speichern.cpp.
#include "herd/PB_Neues_Schwein.h"

#include <QFile>
#include <algorithm>

#include "core/Einstellungen.h"
#include "core/PZ_Koben_Subs.h"
#include "herd/PB_Neues_Schwein_Felder.h"

namespace koben {

using namespace animal;

namespace {

const char* const Facts[] = {"Anz_Belegungen", "Anz_Ferkelungen", "Anz_Ferkel_Gesamt", "Anz_Ferkel_Lebend",
                             "L_Belegung",     "L_Ferkelung",     "N_Belegung",        "N_Ferkelung",
                             "L_Trächtigkeit", "L_Absetzung"};

const QString MaskFile = QStringLiteral("PB_Neues_Schwein.ko1");
constexpr int LongestNumber = 15;
constexpr int BoarLabel = 20;  // "Besamungsart:"

}  // namespace

PB_Neues_Schwein::PB_Neues_Schwein(Koben& context)
    : Form(context, "PB_Neues_Schwein", "Schweine (Sauen/Eber/Masttiere) eingeben / ändern") {
    kom[0].fixed = kom[4].fixed = true;
    kom[0].setItems({"Sau", "Eber", "Mast", "Ferkel"});
    kom[4].setItems({"N", "K"});
    connectFields();
    connectButtons();
    helpTopic = name();
    acceptButton = &ok;
    cancelButton = &cmdabbrechen;
}

void PB_Neues_Schwein::connectFields() {
    for (const TextField& field : Texts) t[field.index].maxLength = field.width;
    for (const TextField& field : Keywords) kom[field.index].maxLength = field.width;
    kom[0].onClick = kom[0].onLostFocus = [this] { kom0_Click(); };
    for (int i = 0; i < tdat.count(); ++i) {
        tdat[i].onGotFocus = [this] { calend.setVisible(false); };
        tdat[i].onLostFocus = [this, i] { tdat[i].setText(Datum_ergaenzen(tdat[i].text(), koben.Heute)); };
    }
    for (auto& field : tz) {
        TextBox* const box = field.get();
        box->onKeyPress = Nur_Zahlzeichen;
        box->onLostFocus = [box] { box->setText(Zahl_formatieren(QString(box->text()), 2)); };
    }
    static const int captionOf[][2] = {{7, 0}, {10, 1}, {15, 2}, {4, 3}};  // label, tdat
    for (const auto& [label, date] : captionOf) {
        tdat[date].setHint(bez[label].text());
        calender[date].setHint("Kalender " + bez[label].text().chopped(1));
        calender[date].icon = "kalender";
    }
}

void PB_Neues_Schwein::connectButtons() {
    for (int i = 0; i < calender.count(); ++i) calender[i].onClick = [this, i] { calender_Click(i); };
    calend.onPick = [this](QDate date) {
        tdat[m_calendarFor].setText(Datum_als_Anzeige(date));
        calend.setVisible(false);
    };
    ok.onClick = [this] { ok_Click(); };
    for (int i = 0; i < oknächster.count(); ++i) oknächster[i].onClick = [this, i] { oknächster_Click(i); };
    standard.onClick = [this] { standard_Click(); };
    comhilfe.onClick = [this] { koben.open("PH_Hilfe"); };
    cmdabbrechen.onClick = [this] { cmdabbrechen_Click(); };
}

void PB_Neues_Schwein::Load() {
    m_adding = koben.Buchungsmodus != u"Ändern";
    m_db = koben.connect();
    fillLists();
    show();
}

void PB_Neues_Schwein::fillLists() {
    for (const TextField& field : Keywords) {
        const Table rows = m_db.table(QStringLiteral("select * from ") + QString::fromUtf8(field.keywords));
        QStringList items;
        for (int row = 0; row < rows.rowCount(); ++row) items += Hochkomma_ersetzen(rows.text(row, 0));
        kom[field.index].setItems(items);
    }
}

// ----------------------------------------------------------------------------------------------------------- showing

qint64 PB_Neues_Schwein::currentId() const {
    if (m_adding || !koben.herdList) return 0;
    const Grid& herd = koben.herdList->herd();
    return herd.value(herd.row(), u"ID").toInt();
}

void PB_Neues_Schwein::show() {
    calend.setVisible(false);
    if (m_adding)
        showNew();
    else
        showStored();
    kom0_Click();
    t[0].setFocus();
}

void PB_Neues_Schwein::showNew() {
    for (auto& field : t) field->setText({});
    for (auto& field : kom) field->setText({});
    for (auto& field : tdat) field->setText({});
    for (auto& field : tz) field->setText("0,00");
    for (auto& fact : bezinfo) fact->setText({});
    konstatus.setChecked(false);
    konamme.setChecked(false);
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

void PB_Neues_Schwein::showStored() {
    const Recordset row = m_db.open(QStringLiteral("select * from Sauen where ID = %1").arg(currentId()));
    if (row.recordCount() == 0) {
        koben.message("Das Tier, das geändert werden soll, gibt es nicht mehr.");
        return cmdabbrechen_Click();
    }
    const auto text = [&row](const char* field) { return Hochkomma_ersetzen(row.value(QString::fromUtf8(field))); };
    const auto number = [&text](const char* field) { return Zahl_formatieren(text(field), 2); };
    kom[0].setText({});
    for (const QString& kind : kom[0].items())
        if (kind.compare(text("Art"), Qt::CaseInsensitive) == 0) kom[0].setText(kind);
    for (const TextField& field : Texts) t[field.index].setText(text(field.name));
    for (const TextField& field : Keywords) kom[field.index].setText(text(field.name));
    for (const PlainField& field : Dates) tdat[field.index].setText(text(field.name));
    for (const PlainField& field : Numbers) tz[field.index].setText(number(field.name));
    konstatus.setChecked(text("Statusabfrage") == u"N");
    kom[4].setCurrent(text("Belegungsart") == u"N" ? 0 : 1);
    konamme.setChecked(text("Mechanische_Amme") == u"J");
    for (int i = 0; i < bezinfo.count(); ++i) bezinfo[i].setText(text(Facts[i]));
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

void PB_Neues_Schwein::calender_Click(int index) {
    const bool open = !calend.visible() || m_calendarFor != index;
    m_calendarFor = index;
    const QString date = Datum_ergaenzen(tdat[index].text(), koben.Heute);
    calend.setDate(Datum_aus_Text(date.isEmpty() ? koben.Heute : date));
    calend.setVisible(open);
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

// ----------------------------------------------------------------------------------------------------------- buttons

void PB_Neues_Schwein::ok_Click() {
    if (accepted() && save()) cmdabbrechen_Click();
}

/// Saves and goes on: to a fresh record, or to the neighbour in the herd list, wrapping at the ends.
void PB_Neues_Schwein::oknächster_Click(int index) {
    if (!accepted() || !save()) return;
    if (m_adding) {
        if (koben.herdList) koben.herdList->datenschweinelesen();
    } else if (koben.herdList && koben.herdList->herd().rowCount() > 1) {
        koben.Tier_weiterschalten(index == 0 ? 1 : 0);
    }
    show();
}

void PB_Neues_Schwein::cmdabbrechen_Click() {
    m_db.close();
    close();
}

}  // namespace koben
