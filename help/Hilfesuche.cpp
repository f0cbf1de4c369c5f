#include "help/Hilfesuche.h"

#include <algorithm>

namespace koben {
namespace {

void addPlaces(const QString& text, const QString& word, std::vector<Fundstelle>& places) {
    for (qsizetype at = text.indexOf(word, 0, Qt::CaseInsensitive); at >= 0;
         at = text.indexOf(word, at + word.size(), Qt::CaseInsensitive))
        places.push_back({at, word.size()});
}

/// In order; a place within or over the one before goes.
void tidy(std::vector<Fundstelle>& places) {
    std::sort(places.begin(), places.end(), [](const Fundstelle& a, const Fundstelle& b) {
        return a.place != b.place ? a.place < b.place : a.length > b.length;
    });
    qsizetype end = 0;
    std::erase_if(places, [&](const Fundstelle& place) {
        if (place.place < end) return true;
        end = place.place + place.length;
        return false;
    });
}

std::vector<Fund> search(const Hilfedatei& help, const QStringList& words) {
    std::vector<Fund> found;
    for (size_t i = 0; i < help.chapters().size(); ++i) {
        const QString text = help.chapters()[i].text();
        Fund fund{static_cast<int>(i), {}};
        const bool all = std::all_of(words.begin(), words.end(), [&](const QString& word) {
            const size_t before = fund.places.size();
            addPlaces(text, word, fund.places);
            return fund.places.size() > before;
        });
        if (!all) continue;
        tidy(fund.places);
        found.push_back(fund);
    }
    return found;
}

}  // namespace

std::vector<Fund> Hilfe_durchsuchen(const Hilfedatei& help, const QString& typed) {
    const QString phrase = typed.simplified();
    if (phrase.size() < ShortestSearch) return {};
    std::vector<Fund> found = search(help, {phrase});
    if (found.empty()) found = search(help, phrase.split(u' '));
    std::stable_partition(found.begin(), found.end(), [&](const Fund& fund) {
        return fund.places.front().place < help.chapter(fund.chapter).title.size();
    });
    return found;
}

}  // namespace koben
