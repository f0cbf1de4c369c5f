#include "order/PO_Bestellschein.h"

#include <algorithm>

#include "core/Konfig.h"

namespace koben {

namespace {

const QString ListFile = QStringLiteral("artikel.txt");
constexpr int Remark = Kunde::Angaben;  // of the text boxes, behind the customer's data
constexpr int LongestLine = 60, LongestRemark = 500;
constexpr int Most = 9999;  // of one article
constexpr qsizetype FaultsShown = 3;

/// Digits, and the keys that are no characters.
int onlyDigits(int key) { return key < ' ' || (key >= '0' && key <= '9') ? key : 0; }

}  // namespace

PO_Bestellschein::PO_Bestellschein(Koben& koben_)
    : Form(koben_, QStringLiteral("PO_Bestellschein"), QStringLiteral("Bestellformular")) {
    acceptButton = &ok;
    cancelButton = &cmdschließen;
    helpTopic = name();
    for (int i = 0; i < t.count(); ++i) {
        t[i].setHint(bez[i].text());
        t[i].maxLength = i == Remark ? LongestRemark : LongestLine;
    }
    t[Remark].multiLine = true;
    t[Remark].enterIsTab = t[Remark].marksAllOnFocus = false;
    li.setHint(QStringLiteral("Artikel"));
    li.onRowChange = [this] { showQuantity(); };
    const int quantity = 5;
    li.canEdit = [](int, int column) { return column == quantity; };
    li.onEdited = [this](int row, int, const QString& text) {
        bool whole = false;
        const int wanted = text.trimmed().isEmpty() ? 0 : text.trimmed().toInt(&whole);
        if (whole || text.trimmed().isEmpty()) setQuantity(row, wanted);
        showQuantity();
    };
    tz.maxLength = 4;
    tz.setHint(bez[Remark + 1].text());
    tz.onKeyPress = onlyDigits;
    tz.onChange = [this] {
        if (li.row() > 0) setQuantity(li.row(), tz.text().toInt());
    };
    UpDown.onUp = [this] { step(+1); };
    UpDown.onDown = [this] { step(-1); };
    hilfe.onClick = [this] { koben.open(QStringLiteral("PH_Hilfe")); };
    leeren.onClick = [this] { leeren_Click(); };
    ok.onClick = [this] { ok_Click(); };
    cmdschließen.onClick = [this] { cmdschließen_Click(); };
}

void PO_Bestellschein::Load() {
    QString trouble;
    m_preise = Preisliste::read(koben.Programmordner + ListFile, trouble);
    if (!trouble.isEmpty()) {
        koben.message(QStringLiteral("Das Bestellformular kann nicht angezeigt werden, ") + trouble + Crlf + Crlf +
                      QStringLiteral("Die Liste der Artikel heißt %1 und gehört in den Ordner %2. Bitte richten Sie "
                                     "KOBEN neu ein. Ihre Daten bleiben dabei erhalten.")
                          .arg(ListFile, koben.Programmordner));
        return close();
    }
    showCustomer();
    m_mengen.assign(m_preise.artikel.size(), 0);
    fillList();
    QStringList faults = m_preise.faults.mid(0, FaultsShown);
    if (m_preise.faults.size() > FaultsShown)
        faults.append(QStringLiteral("und %1 weitere").arg(m_preise.faults.size() - FaultsShown));
    if (!faults.isEmpty())
        hinweis.setText(QStringLiteral("In der Datei %1 zählen diese Zeilen nicht mit. %2.")
                            .arg(koben.Programmordner + ListFile, faults.join(QStringLiteral("; "))));
    hinweis.setVisible(!faults.isEmpty());
    tell();
}

/// As kept, or the first time as the herd register names the farm.
void PO_Bestellschein::showCustomer() {
    Kunde kunde = Kunde::read(koben.Datenordner);
    if (kunde.anschrift().isEmpty()) {
        const auto& texts = koben.Konfig_Text;
        kunde[Kunde::Betrieb] = texts[Text::RegisterBetrieb].trimmed();
        kunde[Kunde::Strasse] = texts[Text::RegisterBetrieb + 1].trimmed();
        const QString place = texts[Text::RegisterBetrieb + 2].trimmed();  // postal code and town
        const bool code = !place.isEmpty() && place[0].isDigit();
        kunde[Kunde::Plz] = code ? place.section(u' ', 0, 0) : QString();
        kunde[Kunde::Ort] = code ? place.section(u' ', 1).trimmed() : place;
    }
    for (int i = 0; i < Kunde::Angaben; ++i) t[i].setText(kunde[i].left(LongestLine));
}

void PO_Bestellschein::fillList() {
    li.clear();
    li.addColumn({QStringLiteral("nummer"), QStringLiteral("Nummer")});
    li.addColumn({QStringLiteral("artikel"), QStringLiteral("Artikel")});
    li.addColumn({QStringLiteral("einheit"), QStringLiteral("Einheit")});
    li.addColumn({QStringLiteral("preis"), QStringLiteral("Preis (Euro)"), Align::Right, 0, Sort::Number});
    li.addColumn({QStringLiteral("menge"), QStringLiteral("Menge"), Align::Right, 0, Sort::Number});
    li.addColumn({QStringLiteral("betrag"), QStringLiteral("Betrag (Euro)"), Align::Right, 0, Sort::Number});
    li.addColumn(
        {.key = QStringLiteral("id"), .title = QStringLiteral("id"), .technical = true});  // survives another order
    for (size_t i = 0; i < m_preise.artikel.size(); ++i) {
        const Artikel& each = m_preise.artikel[i];
        li.addRow({each.nummer, each.name, each.einheit, Betragstext(each.preis), {}, {}, QString::number(i)});
    }
    li.setRow(1);
    showQuantity();
}

void PO_Bestellschein::showQuantity() {
    const int quantity = li.row() > 0 ? m_mengen.at(static_cast<size_t>(li.integer(li.row(), li.columnOf(u"id")))) : 0;
    const QString text = quantity > 0 ? QString::number(quantity) : QString();
    if (tz.text() != text) tz.setText(text);
}

const Artikel& PO_Bestellschein::artikel(int row) const {
    return m_preise.artikel.at(static_cast<size_t>(li.integer(row, li.columnOf(u"id"))));
}

void PO_Bestellschein::setQuantity(int row, int quantity) {
    int& kept = m_mengen.at(static_cast<size_t>(li.integer(row, li.columnOf(u"id"))));
    const int now = std::clamp(quantity, 0, Most);
    if (kept == now) return;
    kept = now;
    m_open = true;
    li.setCell(row, li.columnOf(u"menge"), now > 0 ? QString::number(now) : QString());
    li.setCell(row, li.columnOf(u"betrag"), now > 0 ? Betragstext(Position{artikel(row), now}.summe()) : QString());
    tell();
}

void PO_Bestellschein::step(int by) {
    if (li.row() == 0) return;
    setQuantity(li.row(), tz.text().toInt() + by);
    showQuantity();
}

void PO_Bestellschein::tell() {
    const Bestellung order = bestellung();
    QStringList parts{order.positionen.size() == 1
                          ? QStringLiteral("1 Artikel bestellt")
                          : QStringLiteral("%1 Artikel bestellt").arg(order.positionen.size())};
    if (!order.positionen.empty())
        for (const auto& [caption, amount] : order.summen())
            parts.append(caption + QStringLiteral(": ") + Betragstext(amount));
    bezsumme.setText(parts.join(QStringLiteral("     ")));
    leeren.setEnabled(!order.positionen.empty());
}

Bestellung PO_Bestellschein::bestellung() const {
    Bestellung order;
    order.empfaenger = m_preise.empfaenger;
    order.datum = koben.Heute;
    order.bemerkung = t[Remark].text();
    order.steuersatz = m_preise.steuersatz;
    for (int i = 0; i < Kunde::Angaben; ++i) order.kunde[i] = t[i].text().trimmed();
    for (size_t i = 0; i < m_mengen.size(); ++i)
        if (m_mengen[i] > 0) order.positionen.push_back({m_preise.artikel[i], m_mengen[i]});
    return order;
}

void PO_Bestellschein::leeren_Click() {
    for (int row = 1; row <= li.rowCount(); ++row) setQuantity(row, 0);
    m_open = false;
    showQuantity();
    li.setFocus();
}

void PO_Bestellschein::check(Findings& found) {
    const auto missing = [&](int field, const char* line) {
        if (t[field].text().trimmed().isEmpty()) found.add(t[field], QString::fromUtf8(line));
    };
    if (t[Kunde::Betrieb].text().trimmed().isEmpty()) missing(Kunde::Name, "...weder Betrieb noch Name angegeben ist.");
    missing(Kunde::Strasse, "...die Straße fehlt.");
    missing(Kunde::Plz, "...die PLZ fehlt.");
    missing(Kunde::Ort, "...der Ort fehlt.");
    if (bestellung().positionen.empty()) found.add(tz, QStringLiteral("...bei keinem Artikel eine Menge steht."));
}

bool PO_Bestellschein::keepCustomer() {
    const Kunde now = bestellung().kunde;
    if (now.angaben == Kunde::read(koben.Datenordner).angaben || now.write(koben.Datenordner)) return true;
    koben.message(
        QStringLiteral("Ihre Angaben als Besteller konnten nicht gesichert werden. Bitte prüfen Sie, ob auf dem "
                       "Datenträger noch Platz ist und ob Sie im Datenordner schreiben dürfen. Bestellen können Sie "
                       "trotzdem."));
    return false;
}

void PO_Bestellschein::ok_Click() {
    for (Control* control : controls()) control->setWrong(false);
    Findings found;
    check(found);
    if (!found.empty()) {
        koben.message(QStringLiteral("Der Bestellschein kann nicht erstellt werden, weil...") + Crlf + Crlf +
                      found.lines().join(Crlf));
        return found.first()->setFocus();
    }
    keepCustomer();
    koben.open(QStringLiteral("HV_Bestellschein"));
}

void PO_Bestellschein::cmdschließen_Click() {
    if (m_open && !bestellung().positionen.empty() &&
        !koben.yesNo(QStringLiteral("Die Bestellung ist noch nicht gedruckt. Soll das Fenster trotzdem geschlossen "
                                    "werden? Die Mengen gehen dann verloren."),
                     true))
        return;
    keepCustomer();
    close();
}

}  // namespace koben
