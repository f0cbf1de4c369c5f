#include "exchange/Ordnerliste.h"

#include <QDir>

namespace koben {

namespace {

const QString Indent = QStringLiteral("   ");

}  // namespace

Ordnerliste::Ordnerliste(const QString& folder) {
    const QString path = QDir::cleanPath(folder);
    QStringList above;
    for (QDir dir(path);; above.prepend(dir.path()))
        if (dir.isRoot() || !dir.cdUp()) break;
    above += path;
    const auto add = [this](const QString& place, const QString& name, qsizetype depth) {
        m_paths += place;
        m_items += Indent.repeated(depth) + name;
    };
    for (const QString& place : above) {
        const QString name = QDir(place).dirName();
        add(place, QDir(place).isRoot() ? QDir::toNativeSeparators(place) : name, m_items.size());
    }
    m_current = static_cast<int>(m_items.size()) - 1;
    const qsizetype depth = m_items.size();
    for (const QString& name : QDir(path).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::IgnoreCase))
        add(QDir(path).filePath(name), name, depth);
}

QString dateiIn(const QString& folder, const QString& name) {
    const QDir dir(folder);
    for (const QString& found : dir.entryList({name}, QDir::Files))
        if (found.compare(name, Qt::CaseInsensitive) == 0) return dir.filePath(found);
    return {};
}

}  // namespace koben
