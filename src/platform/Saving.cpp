#include "platform/Saving.h"
#include <QCoreApplication>

namespace platform {

bool saving(Dialogs& dialogs, const std::function<void()>& save, const std::function<void()>& gone) {
    try {
        save();
        return true;
    } catch (const store::Overtaken& overtaken) {
        QString text = overtaken.sentence();
        if (overtaken.isGone() && gone) {
            gone();
            text +=
                QStringLiteral("\n\n") +
                QCoreApplication::translate(
                    "platform", "Ihre Angaben stehen noch da. Speichern Sie noch einmal, um sie als neuen "
                                "Datensatz zu erfassen.");
        }
        dialogs.MsgBox(text, kInformation, QCoreApplication::translate("platform", "Speichern"));
        return false;
    }
}

} // namespace platform
