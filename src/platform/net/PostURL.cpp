#include "platform/net/PostURL.h"
#include "platform/Dialogs.h"
#include "platform/Services.h"
#include "platform/net/Internet.h"

namespace platform {

QString PostURL(const Services& services, const QString& url, QString* problem) {
    const std::unique_ptr<Inet> control = services.internet.inet();
    control->Execute(url);
    if (!services.dialogs.WaitForServer([&] { return control->StillExecuting(); }))
        control->Cancel();
    const QString failure = control->Problem() + control->Refusal();
    if (!failure.isEmpty())
        qWarning("Server: %s", qUtf8Printable(failure));
    if (problem)
        *problem = failure;
    return control->Answer();
}

bool isConfirmed(const Services& services, const SystemRequest& request) {
    QString problem = request.missing;
    QString answer;
    if (problem.isEmpty())
        answer = PostURL(services, services.internet.endpoints().systemAddress(request.script), &problem)
                     .trimmed();
    if (problem.isEmpty() && answer == u"OK")
        return true;
    const QString cause = problem.isEmpty() ? QString() : QStringLiteral("\r\n") + problem;
    services.dialogs.MsgBox(request.failed + cause, kStop, request.title);
    return false;
}

} // namespace platform
