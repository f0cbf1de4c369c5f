#pragma once
#include "forms/Form.h"
#include "forms/Koben.h"
#include "help/Hilfesuche.h"

namespace koben {

/// The help: opens on the chapter of the form behind it (its `helpTopic`, else its name), and goes from there by the
/// contents, by links, by what was read before, and by a search over all chapters.
class PH_Hilfe final : public Form {
public:
    explicit PH_Hilfe(Koben& koben);

    Button zurueck{*this, "zurueck", "&Zurück"};
    Button vor{*this, "vor", "&Vor"};
    Label Label1{*this, "Label1", "Suchen:"};
    TextBox suche{*this, "suche"};
    Button naechster{*this, "naechster", "&Nächster Treffer"};
    Label treffer{*this, "treffer"};
    /// The contents, headings in capitals; while something is searched for, the chapters that have it.
    ListBox li{*this, "li"};
    Label Label2{*this, "Label2", "Siehe auch:"};
    ListBox verweise{*this, "verweise"};  ///< where the links of the chapter lead; a double click goes there
    TextBox t{*this, "t"};                ///< the chapter
    ControlArray<Button> plus1{*this, "plus1", {"Schrift kleiner", "Schrift größer"}};
    Button drucken{*this, "drucken", "&Drucken"};
    Button ok{*this, "ok", "&Schließen"};

    /// The chapter in view; nothing where the file has none.
    const Kapitel* chapter() const;
    /// What was found in it, and which of it the user is at, -1 for none.
    const std::vector<Fundstelle>& hits() const { return m_hits; }
    int currentHit() const { return m_hit; }
    /// Steps that the user has made the letters larger, below 0 smaller.
    int fontStep() const { return m_fontStep; }
    /// Chapter, hits or size of letters have changed; set by the window.
    std::function<void()> shown;
    void open(const QString& name);

private:
    struct Visit {
        int chapter;
        bool bySearch;  ///< not chosen: the search showed it, and the next one that it shows takes its place
    };

    void Load() override;
    void FirstShown() override;
    void suche_Change();
    void naechster_Click();
    void li_Click();
    void verweise_DoubleClick();
    void walk(int step);
    void enlarge(int step);
    void drucken_Click();

    QString topic() const;
    Visit& visit() { return m_visits.at(static_cast<size_t>(m_at)); }
    void fillContents();
    void fillFinds();
    void go(int chapter, bool bySearch = false);
    void show();
    void markHits(int current);
    void tellHits();
    void tell();
    bool searching() const;
    const Fund* here();

    Hilfedatei m_help{QString()};
    std::vector<Fund> m_finds;    // of the search
    std::vector<int> m_rows;      // chapter of each row of li, -1 for a heading
    std::vector<Visit> m_visits;  // what was read, in order
    int m_at = -1;                // which of it is in view
    std::vector<Fundstelle> m_hits;
    int m_hit = -1;
    int m_fontStep = 0;
};

}  // namespace koben
