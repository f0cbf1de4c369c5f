#pragma once
// The data folder belongs to one running program at a time: two would write over each other's settings and lists.
#include <QLockFile>
#include <memory>

namespace koben {

class Ordnersperre {
public:
    /// Takes the folder until the program ends or another folder is taken; true also where this one has it already.
    /// False where a living process holds it, and where nothing can be written there. What a dead process left behind,
    /// were it half a file, holds nothing.
    bool nehmen(const QString& folder);

private:
    std::unique_ptr<QLockFile> m_lock;
};

}  // namespace koben
