#include "analytics/PB_Logiktest.h"

#include "ui/Layout.h"

LAYOUT(PB_Logiktest) {
    std::vector<std::vector<Piece>> tests;
    for (int i = 0; i < form.Label2.count(); ++i) {
        const Piece expected = label(form.Label2[i]);
        expected.widget->setMinimumWidth(expected.widget->fontMetrics().averageCharWidth() * 60);
        tests.push_back({check(form.kon[i]), expected});
    }
    return column({group(form.rahmen, column({table(tests), check(form.kon[3])})),
                   group(form.optiwoche.frame, segments(form.optiwoche)), label(form.Label1), spring(),
                   progress(form.meter), buttons({button(form.hilfe)}, {button(form.ok), button(form.beenden)})});
}
