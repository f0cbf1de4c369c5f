#pragma once
// A drawing on a form: what it shows, where it can be pointed at, and the user's hand on it.
#include "forms/Control.h"
#include "forms/Zeichnung.h"

namespace koben {

/// Shows a sketch. One area may be the current one, which the keyboard walks and a script chooses; a click on an area
/// (or Enter on the current one) raises `onClick`.
class DrawingBox : public Control {
public:
    /// `size` is what the drawing gets where no window says otherwise, in millimetres.
    DrawingBox(ControlHost& form, const QString& name, QSizeF size = {180, 110}) : Control(form, name), m_size(size) {}

    /// A drawing of its own size; a window enlarges it as a whole.
    void setSketch(Sketch sketch);
    /// A drawing that suits itself to the room there is; asked anew for each other size, so it draws from what it
    /// holds.
    using Draw = std::function<Sketch(QSizeF millimetres)>;
    void setDraw(Draw draw);
    /// Black on white in either shade, for what a camera reads.
    bool paper = false;
    bool suitsItself() const { return m_draw != nullptr; }

    /// As last drawn.
    const Sketch& sketch() const { return m_sketch; }
    /// For this much room, in millimetres.
    const Sketch& fitted(QSizeF room);

    const QString& current() const { return m_current; }  ///< id of an area; "" for none
    /// Raises no event; an id without an area makes none current.
    void setCurrent(const QString& area);
    /// What a screen reader says of the current area.
    QString currentText() const;
    /// The area beside the current one: `along` -1 or 1 within its group, else `across` -1 or 1 to the nearest of
    /// another group. "" where there is none; the first area where none is current.
    QString beside(int along, int across) const;

    // the user's hand
    void choose(const QString& area);
    void clickAt(const QString& area);  ///< makes it current first
    bool key(Key key) override;         ///< Enter clicks the current area

    std::function<void(const QString& area)> onClick;
    std::function<void()> onCurrent;  ///< another area has become current by the user's hand

private:
    void redraw();

    QSizeF m_size;
    Draw m_draw;
    Sketch m_sketch;
    QString m_current;
};

}  // namespace koben
