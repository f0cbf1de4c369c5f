#include "plans/PB_Sauenkarte_gezeichnet.h"

#include <algorithm>

namespace koben {

namespace {

const QString Section = QStringLiteral("pb_sauenkarte_gezeichnet"), FieldsKey = QStringLiteral("Felder"),
              SizeKey = QStringLiteral("Größe");

constexpr double BetweenCards = 9;  // millimetres

/// The boxes of the cards on a page.
std::vector<QRectF> places(Kartengroesse size) {
    if (size == Kartengroesse::A4) return {QRectF({0, 0}, Kartenseite)};
    const QSizeF half(Kartenseite.width(), (Kartenseite.height() - BetweenCards) / 2);
    return {QRectF({0, 0}, half), QRectF({0, half.height() + BetweenCards}, half)};
}

/// Where the two cards of a page are cut apart.
StraightLine cut() {
    const double y = Kartenseite.height() / 2;
    return {.from = {0, y}, .to = {Kartenseite.width(), y}, .width = 0.2, .tone = Tone::Quiet, .dash = Dash::Dotted};
}

}  // namespace

PB_Sauenkarte_gezeichnet::PB_Sauenkarte_gezeichnet(Koben& koben_)
    : Sauenkartendruck(koben_, "PB_Sauenkarte_gezeichnet", "Sauenkarten zeichnen") {
    optigröße.frame = QStringLiteral("Größe der Karte");
    livorrat.setHint(Label3.text());
    lifelder.setHint(Label4.text());
    ok.onClick = [this] {
        if (const auto rows = rowsToPrint(); !rows.empty()) print(rows);
    };
    aufnehmen.onClick = livorrat.onDoubleClick = [this] { aufnehmen_Click(); };
    entfernen.onClick = lifelder.onDoubleClick = [this] { entfernen_Click(); };
    for (int i = 0; i < verschieben.count(); ++i) verschieben[i].onClick = [this, i] { verschieben_Click(i); };
    bind([this] { restoreFields(); },
         [this] { koben.platform.setUserSetting(Section, FieldsKey, m_fields.join(u';') + u';'); });
    bind([this] { optigröße.select(koben.platform.userSetting(Section, SizeKey) == u"A5" ? 1 : 0); },
         [this] { koben.platform.setUserSetting(Section, SizeKey, optigröße.selected() == 1 ? "A5" : "A4"); });
}

/// What this version does not know is left out. Kept as "a;b;", so that none at all is ";".
void PB_Sauenkarte_gezeichnet::restoreFields() {
    const QString kept = koben.platform.userSetting(Section, FieldsKey);
    m_fields = kept.isEmpty() ? Kartenfelder_vorgabe() : kept.split(u';', Qt::SkipEmptyParts);
    m_fields.removeDuplicates();
    m_fields.removeIf([](const QString& id) { return Kartenfeldname(id).isEmpty(); });
    showFields(0);
}

/// Both lists anew, with a row of the chosen ones current.
void PB_Sauenkarte_gezeichnet::showFields(int row) {
    QStringList chosen, others;
    for (const QString& id : m_fields) chosen += Kartenfeldname(id);
    for (const Kartenfeld& field : Kartenfelder())
        if (!m_fields.contains(QString::fromUtf8(field.id))) others += QString::fromUtf8(field.caption);
    const int other = livorrat.current();
    lifelder.setItems(chosen);
    livorrat.setItems(others);
    lifelder.setCurrent(std::min(row, static_cast<int>(chosen.size()) - 1));
    livorrat.setCurrent(std::clamp(other, others.isEmpty() ? -1 : 0, static_cast<int>(others.size()) - 1));
}

void PB_Sauenkarte_gezeichnet::aufnehmen_Click() {
    const int row = livorrat.current();
    if (row < 0) return koben.message("Bitte wählen Sie zuerst links die Angabe, die auf die Karte soll.");
    for (const Kartenfeld& field : Kartenfelder())
        if (QString::fromUtf8(field.caption) == livorrat.items().at(row)) m_fields += QString::fromUtf8(field.id);
    showFields(static_cast<int>(m_fields.size()) - 1);
}

void PB_Sauenkarte_gezeichnet::entfernen_Click() {
    const int row = lifelder.current();
    if (row < 0) return koben.message("Bitte wählen Sie zuerst rechts die Angabe, die nicht mehr auf die Karte soll.");
    m_fields.removeAt(row);
    showFields(row);
}

void PB_Sauenkarte_gezeichnet::verschieben_Click(int index) {
    const int row = lifelder.current(), to = row + (index == 0 ? -1 : 1);
    if (row < 0) return koben.message("Bitte wählen Sie zuerst rechts die Angabe, die Sie verschieben möchten.");
    if (to < 0 || to >= m_fields.size()) return;
    m_fields.swapItemsAt(row, to);
    showFields(to);
}

bool PB_Sauenkarte_gezeichnet::draw(PrintJob& job, const std::vector<int>& rows, const PrintJob::Go& go) const {
    const std::vector<qint64> sows = sowsOf(rows);
    const Kartenblaetter cards(m_db, koben.Heute, sows, [&] { return go(0); });
    const auto size = optigröße.selected() == 1 ? Kartengroesse::A5 : Kartengroesse::A4;
    const std::vector<QRectF> boxes = places(size);
    for (size_t i = 0; i < sows.size(); ++i) {
        if (!go(static_cast<int>(i * 100 / sows.size()))) return false;
        const size_t place = i % boxes.size();
        if (i > 0 && place == 0) job.newPage();
        if (place == 1) job.place(cut());
        for (const DrawItem& item : drawKartenblatt(cards.of(sows[i]), cards.herd(), m_fields, size, boxes[place]))
            job.place(item);
    }
    return go(100);
}

}  // namespace koben
