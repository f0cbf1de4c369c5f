#pragma once
// The maker's articles, as they can be ordered: a text file of the program folder (docs/dateiformate.md).
#include <QStringList>
#include <optional>
#include <vector>

#include "store/Scalars.h"

namespace koben {

struct Artikel {
    QString nummer, name, einheit;
    Money preis;  ///< of one unit, without tax, whole cents
};

class Preisliste {
public:
    /// Reads the file. Where it cannot be read or has no article there are none, and `trouble` says why, as the end of
    /// a sentence.
    static Preisliste read(const QString& path, QString& trouble);
    explicit Preisliste(const QString& text = {});

    QStringList empfaenger;         ///< who takes the order, line by line
    std::optional<int> steuersatz;  ///< hundredths of a percent; none where the prices bear no tax
    std::vector<Artikel> artikel;   ///< in the order of the file
    QStringList faults;             ///< "Zeile 7: ..." for each line that counts for nothing

private:
    void take(const QString& line);
    void takeArticle(const QStringList& fields);
    void takeRate(const QString& text);
};

}  // namespace koben
