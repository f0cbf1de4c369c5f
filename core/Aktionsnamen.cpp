#include "core/Aktionsnamen.h"

namespace koben {
namespace {

QString subject(Buchungsart art, const QString& number) {
    const QString noun = QString::fromUtf8(angaben(art).noun);
    return number.isEmpty() ? noun : noun + u' ' + number;
}

}  // namespace

QString counted(qint64 count, const char* one, const char* many) {
    return QString::number(count) + u' ' + QString::fromUtf8(count == 1 ? one : many);
}

QString countedAnimals(qint64 count, const QString& art) {
    if (art == u"Sau") return counted(count, "Sau", "Sauen");
    if (art == u"Mast") return counted(count, "Masttier", "Masttiere");
    if (art == u"Eber" || art == u"Ferkel") return QString::number(count) + u' ' + art;
    return counted(count, "Tier", "Tiere");
}

QString Buchungsname(Buchungsart art, const QString& number, const QString& date) {
    return subject(art, number) + QStringLiteral(", ") + date;
}

QString Sammelbuchungsname(Buchungsart art, qint64 animals, const QString& date) {
    return subject(art, QString()) + QStringLiteral(" bei ") + counted(animals, "Tier", "Tieren") +
           QStringLiteral(", ") + date;
}

QString Buchungsname(Buchungsart art, const QString& number, const QString& date, const QString& done) {
    return subject(art, number) + QStringLiteral(" vom ") + date + u' ' + done;
}

}  // namespace koben
