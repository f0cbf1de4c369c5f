#include "output/PA_Textausgabe.h"

#include <QFile>
#include <algorithm>
#include <exception>

#include "core/Einstellungen.h"
#include "core/Konfig.h"
#include "core/PZ_Koben_Subs.h"
#include "forms/PrintError.h"
#include "output/Uebergabe.h"

namespace koben {
namespace {

constexpr int hoechsteTextlaenge = 32000;  // characters that the box is filled with, short of the last line
constexpr int hoechsterRand = 30;          // characters
const QString Schriftvorgabe = QStringLiteral("Courier New");

int zahl(const TextBox& box) { return static_cast<int>(std::clamp(Wert(box.text()), -32768.0, 32767.0)); }

QString ohneWagenruecklauf(QString text) { return text.remove(u'\r'); }

/// The head of a list that is laid out as a table: a line of titles and the dashes that are as long.
QStringList tabellenkopf(const QString& text) {
    constexpr int searched = 8;  // lines at the beginning
    const QStringList lines = ohneWagenruecklauf(text.left(10000)).split(u'\n').mid(0, searched);
    for (int i = 1; i < lines.size(); ++i)
        if (lines[i].size() > 2 && lines[i].count(u'-') == lines[i].size() && lines[i - 1].size() == lines[i].size())
            return {lines[i - 1], lines[i]};
    return {};
}

/// Runs one step of a print whose failures are passed over.
template <class Step>
void stillschweigend(Step step) {
    try {
        step();
    } catch (const std::exception&) {
        // the next step goes on with what there is
    }
}

/// With a bar and a cancel: painting many sheets takes long. False where nothing was printed.
bool finishPrint(Koben& koben, PrintJob& job) {
    Progress progress(koben, QStringLiteral("Der Text wird gedruckt ..."), 100);
    return job.end([&](int percent) { return progress.step(percent); });
}

}  // namespace

PA_Textausgabe::PA_Textausgabe(Koben& koben_)
    : Form(koben_, QStringLiteral("PA_Textausgabe"), QStringLiteral("Listen-Ausgabe ")) {
    helpTopic = name();
    cancelButton = &abbv;
    t.multiLine = t.fixedPitch = true;
    t.enterIsTab = t.marksAllOnFocus = false;
    kom.fixed = komdrucker.fixed = true;
    kom.setHint(Schriftart.text());
    gr_e.setHint(Schriftgröße.text());
    komdrucker.setHint(Drucker.text());
    tz.setHint(QStringLiteral("Linker Rand in Zeichen"));
    druckformat.frame = QStringLiteral("Druckformat");
    connectHandlers();
}

void PA_Textausgabe::connectHandlers() {
    kom.onClick = [this] { kom_Click(); };
    for (auto& box : kon) box->onClick = [this] { kon_Click(); };
    for (int i : {0, 1}) {
        plus1[i].onClick = [this, i] { setzeGroesse(zahl(gr_e) + (i == 1 ? 1 : -1)); };
        plus5[i].onClick = [this, i] { setzeGroesse(zahl(gr_e) + (i == 1 ? 5 : -5)); };
    }
    gr_e.onLostFocus = [this] { gr_e_LostFocus(); };
    druckformat.onClick = [this](int i) { koben.Konfig_Zahl[Zahl::Druckformat] = static_cast<qint16>(i); };
    tz.onKeyPress = [](int key) { return key == '*' ? 0 : Nur_Ziffern(key); };
    tz.onLostFocus = [this] { tz_LostFocus(); };
    drucken.onClick = [this] { drucken_Click(); };
    dateidrucken.onClick = [this] { dateidrucken_Click(); };
    hilfe.onClick = [this] { koben.open(QStringLiteral("PH_Hilfe")); };
    abbv.onClick = [this] { abbv_Click(); };
}

// -------------------------------------------------------------------------------------------------- loading

void PA_Textausgabe::Load() {
    kom.setItems(koben.platform.fonts());
    ladeEinstellungen();
    waehleSchriftart();
    setzeGroesse(zahl(gr_e));
    setCaption(QStringLiteral("Listen-Ausgabe ") + koben.Ausgabedatei);
    t.setText({});
    if (!QFile::exists(koben.Ausgabedatei)) {
        koben.message(QStringLiteral("Die Datei %1 existiert nicht").arg(koben.Ausgabedatei.toUpper()));
        close();
        return;
    }
    ladeDatei();
    komdrucker.setItems(QStringList{QString()} + koben.platform.printers());
}

void PA_Textausgabe::ladeEinstellungen() {
    auto& zahlen = koben.Konfig_Zahl;
    if (zahlen[Zahl::LinkerRand] > 20) zahlen[Zahl::LinkerRand] = 20;
    tz.setText(QString::number(zahlen[Zahl::LinkerRand]));
    qint16& size = zahlen[Zahl::Schriftgroesse];
    if (size < 8 || size >= 49) size = 10;
    gr_e.setText(QString::number(size));
    kon[0].setChecked(zahlen[Zahl::DruckFett] != 0);
    kon[1].setChecked(zahlen[Zahl::DruckKursiv] != 0);
    druckformat.select(zahlen[Zahl::Druckformat] != 0 ? 1 : 0);
    m_schrift.fett = kon[0].checked();
    m_schrift.kursiv = kon[1].checked();
}

void PA_Textausgabe::waehleSchriftart() {
    int hit = kom.items().isEmpty() ? -1 : 0;
    for (int i = 0; i < kom.items().size(); ++i)
        if (kom.items()[i].trimmed() == Schriftvorgabe) hit = i;
    kom.setCurrent(hit);
    m_schrift.name = kom.text().trimmed();
    if (Schriftvorgabe.left(7) != u"Courier")
        koben.message(QStringLiteral("Hinweis:") + Crlf + Crlf +
                      QStringLiteral("Um die Tabellenausgabe im RUW-Editor richtig darstellen zu können, sollten Sie "
                                     "eine nicht proportionale Schrift, z.B. Courier New oder eine andere "
                                     "Courier-Schrift, auswählten!"));
}

void PA_Textausgabe::ladeDatei() {
    QString text;
    bool complete = true;
    {
        const WaitCursor wait(koben);
        Zeilen_lesen(koben.Ausgabedatei, [&](const QString& line) {
            complete = text.size() < hoechsteTextlaenge;
            if (complete) text += line + Crlf;
            return complete;
        });
    }
    if (!complete || text.size() > hoechsteTextlaenge)
        koben.message(QStringLiteral("ACHTUNG:") + Crlf + Crlf +
                      QStringLiteral("Der Text ist über 32 kB groß. Es ist deshalb u.U. nicht alles im Textfeld "
                                     "enthalten. Beim Ausdruck mit 'Datei drucken' werden trotzdem alle Daten "
                                     "ausgedruckt!"));
    t.setText(text);
    m_geladen = text;
}

// ----------------------------------------------------------------------------------------------------- font

void PA_Textausgabe::setzeGroesse(int points) {
    m_schrift.punkt = std::clamp(points, 4, 30);
    gr_e.setText(QString::number(m_schrift.punkt));
    zeigeSchrift();
}

/// A size that is typed shows at once; its text stays as typed.
void PA_Textausgabe::gr_e_LostFocus() {
    m_schrift.punkt = std::clamp(zahl(gr_e), 4, 30);
    zeigeSchrift();
}

void PA_Textausgabe::kom_Click() {
    m_schrift.name = kom.text().trimmed();
    setzeGroesse(zahl(gr_e));
}

void PA_Textausgabe::kon_Click() {
    m_schrift.fett = kon[0].checked();
    m_schrift.kursiv = kon[1].checked();
    zeigeSchrift();
}

void PA_Textausgabe::zeigeSchrift() {
    if (schriftChanged) schriftChanged();
}

// ------------------------------------------------------------------------------------------------- printing

void PA_Textausgabe::tz_LostFocus() {
    const int margin = zahl(tz);
    if (margin < 0) tz.setText(QStringLiteral("0"));
    if (margin > hoechsterRand) tz.setText(QString::number(hoechsterRand));
}

QString PA_Textausgabe::randtext() const { return QString(std::clamp(zahl(tz), 0, hoechsterRand), u' '); }

/// A job on the chosen printer with the font of the screen; failing where the printer is not ready.
std::unique_ptr<PrintJob> PA_Textausgabe::beginneDruck() {
    const QString wanted = komdrucker.text();
    if (!wanted.isEmpty() && koben.platform.printers().contains(wanted)) m_drucker = wanted;
    auto job = koben.platform.print(m_drucker, koben.Konfig_Zahl[Zahl::Druckformat] != 0);
    if (!job) throw PrintError(QStringLiteral("Der Druck kann nicht beginnen, weil der Drucker nicht bereit ist."));
    richteEin(*job);
    return job;
}

/// The chosen font, and what every page bears beside its lines.
void PA_Textausgabe::richteEin(PrintJob& job) const {
    Typeface font{.name = kom.current() >= 0 ? kom.text().trimmed() : QString(),
                  .points = std::max(Wert(gr_e.text()), 0.0),
                  .bold = kon[0].checked(),
                  .italic = kon[1].checked()};
    Sheet sheet{.title = Berichtstitel(koben), .date = koben.Heute};
    for (const QString& line : tabellenkopf(t.text())) sheet.head.push_back({{{randtext() + line, font}}});
    job.setSheet(sheet);
    if (!font.name.isEmpty()) job.setFont(font.name);
    if (font.points > 0) job.setSize(font.points);
    job.setBold(font.bold);
    job.setItalic(font.italic);
}

void PA_Textausgabe::drucke(PrintJob& job, const QString& line) const {
    if (line.trimmed() == u"#")
        job.newPage();
    else
        job.line(randtext() + line);
}

void PA_Textausgabe::druckeText(PrintJob& job) const {
    QString text = ausWindows1252(nachWindows1252(ohneWagenruecklauf(t.text())));
    if (text.endsWith(u'\n')) text.chop(1);
    for (const QString& line : text.split(u'\n')) drucke(job, line);
}

Drawing PA_Textausgabe::druckbild() const {
    DrawingRecorder job(koben.Konfig_Zahl[Zahl::Druckformat] != 0);
    richteEin(job);
    job.line({});
    const auto print = [&](const QString& line) {
        drucke(job, line);
        return true;
    };
    const bool edited = ohneWagenruecklauf(t.text()) != ohneWagenruecklauf(m_geladen);
    if (edited || !Zeilen_lesen(koben.Ausgabedatei, print)) druckeText(job);
    job.end();
    return job.drawing;
}

void PA_Textausgabe::dateidrucken_Click() {
    const WaitCursor wait(koben);
    const auto job = beginneDruck();
    job->line({});
    const bool read = Zeilen_lesen(koben.Ausgabedatei, [&](const QString& line) {
        drucke(*job, line);
        return true;
    });
    if (!read) throw PrintError(QStringLiteral("Die Datei %1 kann nicht gelesen werden.").arg(koben.Ausgabedatei));
    finishPrint(koben, *job);
}

/// Prints by way of a file, so that the text passes through the code page of all printed files. The file lies in the
/// current folder of the process, which is the data folder. Failures are passed over, step by step; where the file
/// fails, the text is printed as it stands, so that an older file never passes for it.
void PA_Textausgabe::drucken_Click() {
    const WaitCursor wait(koben);
    std::unique_ptr<PrintJob> job;
    const QString path = koben.Datenordner + QStringLiteral("DRUCKAUF.TXT");
    const bool written = Textdatei_schreiben(path, t.text());
    stillschweigend([&] { job = beginneDruck(); });
    if (!job) return;
    stillschweigend([&] { job->line({}); });
    const auto print = [&](const QString& line) {
        stillschweigend([&] { drucke(*job, line); });
        return true;
    };
    if (!written || !Zeilen_lesen(path, print))
        for (const QString& line : t.text().split(u'\n')) print(line.endsWith(u'\r') ? line.chopped(1) : line);
    stillschweigend([&] { finishPrint(koben, *job); });
}

void PA_Textausgabe::abbv_Click() {
    auto& zahlen = koben.Konfig_Zahl;
    zahlen[Zahl::DruckFett] = kon[0].checked() ? 1 : 0;
    zahlen[Zahl::DruckKursiv] = kon[1].checked() ? 1 : 0;
    zahlen[Zahl::Schriftgroesse] = static_cast<qint16>(zahl(gr_e));
    zahlen[Zahl::Druckformat] = druckformat.selected() == 0 ? 0 : 1;
    zahlen[Zahl::LinkerRand] = static_cast<qint16>(zahl(tz));
    close();
}

}  // namespace koben
