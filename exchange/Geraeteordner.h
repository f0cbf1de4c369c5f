#pragma once
// The folder under which the barn device, or its card, shows on this machine: picked once and kept in the user's own
// settings. Where it is known, the exchange files go there and come from there by a click.
#include "forms/Form.h"

namespace koben {

class Geraeteordner {
public:
    /// Adds its controls to the form. Nothing is read before show().
    explicit Geraeteordner(Form& form);

    Button ordner;   ///< picks the folder
    Button ohne;     ///< forgets it
    Label wo;        ///< which one it is
    Label ergebnis;  ///< what became of the last copy

    /// Tells the folder. To be called as the form loads.
    void show();
    bool known() const { return !path().isEmpty(); }
    /// Starts the copy tool of the device's maker; false where it is not installed. What it does nobody hears.
    bool startTool(const QString& arguments) const;
    /// Copies a file of the data folder to the device. What went wrong is told to the user too.
    void send(const QString& name);
    /// Brings a file of the device into the data folder, whatever the case of its name there. The same.
    void fetch(const QString& name);

private:
    QString path() const;
    void keep(const QString& folder);
    void tell(const QString& what, const QString& target, const QString& reason);

    Form& m_form;
};

}  // namespace koben
