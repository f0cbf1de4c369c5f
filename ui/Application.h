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

private:
    QTranslator m_german;
    std::exception_ptr m_failure;
    bool m_told = false;
};

/// Ends the process with a German sentence instead of an abort where Qt finds no display.
void refuseWithoutDisplay();

}  // namespace koben::ui
