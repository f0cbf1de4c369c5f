#include "exchange/PO_Hausnetz.h"

#include <QFile>

#include "core/Aktionsnamen.h"
#include "exchange/Geraeteplan.h"
#include "exchange/Stallseite.h"
#include "output/QrCode.h"
#include "store/Files.h"

namespace koben {
namespace {

constexpr double CodeSize = 60;  // millimetres

QString clockTime(const QDateTime& when) { return when.toString(QStringLiteral("HH:mm")); }

QString bookings(int count) { return counted(count, "Buchung", "Buchungen"); }

QString captionOf(const net::Place& place) {
    const QString address = QString::fromStdString(net::textOf(place.address));
    if (net::isLoopback(place.address)) return address + QStringLiteral(" - nur auf diesem Rechner");
    return QStringLiteral("%1 - %2 (%3)")
        .arg(address, place.radio ? QStringLiteral("WLAN") : QStringLiteral("Netzwerk"),
             QString::fromStdString(place.card));
}

}  // namespace

PO_Hausnetz::PO_Hausnetz(Koben& koben_)
    : Form(koben_, "PO_Hausnetz", "Im Hausnetz anbieten"),
      m_tray(koben_.Datenordner),
      m_offer({.take =
                   [this](const QByteArray& bytes, const QString& from) {
                       const QDateTime now = QDateTime::currentDateTime();
                       const Quittung receipt = m_tray.keep(bytes, from, now);
                       tell(receipt.grund.isEmpty() ? QStringLiteral("%1 empfangen von %2 um %3.")
                                                          .arg(bookings(receipt.buchungen), from, clockTime(now))
                                                    : QStringLiteral("Um %1 von %2 nichts angenommen: %3")
                                                          .arg(clockTime(now), from, receipt.grund));
                       return receipt;
                   },
               .fetched =
                   [this](const QString& from) {
                       tell(QStringLiteral("Seite abgeholt von %1 um %2.")
                                .arg(from, clockTime(QDateTime::currentDateTime())));
                   }}) {
    Label1.setText(
        "Solange dieses Fenster offen ist, holt ein Telefon im selben WLAN hier die Seite für den Stall ab und sendet "
        "Buchungen zurück. Lesen Sie den Code mit der Kamera, oder tippen Sie die Adresse ab. Geben Sie sie niemandem "
        "weiter.");
    kom.fixed = true;
    kom.onClick = [this] { showAddress(); };
    adresse.readOnly = true;
    adresse.fixedPitch = true;
    bild.setHint("Code der Adresse, für die Kamera des Telefons");
    bild.paper = true;
    li.addColumn({"Wann", "Empfangen", Align::Left, 0, Sort::Date});
    li.addColumn({"Von", "Von", Align::Left, 0});
    li.addColumn({"Buchungen", "Buchungen", Align::Right, 0, Sort::Number});
    einlesen.onClick = [this] { readIn(); };
    entfernen.onClick = [this] { remove(); };
    hilfe.onClick = [this] { koben.open("PH_Hilfe"); };
    beenden.onClick = [this] { leave(); };
    cancelButton = &beenden;
    helpTopic = name();
}

void PO_Hausnetz::Load() {
    m_db = koben.connect();
    m_places = net::ownPlaces();
    if (m_places.empty()) m_places = {{0x7f000001U, {}, false}};
    QStringList captions;
    for (const net::Place& place : m_places) captions += captionOf(place);
    kom.setItems(captions);
    kom.setCurrent(0);
    showReceived();
    openOffer();
}

void PO_Hausnetz::openOffer() {
    QString trouble = renewPage(false);
    if (trouble.isEmpty())
        if (const QString reason = m_offer.open(); !reason.isEmpty())
            trouble = QStringLiteral(
                          "Es wird nichts angeboten: %1. Beenden Sie andere Programme und öffnen Sie das Fenster "
                          "noch einmal.")
                          .arg(reason);
    if (trouble.isEmpty() && net::isLoopback(m_places.front().address))
        trouble =
            "Dieser Rechner ist mit keinem Hausnetz verbunden. Stecken Sie das Netzwerkkabel ein oder schalten Sie das "
            "WLAN "
            "an, und öffnen Sie das Fenster noch einmal.";
    stand.setText(trouble.isEmpty() ? QStringLiteral("Bereit. Noch hat niemand die Seite abgeholt.") : trouble);
    showAddress();
}

/// The page of the herd as it is now. "" or why it cannot be had. In the data folder stays the one that tells since
/// when desk and telephone may have gone apart, until all that came from there is read in.
QString PO_Hausnetz::renewPage(bool allRead) {
    const WaitCursor wait(koben);
    QByteArray bytes, page;
    if (composeDeviceFile(
            m_db, auswahl, koben.Datenordner + "PB_Arbeitsplan_Pocket.txt", [](int) { return true; }, bytes) !=
        Exportergebnis::Done)
        return QStringLiteral(
            "Es wurden lt. den aktuellen Einstellungen keine Tiere gefunden! Es wird nichts angeboten.");
    QString trouble = composeBarnPage(koben, m_db, auswahl, bytes, page);
    if (trouble.isEmpty() && (allRead || !QFile::exists(koben.Datenordner + Stallseite)))
        trouble = keepBarnPage(koben, page);
    if (trouble.isEmpty()) m_offer.show(servedPage(page));
    return trouble;
}

void PO_Hausnetz::showAddress() {
    const int place = kom.current();
    const QString address =
        m_offer.isOpen() && place >= 0 ? m_offer.address(m_places.at(static_cast<size_t>(place)).address) : QString();
    adresse.setText(address);
    Sketch sketch{.size = {CodeSize, CodeSize}, .items = {}, .areas = {}};
    if (!address.isEmpty()) sketch.items = drawQrCode(qrCode(address), QRectF(0, 0, CodeSize, CodeSize));
    bild.setSketch(sketch);
}

void PO_Hausnetz::showReceived() {
    m_waiting = m_tray.waiting();
    const int row = li.row();
    li.clearRows();
    for (const Empfangsfach::Eingang& entry : m_waiting) {
        const auto count = static_cast<qint64>(Geraetedatei::read(m_tray.bytes(entry)).bookings().size());
        li.addValues({entry.wann.toString(QStringLiteral("dd.MM.yyyy HH:mm")), entry.von, count});
    }
    li.setRow(std::min(std::max(row, 1), li.rowCount()));
    einlesen.setEnabled(!m_waiting.empty());
    entfernen.setEnabled(!m_waiting.empty());
}

// --------------------------------------------------------------------------------------------------------------- news

void PO_Hausnetz::tell(const QString& news) {
    const std::lock_guard lock(m_mutex);
    m_news += news;
    QMetaObject::invokeMethod(
        &m_here, [this] { koben.attempt([this] { showNews(); }); }, Qt::QueuedConnection);
}

void PO_Hausnetz::showNews() {
    QStringList news;
    {
        const std::lock_guard lock(m_mutex);
        news.swap(m_news);
    }
    if (news.isEmpty() || closed()) return;
    stand.setText(news.last());
    showReceived();
}

// ------------------------------------------------------------------------------------------------------- what waits

/// One after the other, the oldest first: it goes to where the import reads, and the import's window opens.
void PO_Hausnetz::readIn() {
    showNews();
    const Empfangsfach::Eingang entry = m_waiting.front();
    if (const QString reason = m_tray.offer(entry); !reason.isEmpty())
        return koben.message(
            fileFailure("Die empfangenen Buchungen können nicht zum Einlesen bereitgelegt werden", reason));
    koben.open("PO_Pocketimport");
    const int left = notReadIn(m_tray.bytes(entry));
    QString told = QStringLiteral("Noch nicht eingelesen: %1 der Übergabe von %2. Sie bleibt in der Liste.")
                       .arg(bookings(left), entry.von);
    if (left == 0) {
        const QString reason = m_tray.putAway(entry);
        if (!reason.isEmpty())
            koben.message(fileFailure("Die Übergabe ist eingelesen, kann aber nicht abgelegt werden", reason));
        showReceived();
        const QString trouble = renewPage(m_waiting.empty());
        told = trouble.isEmpty() ? QStringLiteral(
                                       "Eingelesen: die Übergabe von %1. Am Telefon zeigt die neu geladene Seite "
                                       "den neuen Stand.")
                                       .arg(entry.von)
                                 : trouble;
    }
    stand.setText(told);
    showReceived();
}

/// The herd itself says what of a file it has: so many bookings would be new in it.
int PO_Hausnetz::notReadIn(const QByteArray& bytes) {
    const Geraetedatei file = Geraetedatei::read(bytes);
    const auto noNewSow = [](const QString&) { return false; };
    return planDeviceBookings(m_db, file, true, noNewSow).count(Geraeteurteil::Neu);
}

void PO_Hausnetz::remove() {
    showNews();
    const Empfangsfach::Eingang entry = m_waiting.at(static_cast<size_t>(std::max(li.row(), 1) - 1));
    if (!koben.yesNo(QStringLiteral("Die Übergabe von %1 (%2) aus der Liste nehmen, ohne sie einzulesen?")
                             .arg(entry.von, entry.wann.toString(QStringLiteral("dd.MM.yyyy HH:mm"))) +
                         Crlf + Crlf + "Ihre Datei bleibt im Ordner Hausnetz/eingelesen Ihrer Daten.",
                     true))
        return;
    if (const QString reason = m_tray.putAway(entry); !reason.isEmpty())
        koben.message(fileFailure("Die Übergabe kann nicht abgelegt werden", reason));
    showReceived();
}

void PO_Hausnetz::leave() {
    showNews();
    const int waiting = static_cast<int>(m_waiting.size());
    if (waiting > 0 && !koben.yesNo("Noch nicht eingelesen: " + counted(waiting, "Übergabe", "Übergaben") +
                                    " vom Telefon. Sie bleiben hier liegen, bis Sie dieses Fenster wieder öffnen." +
                                    Crlf + Crlf + "Möchten Sie das Fenster trotzdem schließen?"))
        return;
    m_offer.close();
    m_db.close();
    close();
}

}  // namespace koben
