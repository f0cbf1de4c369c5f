#pragma once
// The offer in the house's network: address and code for the telephone while this window stands open, what it has
// handed over, and the way from there into the import.
#include <QObject>
#include <mutex>

#include "exchange/Empfangsfach.h"
#include "exchange/Geraeteexport.h"
#include "exchange/Hausnetz.h"
#include "forms/DrawingBox.h"
#include "forms/Koben.h"

namespace koben {

class PO_Hausnetz final : public Form {
public:
    explicit PO_Hausnetz(Koben& koben);
    bool onlyToday() const override { return true; }

    Exportauswahl auswahl;  ///< what goes with the page; settled before the form is run

    Label Label1{*this, "Label1"};
    ComboBox kom{*this, "kom"};         ///< the addresses of this machine
    TextBox adresse{*this, "adresse"};  ///< what the telephone opens
    DrawingBox bild{*this, "bild", {60, 60}};
    Label stand{*this, "stand"};
    Grid li{*this, "li"};  ///< what waits to be read in, in the order in which it came
    Button einlesen{*this, "einlesen", "&Einlesen"};
    Button entfernen{*this, "entfernen", "Ent&fernen"};
    Button hilfe{*this, "hilfe", "&Hilfe"};
    Button beenden{*this, "beenden", "&Schließen"};

private:
    void Load() override;
    void openOffer();
    QString renewPage(bool allRead);
    void showAddress();
    void showReceived();

    /// From any thread: what has happened, told in this one as soon as it has time.
    void tell(const QString& news);
    void showNews();

    void readIn();
    int notReadIn(const QByteArray& bytes);
    void remove();
    void leave();

    Database m_db;
    std::vector<net::Place> m_places;
    Empfangsfach m_tray;
    std::vector<Empfangsfach::Eingang> m_waiting;
    std::mutex m_mutex;
    QStringList m_news;  // guarded by it
    QObject m_here;      // of this thread; it outlives the offer, and what it was to hear goes with it
    Hausnetz m_offer;
};

}  // namespace koben
