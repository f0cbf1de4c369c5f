#include "store/DatabaseError.h"

namespace koben {

namespace {

using Kind = DatabaseError::Kind;

QString forUser(Kind kind, const QString& what) {
    switch (kind) {
        case Kind::Type:
        case Kind::TooLong:
        case Kind::Constraint:
            return what + QStringLiteral(". Bitte berichtigen Sie die Eingabe.");
        case Kind::UnknownName:
            return QStringLiteral(
                "In der Datenbank fehlt eine Tabelle oder ein Feld, ohne das KOBEN diesen Schritt nicht ausführen "
                "kann. Bitte holen Sie eine Datensicherung zurück, oder fragen Sie die Hilfe am Telefon.");
        default:
            return programFault();
    }
}

/// what() would end at a character with the code 0.
std::string complete(QString text) {
    text.replace(QChar(0), QChar(u'\u2400'));
    return text.toStdString();
}

}  // namespace

DatabaseError::DatabaseError(Kind kind_, const QString& message, const QString& detail, int position_)
    : std::runtime_error(complete(detail)), kind(kind_), position(position_), m_message(message) {}

DatabaseError DatabaseError::ofStatement(Kind kind, const QString& what, const QString& statement, int position) {
    QString detail = what;
    if (position >= 0) detail += QStringLiteral(" (Zeichen %1)").arg(position + 1);
    return {kind, forUser(kind, what), detail + QStringLiteral(".\r\nAnweisung: ") + statement, position};
}

QString programFault() {
    return QStringLiteral(
        "Im Programm ist ein Fehler aufgetreten. Bitte fragen Sie die Hilfe am Telefon, wenn er wieder vorkommt.");
}

}  // namespace koben
