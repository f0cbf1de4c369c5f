#include "forms/Koben.h"

#include "core/ErrorLog.h"
#include "core/Konfig.h"
#include "core/PZ_Koben_Subs.h"
#include "forms/PrintError.h"

namespace koben {

namespace {

/// What went wrong, what became of the data, and what to do.
QString failureText(const QString& cause, const std::optional<QString>& saved) {
    const QString state =
        !saved ? QStringLiteral(
                     "Es wurde nichts davon gespeichert. Was Sie eingegeben haben, steht noch im Fenster: Bitte "
                     "beheben Sie die Ursache und wiederholen Sie die Aktion dann.")
               : QStringLiteral(
                     "Gespeichert ist bereits: %1. Was danach kam, wurde nicht ausgeführt. Bitte sehen Sie in "
                     "der Liste nach, bevor Sie die Aktion wiederholen.")
                     .arg(*saved);
    return QStringLiteral("Die Aktion konnte nicht zu Ende geführt werden.") + Crlf + Crlf + cause + Crlf + Crlf +
           state;
}

/// Forms that are only read, the help: what stands below them goes on as if they had never been there.
bool standsAside(const Form& form) { return form.name().startsWith(u"PH_"); }

}  // namespace

std::unique_ptr<Form> Catalogue::make(const QString& name, Koben& koben) const {
    const auto maker = m_makers.find(name);
    return maker == m_makers.end() ? nullptr : maker->second(koben);
}

Koben::Koben(Screens& screens_, Platform& platform_, const Catalogue& catalogue_)
    : screens(screens_),
      platform(platform_),
      catalogue(catalogue_),
      workspace([this] { return Stand.isValid() ? Stand.startOfDay() : platform.now(); }) {
    workspace.onAction([this](const QString& name) {
        lastAction = name;
        ++m_actions;
        screens.done(name);
    });
    workspace.onWindow([this] { return front() ? front()->name() : QString(); });
}

Koben::~Koben() = default;

void Koben::open(const QString& name) {
    const auto form = catalogue.make(name, *this);
    if (form && !(form->onlyToday() && nurAnsehen_melden())) run(*form);
}

void Koben::run(Form& form) {
    struct Level {
        Koben& koben;
        Form& form;
        const bool shown = !koben.worker;
        Level(Koben& k, Form& f) : koben(k), form(f) {
            koben.m_stack.push_back(&form);
            if (shown) koben.screens.opened(form);
        }
        ~Level() {
            if (shown) koben.screens.closed(form);
            koben.m_stack.pop_back();
        }
    };
    {
        const Level level(*this, form);
        if (m_stack.size() == 1)
            begin(form);
        else if (!attempt([&] { begin(form); }))
            form.close();
        if (!form.closed()) level.shown ? screens.run(form) : worker(form);
    }
    if (m_stack.empty() && atEnd) {
        screens.breathe();
        std::exchange(atEnd, nullptr)();
    }
    if (Form* behind = front(); behind && !standsAside(form)) behind->activateLater();
}

void Koben::begin(Form& form) {
    form.runBy(*this);
    {
        const WaitCursor wait(*this);
        form.Load();
    }
    if (form.closed()) return;
    if (!worker) screens.shown(form);
    form.activate();
}

bool Koben::attempt(const std::function<void()>& work) {
    const int before = m_actions;
    const auto failed = [&](const QString& cause, const QString& detail) {
        ErrorLog(platform.userFolder()).write(platform.now(), detail);
        screens.failed(failureText(cause, m_actions == before ? std::nullopt : std::optional(lastAction)));
        return false;
    };
    try {
        work();
        return true;
    } catch (const DatabaseError& error) {
        if (error.kind == DatabaseError::Kind::LookOnly) return message(error.message()), false;
        return failed(error.message(), error.detail());
    } catch (const PrintError& error) {
        return failed(QString::fromUtf8(error.what()), QString::fromUtf8(error.what()));
    } catch (const std::exception& error) {
        return failed(programFault(), QString::fromUtf8(error.what()));
    }
}

void Koben::end() {
    ended = true;
    for (auto form = m_stack.rbegin(); form != m_stack.rend(); ++form) (*form)->close();
}

void Koben::Quittungston() {
    if (Konfig_Zahl[Zahl::TonAus] == 0) screens.tone(1000, 15);
}

bool Koben::Loeschen_bestaetigen() {
    return Konfig_Zahl[Zahl::LoeschenBestaetigen] != 1 ||
           yesNo(QStringLiteral("Soll der markierte Datensatz wirklich unwiederbringlich gelöscht werden?"), true);
}

void Koben::Tier_weiterschalten(int direction) {
    if (!herdList || herdList->herd().rowCount() == 0) return;
    Grid& list = herdList->herd();
    int row = list.row() + (direction == 0 ? -1 : 1);
    if (row < 1) row = list.rowCount();
    if (row > list.rowCount()) row = 1;
    list.setRow(row);
}

void Koben::restoreWidths(Grid& grid, const QString& section) {
    const QString saved = platform.userSetting(section, QStringLiteral("ColWidths"));
    for (const QString& entry : saved.split(u';', Qt::SkipEmptyParts)) {
        const auto at = entry.lastIndexOf(u'=');
        const int column = at < 0 ? 0 : grid.columnOf(QStringView(entry).left(at));
        if (column > 0) grid.column(column).width = entry.mid(at + 1).toInt();
    }
    grid.columnsChanged();
}

void Koben::saveWidths(const Grid& grid, const QString& section) {
    QStringList widths;
    for (int c = 1; c <= grid.columnCount(); ++c)
        if (grid.column(c).width > 0)
            widths.append(QStringLiteral("%1=%2").arg(grid.column(c).key).arg(grid.column(c).width));
    platform.setUserSetting(section, QStringLiteral("ColWidths"), widths.join(u';'));
}

QString Koben::Standtext() const { return QStringLiteral("Stand vom ") + Datum_als_Anzeige(Stand); }

bool Koben::nurAnsehen_melden() {
    if (!notWritable.isEmpty()) message(notWritable);
    return !notWritable.isEmpty();
}

QString Koben::clockToday() const { return Datum_als_Anzeige(platform.now().date()); }

Progress::Progress(Koben& koben, QString what, qint64 total, ProgressBar* meter)
    : m_screens(koben.screens),
      m_what(std::move(what)),
      m_total(std::max<qint64>(total, 1)),
      m_meter(meter),
      m_interval(std::chrono::milliseconds(koben.screens.progressInterval())),
      m_asked(Clock::now()) {
    if (!m_meter) return;
    m_meter->setRange(static_cast<int>(total));
    m_meter->setVisible(true);
}

Progress::~Progress() {
    if (m_meter) {
        m_meter->setValue(static_cast<int>(m_done));
        m_meter->setVisible(false);
    }
    m_screens.progressEnds();
}

bool Progress::step(qint64 done) {
    m_done = done;
    const auto now = Clock::now();
    if (m_cancelled || now - m_asked < m_interval) return !m_cancelled;
    if (m_meter) m_meter->setValue(static_cast<int>(done));
    m_cancelled = !m_screens.progress(m_what, static_cast<int>(std::clamp<qint64>(done * 100 / m_total, 0, 100)));
    m_asked = Clock::now();
    return !m_cancelled;
}

}  // namespace koben
