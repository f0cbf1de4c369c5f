#include "store/System.h"

namespace koben::system {

bool FileLock::holds(const QString& path) const { return m_file != -1 && m_path == path && lies(m_file, path); }

bool FileLock::take(const QString& path) {
    if (holds(path)) return true;
    const qintptr file = grab(path);
    if (file == -1) return false;
    release();
    m_file = file;
    m_path = path;
    return true;
}

void FileLock::release() {
    if (m_file != -1) drop(m_file, m_path);
    m_file = -1;
}

}  // namespace koben::system
