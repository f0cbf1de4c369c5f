#include "ui/ListCopy.h"

#include <QMimeData>
#include <QRegularExpression>

#include "forms/Grid.h"

namespace koben::ui {

namespace {

bool isNumber(const QString& cell) {
    static const QRegularExpression number(
        QRegularExpression::anchoredPattern(QStringLiteral("[+-]?[0-9]{1,3}(\\.[0-9]{3})+(,[0-9]+)?|"
                                                           "[+-]?[0-9]+(,[0-9]+)?")));
    return number.match(cell).hasMatch();
}

/// The marks by which spreadsheets keep a cell's text as it is.
const QString asText = QStringLiteral(" style=\"mso-number-format:'\\@'\" sdnum=\"1031;0;@\"");

}  // namespace

QString harmless(const QString& cell) {
    const QString text = QString(cell).replace(u'\t', u' ').replace(u'\r', u' ').replace(u'\n', u' ');
    const QString begin = text.trimmed().left(1);
    const bool risky = !begin.isEmpty() && QStringView(u"=+-@").contains(begin) && !isNumber(text.trimmed());
    return risky ? u'\'' + text : text;
}

QMimeData* clipboardRows(const std::vector<QStringList>& rows, const std::vector<bool>& isText) {
    QString text, table = QStringLiteral("<meta charset=\"utf-8\"><table>");
    for (const QStringList& row : rows) {
        QStringList cells;
        table += QStringLiteral("<tr>");
        for (qsizetype i = 0; i < row.size(); ++i) {
            cells.append(harmless(row[i]));
            const bool plain = (static_cast<size_t>(i) < isText.size() && isText[static_cast<size_t>(i)]) ||
                               cells.constLast().startsWith(u'\'');
            table += QStringLiteral("<td%1>%2</td>").arg(plain ? asText : QString(), cells.constLast().toHtmlEscaped());
        }
        table += QStringLiteral("</tr>");
        text += cells.join(u'\t') + u'\n';
    }
    auto* data = new QMimeData;
    data->setText(text);
    data->setHtml(table + QStringLiteral("</table>"));
    return data;
}

QMimeData* clipboardList(const Grid& list) {
    std::vector<QStringList> rows(1);
    std::vector<bool> isText;
    for (int column = 1; column <= list.columnCount(); ++column) {
        const Column& head = list.column(column);
        rows.front() += head.caption.isEmpty() ? head.title : head.caption;
        isText.push_back(head.sort == Sort::Text);
    }
    for (int row = 1; row <= list.rowCount(); ++row) {
        rows.emplace_back();
        for (int column = 1; column <= list.columnCount(); ++column) rows.back() += list.cell(row, column);
    }
    return clipboardRows(rows, isText);
}

}  // namespace koben::ui
