#include "output/Uebergabe.h"

#include <QFile>

#include "core/Einstellungen.h"
#include "forms/Form.h"

namespace koben {

void Text_uebergeben(Koben& koben, const QString& text, const QString& file) {
    koben.Ausgabedatei = koben.Datenordner + file;
    if (Textdatei_schreiben(koben.Ausgabedatei, text))
        koben.open(QStringLiteral("PA_Textausgabe"));
    else
        koben.message(
            QStringLiteral("Die Liste kann nicht ausgegeben werden, weil die Datei %1 nicht geschrieben werden "
                           "kann. Bitte prüfen Sie, ob im Datenordner genügend Platz und das Schreiben "
                           "erlaubt ist.")
                .arg(koben.Ausgabedatei));
}

QString Berichtstitel(const Koben& koben) {
    static const QStringList handOn{"PA_Koben", "PA_Zwischenliste", "PA_Textausgabe", "PA_Erklärung"};
    const auto& open = koben.stack();
    for (auto form = open.rbegin(); form != open.rend(); ++form)
        if (!handOn.contains((*form)->name())) return (*form)->caption();
    return QStringLiteral("KOBEN");
}

bool Zeilen_lesen(const QString& path, const std::function<bool(const QString& line)>& take) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return false;
    while (!file.atEnd()) {
        QByteArray line = file.readLine();
        if (line.endsWith('\n')) line.chop(1);
        if (line.endsWith('\r')) line.chop(1);
        if (!take(ausWindows1252(line))) break;
    }
    return true;
}

}  // namespace koben
