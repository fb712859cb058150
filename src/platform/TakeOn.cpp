#include "platform/TakeOn.h"
#include "platform/Dialogs.h"

namespace platform {

bool takeOn(Dialogs& dialogs, const Task& task, const QString& who, const QString& question,
            const QString& title) {
    if (store::claim(task.name, task.seconds)) {
        store::tellNews(task.topic);
        return true;
    }
    return dialogs.MsgBox(who.arg(store::holderOf(task.name)) + QLatin1Char(' ') + question, kYesNo, title) ==
           kAnswerYes;
}

} // namespace platform
