#pragma once
// Another program whose output is read, with patience that has an end.
#include <QStringList>

namespace koben {

class ChildProcess {
public:
    /// Starts it without input and without a place for its error output. started() tells whether it could be.
    ChildProcess(const QString& program, const QStringList& arguments);
    /// Ends it, whatever it is doing.
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    bool started() const { return m_process > 0; }

    enum class Read { Bytes, End, Timeout };
    /// Reads what is there, waiting up to so many milliseconds for the first byte. `count` is the number of bytes.
    Read read(char* buffer, qsizetype most, int patience, qsizetype& count);
    /// After the end of the output: whether it came to its own end without complaint.
    bool endedWell();

private:
    void end();

    int m_process = 0;
    int m_output = -1;
    int m_status = -1;
};

}  // namespace koben
