#pragma once
// The entry screen behind the farm's lists of losses and trade. In "Neu" it adds rows, in "Ändern" it walks those of
// the list.
#include "bookings/Bewegungseingabe.h"
#include "bookings/Ferkelliste.h"

namespace koben {

class Ferkeleingabe : public Bewegungseingabe {
protected:
    using Bewegungseingabe::Bewegungseingabe;

    void Load() override;
    /// The questions before a save, and the sow that it belongs to, 0 for none; nothing where the user calls it off.
    virtual std::optional<qint64> sow() = 0;
    /// After the row was written, within the same action.
    virtual void finish(const Action& action) = 0;
    virtual QString mother() const = 0;  ///< her number as entered

    QString actionName() const override;

private:
    Grid& li() const override { return m_list->li; }
    bool agreed() override;
    void write(const Action& action) override;
    void refresh() override;

    Ferkelliste* m_list = nullptr;  // the form behind; without one the screen closes at once
    qint64 m_sow = 0;
};

}  // namespace koben
