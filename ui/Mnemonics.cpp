#include "ui/Mnemonics.h"

#include <QAbstractButton>
#include <QAction>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QToolButton>
#include <functional>
#include <vector>

#include "ui/Bound.h"

namespace koben::ui {

namespace {

/// A caption on the screen: what it says, and how to change that.
struct Caption {
    QString text;
    std::function<void(const QString&)> show;
};

template <class W>
Caption captionOf(W* widget) {
    return {widget->text(), [widget](const QString& text) { widget->setText(text); }};
}

/// Those that may have a letter, the most needed first: menus, buttons, fields, choices.
std::vector<Caption> captions(const QWidget& window) {
    std::vector<Caption> buttons, fields, choices, all;
    for (const QMenuBar* bar : window.findChildren<QMenuBar*>())
        for (QAction* action : bar->actions()) all.push_back(captionOf(action));
    for (QAbstractButton* button : window.findChildren<QAbstractButton*>()) {
        if (qobject_cast<QToolButton*>(button) || button->text().isEmpty()) continue;
        (qobject_cast<QPushButton*>(button) ? buttons : choices).push_back(captionOf(button));
    }
    for (QLabel* label : window.findChildren<QLabel*>())
        if (label->buddy() && !label->text().isEmpty()) fields.push_back(captionOf(label));
    for (const auto* group : {&buttons, &fields, &choices}) all.insert(all.end(), group->begin(), group->end());
    return all;
}

}  // namespace

QChar mnemonicOf(const QString& caption) {
    for (qsizetype i = 0; i + 1 < caption.size(); ++i)
        if (caption[i] == u'&') {
            if (caption[i + 1] != u'&') return caption[i + 1].toLower();
            ++i;
        }
    return {};
}

QChar freeLetter(const QString& caption, const QSet<QChar>& taken) {
    const QString text = plainCaption(caption);
    for (const bool begins : {true, false})
        for (qsizetype i = 0; i < text.size(); ++i) {
            const bool first = i == 0 || !text[i - 1].isLetterOrNumber();
            if (text[i].isLetter() && first == begins && !taken.contains(text[i].toLower())) return text[i].toLower();
        }
    return {};
}

QString withLetter(const QString& caption, QChar letter) {
    QString text = plainCaption(caption);
    const auto isPlace = [&](qsizetype i) { return text[i].toLower() == letter; };
    qsizetype at = -1;
    for (qsizetype i = 0; i < text.size() && at < 0; ++i)
        if (isPlace(i) && (i == 0 || !text[i - 1].isLetterOrNumber())) at = i;
    for (qsizetype i = 0; i < text.size() && at < 0; ++i)
        if (isPlace(i)) at = i;
    const QString amp = QStringLiteral("&&");
    if (at < 0) return text.replace(u'&', amp);
    return text.left(at).replace(u'&', amp) + u'&' + text.mid(at).replace(u'&', amp);
}

void assignMnemonics(QWidget& window) {
    QSet<QChar> taken;
    std::vector<Caption> without;
    for (const Caption& caption : captions(window)) {
        const QChar own = mnemonicOf(caption.text);
        if (own.isNull() || taken.contains(own))
            without.push_back(caption);
        else
            taken.insert(own);
    }
    for (const Caption& caption : without) {
        const QChar letter = freeLetter(caption.text, taken);
        if (!letter.isNull()) taken.insert(letter);
        caption.show(withLetter(caption.text, letter));
    }
}

}  // namespace koben::ui
