#pragma once
// Many bookings as lines of text, from a clipboard or a file: a verdict for each line, then booked as one action or
// line by line.
#include <QHash>

#include "core/Schnellzeile.h"
#include "forms/Form.h"
#include "forms/Koben.h"

namespace koben {

class PE_Schnellliste final : public Form {
public:
    explicit PE_Schnellliste(Koben& koben);

    Label Label1{*this, "Label1",
                 "Je Zeile eine Buchung, wie in der Schnelleingabe: 123 f 14/1. Ein Tag allein gilt für die Zeilen "
                 "darunter: gestern"};
    TextBox t{*this, "t"};
    Button einfügen{*this, "einfügen", "Aus der &Zwischenablage"};
    Button datei{*this, "datei", "Aus &Datei ..."};
    Grid li{*this, "li"};
    Label urteil{*this, "urteil"};
    ControlArray<Button> ok{*this, "ok", {"&Alle als eine Aktion buchen", "Zeile für Zeile &buchen"}};
    Button comhilfe{*this, "comhilfe", "&Hilfe"};
    Button abbrechen{*this, "abbrechen", "&Schließen"};

    bool onlyToday() const override { return true; }

private:
    /// A line of the text that is not empty.
    struct Zeile {
        int number;
        QString text;
        QDate head;  ///< of the lines below, where it is no booking but their day
        Schnellzeile read;
    };

    void Load() override;
    void einfügen_Click();
    void datei_Click();
    void prüfen();
    const Schnellzeile& deuten(const QString& line, QDate day);
    qint64 Buchungen() const;
    QString Urteil(const Zeile& line) const;
    void Als_eine_Aktion();
    void Zeile_fuer_Zeile();
    void Herde_lesen();

    Database m_db;
    std::vector<Schnelltier> m_herd;
    QHash<QString, Schnellzeile> m_read;  ///< by line and day, of this herd
    QHash<QString, QString> m_refused;    ///< by line, why its form refused it
    std::vector<Zeile> m_lines;
};

}  // namespace koben
