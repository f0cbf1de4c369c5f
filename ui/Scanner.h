#pragma once
// Scanners that type: readers of barcodes, QR codes and transponders that pass for a keyboard. What comes faster than a
// hand can type, ended by Enter or Tab, is one reading.
#include <QElapsedTimer>
#include <QObject>
#include <functional>

class QKeyEvent;
class QWidget;

namespace koben::ui {

class Scanner final : public QObject {
public:
    /// Hears the keys of the window that holds `widget`, while no field that is typed into has the focus. The keys go
    /// on to their widget, but for the one that ends a reading.
    Scanner(QWidget& widget, std::function<void(const QString& code)> read);

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    bool key(const QKeyEvent& event);

    QWidget& m_widget;
    std::function<void(const QString&)> m_read;
    QString m_typed;
    quint64 m_last = 0, m_slowest = 0;  // milliseconds; the time of the last key, the longest pause of a reading
    QElapsedTimer m_clock;
};

}  // namespace koben::ui
