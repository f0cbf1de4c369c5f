#pragma once
// What is typed into a window and not yet saved.
#include <QStringList>

#include "forms/Form.h"

namespace koben::ui {

/// Whether closing the form throws away what was typed.
bool isEntry(const Form& form);

/// Compares the inputs of a form with what stood there when it was shown, or when it was saved last.
class Draft {
public:
    explicit Draft(const Form& form) : m_form(form) {}
    /// All inputs as they stand.
    QStringList state() const;
    /// What stands now needs no saving.
    void settle() { m_ground = state(); }
    bool pending() const { return isEntry(m_form) && state() != m_ground; }

private:
    const Form& m_form;
    QStringList m_ground;
};

}  // namespace koben::ui
