#include "maintenance/frmDatensicherung.h"
#include "maintenance/CheckedCopy.h"
#include "maintenance/WorkApart.h"
#include "orders/OrderDraft.h"
#include "platform/Dialogs.h"
#include "platform/Navigation.h"
#include "platform/form/KeepPlace.h"
#include "store/StoreGlobals.h"
#include <optional>

using namespace Qt::StringLiterals;

frmDatensicherung::frmDatensicherung(const platform::Services& services, QWidget* parent) :
    QWidget(parent), m_services(services) {
}

void frmDatensicherung::hideAtFirst(QProgressBar& bar) {
    platform::keepPlaceWhenHidden(bar);
    bar.hide();
}

bool frmDatensicherung::UnloadAllMDIForms() {
    if (m_services.navigation.closeScreensBut(objectName()))
        return true;
    tell(tr("Ein anderes Fenster beendet noch seine Arbeit, zum Beispiel eine Übertragung zum Online Shop. "
            "Versuchen Sie es in einem Augenblick noch einmal."),
         windowTitle());
    return false;
}

void frmDatensicherung::run(QProgressBar& bar, const Job& job) {
    bar.setValue(0);
    bar.show();
    std::optional<orders::OrderDraft::Keeping> keeping;
    if (job.keepsOrder)
        keeping.emplace();
    try {
        if (!UnloadAllMDIForms()) {
            if (keeping)
                keeping->giveUp();
            return bar.hide();
        }
        m_services.navigation.standStill();
        store::CloseDatabases();
        maintenance::workApart(
            job.work, [&bar](qint64 done, qint64 total) { bar.setValue(int(done * bar.maximum() / total)); });
        tell(job.texts.done, job.texts.doneTitle);
    } catch (const common::RunTimeError& failure) {
        tellFailure(failure, job.folders, job.texts);
    } catch (const std::exception& failure) {
        tellFailure({common::kPlatformFailure, tr("Ein unerwarteter Fehler ist aufgetreten."),
                     QString::fromUtf8(failure.what())},
                    job.folders, job.texts);
    }
    m_services.navigation.endProgram();
}

void frmDatensicherung::tellFailure(const common::RunTimeError& failure, const QStringList& folders,
                                    const Texts& texts) {
    qWarning("%s: %s", qPrintable(objectName()), failure.what());
    const QString cause = maintenance::causeOf(failure, folders);
    if (cause.isEmpty())
        return tell(texts.refused, tr("Keine Administratorenrechte"));
    tell(texts.failed + u'\n' + cause, windowTitle());
}

void frmDatensicherung::tell(const QString& text, const QString& title) {
    m_services.dialogs.MsgBox(text, platform::kInformation, title);
}
