#include "ui/Names.h"

#include <QCalendarWidget>
#include <QComboBox>
#include <QHash>
#include <QLineEdit>
#include <QMenuBar>
#include <QSplitter>
#include <QToolBar>
#include <QToolButton>

#include "forms/Form.h"

namespace koben::ui {

namespace {

/// By "form.control", or by the control alone where it is the same in every form.
const QHash<QString, QString>& words() {
    static const QHash<QString, QString> table{
        {QStringLiteral("PA_Koben.datali"), QStringLiteral("Liste der Tiere")},
        {QStringLiteral("PA_Koben.Text1"), QStringLiteral("Tierdaten")},
        {QStringLiteral("PA_Textausgabe.t"), QStringLiteral("Bericht")},
        {QStringLiteral("PA_Textausgabe.kom"), QStringLiteral("Schriftart")},
        {QStringLiteral("PA_Textausgabe.komdrucker"), QStringLiteral("Drucker")},
        {QStringLiteral("PA_Textausgabe.gr_e"), QStringLiteral("Schriftgröße")},
        {QStringLiteral("PA_Textausgabe.tz"), QStringLiteral("Linker Rand in Zeichen")},
        {QStringLiteral("PA_Zwischenliste.gridli"), QStringLiteral("Ergebnis der Auswertung")},
        {QStringLiteral("PB_Arbeitsplan.liarplan"), QStringLiteral("Arbeitspläne")},
        {QStringLiteral("PB_Arbeitsplan.tdat"), QStringLiteral("Beginn des Zeitraums")},
        {QStringLiteral("PB_Arbeitsplan.t"), QStringLiteral("Zeichen für die tabellarische Liste")},
        {QStringLiteral("PB_Wartezeiten.gridli"), QStringLiteral("Tiere in der Wartezeit")},
        {QStringLiteral("PE_Bewegungsdaten.schweinli"), QStringLiteral("Tiere zur Auswahl")},
        {QStringLiteral("PE_Bewegungsdaten.li"), QStringLiteral("Buchungen des Tieres")},
        {QStringLiteral("PB_Verkauf_Ferkel_Eingabe.gridli"), QStringLiteral("Ferkel im Bestand")},
        {QStringLiteral("PB_Verluste_Ferkel_Eingabe.gridli"), QStringLiteral("Ferkel im Bestand")},
        {QStringLiteral("PE_Bewegungsdaten_Ferkelverkauf.gridli"), QStringLiteral("Ferkel im Bestand")},
        {QStringLiteral("PE_Bewegungsdaten_Verluste.gridli"), QStringLiteral("Ferkel im Bestand")},
        {QStringLiteral("PO_Hausnetz.li"), QStringLiteral("Empfangene Übergaben")},
        {QStringLiteral("S_Importtabelle.Text1"), QStringLiteral("Inhalt der Datei")},
        {QStringLiteral("calend"), QStringLiteral("Kalender")},
        {QStringLiteral("calender"), QStringLiteral("Kalender öffnen")},
        {QStringLiteral("gridli"), QStringLiteral("Liste")},
        {QStringLiteral("li"), QStringLiteral("Einträge")},
        {QStringLiteral("meter"), QStringLiteral("Fortschritt")},
        {QStringLiteral("tdat"), QStringLiteral("Datum")},
        {QStringLiteral("UpDown"), QStringLiteral("Zahl ändern")},
    };
    return table;
}

void name(QWidget& widget, const QString& words) {
    if (widget.accessibleName().isEmpty()) widget.setAccessibleName(words);
}

/// Parts that Qt makes have fixed object names.
const std::pair<const char*, const char16_t*> parts[] = {{"qt_calendar_prevmonth", u"Voriger Monat"},
                                                         {"qt_calendar_nextmonth", u"Nächster Monat"},
                                                         {"qt_calendar_monthbutton", u"Monat wählen"},
                                                         {"qt_calendar_yearbutton", u"Jahr wählen"},
                                                         {"qt_calendar_yearedit", u"Jahr"},
                                                         {"qt_calendar_calendarview", u"Tage des Monats"},
                                                         {"qt_toolbar_ext_button", u"Weitere Befehle"}};

}  // namespace

QString wordFor(const Control& control) {
    const QString own = words().value(control.form().name() + u'.' + control.name());
    return own.isEmpty() ? words().value(control.name()) : own;
}

void nameParts(QWidget& window) {
    for (const auto& [object, words] : parts)
        for (QWidget* part : window.findChildren<QWidget*>(QString::fromLatin1(object)))
            part->setAccessibleName(QString::fromUtf16(words));
    for (QComboBox* list : window.findChildren<QComboBox*>())
        if (list->lineEdit()) list->lineEdit()->setAccessibleName(list->accessibleName());
    for (QCalendarWidget* month : window.findChildren<QCalendarWidget*>()) name(*month, QStringLiteral("Kalender"));
    for (QMenuBar* bar : window.findChildren<QMenuBar*>()) name(*bar, QStringLiteral("Menü"));
    for (QToolBar* bar : window.findChildren<QToolBar*>()) name(*bar, QStringLiteral("Werkzeugleiste"));
    for (QSplitter* panes : window.findChildren<QSplitter*>())
        for (int i = 1; i < panes->count(); ++i) name(*panes->handle(i), QStringLiteral("Breite ändern"));
    for (QLineEdit* field : window.findChildren<QLineEdit*>())
        for (QToolButton* sign : field->findChildren<QToolButton*>()) name(*sign, QStringLiteral("Feld leeren"));
}

}  // namespace koben::ui
