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

QString Buchungsname(Buchungsart art, const QString& number, const QString& date, const QString& done) {
    const QString day = date.isEmpty() ? QString() : QStringLiteral(" vom ") + date;
    return subject(art, number) + day + u' ' + done;
}

QString Handelsname(const QString& name, bool bought, bool sold) {
    const QString noun = QString::fromUtf8(angaben(Buchungsart::Ferkelverkauf).noun);
    if (!bought || !name.startsWith(noun)) return name;
    return (sold ? QStringLiteral("Ferkelein- und -verkauf") : QStringLiteral("Ferkeleinkauf")) + name.mid(noun.size());
}

QString andOthers(const QString& name, size_t actions) {
    return actions < 2 ? name : name + QStringLiteral(" und %1 weitere").arg(actions - 1);
}

}  // namespace koben
