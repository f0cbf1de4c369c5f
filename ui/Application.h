#pragma once
// The GUI application: German, and no exception lost in Qt's event loop.
#include <QApplication>
#include <QTranslator>
#include <exception>
#include <functional>

namespace koben::ui {

class Application final : public QApplication {
public:
    Application(int& argc, char** argv);

    /// An exception of a handler is kept here, told once through `onFailure`, and thrown again by whoever runs the
    /// event loop, so that no handler goes on behind a failed one.
    bool notify(QObject* receiver, QEvent* event) override;
    void rethrow();
    void forgetFailure() {
        m_failure = nullptr;
        m_told = false;
    }
    std::function<void(const QString& reason)> onFailure;

    /// Takes the exception that is being handled; called within a catch.
    void fail();

private:
    QTranslator m_german;
    std::exception_ptr m_failure;
    bool m_told = false;
};

/// Runs what a click or key means to the form. A failure goes to the application from here, without passing through
/// frames of Qt, which do not tidy up behind exceptions.
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

/// Ends the process with a German sentence instead of an abort where Qt finds no display.
void refuseWithoutDisplay();

}  // namespace koben::ui
