// koben-handbuch HELP PICTURES SIGN PDF: makes the manual of the help's chapters and the windows' pictures.
#include <QGuiApplication>
#include <cstdio>

#include "tools/handbuch/Manual.h"

int main(int argc, char** argv) {
    if (argc != 5) {
        std::fprintf(stderr, "Aufruf: koben-handbuch HILFEDATEI BILDERORDNER ZEICHEN PDF\n");
        return 2;
    }
    const QGuiApplication application(argc, argv);
    const auto told = [argv](int index) { return QString::fromLocal8Bit(argv[index]); };
    koben::handbuch::Manual manual{.help = told(1), .pictures = told(2), .sign = told(3), .withoutPicture = {}};
    const QString trouble = manual.write(told(4));
    if (!trouble.isEmpty()) std::fprintf(stderr, "%s\n", qUtf8Printable(trouble));
    if (!manual.withoutPicture.isEmpty())
        std::printf("Ohne Bild: %s\n", qUtf8Printable(manual.withoutPicture.join(QStringLiteral(", "))));
    return trouble.isEmpty() ? 0 : 1;
}
