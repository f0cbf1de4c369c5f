#include "ui/WindowScreens.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QDir>
#include <QEventLoop>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPrintPreviewDialog>
#include <QProgressDialog>
#include <QPushButton>
#include <QRegularExpression>
#include <QTimer>
#include <algorithm>

#include "core/PZ_Koben_Subs.h"
#include "forms/Form.h"
#include "forms/Koben.h"
#include "ui/Bound.h"
#include "ui/Desktop.h"
#include "ui/FormWindow.h"
#include "ui/Preview.h"
#include "ui/QuietLine.h"
#include "ui/SystemPlatform.h"

namespace koben::ui {

namespace {

const QString title = QStringLiteral("KOBEN 2.0");
constexpr int progressAppears = 600;  // milliseconds of expected work

QString lines(QString text) { return text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")); }

/// During long work only the cancel button (or Escape, or the close box) is heard.
class OnlyCancel final : public QObject {
public:
    explicit OnlyCancel(FormWindow& window) : m_window(window) {
        if (const Button* cancel = window.form().cancelButton) m_cancel = window.widgetOf(*cancel);
        qApp->installEventFilter(this);
    }
    bool eventFilter(QObject* object, QEvent* event) override {
        if (!object->isWidgetType())
            return event->type() == QEvent::Shortcut || event->type() == QEvent::ShortcutOverride;
        switch (event->type()) {
            case QEvent::KeyPress:
                if (static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape && m_cancel) m_window.form().closeBox();
                return true;
            case QEvent::KeyRelease:
            case QEvent::Wheel:
            case QEvent::ContextMenu:
                return true;
            case QEvent::MouseButtonPress:
            case QEvent::MouseButtonRelease:
            case QEvent::MouseButtonDblClick:
                return object != m_cancel;
            case QEvent::Close:
                if (m_cancel) m_window.form().closeBox();
                event->ignore();
                return true;
            default:
                return false;
        }
    }

private:
    FormWindow& m_window;
    QWidget* m_cancel = nullptr;
};

}  // namespace

OrdinaryCursor::OrdinaryCursor() {
    for (; QApplication::overrideCursor(); ++m_covered) QApplication::restoreOverrideCursor();
}

OrdinaryCursor::~OrdinaryCursor() {
    for (; m_covered > 0; --m_covered) QApplication::setOverrideCursor(Qt::WaitCursor);
}

WindowScreens::WindowScreens() { m_lastBreath.start(); }
WindowScreens::~WindowScreens() = default;

/// The window that dialogs stand before: a preview, or the front form; a form that is still loading has none yet.
QWidget* WindowScreens::inSight() const {
    if (auto* dialog = qobject_cast<QPrintPreviewDialog*>(QApplication::activeModalWidget())) return dialog;
    for (auto window = m_windows.rbegin(); window != m_windows.rend(); ++window)
        if ((*window)->isVisible()) return window->get();
    return nullptr;
}

bool WindowScreens::ask(const QString& text, bool okCancel, bool safeDefault) {
    const OrdinaryCursor cursor;
    QMessageBox box(QMessageBox::Question, title, lines(text), QMessageBox::NoButton, inSight());
    box.setTextFormat(Qt::PlainText);
    const QPushButton* yes = okCancel ? box.addButton(QMessageBox::Ok) : box.addButton(QMessageBox::Yes);
    QPushButton* no = okCancel ? box.addButton(QMessageBox::Cancel) : box.addButton(QMessageBox::No);
    box.button(okCancel ? QMessageBox::Ok : QMessageBox::Yes)
        ->setText(okCancel ? QStringLiteral("OK") : QStringLiteral("&Ja"));
    no->setText(okCancel ? QStringLiteral("Abbrechen") : QStringLiteral("&Nein"));
    for (QAbstractButton* button : box.buttons()) button->setIcon({});
    box.setEscapeButton(no);
    if (safeDefault) box.setDefaultButton(no);
    box.exec();
    return box.clickedButton() == yes;
}

void WindowScreens::message(const QString& text) {
    const OrdinaryCursor cursor;
    QMessageBox box(QMessageBox::Information, title, lines(text), QMessageBox::Ok, inSight());
    box.setTextFormat(Qt::PlainText);
    box.button(QMessageBox::Ok)->setText(QStringLiteral("OK"));
    box.button(QMessageBox::Ok)->setIcon({});
    box.exec();
    tellRefusedFile();
}

/// Where a file lies that nothing on the machine would show.
void WindowScreens::tellRefusedFile() {
    auto* platform = front() ? dynamic_cast<SystemPlatform*>(&front()->form().koben.platform) : nullptr;
    const QString path = platform ? std::exchange(platform->refused, {}) : QString();
    if (QFileInfo::exists(path))
        front()->say(QStringLiteral("Die Datei liegt hier: ") + QDir::toNativeSeparators(path));
}

int WindowScreens::decide(const QString& text, const QStringList& captions) {
    const OrdinaryCursor cursor;
    QMessageBox box(QMessageBox::Question, title, text, QMessageBox::NoButton, inSight());
    box.setTextFormat(Qt::PlainText);
    std::vector<QAbstractButton*> buttons;
    for (const QString& caption : captions) buttons.push_back(box.addButton(caption, QMessageBox::ActionRole));
    box.setDefaultButton(static_cast<QPushButton*>(buttons.back()));
    box.setEscapeButton(buttons.back());
    box.exec();
    return static_cast<int>(std::find(buttons.begin(), buttons.end(), box.clickedButton()) - buttons.begin());
}

/// Said in front, and in the windows behind, which are seen once those in front of them have closed.
void WindowScreens::done(const QString& action) {
    if (!front()) return;
    for (const auto& window : m_windows)
        if (&window->form().koben == &front()->form().koben) window->say(doneText(action));  // not of another farm
    front()->saved();
}

bool WindowScreens::yesNo(const QString& text, bool noIsDefault) { return ask(text, false, noIsDefault); }
bool WindowScreens::okCancel(const QString& text) { return ask(text, true, false); }

QString WindowScreens::input(const QString& prompt, const QString& preset, const QString& heading) {
    const OrdinaryCursor cursor;
    QInputDialog dialog(inSight());
    dialog.setWindowTitle(heading.isEmpty() ? title : heading);
    dialog.setLabelText(lines(prompt).toHtmlEscaped().replace(u'\n', QStringLiteral("<br>")));
    for (QLabel* label : dialog.findChildren<QLabel*>()) {
        label->setWordWrap(true);
        label->setMinimumWidth(label->fontMetrics().averageCharWidth() * 60);
    }
    dialog.setTextValue(preset);
    dialog.setOkButtonText(QStringLiteral("OK"));
    dialog.setCancelButtonText(QStringLiteral("Abbrechen"));
    return dialog.exec() == QDialog::Accepted ? withoutControls(dialog.textValue()) : QString();
}

QString fileFilter(const QString& filter) {
    const QStringList parts = filter.split(u'|');
    QStringList entries;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QString patterns;
        for (const QChar c : parts[i + 1])
            if (c == u';')
                patterns += u' ';
            else if (c.isLetter() && fileNamesKnowCase())
                patterns += u'[' + QString(c.toUpper()) + c.toLower() + u']';
            else
                patterns += c.toLower();  // a dialog may take it for the ending that a name lacks
        if (patterns == u"*.*") patterns = QStringLiteral("*");
        // a remark in brackets would be taken for the patterns
        const QString name = parts[i].section(u'(', 0, 0).trimmed();
        entries.append(QStringLiteral("%1 (%2)").arg(name, patterns));
    }
    return entries.join(QStringLiteral(";;"));
}

QString WindowScreens::openFile(const QString& filter) {
    const OrdinaryCursor cursor;
    const QString folder = front() ? front()->form().koben.Datenordner : QString();
    return QFileDialog::getOpenFileName(inSight(), QStringLiteral("Datei öffnen"), folder, fileFilter(filter), nullptr,
                                        QFileDialog::HideNameFilterDetails);
}

QString WindowScreens::saveFile(const QString& filter, const QString& preset) {
    const OrdinaryCursor cursor;
    return QFileDialog::getSaveFileName(inSight(), QStringLiteral("Datei speichern"), preset, fileFilter(filter),
                                        nullptr, QFileDialog::HideNameFilterDetails);
}

bool WindowScreens::preview(const QString& name, const Drawing& document) {
    if (!front()) return false;
    const OrdinaryCursor cursor;
    ui::preview(*front(), front()->form().koben, name, document.landscape, [&document](QPrinter&) { return document; });
    return true;
}

QString WindowScreens::folder(const QString& prompt) {
    const OrdinaryCursor cursor;
    return QFileDialog::getExistingDirectory(inSight(), lines(prompt));
}

FormWindow* WindowScreens::windowOf(const Form& form) const {
    for (const auto& window : m_windows)
        if (&window->form() == &form) return window.get();
    return nullptr;
}

void WindowScreens::opened(Form& form) { m_windows.push_back(std::make_unique<FormWindow>(form, front())); }

/// The main window stands before its first hints come; a form behind another is shown when it is ready.
void WindowScreens::shown(Form& form) {
    if (m_windows.size() == 1) windowOf(form)->present();
}

void WindowScreens::run(Form& form) {
    FormWindow* window = windowOf(form);
    if (!window) return;
    const OrdinaryCursor cursor;
    QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);  // what the form hid and showed so far
    if (!window->isVisible()) window->present();
    QEventLoop loop;
    const auto ended = [&] {
        if (form.closed()) loop.quit();
    };
    const auto* dispatcher = QAbstractEventDispatcher::instance();
    QObject::connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, &loop, ended);
    QObject::connect(dispatcher, &QAbstractEventDispatcher::awake, &loop, ended);
    if (!form.closed()) loop.exec();
    window->keepPlace();
    window->hide();
}

