#include "herd/PA_Verlauf.h"

#include <algorithm>

#include "core/PZ_Koben_Subs.h"
#include "forms/Zurueck.h"

namespace koben {
namespace {

enum Keeping { Years, Megabytes };
constexpr int MostYears = 99, MostMegabytes = 9999;
constexpr size_t NamedMost = 15;  // in a question

QString timeOf(const Journal::Entry& entry) { return Value(entry.time).toText(); }

}  // namespace

PA_Verlauf::PA_Verlauf(Koben& context) : Form(context, QStringLiteral("PA_Verlauf"), QStringLiteral("Verlauf")) {
    li.addColumn({.key = "zeit", .title = "Zeit", .sort = Sort::Date});
    li.addColumn({.key = "aktion", .title = "Aktion"});
    li.addColumn({.key = "fenster", .title = "Fenster"});
    li.addColumn({.key = "zeilen", .title = "Zeilen", .align = Align::Right, .sort = Sort::Number});
    li.addColumn({.key = "nr", .title = {}, .technical = true});
    li.setHint("Aktionen, die neueste zuerst");
    li.onResized = [this](int) { koben.saveWidths(li, "pa_verlauf"); };
    suche.setHint(bez[0].text());
    suche.onChange = [this] { show(); };
    suche.enterIsTab = false;
    for (int i = 0; i < tz.count(); ++i) {
        tz[i].setHint(bez[i + 1].text());
        tz[i].onKeyPress = Nur_Ziffern;
        tz[i].onLostFocus = [this] { keepingChanged(); };
    }
    ruecknahme.onClick = [this] { ruecknahme_Click(); };
    hilfe.onClick = [this] { koben.open("PH_Hilfe"); };
    beenden.onClick = [this] {
        m_db.close();
        close();
    };
    cancelButton = &beenden;
}

void PA_Verlauf::Load() {
    m_db = koben.connect();
    koben.restoreWidths(li, "pa_verlauf");
}

void PA_Verlauf::Activate() {
    const WaitCursor wait(koben);
    const Journal journal(m_db);
    m_entries = journal.entries();
    m_animals.clear();
    const auto keeping = journal.keeping();
    tz[Years].setText(QString::number(keeping.years));
    tz[Megabytes].setText(QString::number(keeping.megabytes));
    showSize();
    show();
}

/// What stays is said here, and removed by the next compaction.
void PA_Verlauf::showSize() {
    constexpr double megabyte = 1 << 20;
    umfang.setText(
        QStringLiteral("%1 Einträge, %2 MB. Was älter oder mehr ist, entfernt „Optionen / Datenbank "
                       "komprimieren“.")
            .arg(m_entries.size())
            .arg(Zahl_formatieren(
                QString::number(static_cast<double>(Journal(m_db).bytes()) / megabyte, 'f', 2).replace(u'.', u','),
                2)));
}

void PA_Verlauf::keepingChanged() {
    const auto within = [](const TextBox& box, int most) {
        return std::clamp(static_cast<int>(Wert(box.text())), 1, most);
    };
    const Journal journal(m_db);
    const Journal::Keeping before = journal.keeping(),
                           now{within(tz[Years], MostYears), within(tz[Megabytes], MostMegabytes)};
    tz[Years].setText(QString::number(now.years));
    tz[Megabytes].setText(QString::number(now.megabytes));
    if (before.years != now.years || before.megabytes != now.megabytes) journal.keep(now);
}

/// The caption that a form begins with; that of the main form names the program.
QString PA_Verlauf::windowCaption(const QString& form) {
    if (!m_captions.contains(form)) {
        QString caption;
        if (form == u"PA_Koben")
            caption = "Tierliste";
        else if (const auto made = koben.catalogue.make(form, koben))
            caption = made->caption();
        m_captions.insert(form, caption);
    }
    return m_captions.value(form);
}

const std::set<qint64>& PA_Verlauf::ofAnimal(const QString& number) {
    const auto known = m_animals.constFind(number);
    if (known != m_animals.cend()) return *known;
    std::set<qint64> entries;
    Statement animal = m_db.prepare("select ID from Sauen where Nummer = ?");
    for (animal.bind({number}); animal.next();) {
        const auto some = Journal(m_db).ofAnimal(animal.integer(0));
        entries.insert(some.begin(), some.end());
    }
    return *m_animals.insert(number, entries);
}

bool PA_Verlauf::meets(const Entry& entry, const QString& word) {
    return entry.name.contains(word, Qt::CaseInsensitive) || timeOf(entry).contains(word) ||
           windowCaption(entry.window).contains(word, Qt::CaseInsensitive) || ofAnimal(word).contains(entry.number);
}

void PA_Verlauf::show() {
    const QStringList words = Hochkomma_ersetzen(suche.text()).split(u' ', Qt::SkipEmptyParts);
    li.clearRows();
    for (const Entry& entry : m_entries) {
        if (!std::all_of(words.begin(), words.end(), [&](const QString& word) { return meets(entry, word); })) continue;
        const char* undone = entry.kind == Journal::Kind::TakeBack ? " (aufgehoben)" : " (zurückgenommen)";
        const QString name = entry.counts() ? entry.name : entry.name + QString::fromUtf8(undone);
        li.addValues({entry.time, name, windowCaption(entry.window), entry.rows, entry.number});
    }
    if (li.rowCount() > 0) li.setRow(1);
    ruecknahme.setEnabled(li.rowCount() > 0);
}

/// The marked actions, or the current one.
std::vector<qint64> PA_Verlauf::chosen() const {
    std::vector<int> rows = li.markedRows();
    if (rows.empty() && li.row() > 0) rows.push_back(li.row());
    std::vector<qint64> numbers;
    for (const int row : rows) numbers.push_back(li.value(row, u"nr").toInt());
    return numbers;
}

bool PA_Verlauf::agreedWith(const Ruecknahme& journal, const Ruecknahme::Plan& plan) const {
    if (plan.added.empty()) return true;
    QStringList lines;
    for (const Entry& entry : plan.added) {
        if (static_cast<size_t>(lines.size()) == NamedMost) {
            lines += QStringLiteral("... und %1 weitere").arg(plan.added.size() - NamedMost);
            break;
        }
        lines += QStringLiteral("%1: %2").arg(timeOf(entry), journal.subject(entry));
    }
    const bool one = lines.size() == 1;
    return koben.yesNo((chosen().size() == 1 ? QStringLiteral("Auf der markierten Aktion beruht:")
                                             : QStringLiteral("Auf den markierten Aktionen beruht:")) +
                           Crlf + Crlf + lines.join(Crlf) + Crlf + Crlf +
                           (one ? QStringLiteral("Soll diese Aktion mit zurückgenommen werden?")
                                : QStringLiteral("Sollen diese Aktionen mit zurückgenommen werden?")),
                       true);
}

void PA_Verlauf::ruecknahme_Click() {
    std::vector<qint64> numbers = chosen();
    if (numbers.empty()) return koben.message("Bitte markieren Sie zuerst die Aktion, die Sie zurücknehmen möchten.");
    if (!koben.notWritable.isEmpty()) return koben.message(koben.notWritable);
    const Ruecknahme journal(m_db, koben);
    if (numbers.size() > 1)  // of many, those that are taken back already are no hindrance
        std::erase_if(numbers, [&](qint64 number) {
            const auto entry = Journal(m_db).entry(number);
            return entry && !entry->counts();
        });
    const Ruecknahme::Plan plan = journal.plan(numbers);
    if (!plan.refusal.isEmpty()) return koben.message(plan.refusal);
    if (!agreedWith(journal, plan)) return;
    if (!carryOut(koben, journal, plan).done()) return;
    koben.Liste_neu_laden = 1;
    Activate();
}

}  // namespace koben
