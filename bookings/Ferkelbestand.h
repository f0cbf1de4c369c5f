#pragma once
// The piglets in stock that a loss or a sale may take with it: their list, the marks in it, and what becomes of the
// marked ones. All four screens of losses and trade have it.
#include <initializer_list>
#include <memory>
#include <utility>

#include "forms/Form.h"
#include "forms/Koben.h"

namespace koben {

/// What becomes of the marked piglets; the index is that of the option.
enum class Verbleib { Unveraendert, Loeschen, Abgang };
inline constexpr std::initializer_list<const char*> Verbleibarten = {
    "...die Ferkel im Hauptmodul unverändert belassen", "...folgende Ferkel im Hauptmodul löschen",
    "...bei folgenden Ferkel im Hauptm. Abgangsdatum eintr."};

class Ferkelbestand {
public:
    /// `count` says how many piglets the booking is about; `heading` stands above the options.
    Ferkelbestand(Grid& gridli, OptionGroup& optiverkauf, Label& summe, TextBox& count, const char* heading);
    ~Ferkelbestand();

    /// Reads the list; `order` are the fields it is sorted by.
    void laden(const Database& db, const char* order);
    /// For the next booking: no marks, and no piglet that the last one took.
    void auffrischen(const Database& db);

    /// From now on a change of the count marks as many piglets from the top of the list.
    void der_Anzahl_folgen();
    /// A count set by rule, not by a click in the list; the marks follow where they do so.
    void Anzahl_setzen(const QString& text);

    bool markiert() const { return m_gridli.markedCount() > 0; }
    Verbleib verbleib() const { return static_cast<Verbleib>(m_verbleib.selected()); }
    /// False where marked piglets would stay in stock in spite of their sale and the user calls the booking off.
    bool Bestand_bestaetigt(Koben& koben) const;

    /// Fields of a piglet that goes.
    using Abgang = std::initializer_list<std::pair<const char*, Value>>;
    /// Deletes or retires the marked piglets, as the options say, within the caller's transaction. True where any
    /// animal was retired.
    bool ausbuchen(const Database& db, const Abgang& fields);

private:
    class Summe;
    void gridli_Click();
    void erste_markieren();
    std::vector<qint64> markierte() const;

    Grid& m_gridli;
    OptionGroup& m_verbleib;
    TextBox& m_anzahl;
    std::unique_ptr<Summe> m_summe;
    QString m_order;
    bool m_folgt = false;     // the marks follow the count
    bool m_veraltet = false;  // the list shows piglets that are gone
};

}  // namespace koben
