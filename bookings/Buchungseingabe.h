#pragma once
// The shape of all entry screens of the booking frame: facts of the animal, several animals at once, previous and next
// animal. A screen that follows it says only which fields it has and what is its own.
#include "bookings/Bewegungseingabe.h"
#include "bookings/PE_Bewegungsdaten.h"

namespace koben {

class Buchungseingabe : public Bewegungseingabe {
public:
    ControlArray<Label> bezschwein{*this, "bezschwein", {"", "", "", "", "", "", "", "", "", "", "", ""}};
    ControlArray<Button> nextschwein{*this, "nextschwein", {"Voriges Tier", "Nächstes Tier"}};

    const QString& rahmen() const { return m_rahmen; }

protected:
    static constexpr int MostByArrows = 99;  ///< of a count

    /// frame: title around the inputs.
    Buchungseingabe(Koben& koben, const QString& name, const QString& caption, Buchungsart kind, const QString& frame);

    // Sources of lists.
    Source valuesOf(const char* field) const;  ///< the values that the field holds already
    static Source keywords(const char* table, const char* sql);
    static Source remarks();      ///< those of the master data
    static Source lossReasons();  ///< the four fixed ones, then the others in use

    // What a screen may say itself.

    void check(Findings& found) override;
    QString refusal() const override { return QStringLiteral("Die Buchung kann nicht vorgenommen werden"); }
    /// The rows of the animal list that the booking is for; nothing where the user called it off.
    virtual std::optional<std::vector<int>> animals();
    virtual QString hintOnSeveral() const { return {}; }  ///< what the question about several animals says further
    /// Messages and questions about each animal that come before anything is written.
    virtual void prepare(const std::vector<int>& rows) { Q_UNUSED(rows) }
    /// After the rows of all animals, within the same action.
    virtual void finish(const Action& action) { Q_UNUSED(action) }
    /// The hints of the check of cycle dates; only services, checks, farrowings and weanings have them.
    QStringList hints() const override;
    void Activate() override;

    bool askWhetherAll() const;  ///< the question about several animals
    /// Shows the count that the farrowing screen handed over, if it did.
    void takeCount(TextBox& count) const;
    const std::vector<int>& rows() const { return m_rows; }  ///< the animals of this save
    QString numberOf(int row) const;
    qint64 animalOf(int row) const { return frame().schweinli.value(row, u"ID").toInt(); }

    PE_Bewegungsdaten& frame() const { return PE_Bewegungsdaten::behind(koben); }
    Grid& li() const override { return frame().li; }

private:
    bool agreed() override;
    QString actionName() const override;
    void write(const Action& action) override;
    void refresh() override;
    void nextschwein_Click(int direction);

    QString m_rahmen;
    std::vector<int> m_rows;
};

}  // namespace koben
