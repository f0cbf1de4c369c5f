#pragma once
#include "help/Hilfedatei.h"

namespace koben {

/// A chapter as lines for paper, broken between words where they would be too long.
QString Druckfassung(const Kapitel& chapter);

}  // namespace koben
