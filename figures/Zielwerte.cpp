#include "figures/Zielwerte.h"

#include <QFile>

#include "core/Einstellungen.h"
#include "core/PZ_Koben_Subs.h"
#include "core/Variablen.h"
#include "figures/Kennzahlen.h"

namespace koben {

namespace {

const QString FileName = QStringLiteral("Zielwerte.ko2");
constexpr double Most = 100'000;

}  // namespace

Zielwerte::Zielwerte(const QString& folder) {
    QFile file(folder + FileName);
    if (!file.open(QIODevice::ReadOnly)) return;
    for (const QString& line : ausWindows1252(file.readAll()).split(u'\n')) {
        const auto target = read(line.section(u'=', 1).trimmed());
        if (target) m_targets[line.section(u'=', 0, 0).trimmed()] = *target;
    }
}

std::optional<double> Zielwerte::read(const QString& text) {
    const auto number = Betrag_lesen(text);
    const double target = number ? Value(*number).toDouble() : 0;
    return target > 0 && target < Most ? std::optional(target) : std::nullopt;
}

std::optional<double> Zielwerte::value(const Kennzahl& figure) const {
    const auto found = m_targets.constFind(QString::fromUtf8(figure.id));
    return found == m_targets.cend() ? std::nullopt : std::optional(*found);
}

QString Zielwerte::text(const Kennzahl& figure) const {
    const auto target = value(figure);
    return target ? Zahl_formatieren(QString::number(*target, 'f', 6), figure.decimals) : QString();
}

bool Zielwerte::set(const QString& folder, const Kennzahl& figure, std::optional<double> target) {
    QMap<QString, double> targets = m_targets;
    const QString id = QString::fromUtf8(figure.id);
    if (target)
        targets[id] = *target;
    else
        targets.remove(id);
    QString text;
    for (auto each = targets.cbegin(); each != targets.cend(); ++each)
        text += each.key() + u'=' + QString::number(each.value()).replace(u'.', u',') + Crlf;
    if (!Textdatei_schreiben(folder + FileName, text)) return false;
    m_targets = std::move(targets);
    return true;
}

}  // namespace koben
