#pragma once
// What `zeige` prints of a control, and what `pruefe` asks of it.
#include "forms/Erklaerung.h"
#include "tools/skript/Addressing.h"
#include "tools/skript/Transcript.h"

namespace koben::skript {

void show(const Target& target, Transcript& transcript);
/// What `erklaere` prints: the sentence, the figures that there are, "=", and the rows behind as a grid.
void show(const Explanation& told, Koben& koben, Transcript& transcript);
/// Whether a control is "sichtbar", "unsichtbar", "frei", "gesperrt", "an" or "aus"; a Failure for another word.
bool holds(const Target& target, const QString& state);

}  // namespace koben::skript
