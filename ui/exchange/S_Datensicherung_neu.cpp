#include "exchange/S_Datensicherung_neu.h"

#include <QPainter>

#include "ui/Layout.h"

namespace {

using koben::Control;
using koben::S_Datensicherung_neu;

/// The stick to plug in, painted in its colour, while the form says which one it is.
class StickPicture final : public QWidget, private Control::View {
public:
    explicit StickPicture(S_Datensicherung_neu& form) : View(form.bild), m_form(form) {
        setFixedHeight(fontMetrics().height() * 3);
        setVisible(form.bild.visible());
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const double h = height(), w = h * 3, plug = w * 0.24;
        painter.setPen(QPen(palette().color(QPalette::Mid), 1.5));
        painter.setBrush(QColor(0xd0, 0xd4, 0xd8));
        painter.drawRect(QRectF(w - plug - 2, h * 0.24, plug, h * 0.52));
        for (const double y : {0.34, 0.56})
            painter.fillRect(QRectF(w - plug * 0.6, h * y, plug * 0.2, h * 0.1), Qt::gray);
        painter.setBrush(colour());
        painter.drawRoundedRect(QRectF(1, h * 0.08, w - plug - 3, h * 0.84), h * 0.18, h * 0.18);
        painter.setBrush(QColor(255, 255, 255, 70));
        painter.setPen(Qt::NoPen);
        painter.drawRoundedRect(QRectF(h * 0.2, h * 0.22, w - plug - h * 0.6, h * 0.2), h * 0.1, h * 0.1);
    }

private:
    /// The sticks' own colours, in either shade of the windows.
    QColor colour() const {
        const QString name = m_form.stick().colour;
        return name == koben::Rot.colour    ? QColor(0xc0, 0x39, 0x2b)
               : name == koben::Blau.colour ? QColor(0x2a, 0x66, 0xb0)
                                            : QColor(0x2e, 0x8b, 0x4a);
    }
    void changed(koben::Aspect aspect) override {
        if (aspect == koben::Aspect::Visible) setVisible(m_form.bild.visible());
        update();
    }

    S_Datensicherung_neu& m_form;
};

}  // namespace

LAYOUT(S_Datensicherung_neu) {
    using Form = koben::S_Datensicherung_neu;
    const auto walk = [](Button* back, Button& on) {
        return back ? row({button(*back), spring(), button(on)}) : row({spring(), button(on)});
    };
    const Piece begin =
        column({label(form.Label1[Form::Anfang]), check(form.kon_backupkonzept),
                fields({field(QStringLiteral("Letztes Wochenbackup (Grün):"), plain(form.letztwochenbackup)),
                        field(QStringLiteral("Letztes Monatsbackup (Blau):"), plain(form.letztmonatsbackup)),
                        field(QStringLiteral("Letztes Jahresbackup (Rot):"), plain(form.letztjahresbackup)),
                        field(QStringLiteral("Letzte Übertragung in die Cloud:"), plain(form.letztcloudbackup))}),
                row({button(form.start_sicherung), button(form.start_rettung), spring(), button(form.cominfo)})});
    const Piece drive = column(
        {own(new StickPicture(form)), label(form.bild), label(form.Label1[Form::Laufwerk]),
         fields({field(QStringLiteral("&Laufwerk:"), combo(form.drive1, 40)), field(QString(), plain(form.platz))}),
         row({button(form.comlaufwerke), spring()}), spring() * 1,
         walk(&form.zurueck_laufwerkwahl, form.weiter_laufwerkwahl)});
    const Piece make =
        column({label(form.Label1[Form::Sichern]),
                row({column({caption(QStringLiteral("Dateien im Datenordner")), list(form.datei1)}) * 1,
                     column({caption(QStringLiteral("Datensicherungen im Datenordner")), list(form.datei2)}) * 1}) *
                    1,
                progress(form.meter), walk(&form.zurueck_backuperstellen, form.weiter_backuperstellen)});
    const Piece cloud = column(
        {label(form.Label1[Form::Cloud]), fields({field(QStringLiteral("Cloud-&Ordner:"), text(form.sev_cloud, 40))}),
         row({button(form.comcloud), spring()}), spring() * 1, walk(&form.zurueck_cloud, form.weiter_cloud)});
    const Piece end = column(
        {label(form.Label1[Form::Ende]), text(form.binfos, 60) * 1, spring(), walk(nullptr, form.weiter_endebackup)});
    const Piece back = column(
        {label(form.Label1[Form::Rettung]), fields({field(QStringLiteral("La&ufwerk:"), combo(form.drive2, 40))}),
         row({button(form.comordner), button(form.comtage), spring()}), label(form.ordner), list(form.backups) * 1,
         label(form.vergleich), walk(&form.zurueck_backuprettung, form.weiter_backuprettung)});
    return column({tabs(form.tabsicherung, {begin, drive * 1, make * 1, cloud * 1, end * 1, back * 1}) * 1,
                   buttons({button(form.abbv)})});
}
