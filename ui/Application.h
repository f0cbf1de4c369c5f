#pragma once
// The GUI application: German, and no exception lost in Qt's event loop.
#include <QApplication>
#include <QTranslator>
#include <functional>

namespace koben::ui {

class Application final : public QApplication {
public:
    Application(int& argc, char** argv);

    /// What a form's handler throws is told by the form. What fails beside the forms ends here: it is told through
    /// `onFailure`, and the program runs on.
    bool notify(QObject* receiver, QEvent* event) override;
    std::function<void(const QString& reason)> onFailure;

    /// Takes the exception that is being handled; called within a catch.
    void fail();

private:
    QTranslator m_german;
    bool m_telling = false;
};

/// Runs what a click or key means to the form. A failure beside the form's handlers goes to the application from here,
/// without passing through frames of Qt, which do not tidy up behind exceptions.
template <class Handler>
void guarded(const Handler& handler) {
    try {
        handler();
    } catch (...) {
        auto* application = dynamic_cast<Application*>(QCoreApplication::instance());
        if (!application) throw;
        application->fail();
    }
}

}  // namespace koben::ui
