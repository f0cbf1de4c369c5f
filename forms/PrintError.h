#pragma once
#include <QString>
#include <stdexcept>

namespace koben {

/// A print that could not begin or go on; the text is for the user.
class PrintError : public std::runtime_error {
public:
    explicit PrintError(const QString& text) : std::runtime_error(text.toStdString()) {}
};

}  // namespace koben