void WindowScreens::closed(Form& form) {
    std::erase_if(m_windows, [&](const auto& window) { return &window->form() == &form; });
    if (front() && front()->isVisible()) front()->activateWindow();
}

void WindowScreens::waitCursor(bool on) {
    if (on) {
        QApplication::setOverrideCursor(Qt::WaitCursor);
        ++m_waiting;
    } else if (m_waiting > 0) {
        --m_waiting;
        QApplication::restoreOverrideCursor();
    }
}

/// The machine has one sound: a low tone, for what did not go well, is heard as two of it.
void WindowScreens::tone(int hertz, int) {
    constexpr int low = 500, between = 250;  // hertz, milliseconds
    QApplication::beep();
    if (hertz < low) QTimer::singleShot(between, qApp, [] { QApplication::beep(); });
}

void WindowScreens::breathe() {
    if (!front() || m_lastBreath.elapsed() < 30) return;
    m_lastBreath.restart();
    OnlyCancel filter(*front());
    QCoreApplication::processEvents();
}

/// Application modal, so that nothing but the dialog's own button is heard while its events run.
bool WindowScreens::progress(const QString& what, int percent) {
    if (!m_progress) {
        m_progress = std::make_unique<QProgressDialog>(what, QStringLiteral("Abbrechen"), 0, 100, inSight());
        m_progress->setWindowTitle(title);
        m_progress->setWindowModality(Qt::ApplicationModal);
        m_progress->setMinimumDuration(progressAppears);
        m_progress->setAutoClose(false);
        m_progress->setAutoReset(false);
    }
    m_progress->setLabelText(what);
    // The dialog looks for its cancel only where the value is another.
    if (m_progress->isVisible() && m_progress->value() == percent) QCoreApplication::processEvents();
    m_progress->setValue(percent);
    return !m_progress->wasCanceled();
}

void WindowScreens::progressEnds() { m_progress.reset(); }

}  // namespace koben::ui
