#pragma once
// A print job as lines of text.
#include <QStringList>
#include <functional>

#include "forms/Ports.h"

namespace koben::skript {

/// A job that ended. `{Seite}` alone is a new page; `{quer}` at the head is landscape; a change of font stands where
/// it happens, as `{Courier New 10}`, `{50 fett}`: the name where it changed, the size, then what is on.
struct PrintedJob {
    QStringList lines;
    int pages = 1;
};

class ScriptPrintJob final : public PrintJob {
public:
    ScriptPrintJob(bool landscape, std::function<void(const PrintedJob&)> onEnd);
    void setFont(const QString& name) override { m_font.name = name; }
    void setSize(double points) override { m_font.points = points; }
    void setBold(bool on) override { m_font.bold = on; }
    void setItalic(bool on) override { m_font.italic = on; }
    void text(const QString& piece) override;
    void line(const QString& text) override;
    void newPage() override;
    void end() override;

private:
    struct Font {
        QString name;
        double points = 0;
        bool bold = false, italic = false;
        bool operator==(const Font&) const = default;
    };
    void showFont();
    void endLine();

    PrintedJob m_job;
    QString m_line;  ///< what stands on the line so far
    bool m_begun = false;
    Font m_font, m_shown;
    std::function<void(const PrintedJob&)> m_onEnd;
};

}  // namespace koben::skript
