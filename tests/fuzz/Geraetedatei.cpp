// The file of the barn device: any bytes are read or refused in German with their line; what was read, written as the
// device writes it and read again is the same.
#include "exchange/Geraetedatei.h"

#include "core/Einstellungen.h"
#include "tests/fuzz/Require.h"

namespace koben::fuzz {
namespace {

QByteArray written(const std::vector<Geraetebuchung>& bookings) {
    QString text;
    for (const Geraeteabschnitt& section : Geraeteabschnitte()) {
        QStringList lines;
        for (const Geraetebuchung& booking : bookings)
            if (booking.section == &section) lines += booking.fields.join(u'\t') + QStringLiteral("\tN\r\n");
        text += QString::number(lines.size()) + QStringLiteral("\r\n") + lines.join(QString());
    }
    return nachWindows1252(text);
}

void check(const std::vector<Geraetebuchung>& bookings) {
    int line = 0;
    for (const Geraetebuchung& booking : bookings) {
        require(booking.line > line && booking.fields.size() == booking.section->markAt(), "a line");
        require(booking.complete() != booking.values.empty(), "values of an incomplete line");
        line = booking.line;
    }
    const Geraetedatei again = Geraetedatei::read(written(bookings));
    require(again.problem().isEmpty() && again.bookings().size() == bookings.size(), "written and read",
            again.problem());
    for (size_t i = 0; i < bookings.size(); ++i) {
        const Geraetebuchung &a = bookings[i], &b = again.bookings()[i];
        // days of waiting below nothing become nothing, and nothing becomes those up to its date
        if (a.section->art == Buchungsart::Behandlung && a.fields[7] == u"0") continue;
        require(a.fields == b.fields && a.values == b.values && a.piglets == b.piglets, "another booking",
                a.fields.join(u'|'));
    }
}

}  // namespace
}  // namespace koben::fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace koben;
    using namespace koben::fuzz;
    const Geraetedatei file = Geraetedatei::read(raw(data, size));
    const QString& why = file.problem();
    if (why.isEmpty())
        check(file.bookings());
    else
        require(why.startsWith(QStringLiteral("Die Zeile ")) && why.endsWith(u'.') && file.bookings().empty(),
                "no sentence", why);
    return 0;
}
