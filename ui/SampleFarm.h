#pragma once
// The sample farm: what the program lends to a visit, and how the visit's windows are known.
#include <QDate>
#include <QString>
#include <functional>

namespace koben {

class Catalogue;
class Form;

namespace ui {

/// What the program lends to a visit. Without `make` there is none.
struct SampleFarm {
    const Catalogue* forms = nullptr;  ///< those that work on the herd alone
    /// Makes the database, with bookings up to this day; throws DatabaseError.
    std::function<void(const QString& path, QDate today)> make;
};

/// What the machine of a visit is known by.
class SampleMachine {
public:
    virtual ~SampleMachine() = default;
};

/// Whether a form belongs to a visit.
bool isSampleFarm(const Form& form);
/// A form's caption as its window bears it.
QString windowTitle(const Form& form);

}  // namespace ui
}  // namespace koben
