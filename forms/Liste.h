#pragma once
// A filled grid on its way to the list screen.
#include "forms/Controls.h"
#include "forms/Grid.h"
#include "forms/Koben.h"

namespace koben {

/// A list that is being handed over: the file that says it, and the grid with its typed values.
struct HandedList {
    const Grid& grid;
    QByteArray file;
};

/// Hands a filled grid to the list screen through "gridli.txt" in the data folder; the list screen takes the typed
/// values from the grid itself. Where that file cannot be written the user is told and the list screen stays closed.
void Liste_uebergeben(Koben& koben, const Grid& gridli);

/// The same with a message where the grid has no rows.
void Liste_ausgeben(Koben& koben, const Grid& gridli,
                    const QString& empty = QStringLiteral("Keine zu listenden Daten gefunden"));

/// Fills `gridli` with the list being handed over, or from the file where that says something else or nobody hands one
/// over. No row is current then, unless the list leads on. False, with nothing in the grid, where there is neither.
bool Liste_uebernehmen(Koben& koben, Grid& gridli);

/// Makes an animal the current one of the herd list. Where that does not show it the user is told what to do, and it is
/// false. `noun` begins the sentence: "Das Tier".
bool chooseAnimal(Koben& koben, qint64 animal, const QString& noun = QStringLiteral("Das Tier"));

/// A list without any field would say nothing: ticks all where none is ticked.
void tickAllIfNone(ControlArray<CheckBox>& fields);

/// Fills `gridli` with the rows of `list`; of its first columns those whose box is ticked.
void takeTicked(Grid& gridli, const Grid& list, const ControlArray<CheckBox>& ticked);

}  // namespace koben
