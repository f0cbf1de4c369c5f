#pragma once
// The HTML report: a grid as linked pages for the browser, each with the table head, made to fit A4 paper when printed.
#include <functional>

#include "output/Listenzeilen.h"

namespace koben {

struct Berichtsform {
    QString kopf = {};       ///< head text of every page, none where empty
    int zeilenJeSeite = 60;  ///< data rows on a page; separators do not count
    /// Texts above and under the table of a page, none where empty.
    std::function<QString(int page, int pages)> seitenkopf = {}, seitenfuss = {};
    Progress* progress = nullptr;  ///< of two steps a row
};

/// Writes "report.htm" and, for the further pages, "report-2.htm" ... into the folder and removes what an earlier,
/// longer report left there. False where a page could not be written or it was cancelled; the earlier report then
/// stands.
bool Bericht_schreiben(const Grid& grid, const Berichtsform& form, const QString& folder);

}  // namespace koben
