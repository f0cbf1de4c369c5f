#include <windows.h>

#include <QCoreApplication>
#include <QProcess>
#include <thread>

#include "tests/robust/Schuss.h"

namespace koben::robust {

namespace {

constexpr int Killed = 9, Patience = 120'000;  // exit status; milliseconds
const char* const Order = "KOBEN_SCHUSS";  // of the child, by the environment: task|folder|statement|to the main form

QString thisProgram() {
    wchar_t name[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, name, MAX_PATH);
    return QString::fromWCharArray(name);
}

}  // namespace

End shoot(const Task& task, const DataFolder& folder, const Shot& shot) {
    QProcess child;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(Order, QStringLiteral("%1|%2|%3|%4")
                                  .arg(QString::fromUtf8(task.name), folder.root())
                                  .arg(shot.statement)
                                  .arg(int{shot.toMainForm}));
    child.setProcessEnvironment(environment);
    child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    child.start(thisProgram(), {"--gtest_filter=SchussTest.kind"});
    QByteArray said;
    bool fired = shot.statement > 0;
    while (child.waitForReadyRead(Patience)) {
        said += child.readAllStandardOutput();
        if (fired || !said.contains(shot.fromCommit ? "<c>" : "<a>")) continue;
        fired = true;
        std::this_thread::sleep_for(std::chrono::microseconds(shot.microseconds));
        TerminateProcess(OpenProcess(PROCESS_TERMINATE, FALSE, static_cast<DWORD>(child.processId())), Killed);
    }
    child.waitForFinished(Patience);
    said += child.readAllStandardOutput();
    EXPECT_TRUE(child.exitCode() == 0 || child.exitCode() == Killed) << task.name << said.toStdString();
    return {child.exitCode() == Killed, said.contains("<b>") || said.contains("<f>")};
}

/// The child of the others; alone it has nothing to do.
TEST(SchussTest, kind) {
    const QStringList order = qEnvironmentVariable(Order).split(u'|');
    if (order.size() != 4) GTEST_SKIP() << "only as a child";
    const DataFolder folder(order[1]);
    const auto say = [](char what) {
        printf("<%c>\n", what);
        fflush(stdout);
    };
    performAndTell(taskNamed(order[0].toStdString()), folder,
                   {.statement = order[2].toInt(), .toMainForm = order[3] == u"1"}, say,
                   [] { TerminateProcess(GetCurrentProcess(), Killed); });
}

}  // namespace koben::robust
