#include "tests/robust/Schuss.h"

namespace koben::robust {

void performAndTell(const Task& task, const DataFolder& folder, const Shot& shot, const std::function<void(char)>& say,
                    const std::function<void()>& die) {
    Session run(folder);
    run.toMainForm = shot.toMainForm;
    run.screens.onLine = [&](const QString& line) {
        if (*task.confirmed && line.startsWith(QString::fromUtf8(task.confirmed))) say('b');
    };
    run.begins = [&] {
        Workspace::setFaultHook([&, count = 0](const QString& text) mutable {
            if (++count == shot.statement) die();
            if (text == u"commit") say('c');
        });
        say('a');
    };
    run.done = [&] {
        Workspace::setFaultHook({});
        say('f');
    };
    perform(task, run);
}

}  // namespace koben::robust
