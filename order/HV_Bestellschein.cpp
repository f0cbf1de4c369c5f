#include "order/HV_Bestellschein.h"

#include "order/PO_Bestellschein.h"

namespace koben {

namespace {

/// The printer that makes a file, by its name among the platform's.
const QString PdfPrinter = QStringLiteral("PDF-Datei");

/// The form that the order is made in; nothing where this one was opened from elsewhere.
PO_Bestellschein* formBehind(const Koben& koben) {
    const auto& forms = koben.stack();
    return forms.size() < 2 ? nullptr : dynamic_cast<PO_Bestellschein*>(forms[forms.size() - 2]);
}

}  // namespace

HV_Bestellschein::HV_Bestellschein(Koben& koben_)
    : Form(koben_, QStringLiteral("HV_Bestellschein"), QStringLiteral("Bestellschein")) {
    acceptButton = &ok;
    cancelButton = &cmdschließen;
    helpTopic = name();
    gridli.setHint(QStringLiteral("Bestellte Artikel"));
    komdrucker.fixed = true;
    komdrucker.setHint(Label3.text());
    hilfe.onClick = [this] { koben.open(QStringLiteral("PH_Hilfe")); };
    pdf.onClick = [this] { print(PdfPrinter); };
    ok.onClick = [this] { print(komdrucker.text()); };
    cmdschließen.onClick = [this] { close(); };
}

void HV_Bestellschein::Load() {
    const PO_Bestellschein* behind = formBehind(koben);
    if (!behind) return close();
    m_order = behind->bestellung();
    const QStringList printers = koben.platform.printers();
    komdrucker.setItems(QStringList{QString()} + printers);
    pdf.setVisible(printers.contains(PdfPrinter));
    showOrder();
}

void HV_Bestellschein::showOrder() {
    QStringList sender = m_order.kunde.anschrift();
    if (!m_order.kunde[Kunde::Nummer].isEmpty())
        sender.append(QStringLiteral("Kundennummer ") + m_order.kunde[Kunde::Nummer]);
    besteller.setText(sender.join(Crlf));
    empfänger.setText(m_order.empfaenger.join(Crlf));
    bemerkung.setText(m_order.bemerkung.trimmed().isEmpty() ? QString()
                                                            : QStringLiteral("Bemerkung: ") + m_order.bemerkung);
    bemerkung.setVisible(!bemerkung.text().isEmpty());
    gridli.clear();
    const auto number = [](const char* key, const char* title) {
        return Column{QString::fromUtf8(key), QString::fromUtf8(title), Align::Right, 0, Sort::Number};
    };
    gridli.addColumn(number("pos", "Pos."));
    gridli.addColumn({QStringLiteral("nummer"), QStringLiteral("Nummer")});
    gridli.addColumn({QStringLiteral("artikel"), QStringLiteral("Artikel")});
    gridli.addColumn(number("menge", "Menge"));
    gridli.addColumn({QStringLiteral("einheit"), QStringLiteral("Einheit")});
    gridli.addColumn(number("preis", "Preis (Euro)"));
    gridli.addColumn(number("betrag", "Betrag (Euro)"));
    int row = 0;
    for (const Position& each : m_order.positionen)
        gridli.addRow({QString::number(++row), each.artikel.nummer, each.artikel.name, QString::number(each.menge),
                       each.artikel.einheit, Betragstext(each.artikel.preis), Betragstext(each.summe())});
    const auto sums = m_order.summen();
    for (int i = 0; i < summe.count(); ++i) {
        const bool there = static_cast<size_t>(i) < sums.size();
        bez[i].setText(there ? sums[static_cast<size_t>(i)].first + u':' : QString());
        summe[i].setText(there ? Betragstext(sums[static_cast<size_t>(i)].second) : QString());
        bez[i].setVisible(there);
        summe[i].setVisible(there);
    }
}

Drawing HV_Bestellschein::druckbild() const {
    DrawingRecorder job(false);
    Bestellung_drucken(m_order, job);
    job.end();
    return job.drawing;
}

/// Nothing to say where no file was chosen; a file that could not be written is told by the platform.
void HV_Bestellschein::print(const QString& printer) {
    const auto job = koben.platform.print(printer, false);
    if (!job && printer == PdfPrinter) return;
    bool printed = false, cancelled = false;
    if (job) {
        Progress progress(koben, QStringLiteral("Der Bestellschein wird gedruckt ..."), 100);
        Bestellung_drucken(m_order, *job);
        printed = job->end([&](int percent) { return progress.step(percent); });
        cancelled = progress.cancelled();
    }
    if (cancelled) return;
    if (!printed)
        return koben.message(
            QStringLiteral("Der Bestellschein kann nicht gedruckt werden, weil der Drucker nicht bereit ist. Bitte "
                           "prüfen Sie, ob er eingeschaltet und angeschlossen ist, oder wählen Sie einen anderen "
                           "Drucker."));
    if (PO_Bestellschein* behind = formBehind(koben)) behind->notePrinted();
}

}  // namespace koben
