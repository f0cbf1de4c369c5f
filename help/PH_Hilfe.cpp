#include "help/PH_Hilfe.h"

#include <algorithm>

#include "core/Variablen.h"
#include "help/Druckfassung.h"
#include "output/Uebergabe.h"

namespace koben {
namespace {

const QString HelpFile = QStringLiteral("HILFEKOBEN.HLP");
/// Of its own: the viewer behind may show a report that is still to be printed.
const QString PrintFile = QStringLiteral("HILFE.TXT");
const QString Section = QStringLiteral("PH_Hilfe");
const QString FontKey = QStringLiteral("Schrift");
const QString FirstChapter = QStringLiteral("hilfestartmenue");
constexpr int SmallestStep = -2, LargestStep = 8;

}  // namespace

PH_Hilfe::PH_Hilfe(Koben& koben_) : Form(koben_, QStringLiteral("PH_Hilfe"), QStringLiteral("Hilfe")) {
    cancelButton = &ok;
    t.multiLine = t.readOnly = true;
    t.enterIsTab = t.marksAllOnFocus = false;
    suche.onChange = [this] { suche_Change(); };
    naechster.onClick = [this] { naechster_Click(); };
    li.onClick = [this] { li_Click(); };
    li.onDoubleClick = [this] { t.setFocus(); };
    verweise.onDoubleClick = [this] { verweise_DoubleClick(); };
    zurueck.onClick = [this] { walk(-1); };
    vor.onClick = [this] { walk(+1); };
    for (const int i : {0, 1}) plus1[i].onClick = [this, i] { enlarge(i == 1 ? +1 : -1); };
    drucken.onClick = [this] { drucken_Click(); };
    ok.onClick = [this] { close(); };
}

void PH_Hilfe::Load() {
    QString trouble;
    m_help = Hilfedatei::read(koben.Programmordner + HelpFile, trouble);
    if (!trouble.isEmpty()) {
        koben.message(QStringLiteral("Die Hilfe kann nicht angezeigt werden, ") + trouble + Crlf + Crlf +
                      QStringLiteral("Sie heißt %1 und gehört in den Ordner %2. Bitte richten Sie KOBEN neu ein. Ihre "
                                     "Daten bleiben dabei erhalten.")
                          .arg(HelpFile, koben.Programmordner));
        return close();
    }
    m_fontStep = std::clamp(koben.platform.userSetting(Section, FontKey).toInt(), SmallestStep, LargestStep);
    fillContents();
    const int wanted = m_help.find(topic());
    go(wanted >= 0 ? wanted : std::max(m_help.find(FirstChapter), 0));
}

void PH_Hilfe::FirstShown() { t.setFocus(); }

/// What the form behind says of itself.
QString PH_Hilfe::topic() const {
    const auto& forms = koben.stack();
    if (forms.size() < 2) return FirstChapter;
    const Form& behind = *forms[forms.size() - 2];
    return behind.helpTopic.isEmpty() ? behind.name() : behind.helpTopic;
}

const Kapitel* PH_Hilfe::chapter() const {
    return m_at < 0 ? nullptr : &m_help.chapter(m_visits.at(static_cast<size_t>(m_at)).chapter);
}

// --------------------------------------------------------------------------------------- from chapter to chapter

void PH_Hilfe::go(int chapter, bool bySearch) {
    if (m_at >= 0 && visit().chapter == chapter) {
        visit().bySearch &= bySearch;
    } else {
        const bool instead = bySearch && m_at >= 0 && visit().bySearch;
        m_visits.resize(static_cast<size_t>(instead ? m_at : m_at + 1));
        m_visits.push_back({chapter, bySearch});
        m_at = static_cast<int>(m_visits.size()) - 1;
    }
    show();
}

void PH_Hilfe::open(const QString& name) {
    if (const int chapter = m_help.find(name); chapter >= 0) go(chapter);
}

void PH_Hilfe::walk(int step) {
    m_at = std::clamp(m_at + step, 0, static_cast<int>(m_visits.size()) - 1);
    show();
}

void PH_Hilfe::show() {
    const Kapitel& now = *chapter();
    setCaption(QStringLiteral("Hilfe: ") + now.title);
    t.setText(now.text().replace(u'\n', Crlf));
    QStringList targets;
    for (const Kapitel::Link& link : now.links) {
        const QString title = m_help.chapter(m_help.find(link.target)).title;
        if (!targets.contains(title)) targets.append(title);
    }
    verweise.setItems(targets);
    const auto row = std::find(m_rows.begin(), m_rows.end(), visit().chapter);
    li.setCurrent(row == m_rows.end() ? -1 : static_cast<int>(row - m_rows.begin()));
    zurueck.setEnabled(m_at > 0);
    vor.setEnabled(m_at + 1 < static_cast<int>(m_visits.size()));
    markHits(0);
}

void PH_Hilfe::li_Click() {
    const int chapter = li.current() < 0 ? -1 : m_rows.at(static_cast<size_t>(li.current()));
    if (chapter >= 0) go(chapter);
}

void PH_Hilfe::verweise_DoubleClick() {
    if (verweise.current() < 0) return;
    const QString title = verweise.items().at(verweise.current());
    for (const Kapitel::Link& link : chapter()->links) {
        const int target = m_help.find(link.target);
        if (m_help.chapter(target).title == title) return go(target);
    }
}

// ------------------------------------------------------------------------------------------- contents and search

void PH_Hilfe::fillContents() {
    QStringList items;
    QString group;
    m_rows.clear();
    for (size_t i = 0; i < m_help.chapters().size(); ++i) {
        const Kapitel& each = m_help.chapters()[i];
        if (each.group != group) {
            group = each.group;
            items.append(group.toUpper());
            m_rows.push_back(-1);
        }
        items.append(each.title);
        m_rows.push_back(static_cast<int>(i));
    }
    li.setItems(items);
}

void PH_Hilfe::fillFinds() {
    QStringList items;
    m_rows.clear();
    for (const Fund& fund : m_finds) {
        items.append(QStringLiteral("%1 (%2)").arg(m_help.chapter(fund.chapter).title).arg(fund.places.size()));
        m_rows.push_back(fund.chapter);
    }
    li.setItems(items);
}

bool PH_Hilfe::searching() const { return suche.text().simplified().size() >= ShortestSearch; }

void PH_Hilfe::suche_Change() {
    m_finds = Hilfe_durchsuchen(m_help, suche.text());
    if (searching())
        fillFinds();
    else
        fillContents();
    if (m_finds.empty())
        show();
    else
        go(m_finds.front().chapter, true);
}

/// What was found in the chapter in view.
const Fund* PH_Hilfe::here() {
    const int now = visit().chapter;
    const auto found =
        std::find_if(m_finds.begin(), m_finds.end(), [now](const Fund& fund) { return fund.chapter == now; });
    return found == m_finds.end() ? nullptr : &*found;
}

void PH_Hilfe::naechster_Click() {
    if (m_finds.empty()) return;
    if (m_hit + 1 < static_cast<int>(m_hits.size())) return markHits(m_hit + 1);
    const Fund* now = here();
    const size_t next = now ? static_cast<size_t>(now - m_finds.data()) + 1 : 0;
    go(m_finds[next % m_finds.size()].chapter, true);
}

void PH_Hilfe::markHits(int current) {
    const Fund* now = here();
    m_hits = now ? now->places : std::vector<Fundstelle>();
    m_hit = m_hits.empty() ? -1 : current;
    naechster.setEnabled(!m_finds.empty());
    tellHits();
    tell();
}

void PH_Hilfe::tellHits() {
    size_t before = 0, all = 0;
    const Fund* now = here();
    for (const Fund& fund : m_finds) {
        if (&fund == now) before = all;
        all += fund.places.size();
    }
    const QString chapters =
        m_finds.size() == 1 ? QStringLiteral("einem Kapitel") : QStringLiteral("%1 Kapiteln").arg(m_finds.size());
    if (!searching())
        treffer.setText(QString());
    else if (m_finds.empty())
        treffer.setText(QStringLiteral("Nichts gefunden. Versuchen Sie ein kürzeres oder ein anderes Wort."));
    else if (m_hit < 0)
        treffer.setText(QStringLiteral("%1 Treffer in %2").arg(all).arg(chapters));
    else
        treffer.setText(QStringLiteral("Treffer %1 von %2 in %3")
                            .arg(before + static_cast<size_t>(m_hit) + 1)
                            .arg(all)
                            .arg(chapters));
}

void PH_Hilfe::tell() {
    for (const int i : {0, 1}) plus1[i].setEnabled(m_fontStep != (i == 1 ? LargestStep : SmallestStep));
    if (shown) shown();
}

// ------------------------------------------------------------------------------------------------ size and paper

void PH_Hilfe::enlarge(int step) {
    m_fontStep = std::clamp(m_fontStep + step, SmallestStep, LargestStep);
    koben.platform.setUserSetting(Section, FontKey, QString::number(m_fontStep));
    tell();
}

void PH_Hilfe::drucken_Click() {
    const QString before = koben.Ausgabedatei;
    Text_uebergeben(koben, Druckfassung(*chapter()), PrintFile);
    koben.Ausgabedatei = before;
}

}  // namespace koben
