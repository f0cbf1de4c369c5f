#pragma once
#include <QString>
#include <stdexcept>

namespace koben {

/// A statement that could not be understood or carried out, or a file that could not be opened.
class DatabaseError : public std::runtime_error {
public:
    enum class Kind {
        Syntax,
        UnknownName,
        Type,
        TooLong,
        Constraint,
        NotADatabase,
        NewerVersion,
        ForeignFormat,
        Io,
        State,
        LookOnly  ///< a write into a copy that is only looked at: nothing has failed, the user is told
    };
    /// An error that has nothing technical to tell beside its message.
    DatabaseError(Kind kind, const QString& message) : DatabaseError(kind, message, message) {}
    DatabaseError(Kind kind, const QString& message, const QString& detail, int position = -1);
    /// An error of a statement: `what` is a sentence without its end; the place is left out where `position` is -1.
    static DatabaseError ofStatement(Kind kind, const QString& what, const QString& statement, int position = -1);

    /// For the user, in German: what went wrong, why, what to do. Neither statements nor numbers of errors.
    const QString& message() const { return m_message; }
    /// For who mends it; also what(). May quote a statement with its values: an ErrorLog leaves those out.
    QString detail() const { return QString::fromUtf8(what()); }

    const Kind kind;
    const int position;  ///< offset in the statement's text, -1 where there is none

private:
    QString m_message;
};

/// What a user is told where the program itself asked the database wrongly.
QString programFault();

}  // namespace koben
