#pragma once
// A grid filled by a test, on a form of its own.
#include "tests/support/Fakes.h"

namespace koben {

class Liste : public Form {
public:
    /// Titles that begin with ">" are right-aligned columns, with "=" centred ones.
    Liste(Koben& koben_, const QStringList& titles, const QStringList& rows) : Form(koben_, "Liste", "Liste") {
        for (QString title : titles) {
            Align align = Align::Left;
            if (title.startsWith(u'>')) align = Align::Right;
            if (title.startsWith(u'=')) align = Align::Centre;
            if (align != Align::Left) title.remove(0, 1);
            gridli.addColumn({.key = title.toLower(), .title = title, .align = align});
        }
        for (const QString& row : rows)
            if (row == u".")
                gridli.addSeparator();
            else
                gridli.addRow(row.split(u'\t'));
    }
    Grid gridli{*this, "gridli"};
};

}  // namespace koben
