#pragma once
// The search over all chapters of the help.
#include <vector>

#include "help/Hilfedatei.h"

namespace koben {

/// A place in a chapter's text.
struct Fundstelle {
    qsizetype place = 0, length = 0;
};

/// What was found in one chapter.
struct Fund {
    int chapter = 0;
    std::vector<Fundstelle> places;  ///< in the order of the text, none over another
};

constexpr qsizetype ShortestSearch = 2;  ///< characters; less find nothing

/// The chapters that hold what was typed: as it stands, or where no chapter has it so, those that hold all of its
/// words. Upper and lower case are the same. Chapters with a hit in their title come first.
std::vector<Fund> Hilfe_durchsuchen(const Hilfedatei& help, const QString& typed);

}  // namespace koben
