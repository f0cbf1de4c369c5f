#pragma once
#include "core/Datenpruefung.h"
#include "forms/Form.h"
#include "forms/Koben.h"

namespace koben {

/// The check of the database on demand: pages, bookings and their animals, what is derived against what is booked, the
/// rows against the journal. Tells it in German, and repairs what can be repaired without a loss. What another program
/// has changed the user can take note of: it is no concern any more until something else is changed.
class PA_Prüfung final : public Form {
public:
    explicit PA_Prüfung(Koben& koben);
    bool onlyToday() const override { return true; }

    Label Label1{*this, "Label1"};  ///< what came of it, in a sentence
    TextBox t{*this, "t"};          ///< each of the things that were looked at
    Button ok{*this, "ok", "Neu &prüfen"};
    Button reparieren{*this, "reparieren", "&Reparieren"};
    Button kenntnis{*this, "kenntnis", "&Zur Kenntnis nehmen"};
    Button listen{*this, "listen", "&Listen"};
    Button hilfe{*this, "hilfe", "&Hilfe"};
    Button beenden{*this, "beenden", "&Schließen"};

private:
    void Load() override;
    void FirstShown() override;
    void ok_Click();
    void reparieren_Click();
    void kenntnis_Click();
    bool checkData();
    void listen_Click();
    void show(const QString& pages, bool whole);

    Database m_db;
    std::vector<Pruefbefund> m_findings;
};

/// The rows against the journal; what the user has taken note of is in order.
std::optional<Pruefbefund> Verlauf_pruefen(Koben& koben, const Database& db, const CycleProgress& go);

/// Looks at every page of the database. "" where it is whole, otherwise what to do in the user's words; nothing where
/// it was given up. What was found goes to the log of errors.
std::optional<QString> Seiten_pruefen(Koben& koben, Check check);

}  // namespace koben
