#pragma once
// What every entry screen is made of. A field is bound once: its kind, its control, its column, its list. From that
// follow its key filter and leave rule, its preset, how it is shown and written, whether its value fits, and its row in
// the window. A save is one guarded road. A screen says only which fields it has, and what is its own.
#include <utility>

#include "forms/Form.h"
#include "forms/Koben.h"
#include "store/Action.h"

namespace koben {

/// What is wrong with an entry: a line for each failed rule, and the first field of concern. The fields are marked.
class Findings {
public:
    void add(Control& field, const QString& line);
    bool empty() const { return m_lines.isEmpty(); }
    const QStringList& lines() const { return m_lines; }
    Control* first() const { return m_first; }
    /// Lines that go on from a heading begin with dots; without them they stand for themselves.
    bool needsHeading() const { return empty() || m_lines.first().startsWith(u"..."); }

private:
    QStringList m_lines;
    Control* m_first = nullptr;
};

/// Where the list of a text comes from, and what becomes of the text after a save.
struct ListSource {
    QString sql;
    QString keywords = {};    ///< the keyword table that the text feeds
    bool grows = false;       ///< the text joins the list
    QStringList before = {};  ///< entries that stand before those of the query
};

class Eingabe : public Form {
public:
    /// An input as the window shows it: its label, its control and what stands beside it, in the order of entry.
    struct Zeile {
        QString label;
        Control* control;
        SpinButton* spin = nullptr;
        Button* calender = nullptr;  ///< of a date; all dates of a screen share one calendar
    };
    const std::vector<Zeile>& zeilen() const { return m_zeilen; }

    bool onlyToday() const override { return true; }

protected:
    using Form::Form;

    // ------------------------------------------------------------------ fields, in the order of entry and of writing
    // One without a column ("") is no part of the row: it is neither preset nor shown nor written.

    using Source = ListSource;
    /// Cut and trimmed as it is left.
    void text(const QString& label, ComboBox& control, const QString& column, int width, const Source& source);
    /// Limited as it is typed.
    void freeText(const QString& label, TextBox& control, const QString& column, int width, const Source& source = {});
    /// One of fixed entries; the first one is the preset. `Letter`: the column holds the first letter alone.
    enum class Stored { Whole, Letter };
    void choice(const QString& label, ComboBox& control, const QString& column, const QStringList& items,
                Stored how = Stored::Whole);
    void tick(CheckBox& control, const QString& column, const QString& on, const QString& off);
    /// A whole number; its arrows hold it within `least` and `most`, then run its leave rule.
    void count(const QString& label, TextBox& control, const QString& column, const QString& preset, SpinButton& spin,
               int least, int most);
    void amount(const QString& label, TextBox& control, const QString& column);
    void weight(const QString& label, TextBox& control, const QString& column);
    /// Short input, and a button that opens and shuts the calendar for this field. No date is no value.
    void date(const QString& label, TextBox& control, Button& button, const QString& column);
    /// The calendar of all dates; bound before the first of them.
    void shareCalendar(Calendar& calendar) { m_calendar = &calendar; }
    /// A control that stands among the inputs without being bound.
    void line(const QString& label, Control& control) { m_zeilen.push_back({label, &control}); }
    void connectButtons(ControlArray<Button>& ok, Button& cancel);

    void Load() override;
    void readLists();
    void showPresets();
    void showStored();
    /// What the fields hold for their columns.
    std::vector<std::pair<QString, Value>> values() const;
    void writeFields(Recordset& row) const;
    bool adding() const { return koben.Buchungsmodus != u"Ändern"; }
    static void step(TextBox& field, int by, int least, int most);

    // ------------------------------------------------------------------------------------------------------ the save
    /// check, questions, one named action, hints, refresh, next or close, tone. A refused or failed entry stays as it
    /// was typed. `index`: 0 closes, 1 goes on to the previous row, 2 to the next.
    void save(int index);
    virtual QString table() const = 0;
    /// The row's value as text, in "Ändern".
    virtual QString stored(const QString& column) const = 0;
    virtual QString refusal() const { return QStringLiteral("Die Eingabe kann nicht übernommen werden"); }
    virtual QString heading() const { return refusal() + QStringLiteral(", weil..."); }
    virtual void check(Findings& found) = 0;
    /// Questions before anything is written; false where the user calls the save off.
    virtual bool agreed() { return true; }
    virtual QString actionName() const = 0;
    virtual void write(const Action& action) = 0;
    virtual void refresh() {}
    virtual QStringList hints() const { return {}; }  ///< said after the commit
    virtual void goOn(int index);
    virtual void move(int index) { Q_UNUSED(index) }  ///< to the previous (1) or next (2) row
    virtual void calendarOpens(const TextBox& field) { Q_UNUSED(field) }
    void cancel();

    Database m_db;

private:
    enum class Kind { Text, Choice, Letter, Check, Count, Amount, Weight, Date };
    struct Bound {
        Kind kind;
        Control* control;
        QString label, column;
        QString preset = {};
        QString off = {};  // of a check box; what is written with the tick is the preset
        Source source = {};
        bool fresh = false;  // its text was a new keyword of the last save
        TextBox& box() const { return static_cast<TextBox&>(*control); }
        ComboBox& list() const { return static_cast<ComboBox&>(*control); }
    };
    Bound& bind(Kind kind, const QString& label, Control& control, const QString& column);
    void decimal(Kind kind, const QString& label, TextBox& control, const QString& column);
    static void show(const Bound& field, const QString& text);
    static Value valueOf(const Bound& field);
    void checkValues(Findings& found) const;
    QString misfit(const Bound& field, const std::vector<Field>& columns) const;
    bool store();
    void growLists();

    std::vector<Bound> m_fields;
    std::vector<Zeile> m_zeilen;
    Calendar* m_calendar = nullptr;
    TextBox* m_calendarFor = nullptr;
};

}  // namespace koben
