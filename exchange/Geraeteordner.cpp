#include "exchange/Geraeteordner.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "core/PZ_Koben_Subs.h"
#include "forms/Koben.h"
#include "store/Files.h"

namespace koben {
namespace {

const QString Section = QStringLiteral("Pocket"), Entry = QStringLiteral("Ordner");

/// Through a draft beside the target, so that nobody ever reads half a file. "" or the reason.
QString copied(const QString& from, const QString& to) {
    QFile file(from);
    if (!file.open(QIODevice::ReadOnly)) return fileReason();
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError || bytes.size() != file.size()) return fileReason();
    file.close();  // the target may be the file itself, which not every system replaces while it is open
    const QString reason = writeFileThrough(to + QStringLiteral(".neu"), to, bytes);
    if (!reason.isEmpty()) return reason;
    return QFileInfo(to).size() == bytes.size() ? QString()
                                                : QStringLiteral("die Kopie ist nicht so groß wie die Datei");
}

/// A file of the folder by its name; devices write names in whatever case.
QString found(const QString& folder, const QString& name) {
    for (const QString& file : QDir(folder).entryList(QDir::Files))
        if (file.compare(name, Qt::CaseInsensitive) == 0) return folder + u'/' + file;
    return {};
}

}  // namespace

Geraeteordner::Geraeteordner(Form& form)
    : ordner(form, QStringLiteral("ordner"), QStringLiteral("O&rdner wählen...")),
      ohne(form, QStringLiteral("ohne"), QStringLiteral("&Ohne Ordner")),
      wo(form, QStringLiteral("wo")),
      ergebnis(form, QStringLiteral("ergebnis")),
      m_form(form) {
    ordner.onClick = [this] {
        const QString folder = m_form.koben.screens.folder(
            QStringLiteral("Unter welchem Ordner sind die Dateien des Geräts auf diesem Rechner zu finden?"));
        if (!folder.isEmpty()) keep(folder);
    };
    ohne.onClick = [this] { keep({}); };
}

QString Geraeteordner::path() const { return m_form.koben.platform.userSetting(Section, Entry); }

void Geraeteordner::keep(const QString& folder) {
    m_form.koben.platform.setUserSetting(Section, Entry, folder);
    ergebnis.setText({});
    show();
}

void Geraeteordner::show() {
    const QString folder = path();
    wo.setText(folder.isEmpty() ? QStringLiteral("Kein Ordner gewählt.") : QDir::toNativeSeparators(folder));
    ohne.setEnabled(!folder.isEmpty());
}

bool Geraeteordner::startTool(const QString& arguments) const {
    const QString tool = m_form.koben.Programmordner + QStringLiteral("cecopy.exe");
    if (!QFile::exists(tool)) return false;
    m_form.koben.platform.start(tool + u' ' + arguments);
    return true;
}

void Geraeteordner::send(const QString& name) {
    const QString from = m_form.koben.Datenordner + name;
    tell(QStringLiteral("auf das Gerät kopiert"), path() + u'/' + name, copied(from, path() + u'/' + name));
}

void Geraeteordner::fetch(const QString& name) {
    const QString from = found(path(), name), to = m_form.koben.Datenordner + name;
    tell(QStringLiteral("vom Gerät geholt"), to,
         from.isEmpty() ? QStringLiteral("im Ordner %1 gibt es sie nicht").arg(QDir::toNativeSeparators(path()))
                        : copied(from, to));
}

void Geraeteordner::tell(const QString& what, const QString& target, const QString& reason) {
    const QString name = QFileInfo(target).fileName();
    if (reason.isEmpty())
        return ergebnis.setText(QStringLiteral("%1 wurde %2: %3, %4 Uhr, %5 Bytes.")
                                    .arg(name, what, m_form.koben.clockToday(),
                                         m_form.koben.platform.now().toString(QStringLiteral("HH:mm")),
                                         QString::number(QFileInfo(target).size())));
    ergebnis.setText(QStringLiteral("%1 wurde nicht %2: %3.").arg(name, what, reason));
    m_form.koben.message(fileFailure(QStringLiteral("Die Datei %1 wurde nicht %2").arg(name, what), reason));
}

}  // namespace koben
